#include "company/frmKaisyaShinki.h"

#include <QCheckBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "company/company_files.h"
#include "company/frmPassword.h"
#include "company/master_templates.h"
#include "company/profile_fields.h"
#include "company/ui_company_opening.h"
#include "forms/box.h"
#include "forms/field_check.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "schema/catalog.h"
#include "store/date_text.h"
#include "widgets/code_list.h"
#include "widgets/key_filter.h"
#include "widgets/layout.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kTitle = u"新規作成の確認"_s;

struct StepText {
    QString name, guide;
};
const std::array<StepText, 8> kSteps = {{
    {u"会社の名前"_s,
     u"会社の一覧に出る名前です。フォルダとファイルの名前にもなり、あとから変えられません。"_s},
    {u"会社の情報"_s, u"印刷物に出る会社名と所在地です。あとから「会社情報」で変えられます。"_s},
    {u"自由項目の名前"_s,
     u"会社で独自に使う項目に名前をつけます。使わないものは空けておきます。あとから「会社情報」で変えられます。"_s},
    {u"入力する項目"_s,
     u"印をはずした項目は、登録の画面で入力しません。あとから「入力項目設定」で変えられます。"_s},
    {u"コード表"_s,
     u"印をつけたコード表に、よく使われる内容を入れておきます。★は社員を登録する前に必要です。"_s},
    {u"関連するファイル"_s,
     u"ほかのプログラムと一緒に使うファイルです。使わないときは、はずしておきます。"_s},
    {u"パスワード"_s,
     u"会社を開くときに聞かれます。いらないときは空けておきます。あとから「パスワードの設定」で変えられます。"_s},
    {u"確認"_s, u"この内容で会社を作成します。"_s},
}};

/// The names of 入力可・不可テーブル's columns in an office.
QString itemCaption(const QString& column) {
    if (column == u"tel") return u"電話番号"_s;
    if (column == u"fax") return u"fax番号"_s;
    return column;
}

/// Which part of the records the columns steer, by the first of them.
struct ItemGroup {
    QString caption;
    int from, to;
};
const std::array<ItemGroup, 4> kItemGroups = {
    {{u"社員"_s, 0, 15}, {u"異動履歴"_s, 15, 19}, {u"家族"_s, 19, 25}, {u"資格・免許"_s, 25, 26}}};

QLabel* heading(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    widgets::setTone(label, widgets::Tone::Heading);
    return label;
}

}  // namespace

frmKaisyaShinki::frmKaisyaShinki(forms::House& house, QWidget* parent)
    : Form(u"frmKaisyaShinki"_s, u"新規作成"_s, parent), house_(house) {
    static_assert(kSteps.size() == Steps);
    list1_ = make<widgets::CodeList>(u"List1"_s);
    list1_->setAccessibleName(u"作成の手順"_s);
    std::vector<widgets::CodeList::Item> steps;
    for (std::size_t i = 0; i < kSteps.size(); ++i)
        steps.push_back({QString::number(i), u"%1　%2"_s.arg(i + 1).arg(kSteps[i].name)});
    list1_->setItems(steps);
    int widest = 0;
    for (const auto& step : steps) widest = std::max(widest, fontMetrics().horizontalAdvance(step.text));
    list1_->setMinimumSize(widest + 4 * widgets::kGrid, 40 * widgets::kGrid);
    title_ = make<QLabel>(u"Label1"_s);
    guide_ = make<QLabel>(u"Label2"_s);
    guide_->setWordWrap(true);
    pages_ = new QStackedWidget(this);
    pages_->setMinimumWidth(84 * widgets::kGrid);
    for (QWidget* page : {makeName(), makeProfile(0, kFreeNames), makeAttributes(), makeItems(),
                          makeMasters(), makeFiles(), makePassword(), makeConfirm()})
        pages_->addWidget(page);
    back_ = make<QPushButton>(u"Command1"_s, u"< 戻る(&B)"_s);
    next_ = make<QPushButton>(u"Command2"_s, u"次へ(&N) >"_s);
    create_ = make<QPushButton>(u"Command3"_s, u"作成(&S)"_s);
    widgets::setPrimary(create_);
    auto* cancel = make<QPushButton>(u"Command4"_s, u"キャンセル(&C)"_s);
    setCancelButton(cancel);
    auto* help = make<QPushButton>(u"Command5"_s, u"ヘルプ(&H)"_s);
    auto* right = new QVBoxLayout;
    right->setSpacing(2 * widgets::kGrid);
    right->addLayout(widgets::headerBlock(title_, guide_));
    right->addWidget(pages_, 1);
    auto* middle = new QHBoxLayout;
    middle->setSpacing(3 * widgets::kGrid);
    middle->addWidget(list1_);
    middle->addLayout(right, 1);
    auto* column = widgets::columnOf(this);
    column->addLayout(middle, 1);
    column->addLayout(widgets::buttonRow({help}, {cancel, back_, next_, create_}));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    connectEvents();
    go(Name);
}

