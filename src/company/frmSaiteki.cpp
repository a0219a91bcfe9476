#include "company/frmSaiteki.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "company/backup.h"
#include "company/company_open.h"
#include "company/ui_company_opening.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "widgets/code_list.h"
#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kTitle = u"データ最適化の確認"_s;

QString kilobytes(qint64 bytes) {
    return bytes > 0 ? u"%L1 KB"_s.arg((bytes + 1023) / 1024) : QString();
}

}  // namespace

frmSaiteki::frmSaiteki(forms::House& house, QWidget* parent)
    : Form(u"frmSaiteki"_s, u"データベース最適化"_s, parent), house_(house) {
    build();
    forms::guarded(this, [this] {
        const QString dataFolder = house_.global.dataDir();
        const QStringList companies = companyFolders(dataFolder);
        QDir::setCurrent(dataFolder);
        std::vector<widgets::CodeList::Item> items;
        for (const QString& name : companies) items.push_back({name, name});
        list1_->setItems(items);
        if (items.size() == 1) list1_->choose(0);
    });
}

void frmSaiteki::build() {
    auto* label = make<QLabel>(u"Label1"_s, u"データベースを最適化します。"_s);
    list1_ = make<widgets::CodeList>(u"List1"_s);
    list1_->setAccessibleName(u"会社名"_s);
    list1_->setPlaceholder(u"会社がありません。"_s);
    list1_->setMinimumSize(36 * widgets::kGrid, 24 * widgets::kGrid);
    table_ = make<widgets::Table>(u"DataGrid1"_s);
    table_->setAccessibleName(u"ファイルの大きさ"_s);
    table_->setPlaceholder(u"会社を選ぶと、ファイルの大きさが出ます。"_s);
    table_->setMinimumWidth(64 * widgets::kGrid);
    rows_ = new widgets::RowsModel({{u"ファイル"_s}, {u"最適化の前"_s, true}, {u"最適化の後"_s, true}}, this);
    table_->setModel(rows_);
    auto* start = make<QPushButton>(u"cmdOK"_s, u"最適化"_s);
    widgets::setPrimary(start);
    auto* cancel = make<QPushButton>(u"Command1"_s, u"ｷｬﾝｾﾙ"_s);
    setCancelButton(cancel);
    auto* help = make<QPushButton>(u"Command2"_s, u"ヘルプ(&H)"_s);
    auto* middle = new QHBoxLayout;
    middle->setSpacing(2 * widgets::kGrid);
    middle->addWidget(list1_, 1);
    middle->addWidget(table_, 2);
    auto* column = widgets::columnOf(this);
    column->addLayout(widgets::headerBlock(label, nullptr));
    column->addLayout(middle, 1);
    column->addLayout(widgets::buttonRow({help}, {cancel, start}));
    widgets::tabOrder({list1_, table_, start, cancel, help});
    list1_->setFocus();
    connect(list1_, &widgets::CodeList::chosen, this, [this] { showSizes(); });
    connect(list1_, &widgets::CodeList::opened, start, &QPushButton::click);
    connect(start, &QPushButton::clicked, this, [this] { Saiteki_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
}

void frmSaiteki::showSizes() {
    sizes_.clear();
    for (const QString& name : databaseNames(list1_->text())) {
        const QFileInfo file(house_.global.dataDir() + u'/' + list1_->text() + u'/' + name);
        if (file.isFile()) sizes_.push_back({.path = file.filePath(), .before = file.size()});
    }
    rows_->setRows(int(sizes_.size()), [this](int row, int column) {
        const Compaction& file = sizes_[std::size_t(row)];
        if (column == 0) return QFileInfo(file.path).fileName();
        return kilobytes(column == 1 ? file.before : file.after);
    });
}

void frmSaiteki::Saiteki_Click() {
    auto& global = house_.global;
    global.kaisha_folder = list1_->text();
    if (global.kaisha_folder.isEmpty()) {
        forms::tell(this, u"最適化するデータを指定してください。"_s, kTitle);
        return;
    }
    if (!forms::ask(this, u"『"_s + global.kaisha_folder + u"』を最適化します。"_s, kTitle)) return;
    forms::guarded(this, [&] {
        const QString folder = global.dataDir() + u'/' + global.kaisha_folder;
        letGoOfUnopened(house_);
        if (!unlockForHouse(house_, this, folder, global.kaisha_folder)) return;
        setHourglass();
        global.databases_present = databasesPresent(global.dataDir(), global.kaisha_folder);
        const auto& present = global.databases_present;
        const bool ours = openCompanyName(house_) == global.kaisha_folder;
        // Of the open company the lock is ours already.
        const auto own = ours ? nullptr : CompanyLock::acquire(global.dataDir(), global.kaisha_folder);
        const CompanyLock* lock = ours ? global.company_lock.get() : own.get();
        if (lock) keepCopyIfSound(global.places(), global.kaisha_folder, u"最適化の前"_s);
        const QStringList names = databaseNames(global.kaisha_folder);
        for (std::size_t i = 0; i < present.size(); ++i) {
            if (!present[i]) continue;
            const Compaction done = compact(lock, folder + u'/' + names[qsizetype(i)]);
            for (Compaction& shown : sizes_)
                if (shown.path == done.path) shown.after = done.after;
            rows_->refresh();
            tell(done);
        }
        accept();
    });
}

/// The engine needs the file for itself: not so where another process has the company, nor of the files that
/// the open company's connection holds.
Compaction frmSaiteki::compact(const CompanyLock* lock, const QString& path) const {
    if (!lock) return {.path = path};
    const bool ours = lock == house_.global.company_lock.get();
    if (ours)
        for (const QString& schema : house_.global.cn_main->schemas())
            if (QFileInfo(house_.global.cn_main->filePath(schema)) == QFileInfo(path)) return {.path = path};
    return compact_database(*lock, path);
}

void frmSaiteki::tell(const Compaction& done) {
    using Outcome = Compaction::Outcome;
    const QString path = QDir::toNativeSeparators(done.path);
    switch (done.outcome) {
        case Outcome::Done:
            forms::tell(this, path + u"の最適化に成功しました。"_s, kTitle);
            break;
        case Outcome::WorkFileExists:
            forms::tell(this, workFileOf(path) + u" (ﾜｰｸﾌｧｲﾙ) があるので処理できません。"_s, u"処理の中止"_s,
                        forms::BoxIcon::Critical);
            break;
        case Outcome::Failed:
            forms::tell(this, u"最適化に失敗しました。もう一度やり直してください。"_s, u"データ最適化失敗"_s);
            break;
    }
}

}  // namespace company
