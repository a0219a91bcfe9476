#include "widgets/table.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QStringList>
#include <algorithm>
#include <set>

#include "widgets/layout.h"
#include "widgets/theme.h"

namespace widgets {

Table::Table(QWidget* parent) : QTableView(parent) {
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setResizeContentsPrecision(0);  // rows in sight only
    setRowHeight();
    connect(this, &QTableView::doubleClicked, this, &Table::opened);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int, int before, int now) {
        const bool hides = before == 0 || now == 0;
        if (!fitting_ && !hides && isVisible()) autoFit_ = false;
    });
}

void Table::setPlaceholder(const QString& text) {
    placeholder_ = text;
    viewport()->update();
}

void Table::fitColumns() {
    if (!model()) return;
    const QScopedValueRollback<bool> guard(fitting_, true);
    const int widest = fontMetrics().averageCharWidth() * 48;
    resizeColumnsToContents();
    for (int column = 0; column < model()->columnCount(); ++column)
        if (!isColumnHidden(column)) setColumnWidth(column, std::min(widest, columnWidth(column) + kGrid));
    const int taken = horizontalHeader()->length();
    const int room = viewport()->width();
    if (taken >= room) return giveWay(taken - room);
    if (taken <= 0) return;
    for (int column = 0; column < model()->columnCount(); ++column)
        if (!isColumnHidden(column)) setColumnWidth(column, columnWidth(column) * room / taken);
}

void Table::giveWay(int lack) {
    const int least = fontMetrics().averageCharWidth() * 8;
    for (const int column : givingWay_) {
        const int less = std::clamp(columnWidth(column) - least, 0, lack);
        setColumnWidth(column, columnWidth(column) - less);
        lack -= less;
    }
}

void Table::setModel(QAbstractItemModel* newModel) {
    disconnect(resets_);
    QTableView::setModel(newModel);
    if (newModel) resets_ = connect(newModel, &QAbstractItemModel::modelReset, this, [this] { refit(); });
    refit();
}

// A hidden table waits for its show: before that no row is in sight.
void Table::refit() {
    if (isVisible() && autoFit_) fitColumns();
    viewport()->update();
}

void Table::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    paintEmptyState(this, placeholder_);
}

bool Table::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip && showCutText(this, static_cast<QHelpEvent*>(event))) return true;
    return QTableView::viewportEvent(event);
}

void Table::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy) && selectionModel()) {
        QGuiApplication::clipboard()->setText(selectedText());
        event->accept();
        return;
    }
    if (isEnter(event) && currentIndex().isValid() &&
        isSignalConnected(QMetaMethod::fromSignal(&Table::opened))) {
        event->accept();
        return Q_EMIT opened();
    }
    QTableView::keyPressEvent(event);
}

void Table::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    refit();
}

void Table::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    refit();
}

void Table::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) setRowHeight();
}

void Table::setRowHeight() {
    const int height = fontMetrics().height() + kGrid;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

QString Table::selectedText() const {
    std::set<int> rows;
    std::set<int> places;  // columns in the order in which they stand on screen
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) rows.insert(row);
        for (int column = range.left(); column <= range.right(); ++column)
            if (!isColumnHidden(column)) places.insert(horizontalHeader()->visualIndex(column));
    }
    static const QRegularExpression separator(QStringLiteral("[\\t\\r\\n]+"));
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (const int place : places)
            cells << model()
                         ->index(row, horizontalHeader()->logicalIndex(place))
                         .data()
                         .toString()
                         .replace(separator, QStringLiteral(" "));
        lines << cells.join(u'\t');
    }
    return lines.join(u'\n');
}

RowsModel::RowsModel(std::vector<Column> columns, QObject* parent)
    : QAbstractTableModel(parent), columns_(std::move(columns)) {}

void RowsModel::setRows(int count, std::function<QString(int, int)> text,
                        std::function<QVariant(int, int)> sortKey) {
    beginResetModel();
    count_ = count;
    text_ = std::move(text);
    sortKey_ = std::move(sortKey);
    endResetModel();
}

void RowsModel::refresh() {
    if (count_ == 0 || columns_.empty()) return;
    Q_EMIT dataChanged(index(0, 0), index(count_ - 1, columnCount() - 1));
}

int RowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

int RowsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const int row = index.row();
    const int column = index.column();
    if (role == Qt::DisplayRole) return text_(row, column);
    if (role == SortRole) return sortKey_ ? sortKey_(row, column) : QVariant(text_(row, column));
    if (role == Qt::TextAlignmentRole)
        return int((columns_[static_cast<std::size_t>(column)].right ? Qt::AlignRight : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    return {};
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const Column& column = columns_[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) return column.heading;
    if (role == Qt::TextAlignmentRole)
        return int((column.right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

}  // namespace widgets
