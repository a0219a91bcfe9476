#pragma once
#include "design/criteria.h"
#include "domain/run_key.h"
#include "store/connection.h"

namespace calc {

/// Whether the amounts that a calculation stored are no longer those that its inputs give: people, base
/// amounts, coefficients, grades, the corrected 支給係数 of the run, its budget or the rounding changed
/// since. True too where the inputs can't be calculated any more, false where the run was never calculated.
/// `houshiki` is Kojinbetsu or Sougaku. A few reads; compared in memory.
bool inputsChangedSince(store::Connection& cn, const domain::RunKey& run, design::Houshiki houshiki);
/// The same of both, as far as the criterion uses them.
bool inputsChangedSince(store::Connection& cn, const domain::RunKey& run, const design::Kijun& kijun);
/// The runs of some dates of which this is true: "2026/12/10 正社員賞与／一般社員".
QStringList changedRuns(store::Connection& cn, const std::vector<QDate>& dates);

/// What screens, lists and sheets say then.
inline const QString kInputsChanged = QStringLiteral("※計算のあとに入力が変わっています");

}  // namespace calc
