#include "calc/frmSHaibunjikkouK2.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStackedLayout>

#include "calc/changed_inputs.h"
#include "calc/kojinbetsu.h"
#include "calc/pay_charts.h"
#include "calc/sougaku.h"
#include "calc/ui_payment_panel.h"
#include "calc/ui_result_output.h"
#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/menu_form.h"
#include "prep/frmSKakunin.h"
#include "reports/frmChart.h"
#include "reports/frmReport.h"
#include "reports/ui_list_title.h"
#include "reports/ui_sent_sheet.h"
#include "reports/workbook.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace calc {

using design::Houshiki;
using store::Money;
using widgets::twips;

namespace {

const QString kInputError = QStringLiteral("入力エラー");
constexpr int kHeight = twips(4770);
constexpr int kClosedWidth = twips(7770);
constexpr int kOpenWidth = twips(11055);

/// The limit of both budgets: 99,999,999,999 yen is still taken.
Money budgetLimit() {
    return Money::fromYen(100'000'000'000);
}

/// The amount in a box or label, in whole yen as it will be shown; none when it is no number. A number beyond
/// the money range counts as the limit.
std::optional<Money> amountOf(const QString& text) {
    try {
        return Money::fromText(store::formatGrouped(Money::fromText(text)));
    } catch (const store::Error& error) {
        if (error.reason() == store::Error::Reason::Overflow) return budgetLimit();
        return std::nullopt;
    }
}

Money shownAmount(const QLineEdit* box) {
    return amountOf(box->text()).value_or(Money());
}
Money shownAmount(const QLabel* label) {
    return amountOf(label->text()).value_or(Money());
}

void keepsItsPlace(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

}  // namespace

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

// ---- The screen's parts
// ------------------------------------------------------------------------------------------

void frmSHaibunjikkouK2::makeControls() {
    auto* title = make<QLabel>(QStringLiteral("Label20"),
                               QStringLiteral("配分計算　基準日 %1").arg(house_.global.kijunbi));
    picker_ = new design::CriterionPicker(house_, this);
    for (int i = 0; i < 3; ++i) {
        auto* marker = make<QLabel>(QStringLiteral("Image%1").arg(i + 1), QString(QChar(u'②' + i)));
        widgets::setTone(marker, widgets::Tone::Heading);
        marker_[static_cast<std::size_t>(i)] = marker;
    }
    auto* first = make<QLabel>(QStringLiteral("Image0"), QStringLiteral("①"));
    widgets::setTone(first, widgets::Tone::Heading);
    picker_->setMarkers(first, marker_[0]);
    auto* run = makeRun();
    auto* results = makeResults();
    auto* closing = makeClosing();
    panel_ = new PaymentPanel(this);
    panel_->hide();

    auto* body = new QHBoxLayout;
    body->setSpacing(2 * widgets::kGrid);
    auto* left = new QVBoxLayout;
    left->setSpacing(widgets::kGrid + widgets::kGrid / 2);
    left->addWidget(picker_, 1);
    left->addWidget(run);
    left->addLayout(results);
    left->addWidget(sent_);
    body->addLayout(left, 1);
    body->addWidget(panel_);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, nullptr));
    column->addLayout(body, 1);
    column->addLayout(closing);
    setMinimumSize(kClosedWidth, kHeight);
    QWidget* before = text2_;
    for (QLineEdit* box : panel_->boxes()) {
        setTabOrder(before, box);
        before = box;
    }
    widgets::tabOrder({before, command6_, command1_, command4_, command7_, command5_});
}

