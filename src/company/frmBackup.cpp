#include "company/frmBackup.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QStorageInfo>
#include <QTabWidget>
#include <QVBoxLayout>

#include "company/company_open.h"
#include "company/ui_company_opening.h"
#include "forms/box.h"
#include "forms/global_record.h"
#include "forms/guard.h"
#include "forms/progress.h"
#include "widgets/code_list.h"
#include "widgets/layout.h"
#include "widgets/table.h"
#include "widgets/theme.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;

const QString kTitle = u"バックアップの確認"_s;
const QString kRestoreTitle = u"復元の確認"_s;

QString sizeText(qint64 bytes) {
    return QLocale(QLocale::Japanese).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QString dateText(QDate date) {
    return date.toString(u"yyyy/M/d"_s);
}

QString summaryText(const CompanySummary& summary) {
    QString told = u"社員 %L1人、基準日 %2回"_s.arg(summary.people).arg(summary.dates);
    if (summary.newestDate.isValid()) told += u"（最新 %1）"_s.arg(dateText(summary.newestDate));
    return told;
}

QString cellText(const Backup& backup, int column) {
    switch (column) {
        case 0:
            return backup.made.toString(u"yyyy/M/d H:mm"_s);
        case 1:
            return backup.company;
        case 2:
            return backup.program.isEmpty() ? u"－"_s : u"%L1人"_s.arg(backup.summary.people);
        case 3:
            return sizeText(backup.summary.bytes);
        case 4:
            return backup.program.isEmpty() ? u"－"_s : backup.program;
        default:
            if (backup.program.isEmpty()) return u"フォルダの写し"_s;
            if (!backup.whole) return u"ファイルが足りません"_s;
            return (backup.reason.isEmpty() ? u"バックアップ"_s : backup.reason) +
                   (backup.locked ? u"（暗号化）"_s : QString());
    }
}

}  // namespace

std::vector<Drive> mountedDrives() {
    static const QStringList passing{u"tmpfs"_s,    u"devtmpfs"_s, u"proc"_s,  u"sysfs"_s,
                                     u"squashfs"_s, u"efivarfs"_s, u"devfs"_s, u"ramfs"_s};
    std::vector<Drive> drives;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || passing.contains(QString::fromLatin1(volume.fileSystemType())) ||
            volume.rootPath().startsWith(u"/boot"))
            continue;
        const QString name = volume.name();
        const QString root = QDir::toNativeSeparators(volume.rootPath());
        drives.push_back({volume.rootPath(), name.isEmpty() ? root : root + u"　"_s + name});
    }
    return drives;
}

frmBackup::frmBackup(forms::House& house, QWidget* parent, std::function<std::vector<Drive>()> drives)
    : Form(u"frmBackup"_s, u"バックアップ"_s, parent), house_(house), drives_(std::move(drives)) {
    auto* help = make<QPushButton>(u"Command1"_s, u"ヘルプ(&H)"_s);
    auto* cancel = make<QPushButton>(u"cmdCancel"_s, u"ｷｬﾝｾﾙ"_s);
    setCancelButton(cancel);
    auto* pages = make<QTabWidget>(u"SSTab1"_s);
    pages->addTab(makeBackupPage(), u"バックアップする(&B)"_s);
    pages->addTab(makeRestorePage(), u"元に戻す(&R)"_s);
    auto* column = widgets::columnOf(this);
    column->addWidget(pages, 1);
    column->addLayout(widgets::buttonRow({help}, {cancel, ok_, restore_}));
    // The command bar stays in sight, with the command of the page that is shown.
    const auto showCommand = [this](int page) {
        ok_->setVisible(page == 0);
        restore_->setVisible(page == 1);
    };
    widgets::tabOrder({combo1_, drive1_, dir1_, list_, name_, findChild<QWidget*>(u"Command2"_s), ok_,
                       restore_, cancel, help});
    connect(pages, &QTabWidget::currentChanged, this, showCommand);
    showCommand(0);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] {
        if (house_.help) house_.help(objectName());
    });
    forms::guarded(this, [this] { load(); });
    combo1_->setFocus();
}

// ---- Backing up

