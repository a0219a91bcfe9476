#include "personnel/ui_people_list.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>

#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

constexpr int kNameLength = 10;  ///< full-width characters of a name or a reading

QString people(std::size_t count) {
    return QLocale(QLocale::Japanese).toString(static_cast<qulonglong>(count)) + u" 人"_s;
}

}  // namespace

PeopleList::PeopleList(QWidget* form)
    : QWidget(form),
      search_(new QLineEdit(this)),
      table_(new widgets::Table(this)),
      model_(new widgets::RowsModel({{u"社員Code"_s}, {u"氏名"_s}, {u"フリガナ"_s}}, this)),
      count_(new QLabel(this)) {
    layOut();
    search_->installEventFilter(this);
    connect(table_, &widgets::Table::opened, this, &PeopleList::opened);
    connect(search_, &QLineEdit::textChanged, this, [this] { search(); });
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (!current.isValid()) return;
                const int row = found_[static_cast<std::size_t>(current.row())];
                if (row != row_) Q_EMIT chosen(row);
            });
}

void PeopleList::layOut() {
    search_->setObjectName(u"Text1"_s);
    search_->setPlaceholderText(u"コード・氏名・フリガナ"_s);
    search_->setClearButtonEnabled(true);
    search_->setAccessibleName(u"社員の検索"_s);
    auto* label = new QLabel(u"検索(&F):"_s, this);
    label->setBuddy(search_);
    table_->setObjectName(u"DataGrid1"_s);
    table_->setAccessibleName(u"社員の一覧"_s);
    table_->setModel(model_);
    table_->setMinimumWidth(widthOf(kNameLength));
    count_->setObjectName(u"lblFound"_s);
    widgets::setTone(count_, widgets::Tone::Muted);

    auto* line = new QHBoxLayout;
    line->setSpacing(widgets::kGrid);
    line->addWidget(label);
    line->addWidget(search_, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(widgets::kGrid);
    column->addLayout(line);
    column->addWidget(table_, 1);
    column->addWidget(count_);
}

/// Of the table: the code and that many full-width characters.
int PeopleList::widthOf(int characters) const {
    const QString widest =
        table_->model()->headerData(0, Qt::Horizontal).toString() + QString(characters, u'漢');
    return table_->fontMetrics().horizontalAdvance(widest) + 12 * widgets::kGrid;
}

QSize PeopleList::sizeHint() const {
    return {widthOf(2 * kNameLength), QWidget::sizeHint().height()};
}

QWidget* PeopleList::table() const {
    return table_;
}

void PeopleList::setPeople(int count, PeopleSearch::Text text) {
    people_.setPeople(count, text);
    text_ = std::move(text);
    row_ = -1;
    showFound(people_.find(search_->text()));
}

void PeopleList::showFound(std::vector<int> found) {
    found_ = std::move(found);
    const bool narrowed = static_cast<int>(found_.size()) < people_.count();
    const QString all = people(static_cast<std::size_t>(people_.count()));
    count_->setText(narrowed ? u"%1（%2のうち）"_s.arg(people(found_.size()), all) : all);
    table_->setPlaceholder(narrowed ? u"見つかりません。\n検索の文字を変えてください。"_s
                                    : u"社員がいません。"_s);
    model_->setRows(static_cast<int>(found_.size()), [this](int place, int column) {
        return text_(found_[static_cast<std::size_t>(place)], column);
    });
}

void PeopleList::search() {
    showFound(people_.find(search_->text()));
    const int row = row_;
    if (placeOf(row) >= 0)
        select(row);
    else if (!found_.empty())
        Q_EMIT chosen(found_.front());
    Q_EMIT searched();
}

int PeopleList::placeOf(int row) const {
    const auto found = std::lower_bound(found_.begin(), found_.end(), row);
    return found == found_.end() || *found != row ? -1 : static_cast<int>(found - found_.begin());
}

void PeopleList::select(int row) {
    row_ = row;
    const int place = placeOf(row);
    if (place < 0)
        table_->clearSelection();
    else if (table_->currentIndex().row() != place || !table_->selectionModel()->hasSelection())
        table_->selectRow(place);
}

void PeopleList::go(Move to) {
    const int last = static_cast<int>(found_.size()) - 1;
    const int place = placeOf(row_);
    const int next = to == Move::First ? 0 : to == Move::Last ? last : place + (to == Move::Next ? 1 : -1);
    if (next < 0 || next > last) QApplication::beep();
    if (last >= 0) Q_EMIT chosen(found_[static_cast<std::size_t>(std::clamp(next, 0, last))]);
}

bool PeopleList::eventFilter(QObject* watched, QEvent* event) {
    // The first character typed must not wait for the texts of all people.
    if (watched == search_ && event->type() == QEvent::FocusIn) people_.prepare();
    const bool escape =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (watched != search_ || !escape || search_->text().isEmpty())
        return QWidget::eventFilter(watched, event);
    search_->clear();
    return true;
}

}  // namespace personnel