/// Step three: the 算定方式 over the budget. A hint stands in their place until a criterion is chosen.
QWidget* frmSHaibunjikkouK2::makeRun() {
    auto* hint =
        make<QLabel>(QStringLiteral("Label21"),
                     QStringLiteral("配分区分と配分基準を選ぶと、予算と支給額の合計が表示されます。"));
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    widgets::setTone(hint, widgets::Tone::Muted);
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(widgets::kGrid);
    auto* guidance = new QHBoxLayout;
    label3_ = make<QLabel>(QStringLiteral("Label3"), QStringLiteral("算定方式を指定してください。"));
    guidance->addWidget(marker_[1]);
    guidance->addWidget(label3_, 1);
    column->addLayout(guidance);
    column->addWidget(makeOptions());
    column->addWidget(makeBudget());
    auto* holder = new QWidget(this);
    stack_ = new QStackedLayout(holder);
    stack_->addWidget(hint);
    stack_->addWidget(page);
    for (QWidget* part : std::initializer_list<QWidget*>{marker_[1], label3_, frame1_}) keepsItsPlace(part);
    return holder;
}

QWidget* frmSHaibunjikkouK2::makeOptions() {
    frame1_ = make<QFrame>(QStringLiteral("Frame1"));
    option_ = makeArray<QRadioButton, 4>(
        QStringLiteral("Option1"), {QStringLiteral("個人別計算"), QStringLiteral("総額配分"),
                                    QStringLiteral("金一封(実行時)"), QStringLiteral("特別加算金(実行時)")});
    auto* row = new QHBoxLayout(frame1_);
    row->setContentsMargins(2 * widgets::kGrid, 0, 0, 0);
    row->setSpacing(2 * widgets::kGrid);
    for (QRadioButton* option : option_) {
        option->setParent(frame1_);
        row->addWidget(option);
    }
    row->addStretch();
    return frame1_;
}

QLineEdit* frmSHaibunjikkouK2::moneyBox(const QString& name) {
    auto* box = make<QLineEdit>(name);
    box->setAlignment(Qt::AlignRight);
    box->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("99,999,999,999")) +
                         4 * widgets::kGrid);
    widgets::admitOnly(box, QStringLiteral("0123456789"));
    return box;
}

/// The budgets at the left, the totals under one another at the right.
QWidget* frmSHaibunjikkouK2::makeBudget() {
    auto* card = new widgets::Card(this);
    card->setObjectName(QStringLiteral("Frame3"));
    frame3_ = card;
    keepsItsPlace(card);
    text1_ = moneyBox(QStringLiteral("Text1"));
    text2_ = moneyBox(QStringLiteral("Text2"));
    total_ = makeArray<QLabel, 6>(QStringLiteral("Label6"), {});
    totalHead_ = makeArray<QLabel, 3>(
        QStringLiteral("Label7"),
        {QStringLiteral("金一封"), QStringLiteral("特別加算金"), QStringLiteral("総額配分予定")});
    auto* individual = make<QLabel>(QStringLiteral("Label8"), QStringLiteral("個人別計算"));
    auto* pool = make<QLabel>(QStringLiteral("Label9"), QStringLiteral("総額配分"));
    auto* all = make<QLabel>(QStringLiteral("Label19"), QStringLiteral("合計"));
    auto* unit = make<QLabel>(QStringLiteral("Label22"), QStringLiteral("単位: 円"));
    widgets::setTone(unit, widgets::Tone::Muted);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(widgets::kGrid + widgets::kGrid / 2);
    grid->setVerticalSpacing(widgets::kGrid / 2);
    const auto line = [&](int row, int column, QLabel* head, QWidget* amount) {
        grid->addWidget(head, row, column);
        grid->addWidget(amount, row, column + 1);
    };
    line(0, 0, labelFor(QStringLiteral("Label4"), QStringLiteral("予算総額(&T)"), text1_), text1_);
    line(1, 0, labelFor(QStringLiteral("Label5"), QStringLiteral("総額配分予算(&B)"), text2_), text2_);
    line(2, 0, totalHead_[2], total_[4]);
    line(0, 3, individual, total_[0]);
    line(1, 3, pool, total_[1]);
    line(2, 3, totalHead_[0], total_[2]);
    line(3, 3, totalHead_[1], total_[3]);
    line(4, 3, all, total_[5]);
    for (int i = 0; i < 2; ++i) {
        auto* head =
            make<QLabel>(QStringLiteral("Label23_%1").arg(i),
                         totalHead_[static_cast<std::size_t>(i)]->text() + QStringLiteral("（対象外）"));
        widgets::setTone(head, widgets::Tone::Muted);
        notUsed_[static_cast<std::size_t>(i)] = head;
        grid->addWidget(head, 2 + i, 3);
    }
    overBudget_ = make<QLabel>(QStringLiteral("Label24"), QString());
    widgets::setTone(overBudget_, widgets::Tone::Warning);
    grid->addWidget(overBudget_, 3, 0, 1, 2);
    grid->addWidget(unit, 4, 0);
    grid->setColumnMinimumWidth(2, 2 * widgets::kGrid);
    for (int column : {1, 4}) grid->setColumnStretch(column, 1);
    dressTotals({individual, pool, totalHead_[0], totalHead_[1], totalHead_[2]});
    widgets::setTone(all, widgets::Tone::Heading);
    widgets::setTone(total_[5], widgets::Tone::Title);
    card->body()->addLayout(grid);
    changed_ = make<QLabel>(QStringLiteral("Label25"),
                            QStringLiteral("⚠ 計算のあとに入力が変わっています。もう一度計算してください。"));
    widgets::setTone(changed_, widgets::Tone::Warning);
    changed_->setWordWrap(true);
    changed_->hide();
    card->body()->addWidget(changed_);
    return card;
}

