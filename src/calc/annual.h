#pragma once
#include <QDate>
#include <array>
#include <vector>

#include "calc/result_list.h"
#include "store/connection.h"

/// 年間支給額: what each employee received on up to four 基準日, over all 配分区分 and 配分基準.
namespace calc {

inline constexpr std::size_t kNenkanDates = 4;
/// The chosen dates by column; an invalid one leaves its column empty.
using NenkanDates = std::array<QDate, kNenkanDates>;
/// What stands above the four columns.
using NenkanHeads = std::array<QString, kNenkanDates>;

/// The dates that may be chosen: those of the run side, in ascending order.
std::vector<QDate> nenkanChoices(store::Connection& cn);

/// One line per employee who has a row in 履歴書テーブル and in S配分基準対応社員 of one of the dates, in the
/// order of their numbers. Amounts 1 to 4 are the dates', amount 5 the total. Of several rows of an employee
/// on one date the cell holds the last amount that is not 0, while the total holds all of them: the cells
/// need not add up to it. A date with nothing but 0 or Null leaves its cell empty.
/// Worked out in the scratch tables SNenkan and SNenkanhojo, in a transaction of its own. Throws
/// Error(Overflow) beyond the money range, Error(Type) for a 社員Code that is no number.
std::vector<ResultRow> nenkanRows(store::Connection& cn, const NenkanDates& dates);

/// The columns of SNenkan, and the headings above them.
QStringList nenkanColumns();
QStringList nenkanHeadings(const NenkanHeads& heads);
reports::SheetGrid nenkanSheet(const NenkanHeads& heads, const std::vector<ResultRow>& rows);

}  // namespace calc
