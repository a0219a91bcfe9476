#include "widgets/edit_table.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QUndoStack>
#include <algorithm>
#include <numeric>

#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace widgets {

/// Opens the cells. Their texts go into the model as they are typed, their keys are the table's.
class EditTable::Delegate : public QStyledItemDelegate {
  public:
    explicit Delegate(EditTable* table) : QStyledItemDelegate(table), table_(table) {}
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        return table_->makeEditor(parent, {index.row(), table_->model_->fieldOf(index.column())});
    }
    void setEditorData(QWidget*, const QModelIndex&) const override {}
    void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}

  protected:
    bool eventFilter(QObject*, QEvent*) override { return false; }

  private:
    EditTable* table_;
};

EditTable::EditTable(QWidget* parent)
    : Table(parent), model_(new EditTableModel(this)), undo_(new QUndoStack(this)) {
    setSelectionMode(ContiguousSelection);
    setItemDelegate(new Delegate(this));
    setModel(model_);
}

EditTable::~EditTable() = default;

void EditTable::setContent(EditContent content) {
    if (isOpen()) closeCell(open_);
    open_ = {};
    undo_->clear();
    model_->reset(std::move(content));
    const int count = rowCount();
    setVerticalScrollBarPolicy(count > kRowsInSight ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    // The open cell takes the focus; the frame around it is no stop of its own.
    setFocusPolicy(count > 0 ? Qt::ClickFocus : Qt::StrongFocus);
    keepRowsInSight();
    if (count > 0) setCurrentIndex(model_->at({0, 0}));
    Q_EMIT changed();
}

void EditTable::focusCell(EditCell cell) {
    setCurrentIndex(model_->at(cell));
    QWidget* open = editor();
    if (open) open->setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(open)) edit->selectAll();
}

QString EditTable::rowName(int row) const {
    QStringList words;
    for (int column = 0; column < 2 && model_->fieldOf(column) < 0; ++column)
        words << model_->index(row, column).data().toString();
    return words.join(u' ');
}

QWidget* EditTable::editor() const {
    return isOpen() ? indexWidget(model_->at(open_)) : nullptr;
}

QWidget* EditTable::makeEditor(QWidget* parent, EditCell cell) {
    const domain::CellRules& rules = model_->rules(cell.field);
    QWidget* made = rules.choices.isEmpty() ? makeTextCell(parent, cell) : makeChoiceCell(parent, cell);
    made->setAccessibleName(rules.heading + u' ' + rowName(cell.row));
    made->installEventFilter(this);
    return made;
}

QWidget* EditTable::makeTextCell(QWidget* parent, EditCell cell) {
    auto* edit = new QLineEdit(model_->editable(cell), parent);
    edit->setObjectName(QStringLiteral("Text%1_%2").arg(cell.field + 1).arg(cell.row));
    edit->setFrame(false);
    edit->setTextMargins(0, 0, kGrid / 2, 0);  // where the cells without a cursor show their text
    edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    admitOnly(edit, model_->rules(cell.field).characters);
    // What comes by the clipboard goes through the table's paste, which judges it.
    edit->setContextMenuPolicy(Qt::NoContextMenu);
    edit->setAcceptDrops(false);
    connect(edit, &QLineEdit::textEdited, this, [this, edit] {
        typed_ = true;
        take(edit->text());
    });
    return edit;
}

QWidget* EditTable::makeChoiceCell(QWidget* parent, EditCell cell) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QStringLiteral("DataCombo%1_%2").arg(cell.field + 1).arg(cell.row));
    combo->addItems(model_->rules(cell.field).choices);
    // A stored word that the list does not know stays visible until another one is chosen.
    const QString held = model_->text(cell);
    if (!held.isEmpty() && combo->findText(held) < 0) combo->addItem(held);
    combo->setCurrentIndex(held.isEmpty() ? -1 : combo->findText(held));
    connect(combo, &QComboBox::currentTextChanged, this, &EditTable::take);
    return combo;
}

