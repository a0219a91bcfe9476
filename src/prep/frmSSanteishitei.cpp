#include "prep/frmSSanteishitei.h"

#include "design/ui_criterion_picker.h"
#include "design/ui_houshiki_options.h"
#include "forms/box.h"
#include "forms/global_record.h"

namespace prep {

using design::Houshiki;

namespace {
const QString kAmountsScreen = QStringLiteral("frmSJikkou01");
}

frmSSanteishitei::frmSSanteishitei(forms::House& house, QWidget* parent)
    : CriterionForm(QStringLiteral("frmSSanteishitei"), QStringLiteral("算定方式指定"), house, parent),
      options_(new design::HoushikiOptions(QStringLiteral("Frame1"), this)) {
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
    options_->show();
    options_->offer(kijun->uses);
    options_->enableTyped(!global.haibun_sekkei_mode && house_.screens.has(kAmountsScreen));
    const QString guidance = QStringLiteral("算定方式を指定してください｡");
    if (global.haibun_jikkou_mode)
        tellEmployees(guidance);
    else
        showGuidance(guidance, false);
}

void frmSSanteishitei::Command1_Click() {
    if (!requireWork()) return;
    const forms::GlobalRecord& global = house_.global;
    if (global.haibun_sekkei_mode && !kijun_.uses[0] && !kijun_.uses[1]) {
        forms::tell(this, QStringLiteral("設計時に設定するものはありません。"),
                    QStringLiteral("算定方式指定の確認"), forms::BoxIcon::Information);
        return;
    }
    const auto chosen = options_->chosen();
    if (!chosen) return;
    if (*chosen == Houshiki::Kojinbetsu || *chosen == Houshiki::Sougaku)
        chooseItem(*chosen);
    else if (global.haibun_jikkou_mode)
        typeAmounts(*chosen);
}

/// The two amounts that are typed in per person go straight to their grid.
void frmSSanteishitei::typeAmounts(Houshiki houshiki) {
    house_.global.santei_houshiki = design::houshikiCode(houshiki);
    showScreen(kAmountsScreen);
}

void frmSSanteishitei::chooseItem(Houshiki houshiki) {
    const QString caption = options_->captionOf(houshiki);
    if (!confirm(caption, QStringLiteral("算定方式指定の確認"))) return;
    house_.global.santei_houshiki = design::houshikiCode(houshiki);
    house_.global.santei_houshiki_mei = caption;
    showScreen(QStringLiteral("frmSSanteishitei2"));
}

}  // namespace prep
