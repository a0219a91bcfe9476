#include "personnel/frmRireki.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "domain/years.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/own_copy.h"
#include "personnel/ui_code_change.h"
#include "personnel/ui_person_record.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/reading_capture.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;

const QString kTable = u"履歴書テーブル"_s;
const QString kSyainCode = u"社員Code"_s;
const std::array<QString, 10> kColumns = {kSyainCode,    u"氏名"_s,     u"フリガナ"_s, u"生年月日"_s,
                                          u"入社日"_s,   u"郵便番号"_s, u"住所1"_s,    u"住所2"_s,
                                          u"電話番号"_s, u"fax番号"_s};
const std::array<QString, 10> kCaptions = {kSyainCode,  u"氏名"_s,     u"フリガナ"_s, u"生年月日"_s,
                                           u"入社日"_s, u"郵便番号"_s, u"住所1"_s,    u"住所2"_s,
                                           u"ｔｅｌ"_s, u"fax"_s};
const std::array<QString, 9> kItems = {u"最終学歴"_s, u"出身地"_s, u"住宅区分"_s, u"採用区分"_s, u"自由1"_s,
                                       u"自由2"_s,    u"自由3"_s,  u"自由4"_s,    u"自由5"_s};
constexpr int kFirstComboLabel = 10;  ///< lblLabels_10 to lblLabels_18

struct Options {
    QString column;
    std::array<QString, 3> captions;
};
const std::array<Options, 3> kOptionItems = {{{u"性別"_s, {u"－"_s, u"男"_s, u"女"_s}},
                                              {u"婚姻区分"_s, {u"－"_s, u"既婚"_s, u"未婚"_s}},
                                              {u"世帯主区分"_s, {u"－"_s, u"世帯主"_s, u"非世帯主"_s}}}};

/// What hangs on an employee; `date` is the bound that the screen refuses dates against.
struct Subtable {
    QString control;
    QString caption;
    QString screen;
};
const std::array<Subtable, 3> kSubtableItems = {{{u"Command2"_s, u"異動(&I)"_s, u"frmJinjiIdou2"_s},
                                                 {u"Command3"_s, u"家族(&K)"_s, u"frmJinjiKazoku"_s},
                                                 {u"Command4"_s, u"資格・免許(&S)"_s, u"frmJinjiSikaku"_s}}};
enum { Idou, Kazoku, Sikaku };

/// Wide enough for that many full-width characters.
void widen(QWidget* field, int characters) {
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(QString(characters, u'漢')) +
                           4 * widgets::kGrid);
}

QString wholeYearsTo(QDate today, const QLineEdit* from, QString (*years)(QDate, QDate)) {
    const auto date = store::parseDate(from->text());
    return date ? years(*date, today) : QString();
}

}  // namespace

frmRireki::frmRireki(forms::House& house, QWidget* parent)
    : RecordForm(u"frmRireki"_s, u"履歴書"_s, house, parent) {
    forms::guarded(this, [this] {
        chooseWhom();
        items_ = EntryItems::read(cn());
    });
    people_ = new PeopleList(this);
    makeControls();
    makeSubtables();
    bindFields();
    connectMoves();
    setList(people_);
    arrange(u"履歴書"_s, arrangeFields(), people_);
    openRecords();
    // A window of its own accord takes two thirds of the screen at most, and the list would be cut.
    resize(sizeHint());
}

/// rireki_shinki is used up: the next opening says anew what it wants.
void frmRireki::chooseWhom() {
    auto& global = house_.global;
    const bool selected = global.rireki_shinki;
    global.rireki_shinki = false;
    whom_ = global.rireki_zenin ? Whom::AllStaff : selected ? Whom::Selected : Whom::One;
    if (whom_ != Whom::One) return;
    const auto person =
        cn().query(u"SELECT rowid FROM 履歴書テーブル WHERE 社員Code = ?"_s, {global.syain_code});
    if (!person.isEmpty()) personRow_ = person.value(0).toInteger();
}

