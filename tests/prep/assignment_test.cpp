#include "prep/assignment.h"

#include <gtest/gtest.h>

#include "prep/snapshot.h"
#include "support/company_fixture.h"

using prep::Assignment;

namespace {

const QDate kDate = sample::newestKijunbi();
const Assignment kGeneral{QStringLiteral("01"), QStringLiteral("01")};
const Assignment kManagers{QStringLiteral("01"), QStringLiteral("02")};

struct AssignmentTest : testing::Test {
    AssignmentTest() {
        folder.makeSample();
        cn = folder.open();
        prep::SelectIntoX(*cn, *prep::readDates(*cn, prep::Side::Jikkou, kDate));
    }
    prep::Assignee find(const QString& code) {
        for (const auto& person : prep::assignees(*cn, kDate))
            if (person.syainCode == code) return person;
        ADD_FAILURE() << code.toStdString() << " is not listed";
        return {};
    }
    qint64 count(const char16_t* table, const QString& code, const Assignment& assignment) {
        auto row = cn->prepare(
            QStringLiteral("select count(*) from %1 where 基準日 = ? and 社員Code = ? and 配分区分 = ? "
                           "and 配分基準 = ?")
                .arg(QString::fromUtf16(table)));
        row.bindAll({kDate, code, assignment.kubun, assignment.kijun});
        return row.step() ? row.toInteger(0) : -1;
    }
    void move(const QStringList& codes, const Assignment& to) {
        store::Transaction transaction(*cn);
        prep::assign(*cn, kDate, codes, to);
        transaction.commit();
    }
    QString memberOf(const Assignment& assignment) {
        for (const auto& person : prep::assignees(*cn, kDate))
            if (person.assignment == assignment) return person.syainCode;
        return {};
    }
    support::CompanyFolder folder;
    std::unique_ptr<store::Connection> cn;
};

constexpr const char16_t* kRunRows[] = {u"S配分基準対応社員", u"S実行個人別計算", u"S実行総額配分"};
constexpr const char16_t* kDecisions[] = {u"S実行個人別計算決定", u"S実行総額配分決定"};

}  // namespace

TEST_F(AssignmentTest, ListsTheSnapshotAndWhoHasLeft) {
    const QString newcomer = QString::fromUtf16(sample::People::kJoinedAfterLastRun);
    EXPECT_TRUE(find(newcomer).assignment.none());
    EXPECT_FALSE(find(newcomer).shimei.isEmpty());
    EXPECT_FALSE(find(newcomer).syozoku.isEmpty());

    // Somebody who left after having been assigned stays listed, once, with a mark.
    const QString leaver = memberOf(kGeneral);
    cn->execute(QStringLiteral("update 履歴書テーブル set 退職フラグ = -1, 退職日 = ? where 社員Code = ?"),
                {kDate.addDays(-1), leaver});
    const int before = static_cast<int>(prep::assignees(*cn, kDate).size());
    prep::SelectIntoX(*cn, *prep::readDates(*cn, prep::Side::Jikkou, kDate));
    EXPECT_EQ(static_cast<int>(prep::assignees(*cn, kDate).size()), before);
    EXPECT_TRUE(find(leaver).hasLeft);
    EXPECT_EQ(find(leaver).assignment, kGeneral);

    // Two transfers on the same day make two rows of the snapshot, but one person.
    cn->execute(
        QStringLiteral("insert into IdoChuusyutsuMax2 select * from IdoChuusyutsuMax2 where 社員Code = ?"),
        {newcomer});
    EXPECT_EQ(static_cast<int>(prep::assignees(*cn, kDate).size()), before);
}

TEST_F(AssignmentTest, NewcomerGetsDefaultRowsInAllThreeTables) {
    const QString code = QString::fromUtf16(sample::People::kJoinedAfterLastRun);
    move({code}, kManagers);
    for (const char16_t* table : kRunRows) EXPECT_EQ(count(table, code, kManagers), 1);
    const auto row = cn->query(
        QStringLiteral("select 基礎額Ａ,基礎額Ｂ,年齢係数,入力3係数,評価,支給係数 from S実行個人別計算 "
                       "where 基準日 = ? and 社員Code = ?"),
        {kDate, code});
    ASSERT_EQ(row.recordCount(), 1);
    EXPECT_EQ(row.value(0).toMoney(), store::Money::fromYen(10000));
    EXPECT_EQ(row.value(1).toMoney(), store::Money::fromYen(10000));
    for (int column : {2, 3, 5}) EXPECT_EQ(row.value(column).toDouble(), 1.0);
    EXPECT_EQ(row.value(4).toText(), QString());
    EXPECT_FALSE(row.value(4).isNull());
    EXPECT_EQ(find(code).assignment, kManagers);
    EXPECT_FALSE(find(code).hasAmounts);
}

TEST_F(AssignmentTest, MovingDropsTheOldCriterionOfThatDateOnly) {
    const QString mover = memberOf(kGeneral);
    const QString stays = [&] {
        for (const auto& p : prep::assignees(*cn, kDate))
            if (p.assignment == kGeneral && p.syainCode != mover) return p.syainCode;
        return QString();
    }();
    for (const char16_t* table : kDecisions)
        cn->execute(QStringLiteral("insert into %1(社員Code,配分区分,配分基準,基準日) values(?,?,?,?)")
                        .arg(QString::fromUtf16(table)),
                    {mover, kGeneral.kubun, kGeneral.kijun, kDate});
    cn->execute(
        QStringLiteral("update S配分基準対応社員 set 金一封 = 50000000 where 基準日 = ? and 社員Code = ?"),
        {kDate, mover});
    EXPECT_TRUE(find(mover).hasAmounts);
    const auto earlier = [&] {
        return cn
            ->query(QStringLiteral("select * from S実行個人別計算 where 基準日 < ? order by ID"), {kDate})
            .recordCount();
    };
    const int earlierRows = earlier();

    move({mover, stays}, kGeneral);  // already there: nothing may change
    EXPECT_TRUE(find(mover).hasAmounts);

    move({mover}, kManagers);
    for (const char16_t* table : kRunRows) {
        EXPECT_EQ(count(table, mover, kGeneral), 0);
        EXPECT_EQ(count(table, mover, kManagers), 1);
        EXPECT_EQ(count(table, stays, kGeneral), 1);
    }
    for (const char16_t* table : kDecisions) EXPECT_EQ(count(table, mover, kGeneral), 0);
    EXPECT_FALSE(find(mover).hasAmounts);
    EXPECT_EQ(earlier(), earlierRows);

    move({mover}, {});  // taken out of the run
    EXPECT_TRUE(find(mover).assignment.none());
    for (const char16_t* table : kRunRows) EXPECT_EQ(count(table, mover, kManagers), 0);
}
