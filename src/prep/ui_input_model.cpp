#include "prep/ui_input_model.h"

#include "prep/ui_input_grid.h"
#include "widgets/theme.h"

namespace prep {

void InputModel::reset(CellRules rules, std::vector<InputRow> rows) {
    beginResetModel();
    rules_ = std::move(rules);
    rows_ = std::move(rows);
    original_.clear();
    total_ = 0;
    changed_ = 0;
    filled_ = 0;
    for (const InputRow& row : rows_) {
        original_ << row.text;
        count(row.text, 1);
    }
    endResetModel();
}

void InputModel::setText(int row, const QString& text) {
    touched_ = row;
    QString& held = rows_[static_cast<std::size_t>(row)].text;
    if (held == text) return;
    changed_ -= isChanged(row);
    count(held, -1);
    held = text;
    count(held, 1);
    changed_ += isChanged(row);
    Q_EMIT dataChanged(index(row, InputGrid::Value), index(row, InputGrid::Value));
}

QString InputModel::shown(int row) const {
    return rules_.format ? rules_.format(text(row)) : text(row);
}

QString InputModel::editable(int row) const {
    return rules_.whole(text(row));
}

bool InputModel::roundsOff(int row) const {
    return rules_.whole(text(row)) != shown(row);
}

bool InputModel::isChanged(int row) const {
    return rules_.differ(text(row), original_[row]);
}

QString InputModel::further(int row) const {
    QStringList lines;
    if (roundsOff(row)) lines << QStringLiteral("値：") + text(row);
    if (isChanged(row))
        lines << QStringLiteral("変更前：") +
                     (original_[row].isEmpty() ? QStringLiteral("空欄") : original_[row]);
    return lines.join(u'\n');
}

int InputModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int InputModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : InputGrid::Value + 1;
}

QVariant InputModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::TextAlignmentRole) return alignment(index.column());
    if (!index.isValid()) return {};
    const bool value = index.column() == InputGrid::Value;
    if (role == Qt::BackgroundRole && value && isChanged(index.row())) return widgets::changedColor();
    if (role == Qt::ToolTipRole && value) return further(index.row());
    if (role != Qt::DisplayRole) return {};
    const InputRow& row = rows_[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
        case InputGrid::Code:
            return row.syainCode;
        case InputGrid::Shimei:
            return row.shimei;
        case InputGrid::Syozoku:
            return row.syozoku;
        case InputGrid::Yakusyoku:
            return row.yakusyoku;
        default:
            return (roundsOff(index.row()) ? QStringLiteral("約 ") : QString()) + shown(index.row());
    }
}

QVariant InputModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return alignment(section);
    const QStringList headings{QStringLiteral("社員コード"), QStringLiteral("氏名"), QStringLiteral("所属大"),
                               QStringLiteral("役職"), rules_.heading};
    return role == Qt::DisplayRole ? headings.value(section) : QVariant();
}

int InputModel::alignment(int column) const {
    const bool right = column == InputGrid::Value && rules_.choices.isEmpty();
    return int((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

void InputModel::count(const QString& text, int sign) {
    filled_ += text.isEmpty() ? 0 : sign;
    if (rules_.number) total_ += sign * rules_.number(text);
}

// ---- Undo ------------------------------------------------------------------------------------------------

SetTexts::SetTexts(InputModel* model, std::vector<Change> changes, int stay)
    : model_(model), changes_(std::move(changes)), stay_(stay) {}

void SetTexts::undo() {
    for (auto change = changes_.rbegin(); change != changes_.rend(); ++change)
        model_->setText(change->row, change->before);
}

void SetTexts::redo() {
    for (const Change& change : changes_) model_->setText(change.row, change.after);
}

bool SetTexts::mergeWith(const QUndoCommand* further) {
    const auto* other = static_cast<const SetTexts*>(further);
    if (other->stay_ != stay_) return false;
    Change& own = changes_.front();
    own.after = other->changes_.front().after;
    setObsolete(own.after == own.before);
    return true;
}

}  // namespace prep