store::TableQuery frmRireki::query() const {
    const QString order = u"CodeKey(社員Code)"_s;
    switch (whom_) {
        case Whom::AllStaff:
            return {kTable, u"退職フラグ = 0"_s, {}, order};
        case Whom::Selected:
            return {kTable, u"退職フラグ = 0 AND 社員Code IN (SELECT 社員Code FROM 社員絞込)"_s, {}, order};
        case Whom::One:
            break;
    }
    return {kTable, u"rowid = ?"_s, {personRow_}, order};
}

// ---- controls

void frmRireki::makeControls() {
    for (std::size_t i = 0; i < txtFields_.size(); ++i)
        txtFields_[i] = make<QLineEdit>(u"txtFields_%1"_s.arg(i));
    widgets::admitOnly(txtFields_[Code], u"0123456789"_s);
    for (Text number : {Yubin, Tel, Fax}) widgets::typeDirectly(txtFields_[number]);
    txtFields_[Code]->setPlaceholderText(u"数字で1～999999"_s);
    txtFields_[Seinengappi]->setPlaceholderText(u"入力例： 1960/4/1"_s);
    txtFields_[Nyuusyabi]->setPlaceholderText(u"入力例： 1990/4/1"_s);
    for (Text name : {Shimei, Furigana}) widen(txtFields_[name], 11);
    for (Text address : {Jyusyo1, Jyusyo2}) widen(txtFields_[address], 20);
    auto* capture = new widgets::ReadingCapture(txtFields_[Shimei], txtFields_[Furigana]);
    readingForms_ = widgets::makeReadingForms(capture, this);
    for (int i = 0; i < kOptions; ++i)
        options_[std::size_t(i)] =
            make<widgets::OptionRow>(u"Frame1_%1"_s.arg(i), i, kOptionItems[std::size_t(i)].captions);
    nenrei_ = make<QLabel>(u"Label5"_s);
    kinzoku_ = make<QLabel>(u"Label6"_s);
    for (QLineEdit* date : {txtFields_[Seinengappi], txtFields_[Nyuusyabi]})
        connect(date, &QLineEdit::textChanged, this, [this] { showYears(); });
    for (std::size_t i = 0; i < combo_.size(); ++i) {
        combo_[i] = make<widgets::CodeCombo>(u"DataCombo1_%1"_s.arg(i));
        forms::guarded(this, [&] { combo_[i]->setItems(comboItems(codeChoices(cn(), kItems[i]))); });
    }
}

void frmRireki::makeSubtables() {
    for (int i = 0; i < kSubtables; ++i) {
        const Subtable& item = kSubtableItems[std::size_t(i)];
        auto* button = subtables_[std::size_t(i)] = make<QPushButton>(item.control, item.caption);
        connect(button, &QPushButton::clicked, this,
                [this, i] { forms::guarded(this, [this, i] { openSubtable(i, shownPerson()); }); });
    }
}

void frmRireki::bindFields() {
    bind(txtFields_[Code], kColumns[Code], [this] { return checkCode(); });
    const auto bindText = [this](Text field) {
        bind(txtFields_[field], kColumns[field], [this, field] {
            return passes(this, checkEmployeeText(kColumns[field], txtFields_[field]->text()));
        });
    };
    for (Text field : {Shimei, Furigana}) bindText(field);
    for (std::size_t i = 0; i < options_.size(); ++i) bind(options_[i], kOptionItems[i].column);
    bind(txtFields_[Seinengappi], kColumns[Seinengappi], [this] {
        return passes(this, checkSeinengappi(txtFields_[Seinengappi]->text(), house_.global.clock()));
    });
    bind(txtFields_[Nyuusyabi], kColumns[Nyuusyabi], [this] {
        const auto born = store::parseDate(txtFields_[Seinengappi]->text());
        return passes(this, checkNyuusyabi(txtFields_[Nyuusyabi]->text(), born.value_or(QDate())));
    });
    for (Text field : {Yubin, Jyusyo1, Jyusyo2, Tel, Fax}) bindText(field);
    for (std::size_t i = 0; i < combo_.size(); ++i)
        bind(combo_[i], kItems[i],
             [this, i] { return passes(this, checkEmployeeChoice(items_, kItems[i], combo_[i]->text())); });

    for (Text field : {Yubin, Jyusyo1, Jyusyo2, Tel, Fax})
        setEntered(txtFields_[field], items_.entered(kColumns[field]));
    for (std::size_t i = 0; i < options_.size(); ++i)
        setEntered(options_[i], items_.entered(kOptionItems[i].column));
    for (std::size_t i = 0; i < combo_.size(); ++i) setEntered(combo_[i], items_.entered(kItems[i]));
}