/// Amounts stand at the right, may be copied, and do not jump when a neighbour is hidden.
void frmSHaibunjikkouK2::dressTotals(std::initializer_list<QLabel*> heads) {
    for (QLabel* amount : total_) {
        amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        amount->setTextInteractionFlags(Qt::TextSelectableByMouse);
        keepsItsPlace(amount);
    }
    for (QLabel* head : heads) {
        widgets::setTone(head, widgets::Tone::Muted);
        keepsItsPlace(head);
    }
}

/// The run, and what shows its result.
QHBoxLayout* frmSHaibunjikkouK2::makeResults() {
    command6_ = make<QPushButton>(QStringLiteral("Command6"), QStringLiteral("支給係数修正(&S)"));
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("計算(&K)"));
    command4_ = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("一覧表"));
    command7_ = make<QPushButton>(QStringLiteral("Command7"), QStringLiteral("グラフ(&G)"));
    command5_ = make<QPushButton>(QStringLiteral("Command5"), QStringLiteral("Excelにデータを送る"));
    for (QPushButton* button : {command6_, command1_}) widgets::setPrimary(button);
    setOutput(command4_, Output::List);
    setOutput(command5_, Output::Excel);
    sent_ = new reports::SentSheet(this);
    auto* row = new QHBoxLayout;
    row->setSpacing(widgets::kGrid);
    row->addWidget(command6_);
    row->addWidget(command1_);
    row->addStretch();
    for (QWidget* part : std::initializer_list<QWidget*>{marker_[2], command4_, command7_, command5_}) {
        keepsItsPlace(part);
        row->addWidget(part);
    }
    return row;
}

QHBoxLayout* frmSHaibunjikkouK2::makeClosing() {
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    setCancelButton(command2_);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    return widgets::buttonRow({help}, {command2_});
}

void frmSHaibunjikkouK2::connectEvents() {
    connect(picker_, &design::CriterionPicker::kubunChosen, this,
            [this] { forms::guarded(this, [this] { DataList1_Click(); }); });
    connect(picker_, &design::CriterionPicker::kijunChosen, this, [this] {
        if (forms::guarded(this, [this] { DataList2_Click(); })) return;
        picker_->kijunList()->choose(-1);
        dropCriterion();
    });
    for (int i = 0; i < 4; ++i)
        connect(option_[static_cast<std::size_t>(i)], &QRadioButton::clicked, this,
                [this, i] { Option1_Click(i); });
    for (QLineEdit* box : {text1_, text2_})
        validateOnLeave(box, [this, box] { return Text_Validate(box); }, {command2_});
    for (QLineEdit* box : panel_->boxes())
        validateOnLeave(box, [this, box] { return panel_->check(box); }, {command2_});
    connect(command1_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command1_Click);
    connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
    connect(command4_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command4_Click);
    connect(command5_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command5_Click);
    connect(command6_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command6_Click);
    connect(command7_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command7_Click);
    connect(panel_, &PaymentPanel::edited, this, &frmSHaibunjikkouK2::showEffect);
}

