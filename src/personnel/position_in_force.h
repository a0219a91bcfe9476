#pragma once
#include <QDate>
#include <QString>
#include <QStringList>

#include "store/connection.h"

/// The position in force: where each employee stood at a date, how old the person was and how long with the
/// company. Nothing keeps it; it is worked out into the work tables IdoChuusyutsuNen, IdoChuusyutsuMax and
/// IdoChuusyutsuMax2, which hold the latest such look only. The snapshot of a bonus run and the selection of
/// people share this one way.
namespace personnel {

struct PositionDates {
    QDate kijunbi;          ///< the reference date: the position at this date counts
    QDate nenrei_kijunbi;   ///< ages are computed at this date
    QDate kinzoku_kijunbi;  ///< tenure is computed at this date
    bool operator==(const PositionDates&) const = default;
};

/// Whom IdoChuusyutsuNen takes in.
enum class WhoCounts {
    EmployedAtDate,  ///< not retired, or leaving on the reference date or later
    CurrentStaff,    ///< 退職フラグ False, whatever the date
};

/// Ages and tenure: empties IdoChuusyutsuNen and refills it in the order of 履歴書テーブル, both ages in
/// whole years. Throws Error(Type) "Null の使い方が不正です。" for a 生年月日 or 入社日 without value. Writes
/// in the transaction that is open, or in one of its own.
void SelectIntoY(store::Connection& cn, const PositionDates& dates, WhoCounts who);

/// SelectIntoY, then IdoChuusyutsuMax (each one's latest 異動日 not after the reference date) and
/// IdoChuusyutsuMax2 (the position at it) in the order of 社員Code; the display names stay empty. Who has no
/// transfer up to the date is in the first table only; two transfers on one latest date give two rows. A
/// failure leaves all three tables as they were.
void SelectIntoX(store::Connection& cn, const PositionDates& dates, WhoCounts who);

/// For lists and sheets: IdoChuusyutsuMax and IdoChuusyutsuMax2 of these people only, whoever they are, with
/// the display names of their position and without ages; IdoChuusyutsuNen stays. A code without a master row
/// leaves its name empty; a 所属小 is named by its code alone.
void SelectIntoZ(store::Connection& cn, const QStringList& codes, QDate kijunbi);
/// The same of one person.
void SelectIntoZZ(store::Connection& cn, const QString& code, QDate kijunbi);

/// Texts as one parameter of a statement that reads them by json_each.
QString jsonArray(const QStringList& texts);

}  // namespace personnel
