#include "forms/record_form.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <algorithm>

#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/menu_form.h"
#include "schema/catalog.h"
#include "store/error.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace forms {
namespace {

bool isEditable(const QWidget* control) {
    const auto* edit = qobject_cast<const QLineEdit*>(control);
    return edit && !edit->isReadOnly();
}

bool holdsText(const QString& table, const QString& column) {
    const auto& columns = schema::tableNamed(table).columns;
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const schema::Column& c) { return c.name == column; });
    return found == columns.end() || found->type.kind == store::TypeKind::Text;
}

}  // namespace

RecordForm::RecordForm(const QString& name, const QString& caption, House& house, QWidget* parent)
    : Form(name, caption, parent),
      house_(house),
      rows_(this),
      bar_(this),
      help_(make<QPushButton>(QStringLiteral("Command1"), QStringLiteral("ヘルプ"))),
      faults_(make<QLabel>(QStringLiteral("lblFaults"))) {
    widgets::setTone(faults_, widgets::Tone::Warning);
    faults_->setWordWrap(true);
    faults_->hide();
    const auto on = [this](QPushButton* button, void (RecordForm::*command)()) {
        connect(button, &QPushButton::clicked, this, command);
    };
    on(bar_.add, &RecordForm::cmdAdd);
    on(bar_.edit, &RecordForm::cmdEdit);
    on(bar_.update, &RecordForm::cmdUpdate);
    on(bar_.cancel, &RecordForm::cmdCancel);
    on(bar_.remove, &RecordForm::cmdDelete);
    connect(bar_.close, &QPushButton::clicked, this, [this] { reject(); });
    connect(bar_.first, &QPushButton::clicked, this, [this] { goTo(0); });
    connect(bar_.previous, &QPushButton::clicked, this, [this] { step(-1); });
    connect(bar_.next, &QPushButton::clicked, this, [this] { step(+1); });
    connect(bar_.last, &QPushButton::clicked, this, [this] { goTo(rowCount() - 1); });
    connect(help_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    setCancelButton(bar_.close);
}

// ---- binding and layout

void RecordForm::add(BoundField field, Check check) {
    if (check) {
        // A check may look into the tables: a failure is told, and the field is not left.
        field.check = [this, check = std::move(check)] {
            bool passed = false;
            return guarded(this, [&] { passed = check(); }) && passed;
        };
        validateOnLeave(field.control, field.check, {bar_.cancel});
    }
    fields_.add(std::move(field));
}

void RecordForm::bind(QLineEdit* edit, const QString& column, Check check) {
    if (!holdsText(query().table, column)) widgets::typeDirectly(edit);
    add(boundField(edit, column), std::move(check));
}

void RecordForm::bind(widgets::CodeCombo* combo, const QString& column, Check check) {
    add(boundField(combo, column), std::move(check));
}

void RecordForm::bind(widgets::OptionRow* options, const QString& column) {
    add(boundField(options, column), {});
}

void RecordForm::bind(QCheckBox* box, const QString& column) {
    add(boundField(box, column), {});
}

void RecordForm::bind(QLineEdit* edit, const QString& column, const domain::NumberRule& rule) {
    add(boundNumber(edit, column), [this, edit, column, rule] {
        const auto fault = domain::numberFault(edit->text(), rule);
        const bool untouched =
            state_ == State::Editing && edit->text() == domain::withSeparators(oldText(column));
        return !fault || untouched || refuse(*fault);
    });
}

void RecordForm::setEntered(QWidget* control, bool entered) {
    fields_.setEntered(control, entered, state_ == State::Browse);
    widgets::setNotEntered(control, !entered);
    if (!entered) control->setFocusPolicy(Qt::NoFocus);
}

bool RecordForm::isEntered(const QWidget* control) const {
    return fields_.isEntered(control);
}

widgets::Table* RecordForm::setGrid(std::vector<GridColumn> columns) {
    gridColumns_ = std::move(columns);
    QStringList headings;
    int width = 0;
    for (const GridColumn& column : gridColumns_) {
        headings << column.heading;
        width += widgets::twips(column.width);
    }
    grid_ = make<widgets::Table>(QStringLiteral("DataGrid1"));
    rows_.setColumns(std::move(headings), [this](int row, int cell) { return gridText(row, cell); });
    grid_->setModel(&rows_);
    grid_->setMinimumWidth(width + 4 * widgets::kGrid);
    grid_->setAccessibleName(QStringLiteral("一覧"));
    connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid() && current.row() != row_) goTo(current.row());
            });
    connect(grid_, &widgets::Table::opened, bar_.edit, &QPushButton::click);
    setList(grid_);
    return grid_;
}

/// Its place stays when it hides: the fields do not jump.
void RecordForm::setList(QWidget* list) {
    QSizePolicy policy = list->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    list->setSizePolicy(policy);
    list_ = list;
}

