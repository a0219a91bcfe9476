#include "calc/frmSHaibunjikkouK2.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "calc/kojinbetsu.h"
#include "calc/sougaku.h"
#include "calc/ui_payment_panel.h"
#include "calc/ui_result_output.h"
#include "criteria/ui_criterion_picker.h"
#include "shell/global_record.h"
#include "shell/ui_box.h"
#include "shell/ui_menu_form.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace calc {

using criteria::Houshiki;
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

/// The amount in a box or label; none when it is no number. A number beyond the money range counts as the
/// limit.
std::optional<Money> amountOf(const QString& text) {
    try {
        return Money::fromText(text);
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

frmSHaibunjikkouK2::frmSHaibunjikkouK2(shell::House& house, reports::ExportSession& session, QWidget* parent)
    : Form(QStringLiteral("frmSHaibunjikkouK2"), QStringLiteral("配分計算"), parent),
      house_(house),
      session_(session) {
    makeControls();
    connectEvents();
    shell::guarded(this, [this] { Form_Load(); });
}

store::Connection& frmSHaibunjikkouK2::cn() const {
    return *house_.global.cn_main;
}

// ---- The screen's parts
// ------------------------------------------------------------------------------------------

void frmSHaibunjikkouK2::makeControls() {
    picker_ = new criteria::CriterionPicker(house_, this);
    marker_ = makeArray<QLabel, 3>(QStringLiteral("Image"),
                                   {QStringLiteral("②"), QStringLiteral("③"), QStringLiteral("④")});
    for (std::size_t i = 0; i < marker_.size(); ++i) {
        marker_[i]->setObjectName(QStringLiteral("Image%1").arg(i + 1));
        widgets::setTone(marker_[i], widgets::Tone::Heading);
    }
    label3_ = make<QLabel>(QStringLiteral("Label3"), QStringLiteral("算定方式を指定してください。"));
    auto* options = makeOptions();
    auto* budget = makeBudget();
    auto* steps = makeSteps();
    panel_ = new PaymentPanel(this);
    panel_->hide();

    auto* left = new QVBoxLayout;
    left->setSpacing(widgets::kGrid);
    left->addWidget(picker_, 1);
    left->addWidget(options);
    left->addWidget(budget);
    left->addWidget(sentTo_);
    left->addWidget(steps);
    auto* page = new QHBoxLayout(this);
    page->setContentsMargins(2 * widgets::kGrid, 2 * widgets::kGrid, 2 * widgets::kGrid, 2 * widgets::kGrid);
    page->setSpacing(2 * widgets::kGrid);
    page->addLayout(left, 1);
    page->addWidget(panel_);
    setMinimumSize(kClosedWidth, kHeight);
}

QWidget* frmSHaibunjikkouK2::makeOptions() {
    auto* holder = new QWidget(this);
    auto* line = new QHBoxLayout(holder);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(marker_[0]);
    line->addWidget(label3_, 1);
    frame1_ = make<QFrame>(QStringLiteral("Frame1"));
    option_ = makeArray<QRadioButton, 4>(
        QStringLiteral("Option1"), {QStringLiteral("個人別計算"), QStringLiteral("総額配分"),
                                    QStringLiteral("金一封(実行時)"), QStringLiteral("特別加算金(実行時)")});
    auto* row = new QHBoxLayout(frame1_);
    row->setContentsMargins(0, 0, 0, 0);
    for (QRadioButton* option : option_) {
        option->setParent(frame1_);
        row->addWidget(option);
    }
    line->addWidget(frame1_);
    for (QWidget* part : {static_cast<QWidget*>(frame1_), static_cast<QWidget*>(label3_)})
        keepsItsPlace(part);
    return holder;
}

QWidget* frmSHaibunjikkouK2::makeBudget() {
    auto* card = new widgets::Card(this);
    card->setObjectName(QStringLiteral("Frame3"));
    frame3_ = card;
    keepsItsPlace(card);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * widgets::kGrid);
    card->body()->addLayout(grid);

    const auto money = [this](const QString& name) {
        auto* box = make<QLineEdit>(name);
        box->setAlignment(Qt::AlignRight);
        box->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("99,999,999,999")) +
                             4 * widgets::kGrid);
        widgets::admitOnly(box, QStringLiteral("0123456789"));
        return box;
    };
    text1_ = money(QStringLiteral("Text1"));
    text2_ = money(QStringLiteral("Text2"));
    grid->addWidget(labelFor(QStringLiteral("Label4"), QStringLiteral("予算総額(&T)"), text1_), 0, 0);
    grid->addWidget(text1_, 0, 1);
    grid->addWidget(labelFor(QStringLiteral("Label5"), QStringLiteral("総額配分予算(&B)"), text2_), 1, 0);
    grid->addWidget(text2_, 1, 1);

    total_ = makeArray<QLabel, 6>(QStringLiteral("Label6"), {});
    totalHead_ = makeArray<QLabel, 3>(
        QStringLiteral("Label7"),
        {QStringLiteral("金一封"), QStringLiteral("特別加算金"), QStringLiteral("総額配分予定")});
    const auto head = [this](const QString& name, const QString& text) { return make<QLabel>(name, text); };
    struct Place {
        QLabel* head;
        int total, row, column;
    };
    const std::array<Place, 6> places{
        {{totalHead_[2], 4, 2, 0},
         {head(QStringLiteral("Label8"), QStringLiteral("個人別計算")), 0, 0, 2},
         {head(QStringLiteral("Label9"), QStringLiteral("総額配分")), 1, 1, 2},
         {totalHead_[0], 2, 0, 4},
         {totalHead_[1], 3, 1, 4},
         {head(QStringLiteral("Label19"), QStringLiteral("合計")), 5, 2, 4}}};
    for (const Place& place : places) {
        QLabel* amount = total_[static_cast<std::size_t>(place.total)];
        amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        amount->setTextInteractionFlags(Qt::TextSelectableByMouse);
        widgets::setTone(place.head, widgets::Tone::Muted);
        widgets::setTone(amount, place.total == 5 ? widgets::Tone::Heading : widgets::Tone::Normal);
        for (QWidget* part : {static_cast<QWidget*>(place.head), static_cast<QWidget*>(amount)})
            keepsItsPlace(part);
        grid->addWidget(place.head, place.row, place.column);
        grid->addWidget(amount, place.row, place.column + 1);
    }
    for (int column : {1, 3, 5}) grid->setColumnStretch(column, 1);
    return card;
}

