#pragma once
#include <vector>

#include "calc/payment_simulation.h"
#include "calc/run_rows.h"

namespace calc {

/// What a calculation of one run did.
struct CalculationResult {
    int employees = 0;
    /// The total written to S実行予算; Null with no employees (nothing is written then) or when every amount
    /// is Null.
    store::Value total;
};

/// The inputs of a run's individual amounts, frozen: what does not apply is neutral.
struct KojinbetsuInputs {
    ActiveCoefficients active;
    std::vector<FrozenRow> rows;
    RegisteredGrades grades;
};
KojinbetsuInputs readKojinbetsuInputs(store::Connection& connection, const domain::RunKey& run);

/// The arithmetic of 個人別計算, apart from all tables: each row's effective payment coefficient, and what
/// each row comes to with it. Throws Error(Type) for a row without 支給係数 and what EffectiveCoefficient
/// throws, Error(Overflow) beyond the range of a double or of money.
struct KojinbetsuAmount {
    double a = 0, b = 0;  ///< Ａ計算額, Ｂ計算額
    store::Money total;   ///< 合計, rounded
};
std::vector<double> effectivePayments(const KojinbetsuInputs& inputs, const PaymentSimulation& simulation);
std::vector<KojinbetsuAmount> kojinbetsuAmounts(const std::vector<FrozenRow>& rows,
                                                const std::vector<double>& payments,
                                                const Rounding& rounding);
/// The column 合計 of them, as S配分基準対応社員 takes it.
std::vector<std::optional<store::Money>> totalsOf(const std::vector<KojinbetsuAmount>& amounts);

/// 個人別計算: base A × 18 coefficients × payment coefficient plus the same on base B, rounded by the run's
/// Tanka_hasuu. Call keisan1_kojinbetsu, then keisan2_kojinbetsu, inside one transaction of the caller; on
/// any store::Error the caller rolls back. The run's inputs (positions 1 to 26) are never written. With
/// employees, the run's row of S実行予算 exists.
class Kojinbetsu {
  public:
    Kojinbetsu(store::Connection& connection, const domain::RunKey& run, PaymentSimulation simulation);

    /// Removes the run's decision rows and freezes its inputs: what does not apply is neutral, position 44 is
    /// the effective payment coefficient.
    void keisan1_kojinbetsu();
    /// Computes the frozen rows; writes the decision rows, positions 27 to 29 of the run's rows, 個人別計算
    /// of S配分基準対応社員 and 個人別計算合計 of S実行予算.
    CalculationResult keisan2_kojinbetsu();

  private:
    void writeRows(const std::vector<KojinbetsuAmount>& results);

    store::Connection& connection_;
    domain::RunKey run_;
    PaymentSimulation simulation_;
    KojinbetsuInputs inputs_;
    std::vector<double> payment_;  ///< position 44 of each row
};

}  // namespace calc
