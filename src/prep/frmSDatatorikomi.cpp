#include "prep/frmSDatatorikomi.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <memory>
#include <optional>

#include "forms/box.h"
#include "forms/field_check.h"
#include "forms/global_record.h"
#include "forms/own_copy.h"
#include "store/date_text.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace prep {
namespace {

using namespace Qt::StringLiterals;

constexpr int kFields = 3;
const std::array<QString, kFields> kFieldNames{u"基準日"_s, u"年齢算出年月日"_s, u"勤続年数算出年月日"_s};

const QString kNobodyToImport = QStringLiteral(
    u"この基準日で取り込むことができる人事データはありません。\n"
    u" \n"
    u"①社員データを登録していない。\n"
    u"　は　い → 社員データを登録してください\n"
    u"　いいえ → ②へ\n"
    u"②各社員の異動履歴が作成されていない\n"
    u"　は　い → 異動履歴を作成してください（初登録）\n"
    u"　いいえ → ③へ\n"
    u"③基準日以前の異動履歴を持つ社員が一人もいない\n"
    u"　は　い → 基準日を変更してください\n"
    u"　いいえ → お問い合わせください");

const QString kNewDateGuidance = u"年月日（入力例：2000/4/1）を入力し、ﾃﾞｰﾀ取込ボタンを押してください。"_s;
const QString kExistingDateGuidance = u"読み込むﾃﾞｰﾀの基準日を選択し、ﾃﾞｰﾀ読込ボタンを押してください。"_s;

/// A large company takes a second or so: the guidance line says what goes on until the work is over.
class BusyLine {
  public:
    BusyLine(QLabel* line, const QString& text) : line_(line), guidance_(line->text()) {
        line_->setText(text);
        line_->repaint();
    }
    ~BusyLine() { line_->setText(guidance_); }
    BusyLine(const BusyLine&) = delete;
    BusyLine& operator=(const BusyLine&) = delete;

  private:
    QLabel* line_;
    QString guidance_;
};

const QString kImporting = u"人事データを取り込んでいます。しばらくお待ちください。"_s;
const QString kDeleting = u"取込データを削除しています。しばらくお待ちください。"_s;

Side sideOf(const forms::GlobalRecord& global) {
    return global.haibun_sekkei_mode ? Side::Sekkei : Side::Jikkou;
}

}  // namespace

frmSDatatorikomi::frmSDatatorikomi(forms::House& house, QWidget* parent)
    : Form(u"frmSDatatorikomi"_s, u"人事データ取込"_s, parent), house_(house), side_(sideOf(house.global)) {
    build();
    connectEvents();
    setState(State::Opening);
    Command1_->setFocus();
}

// ---- layout

void frmSDatatorikomi::build() {
    setMinimumSize(78 * widgets::kGrid, 54 * widgets::kGrid);
    QVBoxLayout* column = widgets::columnOf(this);
    column->addWidget(buildChoice());
    Label4_ = make<QLabel>(u"Label4"_s);
    Label4_->setWordWrap(true);
    widgets::setTone(Label4_, widgets::Tone::Heading);
    column->addWidget(Label4_);
    // One page a state: the window keeps its size when the state changes.
    pages_ = new QStackedWidget(this);
    auto* choose = new QLabel(u"上のボタンで、取り込み方を選んでください。"_s, pages_);
    choose->setAlignment(Qt::AlignCenter);
    widgets::setTone(choose, widgets::Tone::Muted);
    pages_->addWidget(choose);
    pages_->addWidget(buildDates());
    pages_->addWidget(buildList());
    column->addWidget(pages_, 1);
    column->addLayout(buildButtons());
}

QWidget* frmSDatatorikomi::buildChoice() {
    Command1_ = make<QPushButton>(u"Command1"_s, u"新規取込ﾃﾞｰﾀ(&N)"_s);
    Command2_ = make<QPushButton>(u"Command2"_s, u"既存ﾃﾞｰﾀ読込(&R)"_s);
    auto* label1 = make<QLabel>(u"Label1"_s, u"新しい日付でデータを取り込みます。"_s);
    auto* label2 = make<QLabel>(u"Label2"_s, u"既存取込データの日付一覧から選択します。"_s);
    Command1_->setAccessibleDescription(label1->text());
    Command2_->setAccessibleDescription(label2->text());
    auto* card = new widgets::Card(this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * widgets::kGrid);
    grid->setVerticalSpacing(widgets::kGrid);
    grid->setColumnStretch(1, 1);
    grid->addWidget(Command1_, 0, 0);
    grid->addWidget(label1, 0, 1);
    grid->addWidget(Command2_, 1, 0);
    grid->addWidget(label2, 1, 1);
    card->body()->addLayout(grid);
    return card;
}

