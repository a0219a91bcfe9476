// How the calculation screen is laid out; what it does stands in frmSHaibunjikkouK2.cpp.
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedLayout>

#include "calc/frmSHaibunjikkouK2.h"
#include "calc/ui_budget_box.h"
#include "calc/ui_payment_panel.h"
#include "design/ui_criterion_picker.h"
#include "design/ui_houshiki_options.h"
#include "forms/global_record.h"
#include "reports/ui_sent_sheet.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace calc {

using widgets::twips;

namespace {

constexpr int kHeight = twips(4770);
constexpr int kWidth = twips(7770);
constexpr int kWidthWithPanel = twips(11055);

void keepsItsPlace(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

}  // namespace

void frmSHaibunjikkouK2::makeControls() {
    auto* title = make<QLabel>(QStringLiteral("Label20"),
                               QStringLiteral("配分計算　基準日 %1").arg(house_.global.kijunbi));
    picker_ = new design::CriterionPicker(house_, this);
    for (int i = 0; i < 3; ++i) {
        auto* marker = make<QLabel>(QStringLiteral("Image%1").arg(i + 1), QString(QChar(u'②' + i)));
        widgets::setTone(marker, widgets::Tone::Heading);
        marker_[static_cast<std::size_t>(i)] = marker;
    }
    auto* first = make<QLabel>(QStringLiteral("Image0"), QStringLiteral("①"));
    widgets::setTone(first, widgets::Tone::Heading);
    picker_->setMarkers(first, marker_[0]);
    auto* run = makeRun();
    auto* results = makeResults();
    auto* closing = makeClosing();
    payment_.emplace(this, PaymentSide::Least{kWidth, kWidthWithPanel, kHeight});

    auto* body = new QHBoxLayout;
    body->setSpacing(2 * widgets::kGrid);
    auto* left = new QVBoxLayout;
    left->setSpacing(widgets::kGrid + widgets::kGrid / 2);
    left->addWidget(picker_, 1);
    left->addWidget(run);
    left->addLayout(results);
    left->addWidget(sent_);
    body->addLayout(left, 1);
    body->addWidget(payment_->panel());
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, nullptr));
    column->addLayout(body, 1);
    column->addLayout(closing);
    setMinimumSize(kWidth, kHeight);
    QWidget* before = budget_->boxes().back();
    for (QLineEdit* box : payment_->panel()->boxes()) {
        setTabOrder(before, box);
        before = box;
    }
    widgets::tabOrder({before, command6_, command1_, command4_, command7_, command5_});
}

/// Step three: the 算定方式 over the budget. A hint stands in their place until a criterion is chosen.
QWidget* frmSHaibunjikkouK2::makeRun() {
    auto* hint =
        make<QLabel>(QStringLiteral("Label21"),
                     QStringLiteral("配分区分と配分基準を選ぶと、予算と支給額の合計が表示されます。"));
    hint->setAlignment(Qt::AlignCenter);
    hint->setWordWrap(true);
    widgets::setTone(hint, widgets::Tone::Muted);
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(widgets::kGrid);
    auto* guidance = new QHBoxLayout;
    label3_ = make<QLabel>(QStringLiteral("Label3"), QStringLiteral("算定方式を指定してください。"));
    guidance->addWidget(marker_[1]);
    guidance->addWidget(label3_, 1);
    column->addLayout(guidance);
    options_ = new design::HoushikiOptions(QStringLiteral("Frame1"), this);
    options_->indent();
    column->addWidget(options_);
    budget_ = new BudgetBox(this);
    column->addWidget(budget_);
    auto* holder = new QWidget(this);
    stack_ = new QStackedLayout(holder);
    stack_->addWidget(hint);
    stack_->addWidget(page);
    for (QWidget* part : {marker_[1], label3_}) keepsItsPlace(part);
    return holder;
}

/// The run, and what shows its result.
QHBoxLayout* frmSHaibunjikkouK2::makeResults() {
    command6_ = make<QPushButton>(QStringLiteral("Command6"), QStringLiteral("支給係数修正(&S)"));
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("計算(&K)"));
    command4_ = make<QPushButton>(QStringLiteral("Command4"), QStringLiteral("一覧表"));
    command7_ = make<QPushButton>(QStringLiteral("Command7"), QStringLiteral("グラフ(&G)"));
    command5_ = make<QPushButton>(QStringLiteral("Command5"), QStringLiteral("Excelにデータを送る"));
    for (QPushButton* button : {command6_, command1_}) widgets::setPrimary(button);
    setOutput(command4_, Output::List);
    setOutput(command5_, Output::Excel);
    sent_ = new reports::SentSheet(this);
    auto* row = new QHBoxLayout;
    row->setSpacing(widgets::kGrid);
    row->addWidget(command6_);
    row->addWidget(command1_);
    row->addStretch();
    for (QWidget* part : std::initializer_list<QWidget*>{marker_[2], command4_, command7_, command5_}) {
        keepsItsPlace(part);
        row->addWidget(part);
    }
    return row;
}

QHBoxLayout* frmSHaibunjikkouK2::makeClosing() {
    auto* help = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("閉じる(&Ｃ)"));
    setCancelButton(command2_);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    return widgets::buttonRow({help}, {command2_});
}

}  // namespace calc