/// The moves go through the people found, not through all rows.
void frmRireki::connectMoves() {
    connect(people_, &PeopleList::chosen, this, [this](int row) { goTo(row); });
    connect(people_, &PeopleList::opened, bar().edit, &QPushButton::click);
    connect(people_, &PeopleList::searched, this, [this] { setCommands(); });
    using enum PeopleList::Move;
    for (const auto& [button, move] : {std::pair{bar().first, First}, std::pair{bar().previous, Previous},
                                       std::pair{bar().next, Next}, std::pair{bar().last, Last}}) {
        disconnect(button, &QPushButton::clicked, this, nullptr);
        connect(button, &QPushButton::clicked, this, [this, move = move] { people_->go(move); });
    }
}

QLayout* frmRireki::arrangeFields() {
    auto* both = new QHBoxLayout;
    both->setSpacing(3 * widgets::kGrid);
    both->addLayout(arrangePerson(), 1);
    both->addLayout(arrangeRest(), 1);
    return both;
}

QLayout* frmRireki::arrangePerson() {
    auto* fields = widgets::fieldGrid();
    const auto add = [&](Text i) {
        widgets::addField(fields, labelFor(u"lblLabels_%1"_s.arg(int(i)), kCaptions[i] + u':', txtFields_[i]),
                          txtFields_[i]);
    };
    for (Text i : {Code, Shimei, Furigana}) add(i);
    fields->addWidget(readingForms_, fields->rowCount(), 0, 1, 2);
    for (std::size_t i = 0; i < options_.size(); ++i)
        widgets::addField(fields,
                          labelFor(u"lblOption_%1"_s.arg(i), kOptionItems[i].column + u':', options_[i]),
                          options_[i]);
    for (Text i : {Seinengappi, Nyuusyabi}) add(i);

    auto* years = new QGroupBox(u"年齢＆勤続年数"_s, this);
    auto* line = new QHBoxLayout(years);
    const auto addYears = [&](const QString& caption, QLabel* number, const QString& unit) {
        line->addWidget(new QLabel(caption + u':', years));
        line->addWidget(number);
        line->addWidget(new QLabel(unit, years));
        line->addSpacing(3 * widgets::kGrid);
    };
    addYears(u"年齢"_s, nenrei_, u"歳"_s);
    addYears(u"勤続年数"_s, kinzoku_, u"年"_s);
    line->addStretch();
    auto* subtables = new QGroupBox(u"サブテーブル"_s, this);
    auto* buttons = new QHBoxLayout(subtables);
    for (QPushButton* button : subtables_) buttons->addWidget(button);

    auto* column = new QVBoxLayout;
    column->setSpacing(widgets::kGrid);
    column->addLayout(fields);
    column->addWidget(years);
    column->addWidget(subtables);
    column->addStretch();
    return column;
}

QLayout* frmRireki::arrangeRest() {
    auto* fields = widgets::fieldGrid();
    for (Text i : {Yubin, Jyusyo1, Jyusyo2, Tel, Fax})
        widgets::addField(fields, labelFor(u"lblLabels_%1"_s.arg(int(i)), kCaptions[i] + u':', txtFields_[i]),
                          txtFields_[i]);
    for (int i = 0; i < kCombos; ++i) {
        auto* combo = combo_[std::size_t(i)];
        const QString caption = widgets::asCaption(items_.caption(kItems[std::size_t(i)])) + u':';
        widgets::addField(fields, labelFor(u"lblLabels_%1"_s.arg(kFirstComboLabel + i), caption, combo),
                          combo);
    }
    auto* column = new QVBoxLayout;
    column->addLayout(fields);
    column->addStretch();
    return column;
}

