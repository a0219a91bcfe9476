#include "widgets/contents_area.h"

#include <QBoxLayout>
#include <QEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>

namespace widgets {
namespace {

void moveItem(QBoxLayout* from, QBoxLayout* to) {
    const int stretch = from->stretch(0);
    QLayoutItem* item = from->takeAt(0);
    if (QLayout* inner = item->layout()) {
        to->addLayout(inner, stretch);
    } else if (QWidget* widget = item->widget()) {
        to->addWidget(widget, stretch, item->alignment());
        delete item;
    } else {
        to->addItem(item);
        to->setStretch(to->count() - 1, stretch);
    }
}

bool holdsButtons(QLayoutItem* item) {
    if (item->widget())
        return qobject_cast<QPushButton*>(item->widget()) || item->widget()->findChild<QPushButton*>();
    const QLayout* row = item->layout();
    for (int i = 0; row && i < row->count(); ++i)
        if (holdsButtons(row->itemAt(i))) return true;
    return false;
}

}  // namespace

ContentsArea::ContentsArea(QWidget* screen) : QScrollArea(screen) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setWidget(new QWidget);
    // The screen's own ground shows through.
    viewport()->setAutoFillBackground(false);
    widget()->setAutoFillBackground(false);
}

ContentsArea* ContentsArea::above(QBoxLayout* column) {
    QLayoutItem* const last = column->itemAt(column->count() - 1);
    if (column->count() < 2 || !last->layout() || !holdsButtons(last)) return nullptr;
    auto* area = new ContentsArea(column->parentWidget());
    auto* contents = new QVBoxLayout(area->widget());
    contents->setContentsMargins(0, 0, 0, 0);
    contents->setSpacing(column->spacing());
    // A widget that moves to another parent loses the focus which the screen gave it.
    QWidget* const focused = column->parentWidget()->focusWidget();
    while (column->count() > 1) moveItem(column, contents);
    column->insertWidget(0, area, 1);
    area->lower();  // its controls stay before those of the bar among the screen's children
    if (focused) focused->setFocus(Qt::OtherFocusReason);
    return area;
}

void ContentsArea::setRoom(QSize room) {
    room_ = room;
    updateGeometry();
}

QSize ContentsArea::sizeHint() const {
    const QLayout* contents = widget()->layout();
    const QSize wanted = contents->totalSizeHint();
    if (!contents->hasHeightForWidth()) return wanted;
    return {wanted.width(), contents->totalHeightForWidth(wanted.width())};
}

/// Where the contents are cut in one direction, the scroll bar takes its room in the other.
QSize ContentsArea::minimumSizeHint() const {
    QSize least = leastSize(widget()->layout()->totalSizeHint().width());
    if (least.height() > room_.height()) least.rwidth() += verticalScrollBar()->sizeHint().width();
    if (least.width() > room_.width()) least.rheight() += horizontalScrollBar()->sizeHint().height();
    return least.boundedTo(room_);
}

QSize ContentsArea::leastSize(int width) const {
    const QLayout* contents = widget()->layout();
    const QSize least = contents->totalMinimumSize();
    if (!contents->hasHeightForWidth()) return least;
    return {least.width(), contents->totalMinimumHeightForWidth(std::max(width, least.width()))};
}

bool ContentsArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        fit();
    }
    return QScrollArea::eventFilter(watched, event);
}

void ContentsArea::resizeEvent(QResizeEvent* event) {
    fit();
    QScrollArea::resizeEvent(event);
}

/// The contents fill the area and are never squeezed under what their texts need.
void ContentsArea::fit() {
    const QSize whole = maximumViewportSize();
    QSize least = leastSize(whole.width());
    QSize room = whole;
    if (least.height() > whole.height()) {
        room.rwidth() -= verticalScrollBar()->sizeHint().width();
        least = leastSize(room.width());
    }
    if (least.width() > room.width()) room.rheight() -= horizontalScrollBar()->sizeHint().height();
    widget()->resize(room.expandedTo(least));
}

/// Keys that no control took: none is lost for the screen where there is nothing to scroll.
void ContentsArea::keyPressEvent(QKeyEvent* event) {
    const bool page = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    if (page && verticalScrollBar()->maximum() > 0) return QScrollArea::keyPressEvent(event);
    event->ignore();
}

}  // namespace widgets
