#pragma once
#include "calc/kojinbetsu.h"
#include "store/work.h"

namespace calc {

/// The transaction of one press of 計算: all that the calculation of a run writes stands, or nothing of it.
/// It begins when it is made and reserves the company's files, also while the user confirms the 算定方式. One
/// of the three procedures ends it; where none did, or one threw, nothing was written. Lives on the stack.
class RunCalculation {
  public:
    /// `label` is the user's name for the change (store::Work).
    RunCalculation(store::Connection& connection, const domain::RunKey& run, const QString& label);

    /// 個人別計算: keeps the payment coefficients of the panel as those of the run and computes with them.
    /// The run's total as it stands. Throws what storePaymentCoefficients and Kojinbetsu throw.
    CalculationResult individually(const PaymentSimulation& panel);
    /// 総額配分 of a budget, which is not 0. The run's total as it stands. Throws what Sougaku throws.
    CalculationResult fromPool(store::Money budget);
    /// Nothing is to be computed: the payment is typed in per person, or something is missing.
    void nothing();

  private:
    store::Connection& connection_;
    domain::RunKey run_;
    store::Work work_;
};

}  // namespace calc
