#include "prep/ui_input_grid.h"

#include <QAbstractTableModel>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <array>

#include "shell/global_record.h"
#include "shell/ui_box.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {

// ---- Rows ------------------------------------------------------------------------------------------------

/// The rows and what they come to. Texts are formatted for the cells in sight only.
class InputModel : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void reset(CellRules newRules, std::vector<InputRow> newRows) {
        beginResetModel();
        rules = std::move(newRules);
        rows = std::move(newRows);
        original.clear();
        total = 0;
        changed = 0;
        filled = 0;
        for (const InputRow& row : rows) {
            original << row.text;
            count(row.text, 1);
        }
        endResetModel();
    }
    void setText(int row, const QString& text) {
        QString& held = rows[static_cast<std::size_t>(row)].text;
        if (held == text) return;
        changed -= differs(held, original[row]);
        count(held, -1);
        held = text;
        count(held, 1);
        changed += differs(held, original[row]);
        Q_EMIT dataChanged(index(row, InputGrid::Value), index(row, InputGrid::Value));
    }
    const QString& text(int row) const { return rows[static_cast<std::size_t>(row)].text; }
    QString shown(int row) const { return rules.format ? rules.format(text(row)) : text(row); }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : InputGrid::Value + 1;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::TextAlignmentRole) return alignment(index.column());
        if (!index.isValid() || role != Qt::DisplayRole) return {};
        const InputRow& row = rows[static_cast<std::size_t>(index.row())];
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
                return shown(index.row());
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal) return {};
        if (role == Qt::TextAlignmentRole) return alignment(section);
        const QStringList headings{QStringLiteral("社員コード"), QStringLiteral("氏名"),
                                   QStringLiteral("所属大"), QStringLiteral("役職"), rules.heading};
        return role == Qt::DisplayRole ? headings.value(section) : QVariant();
    }

    CellRules rules;
    std::vector<InputRow> rows;
    QStringList original;
    double total = 0;
    int changed = 0;
    int filled = 0;  ///< rows with any text

  private:
    /// "10,000" typed over 10000 is no change.
    bool differs(const QString& a, const QString& b) const {
        if (a == b) return false;
        return !rules.number || a.isEmpty() || b.isEmpty() || rules.number(a) != rules.number(b);
    }
    int alignment(int column) const {
        const bool right = column == InputGrid::Value && rules.choices.isEmpty();
        return int((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    void count(const QString& text, int sign) {
        filled += text.isEmpty() ? 0 : sign;
        if (rules.number) total += sign * rules.number(text);
    }
};

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

InputGrid::InputGrid(QWidget* parent) : Table(parent), model_(new InputModel(this)) {
    setObjectName(QStringLiteral("Picture1"));
    verticalScrollBar()->setObjectName(QStringLiteral("VScroll1"));
    setItemDelegate(new Delegate(this));
    setModel(model_);
    setContent({}, {});
}

InputGrid::~InputGrid() = default;

void InputGrid::setContent(CellRules rules, std::vector<InputRow> rows) {
    if (open_ >= 0) closeCell(open_);
    open_ = -1;
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
    return model_->rows;
}

const CellRules& InputGrid::rules() const {
    return model_->rules;
}

int InputGrid::changedRows() const {
    return model_->changed;
}

int InputGrid::filledRows() const {
    return model_->filled;
}

double InputGrid::total() const {
    return model_->total;
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
    QWidget* made = model_->rules.choices.isEmpty() ? makeTextCell(parent, row) : makeChoiceCell(parent, row);
    made->setAccessibleName(model_->rules.heading + u' ' +
                            model_->rows[static_cast<std::size_t>(row)].shimei);
    made->installEventFilter(this);
    return made;
}

QWidget* InputGrid::makeTextCell(QWidget* parent, int row) {
    auto* edit = new QLineEdit(model_->shown(row), parent);
    edit->setObjectName(QStringLiteral("Text1_%1").arg(row));
    edit->setFrame(false);
    edit->setTextMargins(0, 0, widgets::kGrid / 2, 0);  // where the cells without a cursor show their text
    edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    edit->setAttribute(Qt::WA_InputMethodEnabled, false);
    // What comes by the clipboard goes through the grid's paste, which judges it.
    edit->setContextMenuPolicy(Qt::NoContextMenu);
    edit->setAcceptDrops(false);
    connect(edit, &QLineEdit::textEdited, this, [this](const QString& text) {
        typed_ = true;
        take(text);
    });
    return edit;
}

QWidget* InputGrid::makeChoiceCell(QWidget* parent, int row) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QStringLiteral("DataCombo1_%1").arg(row));
    combo->addItems(model_->rules.choices);
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
        combo->setCurrentIndex(combo->findText(text));
    }
}

void InputGrid::take(const QString& text) {
    if (open_ < 0) return;
    model_->setText(open_, text);
    Q_EMIT changed();
}

void InputGrid::openCell(int row) {
    open_ = row;
    typed_ = false;
    openPersistentEditor(model_->index(row, Value));
    QWidget* cell = editor();
    setTabOrder(this, cell);
    if (opened) opened(cell);
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
    const CellRules& rules = model_->rules;
    if (rules.leave) {
        if (const auto refusal = rules.leave(model_->text(open_))) {
            if (refusal->replacement) {
                take(*refusal->replacement);
                showText(*refusal->replacement);
                typed_ = true;
            }
            shell::tell(window(), refusal->text, refusal->title);
            focusRow(open_);
            return false;
        }
    }
    if (typed_ && rules.settle) take(rules.settle(model_->text(open_)));
    typed_ = false;
    if (rules.choices.isEmpty()) showText(model_->shown(open_));
    return true;
}

