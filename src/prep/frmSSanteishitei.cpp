#include "prep/frmSSanteishitei.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"

namespace prep {

using design::Houshiki;

namespace {
const QString kAmountsScreen = QStringLiteral("frmSJikkou01");
}

frmSSanteishitei::frmSSanteishitei(forms::House& house, QWidget* parent)
    : CriterionForm(QStringLiteral("frmSSanteishitei"), QStringLiteral("算定方式指定"), house, parent),
      options_(new QWidget(this)),
      option_(makeArray<QRadioButton, design::kHoushikiCount>(
          QStringLiteral("Option1"),
          {QStringLiteral("個人別計算"), QStringLiteral("総額配分"), QStringLiteral("金一封(実行時)"),
           QStringLiteral("特別加算金(実行時)")})) {
    auto* row = new QHBoxLayout(options_);
    row->setContentsMargins(0, 0, 0, 0);
    for (QRadioButton* option : option_) {
        option->setParent(options_);
        row->addWidget(option);
    }
    row->addStretch();
    // The options keep their line while they are hidden, so that the lists do not jump.
    QSizePolicy keep = options_->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    options_->setSizePolicy(keep);
    load(options_);
    hideOptions();
}

void frmSSanteishitei::hideOptions() {
    options_->hide();
}

void frmSSanteishitei::DataList1_Click() {
    CriterionForm::DataList1_Click();
    hideOptions();
}

void frmSSanteishitei::DataList2_Click() {
    if (picker_->refuseEmptyKijun()) return;
    picker_->takeSelection();
    const forms::GlobalRecord& global = house_.global;
    const auto kijun = design::kijunOf(*global.cn_main, global.haibun_kubun, global.haibun_kijun);
    if (!kijun) return;
    kijun_ = *kijun;
    showOptions(*kijun);
    const QString guidance = QStringLiteral("算定方式を指定してください｡");
    if (global.haibun_jikkou_mode)
        tellEmployees(guidance);
    else
        showGuidance(guidance, false);
}

void frmSSanteishitei::chooseOption(int index) {
    for (int i = 0; i < design::kHoushikiCount; ++i) {
        QRadioButton* option = option_[static_cast<std::size_t>(i)];
        option->setAutoExclusive(false);
        option->setChecked(i == index);
        option->setAutoExclusive(true);
    }
}

void frmSSanteishitei::showOptions(const design::Kijun& kijun) {
    options_->show();
    for (int i = 0; i < design::kHoushikiCount; ++i) {
        QRadioButton* option = option_[static_cast<std::size_t>(i)];
        option->setVisible(kijun.uses[static_cast<std::size_t>(i)]);
        option->setEnabled(i < 2 ||
                           (!house_.global.haibun_sekkei_mode && house_.screens.has(kAmountsScreen)));
    }
    chooseOption(kijun.uses[0] ? 0 : kijun.uses[1] ? 1 : -1);
}

void frmSSanteishitei::Command1_Click() {
    if (!requireWork()) return;
    const forms::GlobalRecord& global = house_.global;
    if (global.haibun_sekkei_mode && !kijun_.uses[0] && !kijun_.uses[1]) {
        forms::tell(this, QStringLiteral("設計時に設定するものはありません。"),
                    QStringLiteral("算定方式指定の確認"), forms::BoxIcon::Information);
        return;
    }
    const auto chosen = [this](Houshiki h) { return option_[static_cast<std::size_t>(h)]->isChecked(); };
    if (global.haibun_jikkou_mode && chosen(Houshiki::Kinippu))
        typeAmounts(Houshiki::Kinippu);
    else if (global.haibun_jikkou_mode && chosen(Houshiki::Tokubetsu))
        typeAmounts(Houshiki::Tokubetsu);
    else if (chosen(Houshiki::Kojinbetsu))
        chooseItem(Houshiki::Kojinbetsu);
    else if (chosen(Houshiki::Sougaku))
        chooseItem(Houshiki::Sougaku);
}

/// The two amounts that are typed in per person go straight to their grid.
void frmSSanteishitei::typeAmounts(Houshiki houshiki) {
    house_.global.santei_houshiki = design::houshikiCode(houshiki);
    showScreen(kAmountsScreen);
}

void frmSSanteishitei::chooseItem(Houshiki houshiki) {
    const QString caption = option_[static_cast<std::size_t>(houshiki)]->text();
    if (!confirm(caption, QStringLiteral("算定方式指定の確認"))) return;
    house_.global.santei_houshiki = design::houshikiCode(houshiki);
    house_.global.santei_houshiki_mei = caption;
    showScreen(QStringLiteral("frmSSanteishitei2"));
}

}  // namespace prep
