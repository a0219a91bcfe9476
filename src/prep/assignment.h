#pragma once
#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

#include "store/connection.h"

/// Who falls under which criterion at a reference date (対象者⇔配分基準の対応). An employee has at most one
/// criterion a date.
namespace prep {

struct Assignment {
    QString kubun;  ///< both empty: not assigned, outside the run
    QString kijun;
    bool none() const { return kubun.isEmpty() && kijun.isEmpty(); }
    bool operator==(const Assignment&) const = default;
    bool operator<(const Assignment& other) const {
        return kubun == other.kubun ? kijun < other.kijun : kubun < other.kubun;
    }
};

/// What an employee has under his criterion at a date beyond what a new row starts with.
struct Entered {
    bool amounts = false;       ///< one of the four amounts is not 0: computed or typed in
    bool baseAmounts = false;   ///< 基礎額Ａ or 基礎額Ｂ is not 10,000
    bool coefficients = false;  ///< one of the 18 coefficients or 支給係数 is not 1
    bool grade = false;         ///< 評価 is not empty
    bool any() const { return amounts || baseAmounts || coefficients || grade; }
};

struct Assignee {
    QString syainCode;
    QString shimei;
    QString syozoku;  ///< 所属大 and 所属小 by name
    QString yakusyoku;
    QString toukyuu;
    Assignment assignment;
    Entered entered = {};  ///< of all 算定方式; goes when the employee moves to another criterion
    bool hasLeft = false;  ///< assigned, but outside the snapshot: has left before the date
};

/// The employees of the snapshot and whoever is assigned at the date without standing in it, ordered by
/// 社員Code as a number. The snapshot must be that of the date.
std::vector<Assignee> assignees(store::Connection& cn, QDate kijunbi);

/// Gives each employee the criterion, or takes the assignment away where `assignment` is none. Rows of
/// another criterion of that date go from all run tables and decision tables, with the amounts and inputs in
/// them; an employee who is under the criterion already keeps his rows; the others get rows with the
/// defaults. The sums of every criterion that somebody leaves or joins are brought up to date in S実行予算,
/// to 0 where nobody is left. Runs in the caller's transaction; work grows with the rows of the date, not
/// with employees times rows.
void assign(store::Connection& cn, QDate kijunbi, const QStringList& syainCodes,
            const Assignment& assignment);

}  // namespace prep