void frmSHaibunjikkouK2::Form_Load() {
    dropCriterion();
    marker_[0]->hide();
    chooseOption(0);
    picker_->load();
    picker_->kubunList()->setFocus();
}

// ---- Place on the screen
// -----------------------------------------------------------------------------------------

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

/// The window grows by the panel and shrinks by it again.
void frmSHaibunjikkouK2::openPanel() {
    preview_.emplace(cn(), *run_);
    if (!panel_->isHidden()) return showEffect();
    const int closed = width();
    panel_->show();
    showEffect();
    fitWindow(kOpenWidth);
    panelRoom_ = std::max(kOpenWidth - kClosedWidth, panel_->sizeHint().width() + 2 * widgets::kGrid);
    resize(std::max(minimumWidth(), closed + panelRoom_), height());
}

/// At every key stroke: reckoned in memory, nothing is read or written.
void frmSHaibunjikkouK2::showEffect() {
    if (preview_ && !panel_->isHidden()) panel_->showEffect(preview_->effectOf(simulation()));
}

void frmSHaibunjikkouK2::closePanel() {
    preview_.reset();
    if (panel_->isHidden()) return;
    panel_->hide();
    fitWindow(kClosedWidth);
    resize(std::max(minimumWidth(), width() - panelRoom_), height());
}

/// Never smaller than told, nor than what the controls in sight need.
void frmSHaibunjikkouK2::fitWindow(int leastWidth) {
    // What was shown or hidden inside the contents has reached the window's layout then.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    layout()->activate();
    setMinimumSize(QSize(leastWidth, kHeight).expandedTo(layout()->totalMinimumSize()));
}

void frmSHaibunjikkouK2::showResults(bool show) {
    for (QWidget* part : std::initializer_list<QWidget*>{command4_, command5_, command7_, marker_[2]})
        part->setVisible(show);
    sent_->hide();
    fitWindow(panel_->isHidden() ? kClosedWidth : kOpenWidth);
}

// ---- Choosing
// ----------------------------------------------------------------------------------------------------

void frmSHaibunjikkouK2::DataList1_Click() {
    dropCriterion();
    picker_->loadKijun();
    marker_[0]->show();
}

/// Back to the step before a criterion is chosen: no options, no budget, nothing to run on.
void frmSHaibunjikkouK2::dropCriterion() {
    run_.reset();
    state_ = State::NothingChosen;
    for (QWidget* part : std::initializer_list<QWidget*>{label3_, marker_[1], frame1_, frame3_, command6_})
        part->hide();
    stack_->setCurrentIndex(0);
    command1_->show();
    showResults(false);
    closePanel();
}

void frmSHaibunjikkouK2::DataList2_Click() {
    closePanel();
    if (picker_->refuseEmptyKijun()) return;
    run_.reset();
    picker_->takeSelection();
    const auto kijun = design::kijunOf(cn(), house_.global.haibun_kubun, house_.global.haibun_kijun);
    if (!kijun) return;
    kijun_ = *kijun;
    showOptions(*kijun);
    for (QWidget* part : std::initializer_list<QWidget*>{label3_, marker_[1], frame1_, frame3_}) part->show();
    stack_->setCurrentIndex(1);
    showResults(false);
    const domain::RunKey run = design::currentRun(house_.global);
    tellEmployees(design::hasEmployees(cn(), run));
    openRunBudget(cn(), run);
    run_ = run;
    summed_ = kijun->uses;
    bindBudget(*kijun);
    const bool kojinbetsu = chosenHoushiki() == Houshiki::Kojinbetsu;
    command1_->setVisible(!kojinbetsu);
    command6_->setVisible(kojinbetsu);
}

