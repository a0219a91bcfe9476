#pragma once
#include <vector>

#include "calc/kojinbetsu.h"
#include "calc/run_rows.h"

namespace calc {

/// One employee's two products and 支給対象額計, in the order of the run's rows.
struct PoolPoints {
    double a = 0, b = 0;
    store::Money total;
};
std::vector<PoolPoints> poolPoints(const std::vector<FrozenRow>& rows);

/// A budget spread over points. A rounding setting outside the table leaves a share without a value, and what
/// is paid then is 合計 of an earlier run.
struct PoolShares {
    double ratio = 0;  ///< 賞与係数
    std::vector<std::optional<store::Money>> shares, amounts;
};
/// Error(DivideByZero) when all points are 0.
PoolShares poolShares(const std::vector<FrozenRow>& rows, const std::vector<PoolPoints>& points,
                      store::Money budget, const Rounding& rounding);

/// 総額配分: spreads a budget over the employees in proportion to their points (the two products without a
/// payment coefficient). One 賞与係数 for everybody, each share rounded by Tanka_hasuu, one pass: the residue
/// stays unallocated. Call the three procedures in order, inside one transaction of the caller; on any
/// store::Error the caller rolls back.
class Sougaku {
  public:
    Sougaku(store::Connection& connection, const domain::RunKey& run);

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
    void writeRows(const PoolShares& spread);

    store::Connection& connection_;
    domain::RunKey run_;
    ActiveCoefficients active_;
    std::vector<FrozenRow> rows_;
    std::vector<PoolPoints> points_;
};

}  // namespace calc