void RecordForm::refreshGrid() {
    rows_.refresh();
}

QString RecordForm::gridText(int row, int column) const {
    const QString& name = gridColumns_.at(static_cast<std::size_t>(column)).column;
    return rows().valueAt(row, name).toText();
}

void RecordForm::arrange(const QString& title, QLayout* fields, QWidget* beside) {
    column_ = widgets::columnOf(this);
    column_->addLayout(widgets::headerBlock(make<QLabel>(QStringLiteral("lblTitle"), title), nullptr));
    auto* card = new widgets::Card(this);
    card->body()->addLayout(fields);
    card->body()->addStretch(1);
    if (beside) {
        auto* both = new QHBoxLayout;
        both->setSpacing(2 * widgets::kGrid);
        both->addWidget(beside, 2);
        both->addWidget(card, 3);
        column_->addLayout(both, 1);
    } else {
        column_->addWidget(card, 1);
    }
    auto* bottom = new QHBoxLayout;
    bottom->setSpacing(widgets::kGrid);
    bottom->addWidget(help_);
    bottom->addWidget(bar_.commands, 1);
    auto* commandBar = new QVBoxLayout;
    commandBar->setSpacing(column_->spacing());
    commandBar->addWidget(faults_);
    commandBar->addWidget(bar_.moves);
    commandBar->addLayout(bottom);
    column_->addLayout(commandBar);
}

QList<QWidget*> RecordForm::fieldOrder() const {
    QList<QWidget*> fields;
    for (const BoundField& field : fields_) fields << field.control;
    return fields;
}

