#pragma once
#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

#include "calc/payment_simulation.h"
#include "domain/run_key.h"
#include "reports/workbook.h"
#include "store/connection.h"

namespace calc {

/// Brings 合計 of S配分基準対応社員 of the run up to date: the sum of the four stored amounts, Null when one
/// of them is Null. A transaction of its own, so the totals stay if a later step fails. Throws
/// Error(Overflow) beyond the money range.
void updateGrandTotals(store::Connection& connection, const domain::RunKey& run);

/// One line of 賞与支給額. Amounts in the order 個人別計算, 総額配分, 金一封, 特別加算金, 合計; a missing one
/// is Null.
struct ResultRow {
    QString syainCode;
    QString simei;
    std::array<std::optional<store::Money>, 5> amounts;
};
/// The heads of the seven columns of the list and the sheet.
const QStringList& resultHeadings();
/// The employees of the run who have a row in 履歴書テーブル, in the order of their numbers.
std::vector<ResultRow> resultRows(store::Connection& connection, const domain::RunKey& run);

/// The line that records the simulation panel; empty while it is closed.
QString coefficientLineForReport(const PaymentSimulation& panel);
QString coefficientLineForSheet(const PaymentSimulation& panel);

/// The sheet: title line, coefficient line, headings, one line per employee. Codes are text, amounts numbers;
/// a missing amount leaves its cell empty.
reports::SheetGrid resultSheet(const QString& kubunMei, const QString& kijunMei,
                               const QString& coefficientLine, const std::vector<ResultRow>& rows);
/// Rows of code, name and five amounts from the first row of a list on.
void addResultRows(reports::SheetGrid& grid, const std::vector<ResultRow>& rows);

}  // namespace calc
