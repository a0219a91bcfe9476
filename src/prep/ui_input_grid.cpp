#include "prep/ui_input_grid.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QUndoStack>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>

#include "forms/box.h"
#include "forms/global_record.h"
#include "prep/frmSHaritsuke.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {

/// Opens the cells. Their texts go into the model as they are typed, their keys are the grid's.
class InputGrid::Delegate : public QStyledItemDelegate {
  public:
    explicit Delegate(InputGrid* grid) : QStyledItemDelegate(grid), grid_(grid) {}
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        return grid_->makeEditor(parent, index.row());
    }
    void setEditorData(QWidget*, const QModelIndex&) const override {}
    void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}

  protected:
    bool eventFilter(QObject*, QEvent*) override { return false; }

  private:
    InputGrid* grid_;
};

// ---- Grid ------------------------------------------------------------------------------------------------

InputGrid::InputGrid(QWidget* parent)
    : Table(parent), model_(new InputModel(this)), undo_(new QUndoStack(this)) {
    setSelectionMode(ContiguousSelection);
    setObjectName(QStringLiteral("Picture1"));
    verticalScrollBar()->setObjectName(QStringLiteral("VScroll1"));
    setItemDelegate(new Delegate(this));
    setGivingWay({Syozoku, Yakusyoku, Shimei});
    setModel(model_);
    setContent({}, {});
}

InputGrid::~InputGrid() = default;

void InputGrid::setContent(CellRules rules, std::vector<InputRow> rows) {
    if (open_ >= 0) closeCell(open_);
    open_ = -1;
    undo_->clear();
    model_->reset(std::move(rules), std::move(rows));
    const int count = model_->rowCount();
    setVerticalScrollBarPolicy(count > kRowsInSight ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    // The open cell takes the focus; the frame around it is no stop of its own.
    setFocusPolicy(count > 0 ? Qt::ClickFocus : Qt::StrongFocus);
    keepRowsInSight();
    if (count > 0) setCurrentIndex(model_->index(0, Value));
    Q_EMIT changed();
}

const std::vector<InputRow>& InputGrid::rows() const {
    return model_->rows();
}

const CellRules& InputGrid::rules() const {
    return model_->rules();
}

int InputGrid::changedRows() const {
    return model_->changed();
}

int InputGrid::filledRows() const {
    return model_->filled();
}

double InputGrid::total() const {
    return model_->total();
}

void InputGrid::focusRow(int row) {
    setCurrentIndex(model_->index(row, Value));
    if (QWidget* cell = editor()) cell->setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(editor())) edit->selectAll();
}

QWidget* InputGrid::editor() const {
    return open_ < 0 ? nullptr : indexWidget(model_->index(open_, Value));
}

QWidget* InputGrid::makeEditor(QWidget* parent, int row) {
    QWidget* made =
        model_->rules().choices.isEmpty() ? makeTextCell(parent, row) : makeChoiceCell(parent, row);
    made->setAccessibleName(model_->rules().heading + u' ' +
                            model_->rows()[static_cast<std::size_t>(row)].shimei);
    made->installEventFilter(this);
    return made;
}

QWidget* InputGrid::makeTextCell(QWidget* parent, int row) {
    auto* edit = new QLineEdit(model_->editable(row), parent);
    edit->setObjectName(QStringLiteral("Text1_%1").arg(row));
    edit->setFrame(false);
    edit->setTextMargins(0, 0, widgets::kGrid / 2, 0);  // where the cells without a cursor show their text
    edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    widgets::admitOnly(edit, model_->rules().characters);
    // What comes by the clipboard goes through the grid's paste, which judges it.
    edit->setContextMenuPolicy(Qt::NoContextMenu);
    edit->setAcceptDrops(false);
    connect(edit, &QLineEdit::textEdited, this, [this, edit] {
        typed_ = true;
        take(edit->text());
    });
    return edit;
}

QWidget* InputGrid::makeChoiceCell(QWidget* parent, int row) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QStringLiteral("DataCombo1_%1").arg(row));
    combo->addItems(model_->rules().choices);
    // A stored word that the list does not know stays visible until another one is chosen.
    const QString held = model_->text(row);
    if (!held.isEmpty() && combo->findText(held) < 0) combo->addItem(held);
    combo->setCurrentIndex(held.isEmpty() ? -1 : combo->findText(held));
    connect(combo, &QComboBox::currentTextChanged, this, &InputGrid::take);
    return combo;
}