// ---- The steps

QWidget* frmKaisyaShinki::makeName() {
    auto* page = new QWidget(this);
    name_ = make<QLineEdit>(u"Text1"_s);
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, labelFor(u"Label3"_s, u"会社の名前(&A):"_s, name_), name_);
    auto* note = new QLabel(u"例　青空工業\n\\ / : * ? \" < > | ' は使えません。"_s, page);
    widgets::setTone(note, widgets::Tone::Muted);
    widgets::addField(fields, nullptr, note);
    auto* former = make<QPushButton>(u"Command6"_s, u"前の形式（mdb）の会社から引っ越し(&M)..."_s);
    former->setEnabled(house_.screens.has(u"frmHikkosi"_s));
    auto* column = new QVBoxLayout(page);
    column->addLayout(fields);
    column->addStretch(1);
    column->addWidget(former, 0, Qt::AlignLeft);
    connect(former, &QPushButton::clicked, this, [this] {
        if (showChild(house_.screens.create(u"frmHikkosi"_s, house_, this)) == Accepted) reject();
    });
    return page;
}

QWidget* frmKaisyaShinki::makeProfile(int from, int to) {
    auto* page = new QWidget(this);
    auto* fields = widgets::fieldGrid();
    for (int i = from; i < to; ++i) {
        const ProfileField& field = kProfileFields[std::size_t(i)];
        auto* edit = profile_[std::size_t(i)] = make<QLineEdit>(u"txtFields_%1"_s.arg(i));
        if (field.column == u"郵便番号" || field.column == u"tel" || field.column == u"fax")
            widgets::typeDirectly(edit);
        widgets::addField(fields, labelFor(u"lblLabels_%1"_s.arg(i), field.column + u':', edit), edit);
    }
    auto* column = new QVBoxLayout(page);
    column->addLayout(fields);
    column->addStretch(1);
    return page;
}

QWidget* frmKaisyaShinki::makeAttributes() {
    return makeProfile(kFreeNames, int(kProfileFields.size()));
}

QWidget* frmKaisyaShinki::makeItems() {
    auto* page = new QWidget(this);
    const schema::Table& table =
        schema::tableNamed(QString::fromUtf16(schema::tables::入力可不可テーブル::kName));
    auto* grid = new QGridLayout(page);
    grid->setVerticalSpacing(widgets::kGrid / 2);
    constexpr int kColumns = 4;
    int row = 0;
    for (const ItemGroup& group : kItemGroups) {
        grid->addWidget(heading(group.caption, page), row++, 0, 1, kColumns);
        for (int i = group.from; i < group.to; ++i) {
            const QString column = table.columns[std::size_t(i)].name;
            auto* box = make<QCheckBox>(u"Check1_%1"_s.arg(i), itemCaption(column));
            box->setChecked(true);
            items_.push_back(box);
            const int at = i - group.from;
            grid->addWidget(box, row + at / kColumns, at % kColumns);
        }
        row += (group.to - group.from + kColumns - 1) / kColumns;
    }
    grid->setRowStretch(row, 1);
    return page;
}

