// Snapshots of a table: positions, edits, conflicts.
#include "store/recordset.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "store/connection.h"
#include "support/store_probe.h"

namespace {

using namespace Qt::StringLiterals;
using store::Connection;
using store::Recordset;
using store::Value;
using support::reasonOf;
using Reason = store::Error::Reason;

class Snapshot : public testing::Test {
  protected:
    void SetUp() override {
        cn_.execute(u"CREATE TABLE k(Code Text(2),名 Text(4),ID INTEGER PRIMARY KEY)"_s);
        for (const char16_t* code : {u"1", u"2", u"10"})
            cn_.execute(u"insert into k(Code,名) values(?,?)"_s, {code, u"元"});
    }
    Recordset open(const QString& where = {}) { return cn_.open({u"k"_s, where, {}, u"Clng(Code)"_s}); }
    /// What the file holds now: "1元 2元 10元".
    QString stored() { return support::texts(cn_.query(u"select Code||名 from k order by Clng(Code)"_s)); }
    static void write(Recordset& rs, int column, const Value& value) {
        rs.setValue(column, value);
        rs.update();
    }
    static QString codes(const Recordset& rs) { return support::texts(rs, 1); }
    QTemporaryDir dir_;
    Connection cn_{dir_.filePath(u"k.mdb"_s), store::Key(u"鍵"_s), Connection::Mode::Create};
};

TEST_F(Snapshot, AddsChangesAndRemoves) {
    Recordset rs = open();
    rs.setAbsolutePosition(2);
    rs.addNew();
    EXPECT_EQ(reasonOf([&] { rs.setValue(0, u"123"); }), Reason::Type);
    rs.setValue(0, 20);
    rs.cancelUpdate();
    EXPECT_EQ(rs.value(u"code"_s), Value(u"2"));
    EXPECT_EQ(reasonOf([&] { rs.value(u"無"_s); }), Reason::Type);
    rs.addNew();
    rs.setValue(u"Code"_s, 20);
    rs.setValue(u"名"_s, u"新");
    rs.update();
    EXPECT_EQ(rs.value(u"ID"_s), Value(4));
    write(rs, 1, u"改");
    rs.setAbsolutePosition(1);
    rs.setValue(1, u"捨");
    rs.cancelUpdate();
    EXPECT_EQ(rs.value(1), Value(u"元"));
    rs.remove();
    EXPECT_EQ(rs.value(0), Value(u"2"));
    rs.setValue(1, u"動");
    rs.setAbsolutePosition(2);  // leaving the row writes it
    EXPECT_EQ(stored(), u"2動 10元 20改"_s);
    EXPECT_EQ(codes(rs), u"2 10 20"_s);
}

TEST_F(Snapshot, RefusesRowsChangedElsewhere) {
    Recordset rs = open(), other = open();
    write(other, 1, u"他");
    rs.setValue(1, u"私");
    EXPECT_EQ(reasonOf([&] { rs.update(); }), Reason::Conflict);
    EXPECT_EQ(stored(), u"1他 2元 10元"_s);
    rs.cancelUpdate();
    write(rs, 0, u"3");  // another column than the one changed elsewhere
    EXPECT_EQ(stored(), u"2元 3他 10元"_s);
    other.setAbsolutePosition(3);
    other.remove();
    rs.setAbsolutePosition(3);
    EXPECT_EQ(reasonOf([&] { rs.remove(); }), Reason::Conflict);
    rs.requery();
    EXPECT_EQ(codes(rs), u"2 3"_s);
}

}  // namespace