void EditTable::showText(const QString& text) {
    if (auto* edit = qobject_cast<QLineEdit*>(editor())) {
        edit->setText(text);
        edit->selectAll();
    } else if (auto* combo = qobject_cast<QComboBox*>(editor())) {
        if (!text.isEmpty() && combo->findText(text) < 0) combo->addItem(text);
        combo->setCurrentIndex(text.isEmpty() ? -1 : combo->findText(text));
    }
}

/// What the model holds, after it changed behind the open cell.
void EditTable::showOpenCell() {
    showText(offersChoices() ? model_->text(open_) : model_->editable(open_));
    markCell();
    Q_EMIT changed();
}

void EditTable::take(const QString& text) {
    if (!isOpen() || text == model_->text(open_)) return;
    undo_->push(new SetTexts(model_, {{open_, model_->text(open_), text}}, stay_));
    markCell();
    Q_EMIT changed();
}

void EditTable::enter(const QString& text) {
    if (!isOpen()) return;
    ++stay_;
    typed_ = true;
    take(text);
    focusCell(open_);
    showText(text);
}

/// The open cell says what the others say by their ground and their tool tips.
void EditTable::markCell() {
    QWidget* cell = editor();
    if (!cell) return;
    const bool tinted = model_->isChanged(open_);
    const QColor ground = changedColor();
    if (offersChoices()) {
        QPalette palette = window()->palette();
        if (tinted) palette.setColor(QPalette::Base, ground);
        cell->setPalette(palette);
    } else {  // a palette does not reach a field without a frame
        const QString sheet =
            tinted ? QStringLiteral("QLineEdit { background: %1; }").arg(ground.name()) : QString();
        if (cell->styleSheet() != sheet) cell->setStyleSheet(sheet);
    }
    cell->setToolTip(model_->further(open_));
}

void EditTable::openCell(EditCell cell) {
    open_ = cell;
    typed_ = false;
    ++stay_;
    openPersistentEditor(model_->at(cell));
    QWidget* made = editor();
    setTabOrder(this, made);
    markCell();
    if (cellOpened) cellOpened(made);
}

/// The toolkit deletes a closed cell later; until then it must not answer to the name of a new one.
void EditTable::closeCell(EditCell cell) {
    const QModelIndex index = model_->at(cell);
    if (QWidget* made = indexWidget(index)) made->setObjectName({});
    closePersistentEditor(index);
}

// The new cell has the focus before the old one goes, so that it never falls to another control.
void EditTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    const QWidget* focused = window()->focusWidget();
    const bool hadFocus = focused && (focused == this || isAncestorOf(focused));
    const QScopedValueRollback<bool> guard(moving_, true);
    Table::currentChanged(current, previous);
    if (!current.isValid()) return;
    const int field = model_->fieldOf(current.column());
    // Who points at what is not filled in means the row.
    const EditCell next{current.row(), field < 0 ? open_.field : field};
    if (next == open_) return;
    const EditCell left = open_;
    openCell(next);
    if (hadFocus) editor()->setFocus(Qt::OtherFocusReason);
    if (left.row >= 0) closeCell(left);
}

void EditTable::focusInEvent(QFocusEvent* event) {
    Table::focusInEvent(event);
    if (!moving_ && editor()) editor()->setFocus(Qt::OtherFocusReason);
}

bool EditTable::judgeCell() {
    if (!isOpen()) return true;
    const domain::CellRules& rules = model_->rules(open_.field);
    if (const auto refusal = rules.leave ? rules.leave(model_->text(open_)) : std::nullopt) {
        if (refusal->replacement) {
            take(*refusal->replacement);
            showText(*refusal->replacement);
            typed_ = true;
        }
        if (tell) tell(refusal->text, refusal->title, false);
        focusCell(open_);
        return false;
    }
    if (typed_ && rules.settle) {
        model_->setText(open_, rules.settle(model_->text(open_)));  // the same value: no step of undo
        Q_EMIT changed();
    }
    typed_ = false;
    if (!offersChoices()) showText(model_->editable(open_));
    return true;
}