/// As one reads: the list, the fields of the left, of the right, then what hangs on the person.
QList<QWidget*> frmRireki::fieldOrder() const {
    QList<QWidget*> order{people_->searchBox(), people_->table()};
    for (Text i : {Code, Shimei, Furigana}) order << txtFields_[i];
    order << readingForms_;
    for (widgets::OptionRow* options : options_) order << options;
    for (std::size_t i = Seinengappi; i < kTexts; ++i) order << txtFields_[i];
    for (widgets::CodeCombo* combo : combo_) order << combo;
    for (QPushButton* button : subtables_) order << button;
    return order;
}

// ---- rows

void frmRireki::rowsRead() {
    people_->setPeople(rows().recordCount(),
                       [people = rows()](int row, int text) { return people.valueAt(row, text).toText(); });
}

void frmRireki::rowShown() {
    people_->select(row());
}

void frmRireki::stateChanged() {
    const bool browse = state() == State::Browse;
    setCommands();
    readingForms_->setEnabled(!browse);
    if (browse && hasRows()) people_->table()->setFocus(Qt::OtherFocusReason);
}

/// Nothing is done to a person whom the list does not show.
void frmRireki::setCommands() {
    const bool browse = state() == State::Browse;
    const bool shown = browse && row() >= 0 && !people_->findsNobody();
    for (int i = 0; i < kSubtables; ++i)
        subtables_[std::size_t(i)]->setEnabled(shown &&
                                               house_.screens.has(kSubtableItems[std::size_t(i)].screen));
    if (!browse) return;
    const auto& bar = this->bar();
    for (QPushButton* button : {bar.edit, bar.remove, bar.first, bar.previous, bar.next, bar.last})
        button->setEnabled(shown);
}

bool frmRireki::keepsKey(const QWidget* focused, int key) const {
    const bool empties =
        key == Qt::Key_Escape && focused == people_->searchBox() && !people_->searchBox()->text().isEmpty();
    return empties || RecordForm::keepsKey(focused, key);
}

void frmRireki::showYears() {
    const QDate today = house_.global.clock();
    nenrei_->setText(wholeYearsTo(today, txtFields_[Seinengappi], domain::nenrei_nensuu));
    kinzoku_->setText(wholeYearsTo(today, txtFields_[Nyuusyabi], domain::kinzoku_nensuu));
}

// ---- what may be entered

bool frmRireki::checkCode() {
    QLineEdit* edit = txtFields_[Code];
    // The very first person may be given up: cmdCancel stays in reach.
    if (edit->text().isEmpty() && !hasRows()) return true;
    edit->setText(paddedSyainCode(edit->text()));
    if (!passes(this, checkSyainCode(edit->text()))) return false;
    return !taken(edit->text()) || passes(this, duplicateSyainCode());
}

/// Numbers of people who have left are not given again; how the first one is numbered is the company's
/// choice.
QString frmRireki::nextKey() const {
    auto last = house_.global.cn_main->query(u"SELECT max(cast(社員Code AS INTEGER)) FROM 履歴書テーブル"_s);
    const qint64 next = last.value(0).isNull() ? 0 : last.value(0).toInteger() + 1;
    return next < 1 || next > 999999 ? QString() : u"%1"_s.arg(next, 6, 10, QChar(u'0'));
}

bool frmRireki::taken(const QString& code) {
    if (code == oldText(kSyainCode)) return false;
    return !cn().query(u"SELECT 社員Code FROM 履歴書テーブル WHERE 社員Code = ?"_s, {code}).isEmpty();
}

// ---- update and removal

/// The history itself is refused before 入社日; a 入社日 that moves behind it may be meant (somebody joins
/// again), so the user decides.
bool frmRireki::checkUpdate() {
    const QString code = oldText(kSyainCode);
    const auto joined = store::parseDate(txtFields_[Nyuusyabi]->text());
    if (code.isEmpty() || !joined || joined == store::parseDate(oldText(kColumns[Nyuusyabi]))) return true;
    const auto earlier =
        cn().query(u"SELECT min(異動日), count(*) FROM 異動テーブル WHERE 社員Code = ? AND 異動日 < ?"_s,
                   {code, *joined});
    if (earlier.value(1).toInteger() == 0) return true;
    const QString question =
        u"入社日（%1）より前の異動が %2 件あります。最も古い異動日は %3 です。\n"
        "このまま更新しても、異動履歴は変わりません。"_s;
    const bool meant = forms::confirmLoss(this,
                                          question.arg(store::formatDate(*joined))
                                              .arg(earlier.value(1).toInteger())
                                              .arg(store::formatDate(earlier.value(0).toDate())),
                                          u"入社日の確認"_s, u"このまま更新する(&D)"_s, u"入力に戻る(&B)"_s);
    if (!meant) txtFields_[Nyuusyabi]->setFocus(Qt::OtherFocusReason);
    return meant;
}

