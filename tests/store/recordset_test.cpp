// Snapshots of a table's rows and the edit of one of them: types, conflicts, what is left alone.
#include "store/recordset.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "store/connection.h"
#include "store/row_edit.h"
#include "support/store_probe.h"

namespace {

using namespace Qt::StringLiterals;
using store::Connection;
using store::Recordset;
using store::RowEdit;
using store::Value;
using support::reasonOf;
using Reason = store::Error::Reason;

class Snapshot : public testing::Test {
  protected:
    void SetUp() override {
        cn_.execute(
            u"CREATE TABLE k(Code Text(2),名 Text(4),有 BOOLEAN,日 DATETIME,ID INTEGER PRIMARY KEY)"_s);
        for (const char16_t* code : {u"1", u"2", u"10"})
            cn_.execute(u"insert into k(Code,名,有,日) values(?,?,'True','2003/4/1')"_s, {code, u"元"});
    }
    Recordset open() { return cn_.open({u"k"_s, {}, {}, u"Clng(Code)"_s}); }
    /// What the file holds now: "1元 2元 10元".
    QString stored() { return support::texts(cn_.query(u"select Code||名 from k order by Clng(Code)"_s)); }
    void write(const Recordset& rows, int row, const QString& column, const Value& value) {
        RowEdit edit(cn_, rows, row);
        edit.set(column, value);
        edit.write();
    }
    QTemporaryDir dir_;
    Connection cn_{dir_.filePath(u"k.mdb"_s), store::Key(u"鍵"_s), Connection::Mode::Create};
};

TEST_F(Snapshot, AddsChangesAndRemoves) {
    const Recordset rows = open();
    RowEdit fresh(cn_, rows);
    EXPECT_EQ(reasonOf([&] { fresh.set(0, u"123"); }), Reason::Type);
    fresh.set(u"code"_s, 20);
    fresh.set(u"名"_s, u"新");
    fresh.write();
    write(rows, 1, u"名"_s, u"改");
    RowEdit(cn_, rows, 0).remove();
    EXPECT_EQ(stored(), u"2改 10元 20新"_s);
    EXPECT_EQ(support::texts(rows, 1), u"1 2 10"_s) << "a snapshot stays";
    EXPECT_EQ(reasonOf([&] { rows.value(u"無"_s); }), Reason::Type);
    EXPECT_EQ(reasonOf([&] { cn_.query(u"select * from k where 0"_s).value(0); }), Reason::Type);
}

/// Another program stores a Boolean and a date as it likes: no conflict, and not rewritten where nothing was
/// changed.
TEST_F(Snapshot, RefusesRowsChangedElsewhereAndNoOthers) {
    const Recordset rows = open();
    write(open(), 0, u"名"_s, u"他");
    EXPECT_EQ(reasonOf([&] { write(rows, 0, u"名"_s, u"私"); }), Reason::Conflict);
    write(rows, 0, u"Code"_s, u"3");  // another column than the one changed elsewhere
    write(rows, 1, u"有"_s, false);
    EXPECT_EQ(stored(), u"2元 3他 10元"_s);
    EXPECT_EQ(cn_.query(u"select count(*) from k where 有=0 and 日='2003/4/1'"_s).value(0), Value(1));
    write(rows, 1, u"日"_s, QDate(2003, 4, 2));
    RowEdit(cn_, rows, 2).remove();
    EXPECT_EQ(reasonOf([&] { RowEdit(cn_, rows, 2).remove(); }), Reason::Conflict);
    EXPECT_EQ(reasonOf([&] { write(rows, 2, u"名"_s, u"私"); }), Reason::Conflict);
    EXPECT_EQ(support::texts(open(), 1), u"2 3"_s);
}

}  // namespace
