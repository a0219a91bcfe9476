// The files of a company: creation, links, opening, older and newer layouts.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "company/create.h"
#include "company/key.h"
#include "company/main_connection.h"
#include "schema/files.h"
#include "schema/links.h"
#include "schema/upgrade.h"
#include "support/fault_vfs.h"
#include "support/store_probe.h"

namespace {

using namespace Qt::StringLiterals;
using schema::File;
using schema::LinkPass;
using store::Connection;
using Reason = store::Error::Reason;

class Company : public testing::Test {
  protected:
    static void SetUpTestSuite() { FaultVfs::install(); }
    void SetUp() override { company::createCompany(data(), name_, {true, true}); }
    void TearDown() override { FaultVfs::disarm(); }

    QString data() const { return dir_.filePath(u"Data"_s); }
    QString path(File file) const { return schema::filePath(data(), name_, file); }
    Connection file(File which) const { return Connection(path(which), company::sharedKey()); }
    QStringList folders() const {
        return QDir(data()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    static QString text(Connection& cn, const QString& sql) { return support::texts(cn.query(sql)); }
    std::optional<Reason> openReason() const {
        return support::reasonOf([&] { company::openMainConnection(data(), name_); });
    }
    QTemporaryDir dir_;
    QString name_ = u"ひなた 商会"_s;
};

TEST_F(Company, HoldsEveryTableOfTheCatalogueInItsFile) {
    std::map<File, std::unique_ptr<Connection>> files;
    for (const schema::Table& table : schema::catalog()) {
        if (table.lifetime == schema::Lifetime::Scratch) continue;
        auto& cn = files[table.file];
        if (!cn) cn = std::make_unique<Connection>(path(table.file), company::sharedKey());
        const store::Statement rows = cn->prepare(u"select * from "_s + table.name);
        ASSERT_EQ(rows.columnCount(), static_cast<int>(table.columns.size())) << table.name.toStdString();
        for (int i = 0; i < rows.columnCount(); ++i) {
            const schema::Column& column = table.columns[static_cast<std::size_t>(i)];
            EXPECT_TRUE(rows.columnName(i) == column.name && rows.columnType(i) == column.type)
                << table.name.toStdString() << i;
        }
        QStringList indexes;
        for (const QStringList& columns : table.indexes) indexes << columns.join(u',');
        const QString listed =
            u"select group_concat(c.name) from pragma_index_list('%1') i, pragma_index_info(i.name) c "
            "group by i.seq order by i.seq desc"_s;
        EXPECT_EQ(text(*cn, listed.arg(table.name)), indexes.join(u' ')) << table.name.toStdString();
    }
    Connection& kihon = *files[File::Kihon];
    // Forms that would break comparisons don't come in.
    for (const QString& wrong :
         {u"履歴書テーブル(退職フラグ) values(1)"_s, u"会社テーブル(会社名) values('よい')"_s,
          u"履歴書テーブル(生年月日) values('2003/4/1')"_s,
          u"履歴書テーブル(生年月日) values('12003-04-01')"_s})
        EXPECT_EQ(support::errorOf([&] { kihon.execute(u"insert into "_s + wrong); }).has_value(),
                  !wrong.contains(u"よい"_s))
            << wrong.toStdString();
    for (const QString& wrong : {u"1.5"_s, u"'x'"_s, u"x'31'"_s})
        EXPECT_TRUE(support::errorOf([&] {
            files[File::Syouyo]->execute(u"insert into S実行予算(金一封合計) values(%1)"_s.arg(wrong));
        })) << wrong.toStdString();
    kihon.execute(u"delete from 会社テーブル where 会社名 = 'よい'"_s);
    EXPECT_EQ(text(kihon, u"select * from 世帯主区分マスタ"_s), u"1 － 2 世帯主 3 非世帯主"_s);
    EXPECT_EQ(text(kihon, u"select 会社名||自由マスタ1||自由マスタ5 from 会社テーブル"_s), u"未設定未設定"_s);
    EXPECT_EQ(text(kihon, u"select 婚姻区分,取得年月日 from 入力可・不可テーブル"_s), u"True True"_s);
    Connection& syouyo = *files[File::Syouyo];
    EXPECT_EQ(text(syouyo, u"select Code,標準名称,係数名称 from S係数名称設定 where ID in(1,18)"_s),
              u"01 年齢係数 年齢係数 18 入力3係数 入力3係数"_s);
    EXPECT_EQ(text(syouyo, u"select count(*),min(ID),max(ID) from Sリンクテーブル"_s), u"41 1 41"_s);
    EXPECT_EQ(text(syouyo, u"select テーブル名 from Sリンクテーブル where ID in(1,7,41)"_s),
              u"C新賃金体系手当 資格・免許マスタ 職種マスタ"_s);
    EXPECT_EQ(text(syouyo, u"select count(*) from S配分区分"_s), u"0"_s);
}

TEST_F(Company, IsCreatedWholeOrNotAtAll) {
    const QStringList before = folders();
    const auto refused = [&](const QString& company) {
        return support::errorOf([&] { company::createCompany(data(), company, {}); }).has_value();
    };
    for (const QString& company : {u""_s, u".."_s, u"a/b"_s, u"a\\b"_s, u"a:b"_s, u" a"_s, u".a"_s, u"a."_s,
                                   u"a'b"_s, u"nul"_s, u"Com1.x"_s, QString(41, u'会'), name_})
        EXPECT_TRUE(refused(company)) << company.toStdString();
    FaultVfs::arm(FaultVfs::Operation::Write, std::numeric_limits<qint64>::max());
    EXPECT_FALSE(refused(u"数"_s));
    const qint64 writes = FaultVfs::counted();
    EXPECT_GT(writes, 20);
    for (const qint64 n : {qint64(1), qint64(2), writes / 3, writes / 2, writes - 1, writes}) {
        FaultVfs::arm(FaultVfs::Operation::Write, n, FaultVfs::Kind::DiskFull);
        EXPECT_TRUE(refused(u"新"_s)) << n;
        FaultVfs::disarm();
    }
    EXPECT_EQ(folders(), before + QStringList{u"数"_s});
    EXPECT_FALSE(refused(u"新"_s));
    EXPECT_EQ(QDir(data() + u"/新"_s).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(Company, LinksFollowAMovedFolder) {
    const QString moved = dir_.filePath(u"別の場所"_s);
    ASSERT_TRUE(QDir().rename(data(), moved));
    const auto at = [&](File file) { return schema::filePath(moved, name_, file); };
    QString error;
    {
        Connection dao_db(at(File::Syouyo), company::sharedKey());
        dao_db.execute(u"update Sリンクテーブル set 接続='' where テーブル名='役職マスタ'"_s);
        dao_db.execute(u"insert into Sリンクテーブル values(null,'余分',';DATABASE=x;PWD=y;','余分')"_s);
        const QString other =
            u"ODBC;DATABASE="_s + at(File::Kihon);  // of another kind: checked, not rewritten
        dao_db.execute(u"update Sリンクテーブル set 接続=? where テーブル名='コースマスタ'"_s, {other});
        EXPECT_TRUE(refresh_links(dao_db, at(File::Kihon), LinkPass::Kihon, error));
        EXPECT_EQ(text(dao_db, u"select 接続 from Sリンクテーブル where テーブル名='コースマスタ'"_s), other);
        EXPECT_EQ(schema::linkedFiles(dao_db), (QStringList{path(File::Chingin), at(File::Kihon), u"x"_s}));
        EXPECT_TRUE(refresh_links(dao_db, at(File::Chingin), LinkPass::Chingin, error));
    }
    auto cn = company::openMainConnection(moved, name_);
    EXPECT_EQ(cn->schemas(), (QStringList{u"main"_s, u"chingin"_s, u"kihon"_s}));
    EXPECT_EQ(cn->filePath(u"kihon"_s), at(File::Kihon));
    EXPECT_EQ(text(*cn, u"select count(*) from S係数名称設定 join 性別マスタ"_s), u"54"_s);
    EXPECT_FALSE(cn->hasTable(u"H評価入力"_s));
}

TEST_F(Company, LinksStopAtTheFirstFailure) {
    file(File::Kihon).execute(u"drop table 採用区分マスタ"_s);  // the third of the list
    Connection dao_db = file(File::Syouyo);
    dao_db.execute(u"update Sリンクテーブル set 接続='MS Access;旧'"_s);
    QString error;
    EXPECT_FALSE(refresh_links(dao_db, path(File::Kihon), LinkPass::Kihon, error));
    EXPECT_EQ(
        error,
        u"採用区分マスタ : リンク先「ひなた 商会基本db.mdb」にテーブル「採用区分マスタ」が見つかりません。"_s);
    EXPECT_EQ(
        text(dao_db,
             u"select ID from Sリンクテーブル where 接続 like ';DATABASE=%ひなた 商会基本db.mdb;PWD=%;'"_s),
        u"7 8"_s);
    EXPECT_FALSE(refresh_links(dao_db, path(File::Hyouka) + u'x', LinkPass::Kihon, error));
    EXPECT_TRUE(error.startsWith(u"資格・免許マスタ : "_s)) << error.toStdString();
    {  // another company's password
        Connection other(path(File::Hyouka) + u'y', store::Key(u"他"_s), Connection::Mode::Create);
        other.execute(u"create table t(a)"_s);
    }
    EXPECT_FALSE(refresh_links(dao_db, path(File::Hyouka) + u'y', LinkPass::Kihon, error));
    EXPECT_TRUE(error.startsWith(u"資格・免許マスタ : 「ひなた 商会評価db.mdby」："_s))
        << error.toStdString();
    // Without the wage file its links simply stay.
    QFile::remove(path(File::Chingin));
    EXPECT_EQ(openReason(), std::nullopt);
}

TEST_F(Company, UpgradesAnOlderLayoutOnceAndRefusesANewerOne) {
    {
        Connection kihon = file(File::Kihon);
        kihon.execute(u"drop table Ｈ評価実績"_s);
        kihon.execute(u"alter table 役職マスタ drop column 設定年月日"_s);
        kihon.execute(u"insert into 役職マスタ values('1','部長')"_s);
        kihon.executeScript(u"PRAGMA user_version=0"_s);
        Connection syouyo = file(File::Syouyo);
        for (const QString& table : {u"Tanka_hasuu"_s, u"Sコード変更予定"_s})
            syouyo.execute(u"drop table "_s + table);
        syouyo.executeScript(u"PRAGMA user_version=1"_s);
    }
    for (int round = 0; round < 2; ++round) {
        auto cn = company::openMainConnection(data(), name_);
        EXPECT_EQ(cn->hasTable(u"Tanka_hasuu"_s), round == 1);
        schema::createMissingTables(*cn);
        EXPECT_EQ(text(*cn, u"PRAGMA kihon.user_version"_s).toInt(), schema::kSchemaVersion);
        EXPECT_EQ(text(*cn, u"select count(*) from Sコード変更予定"_s), u"0"_s);
        EXPECT_TRUE(cn->tables(u"kihon"_s).contains(u"Ｈ評価実績"_s));
        EXPECT_EQ(text(*cn, u"select Code,役職,設定年月日 is null from 役職マスタ"_s), u"1 部長 1"_s);
        EXPECT_EQ(text(*cn, u"select count(*) from Tanka_hasuu"_s), u"0"_s);
    }
    file(File::Kihon).executeScript(u"PRAGMA user_version=%1"_s.arg(schema::kSchemaVersion + 1));
    EXPECT_EQ(openReason(), Reason::NotOpen);
}

TEST_F(Company, RemovesLeftOverJournalsOnlyWhenNothingWaitsForThem) {
    QFile stale(path(File::Syouyo) + u"-mj01234567A"_s), journal(path(File::Hyouka) + u"-journal"_s);
    for (QFile* left : {&stale, &journal}) {
        ASSERT_TRUE(left->open(QIODevice::WriteOnly));
        left->close();
    }
    EXPECT_EQ(openReason(), std::nullopt);
    EXPECT_TRUE(stale.exists());
    journal.remove();
    EXPECT_EQ(openReason(), std::nullopt);
    EXPECT_FALSE(stale.exists());
}

}  // namespace