QWidget* frmSDatatorikomi::buildDates() {
    auto* page = new QWidget(pages_);
    QGridLayout* grid = widgets::fieldGrid();
    Text1_ = makeArray<QLineEdit, kFields>(u"Text1"_s, {});
    for (int i = 0; i < kFields; ++i) {
        QLineEdit* edit = Text1_[std::size_t(i)];
        widgets::typeDirectly(edit);
        QLabel* label = labelFor(u"Label3_%1"_s.arg(i), kFieldNames[std::size_t(i)] + u':', edit);
        widgets::addField(grid, label, edit);
    }
    grid->setColumnStretch(2, 1);  // a date needs no wide field
    if (side_ == Side::Jikkou) {
        QLineEdit* text = makeBonusText(0);
        const int row = grid->rowCount();
        grid->addWidget(Label5_[0], row, 0);
        grid->addWidget(text, row, 1, 1, 2);
    }
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(grid);
    column->addStretch(1);
    return page;
}

QWidget* frmSDatatorikomi::buildList() {
    auto* page = new QWidget(pages_);
    DataList1_ = make<widgets::CodeList>(u"DataList1"_s);
    DataList1_->setAccessibleName(u"取込データの基準日"_s);
    DataList1_->setPlaceholder(
        u"取り込んだデータはまだありません。\nキャンセルして、新規取込ﾃﾞｰﾀから始めてください。"_s);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(DataList1_, 1);
    if (side_ == Side::Jikkou) {
        auto* row = new QHBoxLayout;
        QLineEdit* text = makeBonusText(1);
        row->addWidget(Label5_[1]);
        row->addWidget(text, 1);
        column->addLayout(row);
    }
    return page;
}

QLineEdit* frmSDatatorikomi::makeBonusText(int index) {
    auto* text = Text2_[std::size_t(index)] = make<QLineEdit>(u"Text2_%1"_s.arg(index));
    text->setPlaceholderText(u"例：2026年冬季賞与（一覧表に印刷されます）"_s);
    Label5_[std::size_t(index)] = labelFor(u"Label5_%1"_s.arg(index), u"賞与の内容(&T):"_s, text);
    return text;
}

QLayout* frmSDatatorikomi::buildButtons() {
    Command4_ = makeArray<QPushButton, 2>(u"Command4"_s, {u"ﾃﾞｰﾀ取込(&I)"_s, u"ﾃﾞｰﾀ読込(&I)"_s});
    Command3_ = makeArray<QPushButton, 2>(u"Command3"_s, {u"キャンセル(&C)"_s, u"キャンセル(&C)"_s});
    Command7_ = make<QPushButton>(u"Command7"_s, u"削除(&D)"_s);
    Command6_ = make<QPushButton>(u"Command6"_s, u"閉じる(&C)"_s);
    Command5_ = make<QPushButton>(u"Command5"_s, u"ヘルプ(&H)"_s);
    for (QPushButton* button : Command4_) widgets::setPrimary(button);
    widgets::setDanger(Command7_);
    return widgets::buttonRow({Command5_, Command7_},
                              {Command6_, Command3_[0], Command3_[1], Command4_[0], Command4_[1]});
}

