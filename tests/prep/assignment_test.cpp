#include "prep/assignment.h"

#include "prep/run_company.h"
#include "prep/snapshot.h"

namespace {

using namespace preptest;
using prep::Assignment;

const QDate kDate = sample::newestKijunbi();
const Assignment kGeneral{u"01"_s, u"01"_s};
const Assignment kManagers{u"01"_s, u"02"_s};
const QString kNewcomer = QString::fromUtf16(sample::People::kJoinedAfterLastRun);

struct AssignmentTest : RunCompany {
    AssignmentTest() : RunCompany(Content::Sample) {}
    /// A person's criteria at the date in the three run tables and the two decision tables, "." for none.
    QString criteriaOf(const QString& code) {
        QStringList all;
        for (const QString& table : {u"S配分基準対応社員"_s, u"S実行個人別計算"_s, u"S実行総額配分"_s,
                                     u"S実行個人別計算決定"_s, u"S実行総額配分決定"_s}) {
            const QString select = u"select 配分区分||配分基準 from %1 where 基準日=? and 社員Code=?"_s;
            const QStringList found = read(select.arg(table), {kDate, code});
            all << (found.isEmpty() ? u"."_s : found.join(u'+'));
        }
        return all.join(u' ');
    }
    void move(const QStringList& codes, const Assignment& to) {
        store::Transaction transaction(cn_);
        prep::assign(cn_, kDate, codes, to);
        transaction.commit();
    }
};

TEST_F(AssignmentTest, MovingMakesRowsAndDropsTheOldCriterionOfThatDateOnly) {
    const QStringList general =
        read(u"select 社員Code from S配分基準対応社員 where 基準日=? and 配分区分='01' and 配分基準='01'"_s,
             {kDate});
    const QString mover = general[0], stays = general[1];
    for (const QString& table : {u"S実行個人別計算決定"_s, u"S実行総額配分決定"_s})
        sql(u"insert into %1(社員Code,配分区分,配分基準,基準日) values(?,'01','01',?)"_s.arg(table),
            {mover, kDate});
    const auto earlier = [&] { return read(u"select * from S実行個人別計算 where 基準日 < ?"_s, {kDate}); };
    const QStringList earlierRows = earlier();
    const QByteArray before = support::dump(cn_);
    move({mover, stays}, kGeneral);  // already there: nothing may change
    expectUnchanged(before);

    EXPECT_EQ(criteriaOf(kNewcomer), u". . . . ."_s);
    move({mover, kNewcomer}, kManagers);
    EXPECT_EQ(criteriaOf(mover), u"0102 0102 0102 . ."_s);
    EXPECT_EQ(criteriaOf(kNewcomer), u"0102 0102 0102 . ."_s);
    EXPECT_EQ(criteriaOf(stays), u"0101 0101 0101 . ."_s);
    EXPECT_EQ(earlier(), earlierRows);

    move({mover}, {});  // taken out of the run
    EXPECT_EQ(criteriaOf(mover), u". . . . ."_s);
    EXPECT_EQ(criteriaOf(kNewcomer), u"0102 0102 0102 . ."_s);
}

}  // namespace
