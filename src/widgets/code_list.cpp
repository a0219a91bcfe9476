#include "widgets/code_list.h"

#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <utility>

#include "widgets/layout.h"
#include "widgets/theme.h"

namespace widgets {
namespace {

constexpr int CodeRole = Qt::UserRole;

/// Comfortable lines; no width of their own, so that the list never scrolls sideways but cuts the text.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {1, option.fontMetrics.height() + kGrid};
    }
};

}  // namespace

CodeList::CodeList(QWidget* parent) : QListView(parent), model_(new QStandardItemModel(this)) {
    setModel(model_);
    setItemDelegate(new LineDelegate(this));
    setUniformItemSizes(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    setTabKeyNavigation(false);
    connect(this, &QListView::doubleClicked, this, &CodeList::opened);
}

void CodeList::setItems(const std::vector<Item>& items) {
    const QScopedValueRollback<bool> quiet(silent_, true);
    pressed_ = false;
    model_->clear();
    QList<QStandardItem*> lines;
    for (const Item& item : items) {
        auto* line = new QStandardItem(item.text);
        line->setData(item.code, CodeRole);
        lines << line;
    }
    // All at once: the view lays out a long list one time only.
    model_->invisibleRootItem()->appendRows(lines);
    viewport()->update();
}

int CodeList::count() const {
    return model_->rowCount();
}

int CodeList::row() const {
    const QModelIndexList rows = selectionModel()->selectedIndexes();
    return rows.isEmpty() ? -1 : rows.first().row();
}

QString CodeList::boundText() const {
    const int chosenRow = row();
    return chosenRow < 0 ? QString() : model_->index(chosenRow, 0).data(CodeRole).toString();
}

QString CodeList::text() const {
    const int chosenRow = row();
    return chosenRow < 0 ? QString() : model_->index(chosenRow, 0).data().toString();
}

void CodeList::choose(int row) {
    const QModelIndex index = model_->index(row, 0);
    {
        const QScopedValueRollback<bool> quiet(silent_, true);
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    }
    if (index.isValid()) Q_EMIT chosen();
}

bool CodeList::chooseCode(const QString& code) {
    const QModelIndexList found =
        model_->match(model_->index(0, 0), CodeRole, code, 1, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found.isEmpty()) return false;
    choose(found.first().row());
    return true;
}

void CodeList::setPlaceholder(const QString& text) {
    placeholder_ = text;
    viewport()->update();
}

void CodeList::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    paintEmptyState(this, placeholder_);
}

bool CodeList::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip && showCutText(this, static_cast<QHelpEvent*>(event))) return true;
    return QListView::viewportEvent(event);
}

// The base class makes the first line current without choosing it, and then the down key would skip it.
void CodeList::focusInEvent(QFocusEvent* event) {
    QListView::focusInEvent(event);
    if (row() < 0) selectionModel()->clearCurrentIndex();
}

void CodeList::keyPressEvent(QKeyEvent* event) {
    pressed_ = false;
    if (isEnter(event) && row() >= 0 && isSignalConnected(QMetaMethod::fromSignal(&CodeList::opened))) {
        event->accept();
        return Q_EMIT opened();
    }
    QListView::keyPressEvent(event);
}

// Without a choice the base class goes to the first line, whichever key was pressed.
QModelIndex CodeList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const bool fromEnd = action == MoveEnd || action == MoveUp || action == MovePageUp;
    if (!currentIndex().isValid() && fromEnd && count() > 0) return model_->index(count() - 1, 0);
    return QListView::moveCursor(action, modifiers);
}

void CodeList::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
    QListView::mousePressEvent(event);
}

void CodeList::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) return;
    const bool onLine = indexAt(event->position().toPoint()).isValid();
    if (onLine && row() >= 0) Q_EMIT chosen();
}

void CodeList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (!silent_ && !pressed_ && !selected.isEmpty()) Q_EMIT chosen();
}

// A choice is replaced by another line and never dropped by the user: not by a click beside the lines, not by
// Ctrl+click.
QItemSelectionModel::SelectionFlags CodeList::selectionCommand(const QModelIndex& index,
                                                               const QEvent*) const {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

}  // namespace widgets