bool frmSHaibunjikkouK2::optionOffered(int index) const {
    const auto& uses = kijun_.uses;
    const bool none = std::none_of(uses.begin(), uses.end(), [](bool used) { return used; });
    return none || uses[static_cast<std::size_t>(index)];
}

void frmSHaibunjikkouK2::chooseOption(int index) {
    for (int i = 0; i < 4; ++i) {
        QRadioButton* option = option_[static_cast<std::size_t>(i)];
        const QSignalBlocker quiet(option);
        option->setAutoExclusive(false);
        option->setChecked(i == index);
        option->setAutoExclusive(true);
    }
}

void frmSHaibunjikkouK2::showOptions(const design::Kijun&) {
    for (int i = 0; i < 4; ++i) {
        QRadioButton* option = option_[static_cast<std::size_t>(i)];
        option->setVisible(optionOffered(i));
        option->setEnabled(i < 2 || !house_.global.haibun_sekkei_mode);
    }
    chooseOption(optionOffered(0) ? 0 : optionOffered(1) ? 1 : -1);
}

void frmSHaibunjikkouK2::tellEmployees(bool any) {
    const bool computes = optionOffered(0) || optionOffered(1);
    state_ = !any ? State::NoEmployees : computes ? State::Ready : State::NothingToCompute;
    label3_->setText(state_ == State::NoEmployees ? design::kNoEmployees
                     : state_ == State::Ready ? QStringLiteral("算定方式を指定してください｡")
                                              : QStringLiteral("配分計算は必要ありません。"));
    widgets::setTone(label3_, state_ == State::NoEmployees ? widgets::Tone::Warning : widgets::Tone::Normal);
    if (state_ == State::NothingToCompute) {
        frame3_->hide();
        for (QPushButton* button : {command4_, command5_, command7_}) button->show();
    }
}

void frmSHaibunjikkouK2::bindBudget(const design::Kijun& kijun) {
    const auto uses = [&](Houshiki h) { return kijun.uses[static_cast<std::size_t>(h)]; };
    const bool pool = uses(Houshiki::Sougaku);
    const RunBudget row = readRunBudget(cn(), *run_);
    text1_->setText(pool ? store::formatGrouped(row.yosanSougaku) : QStringLiteral("0"));
    text2_->setText(pool ? store::formatGrouped(row.sougakuHaibunYosan) : QStringLiteral("0"));
    text1_->setEnabled(pool);
    text2_->setEnabled(pool);
    totalHead_[2]->setText(pool ? QStringLiteral("総額配分予定") : QString());
    total_[4]->setVisible(pool);
    totalHead_[0]->setVisible(uses(Houshiki::Kinippu));
    totalHead_[1]->setVisible(uses(Houshiki::Tokubetsu));
    notUsed_[0]->setVisible(!uses(Houshiki::Kinippu));
    notUsed_[1]->setVisible(!uses(Houshiki::Tokubetsu));
    for (Houshiki typed : {Houshiki::Kinippu, Houshiki::Tokubetsu})
        widgets::setTone(total_[static_cast<std::size_t>(typed)],
                         uses(typed) ? widgets::Tone::Normal : widgets::Tone::Muted);
    showTotals();
}

/// The four sums as the row holds them; 0 where the criterion does not use that payment and none was run.
void frmSHaibunjikkouK2::showTotals() {
    const RunBudget row = readRunBudget(cn(), *run_);
    const std::array<Money, 4> sums{row.kojinbetsuGoukei, row.sougakuGoukei, row.kinIppuuGoukei,
                                    row.tokubetsuKasankinGoukei};
    for (std::size_t i = 0; i < sums.size(); ++i)
        total_[i]->setText(summed_[i] ? store::formatGrouped(sums[i]) : QStringLiteral("0"));
    refresh_totals();
    showChange();
}

RunBudget frmSHaibunjikkouK2::shownBudget() const {
    return {shownAmount(text1_),    shownAmount(text2_),    shownAmount(total_[0]),
            shownAmount(total_[1]), shownAmount(total_[2]), shownAmount(total_[3])};
}

