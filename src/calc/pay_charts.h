#pragma once
#include <vector>

#include "calc/annual.h"
#include "domain/run_key.h"
#include "reports/chart.h"

/// What was paid, as charts. Ages and positions are those in force at the 基準日. All reads; nothing is
/// written.
namespace calc {

/// The amounts of one run, each employee's four payments together: how they are distributed, against age and
/// against 等級. Who has no age is left out of the second and counted in its note. Employees with a Null
/// among the four stand in none.
std::vector<reports::Chart> chartsOfRun(store::Connection& cn, const domain::RunKey& run);

/// The same three of the amounts of up to four dates together, at the age and 等級 of the last of them, and
/// what each 所属 and each 役職 was paid, date on date. A payment counts where its employee stood at its
/// date. All rows of an employee on a date are summed up, as in the list's 合計.
std::vector<reports::Chart> chartsOfYear(store::Connection& cn, const NenkanDates& dates);

}  // namespace calc