QWidget* frmSHaibunjikkouK2::makeSteps() {
    sentTo_ = make<QLabel>(QStringLiteral("Label18"));
    sentTo_->setWordWrap(true);
    sentTo_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    sentTo_->hide();
    command6_ = make<QPushButton>(QStringLiteral("Command6"), QStringLiteral("支給係数修正(&S)"));
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("計算(&K)"));
    command4_ = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("一覧表"));
    command5_ = make<QPushButton>(QStringLiteral("Command5"), QStringLiteral("Excelにデータを送る"));
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    setCancelButton(command2_);
    widgets::setPrimary(command1_);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });

    auto* holder = new QWidget(this);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(marker_[1]);
    row->addWidget(command6_);
    row->addWidget(command1_);
    row->addWidget(marker_[2]);
    row->addWidget(command4_);
    row->addWidget(command5_);
    row->addStretch();
    row->addWidget(help);
    row->addWidget(command2_);
    return holder;
}

void frmSHaibunjikkouK2::connectEvents() {
    connect(picker_, &criteria::CriterionPicker::kubunChosen, this,
            [this] { shell::guarded(this, [this] { DataList1_Click(); }); });
    connect(picker_, &criteria::CriterionPicker::kijunChosen, this,
            [this] { shell::guarded(this, [this] { DataList2_Click(); }); });
    for (int i = 0; i < 4; ++i)
        connect(option_[static_cast<std::size_t>(i)], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on) Option1_Click(i);
        });
    for (QLineEdit* box : {text1_, text2_})
        validateOnLeave(box, [this, box] { return Text_Validate(box); }, {command2_});
    for (QLineEdit* box : panel_->boxes())
        validateOnLeave(box, [this, box] { return panel_->check(box); }, {command2_});
    connect(command1_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command1_Click);
    connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
    connect(command4_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command4_Click);
    connect(command5_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command5_Click);
    connect(command6_, &QPushButton::clicked, this, &frmSHaibunjikkouK2::Command6_Click);
}

void frmSHaibunjikkouK2::Form_Load() {
    for (QWidget* part :
         std::initializer_list<QWidget*>{label3_, marker_[0], marker_[1], frame1_, frame3_, command6_})
        part->hide();
    showResults(false);
    chooseOption(0);
    picker_->load();
    picker_->kubunList()->setFocus();
}

// ---- Place on the screen
// -----------------------------------------------------------------------------------------

void frmSHaibunjikkouK2::place() {
    if (const QWidget* main = shell::mainWindowOf(this))
        move(main->x() + twips(45), main->y() + twips(600));
    else
        Form::place();
}

void frmSHaibunjikkouK2::activated() {
    place();
}

void frmSHaibunjikkouK2::done(int result) {
    shell::guarded(this, [this] { storeTypedBudget(); });
    Form::done(result);
}

void frmSHaibunjikkouK2::openPanel() {
    panel_->show();
    setMinimumWidth(kOpenWidth);
    adjustSize();
}

void frmSHaibunjikkouK2::closePanel() {
    panel_->hide();
    setMinimumWidth(kClosedWidth);
}

