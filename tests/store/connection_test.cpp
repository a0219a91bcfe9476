// Files that do not open, statements, transactions over several files and writes that fail.
#include "store/connection.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <QTemporaryDir>

#include "support/fault_vfs.h"

namespace {

using store::Binds;
using store::Connection;
using store::Error;
using store::Money;
using store::Value;
using Mode = store::Connection::Mode;
using Reason = store::Error::Reason;

const QString kKey = QStringLiteral("鍵");

class Store : public testing::Test {
  protected:
    static void SetUpTestSuite() { FaultVfs::install(); }
    void TearDown() override { FaultVfs::disarm(); }

    QString path(const char* name) const { return dir_.filePath(QString::fromUtf8(name)); }
    /// A file with the table t(ID, コード, 額) and some rows.
    Connection create(const char* name, int rows = 3) const {
        Connection cn(path(name), kKey, Mode::Create);
        store::Transaction transaction(cn);
        cn.execute(QStringLiteral("CREATE TABLE %1(ID INTEGER PRIMARY KEY,コード Text(6),額 CURRENCY)")
                       .arg(QString::fromUtf8(name)));
        for (int i = 1; i <= rows; ++i)
            cn.execute(QStringLiteral("insert into %1 values(?,?,?)").arg(QString::fromUtf8(name)),
                       {i, QString::number(i * 9), Money::fromYen(i)});
        transaction.commit();
        return Connection(path(name), kKey);
    }
    void rewrite(const char* name, const std::function<void(QByteArray&)>& change) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        change(bytes);
        file.resize(0);
        file.seek(0);
        file.write(bytes);
    }
    std::optional<Reason> openReason(const char* name, const QString& key = kKey) const {
        try {
            Connection cn(path(name), key);
            cn.query(QStringLiteral("select * from %1").arg(QString::fromUtf8(name)));
        } catch (const Error& error) {
            EXPECT_FALSE(error.text().contains(QStringLiteral("select"))) << error.what();
            return error.reason();
        }
        return std::nullopt;
    }
    static qint64 one(Connection& cn, const char* sql) {
        return cn.query(QString::fromUtf8(sql)).value(0).toInteger();
    }
    QTemporaryDir dir_;
};

template <typename Call>
std::optional<Reason> reasonOf(Call&& call) {
    try {
        call();
    } catch (const Error& error) {
        return error.reason();
    }
    return std::nullopt;
}

