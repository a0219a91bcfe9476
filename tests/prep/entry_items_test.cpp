#include "prep/entry_items.h"

#include "prep/run_company.h"

namespace {

using namespace preptest;
using prep::EntryPurpose;

struct EntryItemsTest : RunCompany {
    EntryItemsTest() : RunCompany(Content::Empty) {}
    std::string offered(const QString& method, EntryPurpose purpose) {
        std::string text;
        for (bool item : prep::offeredItems(cn_, {d(u"2026/12/10"_s), u"01"_s, u"02"_s}, method, purpose))
            text += item ? 'x' : '-';
        return text;
    }
};

TEST_F(EntryItemsTest, EntryAndCorrectionOfferOppositeItems) {
    const QString coefficient =
        u"insert into S係数設定(配分区分Code,配分基準Code,算定方式,入力区分Code) values"_s;
    const QString base = u"insert into S基礎額設定(配分区分,配分基準,算定方式,処理区分,設定方法) values"_s;
    const QString payment = u"insert into S支給係数設定(配分区分,配分基準,設定方法) values"_s;
    // Other criteria never count, whatever is set up for them.
    for (const QString& other : {u"'01','03'"_s, u"'02','02'"_s}) {
        sql(coefficient + u"(%1,'1','1'),(%1,'1','2'),(%1,'2','1'),(%1,'2','2')"_s.arg(other));
        sql(base + u"(%1,'1','1','1'),(%1,'1','2','1'),(%1,'1','1','2'),(%1,'1','2','2')"_s.arg(other));
        sql(payment + u"(%1,'1'),(%1,'2')"_s.arg(other));
    }
    const auto step = [&](const QString& addition, const QString& method, const char* entry,
                          const char* correction) {
        sql(addition);
        EXPECT_EQ(offered(method, EntryPurpose::RunTimeInput), entry) << addition.toStdString();
        EXPECT_EQ(offered(method, EntryPurpose::Correction), correction) << addition.toStdString();
    };
    step(base + u"('01','02','1','1','1')"_s, u"1"_s, "----", "----");
    step(payment + u"('01','02','1')"_s, u"1"_s, "----", "----");  // no coefficient at all offers nothing
    step(coefficient + u"('01','02','1','1')"_s, u"1"_s, "x-xx", "----");
    step(base + u"('01','02','1','2','3')"_s, u"1"_s, "x-xx", "-x--");
    step(coefficient + u"('01','02','1','3')"_s, u"1"_s, "x-xx", "-x--");  // 3 is corrected nowhere
    step(coefficient + u"('01','02','1','2')"_s, u"1"_s, "x-xx", "-xx-");
    step(u"update S支給係数設定 set 設定方法 = '2'"_s, u"1"_s, "x-x-", "-xxx");
    // The pool has no payment coefficient, and the set-up of the other method does not count for it.
    step(coefficient + u"('01','02','2','2')"_s, u"2"_s, "----", "--x-");
}

}  // namespace
