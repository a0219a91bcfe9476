#pragma once
#include <optional>

#include "calc/kojinbetsu.h"

namespace calc {

/// What corrected payment coefficients would do to the total of 個人別計算. Without amounts, `reason` tells
/// the user why there are none.
struct PaymentEffect {
    struct Totals {
        store::Money registered;  ///< the inputs as they stand, no coefficient corrected
        store::Money corrected;
        store::Money difference;  ///< corrected − registered
    };
    std::optional<Totals> totals;
    QString reason;
};

/// The individual calculation of one run tried out: its inputs are read once and nothing is written, so that
/// every key stroke costs one pass in memory. Its totals are those that the run would write, people beyond
/// the run's rows included.
class PaymentPreview {
  public:
    /// Reads the run. Inputs that are missing are told by effectOf(); a storage that fails throws
    /// store::Error.
    PaymentPreview(store::Connection& connection, const domain::RunKey& run);

    /// Never throws for what the panel may hold.
    PaymentEffect effectOf(const PaymentSimulation& panel) const;

  private:
    store::Money totalOf(const PaymentSimulation& panel) const;

    KojinbetsuInputs inputs_;
    Rounding rounding_;
    std::optional<Assignees> assignees_;
    store::Money registered_;
    QString missing_;  ///< why nothing can be computed; empty when it can
};

}  // namespace calc
