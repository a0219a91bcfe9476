// A company's files as a whole: exchange, backup, restoring, compaction, and what a crash leaves of each.
#include "company/company_set.h"

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStorageInfo>

#include "company/backup.h"
#include "company/compaction.h"
#include "company/company_open.h"
#include "company/key.h"
#include "company/key_change.h"
#include "support/company_fixture.h"
#include "support/fault_vfs.h"
#include "support/store_probe.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using schema::File;
using Reason = store::Error::Reason;

void put(const QString& path, const QByteArray& text = "x") {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
}
QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("-");
}
QStringList names(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

class CompanySet : public testing::Test {
  protected:
    static void SetUpTestSuite() { FaultVfs::install(); }
    void SetUp() override { company_.makeSample(); }
    void TearDown() override { FaultVfs::disarm(); }

    QString data() const { return company_.dataDir(); }
    Places places() const { return placesOf(company_.programDir()); }
    std::unique_ptr<CompanyLock> lock(const QString& name = {}) const {
        return CompanyLock::acquire(data(), name.isEmpty() ? company_.company() : name);
    }
    std::optional<Backup> backUp(const QString& target, const store::Progress& progress = {}) const {
        return makeBackup(company_.companyDir(), company_.company(), target, {}, progress);
    }
    void change(const QString& sql) const { company_.open()->execute(sql); }
    /// What a company's folder holds, whatever its name is.
    QByteArray rowsIn(const QString& dataDir, const QString& name) const {
        QByteArray all;
        for (const QString& database : databaseNames(name)) {
            const QString path = dataDir + u'/' + name + u'/' + database;
            if (!QFileInfo::exists(path)) continue;
            store::Connection file(path, keyOf(dataDir + u'/' + name));
            all += support::dump(file);
        }
        return all;
    }

    support::CompanyFolder company_;
    QTemporaryDir elsewhere_;
};

// Every state that a crash can leave is carried to its end or taken back when the companies are listed.
TEST_F(CompanySet, EveryStateOfAChangeEndsAsOldOrNew) {
    const struct {
        QStringList stand;
        QByteArray becomes;  // what X holds then; "-": there is no X
    } states[] = {
        {{u"X"_s, u".new.X"_s}, "X"},
        {{u".new.X"_s}, "-"},
        {{u"X"_s, u".ready.X"_s}, ".ready.X"},
        {{u".ready.X"_s}, ".ready.X"},
        {{u".ready.X"_s, u".old.X"_s}, ".ready.X"},
        {{u"X"_s, u".old.X"_s}, "X"},
        {{u".old.X"_s}, "-"},
        {{u"X"_s, u".ready.X"_s, u".old.X"_s, u".new.X"_s}, ".ready.X"},
    };
    for (const auto& state : states) {
        SCOPED_TRACE(state.stand.join(u' ').toStdString());
        const QTemporaryDir folder;
        for (const QString& name : state.stand) put(folder.filePath(name + u"/file"_s), name.toUtf8());
        const QStringList listed = companyFolders(folder.path());
        EXPECT_EQ(listed.join(u' '), state.becomes == "-" ? QString() : u"X"_s);
        EXPECT_EQ(contents(folder.filePath(u"X/file"_s)), state.becomes);
        EXPECT_EQ(names(folder.path()).filter(QRegularExpression(u"^\\.(new|ready|old)"_s)), QStringList());
    }
    // What another process is at is left to it.
    const QTemporaryDir busy;
    put(busy.filePath(u".new.X/file"_s));
    const auto held = CompanyLock::acquire(busy.path(), u"X"_s);
    companyFolders(busy.path());
    EXPECT_TRUE(QFileInfo::exists(busy.filePath(u".new.X/file"_s)));
}

TEST_F(CompanySet, ARemovalTouchesNothingElseAndFollowsNoLink) {
    const QString kept = elsewhere_.filePath(u"kept"_s);
    put(kept);
    ASSERT_TRUE(QFile::link(kept, company_.companyDir() + u"/link"_s));
    ASSERT_TRUE(QFile::link(elsewhere_.path(), company_.companyDir() + u"/folder"_s));
    put(data() + u"/見本商事２/file"_s);
    removeSet(*lock());
    EXPECT_EQ(companyFolders(data()), QStringList{u"見本商事２"_s});
    EXPECT_TRUE(QFileInfo::exists(kept));
    // A company that is itself a link is no folder of ours.
    ASSERT_TRUE(QFile::link(elsewhere_.path(), data() + u"/リンク"_s));
    EXPECT_EQ(support::reasonOf([&] { removeSet(*lock(u"リンク"_s)); }), Reason::ReadOnly);
    EXPECT_EQ(support::reasonOf([&] { NewSet set(*lock(u"リンク"_s)); }), Reason::ReadOnly);
    EXPECT_TRUE(QFileInfo::exists(kept));
    put(data() + u"/ファイル"_s);
    EXPECT_EQ(support::reasonOf([&] { NewSet set(*lock(u"ファイル"_s)); }), Reason::ReadOnly);
    EXPECT_TRUE(QFileInfo::exists(data() + u"/ファイル"_s));
}

TEST_F(CompanySet, ABackupIsVerifiedReplacesTheFormerAndComesBackUnderAnyName) {
    const QString target = places().backups() + u'/' + company_.company();
    put(company_.companyDir() + u"/資料/規程.txt"_s, "規程");
    ASSERT_TRUE(QFile::link(elsewhere_.path(), company_.companyDir() + u"/link"_s));
    const QByteArray before = rowsIn(data(), company_.company());
    put(company_.companyDir() + u"/見本商事Compdb.mdb"_s, {});  // of another program, and no database
    const auto made = backUp(target);
    ASSERT_TRUE(made && made->whole);
    EXPECT_EQ(contents(target + u"/見本商事Compdb.mdb"_s), QByteArray());
    QFile::remove(company_.companyDir() + u"/見本商事Compdb.mdb"_s);
    EXPECT_EQ(made->summary.people, 50);
    EXPECT_EQ(made->summary.dates, 3);
    EXPECT_EQ(made->summary.newestDate, QDate(2026, 12, 10));
    EXPECT_EQ(made->links, QStringList{u"link"_s});
    // A second one over it: what the company has no more goes, what others put there stays.
    put(target + u"/メモ.txt"_s, "memo");
    ASSERT_TRUE(QDir(company_.companyDir() + u"/資料"_s).removeRecursively());
    change(u"delete from 家族テーブル"_s);
    const QByteArray after = rowsIn(data(), company_.company());
    ASSERT_NE(before, after);
    ASSERT_TRUE(backUp(target));
    EXPECT_EQ(contents(target + u"/メモ.txt"_s), "memo");
    EXPECT_EQ(contents(target + u"/資料/規程.txt"_s), "-");
    const auto listed = backupsIn(places().backups());
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_TRUE(listed[0].whole && listed[0].company == company_.company() && listed[0].summary.people == 50);
    // Under another name, without the stranger's file; opened by the program as a company.
    ASSERT_TRUE(restoreBackup(listed[0], *lock(u"別の会社"_s)));
    EXPECT_EQ(rowsIn(data(), u"別の会社"_s), after);
    EXPECT_EQ(contents(data() + u"/別の会社/メモ.txt"_s), "-");
    std::unique_ptr<CompanyLock> none;
    put(company_.programDir() + u"/zukanzen.exe"_s);
    EXPECT_EQ(openCompany(places(), u"別の会社"_s, none).outcome, OpenedCompany::Outcome::Opened);
    // In the place of a company, from a plain copy as a hand makes it.
    const QString plain = elsewhere_.filePath(u"写し"_s);
    ASSERT_TRUE(QDir().mkpath(plain));
    for (const QString& file : QDir(target).entryList(QDir::Files))
        if (file.endsWith(u".mdb")) QFile::copy(target + u'/' + file, plain + u'/' + file);
    change(u"delete from 異動テーブル"_s);
    const Backup looked = lookInto(plain);
    EXPECT_EQ(looked.summary.people, 50);
    EXPECT_FALSE(looked.whole);
    ASSERT_TRUE(restoreBackup(looked, *lock()));
    EXPECT_EQ(rowsIn(data(), company_.company()), after);
}

TEST_F(CompanySet, AFailedOrStoppedBackupLeavesTheFormerOne) {
    const QString target = places().backups() + u'/' + company_.company();
    ASSERT_TRUE(backUp(target));
    const QByteArray former = rowsIn(places().backups(), company_.company());
    change(u"delete from 家族テーブル"_s);
    const auto stands = [&] {
        EXPECT_EQ(rowsIn(places().backups(), company_.company()), former);
        EXPECT_TRUE(backupsIn(places().backups()).at(0).whole);
        EXPECT_EQ(names(target).filter(u".バックアップ"_s), QStringList());
    };
    for (int at = 0; at < 3; ++at) {
        EXPECT_FALSE(backUp(target, [n = 0, at](qint64, qint64) mutable { return n++ < at; }));
        stands();
    }
    FaultVfs::arm(FaultVfs::Operation::Write, std::numeric_limits<qint64>::max());
    ASSERT_TRUE(backUp(elsewhere_.filePath(u"数"_s)));
    const qint64 writes = FaultVfs::counted();
    for (const qint64 n : {qint64(1), writes / 2, writes}) {
        FaultVfs::arm(FaultVfs::Operation::Write, n, FaultVfs::Kind::DiskFull);
        EXPECT_EQ(support::reasonOf([&] { backUp(target); }), Reason::DiskFull);
        FaultVfs::disarm();
        stands();
    }
    EXPECT_TRUE(support::reasonOf([&] { backUp(data() + u"/中"_s); }));
    {  // a page of the original that is no page
        QFile file(company_.file(File::Hyouka));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(file.size() / 2) &&
                    file.write("damage") == 6);
    }
    EXPECT_EQ(support::reasonOf([&] { backUp(target); }), Reason::Damaged);
    stands();
}

