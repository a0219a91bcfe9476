#include "calc/frmSJCheck.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "calc/input_check.h"
#include "calc/ui_result_output.h"
#include "design/ui_criterion_picker.h"
#include "design/ui_houshiki_options.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "reports/ui_list_title.h"
#include "reports/ui_sent_sheet.h"
#include "reports/workbook.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace calc {

using design::Houshiki;

namespace {

void keepPlace(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

}  // namespace

frmSJCheck::frmSJCheck(forms::House& house, const reports::SheetFolder& sheets, QWidget* parent)
    : Form(QStringLiteral("frmSJCheck"), QStringLiteral("算定方式指定"), parent),
      house_(house),
      sheets_(sheets) {
    makeControls();
    forms::guarded(this, [this] { Form_Load(); });
}

// ---- The screen's parts

void frmSJCheck::makeControls() {
    auto* title = make<QLabel>(QStringLiteral("Label5"),
                               QStringLiteral("入力状況チェック　基準日 %1").arg(house_.global.kijunbi));
    auto* guidance =
        make<QLabel>(QStringLiteral("Label6"),
                     QStringLiteral("使用する基礎額と係数だけを、社員ごとに１行の表にして送ります。"));
    picker_ = new design::CriterionPicker(house_, this);
    auto* first = make<QLabel>(QStringLiteral("Image0"), QStringLiteral("①"));
    marker_ = {make<QLabel>(QStringLiteral("Image1"), QStringLiteral("②")),
               make<QLabel>(QStringLiteral("Image2"), QStringLiteral("③"))};
    for (QLabel* marker : {first, marker_[0], marker_[1]}) widgets::setTone(marker, widgets::Tone::Heading);
    picker_->setMarkers(first, marker_[0]);
    label3_ = make<QLabel>(QStringLiteral("Label3"));
    label3_->setWordWrap(true);
    auto* line = new QHBoxLayout;
    line->setSpacing(widgets::kGrid);
    line->addWidget(marker_[1]);
    line->addWidget(label3_, 1);

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guidance));
    column->addWidget(picker_, 1);
    column->addLayout(line);
    options_ = new design::HoushikiOptions(QStringLiteral("Frame1"), this, 2);
    options_->indent();
    connect(options_, &design::HoushikiOptions::picked, this, [this] { sent_->hide(); });
    column->addWidget(options_);
    column->addWidget(makeButtons());
    setMinimumSize(widgets::twips(7770), widgets::twips(4770));
    for (QWidget* part : std::initializer_list<QWidget*>{marker_[0], marker_[1], label3_}) keepPlace(part);

    connect(picker_, &design::CriterionPicker::kubunChosen, this,
            [this] { forms::guarded(this, [this] { DataList1_Click(); }); });
    connect(picker_, &design::CriterionPicker::kijunChosen, this, [this] {
        if (forms::guarded(this, [this] { DataList2_Click(); })) return;
        picker_->kijunList()->choose(-1);
        showMethod(false);
    });
}

/// The path of the last sheet above the row of buttons.
QWidget* frmSJCheck::makeButtons() {
    auto* holder = new QWidget(this);
    sent_ = new reports::SentSheet(this);
    auto* send = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("Excelにデータを送る"));
    auto* close = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(send);
    setOutput(send, Output::Excel);
    setCancelButton(close);
    connect(send, &QPushButton::clicked, this,
            [this] { forms::guarded(this, [this] { Command1_Click(); }); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    auto* column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(widgets::kGrid);
    column->addWidget(sent_);
    column->addLayout(widgets::buttonRow({help}, {close, send}));
    return holder;
}

void frmSJCheck::Form_Load() {
    showMethod(false);
    marker_[0]->hide();
    picker_->load();
    picker_->kubunList()->setFocus();
}

// ---- Choosing

void frmSJCheck::showMethod(bool show) {
    for (QWidget* part : std::initializer_list<QWidget*>{label3_, marker_[1], options_})
        part->setVisible(show);
    sent_->hide();
    if (!show) nothingToDo_ = false;
}

void frmSJCheck::DataList1_Click() {
    showMethod(false);
    picker_->loadKijun();
    marker_[0]->show();
}

void frmSJCheck::DataList2_Click() {
    if (picker_->refuseEmptyKijun()) return;
    showMethod(false);
    picker_->takeSelection();
    const forms::GlobalRecord& global = house_.global;
    const auto kijun = design::kijunOf(*global.cn_main, global.haibun_kubun, global.haibun_kijun);
    if (!kijun) return;
    options_->offer(design::offeredPayments(*kijun));
    tellEmployees(!global.haibun_jikkou_mode ||
                  design::hasEmployees(*global.cn_main, design::currentRun(global)));
    showMethod(true);
}

void frmSJCheck::tellEmployees(bool any) {
    nothingToDo_ = !any;
    label3_->setText(any ? QStringLiteral("算定方式を指定してください｡") : design::kNoEmployees);
    widgets::setTone(label3_, any ? widgets::Tone::Normal : widgets::Tone::Warning);
}

// ---- Sending

/// A criterion of typed amounts alone has neither bases nor coefficients to look at.
bool frmSJCheck::refused() {
    if (!picker_->requireSelection()) return true;
    if (!nothingToDo_ && options_->chosen()) return false;
    forms::tell(this, QStringLiteral("この処理は必要ありません。"), QStringLiteral("確認"),
                forms::BoxIcon::Critical);
    picker_->kijunList()->setFocus();
    return true;
}

void frmSJCheck::Command1_Click() {
    if (refused()) return;
    const Houshiki method = *options_->chosen();
    const QString caption = options_->captionOf(method);
    forms::tell(this, QStringLiteral("『%1』を指定します。").arg(caption),
                QStringLiteral("算定方式指定の確認"));
    house_.global.santei_houshiki = design::houshikiCode(method);
    house_.global.santei_houshiki_mei = caption;
    if (method == Houshiki::Kojinbetsu)
        kojinbetsu();
    else
        sougaku();
}

void frmSJCheck::send(Houshiki method) {
    setHourglass();
    const forms::GlobalRecord& global = house_.global;
    const auto sheet = inputCheckSheet(*global.cn_main, design::currentRun(global), method,
                                       global.haibun_kubun_mei, global.haibun_kijun_mei);
    const QString path = sheets_.send(
        sheet, reports::titleOfRun(global,
                                   QStringLiteral("入力状況チェック（%1）").arg(global.santei_houshiki_mei)));
    setDefaultPointer();
    sent_->tell(path);
}

}  // namespace calc