void frmSDatatorikomi::connectEvents() {
    connect(Command1_, &QPushButton::clicked, this, [this] { startNewDate(); });
    connect(Command2_, &QPushButton::clicked, this, [this] { startExistingDate(); });
    for (QPushButton* button : Command3_) connect(button, &QPushButton::clicked, this, [this] { cancel(); });
    connect(Command4_[0], &QPushButton::clicked, this, [this] { importNewDate(); });
    connect(Command4_[1], &QPushButton::clicked, this, [this] { loadExistingDate(); });
    connect(Command7_, &QPushButton::clicked, this, [this] { deleteDate(); });
    connect(Command6_, &QPushButton::clicked, this, [this] { reject(); });
    connect(Command5_, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    connect(DataList1_, &widgets::CodeList::opened, this, [this] { loadExistingDate(); });
    connect(DataList1_, &widgets::CodeList::chosen, this, [this] { showChosenText(); });
    if (side_ == Side::Jikkou) {
        validateOnLeave(Text2_[0], [this] { return checkBonusText(0); }, {Command3_[0], Command5_});
        validateOnLeave(Text2_[1], [this] { return storeChosenText(); }, {Command3_[1], Command5_});
    }
    for (int i = 0; i < kFields; ++i)
        validateOnLeave(Text1_[std::size_t(i)], [this, i] { return checkDate(i); },
                        {Command3_[0], Command5_});
}

// ---- the three states

void frmSDatatorikomi::setState(State state) {
    shinki_mode_ = state == State::NewDate;
    const bool opening = state == State::Opening;
    const bool existing = state == State::ExistingDate;
    Label4_->setText(shinki_mode_ ? kNewDateGuidance : kExistingDateGuidance);
    Label4_->setVisible(!opening);
    pages_->setCurrentIndex(int(state));
    Command1_->setEnabled(opening);
    Command2_->setEnabled(opening);
    Command3_[0]->setVisible(shinki_mode_);
    Command4_[0]->setVisible(shinki_mode_);
    Command3_[1]->setVisible(existing);
    Command4_[1]->setVisible(existing);
    Command7_->setVisible(existing);
    Command6_->setVisible(opening);
    setCancelButton(opening ? Command6_ : Command3_[existing ? 1 : 0]);
}

void frmSDatatorikomi::startNewDate() {
    for (QLineEdit* edit : Text1_) edit->clear();
    if (Text2_[0]) Text2_[0]->clear();
    setState(State::NewDate);
    Text1_[0]->setFocus();
}

void frmSDatatorikomi::startExistingDate() {
    forms::guarded(this, [this] {
        fillList();
        setState(State::ExistingDate);
        DataList1_->setFocus();
    });
}

void frmSDatatorikomi::cancel() {
    QPushButton* const origin = shinki_mode_ ? Command1_ : Command2_;
    setState(State::Opening);
    origin->setFocus();
}

void frmSDatatorikomi::fillList() {
    std::vector<widgets::CodeList::Item> items;
    for (QDate date : listDates(*house_.global.cn_main, side_))
        items.push_back({store::formatDate(date), store::formatDate(date)});
    DataList1_->setItems(items);
    showChosenText();
}

void frmSDatatorikomi::showChosenText() {
    if (!Text2_[1]) return;
    const QString date = DataList1_->boundText();
    Text2_[1]->setEnabled(!date.isEmpty());
    forms::guarded(this, [&] {
        Text2_[1]->setText(date.isEmpty() ? QString()
                                          : bonusTextOf(*house_.global.cn_main, store::requireDate(date)));
    });
}

bool frmSDatatorikomi::checkBonusText(int index) {
    return forms::check_field(this, Text2_[std::size_t(index)]->text(), kBonusTextBytes, true,
                              u"･･･賞与の内容"_s);
}

bool frmSDatatorikomi::storeChosenText() {
    if (DataList1_->boundText().isEmpty()) return true;
    if (!checkBonusText(1)) return false;
    return forms::guarded(this, [this] {
        store::Connection& cn = *house_.global.cn_main;
        const QDate kijunbi = store::requireDate(DataList1_->boundText());
        const QString text = Text2_[1]->text();
        if (text != bonusTextOf(cn, kijunbi)) storeBonusText(cn, kijunbi, text);
    });
}

// ---- the input rules

QString frmSDatatorikomi::duplicateProblem(QDate kijunbi) const {
    store::Connection& cn = *house_.global.cn_main;
    if (hasDate(cn, side_, kijunbi)) return u"基準日が重複しています。"_s;
    if (side_ == Side::Jikkou && hasDate(cn, Side::Sekkei, kijunbi))
        return u"賞与設計に同じ基準日が存在します。"_s;
    return {};
}

bool frmSDatatorikomi::checkDate(int index) {
    if (!shinki_mode_) return true;
    QLineEdit* edit = Text1_[std::size_t(index)];
    const QString label = u"･･･"_s + kFieldNames[std::size_t(index)];
    const std::optional<QDate> date = store::parseDate(edit->text());
    QString problem;
    if (edit->text().trimmed().isEmpty())
        problem = u"未入力は許されません。"_s + label;
    else if (!date)
        problem = u"日付の入力が正しくありません。"_s + label;
    else if (index == 0 && !forms::guarded(this, [&] { problem = duplicateProblem(*date); }))
        return false;
    if (!problem.isEmpty()) {
        forms::tell(this, problem, u"入力エラー"_s, forms::BoxIcon::Critical);
        edit->setFocus();
        widgets::select_all(edit);
        return false;
    }
    edit->setText(store::formatDate(*date));
    return true;
}

bool frmSDatatorikomi::checkAllDates() {
    for (int i = 0; i < kFields; ++i)
        if (!checkDate(i)) return false;
    return !Text2_[0] || checkBonusText(0);
}

QDate frmSDatatorikomi::requireChosenDate() {
    if (DataList1_->boundText().isEmpty()) {
        forms::tell(this, u"基準日を指定してください。"_s, u"基準日指定の確認"_s);
        DataList1_->setFocus();
        return {};
    }
    return store::requireDate(DataList1_->boundText());
}

// ---- the commands

void frmSDatatorikomi::setDates(const personnel::PositionDates& dates) {
    house_.global.kijunbi = store::formatDate(dates.kijunbi);
    house_.global.nenrei_kijunbi = store::formatDate(dates.nenrei_kijunbi);
    house_.global.kinzoku_kijunbi = store::formatDate(dates.kinzoku_kijunbi);
}

void frmSDatatorikomi::rebuildSnapshot(const personnel::PositionDates& dates) {
    setHourglass();
    setDates(dates);
    SelectIntoX(*house_.global.cn_main, dates);
}

void frmSDatatorikomi::importNewDate() {
    if (!checkAllDates()) return;
    store::Connection& cn = *house_.global.cn_main;
    forms::guarded(this, [&] {
        const personnel::PositionDates dates{store::requireDate(Text1_[0]->text()),
                                             store::requireDate(Text1_[1]->text()),
                                             store::requireDate(Text1_[2]->text())};
        std::optional<BusyLine> busy(std::in_place, Label4_, kImporting);
        rebuildSnapshot(dates);
        if (snapshotIsEmpty(cn)) {
            busy.reset();
            setDefaultPointer();
            forms::tell(this, kNobodyToImport, u"基準日指定の確認"_s, forms::BoxIcon::Warning);
            cancel();
            return;
        }
        store::Work work(cn, u"人事データの取込"_s);
        addDate(cn, side_, dates);
        if (Text2_[0]) storeBonusText(cn, dates.kijunbi, Text2_[0]->text());
        work.commit();
        leave(dates);
    });
}

void frmSDatatorikomi::loadExistingDate() {
    forms::guarded(this, [this] {
        const QDate kijunbi = requireChosenDate();
        if (!kijunbi.isValid()) return;
        if (!forms::ask(this, u"『%1』でデータを取り込みます。"_s.arg(store::formatDate(kijunbi)),
                        u"データ取込日の確認"_s))
            return;
        const auto dates = readDates(*house_.global.cn_main, side_, kijunbi);
        if (!dates) throw store::Error(store::Error::Reason::Type, u"現在のレコードがありません。"_s);
        const BusyLine busy(Label4_, kImporting);
        rebuildSnapshot(*dates);
        leave(*dates);
    });
}

bool frmSDatatorikomi::confirmContents(QDate kijunbi) {
    if (side_ != Side::Jikkou) return true;
    store::Connection& cn = *house_.global.cn_main;
    const DateContents contents = contentsOf(cn, kijunbi);
    if (contents.people == 0) return true;
    const QString text = bonusTextOf(cn, kijunbi);
    const QString question =
        u"%1%2 には、%3人分の割り当てと、支給額 合計 %4円があります。\n\n"
        "削除すると、この基準日の基礎額・係数・評価の入力、予算、計算の結果もすべて消え、\n"
        "賞与支給額の一覧表、入力状況のチェック、年間支給額の一覧表に出なくなります。\n"
        "元には戻せません。"_s;
    return forms::confirmLoss(
        this,
        question.arg(store::formatDate(kijunbi), text.isEmpty() ? text : u'（' + text + u'）',
                     store::formatGrouped(store::Money::fromYen(contents.people)),
                     store::formatGrouped(contents.total)),
        u"削除の確認"_s, u"すべて削除する(&D)"_s, u"削除しない(&N)"_s);
}

void frmSDatatorikomi::deleteDate() {
    store::Connection& cn = *house_.global.cn_main;
    forms::guarded(this, [&] {
        const QDate kijunbi = requireChosenDate();
        if (!kijunbi.isValid()) return;
        house_.global.kijunbi = store::formatDate(kijunbi);
        if (!forms::askLoss(this, u" %1 を削除しますか？"_s.arg(house_.global.kijunbi), u"削除の確認"_s))
            return;
        if (!confirmContents(kijunbi)) return;
        setHourglass();
        const BusyLine busy(Label4_, kDeleting);
        forms::keepOwnCopy(this, house_, u"基準日の削除の前"_s);
        store::Work work(cn, u"基準日の削除"_s);
        removeDate(cn, side_, kijunbi);
        work.commit();
        fillList();
        setState(State::ExistingDate);
        DataList1_->setFocus();
    });
}

void frmSDatatorikomi::leave(const personnel::PositionDates& dates) {
    shinki_mode_ = false;
    dateOpened_ = true;
    if (side_ == Side::Jikkou)
        house_.global.setRunPanel(u"配分実行基準日: "_s + store::formatLongDate(dates.kijunbi));
    accept();
}

int frmSDatatorikomi::exec() {
    dateOpened_ = false;
    const int result = Form::exec();
    if (dateOpened_ && side_ == Side::Jikkou) showRunMenu();
    return result;
}

void frmSDatatorikomi::showRunMenu() {
    const QString name = u"frmMenuSJikkou"_s;
    if (!house_.screens.has(name)) return;
    if (auto* opener = qobject_cast<widgets::Form*>(parentWidget()))
        opener->showChild(house_.screens.create(name, house_, opener));
    else
        std::unique_ptr<QDialog>(house_.screens.create(name, house_, parentWidget()))->exec();
}

}  // namespace prep
