#include "shell/company_open.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "store/company_files.h"
#include "store/links.h"
#include "support/company_fixture.h"

namespace shell {
namespace {

using Outcome = OpenedCompany::Outcome;
using store::File;

class CompanyOpen : public testing::Test {
  protected:
    CompanyOpen() { company_.makeEmpty(QStringLiteral("甲社"), {.chingin = true, .hyouka = false}); }

    OpenedCompany open() { return openCompany(company_.programDir(), company_.company(), held_); }
    void changeBonus(const QString& sql, const store::Binds& binds = {}) {
        store::Connection(company_.file(File::Syouyo), store::databasePassword()).execute(sql, binds);
    }
    store::Error::Reason failure() {
        try {
            open();
        } catch (const store::Error& error) {
            return error.reason();
        }
        ADD_FAILURE() << "opened";
        return store::Error::Reason::Engine;
    }

    support::CompanyFolder company_;
    std::unique_ptr<CompanyLock> held_;
};

TEST_F(CompanyOpen, OpensAndGrowsTheTablesThatAnOlderCompanyLacks) {
    for (const char16_t* table : {u"Tanka_hasuu", u"Sshikyuukeisuu", u"SshikyuukeisuuHA"})
        changeBonus(QStringLiteral("DROP TABLE ") + QString::fromUtf16(table));
    const QString before = QDir::currentPath();
    const OpenedCompany opened = open();
    ASSERT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
    EXPECT_TRUE(opened.chingin_db_exists);
    EXPECT_FALSE(opened.companion_present);
    EXPECT_EQ(opened.syouyo_db_name, QStringLiteral("甲社賞与db.mdb"));
    EXPECT_EQ(opened.link_saki_path, company_.file(File::Kihon));
    for (const char16_t* table : {u"Tanka_hasuu", u"Sshikyuukeisuu", u"SshikyuukeisuuHA"})
        EXPECT_EQ(
            opened.cn_main->query(QStringLiteral("select * from ") + QString::fromUtf16(table)).recordCount(),
            0);
    // Linked tables of both files are reached under their own names.
    EXPECT_EQ(opened.cn_main->query(QStringLiteral("select * from 会社テーブル")).recordCount(), 1);
    EXPECT_EQ(opened.cn_main->query(QStringLiteral("select * from C基本給設定テーブル")).recordCount(), 0);
    EXPECT_EQ(QDir::currentPath(), before);
}

TEST_F(CompanyOpen, AMovedCompanyOpensWithItsOwnFiles) {
    { open(); }
    const QString moved = company_.programDir() + QStringLiteral("/elsewhere");
    ASSERT_TRUE(QDir().mkpath(moved) && QDir().rename(company_.dataDir(), moved + QStringLiteral("/Data")));
    const OpenedCompany opened = openCompany(moved, company_.company(), held_);
    ASSERT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
    EXPECT_EQ(opened.cn_main->query(QStringLiteral("select * from 会社テーブル")).recordCount(), 1);
    for (const QString& file : store::linkedFiles(*opened.cn_main))
        EXPECT_TRUE(file.startsWith(moved)) << file.toStdString();
}

TEST_F(CompanyOpen, WithoutAWageFileOnlyTheBasicLinksAreRewritten) {
    ASSERT_TRUE(QFile::remove(company_.file(File::Chingin)));
    const OpenedCompany opened = open();
    EXPECT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
    EXPECT_FALSE(opened.chingin_db_exists);
    EXPECT_EQ(opened.cn_main->query(QStringLiteral("select * from 会社テーブル")).recordCount(), 1);
}

TEST_F(CompanyOpen, ALinkThatIsNeverRefreshedDoesNotStandInTheWay) {
    store::createCompany(company_.dataDir(), QStringLiteral("乙社"), {});
    const QString other = store::filePath(company_.dataDir(), QStringLiteral("乙社"), File::Kihon);
    changeBonus(
        QStringLiteral("INSERT INTO Sリンクテーブル (ID, テーブル名, 接続, 元テーブル) VALUES (0, ?, ?, ?)"),
        {u"余分", store::linkText(other), u"会社テーブル"});
    const OpenedCompany opened = open();
    ASSERT_EQ(opened.outcome, Outcome::Opened) << opened.link_error_text.toStdString();
    EXPECT_EQ(opened.cn_main->filePath(QStringLiteral("kihon")), company_.file(File::Kihon));
    EXPECT_EQ(opened.cn_main->schemas().size(), 4);
}

TEST_F(CompanyOpen, AMissingBasicFileIsALinkFailureThatNamesTheTable) {
    ASSERT_TRUE(QFile::remove(company_.file(File::Kihon)));
    const OpenedCompany opened = open();
    EXPECT_EQ(opened.outcome, Outcome::LinkFailed);
    EXPECT_TRUE(opened.link_error_text.contains(QStringLiteral(" : ")))
        << opened.link_error_text.toStdString();
    EXPECT_TRUE(store::kihonLinks().contains(opened.link_error_text.section(QStringLiteral(" : "), 0, 0)));
    EXPECT_EQ(opened.cn_main, nullptr);
}

TEST_F(CompanyOpen, ATableMissingInTheWageFileIsNamed) {
    store::Connection(company_.file(File::Chingin), store::databasePassword())
        .execute(QStringLiteral("DROP TABLE C手当設定テーブル"));
    const OpenedCompany opened = open();
    EXPECT_EQ(opened.outcome, Outcome::LinkFailed);
    EXPECT_TRUE(opened.link_error_text.startsWith(QStringLiteral("C手当設定テーブル : ")))
        << opened.link_error_text.toStdString();
}

TEST_F(CompanyOpen, WageCompaniesNeedTheCompanion) {
    changeBonus(QStringLiteral("INSERT INTO S基礎額設定 (設定方法) VALUES (?), (?)"), {u"1", u"3"});
    OpenedCompany opened = open();
    EXPECT_EQ(opened.outcome, Outcome::CompanionMissing);
    ASSERT_NE(opened.cn_main, nullptr);

    // A second try with the lock still held, now that the companion is there.
    held_ = std::move(opened.lock);
    company_.addCompanionMarker();
    const OpenedCompany again = open();
    EXPECT_EQ(again.outcome, Outcome::Opened);
    EXPECT_TRUE(again.companion_present);
    EXPECT_NE(again.lock, nullptr);
    EXPECT_EQ(held_, nullptr);
}

TEST_F(CompanyOpen, WithTheCompanionTheBaseSettingsAreNotRead) {
    company_.addCompanionMarker();
    changeBonus(QStringLiteral("DROP TABLE S基礎額設定"));
    EXPECT_EQ(open().outcome, Outcome::Opened);
}

TEST_F(CompanyOpen, FilesThatCannotBeOpenedAreErrorsAndStayAsTheyAre) {
    using Reason = store::Error::Reason;
    const QString path = company_.file(File::Syouyo);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    file.close();
    const QString otherKey = company_.programDir() + QStringLiteral("/other.mdb");
    store::Connection(otherKey, QStringLiteral("another"), store::Connection::Mode::Create)
        .execute(QStringLiteral("CREATE TABLE t(a)"));
    QFile other(otherKey);
    ASSERT_TRUE(other.open(QIODevice::ReadOnly));

    struct Case {
        QByteArray content;
        Reason reason;
    };
    for (const Case& c :
         {Case{QByteArray(), Reason::Damaged}, Case{whole.left(whole.size() / 2 + 100), Reason::Damaged},
          Case{other.readAll(), Reason::NotOpen}}) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(c.content);
        file.close();
        EXPECT_EQ(failure(), c.reason) << c.content.size();
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), c.content);
        file.close();
    }
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(failure(), Reason::NotOpen);

    const QString bare = company_.dataDir() + QStringLiteral("/空のフォルダー");
    ASSERT_TRUE(QDir().mkpath(bare));
    EXPECT_THROW(openCompany(company_.programDir(), QStringLiteral("空のフォルダー"), held_), store::Error);
    EXPECT_TRUE(QDir(bare).isEmpty());
}