TEST_F(CompanySet, ABackupThatIsOnItsWayUpOrIncompleteIsKnown) {
    const QString target = places().backups() + u'/' + company_.company(),
                  ready = target + u"/.バックアップ完成"_s;
    ASSERT_TRUE(backUp(target));
    // As a crash leaves it: one file has gone up already.
    for (const QString& file : QDir(target).entryList(QDir::Files).mid(1)) {
        QDir().mkpath(ready);
        ASSERT_TRUE(QFile::rename(target + u'/' + file, ready + u'/' + file));
    }
    ASSERT_EQ(backupsIn(places().backups()).size(), 1U);
    EXPECT_TRUE(backupsIn(places().backups())[0].whole);
    EXPECT_FALSE(QFileInfo::exists(ready));
    ASSERT_TRUE(QFile::remove(target + u'/' + databaseNames(company_.company()).at(2)));
    EXPECT_FALSE(backupsIn(places().backups())[0].whole);
    // A list that names files outside of its folder removes none of them.
    const QString outside = elsewhere_.filePath(u"outside"_s);
    put(outside);
    const QString far = QDir(target).relativeFilePath(outside);
    put(target + u'/' + kManifest,
        u"{\"会社\":\"見本商事\",\"ファイル\":[{\"名前\":\"%1\"},{\"名前\":\"%2\"}]}"_s.arg(far, outside)
            .toUtf8());
    ASSERT_TRUE(backUp(target));
    EXPECT_TRUE(QFileInfo::exists(outside));
}