void frmSHaibunjikkouK2::refresh_totals() {
    const RunTotals totals = refreshTotals(shownBudget());
    total_[4]->setText(store::formatGrouped(totals.haibunYotei));
    total_[5]->setText(store::formatGrouped(totals.soukei));
    for (QLineEdit* box : {text1_, text2_}) box->setText(store::formatGrouped(shownAmount(box)));
    markOverBudget(totals);
}

/// What was distributed, or is planned, beyond its budget: by colour, a sign and the amount.
void frmSHaibunjikkouK2::markOverBudget(const RunTotals& totals) {
    const Money over = shownAmount(total_[1]) - shownAmount(text2_);
    const bool spent = text2_->isEnabled() && over > Money();
    overBudget_->setText(
        spent ? QStringLiteral("⚠ 総額配分が予算を %1円 超えています").arg(store::formatGrouped(over))
              : QString());
    const auto tone = [](bool warned) { return warned ? widgets::Tone::Warning : widgets::Tone::Normal; };
    widgets::setTone(total_[1], tone(spent));
    widgets::setTone(total_[4], tone(totals.haibunYotei < Money()));
}

void frmSHaibunjikkouK2::Option1_Click(int index) {
    if (frame1_->isHidden()) return;
    command1_->setVisible(index != 0);
    command6_->setVisible(index == 0);
    closePanel();
}

std::optional<Houshiki> frmSHaibunjikkouK2::chosenHoushiki() const {
    for (int i = 0; i < 4; ++i)
        if (option_[static_cast<std::size_t>(i)]->isChecked()) return static_cast<Houshiki>(i);
    return std::nullopt;
}

// ---- Budgets
// -----------------------------------------------------------------------------------------------------

/// What is wrong with the amount in a budget box; empty when it may be stored.
QString frmSHaibunjikkouK2::problemOf(const QLineEdit* box) const {
    const std::optional<Money> amount = amountOf(box->text());
    if (!amount) return QStringLiteral("数字以外は許されません。 ");
    if (*amount < Money() || *amount >= budgetLimit())
        return QStringLiteral("0～99,999,999,999円を入力してください。");
    if (shownAmount(text1_) >= shownAmount(text2_)) return {};
    return box == text1_ ? QStringLiteral("総額配分予算以上を入力してください。")
                         : QStringLiteral("予算総額以下を入力してください。");
}

bool frmSHaibunjikkouK2::Text_Validate(QLineEdit* box) {
    const bool wasEmpty = box->text().trimmed().isEmpty();
    if (wasEmpty) box->setText(QStringLiteral("0"));
    const QString problem = problemOf(box);
    // An emptied box may always be left: the other one is refused when it is left in its turn.
    if (!problem.isEmpty() && !wasEmpty) {
        forms::tell(this, problem, kInputError, forms::BoxIcon::Critical);
        return false;
    }
    return forms::guarded(this, [this] {
        refresh_totals();
        storeTypedBudget();
    });
}

/// Both boxes reach the run's row as soon as they are valid, so that no typed budget is lost; what is not
/// valid never does.
void frmSHaibunjikkouK2::storeTypedBudget() {
    if (!run_ || !text1_->isEnabled()) return;
    if (!problemOf(text1_).isEmpty() || !problemOf(text2_).isEmpty()) return;
    const RunBudget row = readRunBudget(cn(), *run_);
    const RunBudget shown = shownBudget();
    if (row.yosanSougaku == shown.yosanSougaku && row.sougakuHaibunYosan == shown.sougakuHaibunYosan) return;
    storeBudgets(cn(), *run_, shown.yosanSougaku, shown.sougakuHaibunYosan);
}

// ---- The run
// -----------------------------------------------------------------------------------------------------

bool frmSHaibunjikkouK2::refused() {
    if (!picker_->requireSelection()) return true;
    if (state_ != State::NoEmployees && state_ != State::NothingToCompute) return false;
    forms::tell(this, QStringLiteral("この処理は必要ありません。"), QStringLiteral("確認"),
                forms::BoxIcon::Critical);
    picker_->kijunList()->setFocus();
    return true;
}

