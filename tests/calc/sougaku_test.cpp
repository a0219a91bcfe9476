#include "calc/sougaku.h"

#include "run_fixture.h"

using namespace calctest;
using Reason = store::Error::Reason;

namespace {

class SougakuTest : public testing::Test, public RunCompany {
  protected:
    calc::CalculationResult calculate(store::Money budget) {
        calc::Sougaku calculation(cn(), run);
        calculation.keisan1_sougaku();
        calculation.keisan2_sougaku();
        return calculation.keisan3_sougaku(budget);
    }
    calc::CalculationResult commit(store::Money budget) {
        calc::CalculationResult result;
        inTransaction([&] { result = calculate(budget); });
        return result;
    }
    void expectColumn(const char16_t* table, const char16_t* name,
                      const std::vector<store::Value>& expected) {
        const auto cells = column(table, name);
        ASSERT_EQ(cells.size(), expected.size());
        for (std::size_t i = 0; i < cells.size(); ++i)
            expectCell(cells[i], expected[i], u(name).toUtf8().constData());
    }
    /// Points 100,000, 200,000 and 400,000: base A × 出勤係数 2 and base B × 1; 支給係数 plays no part.
    void threeEmployees() {
        coefficient(5, true, false, u"2");
        coefficient(18, false, true, u"2");
        coefficient(1, true, true, u"1");  // of the individual calculation
        budgetRow();
        for (const auto& [code, points] :
             {std::pair(u"3", 400000), std::pair(u"1", 100000), std::pair(u"2", 200000)})
            pool({.code = code,
                  .kisoA = yen(points / 4),
                  .kisoB = yen(points / 2),
                  .keisuu = {{1, 9.0}, {5, 2.0}},
                  .hyouka = u"B",
                  .payment = 77.0});
    }
};

TEST_F(SougakuTest, TheExampleToTheYenWithItsResidue) {
    threeEmployees();
    const double ratio = 1000000.0 / 700000.0;
    struct Case {
        const char16_t* hasuu;
        qint64 shares[3];  // in the order of the rows: 3, 1, 2
    };
    for (const Case& c : {Case{u"2", {571000, 142000, 285000}}, Case{u"0", {571000, 143000, 286000}},
                          Case{u"1", {572000, 143000, 286000}}}) {
        rounding(u"3", c.hasuu);
        const auto result = commit(yen(1000000));
        const qint64 total = c.shares[0] + c.shares[1] + c.shares[2];
        EXPECT_EQ(result.employees, 3);
        expectCell(result.total, yen(total), "total");
        expectCell(cell(u"S実行予算", u"総額配分合計"), yen(total), "S実行予算");
        expectColumn(u"S実行総額配分", u"合計", {yen(c.shares[0]), yen(c.shares[1]), yen(c.shares[2])});
        expectColumn(u"S配分基準対応社員", u"総額配分",
                     {yen(c.shares[0]), yen(c.shares[1]), yen(c.shares[2])});
        expectColumn(u"S実行総額配分決定", u"合計", {yen(c.shares[1]), yen(c.shares[2]), yen(c.shares[0])});
    }
    expectColumn(u"S実行総額配分", u"賞与係数", {ratio, ratio, ratio});
    expectColumn(u"S実行総額配分", u"支給対象額計", {yen(400000), yen(100000), yen(200000)});
    expectColumn(u"S実行総額配分", u"Ａ計算額", {200000.0, 50000.0, 100000.0});
    expectColumn(u"S実行総額配分", u"Ｂ計算額", {200000.0, 50000.0, 100000.0});
    expectColumn(u"S実行総額配分", u"年齢係数", {9.0, 9.0, 9.0});
    expectColumn(u"S実行総額配分決定", u"社員Code", {u"1", u"2", u"3"});
    expectColumn(u"S実行総額配分決定", u"年齢係数Ａ", {1.0, 1.0, 1.0});
    expectColumn(u"S実行総額配分決定", u"出勤係数Ａ", {2.0, 2.0, 2.0});
    expectColumn(u"S実行総額配分決定", u"出勤係数Ｂ", {1.0, 1.0, 1.0});
    expectColumn(u"S実行総額配分決定", u"評価", {u"B", u"B", u"B"});
    expectColumn(u"S実行総額配分決定", u"賞与係数", {ratio, ratio, ratio});
    expectColumn(u"S実行総額配分決定", u"支給対象額計", {yen(100000), yen(200000), yen(400000)});
    expectColumn(u"S配分基準対応社員", u"個人別計算", {yen(0), yen(0), yen(0)});
}

TEST_F(SougakuTest, PointsPassThroughMoneyAndTheRatioIsOneForAll) {
    coefficient(1, true, false, u"2");
    rounding(u"0", u"2");
    budgetRow();
    // 1/3 of 10,000 is 3,333.3333 as money: the ratio is 1 over that, the share 3,333.3333 × 3.0000000300… =
    // 10,000.
    pool({.code = u"1", .keisuu = {{1, 1.0 / 3}}});
    EXPECT_EQ(commit(yen(10000)).total, store::Value(yen(10000)));
    expectCell(cell(u"S実行総額配分", u"支給対象額計"), store::Money::fromRaw(33333333), "points");
    expectCell(cell(u"S実行総額配分", u"賞与係数"), 10000 / 3333.3333, "ratio");
    expectCell(cell(u"S実行総額配分", u"Ａ計算額"), 10000 * (1.0 / 3), "side");
    // One employee gets the budget rounded to the unit, in either direction.
    for (const auto& [hasuu, expected] : {std::pair(u"2", 123000), std::pair(u"1", 124000)}) {
        rounding(u"3", hasuu);
        EXPECT_EQ(commit(yen(123456)).total, store::Value(yen(expected)));
    }
}

TEST_F(SougakuTest, AnUnknownRoundingWritesNoShare) {
    threeEmployees();
    rounding(u"3", u"2");
    commit(yen(1000000));
    cn().execute(u(u"UPDATE S実行総額配分 SET 合計 = NULL WHERE 社員Code = '2'"));
    rounding(u"7", u"2");
    commit(yen(700000));
    expectColumn(u"S実行総額配分", u"合計", {yen(571000), yen(142000), {}});
    expectColumn(u"S配分基準対応社員", u"総額配分", {yen(571000), yen(142000), {}});
    expectColumn(u"S実行総額配分決定", u"合計", {{}, {}, {}});
    expectColumn(u"S実行総額配分", u"賞与係数", {1.0, 1.0, 1.0});
    expectCell(cell(u"S実行予算", u"総額配分合計"), yen(713000), "S実行予算");
}

TEST_F(SougakuTest, FailuresLeaveTheTablesAsTheyWere) {
    threeEmployees();
    rounding(u"0", u"0");
    commit(yen(1000000));
    const auto refused = [&](Reason reason) { expectRefusal(reason, [&] { calculate(yen(5)); }); };
    const std::pair<const char16_t*, Reason> damages[] = {
        {u"UPDATE S実行総額配分 SET 出勤係数 = NULL WHERE 社員Code = '2'", Reason::Type},
        {u"UPDATE S実行総額配分 SET 出勤係数 = 1e300", Reason::Overflow},
        {u"UPDATE S実行総額配分 SET 出勤係数 = 2, 社員Code = 'x' WHERE 社員Code = '2'", Reason::Type},
        {u"UPDATE S実行総額配分 SET 出勤係数 = 0, 入力3係数 = 0, 社員Code = '2'", Reason::DivideByZero}};
    for (const auto& [damage, reason] : damages) {
        cn().execute(u(damage));
        refused(reason);
    }
    cn().execute(u(u"UPDATE S実行総額配分 SET 入力3係数 = 1"));
    EXPECT_NO_THROW(commit(yen(5)));
    cn().execute(u(u"DELETE FROM S配分基準対応社員 WHERE 社員Code = '2'"));
    refused(Reason::Type);
    assignee(u"2");
    cn().execute(u(u"DELETE FROM Tanka_hasuu"));
    refused(Reason::Type);
    // Without employees only the decision goes.
    cn().execute(u(u"DELETE FROM S実行総額配分"));
    EXPECT_EQ(commit(yen(5)).employees, 0);
    EXPECT_TRUE(column(u"S実行総額配分決定", u"ID").empty());
    EXPECT_FALSE(cell(u"S実行予算", u"総額配分合計").isNull());
}

}  // namespace
