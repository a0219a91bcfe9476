#pragma once
#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

#include "store/connection.h"

/// Search conditions turned into a list of people, and the list handed on in 社員絞込.
namespace personnel {

/// The six items of a position, in the order of the conditions.
inline constexpr std::array<const char16_t*, 6> kPositionItems = {u"社員区分", u"所属大", u"所属小",
                                                                  u"役職",     u"職種",   u"コース"};

/// What is asked; an empty text asks nothing.
struct SelectionConditions {
    QString syainCode;  ///< six digits: a complete condition by itself, the others are not looked at
    QString furigana;   ///< the beginning of the reading, in any of the three kana forms
    QString seibetsu;   ///< code of 性別マスタ
    std::array<QString, kPositionItems.size()> position;  ///< codes, as kPositionItems
    /// Whole years as typed ("1,000" too); above 32767 is Error(Overflow), no number Error(Type).
    QString ageFrom, ageTo, tenureFrom, tenureTo;
    QDate kijunbi;  ///< position, age, tenure as of this day; who joined after it is not found
};

struct FoundPerson {
    QString code;
    QString name;
    bool operator==(const FoundPerson&) const = default;
};
using FoundPeople = std::vector<FoundPerson>;

/// Current staff that meets all conditions, by the number of the code. Asked for a reading, sex, age or
/// tenure it refills IdoChuusyutsuNen, asked for a position the other two work tables with it; a person
/// without a transfer up to the date meets no condition then.
FoundPeople selectPeople(store::Connection& cn, const SelectionConditions& conditions);

/// Who retired from `from` (any day when invalid) to `to`, by the number of the code.
FoundPeople selectRetired(store::Connection& cn, QDate from, QDate to);

/// Whose 退職日 is `from` or later: the retirement is registered and still to come. By the number of the
/// code.
FoundPeople selectLeaving(store::Connection& cn, QDate from);

/// 社員絞込 holds these people afterwards, its ID in their order. Runs in the caller's transaction.
void storeSelection(store::Connection& cn, const QStringList& codes);

}  // namespace personnel
