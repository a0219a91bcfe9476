#include "company/frmHikkosi.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include "company/company_files.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/progress.h"
#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kTitle = u"引っ越しの確認"_s;

/// Lines of the table: notes about whole files, then the tables, each with its notes.
struct Line {
    QString file, table, found, carried, note;
};
std::vector<Line> linesOf(const Migration& plan) {
    std::vector<Line> lines;
    for (const QString& note : plan.notes) lines.push_back({{}, {}, {}, {}, note});
    for (const MovedTable& moved : plan.tables)
        lines.push_back({moved.file, moved.name, u"%L1"_s.arg(moved.found), u"%L1"_s.arg(moved.rows.size()),
                         moved.notes.join(u'　')});
    return lines;
}

}  // namespace

frmHikkosi::frmHikkosi(forms::House& house, QWidget* parent)
    : Form(u"frmHikkosi"_s, u"引っ越し"_s, parent), house_(house) {
    setMinimumSize(112 * widgets::kGrid, 66 * widgets::kGrid);
    build();
    showPlan();
}

void frmHikkosi::build() {
    auto* title = make<QLabel>(u"Label1"_s, u"引っ越し"_s);
    auto* guide = make<QLabel>(
        u"Label2"_s,
        u"前の形式（mdb）の会社のフォルダを読み取り、新しい会社を作ります。元のファイルは変わりません。作成する前に、引き継ぐ件数と、引き継げないものを確かめられます。"_s);
    auto* choose = make<QPushButton>(u"Command1"_s, u"フォルダを選ぶ(&O)..."_s);
    folder_ = make<QLabel>(u"lblFolder"_s);
    folder_->setWordWrap(true);
    widgets::setTone(folder_, widgets::Tone::Muted);
    counts_ = make<QLabel>(u"lblCounts"_s);
    counts_->setWordWrap(true);
    table_ = make<widgets::Table>(u"DataGrid1"_s);
    table_->setAccessibleName(u"引き継ぐテーブル"_s);
    table_->setPlaceholder(u"前の会社のフォルダを選んでください。"_s);
    rows_ = new widgets::RowsModel({{u"ファイル"_s},
                                    {u"テーブル"_s},
                                    {u"元の件数"_s, true},
                                    {u"引き継ぐ件数"_s, true},
                                    {u"引き継げないもの・確かめること"_s}},
                                   this);
    table_->setModel(rows_);
    name_ = make<QLineEdit>(u"Text1"_s);
    auto* label = labelFor(u"Label3"_s, u"新しい会社の名前(&N):"_s, name_);
    start_ = make<QPushButton>(u"Command2"_s, u"引っ越し(&S)"_s);
    widgets::setPrimary(start_);
    auto* close = make<QPushButton>(u"Command3"_s, u"閉じる(&B)"_s);
    setCancelButton(close);
    auto* help = make<QPushButton>(u"Command4"_s, u"ヘルプ(&H)"_s);
    auto* top = new QHBoxLayout;
    top->setSpacing(2 * widgets::kGrid);
    top->addWidget(choose);
    top->addWidget(folder_, 1);
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, label, name_);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(title, guide));
    column->addLayout(top);
    column->addWidget(counts_);
    column->addWidget(table_, 1);
    column->addLayout(fields);
    column->addLayout(widgets::buttonRow({help}, {close, start_}));
    connect(choose, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(start_, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    choose->setFocus();
}

void frmHikkosi::Command1_Click() {
    const QString from =
        plan_ ? plan_->folder : QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString folder = QFileDialog::getExistingDirectory(this, u"前の会社のフォルダ"_s, from);
    if (!folder.isEmpty()) load(folder);
}

void frmHikkosi::load(const QString& folder) {
    plan_.reset();
    forms::guarded(this, [&] {
        setHourglass();
        forms::ProgressBox progress(this, u"読み取っています。"_s);
        if (auto plan = planMigration(QDir::cleanPath(folder), progress.step()))
            plan_ = std::make_shared<const Migration>(std::move(*plan));
    });
    name_->setText(plan_ ? plan_->company : QString());
    showPlan();
}

void frmHikkosi::showPlan() {
    std::vector<Line> lines;
    if (plan_) lines = linesOf(*plan_);
    const int count = int(lines.size());
    rows_->setRows(count, [lines = std::move(lines)](int row, int column) {
        const Line& line = lines[std::size_t(row)];
        const QString* cells[] = {&line.file, &line.table, &line.found, &line.carried, &line.note};
        return *cells[column];
    });
    folder_->setText(plan_ ? QDir::toNativeSeparators(plan_->folder) : u"フォルダはまだ選ばれていません。"_s);
    const bool loses = plan_ && plan_->loses();
    counts_->setText(
        !plan_ ? QString()
        : loses
            ? u"%L1件を引き継ぎます。引き継げないものがあります。表で確かめてください。"_s.arg(plan_->rows())
            : u"%L1件を、すべて引き継ぎます。"_s.arg(plan_->rows()));
    widgets::setTone(counts_, loses ? widgets::Tone::Warning : widgets::Tone::Heading);
    for (QWidget* part : std::initializer_list<QWidget*>{name_, start_}) part->setEnabled(plan_ != nullptr);
}

void frmHikkosi::Command2_Click() {
    const QString name = name_->text();
    if (const QString fault = companyNameFault(name); !fault.isEmpty()) {
        forms::tell(this, fault, u"入力エラー"_s, forms::BoxIcon::Critical);
        name_->setFocus();
        return;
    }
    const QString question = u"『%1』を作成し、%L2件を引き継ぎます。"_s.arg(name).arg(plan_->rows());
    const bool meant = plan_->loses()
                           ? forms::confirmLoss(this, question + u"\n表に出ているものは引き継がれません。"_s,
                                                kTitle, u"引き継いで作成する(&C)"_s, u"作成しない(&B)"_s)
                           : forms::ask(this, question, kTitle);
    if (!meant) return;
    const bool done = forms::guarded(this, [&] {
        setHourglass();
        migrate(*plan_, house_.global.dataDir(), name);
    });
    if (!done) return;
    forms::tell(
        this,
        u"『%1』を作成しました。件数と金額の合計は、元のデータとすべて一致しました。\n\n記録： %2"_s.arg(
            name, QDir::toNativeSeparators(house_.global.dataDir() + u'/' + name + u'/' + kMigrationReport)),
        kTitle, forms::BoxIcon::Information);
    accept();
}

}  // namespace company
