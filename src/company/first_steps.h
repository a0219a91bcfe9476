#pragma once
#include <QString>
#include <vector>

#include "company/places.h"
#include "store/connection.h"

/// The road of a company that was just made, until its first bonus can be allocated.
namespace company {

struct FirstStep {
    QString text;
    QString screen;     ///< where it is done
    bool done = false;  ///< as the tables tell it
};

/// In the order in which they are done.
std::vector<FirstStep> firstSteps(store::Connection& cnMain);

/// The user closed the guide for this company, which the settings remember.
bool guideDismissed(const Places& places, const QString& company);
void dismissGuide(const Places& places, const QString& company);

}  // namespace company