TEST_F(CompanySet, ARestoreThatFailsLeavesTheCompany) {
    const QString target = elsewhere_.filePath(u"控え"_s);
    ASSERT_TRUE(backUp(target));
    const Backup backup = lookInto(target);
    change(u"delete from 家族テーブル"_s);
    const QByteArray before = rowsIn(data(), company_.company());
    EXPECT_FALSE(restoreBackup(backup, *lock(), [](qint64, qint64) { return false; }));
    FaultVfs::arm(FaultVfs::Operation::Write, 30, FaultVfs::Kind::DiskFull);
    EXPECT_EQ(support::reasonOf([&] { restoreBackup(backup, *lock()); }), Reason::DiskFull);
    FaultVfs::disarm();
    store::Connection(target + u'/' + databaseNames(company_.company()).at(0), sharedKey())
        .executeScript(u"PRAGMA user_version=99"_s);
    EXPECT_EQ(support::reasonOf([&] { lookInto(target); }), Reason::NotOpen);
    EXPECT_EQ(support::reasonOf([&] { lookInto(elsewhere_.path()); }), Reason::NotOpen);
    EXPECT_EQ(rowsIn(data(), company_.company()), before);
    EXPECT_EQ(names(data()).filter(QRegularExpression(u"^\\.(new|ready|old)"_s)), QStringList());
}