void InputGrid::showText(const QString& text) {
    if (auto* edit = qobject_cast<QLineEdit*>(editor())) {
        edit->setText(text);
        edit->selectAll();
    } else if (auto* combo = qobject_cast<QComboBox*>(editor())) {
        if (!text.isEmpty() && combo->findText(text) < 0) combo->addItem(text);
        combo->setCurrentIndex(text.isEmpty() ? -1 : combo->findText(text));
    }
}

void InputGrid::take(const QString& text) {
    if (open_ < 0 || text == model_->text(open_)) return;
    undo_->push(new SetTexts(model_, {{open_, model_->text(open_), text}}, stay_));
    markCell();
    Q_EMIT changed();
}

void InputGrid::enter(const QString& text) {
    if (open_ < 0) return;
    ++stay_;
    typed_ = true;
    take(text);
    focusRow(open_);
    showText(text);
}

/// The open cell says what the others say by their ground and their tool tips.
void InputGrid::markCell() {
    QWidget* cell = editor();
    if (!cell) return;
    const bool tinted = model_->isChanged(open_);
    const QColor ground = widgets::changedColor();
    if (!model_->rules().choices.isEmpty()) {
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

void InputGrid::openCell(int row) {
    open_ = row;
    typed_ = false;
    ++stay_;
    openPersistentEditor(model_->index(row, Value));
    QWidget* cell = editor();
    setTabOrder(this, cell);
    markCell();
    if (cellOpened) cellOpened(cell);
}

/// The toolkit deletes a closed cell later; until then it must not answer to the name of a new one.
void InputGrid::closeCell(int row) {
    const QModelIndex index = model_->index(row, Value);
    if (QWidget* cell = indexWidget(index)) cell->setObjectName({});
    closePersistentEditor(index);
}

// The new cell has the focus before the old one goes, so that it never falls to another control.
void InputGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    const QWidget* focused = window()->focusWidget();
    const bool hadFocus = focused && (focused == this || isAncestorOf(focused));
    const QScopedValueRollback<bool> guard(moving_, true);
    Table::currentChanged(current, previous);
    if (!current.isValid() || current.row() == open_) return;
    const int left = open_;
    openCell(current.row());
    if (hadFocus) editor()->setFocus(Qt::OtherFocusReason);
    if (left >= 0) closeCell(left);
}

void InputGrid::focusInEvent(QFocusEvent* event) {
    Table::focusInEvent(event);
    if (!moving_ && editor()) editor()->setFocus(Qt::OtherFocusReason);
}

bool InputGrid::judgeCell() {
    if (open_ < 0) return true;
    const CellRules& rules = model_->rules();
    if (rules.leave) {
        if (const auto refusal = rules.leave(model_->text(open_))) {
            if (refusal->replacement) {
                take(*refusal->replacement);
                showText(*refusal->replacement);
                typed_ = true;
            }
            forms::tell(window(), refusal->text, refusal->title);
            focusRow(open_);
            return false;
        }
    }
    if (typed_ && rules.settle) {
        model_->setText(open_, rules.settle(model_->text(open_)));  // the same value: no step of undo
        Q_EMIT changed();
    }
    typed_ = false;
    if (rules.choices.isEmpty()) showText(model_->editable(open_));
    return true;
}

// ---- Keys ------------------------------------------------------------------------------------------------

bool InputGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched != editor()) return Table::eventFilter(watched, event);
    const bool choice = !model_->rules().choices.isEmpty();
    if (event->type() == QEvent::Wheel && choice) {
        event->ignore();  // the wheel scrolls the grid; it must not change a choice it passes over
        return true;
    }
    if (event->type() != QEvent::KeyPress) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    // The cell's own editing commands give way to the grid's.
    if (key->matches(QKeySequence::Paste)) return paste(), true;
    if (key->matches(QKeySequence::Undo)) return undo(), true;
    if (key->matches(QKeySequence::Redo)) return redo(), true;
    if (key->matches(QKeySequence::Copy) && (choice || block().size() > 1)) return copy(), true;
    return moves(*key);
}

/// Escape is the form's. Everything else that reaches the grid itself moves through its rows.
void InputGrid::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        event->ignore();
    else
        Table::keyPressEvent(event);
}

