#include "forms/record_rows.h"

namespace forms {

void RecordRows::setColumns(QStringList headings, Text text) {
    beginResetModel();
    headings_ = std::move(headings);
    text_ = std::move(text);
    endResetModel();
}

void RecordRows::take(store::Recordset rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void RecordRows::refresh() {
    if (count() > 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(count() - 1, columnCount() - 1));
}

int RecordRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

int RecordRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant RecordRows::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    if (role == Qt::DisplayRole) return text_(index.row(), index.column());
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

QVariant RecordRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole) return headings_[section];
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

}  // namespace forms
