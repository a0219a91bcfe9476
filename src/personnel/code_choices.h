#pragma once
#include <QDate>
#include <QString>
#include <vector>

#include "store/connection.h"

/// What a list of codes offers: the entries of a master, in the order of their numbers.
namespace personnel {

struct CodeChoice {
    QString code;
    QString name;
    QDate since;  ///< 設定年月日, the first day on which it may be chosen; invalid in a list without it
    QString parent;  ///< of a 所属小 the code of its 所属大
    bool operator==(const CodeChoice&) const = default;
};

/// The master of an item: 役職マスタ, 自由マスタ3. Items are named as its second column is (役職, 自由3,
/// 資格・免許).
QString masterOf(const QString& item);

/// All entries of an item's master.
std::vector<CodeChoice> codeChoices(store::Connection& cn, const QString& item);
/// Only those that may be chosen on `date` (all with an invalid date); of 所属小 only those under
/// `syozokuDai`, none without one.
std::vector<CodeChoice> codeChoicesAt(store::Connection& cn, const QString& item, QDate date,
                                      const QString& syozokuDai = {});

}  // namespace personnel