QWidget* frmBackup::makeBackupPage() {
    auto* page = new QWidget(this);
    auto* source = new QGroupBox(u"ﾊﾞｯｸｱｯﾌﾟ元を選択してください"_s, page);
    source->setObjectName(u"Frame1"_s);
    combo1_ = make<QComboBox>(u"Combo1"_s);
    combo1_->setAccessibleName(u"バックアップ元の会社"_s);
    (new QVBoxLayout(source))->addWidget(combo1_);
    auto* place = new QGroupBox(u"ﾊﾞｯｸｱｯﾌﾟ先を選択してください"_s, page);
    place->setObjectName(u"Frame2"_s);
    drive1_ = make<QComboBox>(u"Drive1"_s);
    drive1_->setAccessibleName(u"バックアップ先のドライブ"_s);
    path_ = make<QLabel>(u"lblPath"_s);
    dir1_ = make<widgets::CodeList>(u"Dir1"_s);
    dir1_->setAccessibleName(u"バックアップ先のフォルダ"_s);
    dir1_->setPlaceholder(u"この中にフォルダはありません。"_s);
    dir1_->setMinimumSize(60 * widgets::kGrid, 16 * widgets::kGrid);
    auto* into = new QVBoxLayout(place);
    into->setSpacing(widgets::kGrid);
    for (QWidget* part : std::initializer_list<QWidget*>{drive1_, path_}) into->addWidget(part);
    into->addWidget(dir1_, 1);
    target_ = make<QLabel>(u"lblTarget"_s);
    target_->setWordWrap(true);
    auto* warning = make<QLabel>(
        u"Label2"_s, u"データファイルが大きいため、ＦＤドライブを選択するとエラーが発生します。"_s);
    widgets::setTone(warning, widgets::Tone::Muted);
    warning->setWordWrap(true);
    path_->setWordWrap(true);
    ok_ = make<QPushButton>(u"cmdOK"_s, u"開始(&S)"_s);
    widgets::setPrimary(ok_);
    auto* column = widgets::columnOf(page);
    column->addWidget(source);
    column->addWidget(place, 1);
    column->addWidget(target_);
    column->addWidget(warning);
    connect(drive1_, &QComboBox::activated, this, [this] { Drive1_Change(); });
    connect(combo1_, &QComboBox::currentIndexChanged, this, [this] { showFolders(folder_); });
    connect(dir1_, &widgets::CodeList::opened, this, [this] { openFolder(); });
    connect(ok_, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    return page;
}

void frmBackup::load() {
    const QString dataFolder = house_.global.dataDir();
    for (const Drive& drive : drives_()) drive1_->addItem(drive.caption, drive.root);
    // The drive of the Data folder: of several that hold it, the one that is mounted deepest.
    int best = 0;
    for (int i = 0; i < drive1_->count(); ++i) {
        const QString root = drive1_->itemData(i).toString();
        if (dataFolder.startsWith(root) && root.size() >= drive1_->itemData(best).toString().size()) best = i;
    }
    if (drive1_->count() == 0) drive1_->addItem(QDir::rootPath(), QDir::rootPath());
    drive1_->setCurrentIndex(best);
    driveAtLoad_ = drive1_->currentData().toString();
    folder_ = dataFolder;
    const QStringList companies = companyFolders(dataFolder);
    QDir::setCurrent(dataFolder);
    for (const QString& name : companies) combo1_->addItem(name);
    const QString last =
        house_.global.cn_main ? house_.global.panels.folder : lastCompany(house_.global.places());
    combo1_->setCurrentIndex(companies.size() == 1 ? 0 : int(companies.indexOf(last)));
    showFolders(folder_);
    loadBackups();
}

void frmBackup::Drive1_Change() {
    const QString root = drive1_->currentData().toString();
    const QDir drive(root);
    if (drive.exists() && drive.isReadable()) return showFolders(root);
    forms::tell(this, u"バックアップ先の準備ができていません。"_s, kTitle);
    // Back to the drive of the folder that is shown.
    int back = 0;
    for (int i = 0; i < drive1_->count(); ++i) {
        const QString other = drive1_->itemData(i).toString();
        if (i != drive1_->currentIndex() && folder_.startsWith(other) &&
            (back == drive1_->currentIndex() || other.size() >= drive1_->itemData(back).toString().size()))
            back = i;
    }
    drive1_->setCurrentIndex(back);
    showFolders(folder_);
}

void frmBackup::openFolder() {
    showFolders(QDir::cleanPath(QDir(folder_).absoluteFilePath(dir1_->boundText())));
}

void frmBackup::showFolders(const QString& folder) {
    folder_ = folder;
    std::vector<widgets::CodeList::Item> items;
    if (!QDir(folder).isRoot() && folder != drive1_->currentData().toString())
        items.push_back({u".."_s, u"一つ上のフォルダ"_s});
    for (const QString& name : QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::LocaleAware))
        items.push_back({name, name});
    dir1_->setItems(items);
    path_->setText(QDir::toNativeSeparators(folder_));
    const bool elsewhere = drive1_->currentData().toString() != driveAtLoad_;
    for (QWidget* part : std::initializer_list<QWidget*>{dir1_, path_}) part->setEnabled(elsewhere);
    target_->setText(
        combo1_->currentText().isEmpty()
            ? u"ドライブを変えないときは、プログラムのフォルダの BackupDB にバックアップします。"_s
            : u"バックアップ先： "_s + QDir::toNativeSeparators(target()));
}