void frmSHaibunjikkouK2::confirmHoushiki(Houshiki houshiki) {
    const QString caption = option_[static_cast<std::size_t>(houshiki)]->text();
    forms::tell(this, QStringLiteral("『%1』を指定します。").arg(caption),
                QStringLiteral("算定方式指定の確認"));
    house_.global.santei_houshiki = design::houshikiCode(houshiki);
    house_.global.santei_houshiki_mei = caption;
    setHourglass();
}

void frmSHaibunjikkouK2::tellFinished(Houshiki houshiki) {
    summed_[static_cast<std::size_t>(houshiki)] = true;
    showTotals();
    forms::tell(this,
                QStringLiteral("『%1』の処理を終了しました。")
                    .arg(option_[static_cast<std::size_t>(houshiki)]->text()),
                QStringLiteral("処理終了の確認"));
}

/// The calculation of the chosen 算定方式 inside the open work; told as finished when it stands. False when
/// it is refused: nothing was touched then.
bool frmSHaibunjikkouK2::run(store::Work& work, Houshiki houshiki) {
    if (houshiki == Houshiki::Kojinbetsu) {
        confirmHoushiki(houshiki);
        storePaymentCoefficients(cn(), *run_, simulation());
        Kojinbetsu keisan(cn(), *run_, simulation());
        keisan.keisan1_kojinbetsu();
        keisan.keisan2_kojinbetsu();
        work.commit();
        tellFinished(houshiki);
    } else if (houshiki == Houshiki::Sougaku) {
        const Money budget = shownAmount(text2_);
        if (budget == Money()) {
            forms::tell(this, QStringLiteral("総額配分予算を入力してください。"), QStringLiteral("未入力"),
                        forms::BoxIcon::Critical);
            setDefaultPointer();
            work.commit();
            return false;
        }
        confirmHoushiki(houshiki);
        Sougaku keisan(cn(), *run_);
        keisan.keisan1_sougaku();
        keisan.keisan2_sougaku();
        keisan.keisan3_sougaku(budget);
        work.commit();
        tellFinished(houshiki);
    }
    return true;
}

/// Whatever is suspicious is told before anything is computed; where the user went to mend it, the screen is
/// brought up to date.
bool frmSHaibunjikkouK2::inputsAgreed(Houshiki houshiki) {
    if (houshiki != Houshiki::Kojinbetsu && houshiki != Houshiki::Sougaku) return true;
    auto found = prep::suspicionsBeforeCalculation(cn(), *run_, houshiki);
    if (prep::frmSKakunin::mayGoOn(this, house_, std::move(found), QStringLiteral("このまま計算する(&K)")))
        return true;
    picker_->takeSelection();
    showTotals();
    return false;
}

/// A stored total that no longer fits what it was computed from says so.
void frmSHaibunjikkouK2::showChange() {
    changed_->setVisible(run_ && inputsChangedSince(cn(), *run_, kijun_));
}

void frmSHaibunjikkouK2::Command1_Click() {
    const auto calculate = [this] {
        if (refused() || !run_) return;
        const auto houshiki = chosenHoushiki();
        if (houshiki && !inputsAgreed(*houshiki)) return;
        store::Work work(cn(), windowTitle());
        if (houshiki && !run(work, *houshiki)) return;
        if (work.open()) work.commit();
        showResults(true);
    };
    // After a rollback the totals on the screen are those of the tables again.
    const auto bringBack = [this] {
        if (run_) showTotals();
    };
    forms::guarded(this, calculate, bringBack);
}

// ---- Payment coefficients
// ----------------------------------------------------------------------------------------

PaymentSimulation frmSHaibunjikkouK2::simulation() const {
    return panel_->simulation(!panel_->isHidden(), hyougo_type_);
}

void frmSHaibunjikkouK2::letRun() {
    command6_->hide();
    command1_->show();
    if (!panel_->enter()) command1_->setFocus();
}