TEST_F(CompanySet, OwnCopiesAreThinnedAndNotMadeTwice) {
    const QString root = copiesFolder(places(), company_.company());
    EXPECT_TRUE(keepCopy(places(), company_.company(), u"取込の前"_s));
    EXPECT_FALSE(keepCopy(places(), company_.company(), u"取込の前"_s));
    EXPECT_TRUE(keepCopy(places(), company_.company(), u"最適化の前"_s));
    EXPECT_EQ(backupsIn(root).size(), 2U);
    // 14 more of an earlier day of this month, and three of one long ago.
    const QString model = backupsIn(root).at(0).folder;
    const auto older = [&](const QDateTime& made, int n) {
        const QString folder = root + u"/%1-%2"_s.arg(made.date().toString(Qt::ISODate)).arg(n);
        QDir().mkpath(folder);
        QByteArray told = contents(model + u'/' + kManifest);
        const QString now = backupsIn(root).at(0).made.toString(Qt::ISODateWithMs);
        put(folder + u'/' + kManifest,
            QString::fromUtf8(told).replace(now, made.toString(Qt::ISODateWithMs)).toUtf8());
    };
    const QDateTime now = QDateTime::currentDateTime();
    for (int i = 0; i < 14; ++i) older(now.addDays(-3).addSecs(-i), i);
    for (int i = 0; i < 3; ++i) older(now.addDays(-200).addSecs(-i), i);
    keepReplaced(places(), company_.company());
    const auto left = backupsIn(root);
    EXPECT_EQ(
        std::count_if(left.begin(), left.end(), [&](const Backup& b) { return b.made < now.addDays(-100); }),
        1);
    EXPECT_EQ(left.size(), 10U + 1U);
    // A company that can't be opened is kept as it is.
    QFile(company_.file(File::Kihon)).resize(100);
    keepReplaced(places(), company_.company());
    EXPECT_EQ(contents(backupsIn(root).at(0).folder + u'/' + QFileInfo(company_.file(File::Kihon)).fileName())
                  .size(),
              100);
}