/// Through the fields, from the last one to the update, and on through the buttons. The toolkit leaves out
/// what takes no focus, and a locked list takes none: so the order is made anew with each state.
void RecordForm::orderTabs() {
    QList<QWidget*> order;
    const auto add = [&order](QWidget* stop) {
        if (stop->focusPolicy() != Qt::NoFocus) order << stop;
    };
    for (QWidget* field : fieldOrder()) {
        add(field);
        for (QRadioButton* option : field->findChildren<QRadioButton*>()) add(option);
    }
    order << bar_.update << bar_.cancel << bar_.first << bar_.previous << bar_.next << bar_.last << bar_.add
          << bar_.edit << bar_.remove << bar_.close << help_;
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

// ---- rows

void RecordForm::openRecords() {
    guarded(this, [this] { readRows(); });
    row_ = hasRows() ? 0 : -1;
    setState(State::Browse);
}

/// The table's rows as they are now; those that were read before stay where that fails. The position is void
/// afterwards.
void RecordForm::readRows() {
    row_ = -1;
    rows_.take(cn().open(query()));
    rowsRead();
}

void RecordForm::rereadRecords(const QStringList& key) {
    if (state_ != State::Browse) return;
    guarded(this, [this] { readRows(); });
    standOn(key, 0);
    setState(State::Browse);
}

QStringList RecordForm::keyOf(int row) const {
    QStringList key;
    for (const QString& column : keyColumns())
        if (row >= 0) key << rows().valueAt(row, column).toText();
    return key;
}

/// On the row with that key, or on `otherwise`, which also settles a key that stands in several rows.
void RecordForm::standOn(const QStringList& key, int otherwise) {
    const int count = rowCount();
    row_ = count == 0 ? -1 : std::clamp(otherwise, 0, count - 1);
    const bool there = keyOf(row_) == key;
    for (int row = 0; !there && !key.isEmpty() && row < count; ++row)
        if (keyOf(row) == key) {
            row_ = row;
            break;
        }
}

void RecordForm::goTo(int row) {
    if (state_ != State::Browse || rowCount() == 0) return;
    row_ = std::clamp(row, 0, rowCount() - 1);
    showRow();
}

void RecordForm::step(int by) {
    const int to = row_ + by;
    if (hasRows() && (to < 0 || to >= rowCount())) QApplication::beep();
    goTo(to);
}

QString RecordForm::shownText(const BoundField& field) const {
    return row_ < 0 ? QString() : shown(field.column).toText();
}

void RecordForm::showRow() {
    for (const BoundField& field : fields_) field.write(shownText(field));
    bar_.status->setText(QStringLiteral("Record: %1").arg(row_ + 1));
    if (grid_ && row_ >= 0 && grid_->currentIndex().row() != row_) grid_->selectRow(row_);
    rowShown();
}

QString RecordForm::oldText(const QString& column) const {
    if (state_ == State::Adding || row_ < 0) return {};
    return shown(column).toText();
}

// ---- states

void RecordForm::set_buttons(bool browse) {
    bar_.setBrowse(browse);
    if (!browse) return;
    const bool some = hasRows();
    for (QPushButton* button : {bar_.edit, bar_.remove, bar_.first, bar_.previous, bar_.next, bar_.last})
        button->setEnabled(some);
    bar_.add->setEnabled(rows_.known() && mayAdd());
}

void RecordForm::setState(State state) {
    state_ = state;
    const bool browse = state == State::Browse;
    set_buttons(browse);
    clearFaults();
    if (list_) list_->setVisible(browse);
    fields_.setLocked(browse);
    orderTabs();
    if (browse) {
        showRow();
        focusInBrowse();
    } else {
        bar_.status->setText(state == State::Adding ? QStringLiteral("ﾚｺｰﾄﾞを追加します。")
                                                    : QStringLiteral("ﾚｺｰﾄﾞを編集します。"));
        fields_.remember();
        fields_.focusFirst();
    }
    stateChanged();
}

void RecordForm::focusInBrowse() {
    QWidget* place = hasRows() && grid_ ? static_cast<QWidget*>(grid_)
                     : hasRows()        ? static_cast<QWidget*>(bar_.next)
                                 : static_cast<QWidget*>(bar_.add->isEnabled() ? bar_.add : bar_.close);
    place->setFocus(Qt::OtherFocusReason);
}

void RecordForm::cmdAdd() {
    savedKey_ = keyOf(row_);
    for (const BoundField& field : fields_) field.write(field.fresh);
    if (const BoundField& first = fields_.first();
        first.column == keyColumns().first() && qobject_cast<QLineEdit*>(first.control))
        guarded(this, [&] { first.write(nextKey()); });
    setState(State::Adding);
}

void RecordForm::cmdEdit() {
    savedKey_ = keyOf(row_);
    // Options keep showing the row before where this one has none of their values: what is stored must not be
    // another's.
    for (const BoundField& field : fields_)
        if (!field.fresh.isEmpty() && field.read() != shownText(field)) field.write(field.fresh);
    setState(State::Editing);
}

bool RecordForm::mayLoseInput(const QString& act) {
    return !fields_.changed() || confirmInputLoss(this, act);
}

void RecordForm::cmdCancel() {
    if (!mayLoseInput(QStringLiteral("入力を取り消す(&D)"))) return;
    leaveInput();
}

void RecordForm::leaveInput() {
    if (row_ < 0) standOn(savedKey_, 0);
    setState(State::Browse);
}

void RecordForm::reject() {
    if (state_ != State::Browse) {
        if (!mayLoseInput(QStringLiteral("更新せずに閉じる(&D)"))) return;
        leaveInput();
    }
    Form::reject();
}

// ---- update

bool RecordForm::checkRequired() {
    const BoundField& first = fields_.first();
    const bool named = first.column == keyColumns().first() && qobject_cast<QLineEdit*>(first.control);
    if (!named || !first.read().isEmpty()) return true;
    first.control->setFocus(Qt::OtherFocusReason);
    return hasRows() && refuse(QStringLiteral("未入力は許されません。･･･") + keyCaption());
}

QString RecordForm::nextKey() const {
    qint64 largest = 0;
    qsizetype width = 0;
    for (int row = 0; row < rowCount(); ++row) {
        const QString key = keyOf(row).first();
        bool number = false;
        const qint64 one = key.toLongLong(&number);
        if (!number) continue;
        largest = std::max(largest, one);
        width = std::max(width, key.size());
    }
    const QString next = QString::number(largest + 1).rightJustified(width, u'0');
    return width == 0 || next.size() > width ? QString() : next;
}

void RecordForm::showFaults() {
    const QStringList names = fields_.markFaults();
    faults_->setText(QStringLiteral("入力を確かめてください： ") + names.join(QStringLiteral("、")));
    faults_->setVisible(!names.isEmpty());
}

void RecordForm::clearFaults() {
    faults_->hide();
    fields_.clearFaults();
}

bool RecordForm::keyDiffers() const {
    const QStringList columns = keyColumns();
    return std::any_of(fields_.begin(), fields_.end(), [&](const BoundField& field) {
        return columns.contains(field.column) && field.read() != shownText(field);
    });
}

void RecordForm::cmdUpdate() {
    const State was = state_;
    bool written = false;
    if (was == State::Editing && row_ < 0) restored(this, [this] { forgetWrite(); });
    const auto update = [&] {
        if (was == State::Editing) requireRow();
        clearFaults();
        if (!checkRequired() || !fields_.passChecks()) return showFaults();
        if (!checkUpdate()) return;
        setHourglass();
        writeRow();
        written = true;
    };
    if (!guarded(this, update, [this] { forgetWrite(); })) return writeFailed();
    if (!written) return;
    guarded(this, [this] { readRows(); });
    standOn(savedKey_, 0);
    setState(State::Browse);
    updated(was);
}

void RecordForm::writeRow() {
    const bool adding = state_ == State::Adding;
    const bool renames = !adding && keyDiffers();
    updateBegins(renames);
    store::Work work(cn(), windowTitle(), store::Work::Reserve::AsWritten);
    if (renames) keyRenamed();
    auto row = adding ? store::RowEdit(cn(), rows()) : store::RowEdit(cn(), rows(), row_);
    for (const BoundField& field : fields_) {
        const QString text = field.read();
        if (!adding && (!field.entered || text == shownText(field))) continue;
        row.set(field.column, text.isEmpty() ? store::Value() : store::Value(text));
    }
    rowWritten(row);
    row.write();
    afterRow(row);
    work.commit();
    if (adding) return;
    savedKey_.clear();
    for (const QString& column : keyColumns()) savedKey_ << row.value(column).toText();
}

/// After a failure the state is as before: what was typed stands in the fields. The rows are read anew, since
/// others may have changed them. Where the row being edited is not to be found it must not be written over
/// another one: then there is none.
void RecordForm::forgetWrite() {
    const int at = row_;
    bool read = false;
    const auto stand = qScopeGuard([&] {
        standOn(savedKey_, at);
        if (state_ == State::Editing && (!read || keyOf(row_) != savedKey_)) row_ = -1;
        if (state_ == State::Browse) showRow();
    });
    readRows();
    read = true;
}

void RecordForm::requireRow() const {
    if (row_ >= 0) return;
    throw store::Error(store::Error::Reason::Conflict,
                       QStringLiteral("編集中のレコードが見つからないため、更新できません。"));
}

// ---- removal

QString RecordForm::removalQuestion() const {
    QString question;
    int told = 0;
    for (const BoundField& field : fields_) {
        if (told++ == 2) break;
        const auto* combo = qobject_cast<const widgets::CodeCombo*>(field.control);
        question += u' ' + (combo ? combo->text() : field.read());
    }
    return question + QStringLiteral(" を削除しますか？");
}

bool RecordForm::confirmRemoval() {
    return askLoss(this, removalQuestion(), QStringLiteral("削除の確認"));
}

void RecordForm::cmdDelete() {
    bool gone = false;
    const int at = row_;
    savedKey_ = keyOf(row_);
    const auto remove = [&] {
        if (!mayRemove() || !confirmRemoval()) return;
        setHourglass();
        removalBegins();
        store::Work work(cn(), windowTitle(), store::Work::Reserve::AsWritten);
        rowGoes();
        store::RowEdit(cn(), rows(), at).remove();
        work.commit();
        gone = true;
    };
    if (!guarded(this, remove, [this] { forgetWrite(); })) return writeFailed();
    if (!gone) return;
    guarded(this, [this] { readRows(); });
    standOn({}, at);
    setState(State::Browse);
    removed();
}

// ---- keys

bool RecordForm::keepsKey(const QWidget* focused, int key) const {
    return isEditable(focused) && (key == Qt::Key_Home || key == Qt::Key_End);
}

bool RecordForm::takesKey(int key, bool control) {
    QPushButton* button = nullptr;
    switch (key) {
        case Qt::Key_Escape:
            button = bar_.close;
            break;
        case Qt::Key_End:
            button = bar_.last;
            break;
        case Qt::Key_Home:
            button = bar_.first;
            break;
        case Qt::Key_Up:
        case Qt::Key_PageUp:
            button = control ? bar_.first : bar_.previous;
            break;
        case Qt::Key_Down:
        case Qt::Key_PageDown:
            button = control ? bar_.last : bar_.next;
            break;
        default:
            return false;
    }
    // Not click(): it would take the focus of the list and paint a pressed button for each row passed.
    if (button->isEnabled()) Q_EMIT button->clicked();
    return true;
}

bool RecordForm::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || state_ != State::Browse || !watched->isWidgetType())
        return Form::eventFilter(watched, event);
    const auto* control = static_cast<QWidget*>(watched);
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto modifiers = key->modifiers() & ~Qt::KeypadModifier;
    const bool plain = modifiers == Qt::NoModifier || modifiers == Qt::ControlModifier;
    const bool closesAgain = key->key() == Qt::Key_Escape && key->isAutoRepeat();
    if (!plain || control != focusWidget() || control->window() != this || closesAgain ||
        keepsKey(control, key->key()))
        return Form::eventFilter(watched, event);
    return takesKey(key->key(), modifiers == Qt::ControlModifier);
}

void RecordForm::place() {
    placeAsMenu(this);
}

void RecordForm::showEvent(QShowEvent* event) {
    Form::showEvent(event);
    qApp->installEventFilter(this);
}

void RecordForm::hideEvent(QHideEvent* event) {
    qApp->removeEventFilter(this);
    Form::hideEvent(event);
}

store::Connection& RecordForm::cn() {
    return *house_.global.cn_main;
}

bool RecordForm::refuse(const QString& text, const QString& title) {
    tell(this, text, title);
    return false;
}

}  // namespace forms