QWidget* frmKaisyaShinki::makeMasters() {
    auto* page = new QWidget(this);
    auto* boxes = new QVBoxLayout;
    boxes->setSpacing(widgets::kGrid / 2);
    for (const MasterTemplate& master : masterTemplates()) {
        QStringList first;
        for (std::size_t i = 0; i < master.rows.size() && i < 3; ++i) first << master.rows[i].name;
        const int at = int(masters_.size());
        auto* box = make<QCheckBox>(u"Check2_%1"_s.arg(at),
                                    (master.required ? u"★"_s : QString()) + master.caption + u"　（"_s +
                                        first.join(u'、') + u"など%1件）"_s.arg(master.rows.size()));
        box->setChecked(true);
        masters_.push_back(box);
        boxes->addWidget(box);
    }
    since_ = make<QLineEdit>(u"Text2"_s, u"1970/4/1"_s);
    widgets::typeDirectly(since_);
    since_->setMaximumWidth(20 * widgets::kGrid);
    auto* note = new QLabel(u"この日より前の異動には、その内容を選べません。"_s, page);
    widgets::setTone(note, widgets::Tone::Muted);
    auto* date = new QHBoxLayout;
    date->setSpacing(2 * widgets::kGrid);
    for (QWidget* shown :
         std::initializer_list<QWidget*>{labelFor(u"Label4"_s, u"設定年月日(&D):"_s, since_), since_, note})
        date->addWidget(shown);
    date->addStretch(1);
    auto* column = new QVBoxLayout(page);
    column->setSpacing(2 * widgets::kGrid);
    column->addLayout(boxes);
    column->addLayout(date);
    column->addStretch(1);
    return page;
}

QWidget* frmKaisyaShinki::makeFiles() {
    auto* page = new QWidget(this);
    files_ = makeArray<QCheckBox, 3>(u"Check3"_s, {u"賃金db　賃金の設計プログラムのファイル(&T)"_s,
                                                   u"評価db　人事評価のプログラムのファイル(&E)"_s,
                                                   u"Hydcdb・Compdb　そのほかのプログラムのファイル(&O)"_s});
    files_[2]->setChecked(true);  // without them the compaction of a company ends with two failures
    auto* column = new QVBoxLayout(page);
    for (QCheckBox* box : files_) column->addWidget(box);
    auto* note = new QLabel(u"基本db（社員）と賞与db（賞与）は必ず作成されます。"_s, page);
    widgets::setTone(note, widgets::Tone::Muted);
    column->addWidget(note);
    column->addStretch(1);
    return page;
}

QWidget* frmKaisyaShinki::makePassword() {
    auto* page = new QWidget(this);
    password_ = makeHidden(make<QLineEdit>(u"Text3"_s));
    again_ = makeHidden(make<QLineEdit>(u"Text4"_s));
    lock_ = make<QCheckBox>(u"Check4"_s, u"ファイルも暗号化する(&E)"_s);
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, labelFor(u"Label5"_s, u"パスワード（8文字以上）(&P):"_s, password_), password_);
    widgets::addField(fields, labelFor(u"Label6"_s, u"パスワードをもう一度(&A):"_s, again_), again_);
    auto* note = new QLabel(kAboutLock, page);
    note->setWordWrap(true);
    widgets::setTone(note, widgets::Tone::Muted);
    auto* column = new QVBoxLayout(page);
    column->addLayout(fields);
    column->addWidget(lock_);
    column->addWidget(note);
    column->addStretch(1);
    return page;
}