TEST_F(CompanySet, LockedFilesOpenWithTheirPasswordOrTheRecoveryCodeAlone) {
    const QString folder = company_.companyDir(), kihon = company_.file(File::Kihon);
    const QByteArray before = rowsIn(data(), company_.company());
    const OwnKey own(u"ひみつの言葉"_s);
    EXPECT_FALSE(changeKey(*lock(), &own, [](qint64, qint64) { return false; }));
    FaultVfs::arm(FaultVfs::Operation::Write, 40, FaultVfs::Kind::DiskFull);
    EXPECT_EQ(support::reasonOf([&] { changeKey(*lock(), &own); }), Reason::DiskFull);
    FaultVfs::disarm();
    ASSERT_TRUE(QFile::link(elsewhere_.path(), folder + u"/link"_s));
    EXPECT_EQ(support::reasonOf([&] { changeKey(*lock(), &own); }), Reason::ReadOnly);
    QFile::remove(folder + u"/link"_s);
    EXPECT_FALSE(filesLocked(folder));
    const QString foreign = folder + u"/見本商事Compdb.mdb"_s;
    put(foreign, QByteArray(4096, 'x'));
    ASSERT_TRUE(changeKey(*lock(), &own));
    EXPECT_EQ(contents(foreign), QByteArray(4096, 'x'));
    QFile::remove(foreign);
    EXPECT_EQ(rowsIn(data(), company_.company()), before);
    for (const QString& name : names(folder))
        EXPECT_FALSE(contents(folder + u'/' + name).contains(own.key().rawBytes().toHex()));
    EXPECT_EQ(support::reasonOf([&] { store::Connection(kihon, sharedKey()); }), Reason::NotOpen);
    ASSERT_TRUE(backUp(elsewhere_.filePath(u"控え"_s)));
    EXPECT_EQ(compact_database(*lock(), kihon).outcome, Compaction::Outcome::Done);
    // What another process knows of it.
    const auto anew = [&](const QString& at, const QString& secret) {
        forgetKeys();
        return learnKey(at, secret);
    };
    forgetKeys();
    EXPECT_EQ(support::reasonOf([&] { keyOf(folder); }), Reason::NotOpen);
    EXPECT_FALSE(anew(folder, u"ひみつの言葉 "_s) || anew(folder, {}) || keyKnown(folder));
    QString typed = own.recoveryCode().toLower().replace(u'-', u"　"_s).replace(u'0', u'o');
    for (QChar& c : typed)
        if (c >= u'a' && c <= u'z') c = QChar(c.unicode() - u'a' + 0xff41);
    EXPECT_TRUE(anew(folder, typed)) << typed.toStdString();
    changeKeyPassword(folder, u"あたらしい言葉"_s);
    EXPECT_FALSE(anew(folder, u"ひみつの言葉"_s));
    EXPECT_TRUE(anew(folder, own.recoveryCode()) && anew(folder, u"あたらしい言葉"_s));
    EXPECT_EQ(rowsIn(data(), company_.company()), before);
    put(company_.programDir() + u"/zukanzen.exe"_s);
    {
        std::unique_ptr<CompanyLock> none;
        const OpenedCompany opened = openCompany(places(), company_.company(), none);
        ASSERT_EQ(opened.outcome, OpenedCompany::Outcome::Opened);
        EXPECT_EQ(opened.cn_main->query(u"select count(*) from Sリンクテーブル where 接続 like '%PWD=;'"_s)
                      .value(0)
                      .toInteger(),
                  41);
    }
    // A copy opens with the password of its time, under any name; its list tells that it is locked.
    const QString copy = elsewhere_.filePath(u"控え"_s);
    EXPECT_FALSE(anew(copy, u"あたらしい言葉"_s));
    EXPECT_EQ(support::reasonOf([&] { lookInto(copy); }), Reason::NotOpen);
    ASSERT_TRUE(anew(copy, u"ひみつの言葉"_s));
    EXPECT_TRUE(backupsIn(elsewhere_.path()).at(0).locked);
    ASSERT_TRUE(restoreBackup(lookInto(copy), *lock(u"別の会社"_s)));
    EXPECT_EQ(rowsIn(data(), u"別の会社"_s), before);
    ASSERT_TRUE(changeKey(*lock(u"別の会社"_s), nullptr));
    EXPECT_NO_THROW(store::Connection(data() + u"/別の会社/別の会社基本db.mdb"_s, sharedKey()));
    EXPECT_EQ(rowsIn(data(), u"別の会社"_s), before);
    // A backup of unlocked files over a locked copy made by hand opens.
    ASSERT_TRUE(QFile::remove(copy + u'/' + kManifest));
    ASSERT_TRUE(makeBackup(data() + u"/別の会社"_s, u"別の会社"_s, copy));
    EXPECT_EQ(lookInto(copy).company, u"別の会社"_s);
    // A key's file from elsewhere.
    const QByteArray sealed = contents(folder + u'/' + kKeyFile);
    for (const QByteArray& hostile :
         {QByteArray("{"), QByteArray(100 * 1024, ' '), QByteArray("{\"版\":2}")}) {
        put(folder + u'/' + kKeyFile, hostile);
        EXPECT_EQ(support::reasonOf([&] { learnKey(folder, u"あたらしい言葉"_s); }), Reason::Damaged);
    }
    put(folder + u'/' + kKeyFile, R"({"版":1,"鍵":"00","パスワード":{"塩":"AA","封":3}})");
    EXPECT_FALSE(learnKey(folder, u"あたらしい言葉"_s));
    put(folder + u'/' + kKeyFile, QByteArray(sealed).replace(u"パスワード"_s.toUtf8(), "x"));
    EXPECT_FALSE(learnKey(folder, u"あたらしい言葉"_s));
}

