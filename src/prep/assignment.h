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

struct Assignee {
    QString syainCode;
    QString shimei;
    QString syozoku;  ///< 所属大 and 所属小 by name
    QString yakusyoku;
    QString toukyuu;
    Assignment assignment;
    bool hasAmounts = false;  ///< an amount other than 0 is computed or typed in under the assignment
    bool hasLeft = false;     ///< assigned, but outside the snapshot: has left before the date
};

/// The employees of the snapshot and whoever is assigned at the date without standing in it, ordered by
/// 社員Code as a number. The snapshot must be that of the date.
std::vector<Assignee> assignees(store::Connection& cn, QDate kijunbi);

/// Gives each employee the criterion, or takes the assignment away where `assignment` is none. Rows of
/// another criterion of that date go from all run tables and decision tables, with the amounts and inputs in
/// them; an employee who is under the criterion already keeps his rows; the others get rows with the
/// defaults. Runs in the caller's transaction; work grows with the rows of the date, not with employees times
/// rows.
void assign(store::Connection& cn, QDate kijunbi, const QStringList& syainCodes,
            const Assignment& assignment);

}  // namespace prep