bool InputGrid::moves(const QKeyEvent& key) {
    const Qt::KeyboardModifiers held = key.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const int last = model_->rowCount() - 1;
    const bool ends = held == Qt::ControlModifier;
    const bool extend = key.modifiers() & Qt::ShiftModifier;
    if (held != Qt::NoModifier && !ends) return false;
    switch (key.key()) {
        case Qt::Key_Home:
            return ends && goTo(0, extend);
        case Qt::Key_End:
            return ends && goTo(last, extend);
        case Qt::Key_Up:
            return !ends && goTo(open_ - 1, extend);
        case Qt::Key_Down:
            return !ends && goTo(open_ + 1, extend);
        case Qt::Key_PageUp:
            return !ends && goTo(std::max(0, open_ - kRowsInSight), extend);
        case Qt::Key_PageDown:
            return !ends && goTo(std::min(last, open_ + kRowsInSight), extend);
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Tab:
            return !ends && stepOn(true);
        case Qt::Key_Backtab:
            return !ends && stepOn(false);
        default:
            return false;
    }
}

/// True always: the key is dealt with, whether or not the cell may be left.
bool InputGrid::goTo(int row, bool extend) {
    if (row < 0 || row >= model_->rowCount() || row == open_) return true;
    if (mayLeave && !mayLeave()) return true;
    const std::vector<int> chosen = block();  // by keys or by mouse: it grows from its far end
    const int anchor = !extend || chosen.empty() ? row
                       : chosen.front() == open_ ? chosen.back()
                                                 : chosen.front();
    focusRow(row);
    if (!extend) return true;
    selectionModel()->select(QItemSelection(model_->index(anchor, 0), model_->index(row, Value)),
                             QItemSelectionModel::ClearAndSelect);
    return true;
}

bool InputGrid::stepOn(bool forward) {
    const int row = open_ + (forward ? 1 : -1);
    if (row >= 0 && row < model_->rowCount()) return goTo(row);
    if (!mayLeave || mayLeave()) focusNextPrevChild(forward);
    return true;
}

// ---- Undo, copy and paste --------------------------------------------------------------------------------

void InputGrid::undo() {
    if (!undo_->canUndo()) return;
    undo_->undo();
    showUndone();
}

void InputGrid::redo() {
    if (!undo_->canRedo()) return;
    undo_->redo();
    showUndone();
}

/// Goes to the row that changed last.
void InputGrid::showUndone() {
    ++stay_;
    if (model_->touched() != open_) focusRow(model_->touched());
    showText(model_->rules().choices.isEmpty() ? model_->editable(open_) : model_->text(open_));
    typed_ = true;
    markCell();
    Q_EMIT changed();
}

std::vector<int> InputGrid::block() const {
    std::vector<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows(Code)) rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void InputGrid::copy() {
    QStringList values;
    for (const int row : block()) values << model_->text(row);
    QGuiApplication::clipboard()->setText(values.join(u'\n'));
}