/// A file system of its own, where the machine lets us have one.
class SmallDisk {
  public:
    SmallDisk() : mounted_(mount("mint", bytes().constData(), "tmpfs", 0, "size=4m") == 0) {}
    ~SmallDisk() {
        if (mounted_) umount(bytes().constData());
    }
    explicit operator bool() const { return mounted_; }
    QString path() const { return folder_.path(); }
    void leaveFree(qint64 room) const {
        QFile::remove(path() + u"/filler"_s);
        put(path() + u"/filler"_s, QByteArray(QStorageInfo(path()).bytesAvailable() - room, 'x'));
    }
    void readOnly(bool is) const {
        EXPECT_EQ(mount("mint", bytes().constData(), nullptr,
                        MS_REMOUNT | static_cast<unsigned long>(is) * MS_RDONLY, nullptr),
                  0);
    }

  private:
    QByteArray bytes() const { return QFile::encodeName(path()); }
    QTemporaryDir folder_;
    bool mounted_;
};

TEST_F(CompanySet, AFullOrReadOnlyDiskLeavesTheOldSetAndTheOldBackup) {
    const SmallDisk disk;
    if (!disk) GTEST_SKIP() << "this machine lets nobody mount";
    const Places small = placesOf(disk.path());
    const QString name = company_.company(), folder = small.data + u'/' + name,
                  backup = small.backups() + u'/' + name;
    ASSERT_TRUE(QDir().mkpath(folder));
    for (const QString& file : QDir(company_.companyDir()).entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(company_.companyDir() + u'/' + file, folder + u'/' + file));
    ASSERT_TRUE(makeBackup(folder, name, backup));
    const QByteArray rows = rowsIn(small.data, name);
    store::Connection(folder + u'/' + databaseNames(name).at(0), sharedKey())
        .execute(u"delete from 家族テーブル"_s);
    const QByteArray changed = rowsIn(small.data, name);
    const OwnKey own(u"ひみつの言葉"_s);
    const auto lockIt = [&] { return CompanyLock::acquire(small.data, name); };
    const std::function<void()> changes[] = {[&] { makeBackup(folder, name, backup); },
                                             [&] { restoreBackup(lookInto(backup), *lockIt()); },
                                             [&] { changeKey(*lockIt(), &own); },
                                             [&] {
                                                 createCompany(small.data, u"新社"_s, {true, true, true});
                                             },
                                             [&] { keepCopy(small, name, u"取込の前"_s); },
                                             [&] {
                                                 const Compaction told = compact_database(
                                                     *lockIt(), folder + u'/' + databaseNames(name).at(3));
                                                 if (told.outcome == Compaction::Outcome::Failed)
                                                     throw store::Error(Reason::DiskFull, {});
                                             }};
    const auto stands = [&] {
        recoverSets(small.data);
        EXPECT_EQ(rowsIn(small.data, name), changed);
        EXPECT_EQ(rowsIn(small.backups(), name), rows);
        EXPECT_TRUE(backupsIn(small.backups()).at(0).whole);
        EXPECT_EQ(QDir(small.data).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
                  QStringList{name});
        EXPECT_TRUE(backupsIn(copiesFolder(small, name)).empty());
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        SCOPED_TRACE(i);
        for (const qint64 room : {0, 8 * 1024, 100 * 1024}) {
            SCOPED_TRACE(room);
            disk.leaveFree(room);
            EXPECT_TRUE(support::reasonOf(changes[i]));
            stands();
        }
        QFile::remove(disk.path() + u"/filler"_s);
        disk.readOnly(true);
        EXPECT_TRUE(support::reasonOf(changes[i]));
        disk.readOnly(false);
        stands();
    }
}

