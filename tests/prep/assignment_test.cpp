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
    AssignmentTest() : RunCompany(Content::Sample) {
        prep::SelectIntoX(cn_, *prep::readDates(cn_, prep::Side::Jikkou, kDate));
    }
    prep::Assignee find(const QString& code) {
        for (const auto& person : prep::assignees(cn_, kDate))
            if (person.syainCode == code) return person;
        ADD_FAILURE() << code.toStdString() << " is not listed";
        return {};
    }
    QStringList general() {
        return read(
            u"select 社員Code from S配分基準対応社員 where 基準日=? and 配分区分='01' and 配分基準='01'"_s,
            {kDate});
    }
    /// A person's criteria at the date in the three run tables and the two decision tables, "." for none.
    QString criteriaOf(const QString& code) {
        QStringList all;
        for (const QString& table : {u"S配分基準対応社員"_s, u"S実行個人別計算"_s, u"S実行総額配分"_s,
                                     u"S実行個人別計算決定"_s, u"S実行総額配分決定"_s}) {
            const QStringList found =
                read(u"select 配分区分||配分基準 from %1 where 基準日=? and 社員Code=?"_s.arg(table),
                     {kDate, code});
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

}  // namespace

TEST_F(AssignmentTest, ListsTheSnapshotAndWhoHasLeft) {
    EXPECT_TRUE(find(kNewcomer).assignment.none());
    EXPECT_FALSE(find(kNewcomer).shimei.isEmpty());
    EXPECT_FALSE(find(kNewcomer).syozoku.isEmpty());

    // Somebody who left after having been assigned stays listed, once, with a mark.
    const QString leaver = general().first();
    const auto before = prep::assignees(cn_, kDate).size();
    sql(u"update 履歴書テーブル set 退職フラグ = -1, 退職日 = ? where 社員Code = ?"_s,
        {kDate.addDays(-1), leaver});
    prep::SelectIntoX(cn_, *prep::readDates(cn_, prep::Side::Jikkou, kDate));
    EXPECT_TRUE(find(leaver).hasLeft);
    EXPECT_EQ(find(leaver).assignment, kGeneral);

    // Two transfers on the same day make two rows of the snapshot, but one person.
    sql(u"insert into IdoChuusyutsuMax2 select * from IdoChuusyutsuMax2 where 社員Code = ?"_s, {kNewcomer});
    EXPECT_EQ(prep::assignees(cn_, kDate).size(), before);
}

TEST_F(AssignmentTest, NewcomerGetsDefaultRowsInAllThreeTables) {
    move({kNewcomer}, kManagers);
    EXPECT_EQ(criteriaOf(kNewcomer), u"0102 0102 0102 . ."_s);
    EXPECT_EQ(read(u"select 基礎額Ａ,基礎額Ｂ,年齢係数,入力3係数,評価,支給係数 from S実行個人別計算 "
                   "where 基準日 = ? and 社員Code = ?"_s,
                   {kDate, kNewcomer}),
              QStringList{u"10000|10000|1|1||1"_s});
    EXPECT_EQ(find(kNewcomer).assignment, kManagers);
    EXPECT_FALSE(find(kNewcomer).hasAmounts);
}

TEST_F(AssignmentTest, MovingDropsTheOldCriterionOfThatDateOnly) {
    const QString mover = general()[0], stays = general()[1];
    for (const QString& table : {u"S実行個人別計算決定"_s, u"S実行総額配分決定"_s})
        sql(u"insert into %1(社員Code,配分区分,配分基準,基準日) values(?,'01','01',?)"_s.arg(table),
            {mover, kDate});
    sql(u"update S配分基準対応社員 set 金一封 = 50000000 where 基準日 = ? and 社員Code = ?"_s,
        {kDate, mover});
    EXPECT_TRUE(find(mover).hasAmounts);
    const auto earlier = [&] { return read(u"select * from S実行個人別計算 where 基準日 < ?"_s, {kDate}); };
    const QStringList earlierRows = earlier();
    const QByteArray before = support::dump(cn_);
    move({mover, stays}, kGeneral);  // already there: nothing may change
    expectUnchanged(before);

    move({mover}, kManagers);
    EXPECT_EQ(criteriaOf(mover), u"0102 0102 0102 . ."_s);
    EXPECT_EQ(criteriaOf(stays), u"0101 0101 0101 . ."_s);
    EXPECT_FALSE(find(mover).hasAmounts);
    EXPECT_EQ(earlier(), earlierRows);

    move({mover}, {});  // taken out of the run
    EXPECT_TRUE(find(mover).assignment.none());
    EXPECT_EQ(criteriaOf(mover), u". . . . ."_s);
}