TEST_F(CompanyOpen, AFolderWithoutAPlaceForTheLockIsRefusedUntouched) {
    ASSERT_TRUE(QDir().mkpath(company_.companyDir() + u'/' + CompanyLock::fileName()));
    const QByteArray before = company_.fingerprint();
    EXPECT_EQ(failure(), store::Error::Reason::ReadOnly);
    EXPECT_EQ(company_.fingerprint(), before);
}

/// Another process that holds the company until it is killed.
class Holder {
  public:
    explicit Holder(const QString& folder) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        pid_ = fork();
        if (pid_ == 0) {
            const auto lock = CompanyLock::acquire(folder);
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
    Holder other(company_.companyDir());
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

TEST(InstanceLock, RefusesASecondAndTakesOverFromTheDead) {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("instance.lock"));
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

TEST(CompanyFolders, SubfoldersOnly) {
    support::CompanyFolder place;
    EXPECT_THROW(companyFolders(place.programDir() + QStringLiteral("/none")), store::Error);
    ASSERT_TRUE(QDir(place.dataDir()).isEmpty());
    EXPECT_TRUE(companyFolders(place.dataDir()).isEmpty());
    // The last one is a company whose creation was cut off.
    for (const QString& name : {QStringLiteral("乙社"), QStringLiteral("甲 社"), QStringLiteral(".0b5f")})
        ASSERT_TRUE(QDir(place.dataDir()).mkdir(name));
    ASSERT_TRUE(QFile(place.dataDir() + QStringLiteral("/memo.txt")).open(QIODevice::WriteOnly));
    QStringList names = companyFolders(place.dataDir());
    names.sort();
    EXPECT_EQ(names, QStringList({QStringLiteral("乙社"), QStringLiteral("甲 社")}));
}

}  // namespace
}  // namespace shell
