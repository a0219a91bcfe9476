#pragma once
#include <variant>
#include <vector>

#include "calc/payment_simulation.h"

namespace calc {

/// Stores the payment coefficients that a run uses in Sshikyuukeisuu and SshikyuukeisuuHA, inside the
/// caller's transaction and before the individual calculation. 一律係数 is Text4, or 1 when it is empty;
/// grade rows are stored when Text3(0) is not empty. Throws Error(Type) when the criterion has no
/// S支給係数設定, when a grade's registered row is gone or a text is no number.
void storePaymentCoefficients(store::Connection& connection, const domain::RunKey& run,
                              const PaymentSimulation& panel);

/// What 支給係数修正 leads to. Texts are as the panel shows them ("##,##0.000", empty for Null).
struct MissingGrades {
    QString name;  ///< of 評価係数: "<name>係数が未設定です。"
};
struct MissingSetup {};  ///< "支給係数が未設定です。"
struct RunTimeInput {};  ///< no simulation; the run may go on
struct UniformPanel {
    QString registered, corrected;
};
struct DoubleEvaluation {
    QString name;  ///< of 評価係数; a warning, the run may go on
};
struct GradePanel {
    std::vector<PanelGrade> rows;  ///< at most nine; empty with fewer than two registered grades
};
struct NothingToDo {};  ///< the set-up answers no rule; the screen stays as it is
using PaymentOutcome = std::variant<NothingToDo, MissingGrades, MissingSetup, RunTimeInput, UniformPanel,
                                    DoubleEvaluation, GradePanel>;

struct PaymentDecision {
    PaymentOutcome outcome;
    /// The new hyougo_type; without a value the form's member stays as it is.
    std::optional<QString> hyougoType;
};
/// The decision of Command6; reads only. Throws Error(Type) when more than nine grades would have to be
/// shown.
PaymentDecision decidePaymentPanel(store::Connection& connection, const domain::RunKey& run);

}  // namespace calc
