#pragma once
#include <QString>
#include <functional>

class QWidget;

namespace tour {

/// The road of a person who has just installed the program: from an empty Data folder to a company of one's
/// own with its people, and a backup of it, on the real screens.
struct OwnRoad {
    QString programDir;  ///< nothing of the company may stand in it
    QString company = QStringLiteral("青空工業");
    int people = 200;
    std::function<void(QWidget& screen, const QString& name)> picture = {};
};
/// False when the program did not come to its end. What goes wrong on the way is told to the driver's sink.
bool makeOwnCompany(const OwnRoad& road);

}  // namespace tour
