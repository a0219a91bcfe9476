// A company's set of files is changed by a process that is killed: the next start finds the old set or the
// new one and needs no hand.
#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include "company/backup.h"
#include "company/company_open.h"
#include "company/company_set.h"
#include "company/create.h"
#include "company/key.h"
#include "durability/set_changes.h"
#include "support/company_fixture.h"
#include "support/former_company.h"

namespace {

using namespace Qt::StringLiterals;
using durability::kSetCompany;
using durability::SetChange;

void copyFolder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    for (const QString& name : QDir(from).entryList(QDir::Files))
        QFile::copy(from + u'/' + name, to + u'/' + name);
}

class SetKill : public testing::TestWithParam<int> {
  protected:
    /// 新 is a company as it is made, 旧 the same with other contents, both as backups too; 鍵 is 旧 locked
    /// with a key of its own, 移 one that was moved from the former form.
    void SetUp() override {
        makeSide(u"新"_s, u"select 1"_s);
        makeSide(u"旧"_s, u"insert into 役職マスタ values('01','部長',null)"_s);
        copyFolder(sides_.filePath(u"旧/Data/"_s) + kSetCompany,
                   sides_.filePath(u"鍵/Data/"_s) + kSetCompany);
        durability::runSetChange(SetChange::Lock, sides_.filePath(u"鍵"_s));
        for (const QString& name : {u"旧社基本db.mdb"_s, u"旧社賞与db.mdb"_s}) {
            QDir().mkpath(sides_.filePath(u"移/former"_s));
            ASSERT_TRUE(
                support::writeFile(sides_.filePath(u"移/former/"_s) + name, support::formerDatabase()));
        }
        durability::runSetChange(SetChange::Move, sides_.filePath(u"移"_s));
        rows_[u"移"_s] = rowsIn(sides_.filePath(u"移/Data/"_s) + kSetCompany);
    }
    void makeSide(const QString& side, const QString& sql) {
        const company::Places places = company::placesOf(sides_.filePath(side));
        company::createCompany(places.data, kSetCompany, {true, true, true});
        const QString folder = places.data + u'/' + kSetCompany;
        store::Connection(folder + u'/' + company::databaseNames(kSetCompany).at(0), company::sharedKey())
            .execute(sql);
        company::makeBackup(folder, kSetCompany, places.backups() + u'/' + kSetCompany);
        rows_[side] = rowsIn(folder);
    }
    static QByteArray rowsIn(const QString& folder) {
        QByteArray all;
        if (company::filesLocked(folder)) {
            EXPECT_TRUE(company::learnKey(folder, durability::kSetPassword));
        }
        for (const QString& database : company::databaseNames(kSetCompany)) {
            const QString path = folder + u'/' + database;
            if (!QFileInfo::exists(path)) return "-";
            store::Connection file(path, company::keyOf(folder));
            all += support::dump(file);
        }
        return all;
    }
    QString sideOf(const QString& folder) const {
        if (!QFileInfo::exists(folder)) return u"なし"_s;
        const QByteArray rows = rowsIn(folder);
        if (company::filesLocked(folder)) return rows == rows_[u"旧"_s] ? u"鍵"_s : u"こわれている"_s;
        for (const QString& side : {u"新"_s, u"旧"_s, u"移"_s})
            if (rows == rows_[side]) return side;
        return u"こわれている"_s;
    }
    /// A program folder as it is before the change.
    void prepare(SetChange change) {
        work_ = std::make_unique<QTemporaryDir>();
        places_ = company::placesOf(work_->path());
        QDir().mkpath(places_.data);
        const QString data = u"/Data/"_s + kSetCompany, backup = u"/BackupDB/"_s + kSetCompany;
        if (change == SetChange::Move)
            copyFolder(sides_.filePath(u"移/former"_s), work_->path() + u"/former"_s);
        else if (change != SetChange::Create)
            copyFolder(sides_.filePath(change == SetChange::Unlock ? u"鍵"_s : u"旧"_s) + data,
                       work_->path() + data);
        if (change == SetChange::BackUp) {  // of the new rows over a backup of the old ones
            QDir(work_->path() + data).removeRecursively();
            copyFolder(sides_.filePath(u"新"_s) + data, work_->path() + data);
            copyFolder(sides_.filePath(u"旧"_s) + backup, work_->path() + backup);
        }
        if (change == SetChange::Restore)
            copyFolder(sides_.filePath(u"新"_s) + backup, work_->path() + backup);
    }
    /// The process works for so long at most; how long it worked.
    int work(SetChange change, int microseconds) {
        QProcess child;
        child.start(QStringLiteral(DURABILITY_CHILD),
                    {u"set"_s, QString::number(int(change)), work_->path()});
        EXPECT_TRUE(child.waitForReadyRead(30000)) << child.readAllStandardError().constData();
        QElapsedTimer clock;
        clock.start();
        if (microseconds < 0)
            child.waitForFinished();
        else
            QThread::usleep(static_cast<unsigned long>(microseconds));
        const int worked = static_cast<int>(clock.nsecsElapsed() / 1000);
        child.kill();
        child.waitForFinished();
        return worked;
    }

    QTemporaryDir sides_;
    QHash<QString, QByteArray> rows_;
    std::unique_ptr<QTemporaryDir> work_;
    company::Places places_;
};

}  // namespace

TEST_P(SetKill, LeavesTheOldSetOrTheNewOne) {
    const auto change = SetChange(GetParam());
    const struct {
        QString before, after;
    } sides[] = {{u"なし"_s, u"新"_s}, {u"旧"_s, u"なし"_s}, {u"旧"_s, u"新"_s}, {u"旧"_s, u"新"_s},
                 {u"旧"_s, u"旧"_s},   {u"旧"_s, u"鍵"_s},   {u"鍵"_s, u"旧"_s}, {u"なし"_s, u"移"_s}};
    const auto [before, after] = sides[GetParam()];
    prepare(change);
    double span = work(change, -1);
    const int kills =
        qEnvironmentVariableIntValue("MINT_KILLS") > 0 ? qEnvironmentVariableIntValue("MINT_KILLS") : 20;
    QRandomGenerator random(20261210);
    QHash<QString, int> seen;
    for (int kill = 0; kill < kills; ++kill) {
        SCOPED_TRACE(kill);
        prepare(change);
        work(change, static_cast<int>(random.generateDouble() * 1.2 * span));
        // The next start lists the companies, and the backups.
        company::companyFolders(places_.data);
        const bool backup = change == SetChange::BackUp;
        if (backup) {
            const auto backups = company::backupsIn(places_.backups());
            ASSERT_TRUE(backups.size() == 1 && backups[0].whole);
        }
        const QString side = sideOf((backup ? places_.backups() : places_.data) + u'/' + kSetCompany);
        ASSERT_TRUE(side == before || side == after) << side.toStdString();
        for (const QString& name :
             QDir(places_.data).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot))
            EXPECT_EQ(name, kSetCompany);
        for (const QString& name : QDir(places_.data + u'/' + kSetCompany).entryList(QDir::Files))
            EXPECT_FALSE(name.endsWith(u".mdbwk"));
        ++seen[side];
        // However busy the machine is: the kills gather around the moment of the decision.
        if (before != after) span *= side == after ? 0.85 : 1.2;
    }
    if (before != after) {
        EXPECT_GT(std::min(seen[before], seen[after]), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, SetKill, testing::Range(0, durability::kSetChanges));
