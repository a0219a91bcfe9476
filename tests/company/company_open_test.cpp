#include "company/company_open.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "company/backup.h"
#include "company/create.h"
#include "company/key.h"
#include "schema/catalog.h"
#include "schema/files.h"
#include "schema/links.h"
#include "schema/upgrade.h"
#include "support/company_fixture.h"
#include "support/former_company.h"
#include "support/store_probe.h"

namespace company {
namespace {

using namespace Qt::StringLiterals;
using Outcome = OpenedCompany::Outcome;
using Reason = store::Error::Reason;
using schema::File;

class CompanyOpen : public testing::Test {
  protected:
    CompanyOpen() { company_.makeEmpty(u"甲社"_s, {.chingin = true, .hyouka = false}); }

    OpenedCompany open() { return openCompany(placesOf(company_.programDir()), company_.company(), held_); }
    void changeBonus(const QString& sql, const store::Binds& binds = {}) {
        store::Connection(company_.file(schema::File::Syouyo), company::sharedKey()).execute(sql, binds);
    }
    std::optional<Reason> failure() {
        return support::reasonOf([this] { open(); });
    }

    support::CompanyFolder company_;
    std::unique_ptr<CompanyLock> held_;
};

TEST_F(CompanyOpen, ANewerCompanyIsRefusedAndLeftAsItIs) {
    { open(); }
    changeBonus(u"PRAGMA user_version=%1"_s.arg(schema::kSchemaVersion + 1));
    const QString moved = company_.programDir() + u"/elsewhere"_s;
    ASSERT_TRUE(QDir().mkpath(moved) && QDir().rename(company_.dataDir(), moved + u"/Data"_s));
    const auto bytes = [&] {
        QFile file(schema::filePath(moved + u"/Data"_s, company_.company(), schema::File::Syouyo));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray before = bytes();
    EXPECT_EQ(support::reasonOf([&] { openCompany(placesOf(moved), company_.company(), held_); }),
              Reason::NotOpen);
    EXPECT_EQ(bytes(), before);
}

TEST_F(CompanyOpen, AMovedOlderCompanyOpensWithItsOwnFilesAndGrowsTheTablesItLacks) {
    { open(); }
    const QString older = u"Tanka_hasuu Sshikyuukeisuu SshikyuukeisuuHA"_s;
    for (const QString& table : older.split(u' ')) changeBonus(u"DROP TABLE "_s + table);
    changeBonus(u"PRAGMA user_version=1"_s);
    const QString moved = company_.programDir() + u"/elsewhere"_s, before = QDir::currentPath();
    ASSERT_TRUE(QDir().mkpath(moved) && QDir().rename(company_.dataDir(), moved + u"/Data"_s));
    const OpenedCompany opened = openCompany(placesOf(moved), company_.company(), held_);
    ASSERT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
    EXPECT_TRUE(opened.chingin_db_exists);
    EXPECT_FALSE(opened.companion_present);
    EXPECT_EQ(opened.syouyo_db_name, u"甲社賞与db.mdb"_s);
    const auto rows = [&](const QString& table) {
        return opened.cn_main->query(u"select * from "_s + table).recordCount();
    };
    // The last one is a linked table, reached under its own name.
    for (const QString& table : (older + u" C基本給設定テーブル"_s).split(u' ')) EXPECT_EQ(rows(table), 0);
    EXPECT_EQ(rows(u"会社テーブル"_s), 1);
    for (const QString& file : schema::linkedFiles(*opened.cn_main))
        EXPECT_TRUE(file.startsWith(moved)) << file.toStdString();
    EXPECT_EQ(QDir::currentPath(), before);
    const auto copies = backupsIn(copiesFolder(placesOf(moved), company_.company()));
    ASSERT_EQ(copies.size(), 1U) << "before its layout was brought up";
    EXPECT_EQ(copies[0].reason, u"版の更新の前"_s);
}

// A company of every layout that users have: a new layout needs the script of the one that it follows.
TEST_F(CompanyOpen, ACompanyOfEveryEarlierLayoutKeepsItsRows) {
    for (int version = 1; version <= schema::kSchemaVersion; ++version) {
        SCOPED_TRACE(version);
        const QString name = u"小社%1"_s.arg(version), folder = company_.dataDir() + u'/' + name;
        ASSERT_TRUE(QDir().mkpath(folder));
        const auto make = [&](File file, const char* script) {
            const QByteArray text =
                support::unpacked("layouts/" + QByteArray::number(version) + '/' + script);
            ASSERT_FALSE(text.isEmpty());
            store::Connection made(schema::filePath(company_.dataDir(), name, file), sharedKey(),
                                   store::Connection::Mode::Create);
            made.executeScript(QString::fromUtf8(text));
        };
        make(File::Kihon, "kihon.sql");
        make(File::Syouyo, "syouyo.sql");
        QHash<QString, QStringList> rows;
        const auto eachTable = [&](const auto& look) {
            for (const File file : {File::Kihon, File::Syouyo}) {
                store::Connection cn(schema::filePath(company_.dataDir(), name, file), sharedKey());
                for (const QString& table : cn.tables(u"main"_s))
                    if (table != u"Sリンクテーブル") look(cn, table);
            }
        };
        eachTable([&](store::Connection& cn, const QString& table) {
            rows[table] = support::textRows(cn, u"select * from \"%1\""_s.arg(table));
        });
        EXPECT_EQ(rows[u"履歴書テーブル"_s].size(), 6);
        {
            const OpenedCompany opened = openCompany(placesOf(company_.programDir()), name, held_);
            ASSERT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
            EXPECT_FALSE(schema::isOlder(*opened.cn_main));
            for (const schema::Table& table : schema::catalog()) {
                if (table.file != File::Kihon && table.file != File::Syouyo) continue;
                if (table.lifetime == schema::Lifetime::Scratch) continue;
                for (const schema::Column& column : table.columns)
                    EXPECT_NO_THROW(opened.cn_main->query(
                        u"select \"%1\" from \"%2\" limit 1"_s.arg(column.name, table.name)));
            }
        }
        eachTable([&](store::Connection& cn, const QString& table) {
            const QStringList after = support::textRows(cn, u"select * from \"%1\""_s.arg(table));
            ASSERT_EQ(after.size(), rows[table].size());
            for (qsizetype i = 0; i < after.size(); ++i)
                EXPECT_TRUE(after[i].startsWith(rows[table][i])) << after[i].toStdString();
        });
        EXPECT_EQ(backupsIn(copiesFolder(placesOf(company_.programDir()), name)).size(),
                  version < schema::kSchemaVersion ? 1U : 0U);
    }
}

TEST_F(CompanyOpen, ALinkThatIsNeverRefreshedDoesNotStandInTheWay) {
    company::createCompany(company_.dataDir(), u"乙社"_s, {});
    const QString other = schema::filePath(company_.dataDir(), u"乙社"_s, schema::File::Kihon);
    changeBonus(u"INSERT INTO Sリンクテーブル (ID, テーブル名, 接続, 元テーブル) VALUES (0, ?, ?, ?)"_s,
                {u"余分", schema::linkText(other, company::sharedKey()), u"会社テーブル"});
    const OpenedCompany opened = open();
    ASSERT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
    EXPECT_EQ(opened.cn_main->filePath(u"kihon"_s), company_.file(schema::File::Kihon));
    EXPECT_EQ(opened.cn_main->schemas().size(), 4);
}

TEST_F(CompanyOpen, AMissingFileOrTableOfALinkIsTold) {
    store::Connection(company_.file(schema::File::Chingin), company::sharedKey())
        .execute(u"DROP TABLE C手当設定テーブル"_s);
    OpenedCompany torn = open();
    EXPECT_EQ(torn.outcome, Outcome::LinkFailed);
    EXPECT_TRUE(torn.link_error_text.startsWith(u"C手当設定テーブル : "_s))
        << torn.link_error_text.toStdString();

    ASSERT_TRUE(
        QFile::remove(company_.file(schema::File::Chingin)));  // without it only the basic links count
    torn = {};
    {
        const OpenedCompany opened = open();
        EXPECT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
        EXPECT_FALSE(opened.chingin_db_exists);
    }
    ASSERT_TRUE(QFile::remove(company_.file(schema::File::Kihon)));
    const OpenedCompany opened = open();
    EXPECT_EQ(opened.outcome, Outcome::LinkFailed);
    EXPECT_TRUE(schema::kihonLinks().contains(opened.link_error_text.section(u" : "_s, 0, 0)));
    EXPECT_EQ(opened.cn_main, nullptr);
}

TEST_F(CompanyOpen, WageCompaniesNeedTheCompanion) {
    changeBonus(u"INSERT INTO S基礎額設定 (設定方法) VALUES (?), (?)"_s, {u"1", u"3"});
    OpenedCompany opened = open();
    EXPECT_EQ(opened.outcome, Outcome::CompanionMissing);
    ASSERT_NE(opened.cn_main, nullptr);

    // A second try with the lock still held, now that the companion is there: the settings are not read.
    held_ = std::move(opened.lock);
    company_.addCompanionMarker();
    opened.cn_main.reset();
    changeBonus(u"DROP TABLE S基礎額設定"_s);
    const OpenedCompany again = open();
    EXPECT_EQ(again.outcome, Outcome::Opened);
    EXPECT_TRUE(again.companion_present);
    EXPECT_NE(again.lock, nullptr);
    EXPECT_EQ(held_, nullptr);
}

TEST_F(CompanyOpen, FilesThatCannotBeOpenedAreErrorsAndStayAsTheyAre) {
    QFile file(company_.file(schema::File::Syouyo));
    ASSERT_TRUE(file.resize(file.size() / 2 + 100) && file.open(QIODevice::ReadOnly));
    const QByteArray damaged = file.readAll();
    EXPECT_EQ(failure(), Reason::Damaged);
    file.seek(0);
    EXPECT_EQ(file.readAll(), damaged);
    ASSERT_TRUE(file.remove());
    EXPECT_EQ(failure(), Reason::NotOpen);

    const QString bare = company_.dataDir() + u"/空のフォルダー"_s;
    ASSERT_TRUE(QDir().mkpath(bare));
    EXPECT_THROW(openCompany(placesOf(company_.programDir()), u"空のフォルダー"_s, held_), store::Error);
    EXPECT_TRUE(QDir(bare).isEmpty());
}

TEST_F(CompanyOpen, AFolderWithoutAPlaceForTheLockIsRefusedUntouched) {
    const QString place = CompanyLock::pathOf(company_.dataDir(), company_.company());
    QFile::remove(place);
    ASSERT_TRUE(QDir().mkpath(place));
    const QByteArray before = company_.fingerprint();
    EXPECT_EQ(failure(), Reason::ReadOnly);
    EXPECT_EQ(company_.fingerprint(), before);
}

/// Another process that holds the company until it is killed.
class Holder {
  public:
    Holder(const QString& dataDir, const QString& company) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        pid_ = fork();
        if (pid_ == 0) {
            const auto lock = CompanyLock::acquire(dataDir, company);
            const char answer = lock ? 'y' : 'n';
            if (write(ready[1], &answer, 1) != 1) _exit(1);
            for (;;) pause();
        }
        char answer = 0;
        EXPECT_EQ(read(ready[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        close(ready[0]);
        close(ready[1]);
    }
    ~Holder() { end(); }
    void end() {
        if (pid_ <= 0) return;
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

  private:
    pid_t pid_ = 0;
};

TEST_F(CompanyOpen, OneProcessAtATime) {
    const QByteArray before = company_.fingerprint();
    Holder other(company_.dataDir(), company_.company());
    const OpenedCompany refused = open();
    EXPECT_EQ(refused.outcome, Outcome::InUse);
    EXPECT_EQ(refused.cn_main, nullptr);
    EXPECT_EQ(company_.fingerprint(), before);

    other.end();  // killed: nothing stale keeps the next one out
    OpenedCompany mine = open();
    EXPECT_EQ(mine.outcome, Outcome::Opened);
    EXPECT_EQ(open().outcome, Outcome::InUse);
    mine = {};
    EXPECT_EQ(open().outcome, Outcome::Opened);
}

TEST(ProgramFolder, IsTheExecutablesWithDataOrTheUsersOwn) {
    const QTemporaryDir home, executable, other;
    qputenv("XDG_DATA_HOME", home.filePath(u"share"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(u"config"_s).toUtf8());
    EXPECT_EQ(programFolder(executable.path()), home.filePath(u"share/hinata-mint"_s));
    EXPECT_TRUE(QFileInfo(home.filePath(u"share/hinata-mint/Data"_s)).isDir());
    chooseProgramFolder(other.filePath(u"置き場所"_s));
    EXPECT_EQ(programFolder(executable.path()), other.filePath(u"置き場所"_s));
    ASSERT_TRUE(QDir(other.path()).rename(u"置き場所"_s, u"なし"_s));
    EXPECT_EQ(programFolder(executable.path()), home.filePath(u"share/hinata-mint"_s))
        << "a chosen one that is gone";
    QFile obstacle(other.filePath(u"file"_s));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    EXPECT_THROW(chooseProgramFolder(obstacle.fileName()), store::Error);
    ASSERT_TRUE(QDir(executable.path()).mkdir(u"Data"_s));
    EXPECT_EQ(programFolder(executable.path()), executable.path());
}

TEST(InstanceLock, RefusesASecondAndTakesOverFromTheDead) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"instance.lock"_s);
    const pid_t child = fork();
    if (child == 0) {
        const InstanceLock dying(path);
        _exit(dying.acquired() ? 0 : 1);  // leaves its lock file behind
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    ASSERT_TRUE(QFile::exists(path));

    {
        const InstanceLock first(path);
        EXPECT_TRUE(first.acquired());
        EXPECT_FALSE(InstanceLock(path).acquired());
        EXPECT_FALSE(InstanceLock(path).acquired()) << "a refused try must not free the first one's lock";
    }
    EXPECT_TRUE(InstanceLock(path).acquired());
}

}  // namespace
}  // namespace company
