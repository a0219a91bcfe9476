#include "prep/frmSHaibunjikkouK.h"
#include "prep/frmSKakunin.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "design/ui_criterion_picker.h"
#include "design/ui_houshiki_options.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "prep/ui_judgment_report.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {

using design::Houshiki;

namespace {

void keepsItsPlace(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

}  // namespace

frmSHaibunjikkouK::frmSHaibunjikkouK(forms::House& house, QWidget* parent)
    : Form(QStringLiteral("frmSHaibunjikkouK"), QStringLiteral("自動入力"), parent),
      house_(house),
      picker_(new design::CriterionPicker(house, this)) {
    makeControls();
    connectEvents();
    forms::guarded(this, [this] {
        dropCriterion();
        picker_->load();
    });
    picker_->kubunList()->setFocus();
}

store::Connection& frmSHaibunjikkouK::cn() const {
    return *house_.global.cn_main;
}

// ---- The screen's parts

void frmSHaibunjikkouK::makeControls() {
    const auto marker = [this](const char16_t* name, const char16_t* step) {
        auto* image = make<QLabel>(QString::fromUtf16(name), QString::fromUtf16(step));
        widgets::setTone(image, widgets::Tone::Heading);
        keepsItsPlace(image);
        return image;
    };
    image1_ = marker(u"Image1", u"②");
    picker_->setMarkers(marker(u"Image0", u"①"), image1_);
    image1_->hide();
    image2_ = marker(u"Image2", u"③");
    image3_ = marker(u"Image3", u"④");
    auto* title = make<QLabel>(QStringLiteral("Label20"),
                               QStringLiteral("自動入力　基準日 %1").arg(house_.global.kijunbi));
    label3_ = make<QLabel>(QStringLiteral("Label3"));
    label3_->setWordWrap(true);
    auto* guidance = new QHBoxLayout;
    guidance->setSpacing(widgets::kGrid);
    guidance->addWidget(image2_);
    guidance->addWidget(label3_, 1);

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, nullptr));
    column->addWidget(picker_, 1);
    column->addLayout(guidance);
    // All four kinds of payment stand on the form; only the two that are computed are ever shown.
    options_ = new design::HoushikiOptions(QStringLiteral("Frame1"), this);
    options_->indent();
    options_->offer({});
    column->addWidget(options_);
    column->addLayout(makeButtons());
    setMinimumSize(widgets::twips(7770), widgets::twips(4770));
}

QHBoxLayout* frmSHaibunjikkouK::makeButtons() {
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("自動入力(&A)"));
    command4_ = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("一覧表"));
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(command1_);
    setOutput(command4_, Output::List);
    setCancelButton(command2_);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    return widgets::buttonRow({help}, {command2_, command1_, image3_, command4_});
}

void frmSHaibunjikkouK::connectEvents() {
    connect(picker_, &design::CriterionPicker::kubunChosen, this,
            [this] { forms::guarded(this, [this] { DataList1_Click(); }); });
    connect(picker_, &design::CriterionPicker::kijunChosen, this, [this] {
        if (forms::guarded(this, [this] { DataList2_Click(); })) return;
        picker_->kijunList()->choose(-1);
        dropCriterion();
    });
    connect(command1_, &QPushButton::clicked, this, &frmSHaibunjikkouK::Command1_Click);
    connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
    connect(command4_, &QPushButton::clicked, this,
            [this] { forms::guarded(this, [this] { Command4_Click(); }); });
}

// ---- Choosing

void frmSHaibunjikkouK::allowList(bool allowed) {
    command4_->setEnabled(allowed);
    image3_->setVisible(allowed);
}

void frmSHaibunjikkouK::dropCriterion() {
    state_ = State::NothingChosen;
    label3_->clear();
    image2_->hide();
    options_->hide();
    options_->choose(std::nullopt);
    allowList(false);
}

void frmSHaibunjikkouK::DataList1_Click() {
    dropCriterion();
    picker_->loadKijun();
    image1_->show();
}

void frmSHaibunjikkouK::DataList2_Click() {
    allowList(false);
    if (picker_->refuseEmptyKijun()) return;
    picker_->takeSelection();
    const auto kijun = design::kijunOf(cn(), house_.global.haibun_kubun, house_.global.haibun_kijun);
    if (!kijun) return;
    options_->show();
    options_->offer({kijun->uses[0], kijun->uses[1]});
    tellState(design::hasEmployees(cn(), design::currentRun(house_.global)),
              kijun->uses[0] || kijun->uses[1]);
}

void frmSHaibunjikkouK::tellState(bool employees, bool automatic) {
    state_ = !employees ? State::NoEmployees : automatic ? State::Ready : State::NothingAutomatic;
    label3_->setText(state_ == State::NoEmployees ? design::kNoEmployees
                     : state_ == State::Ready ? QStringLiteral("算定方式を指定してください｡")
                                              : QStringLiteral("自動入力はありません。"));
    widgets::setTone(label3_, state_ == State::Ready ? widgets::Tone::Normal : widgets::Tone::Warning);
    image2_->setVisible(state_ == State::Ready);
}

// ---- The run

bool frmSHaibunjikkouK::refused() {
    if (!picker_->requireSelection()) return true;
    if (state_ != State::NoEmployees && state_ != State::NothingAutomatic) return false;
    forms::tell(this, QStringLiteral("この処理は必要ありません。"), QStringLiteral("確認"),
                forms::BoxIcon::Critical);
    picker_->kijunList()->setFocus();
    return true;
}

bool frmSHaibunjikkouK::confirmed(Houshiki houshiki) {
    return forms::ask(this, QStringLiteral("『%1』を指定します。").arg(options_->captionOf(houshiki)),
                      QStringLiteral("算定方式指定の確認"));
}

/// The run of the chosen 算定方式 inside the open work.
void frmSHaibunjikkouK::fill(store::Work& work, Houshiki houshiki) {
    const QString caption = options_->captionOf(houshiki);
    house_.global.santei_houshiki = design::houshikiCode(houshiki);
    house_.global.santei_houshiki_mei = caption;
    setHourglass();
    items_ = autoInput(cn(), design::currentRun(house_.global), houshiki);
    work.commit();  // told as finished is what stands
    setDefaultPointer();
    forms::tell(this, QStringLiteral("『%1』の処理を終了しました。").arg(caption),
                QStringLiteral("処理終了の確認"));
}

void frmSHaibunjikkouK::Command1_Click() {
    const AutoItems before = items_;
    const bool done = forms::guarded(this, [&] {
        if (refused()) return;
        const auto houshiki = options_->chosen();
        if (houshiki &&
            !frmSKakunin::mayGoOn(
                this, house_, suspicionsBeforeAutoInput(cn(), design::currentRun(house_.global), *houshiki),
                QStringLiteral("このまま自動入力する(&K)")))
            return;
        if (houshiki && !confirmed(*houshiki)) return;
        items_.clear();
        store::Work work(cn(), windowTitle());
        if (houshiki)
            fill(work, *houshiki);
        else
            work.commit();
        allowList(true);
    });
    // After a rollback the judgments of the run before stand again.
    if (!done) items_ = before;
}

void frmSHaibunjikkouK::Command4_Click() {
    setHourglass();
    const auto rows = judgmentRows(cn());
    if (rows.recordCount() == 0) {
        forms::tell(this, QStringLiteral("データがありません。"), QStringLiteral("データなし"),
                    forms::BoxIcon::Information);
        return;
    }
    auto* preview = judgmentPreview(rows, judgmentColumns(cn(), items_), house_.global, this);
    setDefaultPointer();
    showChild(preview);
}

}  // namespace prep