TEST_F(Store, TellsWhyAFileDoesNotOpen) {
    create("t", 2000);
    EXPECT_EQ(openReason("t"), std::nullopt);
    EXPECT_EQ(openReason("missing"), Reason::NotOpen);
    EXPECT_FALSE(QFile::exists(path("missing")));
    EXPECT_EQ(openReason("t", QStringLiteral("別")), Reason::NotOpen);
    EXPECT_EQ(openReason("t", QString()), Reason::NotOpen);
    const QByteArray whole = [&] {
        QFile file(path("t"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }();
    ASSERT_GT(whole.size(), 4 * 4096);
    for (const qsizetype length : {qsizetype(0), qsizetype(100), qsizetype(4096), qsizetype(8192),
                                   whole.size() - 4096, whole.size() - 1}) {
        rewrite("t", [&](QByteArray& bytes) { bytes = whole.left(length); });
        EXPECT_EQ(openReason("t"), Reason::Damaged) << length;
    }
    rewrite("t", [&](QByteArray& bytes) {
        bytes = whole;
        bytes[3 * 4096 + 77] = static_cast<char>(bytes[3 * 4096 + 77] ^ 1);
    });
    EXPECT_EQ(openReason("t"), Reason::Damaged);
    Connection other = create("u");
    rewrite("t", [&](QByteArray& bytes) { bytes = QByteArray(8192, 'x'); });
    EXPECT_EQ(reasonOf([&] { other.attach(path("t"), QStringLiteral("z"), kKey); }), Reason::NotOpen);
    EXPECT_EQ(reasonOf([&] { other.attach(path("missing"), QStringLiteral("z"), kKey); }), Reason::NotOpen);
    EXPECT_EQ(other.schemas(), QStringList{QStringLiteral("main")});
}

TEST_F(Store, RefusesWritesItCannotDo) {
    Connection holder = create("t");
    Connection reader(path("t"), kKey, Mode::ReadOnly);
    EXPECT_EQ(reasonOf([&] { reader.execute(QStringLiteral("delete from t")); }), Reason::ReadOnly);
    holder.beginTrans();
    Connection second(path("t"), kKey);
    for (Connection* cn : {&holder, &second}) sqlite3_busy_timeout(cn->handle(), 20);
    EXPECT_EQ(reasonOf([&] { second.beginTrans(); }), Reason::Locked);
    EXPECT_FALSE(second.inTransaction());
    // A reader in the way of the commit leaves the transaction open, to be tried again.
    holder.execute(QStringLiteral("delete from t where ID=1"));
    {
        store::Statement rows = second.prepare(QStringLiteral("select * from t"));
        ASSERT_TRUE(rows.step());
        EXPECT_EQ(reasonOf([&] { holder.commitTrans(); }), Reason::Locked);
        EXPECT_TRUE(holder.inTransaction());
    }
    holder.commitTrans();
    EXPECT_EQ(one(second, "select count(*) from t"), 2);
}

TEST_F(Store, OneTransactionCoversAllFiles) {
    create("b");
    Connection cn = create("a");
    cn.attach(path("b"), QStringLiteral("zweite"), kKey);
    EXPECT_TRUE(cn.hasTable(QStringLiteral("a")) && cn.hasTable(QStringLiteral("b")));
    EXPECT_FALSE(cn.hasTable(QStringLiteral("c")));
    for (const char* schema : {"main", "zweite"})
        EXPECT_EQ(one(cn, qPrintable(QStringLiteral("PRAGMA %1.synchronous").arg(QString::fromUtf8(schema)))),
                  2);
    {
        store::Transaction dropped(cn);
        cn.execute(QStringLiteral("delete from a"));
        EXPECT_EQ(cn.execute(QStringLiteral("delete from b")), 3);
    }
    EXPECT_EQ(one(cn, "select count(*) from a join b using(ID)"), 3);

    // A failure of any write of the transaction leaves both files as they were, also for the next program.
    const auto work = [](Connection& both) {
        store::Transaction transaction(both);
        both.execute(QStringLiteral("update a set 額=額+10000"));
        both.execute(QStringLiteral("update b set 額=額+10000"));
        transaction.commit();
    };
    const qint64 before = one(cn, "select sum(a.額)+sum(b.額) from a join b using(ID)");
    Connection both(path("a"), kKey);
    both.attach(path("b"), QStringLiteral("zweite"), kKey);
    std::optional<Reason> reason;
    qint64 n = 0;
    do {
        ++n;
        const bool full = n % 2 != 0;
        FaultVfs::armWrite(n, full ? FaultVfs::Kind::DiskFull : FaultVfs::Kind::IoError);
        reason = reasonOf([&] { work(both); });
        FaultVfs::disarm();
        EXPECT_FALSE(both.inTransaction()) << n;
        if (reason) {
            EXPECT_EQ(*reason, full ? Reason::DiskFull : Reason::Engine) << n;
        }
        const qint64 expected = before + (reason ? 0 : 60000);
        EXPECT_EQ(one(cn, "select sum(a.額)+sum(b.額) from a join b using(ID)"), expected) << n;
        ASSERT_LT(n, 200);
    } while (reason);
    EXPECT_GT(n, 4);
}

TEST_F(Store, SortsCodesByNumberAndRaisesOnOthers) {
    Connection cn = create("t", 12);
    store::Recordset sorted = cn.query(QStringLiteral("select コード from t order by Clng(コード)"));
    for (int i = 0; i < 12; ++i) EXPECT_EQ(sorted.valueAt(i, 0), Value(QString::number((i + 1) * 9)));
    struct Case {
        const char* sql;
        Value argument;
        const char16_t* answer;  // of a failure: its text
        std::optional<Reason> reason;
    };
    const Case cases[] = {
        {"select Clng(?)", u"0012", u"12", {}},
        {"select Clng(?)", u" 1,234 ", u"1234", {}},
        {"select Clng(?)", u"-2147483648", u"-2147483648", {}},
        {"select Clng(?)", 2.5, u"2", {}},
        {"select Cint(?)", u"3.5", u"4", {}},
        {"select CDate(?)", u"平成15年4月1日", u"2003-04-01", {}},
        {"select Clng(?)", u"12x", u"型が一致しません。", Reason::Type},
        {"select Clng(?)", u"", u"型が一致しません。", Reason::Type},
        {"select Clng(?)", Value(), u"Null の使い方が不正です。", Reason::Type},
        {"select Clng(?)", u"2147483648", u"オーバーフローしました。", Reason::Overflow},
        {"select Cint(?)", u"32768", u"オーバーフローしました。", Reason::Overflow},
        {"select CDate(?)", u"2003/2/30", u"日付の形式が正しくありません。", Reason::Type},
    };
    for (const Case& c : cases) {
        QString answer;
        std::optional<Reason> reason;
        try {
            answer = cn.query(QString::fromUtf8(c.sql), {c.argument}).value(0).toText();
        } catch (const Error& error) {
            answer = error.text();
            reason = error.reason();
        }
        EXPECT_EQ(answer, QString::fromUtf16(c.answer));
        EXPECT_EQ(reason, c.reason) << c.sql;
    }
    // Rows before the bad one do not make half a recordset.
    cn.execute(QStringLiteral("update t set コード='1A' where ID=12"));
    EXPECT_EQ(reasonOf([&] { cn.query(QStringLiteral("select Clng(コード) from t")); }), Reason::Type);
    EXPECT_EQ(reasonOf([&] { sorted.requery(); }), Reason::Type);
    EXPECT_EQ(sorted.recordCount(), 12);
}

TEST_F(Store, ReadsAndBindsByType) {
    Connection cn = create("t", 0);
    cn.execute(QStringLiteral("CREATE TABLE k(日 DATETIME,真 BOOLEAN,数 DOUBLE,額 CURRENCY,名 Text(4))"));
    const Binds row{QDate(2003, 4, 1), true, 0.5, Money::fromRaw(12345), u"山田𠮷"};
    cn.execute(QStringLiteral("insert into k values(?,?,?,?,?)"), row);
    cn.execute(QStringLiteral("insert into k values(null,0,null,null,null)"));
    EXPECT_EQ(one(cn, "select count(*) from k where 日='2003-04-01' and 真=-1 and 額=12345"), 1);
    store::Statement rows =
        cn.prepare(QStringLiteral("select *,額 as raw,max(額,0) from k order by 日 desc"));
    ASSERT_TRUE(rows.step());
    for (int i = 0; i < 5; ++i) EXPECT_EQ(rows.value(i), row[static_cast<std::size_t>(i)]) << i;
    EXPECT_DOUBLE_EQ(rows.toDouble(3), 1.2345);
    EXPECT_EQ(rows.toMoney(6), Money::fromRaw(12345));
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.toText(4), QString());
    EXPECT_FALSE(rows.toBool(1));
    EXPECT_EQ(reasonOf([&] { rows.toDate(0); }), Reason::Type);
    EXPECT_EQ(reasonOf([&] { rows.toDouble(2); }), Reason::Type);
    EXPECT_EQ(reasonOf([&] { rows.toMoney(3); }), Reason::Type);
    EXPECT_FALSE(rows.step());
    EXPECT_EQ(reasonOf([&] { cn.execute(QStringLiteral("delete from k where 数=?"), {1.0 / 0.0}); }),
              Reason::Overflow);
}

}  // namespace
