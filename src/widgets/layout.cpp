#include "widgets/layout.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QToolTip>

#include "widgets/theme.h"

namespace widgets {

QVBoxLayout* columnOf(QWidget* screen) {
    auto* column = new QVBoxLayout(screen);
    column->setContentsMargins(2 * kGrid, 2 * kGrid, 2 * kGrid, 2 * kGrid);
    column->setSpacing(kGrid + kGrid / 2);
    return column;
}

QVBoxLayout* headerBlock(QLabel* title, QLabel* guidance) {
    auto* block = new QVBoxLayout;
    block->setSpacing(kGrid / 2);
    if (title) {
        setTone(title, Tone::Title);
        block->addWidget(title);
    }
    if (guidance) {
        setTone(guidance, Tone::Muted);
        guidance->setWordWrap(true);
        block->addWidget(guidance);
    }
    return block;
}

QHBoxLayout* buttonRow(std::initializer_list<QWidget*> apart, std::initializer_list<QWidget*> actions) {
    auto* row = new QHBoxLayout;
    row->setSpacing(kGrid);
    for (QWidget* button : apart)
        if (button) row->addWidget(button);
    row->addStretch(1);
    for (QWidget* button : actions)
        if (button) row->addWidget(button);
    return row;
}

QGridLayout* fieldGrid() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(kGrid + kGrid / 2);
    grid->setVerticalSpacing(kGrid);
    grid->setColumnStretch(1, 1);
    return grid;
}

void addField(QGridLayout* grid, QWidget* label, QWidget* field) {
    const int row = grid->count() == 0 ? 0 : grid->rowCount();
    if (label) grid->addWidget(label, row, 0);
    grid->addWidget(field, row, 1);
}

void tabOrder(std::initializer_list<QWidget*> controls) {
    QWidget* before = nullptr;
    for (QWidget* control : controls) {
        if (before && control) QWidget::setTabOrder(before, control);
        if (control) before = control;
    }
}

Card::Card(QWidget* parent) : QFrame(parent) {
    setFrameShape(QFrame::StyledPanel);
}

QVBoxLayout* Card::body() {
    if (auto* column = qobject_cast<QVBoxLayout*>(layout())) return column;
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(2 * kGrid, kGrid + kGrid / 2, 2 * kGrid, kGrid + kGrid / 2);
    column->setSpacing(kGrid);
    return column;
}

void paintEmptyState(QAbstractItemView* view, const QString& text) {
    if (text.isEmpty() || (view->model() && view->model()->rowCount(view->rootIndex()) > 0)) return;
    QPainter painter(view->viewport());
    // The program's own colour: the style sheet makes the view's a shade of its text, too faint where
    // disabled.
    painter.setPen(QGuiApplication::palette().color(QPalette::PlaceholderText));
    const QRect middle = view->viewport()->rect().adjusted(2 * kGrid, kGrid, -2 * kGrid, -kGrid);
    painter.drawText(middle, Qt::AlignCenter | Qt::TextWordWrap, text);
}

bool isEnter(const QKeyEvent* event) {
    return (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat() &&
           !(event->modifiers() & ~Qt::KeypadModifier);
}

bool showCutText(QAbstractItemView* view, QHelpEvent* event) {
    const QModelIndex index = view->indexAt(event->pos());
    if (!index.isValid() || index.data(Qt::ToolTipRole).isValid()) return false;
    const QString text = index.data(Qt::DisplayRole).toString();
    const int room = view->visualRect(index).width() - 2 * kGrid;
    if (view->fontMetrics().horizontalAdvance(text) <= room) {
        QToolTip::hideText();
        return true;
    }
    QToolTip::showText(event->globalPos(), text, view->viewport());
    return true;
}

}  // namespace widgets
