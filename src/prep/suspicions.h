#pragma once
#include <QString>
#include <QStringList>
#include <vector>

#include "design/criteria.h"
#include "domain/run_key.h"
#include "store/connection.h"

/// What is suspicious in the inputs of a run, so that wrong money is not paid without a word. Derived from
/// the tables alone; nothing of it is a gate.
namespace prep {

struct Suspicion {
    QString text;        ///< "評価の入っていない社員が 23人います。"
    QStringList people;  ///< the first of them, "000012 横山　純一", and how many more
    QString place;       ///< the step of the run at which it is mended, as the run menu calls it
    QString screen;      ///< its screen
};

/// Before automatic input: people outside the snapshot, and people without a grade where one is needed.
/// `houshiki` is Kojinbetsu or Sougaku. Reads each table once.
std::vector<Suspicion> suspicionsBeforeAutoInput(store::Connection& cn, const domain::RunKey& run,
                                                 design::Houshiki houshiki);
/// Before the calculation: the same, base amounts that are typed in and still at 10,000, and how the
/// automatic items stand beside what automatic input would give now: never filled, changed since, or without
/// a value (×). Rebuilds the work table of automatic input and takes that back; no transaction may be open.
std::vector<Suspicion> suspicionsBeforeCalculation(store::Connection& cn, const domain::RunKey& run,
                                                   design::Houshiki houshiki);

}  // namespace prep