QWidget* frmKaisyaShinki::makeConfirm() {
    auto* page = new QWidget(this);
    told_ = make<QLabel>(u"lblTold"_s);
    told_->setWordWrap(true);
    told_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* column = new QVBoxLayout(page);
    column->addWidget(told_, 1);
    return page;
}

void frmKaisyaShinki::connectEvents() {
    connect(list1_, &widgets::CodeList::chosen, this, [this] { go(list1_->row()); });
    connect(back_, &QPushButton::clicked, this, [this] { go(pages_->currentIndex() - 1); });
    connect(next_, &QPushButton::clicked, this, [this] { go(pages_->currentIndex() + 1); });
    connect(create_, &QPushButton::clicked, this, [this] { Command3_Click(); });
}

// ---- From step to step

/// Back at once; onwards only past steps that hold.
void frmKaisyaShinki::go(int step) {
    const bool first = list1_->row() < 0;
    int reached = first ? step : pages_->currentIndex();
    while (reached < step && passes(reached)) ++reached;
    if (step < reached) reached = step;
    if (reached > Name && profile_[0]->text().isEmpty()) profile_[0]->setText(name_->text());
    if (reached == Confirm) told_->setText(toldChoices());
    pages_->setCurrentIndex(reached);
    const QSignalBlocker quiet(list1_);
    list1_->choose(reached);
    title_->setText(kSteps[std::size_t(reached)].name);
    guide_->setText(kSteps[std::size_t(reached)].guide);
    back_->setEnabled(reached > Name);
    next_->setVisible(reached < Confirm);
    create_->setVisible(reached == Confirm);
    QWidget* firstOf[] = {name_,     profile_[0], profile_[kFreeNames], items_[0], masters_[0], files_[0],
                          password_, create_};
    if (reached == step) firstOf[reached]->setFocus();
}

bool frmKaisyaShinki::passes(int step) {
    switch (step) {
        case Name:
            return checkName();
        case Profile:
            return checkProfile(0, kFreeNames);
        case Attributes:
            return checkProfile(kFreeNames, int(kProfileFields.size()));
        case Masters:
            return checkSince();
        case Password:
            return checkPassword();
        default:
            return true;
    }
}

