#include "prep/frmSJikkou03.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"

namespace prep {
namespace {

const QString kZero = QStringLiteral("0");

}  // namespace

frmSJikkou03::frmSJikkou03(forms::House& house, QWidget* parent)
    : InputGridForm(QStringLiteral("frmSJikkou03"), house, parent) {
    setWindowTitle(methodName(house.global) + u'／' +
                   (isPayment() ? QStringLiteral("支給係数") : house.global.settei_meisyou_mei));
    addPanel(makeCalculator());
    forms::guarded(this, [this] {
        load(coefficientRules(), loadInputRows(cn(), design::currentRun(house_.global), target()));
    });
}

bool frmSJikkou03::isPayment() const {
    return house_.global.santei_koumoku == QStringLiteral("4");
}

InputTarget frmSJikkou03::target() const {
    if (isPayment()) return {RunTable::KojinBetsu, QStringLiteral("支給係数")};
    return {methodTable(house_.global), coefficientColumn(house_.global.settei_meisyou)};
}

std::optional<QString> frmSJikkou03::store() {
    if (auto difference = writeInputRows(cn(), design::currentRun(house_.global), target(), rows()))
        return difference;
    return isPayment() ? std::nullopt : copy();
}

std::optional<QString> frmSJikkou03::copy() {
    const forms::GlobalRecord& global = house_.global;
    const domain::RunKey run = design::currentRun(global);
    const bool toPool = methodTable(global) == RunTable::KojinBetsu;
    const QString other =
        design::houshikiCode(toPool ? design::Houshiki::Sougaku : design::Houshiki::Kojinbetsu);
    if (!sisterTypesIn(cn(), run, other, global.settei_meisyou)) return {};
    const QString question = toPool ? QStringLiteral("総額配分の係数にも同じ値をコピーしますか？")
                                    : QStringLiteral("個人別計算の係数にも同じ値をコピーしますか？");
    if (!forms::askLoss(this, question, QStringLiteral("係数コピーの確認"))) return {};
    const InputTarget sister{toPool ? RunTable::SougakuHaibun : RunTable::KojinBetsu, target().column};
    return writeInputRows(cn(), run, sister, rows());
}

// ---- The calculator --------------------------------------------------------------------------------------

QGroupBox* frmSJikkou03::makeCalculator() {
    auto* frame = make<QGroupBox>(QStringLiteral("Frame1"), QStringLiteral("【計算】"));
    text2_ = makeOperand(QStringLiteral("Text2"), QStringLiteral("割られる数"));
    text3_ = makeOperand(QStringLiteral("Text3"), QStringLiteral("割る数"));
    label6_ = make<QLabel>(QStringLiteral("Label6"), kZero);
    label6_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* line = new QHBoxLayout(frame);
    line->addWidget(text2_);
    line->addWidget(new QLabel(QStringLiteral("÷"), frame));
    line->addWidget(text3_);
    line->addWidget(new QLabel(QStringLiteral("＝"), frame));
    line->addWidget(label6_, 1);
    auto* insert = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("係数に入れる(&I)"));
    insert->setToolTip(QStringLiteral("計算の結果を、いま入力している社員の係数にします。"));
    connect(insert, &QPushButton::clicked, this, [this] { enter(label6_->text()); });
    line->addWidget(insert);
    return frame;
}

QLineEdit* frmSJikkou03::makeOperand(const QString& name, const QString& meaning) {
    auto* edit = make<QLineEdit>(name, kZero);
    edit->setAccessibleName(meaning);
    edit->setToolTip(meaning);
    edit->setAlignment(Qt::AlignRight);
    widgets::admitOnly(edit, QStringLiteral("0123456789"));
    connect(edit, &QLineEdit::textChanged, this, [this, edit] { operandChanged(edit); });
    validateOnLeave(edit, [edit] {
        edit->setText(store::formatGrouped(store::Money::fromDouble(store::Value(edit->text()).toDouble())));
        return true;
    });
    return edit;
}

/// A replaced text comes back here and is computed then. Text that is no number becomes 1 although the
/// message says 0.
void frmSJikkou03::operandChanged(QLineEdit* edit) {
    if (edit->text().isEmpty()) {
        forms::tell(this, QStringLiteral("空欄なので0にします。"), QStringLiteral("空欄0表示"));
        edit->setText(kZero);
    } else if (!store::parseNumber(edit->text())) {
        forms::tell(this, QStringLiteral("不正な入力がありました。0にします。"),
                    QStringLiteral("入力エラー"));
        edit->setText(QStringLiteral("1"));
    } else {
        forms::guarded(this, [this] { keisan(); });
    }
}

void frmSJikkou03::keisan() {
    label6_->setText(prep::keisan(text2_->text(), text3_->text()));
}

}  // namespace prep
