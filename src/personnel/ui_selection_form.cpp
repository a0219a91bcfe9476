#include "personnel/ui_selection_form.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "forms/box.h"
#include "personnel/position_in_force.h"
#include "personnel/ui_person_output.h"
#include "reports/frmReport.h"
#include "reports/ui_list_title.h"
#include "reports/ui_sent_sheet.h"
#include "reports/workbook.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;
using Deed = SelectionMode::Deed;

const QString kNobody = u"該当する社員データはありません。"_s;

/// Exactly one flag is set when a menu entry opens the screen.
const SelectionMode* modeOf(const forms::GlobalRecord& global, const std::vector<SelectionMode>& modes) {
    const auto found = std::find_if(modes.begin(), modes.end(),
                                    [&](const SelectionMode& mode) { return global.*mode.flag; });
    return found == modes.end() ? &modes.front() : &*found;
}

/// Why rows of the whole are missing in a list; %1 is their number.
QString leftOutText(PersonList list) {
    const QString people =
        u"%1 人は一覧に入っていません（%2が入っていないか、基準日の時点の異動履歴がありません）。"_s;
    const QString rows = u"%1 件は一覧に入っていません（%2のどれかが入っていません）。"_s;
    switch (list) {
        case PersonList::StaffSheet:
            return QString(people).replace(u"%2"_s, u"性別・婚姻区分・世帯主区分"_s);
        case PersonList::Family:
            return QString(rows).replace(u"%2"_s, u"続柄・性別・扶養・同居・障害"_s);
        case PersonList::Qualifications:
            return QString(rows).replace(u"%2"_s, u"資格・免許の名称と業務必要性"_s);
        default:
            return QString(people).replace(u"%2"_s, u"性別"_s);
    }
}

}  // namespace

SelectionForm::SelectionForm(const Names& names, const std::vector<SelectionMode>& modes, forms::House& house,
                             const reports::SheetFolder& sheets, QWidget* parent)
    : Form(names.screen, names.caption, parent),
      house_(house),
      sheets_(sheets),
      mode_(modeOf(house.global, modes)),
      listed_(mode_->list),
      count_(make<QLabel>(names.count)) {
    setMinimumSize(112 * widgets::kGrid, 66 * widgets::kGrid);
    makeButtons();
}

// ---- The screen's parts

void SelectionForm::makeButtons() {
    command1_ = make<QPushButton>(u"Command1"_s, u"対象者リストの表示(&F)"_s);
    command2_ = make<QPushButton>(u"Command2"_s, u"キャンセル(&C)"_s);
    command5_ = make<QPushButton>(u"Command5"_s, u"対象者１名を選択　次へ(&I)"_s);
    command4_ = make<QPushButton>(u"Command4"_s, u"対象者全員を選択　次へ(&Z)"_s);
    command3_ = make<QPushButton>(u"Command3"_s, u"ヘルプ(&H)"_s);
    command6_ = make<QPushButton>(u"Command6"_s, u"閉じる(&B)"_s);
    widgets::setPrimary(command1_);
    setCancelButton(command6_);
    command4_->setVisible(!mode_->oneOnly);
    const bool leads = mode_->deed != Deed::OpenScreen || house_.screens.has(mode_->screen);
    for (QPushButton* button : {command4_, command5_}) button->setEnabled(leads);
    connect(command1_, &QPushButton::clicked, this, [this] { search(); });
    connect(command2_, &QPushButton::clicked, this, [this] { clearConditions(); });
    connect(command3_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    connect(command4_, &QPushButton::clicked, this, [this] { send(true); });
    connect(command5_, &QPushButton::clicked, this, [this] { send(false); });
    connect(command6_, &QPushButton::clicked, this, [this] { reject(); });
}

QWidget* SelectionForm::makeFound() {
    auto* card = new widgets::Card(this);
    list_ = make<widgets::CodeList>(u"DataList1"_s);
    list_->setAccessibleName(u"対象者リスト"_s);
    list_->setPlaceholder(u"条件を入力して、\n「対象者リストの表示」を押してください。"_s);
    list_->setMinimumWidth(fontMetrics().horizontalAdvance(u"000000　一二三四五六七八九十"_s) +
                           6 * widgets::kGrid);
    connect(list_, &widgets::CodeList::opened, command5_, &QPushButton::click);
    widgets::setTone(count_, widgets::Tone::Heading);
    card->body()->addWidget(list_, 1);
    card->body()->addWidget(count_);
    showPeople({});
    return card;
}

void SelectionForm::arrange(QLayout* conditions) {
    auto* title = make<QLabel>(u"lblTitle"_s, windowTitle());
    auto* purpose = make<QLabel>(u"lblPurpose"_s, mode_->purpose);
    told_ = make<QLabel>(u"lblTold"_s);
    told_->setWordWrap(true);
    told_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    told_->hide();

    sent_ = new reports::SentSheet(this);
    auto* asked = new widgets::Card(this);
    asked->body()->addLayout(conditions);
    asked->body()->addSpacing(widgets::kGrid);
    asked->body()->addStretch(1);
    asked->body()->addLayout(widgets::buttonRow({}, {command2_, command1_}));
    auto* middle = new QHBoxLayout;
    middle->setSpacing(2 * widgets::kGrid);
    middle->addWidget(asked, 1);
    middle->addWidget(makeFound(), 1);

    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, purpose));
    column->addLayout(middle, 1);
    column->addWidget(told_);
    column->addWidget(sent_);
    column->addLayout(widgets::buttonRow({command3_}, {command6_, command5_, command4_}));
    widgets::tabOrder({command1_, command2_, list_, command5_, command4_, command6_, command3_});
}

