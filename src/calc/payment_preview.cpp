#include "calc/payment_preview.h"

#include <algorithm>

namespace calc {
namespace {

using Reason = store::Error::Reason;

const QString kNobody = QStringLiteral("個人別計算の対象になる社員がいません。");
const QString kBadEntry = QStringLiteral("修正値に 0.000～999.999 を入力してください。");

bool isCoefficient(const QString& text) {
    try {
        const double value = coefficientOfText(text);
        return value >= 0 && value <= kLargestCoefficient;
    } catch (const store::Error&) {
        return false;
    }
}

/// Every box in use holds what leaving it would accept as it stands.
bool isEntered(const PaymentSimulation& panel) {
    using Mode = PaymentSimulation::Mode;
    if (panel.mode == Mode::Uniform) return isCoefficient(panel.uniformCorrected);
    return panel.mode == Mode::Closed ||
           std::all_of(panel.grades.begin(), panel.grades.end(), [](const PanelGrade& grade) {
               return grade.registered.isEmpty() || isCoefficient(grade.corrected);
           });
}

}  // namespace

PaymentPreview::PaymentPreview(store::Connection& connection, const domain::RunKey& run) {
    try {
        inputs_ = readKojinbetsuInputs(connection, run);
        if (inputs_.rows.empty()) {
            missing_ = kNobody;
            return;
        }
        rounding_ = readRounding(connection, run);
        assignees_.emplace(connection, run, QStringLiteral("個人別計算"), inputs_.rows.size());
        registered_ = totalOf({});
    } catch (const store::Error& error) {
        if (error.reason() != Reason::Type && error.reason() != Reason::Overflow) throw;
        missing_ = error.cause();
    }
}

store::Money PaymentPreview::totalOf(const PaymentSimulation& panel) const {
    const auto payments = effectivePayments(inputs_, panel);
    return assignees_->totalWith(totalsOf(kojinbetsuAmounts(inputs_.rows, payments, rounding_))).toMoney();
}

PaymentEffect PaymentPreview::effectOf(const PaymentSimulation& panel) const {
    if (!missing_.isEmpty()) return {{}, missing_};
    if (!isEntered(panel)) return {{}, kBadEntry};
    try {
        const store::Money corrected = totalOf(panel);
        return {PaymentEffect::Totals{registered_, corrected, corrected - registered_}, {}};
    } catch (const store::Error& error) {
        return {{}, error.cause()};
    }
}

}  // namespace calc