TEST_F(CompanySet, AFileThatAnotherProcessHoldsLeavesTheOldSet) {
    const QString target = elsewhere_.filePath(u"控え"_s);
    const QByteArray before = rowsIn(data(), company_.company());
    const OwnKey own(u"ひみつの言葉"_s);
    store::Connection other(company_.file(File::Syouyo), sharedKey());
    other.executeScript(u"BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(support::reasonOf([&] { backUp(target); }), Reason::Locked);
    EXPECT_EQ(support::reasonOf([&] { changeKey(*lock(), &own); }), Reason::Locked);
    EXPECT_EQ(compact_database(*lock(), company_.file(File::Syouyo)).outcome, Compaction::Outcome::Failed);
    other.executeScript(u"ROLLBACK"_s);
    EXPECT_EQ(rowsIn(data(), company_.company()), before);
    EXPECT_FALSE(filesLocked(company_.companyDir()));
    EXPECT_EQ(names(target), QStringList());
}

TEST_F(CompanySet, CompactionGivesBackRoomAndKeepsTheRows) {
    const QString kihon = company_.file(File::Kihon);
    change(u"insert into 異動テーブル select a.* from 異動テーブル a, 異動テーブル b"_s);
    change(u"delete from 異動テーブル"_s);
    const QByteArray before = rowsIn(data(), company_.company());
    const auto held = lock();
    put(workFileOf(kihon), "left over");
    EXPECT_EQ(compact_database(*held, kihon).outcome, Compaction::Outcome::WorkFileExists);
    QFile::remove(workFileOf(kihon));
    FaultVfs::arm(FaultVfs::Operation::Write, 3, FaultVfs::Kind::DiskFull);
    EXPECT_EQ(compact_database(*held, kihon).outcome, Compaction::Outcome::Failed);
    FaultVfs::disarm();
    const Compaction done = compact_database(*held, kihon);
    EXPECT_EQ(done.outcome, Compaction::Outcome::Done);
    EXPECT_LT(done.after, done.before / 2);
    EXPECT_EQ(done.after, QFileInfo(kihon).size());
    EXPECT_EQ(rowsIn(data(), company_.company()), before);
    // Both other databases count whenever 賞与db stands, and fail where they are not.
    EXPECT_EQ(databasesPresent(data(), company_.company()), (std::array{true, true, true, true, true, true}));
    EXPECT_EQ(compact_database(*held, company_.companyDir() + u"/見本商事Compdb.mdb"_s).outcome,
              Compaction::Outcome::Failed);
    // A crash between the two renames leaves a work file that the next start clears away.
    put(workFileOf(kihon), "on its way");
    put(data() + u"/.new.見本商事/file"_s);
    recoverSet(*held);
    EXPECT_FALSE(QFileInfo::exists(workFileOf(kihon)));
}

}  // namespace
}  // namespace company
