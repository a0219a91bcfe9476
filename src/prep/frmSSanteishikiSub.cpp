#include "prep/frmSSanteishikiSub.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {

CriterionForm::CriterionForm(const QString& name, const QString& caption, forms::House& house,
                             QWidget* parent)
    : Form(name, caption, parent),
      house_(house),
      picker_(new design::CriterionPicker(house, this)),
      label3_(make<QLabel>(QStringLiteral("Label3"))) {
    label3_->setWordWrap(true);
    connect(picker_, &design::CriterionPicker::kubunChosen, this,
            [this] { forms::guarded(this, [this] { DataList1_Click(); }); });
    connect(picker_, &design::CriterionPicker::kijunChosen, this,
            [this] { forms::guarded(this, [this] { DataList2_Click(); }); });
}

void CriterionForm::load(QWidget* between) {
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("次へ(&F)"));
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(command1_);
    setCancelButton(command2_);
    connect(command1_, &QPushButton::clicked, this,
            [this] { forms::guarded(this, [this] { Command1_Click(); }); });
    connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });

    auto* column = widgets::columnOf(this);
    column->addWidget(picker_, 1);
    column->addWidget(label3_);
    if (between)
        column->addWidget(between);
    else  // nothing more to choose
        connect(picker_->kijunList(), &widgets::CodeList::opened, command1_, &QPushButton::click);
    column->addLayout(widgets::buttonRow({help}, {command2_, command1_}));
    setMinimumSize(widgets::twips(7770), widgets::twips(4770));
    forms::guarded(this, [this] { picker_->load(); });
    picker_->kubunList()->setFocus();
}

void CriterionForm::DataList1_Click() {
    picker_->loadKijun();
    showGuidance({}, false);
    nothingToDo_ = false;
    allowNext(true);
}

void CriterionForm::showGuidance(const QString& text, bool warning) {
    label3_->setText(text);
    widgets::setTone(label3_, warning ? widgets::Tone::Warning : widgets::Tone::Normal);
}

void CriterionForm::tellEmployees(const QString& otherwise) {
    nothingToDo_ = !design::hasEmployees(*house_.global.cn_main, design::currentRun(house_.global));
    showGuidance(nothingToDo_ ? design::kNoEmployees : otherwise, nothingToDo_);
}

bool CriterionForm::requireWork() {
    if (!picker_->requireSelection()) return false;
    if (!nothingToDo_) return true;
    forms::tell(this, QStringLiteral("この処理は必要ありません。"), QStringLiteral("確認"),
                forms::BoxIcon::Critical);
    picker_->kijunList()->setFocus();
    return false;
}

bool CriterionForm::confirm(const QString& what, const QString& title) {
    return forms::ask(this, QStringLiteral("『%1』を指定します。").arg(what), title);
}

void CriterionForm::allowNext(bool allowed) {
    command1_->setEnabled(allowed);
}

void CriterionForm::showScreen(const QString& name) {
    setHourglass();
    showChild(house_.screens.create(name, house_, this));
}

namespace {
const QString kNextScreen = QStringLiteral("frmSJikkou04Sub");
}

frmSSanteishikiSub::frmSSanteishikiSub(forms::House& house, QWidget* parent)
    : CriterionForm(QStringLiteral("frmSSanteishikiSub"), QStringLiteral("配分基準指定"), house, parent) {
    load();
}

void frmSSanteishikiSub::DataList2_Click() {
    if (picker_->refuseEmptyKijun()) return;
    picker_->takeSelection();
    if (!house_.global.haibun_jikkou_mode) return;
    tellEmployees({});
    allowNext(nothingToDo_ || house_.screens.has(kNextScreen));
}

void frmSSanteishikiSub::Command1_Click() {
    if (!requireWork()) return;
    const forms::GlobalRecord& global = house_.global;
    if (!confirm(global.haibun_kubun_mei + u'／' + global.haibun_kijun_mei,
                 QStringLiteral("配分基準指定の確認")))
        return;
    if (global.haibun_jikkou_mode) showScreen(kNextScreen);
}

}  // namespace prep