// ---- Keys ------------------------------------------------------------------------------------------------

bool InputGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched != editor()) return Table::eventFilter(watched, event);
    const bool choice = !model_->rules.choices.isEmpty();
    if (event->type() == QEvent::Wheel && choice) {
        event->ignore();  // the wheel scrolls the grid; it must not change a choice it passes over
        return true;
    }
    if (event->type() != QEvent::KeyPress) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->matches(QKeySequence::Paste)) {
        paste();
        return true;
    }
    if (moves(*key)) return true;
    return !choice && widgets::isRefusedKey(*key, model_->rules.characters);
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
    if (held != Qt::NoModifier && !ends) return false;
    switch (key.key()) {
        case Qt::Key_Home:
            return ends && goTo(0);
        case Qt::Key_End:
            return ends && goTo(last);
        case Qt::Key_Up:
            return !ends && goTo(open_ - 1);
        case Qt::Key_Down:
            return !ends && goTo(open_ + 1);
        case Qt::Key_PageUp:
            return !ends && goTo(std::max(0, open_ - kRowsInSight));
        case Qt::Key_PageDown:
            return !ends && goTo(std::min(last, open_ + kRowsInSight));
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
bool InputGrid::goTo(int row) {
    if (row < 0 || row >= model_->rowCount() || row == open_) return true;
    if (!mayLeave || mayLeave()) focusRow(row);
    return true;
}

bool InputGrid::stepOn(bool forward) {
    const int row = open_ + (forward ? 1 : -1);
    if (row >= 0 && row < model_->rowCount()) return goTo(row);
    if (!mayLeave || mayLeave()) focusNextPrevChild(forward);
    return true;
}

// ---- Paste -----------------------------------------------------------------------------------------------

void InputGrid::paste() {
    auto column = pastedColumn(QGuiApplication::clipboard()->text());
    const bool typedCells = model_->rules.choices.isEmpty();
    if (column)
        for (QString& text : *column) {
            if (typedCells) text = plainNumber(text);
            if (model_->rules.settle) text = model_->rules.settle(text);
        }
    const auto fault =
        column ? pasteFault(*column) : std::optional(QStringLiteral("貼り付けられるのは１列だけです。"));
    if (fault) {
        shell::tell(window(), *fault + QStringLiteral("\n貼り付けは行いません。"),
                    QStringLiteral("貼り付けの確認"), shell::BoxIcon::Warning);
        return;
    }
    for (int i = 0; i < column->size(); ++i) model_->setText(open_ + i, column->at(i));
    typed_ = false;
    showText(typedCells ? model_->shown(open_) : model_->text(open_));
    Q_EMIT changed();
}

std::optional<QString> InputGrid::pasteFault(const QStringList& texts) const {
    const int room = model_->rowCount() - open_;
    if (texts.size() > room)
        return QStringLiteral("貼り付ける値は%1行ありますが、この行から下は%2行です。")
            .arg(texts.size())
            .arg(room);
    const CellRules& rules = model_->rules;
    for (int i = 0; i < texts.size(); ++i) {
        QString why;
        if (const auto refusal = rules.save ? rules.save(texts[i]) : std::nullopt)
            why = refusal->text;
        else if (!rules.choices.isEmpty() && !rules.choices.contains(texts[i]))
            why = QStringLiteral("一覧にない値です。");
        if (why.isEmpty()) continue;
        const InputRow& row = model_->rows[static_cast<std::size_t>(open_ + i)];
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

QString methodName(const shell::GlobalRecord& global) {
    return methodTable(global) == RunTable::SougakuHaibun ? QStringLiteral("総額配分")
                                                          : QStringLiteral("個人別計算");
}

RunTable methodTable(const shell::GlobalRecord& global) {
    return global.santei_houshiki == QStringLiteral("2") ? RunTable::SougakuHaibun : RunTable::KojinBetsu;
}

// ---- Form ------------------------------------------------------------------------------------------------

InputGridForm::InputGridForm(const QString& name, shell::House& house, QWidget* parent)
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
    grid_->opened = [this](QWidget* cell) {
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
    column->addLayout(widgets::buttonRow({command3_}, {command2_, command1_}));
    setMinimumWidth(widgets::twips(10500));
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
        shell::tell(this, refusal->text, refusal->title);
        return true;
    }
    return false;
}

void InputGridForm::Command1_Click() {
    if (refuses()) return;
    shell::FormTransaction transaction(cn());
    std::optional<QString> difference;
    const bool worked = shell::guarded(this, transaction, [&] {
        setHourglass();
        transaction.begin();
        difference = store();
        if (difference)
            transaction.rollback();
        else
            transaction.commit();
    });
    if (worked && difference)
        shell::tell(this, *difference, QStringLiteral("社員の不一致"), shell::BoxIcon::Warning);
    if (worked && !difference) accept();
    saveFailed_ |= !worked;
}

void InputGridForm::reject() {
    const int changes = grid_->changedRows();
    if (changes > 0 &&
        !shell::confirmLoss(
            this, QStringLiteral("更新していない入力が%1人分あります。更新せずに閉じますか？").arg(changes),
            QStringLiteral("終了の確認"), QStringLiteral("更新せずに閉じる(&D)"),
            QStringLiteral("入力に戻る(&B)")))
        return;
    done(saveFailed_ ? SaveFailed : Rejected);
}

}  // namespace prep
