#include "widgets/edit_table_model.h"

#include "widgets/theme.h"

namespace widgets {

void EditTableModel::reset(EditContent content) {
    beginResetModel();
    content_ = std::move(content);
    original_ = content_.texts;
    totals_.assign(content_.fields.size(), 0);
    touched_ = {};
    changed_ = 0;
    filled_ = 0;
    for (int row = 0; row < rowCount(); ++row) count(row, 1);
    endResetModel();
}

const domain::CellRules& EditTableModel::rules(int field) const {
    return content_.fields[static_cast<std::size_t>(field)];
}

void EditTableModel::setText(EditCell cell, const QString& text) {
    touched_ = cell;
    QString& held = content_.texts[place(cell)];
    if (held == text) return;
    count(cell.row, -1);
    held = text;
    count(cell.row, 1);
    Q_EMIT dataChanged(at(cell), at(cell));
}

/// What the row adds to the totals, or takes from them.
void EditTableModel::count(int row, int sign) {
    bool filled = false;
    bool changed = false;
    for (EditCell cell{row}; cell.field < fields(); ++cell.field) {
        const QString& held = text(cell);
        filled |= !held.isEmpty();
        changed |= isChanged(cell);
        const auto& number = rules(cell.field).number;
        if (number) totals_[static_cast<std::size_t>(cell.field)] += sign * number(held);
    }
    filled_ += filled ? sign : 0;
    changed_ += changed ? sign : 0;
}

QString EditTableModel::shown(EditCell cell) const {
    const auto& format = rules(cell.field).format;
    return format ? format(text(cell)) : text(cell);
}

QString EditTableModel::editable(EditCell cell) const {
    return rules(cell.field).whole(text(cell));
}

bool EditTableModel::isChanged(EditCell cell) const {
    return rules(cell.field).differ(text(cell), original_[place(cell)]);
}

QString EditTableModel::further(EditCell cell) const {
    QStringList lines;
    if (editable(cell) != shown(cell)) lines << QStringLiteral("値：") + text(cell);
    if (isChanged(cell)) {
        const QString& before = original_[place(cell)];
        lines << QStringLiteral("変更前：") + (before.isEmpty() ? QStringLiteral("空欄") : before);
    }
    return lines.join(u'\n');
}

QModelIndex EditTableModel::at(EditCell cell) const {
    return index(cell.row, heads() + cell.field);
}

int EditTableModel::fieldOf(int column) const {
    return column < heads() ? -1 : column - heads();
}

int EditTableModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid() || fields() == 0) return 0;
    return static_cast<int>(content_.texts.size() / fields());
}

int EditTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : heads() + fields();
}

QVariant EditTableModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::TextAlignmentRole) return alignment(index.column());
    if (!index.isValid()) return {};
    const EditCell cell{index.row(), fieldOf(index.column())};
    const bool head = cell.field < 0;
    if (role == Qt::BackgroundRole && !head && isChanged(cell)) return changedColor();
    if (role == Qt::ToolTipRole && !head) return further(cell);
    if (role != Qt::DisplayRole) return {};
    if (head) return content_.headText(index.row(), index.column());
    const QString text = shown(cell);
    return editable(cell) != text ? QStringLiteral("約 ") + text : text;
}

QVariant EditTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    if (role == Qt::TextAlignmentRole) return alignment(section);
    if (role != Qt::DisplayRole) return {};
    const int field = fieldOf(section);
    return field < 0 ? content_.heads[static_cast<std::size_t>(section)].heading : rules(field).heading;
}

int EditTableModel::alignment(int column) const {
    if (column < 0 || column >= columnCount()) return int(Qt::AlignLeft | Qt::AlignVCenter);
    const int field = fieldOf(column);
    const bool right =
        field < 0 ? content_.heads[static_cast<std::size_t>(column)].right : rules(field).choices.isEmpty();
    return int((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

// ---- Undo

SetTexts::SetTexts(EditTableModel* model, std::vector<Change> changes, int stay)
    : model_(model), changes_(std::move(changes)), stay_(stay) {}

void SetTexts::undo() {
    for (auto change = changes_.rbegin(); change != changes_.rend(); ++change)
        model_->setText(change->cell, change->before);
}

void SetTexts::redo() {
    for (const Change& change : changes_) model_->setText(change.cell, change.after);
}

bool SetTexts::mergeWith(const QUndoCommand* further) {
    const auto* other = static_cast<const SetTexts*>(further);
    if (other->stay_ != stay_) return false;
    Change& own = changes_.front();
    own.after = other->changes_.front().after;
    setObsolete(own.after == own.before);
    return true;
}

}  // namespace widgets
