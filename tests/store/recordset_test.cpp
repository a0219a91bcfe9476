// Snapshots of a table: positions, edits, conflicts, batches.
#include "store/recordset.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "store/connection.h"

namespace {

using store::Connection;
using store::Error;
using store::Recordset;
using store::Value;
using Reason = store::Error::Reason;

template <typename Call>
std::optional<Reason> reasonOf(Call&& call) {
    try {
        call();
    } catch (const Error& error) {
        return error.reason();
    }
    return std::nullopt;
}

class Snapshot : public testing::Test {
  protected:
    void SetUp() override {
        cn_.execute(QStringLiteral("CREATE TABLE k(Code Text(2),名 Text(4),ID INTEGER PRIMARY KEY)"));
        for (const char16_t* code : {u"1", u"2", u"10"})
            cn_.execute(QStringLiteral("insert into k(Code,名) values(?,?)"), {code, u"元"});
    }
    Recordset open(const QString& where = {}) {
        return cn_.open({QStringLiteral("k"), where, {}, QStringLiteral("Clng(Code)")});
    }
    /// What the file holds now: "1元 2元 10元".
    QString stored() {
        const Recordset rows = cn_.query(QStringLiteral("select Code||名 from k order by Clng(Code)"));
        QStringList texts;
        for (int i = 0; i < rows.recordCount(); ++i) texts << rows.valueAt(i, 0).toText();
        return texts.join(u' ');
    }
    static QString codes(const Recordset& rs) {
        QStringList texts;
        for (int i = 0; i < rs.recordCount(); ++i) texts << rs.valueAt(i, 0).toText();
        return texts.join(u' ');
    }
    QTemporaryDir dir_;
    Connection cn_{dir_.filePath(QStringLiteral("k.mdb")), QStringLiteral("鍵"), Connection::Mode::Create};
};

TEST_F(Snapshot, MovesFindsAndSorts) {
    Recordset rs = open();
    EXPECT_EQ(rs.recordCount(), 3);
    EXPECT_EQ(rs.absolutePosition(), 1);
    rs.movePrevious();
    EXPECT_TRUE(rs.bof() && !rs.eof());
    EXPECT_EQ(reasonOf([&] { rs.value(0); }), Reason::Type);
    rs.moveNext();
    rs.moveLast();
    EXPECT_EQ(rs.value(QStringLiteral("code")), Value(u"10"));
    const qint64 last = rs.bookmark();
    EXPECT_FALSE(rs.find(QStringLiteral("Code"), u"1"));  // forward only
    EXPECT_TRUE(rs.eof() && !rs.bof());
    EXPECT_EQ(rs.absolutePosition(), -1);
    rs.moveFirst();
    EXPECT_TRUE(rs.find(QStringLiteral("ID"), u"2"));
    EXPECT_EQ(rs.absolutePosition(), 2);
    EXPECT_TRUE(rs.find(QStringLiteral("Code"), 2));  // the current one counts
    EXPECT_FALSE(rs.find(QStringLiteral("ID"), u"二"));
    rs.sort(QStringLiteral("Code"));
    EXPECT_EQ(codes(rs), QStringLiteral("1 10 2"));
    rs.setBookmark(last);
    EXPECT_EQ(rs.absolutePosition(), 2);
    rs.sort(QStringLiteral("ID"), false);
    EXPECT_EQ(codes(rs), QStringLiteral("10 2 1"));
    const Recordset none = open(QStringLiteral("Code = '99'"));
    EXPECT_TRUE(none.bof() && none.eof());
    EXPECT_EQ(reasonOf([&] { rs.value(QStringLiteral("無")); }), Reason::Type);
}

TEST_F(Snapshot, AddsChangesAndRemoves) {
    Recordset rs = open();
    rs.moveNext();
    rs.addNew();
    EXPECT_EQ(reasonOf([&] { rs.setValue(0, u"123"); }), Reason::Type);
    rs.setValue(0, 20);
    rs.cancelUpdate();
    EXPECT_EQ(rs.absolutePosition(), 2);
    rs.addNew();
    rs.setValue(QStringLiteral("Code"), 20);
    rs.setValue(QStringLiteral("名"), u"新");
    EXPECT_EQ(rs.editMode(), Recordset::EditMode::Add);
    rs.update();
    EXPECT_EQ(rs.value(QStringLiteral("ID")), Value(4));
    rs.setValue(1, u"改");
    rs.update();
    rs.moveFirst();
    rs.setValue(1, u"捨");
    rs.cancelUpdate();
    EXPECT_EQ(rs.value(1), Value(u"元"));
    rs.remove();
    EXPECT_EQ(rs.value(0), Value(u"2"));
    rs.setValue(1, u"動");
    rs.moveNext();  // leaving the row writes it
    EXPECT_EQ(stored(), QStringLiteral("2動 10元 20改"));
    EXPECT_EQ(codes(rs), QStringLiteral("2 10 20"));
}

TEST_F(Snapshot, RefusesRowsChangedElsewhere) {
    Recordset rs = open();
    Recordset other = open();
    other.setValue(1, u"他");
    other.update();
    rs.setValue(1, u"私");
    EXPECT_EQ(reasonOf([&] { rs.update(); }), Reason::Conflict);
    EXPECT_EQ(stored(), QStringLiteral("1他 2元 10元"));
    rs.cancelUpdate();
    rs.setValue(0, u"3");  // another column than the one changed elsewhere
    rs.update();
    EXPECT_EQ(stored(), QStringLiteral("2元 3他 10元"));
    other.moveLast();
    other.remove();
    rs.moveLast();
    EXPECT_EQ(reasonOf([&] { rs.remove(); }), Reason::Conflict);
    rs.requery();
    EXPECT_EQ(codes(rs), QStringLiteral("2 3"));
}

TEST_F(Snapshot, BatchIsAllOrNothing) {
    Recordset rs = open();
    rs.setBatch(true);
    rs.remove();
    rs.setValue(1, u"一");
    rs.update();
    rs.setValue(1, u"二");
    rs.cancelUpdate();
    EXPECT_EQ(rs.value(1), Value(u"一"));
    rs.addNew();
    rs.setValue(0, u"30");
    rs.setValue(1, u"新");
    rs.update();
    EXPECT_EQ(stored(), QStringLiteral("1元 2元 10元"));
    cn_.execute(QStringLiteral("update k set 名='他' where Code='2'"));
    EXPECT_EQ(reasonOf([&] { rs.updateBatch(); }), Reason::Conflict);
    EXPECT_EQ(stored(), QStringLiteral("1元 2他 10元"));
    EXPECT_EQ(codes(rs), QStringLiteral("2 10 30"));
    cn_.execute(QStringLiteral("update k set 名='元' where Code='2'"));
    cn_.beginTrans();  // inside the caller's transaction as well
    rs.updateBatch();
    cn_.commitTrans();
    EXPECT_EQ(stored(), QStringLiteral("2一 10元 30新"));
    EXPECT_EQ(rs.valueAt(2, 2), Value(4));

    rs.moveFirst();
    rs.remove();
    rs.setValue(1, u"捨");
    rs.update();
    rs.addNew();
    rs.cancelBatch();
    EXPECT_EQ(codes(rs), QStringLiteral("2 10 30"));
    EXPECT_EQ(rs.valueAt(1, 1), Value(u"元"));
    rs.updateBatch();
    EXPECT_EQ(stored(), QStringLiteral("2一 10元 30新"));
}

}  // namespace
