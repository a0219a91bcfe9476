#pragma once
#include <vector>

#include "calc/kojinbetsu.h"
#include "calc/run_rows.h"

namespace calc {

/// 総額配分: spreads a budget over the employees in proportion to their points (the two products without a
/// payment coefficient). One 賞与係数 for everybody, each share rounded by Tanka_hasuu, one pass: the residue
/// stays unallocated. Call the three procedures in order, inside one transaction of the caller; on any
/// store::Error the caller rolls back.
class Sougaku {
  public:
    Sougaku(store::Connection& connection, const shell::RunKey& run);

    /// Removes the run's decision rows and freezes its inputs.
    void keisan1_sougaku();
    /// Computes everybody's points, 支給対象額計.
    void keisan2_sougaku();
    /// Spreads the budget and writes the decision rows, positions 26 to 30 of the run's rows, 総額配分 of
    /// S配分基準対応社員 and 総額配分合計 of S実行予算. A rounding setting outside the table leaves 合計 of a
    /// run row as it was and that of the decision row Null. Without employees nothing is written.
    /// Error(DivideByZero) when all points are 0.
    CalculationResult keisan3_sougaku(store::Money budget);

  private:
    struct Points {
        double a, b;
        store::Money total;  ///< 支給対象額計
    };
    void writeRows(double ratio, const std::vector<std::optional<store::Money>>& shares,
                   const std::vector<std::optional<store::Money>>& amounts);

    store::Connection& connection_;
    shell::RunKey run_;
    ActiveCoefficients active_;
    std::vector<FrozenRow> rows_;
    std::vector<Points> points_;
};

}  // namespace calc
