#include "prep/frmSSanteishitei2.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "design/ui_criterion_picker.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {
namespace {

/// Where each item is typed in.
const std::array<QString, kEntryItemCount> kScreens{
    QStringLiteral("frmSJikkou02"), QStringLiteral("frmSJikkou02"), QStringLiteral("frmSJikkou03Sub"),
    QStringLiteral("frmSJikkou03")};

}  // namespace

frmSSanteishitei2::frmSSanteishitei2(forms::House& house, QWidget* parent)
    : Form(QStringLiteral("frmSSanteishitei2"), QStringLiteral("算定方式"), parent), house_(house) {
    makeControls();
    forms::guarded(this, [this] { Form_Load(); });
}

void frmSSanteishitei2::makeControls() {
    label1_ = make<QLabel>(QStringLiteral("Label1"), house_.global.santei_houshiki_mei);
    label1_->setWordWrap(true);
    auto* label3 = make<QLabel>(QStringLiteral("Label3"), QStringLiteral("次の処理を指定してください。"));
    option_ = makeArray<QRadioButton, kEntryItemCount>(
        QStringLiteral("Option1"), {QStringLiteral("基礎額Ａ"), QStringLiteral("基礎額Ｂ"),
                                    QStringLiteral("係数"), QStringLiteral("支給係数")});
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("次へ(&F)"));
    auto* close = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(command1_);
    setCancelButton(close);
    connect(command1_, &QPushButton::clicked, this,
            [this] { forms::guarded(this, [this] { Command1_Click(); }); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });

    for (std::size_t i = 0; i < option_.size(); ++i)
        connect(option_[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                command1_->setEnabled(!house_.global.haibun_jikkou_mode || house_.screens.has(kScreens[i]));
        });

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(label1_, label3));
    for (QRadioButton* option : option_) column->addWidget(option);
    column->addStretch();
    column->addLayout(widgets::buttonRow({help}, {close, command1_}));
    setMinimumSize(widgets::twips(5400), widgets::twips(4200));
}

void frmSSanteishitei2::Form_Load() {
    forms::GlobalRecord& global = house_.global;
    if (!global.haibun_jikkou_mode) {
        option_[3]->setVisible(global.santei_houshiki != QStringLiteral("2"));
        option_[0]->setChecked(true);
        return;
    }
    const auto offered =
        offeredItems(*global.cn_main, design::currentRun(global), global.santei_houshiki,
                     global.jikkou_syuusei_mode ? EntryPurpose::Correction : EntryPurpose::RunTimeInput);
    bool chosen = false;
    for (std::size_t i = 0; i < offered.size(); ++i) {
        option_[i]->setVisible(offered[i]);
        if (offered[i] && !chosen) option_[i]->setChecked(chosen = true);
    }
    if (!chosen)
        label1_->setText(global.jikkou_syuusei_mode
                             ? QStringLiteral("一律金額・係数又は自動入力はありません。")
                             : QStringLiteral("実行時入力はありません。"));
    global.setRunPanel(
        QStringLiteral("配分区分: %1／配分基準: %2").arg(global.haibun_kubun_mei, global.haibun_kijun_mei));
}

void frmSSanteishitei2::Command1_Click() {
    forms::GlobalRecord& global = house_.global;
    if (!global.haibun_jikkou_mode) return;
    const std::array<bool*, kEntryItemCount> flags{&global.koumoku_kisogaku_a, &global.koumoku_kisogaku_b,
                                                   &global.koumoku_keisuu, &global.koumoku_shikyuu};
    for (bool* flag : flags) *flag = false;
    for (std::size_t i = 0; i < option_.size(); ++i) {
        if (!option_[i]->isChecked() || option_[i]->isHidden()) continue;
        global.santei_koumoku = QString::number(i + 1);
        *flags[i] = true;
        showChild(house_.screens.create(kScreens[i], house_, this));
        return;
    }
}

void frmSSanteishitei2::tidy(Base base, const QString& name) {
    const forms::GlobalRecord& global = house_.global;
    const domain::RunKey run = design::currentRun(global);
    if (!baseIsOrphaned(*global.cn_main, run, global.santei_houshiki, base)) return;
    const QString question =
        QStringLiteral("%1を利用する係数の設定がありません。\n %1の設定データを削除しますか？").arg(name);
    if (forms::askLoss(this, question, QStringLiteral("削除の確認")))
        removeBaseSetup(*global.cn_main, run, global.santei_houshiki, base);
}

void frmSSanteishitei2::done(int result) {
    forms::guarded(this, [this] {
        house_.global.setRunPanel({});
        tidy(Base::A, QStringLiteral("基礎額Ａ"));
        tidy(Base::B, QStringLiteral("基礎額Ｂ"));
    });
    Form::done(result);
}

}  // namespace prep
