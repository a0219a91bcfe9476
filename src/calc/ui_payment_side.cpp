#include "calc/ui_payment_side.h"

#include <QCoreApplication>
#include <QLayout>
#include <QRegularExpression>

#include "calc/ui_payment_panel.h"
#include "forms/box.h"
#include "widgets/form.h"
#include "widgets/theme.h"

namespace calc {
namespace {

const QString kTitle = QStringLiteral("確認");

}  // namespace

PaymentSide::PaymentSide(widgets::Form* form, Least least)
    : form_(form), least_(least), panel_(new PaymentPanel(form)) {
    panel_->hide();
    QObject::connect(panel_, &PaymentPanel::edited, form, [this] { showEffect(); });
}

bool PaymentSide::isOpen() const {
    return !panel_->isHidden();
}

PaymentSimulation PaymentSide::simulation() const {
    return panel_->simulation(isOpen(), hyougoType_);
}

// ---- What 支給係数修正 leads to

bool PaymentSide::correct(store::Connection& connection, const domain::RunKey& run) {
    panel_->clearGrades();
    const PaymentDecision decision = decidePaymentPanel(connection, run);
    if (decision.hyougoType) hyougoType_ = *decision.hyougoType;
    if (!act(decision.outcome)) return false;
    if (std::holds_alternative<UniformPanel>(decision.outcome) ||
        std::holds_alternative<GradePanel>(decision.outcome))
        open(connection, run);
    return true;
}

/// Tells the outcome or fills the panel; true when the run may go on.
bool PaymentSide::act(const PaymentOutcome& outcome) {
    if (const auto* missing = std::get_if<MissingGrades>(&outcome))
        // A company may call it "評価" or "評価係数".
        return refuse(QString(missing->name).remove(QRegularExpression(QStringLiteral("係数$"))) +
                      QStringLiteral("係数が未設定です。"));
    if (std::holds_alternative<MissingSetup>(outcome))
        return refuse(QStringLiteral("支給係数が未設定です。"));
    if (std::holds_alternative<RunTimeInput>(outcome))
        forms::tell(form_, QStringLiteral("支給係数は実行時入力です。\nシミュレーションは行いません。"),
                    kTitle, forms::BoxIcon::Information);
    else if (const auto* twice = std::get_if<DoubleEvaluation>(&outcome))
        refuse(twice->name + QStringLiteral("係数を設定する場合は、支給係数の設定方法に\n"
                                            "「評価別係数」を選ばないでください。\n"
                                            "このまま計算すると評価を２重に乗じてしまいます。"));
    else if (const auto* uniform = std::get_if<UniformPanel>(&outcome))
        panel_->showUniform(*uniform);
    else if (const auto* grades = std::get_if<GradePanel>(&outcome))
        panel_->showGrades(grades->rows);
    else
        return false;
    return true;
}

bool PaymentSide::refuse(const QString& text) {
    forms::tell(form_, text, kTitle, forms::BoxIcon::Critical);
    return false;
}

// ---- The panel in the window

void PaymentSide::open(store::Connection& connection, const domain::RunKey& run) {
    preview_.emplace(connection, run);
    if (isOpen()) return showEffect();
    const int closed = form_->width();
    panel_->show();
    showEffect();
    fitWindow();
    room_ = std::max(least_.openWidth - least_.closedWidth, panel_->sizeHint().width() + 2 * widgets::kGrid);
    form_->resize(std::max(form_->minimumWidth(), closed + room_), form_->height());
}

/// At every key stroke: reckoned in memory, nothing is read or written.
void PaymentSide::showEffect() {
    if (preview_ && isOpen()) panel_->showEffect(preview_->effectOf(simulation()));
}

void PaymentSide::close() {
    preview_.reset();
    if (!isOpen()) return;
    panel_->hide();
    fitWindow();
    form_->resize(std::max(form_->minimumWidth(), form_->width() - room_), form_->height());
}

void PaymentSide::fitWindow() {
    // What was shown or hidden inside the contents has reached the window's layout then.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    form_->layout()->activate();
    form_->setMinimumSize(QSize(isOpen() ? least_.openWidth : least_.closedWidth, least_.height)
                              .expandedTo(form_->layout()->totalMinimumSize()));
}

}  // namespace calc
