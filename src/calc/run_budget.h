#pragma once
#include "domain/run_key.h"
#include "store/connection.h"

namespace calc {

/// The run's row of S実行予算; an amount never stored reads as 0.
struct RunBudget {
    store::Money yosanSougaku;             ///< 予算総額, Text1
    store::Money sougakuHaibunYosan;       ///< 総額配分予算, Text2
    store::Money kojinbetsuGoukei;         ///< 個人別計算合計, Label6(0)
    store::Money sougakuGoukei;            ///< 総額配分合計, Label6(1)
    store::Money kinIppuuGoukei;           ///< 金一封合計, Label6(2)
    store::Money tokubetsuKasankinGoukei;  ///< 特別加算金合計, Label6(3)
};

/// At the selection of a criterion: brings the four sums of the run's row up to date, each only if its source
/// has rows, or adds the row when there is none. One statement each; needs no transaction around it.
RunBudget openRunBudget(store::Connection& connection, const domain::RunKey& run);
/// Reads the row without changing it; all 0 when there is none.
RunBudget readRunBudget(store::Connection& connection, const domain::RunKey& run);
/// Stores 予算総額 and 総額配分予算. Throws Error(Type) when the run has no row.
void storeBudgets(store::Connection& connection, const domain::RunKey& run, store::Money yosanSougaku,
                  store::Money sougakuHaibunYosan);

/// The two computed labels of the calculation screen.
struct RunTotals {
    store::Money haibunYotei;  ///< Label6(4): what the total budget leaves for the pool; may be negative
    store::Money soukei;       ///< Label6(5): the grand total
};
/// refresh_totals, from the amounts as the screen shows them. Throws Error(Overflow) beyond the money range.
RunTotals refreshTotals(const RunBudget& shown);

}  // namespace calc