/// The told rule: with the drive as it was at first the chosen folder does not count.
QString frmBackup::target() const {
    const QString name = combo1_->currentText();
    if (drive1_->currentData().toString() == driveAtLoad_)
        return house_.global.places().backups() + u'/' + name;
    // A drive itself is no folder that could be the copy.
    const bool whole = QDir(folder_).isRoot() || folder_ == drive1_->currentData().toString();
    return whole ? QDir(folder_).filePath(name) : folder_;
}

bool frmBackup::mayBackUp(const QString& name) {
    if (name.isEmpty()) {
        forms::tell(this, u"バックアップするデータを選択してください。"_s, kTitle);
        return false;
    }
    if (name != house_.global.panels.company)
        return forms::ask(this, u"『%1』をバックアップします。"_s.arg(name), kTitle);
    if (!forms::ask(this, u"『%1』は現在使用中ですが、閉じてバックアップしますか？"_s.arg(name), kTitle))
        return false;
    closeForHouse(house_, this);
    return true;
}

void frmBackup::cmdOK_Click() {
    const QString name = combo1_->currentText();
    if (!mayBackUp(name)) return;
    const QString folder = house_.global.dataDir() + u'/' + name;
    bool unlocked = false;
    forms::guarded(this, [&] { unlocked = unlockForHouse(house_, this, folder, name); });
    if (!unlocked) return;
    std::optional<Backup> made;
    QString cause;
    setHourglass();
    try {
        forms::ProgressBox progress(this, u"『%1』をバックアップしています。"_s.arg(name));
        made = makeBackup(folder, name, target(), {}, progress.step());
    } catch (const store::Error& error) {
        cause = error.text();
    }
    setDefaultPointer();
    showCause(cause);
    if (!cause.isEmpty()) forms::tell(this, u"バックアップに失敗しました。"_s, kTitle);
    if (!made) return loadBackups();
    QString told = u"『%1』をバックアップし、内容を確かめました。\n%2\n\n%3"_s.arg(
        name, summaryText(made->summary), QDir::toNativeSeparators(made->folder));
    if (!made->links.isEmpty())
        told += u"\n\nリンクはバックアップに入っていません：\n"_s + made->links.join(u'\n');
    forms::tell(this, told, kTitle, forms::BoxIcon::Information);
    accept();
}

// ---- Bringing back

QWidget* frmBackup::makeRestorePage() {
    auto* page = new QWidget(this);
    list_ = make<widgets::Table>(u"DataGrid1"_s);
    list_->setAccessibleName(u"バックアップの一覧"_s);
    list_->setPlaceholder(
        u"BackupDB にバックアップがありません。\nほかの場所にあるときは［別のフォルダ］で選びます。"_s);
    list_->setMinimumWidth(68 * widgets::kGrid);
    rows_ = new widgets::RowsModel(
        {{u"作成日時"_s}, {u"会社"_s}, {u"社員"_s, true}, {u"大きさ"_s, true}, {u"版"_s}, {u"種類"_s}}, this);
    list_->setModel(rows_);
    about_ = make<QLabel>(u"lblAbout"_s);
    about_->setWordWrap(true);
    name_ = make<QLineEdit>(u"Text1"_s);
    auto* label = labelFor(u"Label3"_s, u"戻す会社の名前(&N):"_s, name_);
    auto* other = make<QPushButton>(u"Command2"_s, u"別のフォルダ(&F)..."_s);
    restore_ = make<QPushButton>(u"Command3"_s, u"元に戻す(&G)"_s);
    widgets::setDanger(restore_);
    auto* fields = widgets::fieldGrid();
    widgets::addField(fields, label, name_);
    auto* column = widgets::columnOf(page);
    column->addWidget(list_, 1);
    column->addWidget(about_);
    column->addLayout(fields);
    column->addLayout(widgets::buttonRow({other}, {}));
    connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { showChosen(); });
    connect(name_, &QLineEdit::textChanged, this, [this] { restore_->setEnabled(chosen() != nullptr); });
    connect(restore_, &QPushButton::clicked, this, [this] { restore_Click(); });
    connect(other, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(this, u"バックアップのフォルダ"_s, folder_);
        if (!folder.isEmpty()) addFolder(folder);
    });
    return page;
}