void frmSHaibunjikkouK2::Command6_Click() {
    forms::guarded(this, [this] {
        if (!run_) return;
        panel_->clearGrades();
        const PaymentDecision decision = decidePaymentPanel(cn(), *run_);
        if (decision.hyougoType) hyougo_type_ = *decision.hyougoType;
        if (act(decision.outcome)) letRun();
    });
}

/// Shows what pressing 支給係数修正 leads to; true when the run may go on.
bool frmSHaibunjikkouK2::act(const PaymentOutcome& outcome) {
    const QString title = QStringLiteral("確認");
    const auto refuse = [&](const QString& text) {
        forms::tell(this, text, title, forms::BoxIcon::Critical);
        return false;
    };
    if (const auto* missing = std::get_if<MissingGrades>(&outcome))
        // A company may call it "評価" or "評価係数".
        return refuse(QString(missing->name).remove(QRegularExpression(QStringLiteral("係数$"))) +
                      QStringLiteral("係数が未設定です。"));
    if (std::holds_alternative<MissingSetup>(outcome))
        return refuse(QStringLiteral("支給係数が未設定です。"));
    if (std::holds_alternative<RunTimeInput>(outcome)) {
        forms::tell(this, QStringLiteral("支給係数は実行時入力です。\nシミュレーションは行いません。"), title,
                    forms::BoxIcon::Information);
        return true;
    }
    if (const auto* twice = std::get_if<DoubleEvaluation>(&outcome)) {
        refuse(twice->name + QStringLiteral("係数を設定する場合は、支給係数の設定方法に\n"
                                            "「評価別係数」を選ばないでください。\n"
                                            "このまま計算すると評価を２重に乗じてしまいます。"));
        return true;
    }
    if (const auto* uniform = std::get_if<UniformPanel>(&outcome))
        panel_->showUniform(*uniform);
    else if (const auto* grades = std::get_if<GradePanel>(&outcome))
        panel_->showGrades(grades->rows);
    else
        return false;
    openPanel();
    return true;
}

// ---- Results
// -----------------------------------------------------------------------------------------------------

reports::ListTitle frmSHaibunjikkouK2::listTitle() const {
    reports::ListTitle title = reports::titleOfRun(house_.global, QStringLiteral("賞与支給額"));
    if (inputsChangedSince(cn(), *run_, kijun_)) title.remark = kInputsChanged;
    return title;
}

void frmSHaibunjikkouK2::Command4_Click() {
    forms::guarded(this, [this] {
        picker_->takeSelection();
        setHourglass();
        const auto rows = freshResultRows(cn(), *run_);
        auto* preview = resultPreview(rows, listTitle(), coefficientLineForReport(simulation()),
                                      !panel_->isHidden(), this);
        preview->offerCharts([this] { return chartsOfRun(cn(), *run_); });
        setDefaultPointer();
        showChild(preview);
    });
}

void frmSHaibunjikkouK2::Command5_Click() {
    forms::guarded(this, [this] {
        picker_->takeSelection();
        setHourglass();
        const auto rows = freshResultRows(cn(), *run_);
        const auto sheet = resultSheet(house_.global.haibun_kubun_mei, house_.global.haibun_kijun_mei,
                                       coefficientLineForSheet(simulation()), rows);
        sent_->tell(sheets_.send(sheet, listTitle()));
        fitWindow(panel_->isHidden() ? kClosedWidth : kOpenWidth);
    });
}

void frmSHaibunjikkouK2::Command7_Click() {
    forms::guarded(this, [this] {
        picker_->takeSelection();
        setHourglass();
        const auto& global = house_.global;
        QString subject =
            QStringLiteral("%1　基準日 %2")
                .arg(resultTitle(global.haibun_kubun_mei, global.haibun_kijun_mei), global.kijunbi);
        if (inputsChangedSince(cn(), *run_, kijun_)) subject += u'　' + kInputsChanged;
        auto* charts = new reports::frmChart(chartsOfRun(cn(), *run_), subject, this);
        setDefaultPointer();
        showChild(charts);
    });
}

}  // namespace calc
