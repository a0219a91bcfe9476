#include "reports/ui_chart_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <optional>

namespace reports {
namespace {

constexpr QSize kLeast{420, 280};

/// Where a key leads from an item; none for a key that moves nothing.
std::optional<int> moved(int key, int item, int last) {
    switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Up:
            return item < 0 ? last : item - 1;
        case Qt::Key_Right:
        case Qt::Key_Down:
            return item + 1;
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return last;
        default:
            return std::nullopt;
    }
}

}  // namespace

ChartView::ChartView(const Chart& chart, QWidget* parent)
    : QChartView(parent), picture_(new ChartPicture(chart, widgets::chartColors())) {
    setChart(picture_);
    setRenderHint(QPainter::Antialiasing);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(kLeast);
    setBackgroundBrush(widgets::chartColors().ground);
    setAccessibleName(chart.title);
    setAccessibleDescription(chart.note);
}

QString ChartView::point(int item) {
    item_ = item;
    picture_->setMarked(item);
    const QString text = item < 0 ? QString() : describeItem(picture_->chart(), item);
    setAccessibleDescription(text.isEmpty() ? picture_->chart().note : text);
    Q_EMIT pointed(text);
    return text;
}

void ChartView::mouseMoveEvent(QMouseEvent* event) {
    QChartView::mouseMoveEvent(event);
    const int item = picture_->itemAt(picture_->mapFromScene(mapToScene(event->position().toPoint())));
    if (item != item_) QToolTip::showText(event->globalPosition().toPoint(), point(item), this);
}

void ChartView::leaveEvent(QEvent* event) {
    QChartView::leaveEvent(event);
    if (item_ >= 0) point(-1);
}

void ChartView::keyPressEvent(QKeyEvent* event) {
    const int last = itemCount(picture_->chart()) - 1;
    const auto item = moved(event->key(), item_, last);
    if (!item) return QChartView::keyPressEvent(event);
    if (const int next = std::clamp(*item, 0, last); next != item_) point(next);
    event->accept();
}

}  // namespace reports
