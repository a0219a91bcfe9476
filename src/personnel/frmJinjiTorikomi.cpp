#include "personnel/frmJinjiTorikomi.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

#include "forms/box.h"
#include "forms/own_copy.h"
#include "personnel/code_change.h"
#include "reports/ui_save_dialog.h"
#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace personnel {
namespace {

using namespace Qt::StringLiterals;
using Outcome = ImportRow::Outcome;

const QString kTitle = u"社員・異動の取込"_s;

QString outcomeText(Outcome outcome) {
    switch (outcome) {
        case Outcome::Add:
            return u"追加"_s;
        case Outcome::Update:
            return u"更新"_s;
        case Outcome::Refused:
            return u"取込不可"_s;
    }
    Q_UNREACHABLE();
}

QString cellText(const ImportRow& shown, int column) {
    switch (column) {
        case 0:
            return QString::number(shown.line);
        case 1:
            return shown.code;
        case 2:
            return shown.subject;
        case 3:
            return outcomeText(shown.outcome);
        default:
            return shown.reasons.join(u'　');
    }
}

}  // namespace

frmJinjiTorikomi::frmJinjiTorikomi(forms::House& house, QWidget* parent)
    : Form(u"frmJinjiTorikomi"_s, kTitle, parent), house_(house) {
    setMinimumSize(112 * widgets::kGrid, 70 * widgets::kGrid);
    auto* title = make<QLabel>(u"lblTitle"_s, kTitle);
    auto* purpose = make<QLabel>(
        u"lblPurpose"_s,
        u"CSVファイルから、社員か異動履歴をまとめて登録します。取り込めない行が一つでもあるときは、何も登録しません。"_s);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, purpose));
    column->addWidget(makeKind());
    column->addWidget(makePreview(), 1);
    column->addLayout(makeButtons());
    connectEvents();
    dropSheet();
    kindChosen();
    option_[0]->setFocus();
}

// ---- The screen's parts

QWidget* frmJinjiTorikomi::makeKind() {
    auto* card = new widgets::Card(this);
    option_ = makeArray<QRadioButton, 2>(u"Option1"_s, {u"社員(&S)"_s, u"異動履歴(&I)"_s});
    option_[0]->setChecked(true);
    command1_ = make<QPushButton>(u"Command1"_s, u"ひな形を保存(&T)..."_s);
    command2_ = make<QPushButton>(u"Command2"_s, u"ファイルを選ぶ(&O)..."_s);
    update_ = make<QCheckBox>(u"Check1"_s);
    file_ = make<QLabel>(u"lblFile"_s);
    file_->setWordWrap(true);
    widgets::setTone(file_, widgets::Tone::Muted);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * widgets::kGrid);
    for (QWidget* part : std::initializer_list<QWidget*>{option_[0], option_[1]}) row->addWidget(part);
    row->addStretch(1);
    for (QWidget* part : std::initializer_list<QWidget*>{command1_, command2_}) row->addWidget(part);
    card->body()->addLayout(row);
    card->body()->addWidget(update_);
    card->body()->addWidget(file_);
    return card;
}

QWidget* frmJinjiTorikomi::makePreview() {
    auto* part = new QWidget(this);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(widgets::kGrid);
    counts_ = make<QLabel>(u"lblCounts"_s);
    widgets::setTone(counts_, widgets::Tone::Heading);
    refusedOnly_ = make<QCheckBox>(u"Check2"_s, u"取り込めない行だけを表示(&E)"_s);
    auto* head = new QHBoxLayout;
    head->addWidget(counts_, 1);
    head->addWidget(refusedOnly_);
    column->addLayout(head);
    table_ = make<widgets::Table>(u"DataGrid1"_s);
    table_->setAccessibleName(u"取り込む行"_s);
    table_->setPlaceholder(
        u"ひな形に入力したCSVファイルを選んでください。\n登録する前に、ここで確かめられます。"_s);
    column->addWidget(table_, 1);
    return part;
}

QLayout* frmJinjiTorikomi::makeButtons() {
    auto* help = make<QPushButton>(u"Command5"_s, u"ヘルプ(&H)"_s);
    auto* close = make<QPushButton>(u"Command4"_s, u"閉じる(&B)"_s);
    command3_ = make<QPushButton>(u"Command3"_s, u"取込(&K)"_s);
    widgets::setPrimary(command3_);
    setCancelButton(close);
    connect(close, &QPushButton::clicked, this, [this] { reject(); });
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    return widgets::buttonRow({help}, {close, command3_});
}

