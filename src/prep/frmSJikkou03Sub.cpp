#include "prep/frmSJikkou03Sub.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "prep/ui_input_form.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {
namespace {

const QString kNextScreen = QStringLiteral("frmSJikkou03");
const QString kTitle = QStringLiteral("係数指定の確認");
const QString kPrompt = QStringLiteral("係数を指定してください。");

}  // namespace

frmSJikkou03Sub::frmSJikkou03Sub(forms::House& house, QWidget* parent)
    : Form(QStringLiteral("frmSJikkou03Sub"), methodName(house.global) + QStringLiteral("／係数"), parent),
      house_(house) {
    makeControls();
    forms::guarded(this, [this] { Form_Load(); });
}

void frmSJikkou03Sub::makeControls() {
    const forms::GlobalRecord& global = house_.global;
    auto* label1 =
        make<QLabel>(QStringLiteral("Label1"), global.haibun_kubun_mei + u'／' + global.haibun_kijun_mei);
    list_ = make<widgets::CodeList>(QStringLiteral("DataList1"));
    list_->setPlaceholder(QStringLiteral("指定できる係数はありません。"));
    auto* label2 = labelFor(QStringLiteral("Label2"), kPrompt, list_);
    auto* next = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("次へ(&F)"));
    auto* back = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("戻る(&B)"));
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(next);
    setCancelButton(back);
    next->setEnabled(house_.screens.has(kNextScreen));
    connect(next, &QPushButton::clicked, this,
            [this] { forms::guarded(this, [this] { Command1_Click(); }); });
    connect(list_, &widgets::CodeList::opened, next, &QPushButton::click);
    connect(back, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(label1, label2));
    column->addWidget(list_, 1);
    column->addLayout(widgets::buttonRow({help}, {back, next}));
    setMinimumSize(widgets::twips(5400), widgets::twips(5400));
}

void frmSJikkou03Sub::Form_Load() {
    const forms::GlobalRecord& global = house_.global;
    std::vector<widgets::CodeList::Item> items;
    for (const Coefficient& c : listCoefficients(*global.cn_main, design::currentRun(global),
                                                 global.santei_houshiki, global.jikkou_syuusei_mode))
        items.push_back({c.setteiMeisyou, c.name});
    list_->setItems(items);
    list_->setFocus();
}

void frmSJikkou03Sub::Command1_Click() {
    forms::GlobalRecord& global = house_.global;
    global.settei_meisyou = list_->boundText();
    global.settei_meisyou_mei = list_->text();
    if (global.settei_meisyou.isEmpty()) {
        forms::tell(this, kPrompt, kTitle);
        list_->setFocus();
        return;
    }
    if (!forms::ask(this, QStringLiteral("『%1』を指定します。").arg(global.settei_meisyou_mei), kTitle))
        return;
    showChild(house_.screens.create(kNextScreen, house_, this));
}

}  // namespace prep
