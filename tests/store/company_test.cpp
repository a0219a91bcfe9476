// The files of a company: creation, links, opening, older and newer layouts.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "store/company_files.h"
#include "store/links.h"
#include "support/fault_vfs.h"

namespace {

using store::Connection;
using store::Error;
using store::File;
using store::LinkPass;
using store::Value;
using Reason = store::Error::Reason;

class Company : public testing::Test {
  protected:
    static void SetUpTestSuite() { FaultVfs::install(); }
    void SetUp() override { store::createCompany(data(), name_, {true, true}); }
    void TearDown() override { FaultVfs::disarm(); }

    QString data() const { return dir_.filePath(QStringLiteral("Data")); }
    QString path(File file) const { return store::filePath(data(), name_, file); }
    Connection file(File which) const { return Connection(path(which), store::databasePassword()); }
    QStringList folders() const {
        return QDir(data()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    static QString text(Connection& cn, const char* sql) {
        const store::Recordset rows = cn.query(QString::fromUtf8(sql));
        QStringList values;
        for (int i = 0; i < rows.recordCount(); ++i)
            for (int k = 0; k < rows.fieldCount(); ++k) values << rows.valueAt(i, k).toText();
        return values.join(u' ');
    }
    std::optional<Reason> openReason() const {
        try {
            store::openMainConnection(data(), name_);
        } catch (const Error& error) {
            return error.reason();
        }
        return std::nullopt;
    }
    QTemporaryDir dir_;
    QString name_ = QStringLiteral("ひなた 商会");
};

TEST_F(Company, HoldsEveryTableOfTheCatalogueInItsFile) {
    std::map<File, std::unique_ptr<Connection>> files;
    for (const store::Table& table : store::catalog()) {
        if (table.lifetime == store::Lifetime::Scratch) continue;
        auto& cn = files[table.file];
        if (!cn) cn = std::make_unique<Connection>(path(table.file), store::databasePassword());
        const store::Recordset rows = cn->query(QStringLiteral("select * from ") + table.name);
        ASSERT_EQ(rows.fieldCount(), static_cast<int>(table.columns.size())) << table.name.toStdString();
        for (int i = 0; i < rows.fieldCount(); ++i) {
            EXPECT_EQ(rows.fieldName(i), table.columns[static_cast<std::size_t>(i)].name);
            EXPECT_EQ(rows.fieldType(i), table.columns[static_cast<std::size_t>(i)].type)
                << table.name.toStdString() << i;
        }
    }
    Connection& kihon = *files[File::Kihon];
    EXPECT_EQ(text(kihon, "select * from 世帯主区分マスタ"), QStringLiteral("1 － 2 世帯主 3 非世帯主"));
    EXPECT_EQ(text(kihon, "select 会社名||自由マスタ1||自由マスタ5 from 会社テーブル"),
              QStringLiteral("未設定未設定"));
    EXPECT_EQ(text(kihon, "select 婚姻区分,取得年月日 from 入力可・不可テーブル"),
              QStringLiteral("True True"));
    Connection& syouyo = *files[File::Syouyo];
    EXPECT_EQ(text(syouyo, "select Code,標準名称,係数名称 from S係数名称設定 where ID in(1,18)"),
              QStringLiteral("01 年齢係数 年齢係数 18 入力3係数 入力3係数"));
    EXPECT_EQ(text(syouyo, "select count(*),min(ID),max(ID) from Sリンクテーブル"),
              QStringLiteral("41 1 41"));
    EXPECT_EQ(text(syouyo, "select テーブル名 from Sリンクテーブル where ID in(1,7,41)"),
              QStringLiteral("C新賃金体系手当 資格・免許マスタ 職種マスタ"));
    EXPECT_EQ(text(syouyo, "select count(*) from S配分区分"), QStringLiteral("0"));
}

TEST_F(Company, IsCreatedWholeOrNotAtAll) {
    const QStringList before = folders();
    const auto refused = [&](const QString& company) {
        try {
            store::createCompany(data(), company, {});
        } catch (const Error&) {
            return true;
        }
        return false;
    };
    for (const char16_t* company : {u"", u"..", u"a/b", u"a\\b", u"a:b", u" a", u".a", u"a."})
        EXPECT_TRUE(refused(QString::fromUtf16(company))) << QString::fromUtf16(company).toStdString();
    EXPECT_TRUE(refused(name_));
    FaultVfs::armWrite(std::numeric_limits<qint64>::max(), FaultVfs::Kind::DiskFull);
    EXPECT_FALSE(refused(QStringLiteral("数")));
    const qint64 writes = FaultVfs::writes();
    EXPECT_GT(writes, 20);
    for (const qint64 n : {qint64(1), qint64(2), writes / 3, writes / 2, writes - 1, writes}) {
        FaultVfs::armWrite(n, FaultVfs::Kind::DiskFull);
        EXPECT_TRUE(refused(QStringLiteral("新"))) << n;
        FaultVfs::disarm();
    }
    EXPECT_EQ(folders(), before + QStringList{QStringLiteral("数")});
    EXPECT_FALSE(refused(QStringLiteral("新")));
    EXPECT_EQ(QDir(data() + QStringLiteral("/新")).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(Company, LinksFollowAMovedFolder) {
    const QString moved = dir_.filePath(QStringLiteral("別の場所"));
    ASSERT_TRUE(QDir().rename(data(), moved));
    const auto at = [&](File file) { return store::filePath(moved, name_, file); };
    QString error;
    {
        Connection dao_db(at(File::Syouyo), store::databasePassword());
        dao_db.execute(QStringLiteral("update Sリンクテーブル set 接続='' where テーブル名='役職マスタ'"));
        dao_db.execute(
            QStringLiteral("insert into Sリンクテーブル values(null,'余分',';DATABASE=x;PWD=y;','余分')"));
        EXPECT_TRUE(refresh_links(dao_db, at(File::Kihon), LinkPass::Kihon, error));
        EXPECT_EQ(store::linkedFiles(dao_db),
                  (QStringList{path(File::Chingin), at(File::Kihon), QStringLiteral("x")}));
        EXPECT_TRUE(refresh_links(dao_db, at(File::Chingin), LinkPass::Chingin, error));
    }
    auto cn = store::openMainConnection(moved, name_);
    EXPECT_EQ(cn->schemas(),
              (QStringList{QStringLiteral("main"), QStringLiteral("chingin"), QStringLiteral("kihon")}));
    EXPECT_EQ(cn->filePath(QStringLiteral("kihon")), at(File::Kihon));
    EXPECT_EQ(text(*cn, "select count(*) from S係数名称設定 join 性別マスタ"), QStringLiteral("54"));
    EXPECT_FALSE(cn->hasTable(QStringLiteral("H評価入力")));
}

TEST_F(Company, LinksStopAtTheFirstFailure) {
    file(File::Kihon).execute(QStringLiteral("drop table 採用区分マスタ"));  // the third of the list
    Connection dao_db = file(File::Syouyo);
    dao_db.execute(QStringLiteral("update Sリンクテーブル set 接続='MS Access;旧'"));
    QString error;
    EXPECT_FALSE(refresh_links(dao_db, path(File::Kihon), LinkPass::Kihon, error));
    EXPECT_EQ(error,
              QStringLiteral("採用区分マスタ : リンク先にテーブル「採用区分マスタ」が見つかりません。"));
    EXPECT_EQ(
        text(dao_db,
             "select ID from Sリンクテーブル where 接続 like ';DATABASE=%ひなた 商会基本db.mdb;PWD=%;'"),
        QStringLiteral("7 8"));
    EXPECT_FALSE(refresh_links(dao_db, path(File::Hyouka) + u'x', LinkPass::Kihon, error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("資格・免許マスタ : "))) << error.toStdString();
    // Without the wage file its links simply stay.
    QFile::remove(path(File::Chingin));
    EXPECT_EQ(openReason(), std::nullopt);
}

TEST_F(Company, UpgradesAnOlderLayoutOnceAndRefusesANewerOne) {
    {
        Connection kihon = file(File::Kihon);
        kihon.execute(QStringLiteral("drop table Ｈ評価実績"));
        kihon.execute(QStringLiteral("alter table 役職マスタ drop column 設定年月日"));
        kihon.execute(QStringLiteral("insert into 役職マスタ values('1','部長')"));
        kihon.executeScript(QStringLiteral("PRAGMA user_version=0"));
        file(File::Syouyo).execute(QStringLiteral("drop table Tanka_hasuu"));
    }
    for (int round = 0; round < 2; ++round) {
        auto cn = store::openMainConnection(data(), name_);
        EXPECT_EQ(cn->hasTable(QStringLiteral("Tanka_hasuu")), round == 1);
        store::createMissingTables(*cn);
        EXPECT_EQ(text(*cn, "PRAGMA kihon.user_version").toInt(), store::kSchemaVersion);
        EXPECT_TRUE(cn->tables(QStringLiteral("kihon")).contains(QStringLiteral("Ｈ評価実績")));
        EXPECT_EQ(text(*cn, "select Code,役職,設定年月日 is null from 役職マスタ"),
                  QStringLiteral("1 部長 1"));
        EXPECT_EQ(text(*cn, "select count(*) from Tanka_hasuu"), QStringLiteral("0"));
    }
    file(File::Kihon).executeScript(QStringLiteral("PRAGMA user_version=%1").arg(store::kSchemaVersion + 1));
    EXPECT_EQ(openReason(), Reason::NotOpen);
}

TEST_F(Company, RemovesLeftOverJournalsOnlyWhenNothingWaitsForThem) {
    const QString stale = path(File::Syouyo) + QStringLiteral("-mj01234567A");
    const auto put = [](const QString& name) {
        QFile left(name);
        EXPECT_TRUE(left.open(QIODevice::WriteOnly));
    };
    put(stale);
    put(path(File::Hyouka) + QStringLiteral("-journal"));
    EXPECT_EQ(openReason(), std::nullopt);
    EXPECT_TRUE(QFile::exists(stale));
    QFile::remove(path(File::Hyouka) + QStringLiteral("-journal"));
    EXPECT_EQ(openReason(), std::nullopt);
    EXPECT_FALSE(QFile::exists(stale));
}

}  // namespace