void frmBackup::loadBackups() {
    const Places places = house_.global.places();
    backups_ = added_;
    const auto append = [this](const QString& root) {
        for (Backup& backup : backupsIn(root)) backups_.push_back(std::move(backup));
    };
    append(places.backups());
    const QDir own(places.backups() + u'/' + kOwnCopies);
    for (const QString& company : own.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        append(own.filePath(company));
    std::stable_sort(backups_.begin() + std::ptrdiff_t(added_.size()), backups_.end(),
                     [](const Backup& a, const Backup& b) { return a.made > b.made; });
    rows_->setRows(int(backups_.size()),
                   [this](int row, int column) { return cellText(backups_[std::size_t(row)], column); });
    showChosen();
}

void frmBackup::addFolder(const QString& folder) {
    forms::guarded(this, [&] {
        if (!unlockForHouse(house_, this, folder, QDir(folder).dirName())) return;
        setHourglass();
        Backup found = lookInto(QDir::cleanPath(folder));
        added_.insert(added_.begin(), std::move(found));
        loadBackups();
        list_->setCurrentIndex(rows_->index(0, 0));
    });
}

const Backup* frmBackup::chosen() const {
    const int row = list_->currentIndex().row();
    return row >= 0 && row < int(backups_.size()) ? &backups_[std::size_t(row)] : nullptr;
}

void frmBackup::showChosen() {
    const Backup* backup = chosen();
    name_->setEnabled(backup != nullptr);
    name_->setText(backup ? backup->company : QString());
    restore_->setEnabled(backup != nullptr);
    about_->setText(backup ? QDir::toNativeSeparators(backup->folder)
                           : u"元に戻すバックアップを選んでください。"_s);
}

bool frmBackup::mayRestore(const Backup& backup, const QString& name) {
    if (const QString fault = companyNameFault(name); !fault.isEmpty()) {
        forms::tell(this, fault, kRestoreTitle);
        name_->setFocus();
        return false;
    }
    const auto& global = house_.global;
    QString question = u"%1のバックアップを『%2』として元に戻します。\n%3"_s.arg(
        backup.made.toString(u"yyyy/M/d H:mm"_s), name, summaryText(backup.summary));
    const QString standing = global.dataDir() + u'/' + name;
    if (!QFileInfo::exists(standing)) return forms::ask(this, question, kRestoreTitle);
    question += u"\n\nいまの『%1』は"_s.arg(name);
    try {
        question += u" %1 です。"_s.arg(summaryText(CompanyMoment(standing, name).summary()));
    } catch (const store::Error&) {
        question += u"開けません。"_s;
    }
    question +=
        u"\nこのバックアップのあとに入力した内容はなくなります。いまの会社は、自動バックアップに残します。"_s;
    if (openCompanyName(house_) == name)
        question += u"\n\n『%1』は現在使用中のため、閉じて元に戻します。"_s.arg(name);
    return forms::confirmLoss(this, question, kRestoreTitle, u"元に戻す(&G)"_s, u"戻さない(&B)"_s);
}

void frmBackup::restore_Click() {
    if (!chosen()) return;
    const QString name = name_->text();
    letGoOfUnopened(house_);
    bool begun = false, done = false;
    forms::guarded(this,
                   [&] {
                       if (!unlockForHouse(house_, this, chosen()->folder, chosen()->company)) return;
                       setHourglass();
                       const Backup backup = lookInto(chosen()->folder);
                       if (!mayRestore(backup, name)) return;
                       begun = true;
                       if (openCompanyName(house_) == name) closeForHouse(house_, this);
                       const auto& global = house_.global;
                       const auto lock = CompanyLock::acquire(global.dataDir(), name);
                       if (!lock)
                           throw store::Error(
                               store::Error::Reason::Locked,
                               u"『%1』は、ほかの人またはほかの画面が使用しています。"_s.arg(name));
                       if (QFileInfo::exists(lock->folder())) keepReplaced(global.places(), name);
                       forms::ProgressBox progress(this, u"『%1』を元に戻しています。"_s.arg(name));
                       done = restoreBackup(backup, *lock, progress.step());
                   },
                   {});
    if (begun) forms::restored(this, [this] { loadBackups(); });
    if (!done) return;
    if (combo1_->findText(name) < 0) combo1_->addItem(name);
    forms::tell(
        this,
        u"『%1』を元に戻し、内容を確かめました。\n「会社指定」で開いて、続きの作業ができます。"_s.arg(name),
        kRestoreTitle, forms::BoxIcon::Information);
}

}  // namespace company