void InputGrid::copyWithHeads() {
    std::vector<int> rows = block();
    if (rows.size() < 2) {
        rows.resize(static_cast<std::size_t>(model_->rowCount()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    const auto line = [this](auto&& cell) {
        QStringList cells;
        for (int column = 0; column <= Value; ++column) cells << cell(column);
        return cells.join(u'\t');
    };
    QStringList lines{line([this](int column) {
        return model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    })};
    for (const int row : rows)
        lines << line([this, row](int column) {
            return column == Value ? model_->text(row) : model_->index(row, column).data().toString();
        });
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void InputGrid::paste() {
    if (open_ < 0) return;
    const QString text = QGuiApplication::clipboard()->text();
    if (const auto people = readPastedPeople(text, model_->rows(), model_->rules()))
        pasteByCode(*people);
    else
        pasteDown(pastedColumn(text));
}

void InputGrid::pasteByCode(const std::vector<PastedPerson>& people) {
    frmSHaritsuke preview(people, model_->rules(), window());
    if (preview.exec() != QDialog::Accepted) return;
    std::vector<SetTexts::Change> changes;
    for (const PastedPerson& person : people)
        if (person.fate == PastedPerson::Fate::Changes)
            changes.push_back({person.row, model_->text(person.row), person.text});
    give(std::move(changes));
}

void InputGrid::pasteDown(const QStringList& column) {
    if (const auto fault = pasteFault(column)) {
        forms::tell(window(), *fault + QStringLiteral("\n貼り付けは行いません。"),
                    QStringLiteral("貼り付けの確認"), forms::BoxIcon::Warning);
        return;
    }
    std::vector<SetTexts::Change> changes;
    for (int i = 0; i < column.size(); ++i) {
        const QString text = model_->rules().typed(column[i]);
        if (model_->rules().differ(model_->text(open_ + i), text))
            changes.push_back({open_ + i, model_->text(open_ + i), text});
    }
    give(std::move(changes));
}

void InputGrid::give(std::vector<SetTexts::Change> changes) {
    if (changes.empty()) return;
    ++stay_;
    undo_->push(new SetTexts(model_, std::move(changes)));
    typed_ = false;
    showText(model_->rules().choices.isEmpty() ? model_->editable(open_) : model_->text(open_));
    markCell();
    Q_EMIT changed();
}

std::optional<QString> InputGrid::pasteFault(const QStringList& texts) const {
    const int room = model_->rowCount() - open_;
    if (texts.size() > room)
        return QStringLiteral("貼り付ける値は%1行ありますが、この行から下は%2行です。")
            .arg(texts.size())
            .arg(room);
    const CellRules& rules = model_->rules();
    for (int i = 0; i < texts.size(); ++i) {
        const QString why = rules.fault(texts[i]);
        if (why.isEmpty()) continue;
        const InputRow& row = model_->rows()[static_cast<std::size_t>(open_ + i)];
        return QStringLiteral("%1行目の値（%2 %3）を入力できません。\n%4")
            .arg(i + 1)
            .arg(row.syainCode, row.shimei, why);
    }
    return {};
}

// ---- Size ------------------------------------------------------------------------------------------------

void InputGrid::updateGeometries() {
    Table::updateGeometries();
    constexpr int kLargeChange = 3;
    verticalScrollBar()->setPageStep(kLargeChange);
}

void InputGrid::changeEvent(QEvent* event) {
    Table::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) keepRowsInSight();
}

void InputGrid::keepRowsInSight() {
    setMinimumHeight(horizontalHeader()->sizeHint().height() +
                     kRowsInSight * verticalHeader()->defaultSectionSize() + 2 * frameWidth());
}

// ---- The method in work ----------------------------------------------------------------------------------

QString methodName(const forms::GlobalRecord& global) {
    return methodTable(global) == RunTable::SougakuHaibun ? QStringLiteral("総額配分")
                                                          : QStringLiteral("個人別計算");
}

RunTable methodTable(const forms::GlobalRecord& global) {
    return global.santei_houshiki == QStringLiteral("2") ? RunTable::SougakuHaibun : RunTable::KojinBetsu;
}

// ---- Form ------------------------------------------------------------------------------------------------

InputGridForm::InputGridForm(const QString& name, forms::House& house, QWidget* parent)
    : Form(name, QString(), parent),
      house_(house),
      grid_(new InputGrid(this)),
      label8_(make<QLabel>(QStringLiteral("Label8"))),
      label5_(make<QLabel>(QStringLiteral("Label5"))),
      total_(make<QLabel>(QStringLiteral("LabelTotal"))),
      panels_(new QVBoxLayout) {
    command1_ = make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("更新(&U)"));
    command2_ = make<QPushButton>(QStringLiteral("Command2"), QStringLiteral("キャンセル(&C)"));
    command3_ = make<QPushButton>(QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    widgets::setPrimary(command1_);
    setCancelButton(command2_);
    command1_->setEnabled(false);
    grid_->setPlaceholder(QStringLiteral("入力する社員はいません。"));
    grid_->mayLeave = [this] { return passesLeaveCheck(); };
    grid_->cellOpened = [this](QWidget* cell) {
        if (auto* edit = qobject_cast<QLineEdit*>(cell))
            validateOnLeave(edit, [this] { return grid_->judgeCell(); }, {command2_, command3_});
    };
    connect(grid_, &InputGrid::changed, this, &InputGridForm::showTotal);
    connect(command1_, &QPushButton::clicked, this, &InputGridForm::Command1_Click);
    connect(command2_, &QPushButton::clicked, this, &InputGridForm::reject);
    connect(command3_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    build();
}

void InputGridForm::build() {
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(label8_, label5_));
    column->addWidget(grid_, 1);
    total_->setAlignment(Qt::AlignRight);
    column->addWidget(total_);
    column->addLayout(panels_);
    column->addLayout(widgets::buttonRow({command3_, makeEditMenu()}, {command2_, command1_}));
    setMinimumWidth(widgets::twips(10500));
}

QPushButton* InputGridForm::makeEditMenu() {
    auto* button = make<QPushButton>(QStringLiteral("cmdHensyu"), QStringLiteral("編集(&E)"));
    auto* menu = new QMenu(button);
    const auto add = [&](const QString& text, std::initializer_list<QKeySequence> keys, auto work) {
        QAction* action = menu->addAction(text, this, work);
        action->setShortcuts(keys);
        addAction(action);
        return action;
    };
    QUndoStack* stack = grid_->undoStack();
    QAction* undo = add(QStringLiteral("元に戻す(&U)"), {Qt::CTRL | Qt::Key_Z}, [this] { grid_->undo(); });
    QAction* redo = add(QStringLiteral("やり直す(&R)"),
                        {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}, [this] { grid_->redo(); });
    connect(stack, &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
    connect(stack, &QUndoStack::canRedoChanged, redo, &QAction::setEnabled);
    undo->setEnabled(false);
    redo->setEnabled(false);
    menu->addSeparator();
    add(QStringLiteral("選んだ行の値をコピー(&C)"), {Qt::CTRL | Qt::Key_C}, [this] { grid_->copy(); });
    add(QStringLiteral("見出しと社員も付けてコピー(&H)"), {Qt::CTRL | Qt::SHIFT | Qt::Key_C},
        [this] { grid_->copyWithHeads(); });
    add(QStringLiteral("貼り付け(&P)"), {Qt::CTRL | Qt::Key_V}, [this] { grid_->paste(); });
    button->setMenu(menu);
    return button;
}

void InputGridForm::addPanel(QWidget* panel) {
    panels_->addWidget(panel);
}

void InputGridForm::load(CellRules rules, std::vector<InputRow> rows) {
    const auto count = rows.size();
    label5_->setText(rules.hint);
    label8_->setText(house_.global.haibun_kubun_mei + u'／' + house_.global.haibun_kijun_mei +
                     QStringLiteral("  %1人").arg(count));
    command1_->setEnabled(count > 0);
    grid_->setAccessibleName(windowTitle());
    grid_->setContent(std::move(rules), std::move(rows));
    if (count > 0) grid_->focusRow(0);
}

store::Connection& InputGridForm::cn() const {
    return *house_.global.cn_main;
}

void InputGridForm::showTotal() {
    const CellRules& rules = grid_->rules();
    QStringList parts;
    if (rules.number && rules.settle)
        parts << QStringLiteral("合計 %1円")
                     .arg(store::formatGrouped(store::Money::fromDouble(grid_->total())));
    else if (rules.number)
        parts << QStringLiteral("合計 %1").arg(store::formatCoefficient(grid_->total()));
    parts << QStringLiteral("入力 %1人／%2人").arg(grid_->filledRows()).arg(grid_->rows().size())
          << QStringLiteral("変更 %1人").arg(grid_->changedRows());
    total_->setText(parts.join(QStringLiteral("　")));
}

bool InputGridForm::refuses() {
    const auto& save = grid_->rules().save;
    for (std::size_t i = 0; save && i < rows().size(); ++i) {
        const auto refusal = save(rows()[i].text);
        if (!refusal) continue;
        grid_->focusRow(static_cast<int>(i));
        forms::tell(this, refusal->text, refusal->title);
        return true;
    }
    return false;
}

void InputGridForm::Command1_Click() {
    if (refuses()) return;
    std::optional<QString> difference;
    const bool worked = forms::guarded(this, [&] {
        setHourglass();
        store::Work work(cn(), windowTitle());
        difference = store();
        if (difference)
            work.rollback();
        else
            work.commit();
    });
    if (worked && difference)
        forms::tell(this, *difference, QStringLiteral("社員の不一致"), forms::BoxIcon::Warning);
    if (worked && !difference) accept();
    saveFailed_ |= !worked;
}

void InputGridForm::reject() {
    const int changes = grid_->changedRows();
    if (changes > 0 &&
        !forms::confirmLoss(
            this, QStringLiteral("更新していない入力が%1人分あります。更新せずに閉じますか？").arg(changes),
            QStringLiteral("終了の確認"), QStringLiteral("更新せずに閉じる(&D)"),
            QStringLiteral("入力に戻る(&B)")))
        return;
    done(saveFailed_ ? SaveFailed : Rejected);
}

}  // namespace prep