void frmJinjiTorikomi::connectEvents() {
    connect(command1_, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(command2_, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(command3_, &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(option_[0], &QRadioButton::toggled, this, [this] { kindChosen(); });
    connect(update_, &QCheckBox::toggled, this, [this] { judge(); });
    connect(refusedOnly_, &QCheckBox::toggled, this, [this] { showPlan(); });
}

// ---- The sheet

ImportKind frmJinjiTorikomi::kind() const {
    return option_[0]->isChecked() ? ImportKind::Employees : ImportKind::Transfers;
}

void frmJinjiTorikomi::kindChosen() {
    const bool employees = kind() == ImportKind::Employees;
    update_->setText(employees ? u"すでに登録されている社員の内容も更新する(&U)"_s
                               : u"すでに登録されている異動日の内容も更新する(&U)"_s);
    auto* former = model_;
    model_ = new widgets::RowsModel({{u"行"_s, true},
                                     {u"社員Code"_s},
                                     {employees ? u"氏名"_s : u"異動日"_s},
                                     {u"結果"_s},
                                     {u"取り込めない理由・確認すること"_s}},
                                    this);
    table_->setModel(model_);
    delete former;
    judge();
}

void frmJinjiTorikomi::load(const QString& path) {
    dropSheet();
    forms::guarded(this, [&] {
        setHourglass();
        sheet_ = readImportFile(path);
        path_ = path;
    });
    judge();
}

void frmJinjiTorikomi::judge() {
    plan_.reset();
    if (!sheet_.empty() && !forms::guarded(this, [this] {
            setHourglass();
            plan_ = std::make_shared<const ImportPlan>(
                planImport(cn(), kind(), sheet_, {update_->isChecked(), house_.global.clock()}));
            const QSignalBlocker quiet(refusedOnly_);
            refusedOnly_->setChecked(plan_->count(Outcome::Refused) > 0);
        }))
        dropSheet();
    showPlan();
}

void frmJinjiTorikomi::dropSheet() {
    sheet_.clear();
    path_.clear();
    plan_.reset();
    if (model_) showPlan();
}

// ---- The preview

void frmJinjiTorikomi::showPlan() {
    const auto count = [this](Outcome outcome) { return plan_ ? plan_->count(outcome) : 0; };
    const int refused = count(Outcome::Refused);
    std::vector<std::size_t> shown;
    if (plan_)
        for (std::size_t i = 0; i < plan_->rows.size(); ++i)
            if (!refusedOnly_->isChecked() || plan_->rows[i].outcome == Outcome::Refused) shown.push_back(i);
    const int rows = static_cast<int>(shown.size());
    // The table keeps the plan that it shows, whatever becomes of the screen's.
    model_->setRows(rows, [plan = plan_, shown = std::move(shown)](int row, int column) {
        return cellText(plan->rows[shown[static_cast<std::size_t>(row)]], column);
    });
    counts_->setText(u"追加： %1 件　更新： %2 件　取り込めない行： %3 件"_s.arg(count(Outcome::Add))
                         .arg(count(Outcome::Update))
                         .arg(refused));
    widgets::setTone(counts_, refused > 0 ? widgets::Tone::Warning : widgets::Tone::Heading);
    refusedOnly_->setEnabled(refused > 0);
    command3_->setEnabled(plan_ && plan_->mayRun());
    QString told = path_.isEmpty() ? u"ファイルはまだ選ばれていません。"_s : QFileInfo(path_).fileName();
    if (plan_ && !plan_->ignored.isEmpty())
        told += u"　（取り込まない見出し： %1）"_s.arg(plan_->ignored.join(u'、'));
    file_->setText(told);
}

// ---- The commands

void frmJinjiTorikomi::saveTemplate(const QString& path) {
    forms::guarded(this, [&] {
        QSaveFile file(path);
        const QByteArray content = importTemplate(cn(), kind());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
            throw store::Error(store::Error::Reason::ReadOnly, u"ファイルを保存できません。"_s);
    });
}

void frmJinjiTorikomi::Command1_Click() {
    const QString name = kind() == ImportKind::Employees ? u"社員の取込"_s : u"異動履歴の取込"_s;
    const QString path =
        reports::askWhereToSave(this, {u"ひな形を保存"_s, u"CSV ファイル (*.csv)"_s, u"csv"_s}, name);
    if (!path.isEmpty()) saveTemplate(path);
}

void frmJinjiTorikomi::Command2_Click() {
    const QString folder = path_.isEmpty()
                               ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                               : QFileInfo(path_).path();
    const QString path = QFileDialog::getOpenFileName(this, u"取り込むファイル"_s, folder,
                                                      u"CSV ファイル (*.csv *.txt);;すべてのファイル (*)"_s);
    if (!path.isEmpty()) load(path);
}

void frmJinjiTorikomi::Command3_Click() {
    const int added = plan_->count(Outcome::Add);
    const int updated = plan_->count(Outcome::Update);
    const auto renamed = std::count_if(plan_->rows.begin(), plan_->rows.end(),
                                       [](const ImportRow& row) { return !row.reasons.isEmpty(); });
    QString question = u"%1 件を追加し、%2 件を更新します。\n"_s.arg(added).arg(updated);
    if (renamed > 0)
        question += u"氏名の変わる社員が %1 人います。社員Codeを確かめてください。\n"_s.arg(renamed);
    question += u"よろしいですか。"_s;
    const QString title = u"取込の確認"_s;
    const bool meant = updated > 0 ? forms::confirmLoss(this, question, title, u"更新して取り込む(&D)"_s,
                                                        u"取り込まない(&B)"_s)
                                   : forms::ask(this, question, title);
    if (!meant) return;
    const bool done = forms::guarded(this, [&] {
        setHourglass();
        forms::keepOwnCopy(this, house_, u"取込の前"_s);
        // Rows that a change cut off left under a code must not fall to somebody new.
        if (kind() == ImportKind::Employees && added > 0)
            settleChange({cn(), house_.global.dataDir(), house_.global.panels.folder});
        store::Work work(cn(), kTitle);
        runImport(cn(), *plan_);
        work.commit();
    });
    if (!done) return;
    QString told = u"取込が終了しました。"_s;
    if (kind() == ImportKind::Employees && added > 0)
        told += u"\n\n追加した社員は、異動履歴を登録すると基準日ごとの一覧に出るようになります。"_s;
    forms::tell(this, told, u"処理終了確認"_s, forms::BoxIcon::Information);
    dropSheet();
    command2_->setFocus();
}

}  // namespace personnel