void frmSHaibunjikkouK2::showResults(bool show) {
    for (QWidget* part : std::initializer_list<QWidget*>{command4_, command5_, marker_[2]})
        part->setVisible(show);
    if (!show) sentTo_->hide();
}

// ---- Choosing
// ----------------------------------------------------------------------------------------------------

void frmSHaibunjikkouK2::DataList1_Click() {
    storeTypedBudget();
    run_.reset();
    state_ = State::NothingChosen;
    for (QWidget* part : std::initializer_list<QWidget*>{label3_, marker_[1], frame1_, frame3_, command6_})
        part->hide();
    picker_->loadKijun();
    marker_[0]->show();
    command1_->show();
    showResults(false);
    closePanel();
}

void frmSHaibunjikkouK2::DataList2_Click() {
    closePanel();
    storeTypedBudget();
    run_.reset();
    if (picker_->refuseEmptyKijun()) return;
    picker_->takeSelection();
    const auto kijun = criteria::kijunOf(cn(), house_.global.haibun_kubun, house_.global.haibun_kijun);
    if (!kijun) return;
    kijun_ = *kijun;
    showOptions(*kijun);
    for (QWidget* part : std::initializer_list<QWidget*>{label3_, marker_[1], frame1_, frame3_}) part->show();
    showResults(false);
    const shell::RunKey run = criteria::currentRun(house_.global);
    tellEmployees(criteria::hasEmployees(cn(), run));
    openRunBudget(cn(), run);
    run_ = run;
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

void frmSHaibunjikkouK2::showOptions(const criteria::Kijun&) {
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
    label3_->setText(state_ == State::NoEmployees ? criteria::kNoEmployees
                     : state_ == State::Ready ? QStringLiteral("算定方式を指定してください｡")
                                              : QStringLiteral("配分計算は必要ありません。"));
    widgets::setTone(label3_, state_ == State::NoEmployees ? widgets::Tone::Warning : widgets::Tone::Normal);
    if (state_ == State::NothingToCompute) {
        frame3_->hide();
        command4_->show();
        command5_->show();
    }
}

void frmSHaibunjikkouK2::bindBudget(const criteria::Kijun& kijun) {
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
    showTotals();
}

/// The four sums as the row holds them; 0 where the criterion does not use that payment.
void frmSHaibunjikkouK2::showTotals() {
    const RunBudget row = readRunBudget(cn(), *run_);
    const std::array<Money, 4> sums{row.kojinbetsuGoukei, row.sougakuGoukei, row.kinIppuuGoukei,
                                    row.tokubetsuKasankinGoukei};
    for (std::size_t i = 0; i < sums.size(); ++i)
        total_[i]->setText(kijun_.uses[i] ? store::formatGrouped(sums[i]) : QStringLiteral("0"));
    refresh_totals();
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

bool frmSHaibunjikkouK2::Text_Validate(QLineEdit* box) {
    if (box->text().trimmed().isEmpty()) {
        box->setText(QStringLiteral("0"));
        return true;
    }
    const auto refuse = [this](const QString& text) {
        shell::tell(this, text, kInputError, shell::BoxIcon::Critical);
        return false;
    };
    const std::optional<Money> amount = amountOf(box->text());
    if (!amount) return refuse(QStringLiteral("数字以外は許されません。 "));
    if (*amount < Money() || *amount >= budgetLimit())
        return refuse(QStringLiteral("0～99,999,999,999円を入力してください。"));
    if (shownAmount(text1_) < shownAmount(text2_))
        return refuse(box == text1_ ? QStringLiteral("総額配分予算以上を入力してください。")
                                    : QStringLiteral("予算総額以下を入力してください。"));
    return shell::guarded(this, [this] {
        refresh_totals();
        storeTypedBudget();
    });
}

/// Both boxes reach the run's row as soon as they are valid, so that no typed budget is lost.
void frmSHaibunjikkouK2::storeTypedBudget() {
    if (!run_ || !text1_->isEnabled()) return;
    const RunBudget row = readRunBudget(cn(), *run_);
    const RunBudget shown = shownBudget();
    if (shown.yosanSougaku < shown.sougakuHaibunYosan) return;
    if (row.yosanSougaku == shown.yosanSougaku && row.sougakuHaibunYosan == shown.sougakuHaibunYosan) return;
    storeBudgets(cn(), *run_, shown.yosanSougaku, shown.sougakuHaibunYosan);
}

// ---- The run
// -----------------------------------------------------------------------------------------------------

bool frmSHaibunjikkouK2::refused() {
    if (!picker_->requireSelection()) return true;
    if (state_ != State::NoEmployees && state_ != State::NothingToCompute) return false;
    shell::tell(this, QStringLiteral("この処理は必要ありません。"), QStringLiteral("確認"),
                shell::BoxIcon::Critical);
    picker_->kijunList()->setFocus();
    return true;
}

void frmSHaibunjikkouK2::confirmHoushiki(Houshiki houshiki) {
    const QString caption = option_[static_cast<std::size_t>(houshiki)]->text();
    shell::tell(this, QStringLiteral("『%1』を指定します。").arg(caption),
                QStringLiteral("算定方式指定の確認"));
    house_.global.santei_houshiki = criteria::houshikiCode(houshiki);
    house_.global.santei_houshiki_mei = caption;
    setHourglass();
}

void frmSHaibunjikkouK2::tellFinished(Houshiki houshiki) {
    showTotals();
    shell::tell(this,
                QStringLiteral("『%1』の処理を終了しました。")
                    .arg(option_[static_cast<std::size_t>(houshiki)]->text()),
                QStringLiteral("処理終了の確認"));
}

/// The calculation of the chosen 算定方式 inside the open transaction. False when it is refused: nothing was
/// touched then.
bool frmSHaibunjikkouK2::run(shell::FormTransaction& transaction, Houshiki houshiki) {
    if (houshiki == Houshiki::Kojinbetsu) {
        confirmHoushiki(houshiki);
        storePaymentCoefficients(cn(), *run_, simulation());
        Kojinbetsu keisan(cn(), *run_, simulation());
        keisan.keisan1_kojinbetsu();
        keisan.keisan2_kojinbetsu();
        tellFinished(houshiki);
    } else if (houshiki == Houshiki::Sougaku) {
        const Money budget = shownAmount(text2_);
        if (budget == Money()) {
            shell::tell(this, QStringLiteral("総額配分予算を入力してください。"), QStringLiteral("未入力"),
                        shell::BoxIcon::Critical);
            setDefaultPointer();
            transaction.commit();
            return false;
        }
        confirmHoushiki(houshiki);
        Sougaku keisan(cn(), *run_);
        keisan.keisan1_sougaku();
        keisan.keisan2_sougaku();
        keisan.keisan3_sougaku(budget);
        tellFinished(houshiki);
    }
    return true;
}

void frmSHaibunjikkouK2::Command1_Click() {
    shell::FormTransaction transaction(cn());
    const bool done = shell::guarded(this, transaction, [&] {
        if (refused() || !run_) return;
        transaction.begin();
        const auto houshiki = chosenHoushiki();
        if (houshiki && !run(transaction, *houshiki)) return;
        showResults(true);
        transaction.commit();
        setDefaultPointer();
    });
    // After a rollback the totals on the screen are those of the tables again.
    if (!done && run_) shell::guarded(this, [this] { showTotals(); });
}

// ---- Payment coefficients
// ----------------------------------------------------------------------------------------

PaymentSimulation frmSHaibunjikkouK2::simulation() const {
    return panel_->simulation(!panel_->isHidden(), hyougo_type_);
}

void frmSHaibunjikkouK2::letRun() {
    command6_->hide();
    command1_->show();
    command1_->setFocus();
}

void frmSHaibunjikkouK2::Command6_Click() {
    shell::guarded(this, [this] {
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
        shell::tell(this, text, title, shell::BoxIcon::Critical);
        return false;
    };
    if (const auto* missing = std::get_if<MissingGrades>(&outcome))
        return refuse(missing->name + QStringLiteral("係数が未設定です。"));
    if (std::holds_alternative<MissingSetup>(outcome))
        return refuse(QStringLiteral("支給係数が未設定です。"));
    if (std::holds_alternative<RunTimeInput>(outcome)) {
        shell::tell(this, QStringLiteral("支給係数は実行時入力です。\nシミュレーションは行いません。"), title,
                    shell::BoxIcon::Information);
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

void frmSHaibunjikkouK2::Command4_Click() {
    shell::guarded(this, [this] {
        picker_->takeSelection();
        setHourglass();
        const auto rows = freshResultRows(cn(), *run_);
        auto* preview =
            resultPreview(rows, resultTitle(house_.global.haibun_kubun_mei, house_.global.haibun_kijun_mei),
                          coefficientLineForReport(simulation()), !panel_->isHidden(), this);
        setDefaultPointer();
        showChild(preview);
    });
}

void frmSHaibunjikkouK2::Command5_Click() {
    shell::guarded(this, [this] {
        picker_->takeSelection();
        setHourglass();
        const auto rows = freshResultRows(cn(), *run_);
        const QString path =
            sendResultSheet(session_, rows, house_.global.haibun_kubun_mei, house_.global.haibun_kijun_mei,
                            coefficientLineForSheet(simulation()));
        sentTo_->setText(QStringLiteral("保存しました: %1").arg(path));
        sentTo_->show();
        setDefaultPointer();
    });
}

}  // namespace calc