// ---- Keys

bool EditTable::eventFilter(QObject* watched, QEvent* event) {
    if (watched != editor()) return Table::eventFilter(watched, event);
    if (event->type() == QEvent::Wheel && offersChoices()) {
        event->ignore();  // the wheel scrolls the table; it must not change a choice it passes over
        return true;
    }
    if (event->type() != QEvent::KeyPress) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    // The cell's own editing commands give way to the table's.
    if (key->matches(QKeySequence::Paste)) return paste(), true;
    if (key->matches(QKeySequence::Undo)) return undo(), true;
    if (key->matches(QKeySequence::Redo)) return redo(), true;
    if (key->matches(QKeySequence::Copy) && (offersChoices() || block().size() > 1)) return copy(), true;
    return moves(*key);
}

/// Escape is the form's. Everything else that reaches the table itself moves through its rows.
void EditTable::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        event->ignore();
    else
        Table::keyPressEvent(event);
}

bool EditTable::moves(const QKeyEvent& key) {
    const Qt::KeyboardModifiers held = key.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const int last = rowCount() - 1;
    const bool ends = held == Qt::ControlModifier;
    const bool extend = key.modifiers() & Qt::ShiftModifier;
    if (held != Qt::NoModifier && !ends) return false;
    switch (key.key()) {
        case Qt::Key_Home:
            return ends && goDown(0, extend);
        case Qt::Key_End:
            return ends && goDown(last, extend);
        case Qt::Key_Up:
            return !ends && goDown(open_.row - 1, extend);
        case Qt::Key_Down:
            return !ends && goDown(open_.row + 1, extend);
        case Qt::Key_PageUp:
            return !ends && goDown(std::max(0, open_.row - kRowsInSight), extend);
        case Qt::Key_PageDown:
            return !ends && goDown(std::min(last, open_.row + kRowsInSight), extend);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return !ends && stepOn(true, false);
        case Qt::Key_Tab:
            return !ends && stepOn(true, true);
        case Qt::Key_Backtab:
            return !ends && stepOn(false, true);
        default:
            return false;
    }
}

bool EditTable::goDown(int row, bool extend) {
    return goTo({row, open_.field}, extend);
}

/// True always: the key is dealt with, whether or not the cell may be left.
bool EditTable::goTo(EditCell cell, bool extend) {
    if (cell.row < 0 || cell.row >= rowCount() || cell == open_) return true;
    if (mayLeave && !mayLeave()) return true;
    const std::vector<int> chosen = block();  // by keys or by mouse: it grows from its far end
    const int anchor = !extend || chosen.empty()     ? cell.row
                       : chosen.front() == open_.row ? chosen.back()
                                                     : chosen.front();
    focusCell(cell);
    if (!extend) return true;
    selectionModel()->select(QItemSelection(model_->index(anchor, 0), model_->at(cell)),
                             QItemSelectionModel::ClearAndSelect);
    return true;
}

bool EditTable::stepOn(bool forward, bool alongRow) {
    EditCell next = open_;
    if (alongRow) next.field += forward ? 1 : -1;
    if (!alongRow || next.field < 0 || next.field >= model_->fields()) {
        next.row += forward ? 1 : -1;
        if (alongRow) next.field = forward ? 0 : model_->fields() - 1;
    }
    if (next.row >= 0 && next.row < rowCount()) return goTo(next);
    if (!mayLeave || mayLeave()) focusNextPrevChild(forward);
    return true;
}

// ---- Undo, copy and paste

void EditTable::undo() {
    if (!undo_->canUndo()) return;
    undo_->undo();
    showUndone();
}

