#include "reports/ui_chart_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
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
    : QWidget(parent), picture_(chart, widgets::chartColors()) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(kLeast);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(chart.title);
    setAccessibleDescription(chart.note);
}

void ChartView::resizeEvent(QResizeEvent*) {
    picture_.resize(size());
}

void ChartView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    picture_.paint(painter, event->rect(), item_);
}

QString ChartView::point(int item) {
    for (const int changed : {item_, item}) update(picture_.markedArea(changed).toAlignedRect());
    item_ = item;
    const QString text = item < 0 ? QString() : describeItem(picture_.chart(), item);
    setAccessibleDescription(text.isEmpty() ? picture_.chart().note : text);
    Q_EMIT pointed(text);
    return text;
}

void ChartView::mouseMoveEvent(QMouseEvent* event) {
    const int item = picture_.itemAt(event->position());
    if (item != item_) QToolTip::showText(event->globalPosition().toPoint(), point(item), this);
}

void ChartView::leaveEvent(QEvent*) {
    if (item_ >= 0) point(-1);
}

void ChartView::keyPressEvent(QKeyEvent* event) {
    const int last = itemCount(picture_.chart()) - 1;
    const auto item = moved(event->key(), item_, last);
    if (!item) return QWidget::keyPressEvent(event);
    if (const int next = std::clamp(*item, 0, last); next != item_) point(next);
    event->accept();
}

}  // namespace reports
