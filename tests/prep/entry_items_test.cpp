#include "prep/entry_items.h"

#include <gtest/gtest.h>

#include "support/company_fixture.h"

using prep::EntryPurpose;

namespace {

struct EntryItemsTest : testing::Test {
    EntryItemsTest() {
        folder.makeEmpty();
        cn = folder.open();
    }
    void coefficient(const char16_t* kind, const char16_t* method, const char16_t* input, bool a, bool b) {
        cn->execute(
            QStringLiteral(
                "insert into "
                "S係数設定(配分区分Code,配分基準Code,設定名称,算定方式,入力区分Code,基礎額Ａ,基礎額Ｂ) "
                "values('01','02',?,?,?,?,?)"),
            {kind, method, input, a, b});
    }
    void base(const char16_t* method, const char16_t* which, const char16_t* how) {
        cn->execute(QStringLiteral("insert into S基礎額設定(配分区分,配分基準,算定方式,処理区分,設定方法) "
                                   "values('01','02',?,?,?)"),
                    {method, which, how});
    }
    void payment(const char16_t* how) {
        cn->execute(
            QStringLiteral("insert into S支給係数設定(配分区分,配分基準,設定方法) values('01','02',?)"),
            {how});
    }
    std::string offered(const char16_t* method, EntryPurpose purpose) {
        std::string text;
        for (bool item : prep::offeredItems(*cn, run, QString::fromUtf16(method), purpose))
            text += item ? 'x' : '-';
        return text;
    }
    const shell::RunKey run{QDate(2026, 12, 10), QStringLiteral("01"), QStringLiteral("02")};
    support::CompanyFolder folder;
    std::unique_ptr<store::Connection> cn;
};

}  // namespace

TEST_F(EntryItemsTest, EntryAndCorrectionOfferOppositeItems) {
    base(u"1", u"1", u"1");
    payment(u"1");
    EXPECT_EQ(offered(u"1", EntryPurpose::RunTimeInput), "----") << "no coefficient at all offers nothing";
    coefficient(u"05", u"1", u"1", true, false);
    base(u"1", u"2", u"3");
    EXPECT_EQ(offered(u"1", EntryPurpose::RunTimeInput), "x-xx");
    EXPECT_EQ(offered(u"1", EntryPurpose::Correction), "-x--");
    coefficient(u"01", u"1", u"3", true, false);
    EXPECT_EQ(offered(u"1", EntryPurpose::Correction), "-x--") << "only 入力区分 2 counts for a correction";
    coefficient(u"02", u"1", u"2", true, false);
    EXPECT_EQ(offered(u"1", EntryPurpose::Correction), "-xx-");
    // The pool never has a payment coefficient, and the set-up of one method does not count for the other.
    coefficient(u"02", u"2", u"2", true, false);
    EXPECT_EQ(offered(u"2", EntryPurpose::RunTimeInput), "----");
    EXPECT_EQ(offered(u"2", EntryPurpose::Correction), "--x-");
}

TEST_F(EntryItemsTest, OrphanedBaseSetupIsRemovedAlone) {
    base(u"1", u"1", u"1");
    base(u"1", u"2", u"2");
    base(u"2", u"2", u"2");
    coefficient(u"05", u"1", u"1", true, false);
    const QString one = QStringLiteral("1");
    EXPECT_FALSE(prep::baseIsOrphaned(*cn, run, one, prep::Base::A));
    ASSERT_TRUE(prep::baseIsOrphaned(*cn, run, one, prep::Base::B));
    prep::removeBaseSetup(*cn, run, one, prep::Base::B);
    EXPECT_FALSE(prep::baseIsOrphaned(*cn, run, one, prep::Base::B));
    EXPECT_EQ(cn->query(QStringLiteral("select * from S基礎額設定")).recordCount(), 2);
}
