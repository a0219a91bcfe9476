#pragma once
#include <QDate>
#include <QHash>
#include <QString>
#include <optional>

#include "store/connection.h"

namespace personnel {

/// An entry of a code list that a person stands under; both empty without one.
struct Post {
    QString code;
    QString name;  ///< empty where the master does not know the code
};

/// A person as of a date, for lists and charts.
struct PersonAt {
    std::optional<int> age;  ///< whole years; none without 生年月日
    Post tokyu;              ///< 等級
    Post syozoku;            ///< 所属大
    Post yakusyoku;          ///< 役職
};

/// Everybody of 履歴書テーブル by 社員Code: the age at `ageDate` and the position in force at `date`. Reads
/// only; the work tables of the position in force stay those of the latest snapshot. Of two transfers on one
/// latest date the one made first counts.
QHash<QString, PersonAt> peopleAt(store::Connection& cn, QDate date, QDate ageDate);

}  // namespace personnel
