#include "calc/frmSHaibunjikkouK2.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedLayout>

#include "calc/changed_inputs.h"
#include "calc/run_calculation.h"
#include "calc/ui_budget_box.h"
#include "calc/ui_payment_panel.h"
#include "calc/ui_payment_side.h"
#include "calc/ui_run_output.h"
#include "design/ui_criterion_picker.h"
#include "design/ui_houshiki_options.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/menu_form.h"
#include "prep/frmSKakunin.h"
#include "reports/frmChart.h"
#include "reports/frmReport.h"
#include "reports/ui_sent_sheet.h"
#include "widgets/theme.h"

namespace calc {

using design::Houshiki;
using widgets::twips;

frmSHaibunjikkouK2::frmSHaibunjikkouK2(forms::House& house, const reports::SheetFolder& sheets,
                                       QWidget* parent)
    : Form(QStringLiteral("frmSHaibunjikkouK2"), QStringLiteral("配分計算"), parent),
      house_(house),
      sheets_(sheets) {
    makeControls();
    connectEvents();
    forms::guarded(this, [this] { Form_Load(); });
}

store::Connection& frmSHaibunjikkouK2::cn() const {
    return *house_.global.cn_main;
}

void frmSHaibunjikkouK2::connectEvents() {
    connect(picker_, &design::CriterionPicker::kubunChosen, this,
            [this] { forms::guarded(this, [this] { DataList1_Click(); }); });
    connect(picker_, &design::CriterionPicker::kijunChosen, this, [this] {
        if (forms::guarded(this, [this] { DataList2_Click(); })) return;
        picker_->kijunList()->choose(-1);
        dropCriterion();
    });
    connect(options_, &design::HoushikiOptions::picked, this, &frmSHaibunjikkouK2::Option1_Click);
    for (QLineEdit* box : budget_->boxes())
        validateOnLeave(box, [this, box] { return Text_Validate(box); }, {command2_});
    for (QLineEdit* box : payment_->panel()->boxes())
        validateOnLeave(box, [this, box] { return payment_->panel()->check(box); }, {command2_});
    connect(command1_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command1_Click);
    connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
    connect(command4_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command4_Click);
    connect(command5_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command5_Click);
    connect(command6_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command6_Click);
    connect(command7_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command7_Click);
}

void frmSHaibunjikkouK2::Form_Load() {
    dropCriterion();
    marker_[0]->hide();
    options_->choose(Houshiki::Kojinbetsu);
    picker_->load();
    picker_->kubunList()->setFocus();
}

// ---- Place on the screen

void frmSHaibunjikkouK2::place() {
    if (const QWidget* main = forms::mainWindowOf(this))
        move(main->x() + twips(45), main->y() + twips(600));
    else
        Form::place();
}

void frmSHaibunjikkouK2::activated() {
    place();
}

void frmSHaibunjikkouK2::done(int result) {
    forms::guarded(this, [this] { storeTypedBudget(); });
    Form::done(result);
}

void frmSHaibunjikkouK2::showResults(bool show) {
    for (QWidget* part : std::initializer_list<QWidget*>{command4_, command5_, command7_, marker_[2]})
        part->setVisible(show);
    sent_->hide();
    payment_->fitWindow();
}

// ---- Choosing

void frmSHaibunjikkouK2::DataList1_Click() {
    dropCriterion();
    picker_->loadKijun();
    marker_[0]->show();
}

/// Back to the step before a criterion is chosen: no options, no budget, nothing to run on.
void frmSHaibunjikkouK2::dropCriterion() {
    run_.reset();
    state_ = State::NothingChosen;
    for (QWidget* part : std::initializer_list<QWidget*>{label3_, marker_[1], options_, budget_, command6_})
        part->hide();
    stack_->setCurrentIndex(0);
    command1_->show();
    showResults(false);
    payment_->close();
}

void frmSHaibunjikkouK2::DataList2_Click() {
    payment_->close();
    if (picker_->refuseEmptyKijun()) return;
    run_.reset();
    picker_->takeSelection();
    const auto kijun = design::kijunOf(cn(), house_.global.haibun_kubun, house_.global.haibun_kijun);
    if (!kijun) return;
    kijun_ = *kijun;
    const design::PaymentFlags offered = design::offeredPayments(kijun_);
    options_->offer(offered);
    options_->enableTyped(!house_.global.haibun_sekkei_mode);
    for (QWidget* part : std::initializer_list<QWidget*>{label3_, marker_[1], options_, budget_})
        part->show();
    stack_->setCurrentIndex(1);
    showResults(false);
    const domain::RunKey run = design::currentRun(house_.global);
    tellEmployees(design::hasEmployees(cn(), run), offered[0] || offered[1]);
    budget_->bind(openRunBudget(cn(), run), kijun_);
    run_ = run;
    showTotals();
    const bool kojinbetsu = options_->chosen() == Houshiki::Kojinbetsu;
    command1_->setVisible(!kojinbetsu);
    command6_->setVisible(kojinbetsu);
}

void frmSHaibunjikkouK2::tellEmployees(bool any, bool computes) {
    state_ = !any ? State::NoEmployees : computes ? State::Ready : State::NothingToCompute;
    label3_->setText(state_ == State::NoEmployees ? design::kNoEmployees
                     : state_ == State::Ready ? QStringLiteral("算定方式を指定してください｡")
                                              : QStringLiteral("配分計算は必要ありません。"));
    widgets::setTone(label3_, state_ == State::NoEmployees ? widgets::Tone::Warning : widgets::Tone::Normal);
    if (state_ == State::NothingToCompute) {
        budget_->hide();
        for (QPushButton* button : {command4_, command5_, command7_}) button->show();
    }
}

void frmSHaibunjikkouK2::Option1_Click(Houshiki houshiki) {
    if (options_->isHidden()) return;
    command1_->setVisible(houshiki != Houshiki::Kojinbetsu);
    command6_->setVisible(houshiki == Houshiki::Kojinbetsu);
    payment_->close();
}

// ---- Budgets and totals

/// The totals as the run's row holds them. One that no longer fits what it was computed from says so.
void frmSHaibunjikkouK2::showTotals() {
    budget_->showTotals(readRunBudget(cn(), *run_));
    budget_->showChange(inputsChangedSince(cn(), *run_, kijun_));
}

bool frmSHaibunjikkouK2::Text_Validate(QLineEdit* box) {
    return budget_->admits(box) && forms::guarded(this, [this] {
               budget_->refreshTotals();
               storeTypedBudget();
           });
}

/// Both boxes reach the run's row as soon as they are valid, so that no typed budget is lost; what is not
/// valid never does.
void frmSHaibunjikkouK2::storeTypedBudget() {
    const auto typed = budget_->budgets();
    if (!run_ || !typed) return;
    const RunBudget row = readRunBudget(cn(), *run_);
    if (row.yosanSougaku == typed->all && row.sougakuHaibunYosan == typed->pool) return;
    storeBudgets(cn(), *run_, typed->all, typed->pool);
}

// ---- The run

bool frmSHaibunjikkouK2::refused() {
    if (!picker_->requireSelection()) return true;
    if (state_ != State::NoEmployees && state_ != State::NothingToCompute) return false;
    forms::tell(this, QStringLiteral("この処理は必要ありません。"), QStringLiteral("確認"),
                forms::BoxIcon::Critical);
    picker_->kijunList()->setFocus();
    return true;
}

void frmSHaibunjikkouK2::confirmHoushiki(Houshiki houshiki) {
    const QString caption = options_->captionOf(houshiki);
    forms::tell(this, QStringLiteral("『%1』を指定します。").arg(caption),
                QStringLiteral("算定方式指定の確認"));
    house_.global.santei_houshiki = design::houshikiCode(houshiki);
    house_.global.santei_houshiki_mei = caption;
    setHourglass();
}

void frmSHaibunjikkouK2::tellFinished(Houshiki houshiki) {
    budget_->showTotalOf(houshiki);
    showTotals();
    forms::tell(this, QStringLiteral("『%1』の処理を終了しました。").arg(options_->captionOf(houshiki)),
                QStringLiteral("処理終了の確認"));
}

/// The calculation of the chosen 算定方式; told as finished when it stands. False when it is refused: nothing
/// was touched then.
bool frmSHaibunjikkouK2::run(RunCalculation& calculation, Houshiki houshiki) {
    if (houshiki == Houshiki::Kojinbetsu) {
        confirmHoushiki(houshiki);
        calculation.individually(payment_->simulation());
    } else if (budget_->poolBudget() == store::Money()) {
        forms::tell(this, QStringLiteral("総額配分予算を入力してください。"), QStringLiteral("未入力"),
                    forms::BoxIcon::Critical);
        setDefaultPointer();
        calculation.nothing();
        return false;
    } else {
        confirmHoushiki(houshiki);
        calculation.fromPool(budget_->poolBudget());
    }
    tellFinished(houshiki);
    return true;
}

/// Whatever is suspicious is told before anything is computed; where the user went to mend it, the screen is
/// brought up to date.
bool frmSHaibunjikkouK2::inputsAgreed(Houshiki houshiki) {
    auto found = prep::suspicionsBeforeCalculation(cn(), *run_, houshiki);
    if (prep::frmSKakunin::mayGoOn(this, house_, std::move(found), QStringLiteral("このまま計算する(&K)")))
        return true;
    picker_->takeSelection();
    showTotals();
    return false;
}

void frmSHaibunjikkouK2::Command1_Click() {
    const auto calculate = [this] {
        if (refused() || !run_) return;
        const auto houshiki = options_->chosen();
        const bool computes = houshiki == Houshiki::Kojinbetsu || houshiki == Houshiki::Sougaku;
        if (computes && !inputsAgreed(*houshiki)) return;
        RunCalculation calculation(cn(), *run_, windowTitle());
        if (!computes)
            calculation.nothing();
        else if (!run(calculation, *houshiki))
            return;
        showResults(true);
    };
    // After a rollback the totals on the screen are those of the tables again.
    const auto bringBack = [this] {
        if (run_) showTotals();
    };
    forms::guarded(this, calculate, bringBack);
}

// ---- Payment coefficients

void frmSHaibunjikkouK2::Command6_Click() {
    forms::guarded(this, [this] {
        if (!run_ || !payment_->correct(cn(), *run_)) return;
        command6_->hide();
        command1_->show();
        if (!payment_->panel()->enter()) command1_->setFocus();
    });
}

// ---- Results

/// The run as it is chosen now, for one of its outputs.
ShownRun frmSHaibunjikkouK2::shownRun() {
    picker_->takeSelection();
    setHourglass();
    return {house_.global, *run_, kijun_, payment_->simulation(), payment_->isOpen()};
}

void frmSHaibunjikkouK2::Command4_Click() {
    forms::guarded(this, [this] {
        auto* preview = listOfRun(shownRun(), this);
        setDefaultPointer();
        showChild(preview);
    });
}

void frmSHaibunjikkouK2::Command5_Click() {
    forms::guarded(this, [this] {
        sent_->tell(sendRun(shownRun(), sheets_));
        payment_->fitWindow();
    });
}

void frmSHaibunjikkouK2::Command7_Click() {
    forms::guarded(this, [this] {
        auto* charts = chartScreenOfRun(shownRun(), this);
        setDefaultPointer();
        showChild(charts);
    });
}

}  // namespace calc
