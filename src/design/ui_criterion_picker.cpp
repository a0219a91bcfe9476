#include "design/ui_criterion_picker.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

#include "forms/box.h"
#include "forms/global_record.h"
#include "store/date_text.h"
#include "widgets/theme.h"

namespace design {

CriterionPicker::CriterionPicker(forms::House& house, QWidget* parent)
    : QWidget(parent),
      house_(house),
      kubun_(new widgets::CodeList(this)),
      kijun_(new widgets::CodeList(this)) {
    auto* kubunLabel = new QLabel(QStringLiteral("処理する配分区分をを指定してください。"), this);
    kubunLabel->setObjectName(QStringLiteral("Label1"));
    kijunLabel_ = new QLabel(QStringLiteral("配分基準を指定してください。"), this);
    kijunLabel_->setObjectName(QStringLiteral("Label2"));
    kubun_->setObjectName(QStringLiteral("DataList1"));
    kijun_->setObjectName(QStringLiteral("DataList2"));
    kubun_->setAccessibleName(QStringLiteral("配分区分"));
    kijun_->setAccessibleName(QStringLiteral("配分基準"));
    kubun_->setPlaceholder(QStringLiteral("配分区分が設定されていません"));
    constexpr int kLeastRows = 3;
    for (widgets::CodeList* list : {kubun_, kijun_})
        list->setMinimumHeight(kLeastRows * (fontMetrics().height() + widgets::kGrid) + widgets::kGrid);
    kubunLabel->setBuddy(kubun_);
    kijunLabel_->setBuddy(kijun_);
    // The second prompt keeps its place while it is hidden, so that the lists do not jump.
    QSizePolicy keep = kijunLabel_->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    kijunLabel_->setSizePolicy(keep);

    grid_ = new QGridLayout(this);
    auto* grid = grid_;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2 * widgets::kGrid);
    kubunLine_ = new QHBoxLayout;
    kubunLine_->addWidget(kubunLabel, 1);
    kijunLine_ = new QHBoxLayout;
    kijunLine_->addWidget(kijunLabel_, 1);
    grid->addLayout(kubunLine_, 0, 0);
    grid->addLayout(kijunLine_, 0, 1);
    for (int column : {0, 1}) grid->setColumnStretch(column, 1);
    grid->addWidget(kubun_, 1, 0);
    grid->addWidget(kijun_, 1, 1);

    connect(kubun_, &widgets::CodeList::chosen, this, &CriterionPicker::kubunChosen);
    connect(kijun_, &widgets::CodeList::chosen, this, &CriterionPicker::kijunChosen);
    kijun_->installEventFilter(this);
    kijun_->viewport()->installEventFilter(this);
}

void CriterionPicker::setStacked() {
    grid_->removeItem(kijunLine_);
    grid_->addLayout(kijunLine_, 2, 0);
    grid_->addWidget(kijun_, 3, 0);
    grid_->setColumnStretch(1, 0);
    stacked_ = true;
}

void CriterionPicker::setMarkers(QLabel* first, QLabel* second) {
    for (QHBoxLayout* line : {kubunLine_, kijunLine_}) line->setSpacing(widgets::kGrid);
    kubunLine_->insertWidget(0, first);
    kijunLine_->insertWidget(0, second);
}

void CriterionPicker::load() {
    std::vector<widgets::CodeList::Item> items;
    for (const Kubun& kubun : design::kubunList(*house_.global.cn_main))
        items.push_back({kubun.code, kubun.name});
    kubun_->setItems(items);
    kijun_->clearItems();
    kijun_->setPlaceholder(stacked_ ? QStringLiteral("上で配分区分を選ぶと並びます")
                                    : QStringLiteral("左で配分区分を選ぶと並びます"));
    kijun_->setEnabled(false);
    kijunLabel_->hide();
}

void CriterionPicker::loadKijun() {
    std::vector<widgets::CodeList::Item> items;
    for (const Kijun& kijun : design::kijunList(*house_.global.cn_main, kubun_->boundText()))
        items.push_back({kijun.code, kijun.name});
    kijun_->setItems(items);
    kijun_->setPlaceholder(QStringLiteral("この配分区分には配分基準がありません"));
    kijun_->setEnabled(true);
    kijunLabel_->show();
}

void CriterionPicker::takeSelection() {
    forms::GlobalRecord& global = house_.global;
    global.haibun_kubun = kubun_->boundText();
    global.haibun_kubun_mei = kubun_->text();
    global.haibun_kijun = kijun_->boundText();
    global.haibun_kijun_mei = kijun_->text();
}

bool CriterionPicker::refuse(widgets::CodeList* list, const QString& text, const QString& title) {
    forms::tell(window(), text, title, forms::BoxIcon::Critical);
    list->setFocus();
    return false;
}

bool CriterionPicker::requireSelection() {
    takeSelection();
    if (house_.global.haibun_kubun.isEmpty())
        return refuse(kubun_, QStringLiteral("配分区分を指定してください。"),
                      QStringLiteral("配分区分指定の確認"));
    if (house_.global.haibun_kijun.isEmpty())
        return refuse(kijun_, QStringLiteral("配分基準を指定してください。"),
                      QStringLiteral("配分基準指定の確認"));
    return true;
}

bool CriterionPicker::refuseEmptyKijun() {
    if (!kijun_->boundText().isEmpty()) return false;
    forms::tell(window(), QStringLiteral("設定した配分基準はありません。"), QStringLiteral("未設定"),
                forms::BoxIcon::Information);
    return true;
}

bool CriterionPicker::eventFilter(QObject* watched, QEvent* event) {
    const bool clicked = event->type() == QEvent::MouseButtonRelease && watched == kijun_->viewport();
    const bool pressed =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    if ((clicked || pressed) && kijun_->isEnabled() && kijun_->count() == 0) Q_EMIT kijunChosen();
    return QWidget::eventFilter(watched, event);
}

domain::RunKey currentRun(const forms::GlobalRecord& global) {
    return {store::requireDate(global.kijunbi), global.haibun_kubun, global.haibun_kijun};
}

}  // namespace design