CompanyDatabases frmRireki::databases() {
    auto& global = house_.global;
    global.kaisha_folder = global.panels.folder;
    return {cn(), global.dataDir(), global.kaisha_folder};
}

/// Rows that a change cut off left under the code must not fall to somebody new.
void frmRireki::updateBegins(bool renames) {
    if (renames) {
        forms::keepOwnCopy(this, house_, QStringLiteral("コード変更の前"));
        announceRename(databases(), Referent::Syain, {oldText(kSyainCode), {}},
                       {txtFields_[Code]->text(), {}});
    } else if (state() == State::Adding)
        settleChange(databases());
}

void frmRireki::removalBegins() {
    forms::keepOwnCopy(this, house_, QStringLiteral("データの削除の前"));
    announceRemoval(databases(), Referent::Syain, {oldText(kSyainCode), {}});
}

void frmRireki::writeFailed() {
    tellCutOffChange(databases(), this);
}

void frmRireki::keyRenamed() {
    renameCode(databases(), Referent::Syain, {oldText(kSyainCode), {}}, {txtFields_[Code]->text(), {}},
               txtFields_[Shimei]->text());
}

void frmRireki::rowWritten(store::RowEdit& row) {
    if (state() == State::Adding) row.set(u"退職フラグ"_s, false);
}

void frmRireki::afterRow(const store::RowEdit& row) {
    const auto text = [&](Text field) { return row.value(kColumns[field]).toText(); };
    added_ = {text(Code), text(Shimei), text(Nyuusyabi), text(Seinengappi)};
}

void frmRireki::updated(State was) {
    if (whom_ == Whom::One) house_.global.syain_code = added_.code;
    if (was == State::Adding) offerFirstTransfer();
}

bool frmRireki::confirmRemoval() {
    if (!RecordForm::confirmRemoval()) return false;
    QStringList lines;
    for (const CodeUse& use : employeeHistory(cn(), oldText(kSyainCode)))
        lines << u"・%1　%2 件"_s.arg(use.label).arg(use.rows);
    if (lines.isEmpty()) return true;
    const QString question =
        u"%1 %2 には次の記録があり、一緒に削除されます。元には戻せません。\n\n%3\n\n"
        "退職した人は、削除せずに退職処理をしてください。\n本当に削除しますか？"_s;
    return forms::askLoss(this, question.arg(oldText(kSyainCode), oldText(u"氏名"_s), lines.join(u'\n')),
                          u"削除の確認"_s);
}

void frmRireki::rowGoes() {
    removeCode(databases(), Referent::Syain, {oldText(kSyainCode), {}});
}

// ---- what hangs on the person

frmRireki::Person frmRireki::shownPerson() const {
    return {txtFields_[Code]->text(), txtFields_[Shimei]->text(), txtFields_[Nyuusyabi]->text(),
            txtFields_[Seinengappi]->text()};
}

void frmRireki::openSubtable(int index, const Person& person) {
    auto& global = house_.global;
    global.syain_code = person.code;
    global.syain_mei = person.name;
    if (index == Idou) global.syain_nyuusyabi = person.joined;
    if (index == Sikaku) global.syain_seinengappi = person.born;
    showChild(house_.screens.create(kSubtableItems[std::size_t(index)].screen, house_, this));
}

void frmRireki::offerFirstTransfer() {
    if (!house_.screens.has(kSubtableItems[Idou].screen)) return;
    const QString question =
        u"%1 %2 を追加しました。\n異動履歴がないと、基準日の一覧や賞与の計算に出てきません。\n\n"
        "続けて最初の異動を入力しますか？"_s;
    if (forms::ask(this, question.arg(added_.code, added_.name), u"異動履歴の入力"_s))
        forms::guarded(this, [this] { openSubtable(Idou, added_); });
}

}  // namespace personnel