QLayout* SelectionForm::withHint(QLineEdit* edit, const QString& hint) {
    auto* label = new QLabel(hint, this);
    widgets::setTone(label, widgets::Tone::Muted);
    edit->setAccessibleDescription(hint);
    widgets::typeDirectly(edit);
    edit->setMinimumWidth(fontMetrics().horizontalAdvance(u"2026/12/31"_s) + 3 * widgets::kGrid);
    auto* row = new QHBoxLayout;
    row->setSpacing(widgets::kGrid);
    row->addWidget(edit, 1);
    row->addWidget(label);
    return row;
}

QString SelectionForm::today() const {
    return store::formatDate(house_.global.clock());
}

QList<QPushButton*> SelectionForm::exempt() const {
    return {command2_, command3_, command6_};
}

bool SelectionForm::checkDate(QLineEdit* edit, bool mayBeEmpty) {
    if (edit->text().isEmpty() && mayBeEmpty) return true;
    const auto date = store::parseDate(edit->text());
    if (date) {
        edit->setText(store::formatDate(*date));
        return true;
    }
    forms::tell(this,
                edit->text().isEmpty() ? u"未入力は許されません。"_s : u"日付の入力が正しくありません。"_s,
                u"入力エラー"_s, forms::BoxIcon::Critical);
    edit->setFocus();
    widgets::select_all(edit);
    return false;
}

// ---- Finding people

void SelectionForm::search() {
    forms::guarded(this, [this] {
        setHourglass();
        const Query asked = query();
        if (!asked) return;
        query_ = asked;
        listed_ = mode_->list;
        showPeople(query_());
        setDefaultPointer();
        if (people_.empty())
            forms::tell(this, kNobody, u"検索結果"_s, forms::BoxIcon::Information);
        else
            list_->setFocus();
    });
}

void SelectionForm::offer(Query query, PersonList list, const QString& nobody) {
    forms::guarded(this, [&] {
        query_ = std::move(query);
        listed_ = list;
        list_->setPlaceholder(nobody);
        showPeople(query_());
    });
}

/// Whoever was chosen stays it; where this person is gone, the one in the same place.
void SelectionForm::refresh() {
    if (!query_) return;
    const int row = list_->row();
    const QString code = list_->boundText();
    showPeople(query_());
    if (row < 0 || people_.empty()) return;
    if (!list_->chooseCode(code)) list_->choose(std::min(row, list_->count() - 1));
    list_->scrollTo(list_->currentIndex());
    list_->setFocus();
}

void SelectionForm::showPeople(const FoundPeople& people) {
    people_ = people;
    std::vector<widgets::CodeList::Item> items;
    items.reserve(people.size());
    for (const FoundPerson& person : people)
        items.push_back({person.code, person.code + u"　"_s + person.name});
    list_->setItems(items);
    count_->setText(u"対象者数： %1 人"_s.arg(people.size()));
}

// ---- Sending people on

void SelectionForm::send(bool all) {
    QStringList codes;
    if (all)
        for (const FoundPerson& person : people_) codes << person.code;
    else if (!list_->boundText().isEmpty())
        codes << list_->boundText();
    if (codes.isEmpty()) {
        forms::tell(this, u"処理する人を選択してください。"_s, u"選択エラー"_s, forms::BoxIcon::Critical);
        return;
    }
    told_->hide();
    sent_->hide();
    forms::guarded(this, [&] {
        if (mode_->deed == Deed::Restore) return restore(codes.first());
        handOver(codes, all);
        switch (mode_->deed) {
            case Deed::OpenScreen:
                return openScreen(codes.first(), all);
            case Deed::Print:
                return print();
            case Deed::Sheet:
                return sendSheet();
            case Deed::Restore:
                return;
        }
    });
}

/// The work tables and 社員絞込 change together.
void SelectionForm::handOver(const QStringList& codes, bool all) {
    setHourglass();
    store::Work work(cn(), windowTitle());
    if (mode_->deed != Deed::OpenScreen && showsPosition(listed_)) {
        if (all)
            SelectIntoZ(cn(), codes, referenceDate());
        else
            SelectIntoZZ(cn(), codes.first(), referenceDate());
    }
    storeSelection(cn(), codes);
    work.commit();
}

void SelectionForm::openScreen(const QString& code, bool all) {
    auto& global = house_.global;
    if (global.jinji_mode_joukenn) global.rireki_shinki = all;
    if (!all) global.syain_code = code;
    showChild(house_.screens.create(mode_->screen, house_, this));
    refresh();
}

void SelectionForm::print() {
    const store::Recordset rows = personRows(cn(), listed_);
    setDefaultPointer();
    if (rows.recordCount() == 0)
        return forms::tell(this, kNobody, u"検索結果"_s, forms::BoxIcon::Information);
    showChild(personPreview(listed_, rows, {listTitle(), printedDate()}, this));
    const int left = leftOut(cn(), listed_, rows);
    told_->setText(left > 0 ? leftOutText(listed_).arg(left) : QString());
    told_->setVisible(left > 0);
}

reports::ListTitle SelectionForm::listTitle() {
    reports::ListTitle title = reports::titleOfCompany(house_.global, mode_->title);
    title.kijunbi = {referenceDate()};
    return title;
}

void SelectionForm::sendSheet() {
    const store::Recordset rows = personRows(cn(), listed_);
    const int left = leftOut(cn(), listed_, rows);
    const QString path = sheets_.send(personSheet(cn(), listed_, rows), listTitle());
    sent_->tell(path, left > 0 ? leftOutText(listed_).arg(left) : QString());
}

}  // namespace personnel