void EditTable::redo() {
    if (!undo_->canRedo()) return;
    undo_->redo();
    showUndone();
}

/// Goes to the cell that changed last.
void EditTable::showUndone() {
    ++stay_;
    if (model_->touched() != open_) focusCell(model_->touched());
    showOpenCell();
    typed_ = true;
}

std::vector<int> EditTable::block() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows(0)) rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void EditTable::copy() {
    QStringList lines;
    for (const int row : block()) {
        QStringList texts;
        for (int field = 0; field < model_->fields(); ++field) texts << text(row, field);
        lines << texts.join(u'\t');
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void EditTable::copyWithHeads() {
    std::vector<int> rows = block();
    if (rows.size() < 2) {
        rows.resize(static_cast<std::size_t>(rowCount()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    const auto line = [this](auto&& cell) {
        QStringList cells;
        for (int column = 0; column < model_->columnCount(); ++column) cells << cell(column);
        return cells.join(u'\t');
    };
    QStringList lines{line([this](int column) {
        return model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    })};
    for (const int row : rows)
        lines << line([this, row](int column) {
            const int field = model_->fieldOf(column);
            return field < 0 ? model_->index(row, column).data().toString() : text(row, field);
        });
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void EditTable::paste() {
    if (!isOpen()) return;
    const QString clipboard = QGuiApplication::clipboard()->text();
    if (takesPaste(clipboard)) return;
    const QList<QStringList> lines = domain::pastedCells(clipboard);
    if (const auto fault = pasteFault(lines)) {
        if (tell)
            tell(*fault + QStringLiteral("\n貼り付けは行いません。"), QStringLiteral("貼り付けの確認"), true);
        return;
    }
    std::vector<Given> texts;
    for (int i = 0; i < lines.size(); ++i)
        for (int j = 0; j < lines[i].size(); ++j) {
            const EditCell cell{open_.row + i, open_.field + j};
            texts.push_back({cell, rules(cell.field).typed(lines[i][j])});
        }
    give(texts);
}

bool EditTable::takesPaste(const QString&) {
    return false;
}

void EditTable::give(const std::vector<Given>& texts) {
    std::vector<SetTexts::Change> changes;
    for (const auto& [cell, given] : texts)
        if (rules(cell.field).differ(model_->text(cell), given))
            changes.push_back({cell, model_->text(cell), given});
    if (changes.empty()) return;
    ++stay_;
    undo_->push(new SetTexts(model_, std::move(changes)));
    typed_ = false;
    showOpenCell();
}

std::optional<QString> EditTable::pasteFault(const QList<QStringList>& lines) const {
    const int room = rowCount() - open_.row;
    if (lines.size() > room)
        return QStringLiteral("貼り付ける値は%1行ありますが、この行から下は%2行です。")
            .arg(lines.size())
            .arg(room);
    const int fields = model_->fields() - open_.field;
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].size() > fields)
            return QStringLiteral("貼り付ける値は%1列ありますが、この列から右は%2列です。")
                .arg(lines[i].size())
                .arg(fields);
        for (int j = 0; j < lines[i].size(); ++j) {
            const QString why = rules(open_.field + j).fault(lines[i][j]);
            if (why.isEmpty()) continue;
            return QStringLiteral("%1行目の値（%2）を入力できません。\n%3")
                .arg(i + 1)
                .arg(rowName(open_.row + i), why);
        }
    }
    return {};
}

// ---- Size

void EditTable::updateGeometries() {
    Table::updateGeometries();
    constexpr int kLargeChange = 3;
    verticalScrollBar()->setPageStep(kLargeChange);
}

void EditTable::changeEvent(QEvent* event) {
    Table::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) keepRowsInSight();
}

void EditTable::keepRowsInSight() {
    setMinimumHeight(horizontalHeader()->sizeHint().height() +
                     kRowsInSight * verticalHeader()->defaultSectionSize() + 2 * frameWidth());
}

}  // namespace widgets