bool frmKaisyaShinki::checkName() {
    QString fault = companyNameFault(name_->text());
    if (fault.isEmpty()) {
        // Where a file system tells no upper case from lower case, neither may the list.
        const QStringList names =
            QDir(house_.global.dataDir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        if (names.contains(name_->text(), Qt::CaseInsensitive))
            fault = u"『%1』はすでにあります。別の名前を入力してください。"_s.arg(name_->text());
    }
    if (fault.isEmpty()) return true;
    forms::tell(this, fault, u"入力エラー"_s, forms::BoxIcon::Critical);
    name_->setFocus();
    return false;
}

bool frmKaisyaShinki::checkProfile(int from, int to) {
    for (int i = from; i < to; ++i) {
        auto* edit = profile_[std::size_t(i)];
        const ProfileField& field = kProfileFields[std::size_t(i)];
        bool holds = forms::check_field(this, edit->text(), field.bytes, true, field.label);
        if (holds && i == 0 && edit->text() == forms::kNoCompanyPrompt) {
            forms::tell(this, u"「%1」は会社名に使用できません。 ･･･会社名"_s.arg(edit->text()),
                        u"入力エラー"_s, forms::BoxIcon::Critical);
            holds = false;
        }
        if (holds) continue;
        edit->setFocus();
        return false;
    }
    return true;
}

bool frmKaisyaShinki::checkSince() {
    if (store::parseDate(since_->text())) return true;
    forms::tell(this, u"日付の形式が正しくありません。 ･･･設定年月日"_s, u"入力エラー"_s,
                forms::BoxIcon::Critical);
    since_->setFocus();
    return false;
}

bool frmKaisyaShinki::checkPassword() {
    QString fault;
    if (!password_->text().isEmpty() || !again_->text().isEmpty())
        fault = newPasswordFault(password_->text(), again_->text());
    else if (lock_->isChecked())
        fault = u"ファイルを暗号化するときは、パスワードを入力してください。"_s;
    if (fault.isEmpty()) return true;
    forms::tell(this, fault, u"入力エラー"_s, forms::BoxIcon::Critical);
    password_->setFocus();
    return false;
}

bool frmKaisyaShinki::makeOwnKey(NewCompany& made) {
    if (!lock_->isChecked()) return true;
    made.ownKey.emplace(made.password);
    return showChild(new frmFukkyuKey(this, made.name, made.ownKey->recoveryCode())) == Accepted;
}

// ---- What was chosen

NewCompany frmKaisyaShinki::choices() const {
    NewCompany made{.name = name_->text()};
    made.companions = {files_[0]->isChecked(), files_[1]->isChecked(), files_[2]->isChecked()};
    for (const QLineEdit* edit : profile_) made.profile << edit->text();
    const schema::Table& items =
        schema::tableNamed(QString::fromUtf16(schema::tables::入力可不可テーブル::kName));
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (!items_[i]->isChecked()) made.unusedItems << items.columns[i].name;
    for (std::size_t i = 0; i < masters_.size(); ++i)
        if (masters_[i]->isChecked()) made.masters << masterTemplates()[i].table;
    made.password = password_->text();
    made.since = store::parseDate(since_->text()).value_or(QDate());
    return made;
}

QString frmKaisyaShinki::toldChoices() const {
    const NewCompany made = choices();
    const auto orNone = [](const QStringList& names) {
        return names.isEmpty() ? u"なし"_s : names.join(u'、');
    };
    QStringList attributes, masters, unused, files{u"基本db"_s, u"賞与db"_s};
    for (int i = kFreeNames; i < int(kProfileFields.size()); ++i)
        if (!made.profile[i].isEmpty()) attributes << made.profile[i];
    for (const MasterTemplate& master : masterTemplates())
        if (made.masters.contains(master.table)) masters << master.caption;
    for (const QString& column : made.unusedItems) unused << itemCaption(column);
    if (made.companions.chingin) files << u"賃金db"_s;
    if (made.companions.hyouka) files << u"評価db"_s;
    if (made.companions.others) files << u"Hydcdb"_s << u"Compdb"_s;
    return u"会社の名前　　%1\n会社名　　　　%2\n\n自由項目　　　%3\n\n入力しない項目　%4\n\n内容を入れるコード表　%5\n\nファイル　　　%6\n\nパスワード　　%7"_s
        .arg(made.name, made.profile[0], orNone(attributes), orNone(unused), orNone(masters),
             files.join(u'、'),
             made.password.isEmpty() ? u"なし"_s
             : lock_->isChecked()    ? u"あり（ファイルも暗号化する）"_s
                                     : u"あり"_s);
}

void frmKaisyaShinki::Command3_Click() {
    for (int step = Name; step < Confirm; ++step) {
        if (passes(step)) continue;
        return go(step);
    }
    auto& global = house_.global;
    letGoOfUnopened(house_);
    if (global.cn_main && !forms::ask(this,
                                      u"『%1』を作成して開きます。\nいま開いている『%2』は閉じます。"_s.arg(
                                          name_->text(), global.panels.company),
                                      kTitle))
        return;
    bool created = false;
    forms::guarded(this, [&] {
        setHourglass();
        NewCompany made = choices();
        if (!makeOwnKey(made)) return;
        setHourglass();
        createCompany(global.dataDir(), made);
        created = true;
        if (global.cn_main) closeForHouse(house_, this);
        opened_ = openForHouse(house_, this, made.name, true);
    });
    if (created) accept();
}

int frmKaisyaShinki::exec() {
    const int result = Form::exec();
    if (opened_) showCompanyMenu(house_, this);
    return result;
}

}  // namespace company
