#include "prep/frmSJikkou04Sub.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <tuple>

#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "prep/ui_input_form.h"
#include "store/date_text.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {
namespace {

const QString kNextScreen = QStringLiteral("frmSJikkou04");
const QString kNotice = QStringLiteral("確認");

}  // namespace

frmSJikkou04Sub::frmSJikkou04Sub(forms::House& house, QWidget* parent)
    : Form(QStringLiteral("frmSJikkou04Sub"), QStringLiteral("評価結果取込"), parent), house_(house) {
    makeControls();
    connectEvents();
    showDates(false);
    forms::guarded(this, [this] { Form_Load(); });
}

store::Connection& frmSJikkou04Sub::cn() const {
    return *house_.global.cn_main;
}

domain::RunKey frmSJikkou04Sub::run() const {
    return design::currentRun(house_.global);
}

// ---- The screen's parts ----------------------------------------------------------------------------------

void frmSJikkou04Sub::makeControls() {
    const forms::GlobalRecord& global = house_.global;
    auto* label1 =
        make<QLabel>(QStringLiteral("Label1"), global.haibun_kubun_mei + u'／' + global.haibun_kijun_mei);
    label3_ = make<QLabel>(QStringLiteral("Label3"), QStringLiteral("この処理を必要とする設定はありません"));
    QWidget* options = makeOptions();
    list_ = make<widgets::CodeList>(QStringLiteral("DataList1"));
    list_->setMinimumHeight(6 * fontMetrics().lineSpacing());
    list_->setPlaceholder(QStringLiteral("取り込める評価結果はありません。"));
    label2_ = labelFor(QStringLiteral("Label2"), QStringLiteral("評価結果の基準日"), list_);
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("次へ(&N)"));
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("キャンセル(&C)"));
    command3_ = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(command2_);
    widgets::setTone(label3_, widgets::Tone::Warning);
    setCancelButton(command1_);

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(label1, nullptr));
    column->addWidget(label3_);
    column->addWidget(options);
    column->addWidget(label2_);
    column->addWidget(list_, 1);
    column->addStretch();
    column->addLayout(widgets::buttonRow({command3_}, {command1_, command2_}));
    widgets::tabOrder({option1_[0], option1_[1], list_, command1_, command2_, command3_});
    setMinimumSize(widgets::twips(5400), widgets::twips(5400));
}

QWidget* frmSJikkou04Sub::makeOptions() {
    frame1_ = make<QGroupBox>(QStringLiteral("Frame1"), QStringLiteral("評価結果を"));
    option1_ = makeArray<QRadioButton, 2>(QStringLiteral("Option1"),
                                          {QStringLiteral("取り込む"), QStringLiteral("取り込まない")});
    auto* row = new QHBoxLayout(frame1_);
    row->setSpacing(2 * widgets::kGrid);
    for (QRadioButton* option : option1_) row->addWidget(option);
    row->addStretch();
    return frame1_;
}

void frmSJikkou04Sub::connectEvents() {
    for (bool takeIn : {true, false})
        connect(option1_[takeIn ? 0 : 1], &QRadioButton::toggled, this, [this, takeIn](bool set) {
            if (set) forms::guarded(this, [this, takeIn] { Option1_Click(takeIn); });
        });
    connect(list_, &widgets::CodeList::opened, command2_, &QPushButton::click);
    connect(command1_, &QPushButton::clicked, this, &QDialog::reject);
    connect(command2_, &QPushButton::clicked, this, &frmSJikkou04Sub::Command2_Click);
    connect(command3_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
}

void frmSJikkou04Sub::showDates(bool shown) {
    label2_->setVisible(shown);
    list_->setVisible(shown);
}

// ---- Choosing --------------------------------------------------------------------------------------------

void frmSJikkou04Sub::Form_Load() {
    forms::GlobalRecord& global = house_.global;
    command2_->setEnabled(false);
    uses_ = gradeUses(cn(), run());
    std::tie(global.hyouka_shikyuu, global.hyouka_kojinbetsu, global.hyouka_sougaku) =
        std::tie(uses_.shikyuu, uses_.kojinbetsu, uses_.sougaku);
    const bool needed = !uses_.tables().empty();
    frame1_->setVisible(needed);
    label3_->setVisible(!needed);
    command2_->setEnabled(needed && house_.screens.has(kNextScreen));
    needed ? option1_[0]->setFocus() : command1_->setFocus();
}

void frmSJikkou04Sub::Option1_Click(bool takeIn) {
    showDates(false);
    if (!takeIn) return;
    forms::tell(this,
                QStringLiteral("配分実行基準日の前日までに確定したデータを表示します。\n"
                               "※ただし、昇給の評価結果は表示しません"),
                kNotice, forms::BoxIcon::Information);
    std::vector<widgets::CodeList::Item> items;
    for (QDate date : evaluationDates(cn(), run().kijunbi))
        items.push_back({store::formatDate(date), store::formatDate(date)});
    list_->setItems(items);
    showDates(true);
}

/// The date to take in; without one it was told that one is missing.
std::optional<QDate> frmSJikkou04Sub::chosenDate() {
    if (!list_->isHidden() && !list_->boundText().isEmpty()) return store::requireDate(list_->boundText());
    setDefaultPointer();
    forms::tell(this, QStringLiteral("評価結果の基準日を指定してください。"),
                QStringLiteral("基準日指定の確認"));
    option1_[0]->isChecked() ? list_->setFocus() : option1_[0]->setFocus();
    return {};
}

// ---- Taking in -------------------------------------------------------------------------------------------

void frmSJikkou04Sub::takeIn(RunTable table, const QString& name, QDate date) {
    if (!uses_.holds(table)) {
        forms::tell(this, name + QStringLiteral("は処理の対象外です。"), kNotice);
        return;
    }
    const auto results = evaluationResults(cn(), run(), table, date);
    forms::tell(this,
                name + (results.empty() ? QStringLiteral("は該当者はいません。")
                                        : QStringLiteral("は該当者が%1人います。").arg(results.size())),
                kNotice);
    storeResults(cn(), table, results);
}

void frmSJikkou04Sub::takeIn(QDate date) {
    takeIn(RunTable::KojinBetsu, QStringLiteral("個人別計算"), date);
    takeIn(RunTable::SougakuHaibun, QStringLiteral("総額配分"), date);
}

void frmSJikkou04Sub::Command2_Click() {
    forms::guarded(this, [&] {
        store::Work work(cn(), QStringLiteral("評価の取込"));
        setHourglass();
        if (!option1_[1]->isChecked()) {
            const std::optional<QDate> date = chosenDate();
            if (!date) {
                work.rollback();
                return;
            }
            takeIn(*date);
        }
        const int left = showChild(house_.screens.create(kNextScreen, house_, this));
        // All or nothing: a grid that could not be saved takes the results back with it. A full disk has
        // ended the transaction already; what the grid saved after that was all of it.
        if (left == InputGridForm::SaveFailed || !cn().inTransaction())
            work.rollback();
        else
            work.commit();
    });
}

}  // namespace prep
