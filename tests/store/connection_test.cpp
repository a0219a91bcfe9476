// Files that do not open, statements, transactions over several files and writes that fail.
#include "store/connection.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <thread>

#include "schema/catalog.h"
#include "store/row_edit.h"
#include "store/work.h"
#include "support/fault_vfs.h"
#include "support/store_probe.h"

namespace {

using namespace Qt::StringLiterals;
using store::Binds;
using store::Connection;
using store::Money;
using store::Value;
using support::reasonOf;
using Mode = store::Connection::Mode;
using Reason = store::Error::Reason;

const store::Key kKey(u"鍵"_s);

class Store : public testing::Test {
  protected:
    static void SetUpTestSuite() { FaultVfs::install(); }
    void TearDown() override { FaultVfs::disarm(); }

    QString path(const QString& name) const { return dir_.filePath(name); }
    /// A file with a table of its own name: (ID, コード, 額), rows (i, 9 i, i yen).
    Connection create(const QString& name, int rows = 3) const {
        Connection cn(path(name), kKey, Mode::Create);
        store::Work work(cn);
        cn.execute(u"CREATE TABLE %1(ID INTEGER PRIMARY KEY,コード Text(6),額 CURRENCY)"_s.arg(name));
        for (int i = 1; i <= rows; ++i)
            cn.execute(u"insert into %1 values(?,?,?)"_s.arg(name),
                       {i, QString::number(i * 9), Money::fromYen(i)});
        work.commit();
        return Connection(path(name), kKey);
    }
    std::optional<Reason> openReason(const QString& name, const store::Key& key = kKey) const {
        const auto error =
            support::errorOf([&] { Connection(path(name), key).query(u"select * from "_s + name); });
        if (!error) return std::nullopt;
        EXPECT_FALSE(error->text().contains(u"select"_s)) << error->what();
        return error->reason();
    }
    static qint64 one(Connection& cn, const QString& sql) { return cn.query(sql).value(0).toInteger(); }
    QTemporaryDir dir_;
};

TEST_F(Store, TellsWhyAFileDoesNotOpen) {
    create(u"t"_s, 2000);
    EXPECT_EQ(openReason(u"t"_s), std::nullopt);
    EXPECT_EQ(openReason(u"missing"_s), Reason::NotOpen);
    EXPECT_FALSE(QFile::exists(path(u"missing"_s)));
    for (const store::Key& key : {store::Key(u"別"_s), store::Key::none()})
        EXPECT_EQ(openReason(u"t"_s, key), Reason::NotOpen);
    QFile file(path(u"t"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    const QByteArray whole = file.readAll();
    const auto write = [&](const QByteArray& bytes) { file.resize(0), file.seek(0), file.write(bytes); };
    ASSERT_GT(whole.size(), 4 * 4096);
    QByteArray flipped = whole;
    flipped[3 * 4096 + 77] = static_cast<char>(flipped[3 * 4096 + 77] ^ 1);
    for (const QByteArray& damaged : {QByteArray(), whole.left(100), whole.left(4096), whole.left(8192),
                                      whole.chopped(4096), whole.chopped(1), flipped}) {
        write(damaged);
        EXPECT_EQ(openReason(u"t"_s), Reason::Damaged) << damaged.size();
    }
    Connection other = create(u"u"_s);
    write(QByteArray(8192, 'x'));
    for (const QString& name : {u"t"_s, u"missing"_s})
        EXPECT_EQ(reasonOf([&] { other.attach(path(name), u"z"_s); }), Reason::NotOpen);
    write(whole.chopped(1));
    EXPECT_EQ(reasonOf([&] { other.attach(path(u"t"_s), u"z"_s); }), Reason::Damaged);
    EXPECT_EQ(other.schemas(), QStringList{u"main"_s});
}

TEST_F(Store, RefusesWritesItCannotDo) {
    Connection holder = create(u"t"_s), second(path(u"t"_s), kKey),
               reader(path(u"t"_s), kKey, Mode::ReadOnly);
    EXPECT_EQ(reasonOf([&] { reader.execute(u"delete from t"_s); }), Reason::ReadOnly);
    for (Connection* cn : {&holder, &second}) sqlite3_busy_timeout(cn->handle(), 20);
    std::optional<store::Work> work(std::in_place, holder);
    EXPECT_EQ(reasonOf([&] { store::Work{second}; }), Reason::Locked);
    EXPECT_FALSE(second.inTransaction());
    // A reader in the way of the commit leaves the transaction open, to be tried again.
    holder.execute(u"delete from t where ID=1"_s);
    {
        store::Statement rows = second.prepare(u"select * from t"_s);
        ASSERT_TRUE(rows.step());
        EXPECT_EQ(reasonOf([&] { work->commit(); }), Reason::Locked);
        EXPECT_TRUE(holder.inTransaction());
    }
    work->commit();
    EXPECT_EQ(one(second, u"select count(*) from t"_s), 2);
    // What is held for a moment only is waited for.
    Connection patient(path(u"t"_s), kKey);
    holder.executeScript(u"BEGIN IMMEDIATE"_s);
    std::thread releases([&] {
        QThread::msleep(50);
        holder.executeScript(u"COMMIT"_s);
    });
    EXPECT_EQ(reasonOf([&] { patient.executeScript(u"BEGIN IMMEDIATE; COMMIT"_s); }), std::nullopt);
    releases.join();
}

TEST_F(Store, OneTransactionCoversAllFiles) {
    create(u"t"_s);
    create(u"u"_s);
    Connection cn(path(u"t"_s), kKey), watcher(path(u"t"_s), kKey);
    for (Connection* each : {&cn, &watcher}) each->attach(path(u"u"_s), u"zweite"_s);
    EXPECT_TRUE(cn.hasTable(u"t"_s) && cn.hasTable(u"u"_s) && !cn.hasTable(u"c"_s));
    for (const QString& schema : {u"main"_s, u"zweite"_s})
        EXPECT_EQ(one(cn, u"PRAGMA %1.synchronous"_s.arg(schema)), 2);
    {
        store::Work dropped(cn);
        cn.execute(u"delete from t"_s);
        EXPECT_EQ(cn.execute(u"delete from u"_s), 3);
    }
    const auto total = [](Connection& each) {
        return one(each, u"select sum(t.額)+sum(u.額) from t join u using(ID)"_s);
    };
    // A failure of any write of the transaction leaves both files as they were, also for the next program.
    const auto raise = [&] {
        store::Work work(cn);
        for (const QString& table : {u"t"_s, u"u"_s}) cn.execute(u"update %1 set 額=額+10000"_s.arg(table));
        work.commit();
    };
    bool failed = true;
    for (qint64 n = 1; failed; ++n) {
        SCOPED_TRACE(n);
        const bool full = n % 2 != 0;
        FaultVfs::arm(FaultVfs::Operation::Write, n,
                      full ? FaultVfs::Kind::DiskFull : FaultVfs::Kind::IoError);
        const auto reason = reasonOf(raise);
        FaultVfs::disarm();
        failed = reason.has_value();
        EXPECT_FALSE(cn.inTransaction());
        EXPECT_TRUE(!failed || *reason == (full ? Reason::DiskFull : Reason::Engine));
        for (Connection* each : {&cn, &watcher})  // 1 + 2 + 3 yen in each file, one more for each row
            EXPECT_EQ(total(*each), failed ? 120000 : 180000);
        ASSERT_TRUE(failed ? n < 200 : n > 4);
    }
    // The removal of a journal is what makes a commit stand. Where it fails, what is told is what both
    // programs read: a commit that stands is none that failed.
    using Removal = FaultVfs::Removal;
    bool told[3] = {};
    for (const Removal kind : {Removal::Fails, Removal::IsDone, Removal::IsLast})
        for (qint64 n = 1; n <= 3; ++n) {
            SCOPED_TRACE(n + 10 * int(kind));
            const qint64 before = total(watcher);
            FaultVfs::armRemoval(n, kind);
            const auto reason = reasonOf(raise);
            FaultVfs::disarm();
            const bool unknown = reason == Reason::CommitUnknown;
            told[unknown ? 2 : reason.has_value()] = true;
            EXPECT_FALSE(cn.inTransaction());
            const qint64 after = unknown ? total(watcher) : reason ? before : before + 60000;
            for (Connection* each : {&cn, &watcher}) EXPECT_EQ(total(*each), after);
            for (const QString& table : {u"t"_s, u"u"_s})  // never one file without the other
                EXPECT_EQ(one(watcher, u"select sum(額) from "_s + table) * 2, after);
        }
    EXPECT_TRUE(told[0] && told[1] && told[2]);
    // A write without a transaction around it has a commit too.
    for (const Removal kind : {Removal::Fails, Removal::IsDone}) {
        const qint64 before = total(watcher);
        FaultVfs::armRemoval(1, kind);
        const auto reason = reasonOf([&] { cn.execute(u"update t set 額=額+20000"_s); });
        FaultVfs::disarm();
        EXPECT_EQ(reason.has_value(), kind == Removal::Fails);
        for (Connection* each : {&cn, &watcher}) EXPECT_EQ(total(*each), reason ? before : before + 60000);
    }
}

TEST_F(Store, SortsCodesByNumberAndRaisesOnOthers) {
    Connection cn = create(u"t"_s, 12);
    store::Recordset sorted = cn.query(u"select コード from t order by Clng(コード)"_s);
    EXPECT_EQ(support::texts(sorted), u"9 18 27 36 45 54 63 72 81 90 99 108"_s);
    const struct {
        const char16_t* function;
        Value argument;
        const char16_t* answer;  // of a failure: its text
        std::optional<Reason> reason = {};
    } cases[] = {{u"Clng", u"0012", u"12"},
                 {u"Clng", u" 1,234 ", u"1234"},
                 {u"Clng", 2.5, u"2"},
                 {u"Clng", u"-2147483648", u"-2147483648"},
                 {u"Cint", u"3.5", u"4"},
                 {u"CDate", u"平成15年4月1日", u"2003-04-01"},
                 {u"Clng", u"12x", u"型が一致しません。", Reason::Type},
                 {u"Clng", u"", u"型が一致しません。", Reason::Type},
                 {u"Clng", Value(), u"Null の使い方が不正です。", Reason::Type},
                 {u"Clng", u"2147483648", u"オーバーフローしました。", Reason::Overflow},
                 {u"Cint", u"32768", u"オーバーフローしました。", Reason::Overflow},
                 {u"CDate", u"2003/2/30", u"日付の形式が正しくありません。", Reason::Type}};
    for (const auto& c : cases) {
        QString answer;
        const auto error = support::errorOf([&] {
            answer = cn.query(u"select %1(?)"_s.arg(QString::fromUtf16(c.function)), {c.argument})
                         .value(0)
                         .toText();
        });
        EXPECT_EQ(error ? error->text() : answer, QString::fromUtf16(c.answer));
        EXPECT_EQ(error ? std::optional(error->reason()) : std::nullopt, c.reason)
            << c.argument.toText().toStdString();
    }
    // Rows before the bad one do not make half a recordset.
    cn.execute(u"update t set コード='1A' where ID=12"_s);
    EXPECT_EQ(reasonOf([&] { cn.query(u"select Clng(コード) from t"_s); }), Reason::Type);
}

// What a screen, a file or a companion hands to a prepared write is kept as a recordset keeps it.
TEST_F(Store, BindsIntoColumnsByTheirTypeAndWidth) {
    const schema::Table& table = schema::tableNamed(u"S実行個人別計算"_s);
    Connection cn = create(u"t"_s, 0);
    cn.execute(schema::createStatements(table).first());
    const QStringList columns{u"評価"_s, u"基準日"_s, u"基礎額Ａ"_s, u"年齢係数"_s};
    auto insert = cn.prepare(u"insert into S実行個人別計算(評価,基準日,基礎額Ａ,年齢係数) values(?,?,?,?)"_s);
    insert.into(schema::typesOf(table, columns))
        .bindAll({12, u"2026/12/10", u"1,234.5", Money::fromRaw(15000)})
        .run();
    EXPECT_EQ(one(cn,
                  u"select count(*) from S実行個人別計算 where 評価='12' and 基準日='2026-12-10' and "
                  "基礎額Ａ=12345000 and 年齢係数=1.5"_s),
              1);
    store::RowEdit row(cn, cn.open({table.name, {}, {}, {}}));
    const struct {
        int parameter;
        Value value;
        Reason reason;
    } refused[] = {{1, u"ABC", Reason::Type},   {1, 123, Reason::Type},
                   {2, u"13/40", Reason::Type}, {2, QDate(12003, 4, 1), Reason::Type},
                   {3, 1e30, Reason::Overflow}, {4, u"三", Reason::Type}};
    for (const auto& [parameter, value, reason] : refused) {
        EXPECT_EQ(reasonOf([&] { insert.bind(parameter, value); }), reason) << parameter;
        EXPECT_EQ(reasonOf([&] { row.set(columns[parameter - 1], value); }), reason) << parameter;
    }
    EXPECT_EQ(reasonOf([&] { insert.bind(1, u"ＡＢＣ"_s); }), Reason::Type);
    EXPECT_EQ(reasonOf([&] { insert.bind(1, 100.5); }), Reason::Type);
}

TEST_F(Store, ReadsAndBindsByType) {
    Connection cn = create(u"t"_s, 0);
    cn.execute(u"CREATE TABLE k(日 DATETIME,真 BOOLEAN,数 DOUBLE,額 CURRENCY,名 Text(4))"_s);
    const Binds row{QDate(2003, 4, 1), true, 0.5, Money::fromRaw(12345), u"山田𠮷"};
    cn.execute(u"insert into k values(?,?,?,?,?)"_s, row);
    cn.execute(u"insert into k values(null,null,null,null,null)"_s);
    EXPECT_EQ(one(cn, u"select count(*) from k where 日='2003-04-01' and 真=-1 and 額=12345"_s), 1);
    store::Statement rows = cn.prepare(u"select *,額 as raw,max(額,0) from k order by 日 desc"_s);
    ASSERT_TRUE(rows.step());
    for (int i = 0; i < 5; ++i) EXPECT_EQ(rows.value(i), row[static_cast<std::size_t>(i)]) << i;
    EXPECT_DOUBLE_EQ(rows.toDouble(3), 1.2345);
    EXPECT_EQ(rows.toMoney(6), Money::fromRaw(12345));
    ASSERT_TRUE(rows.step());
    EXPECT_EQ(rows.toText(4), QString());
    EXPECT_EQ(reasonOf([&] { rows.toBool(1); }), Reason::Type);  // who may meet no flag asks isNull() before
    EXPECT_EQ(reasonOf([&] { rows.toDate(0); }), Reason::Type);
    EXPECT_EQ(reasonOf([&] { rows.toDouble(2); }), Reason::Type);
    EXPECT_EQ(reasonOf([&] { rows.toMoney(3); }), Reason::Type);
    EXPECT_FALSE(rows.step());
    EXPECT_EQ(reasonOf([&] { cn.execute(u"delete from k where 数=?"_s, {1.0 / 0.0}); }), Reason::Overflow);
}

}  // namespace
