#include "calc/run_calculation.h"

#include "run_fixture.h"

using namespace calctest;

namespace {

class SougakuTest : public OneRun {
  protected:
    calc::CalculationResult commit(store::Money budget) {
        return calc::RunCalculation(cn(), run, u"配分計算"_s).fromPool(budget);
    }
    std::string shares() { return read("SELECT 総額配分 FROM S配分基準対応社員"); }
    /// Points 400,000, 100,000 and 200,000: base A × 出勤係数 2 and base B × 1; 賞与係数 plays no part.
    void threeEmployees() {
        coefficient(5, true, false, u"2");
        coefficient(18, false, true, u"2");
        coefficient(1, true, true, u"1");  // of the individual calculation
        budgetRow();
        for (const char* who : {"社員Code = '3', 基礎額Ａ = 100000 * 10000, 基礎額Ｂ = 200000 * 10000",
                                "社員Code = '1', 基礎額Ａ = 25000 * 10000, 基礎額Ｂ = 50000 * 10000",
                                "社員Code = '2', 基礎額Ａ = 50000 * 10000, 基礎額Ｂ = 100000 * 10000"})
            person("S実行総額配分",
                   std::string(who) + ", 年齢係数 = 9, 出勤係数 = 2, 評価 = 'B', 賞与係数 = 77");
    }
};

TEST_F(SougakuTest, TheExampleToTheYenWithItsResidue) {
    threeEmployees();
    const struct {
        const char16_t* hasuu;
        const char *shares, *inOrder;
        qint64 total;
    } cases[] = {{u"2", "571000|142000|285000", "142000|285000|571000", 998000},
                 {u"0", "571000|143000|286000", "143000|286000|571000", 1000000},
                 {u"1", "572000|143000|286000", "143000|286000|572000", 1001000}};
    for (const auto& c : cases) {
        rounding(u"3", c.hasuu);
        const auto result = commit(yen(1000000));
        EXPECT_EQ(result.employees, 3);
        EXPECT_EQ(result.total, yen(c.total));
        EXPECT_EQ(read("SELECT 総額配分合計 FROM S実行予算"), std::to_string(c.total));
        EXPECT_EQ(read("SELECT 合計 FROM S実行総額配分"), c.shares);
        EXPECT_EQ(shares(), c.shares);
        EXPECT_EQ(read("SELECT 合計 FROM S実行総額配分決定"), c.inOrder);
    }
    const std::string ratio = " 1.42857142857143";  // 1,000,000 ÷ 700,000
    EXPECT_EQ(read("SELECT Ａ計算額, Ｂ計算額, 支給対象額計, 年齢係数, 賞与係数 FROM S実行総額配分"),
              "200000 200000 400000 9" + ratio + "|50000 50000 100000 9" + ratio + "|100000 100000 200000 9" +
                  ratio);
    EXPECT_EQ(read("SELECT 社員Code, 評価, 年齢係数Ａ, 出勤係数Ａ, 出勤係数Ｂ, 支給対象額計, 賞与係数"
                   " FROM S実行総額配分決定"),
              "1 B 1 2 1 100000" + ratio + "|2 B 1 2 1 200000" + ratio + "|3 B 1 2 1 400000" + ratio);
    EXPECT_EQ(read("SELECT 個人別計算 FROM S配分基準対応社員"), "0|0|0");
}

TEST_F(SougakuTest, PointsPassThroughMoneyAndTheRatioIsOneForAll) {
    coefficient(1, true, false, u"2");
    rounding(u"0", u"2");
    budgetRow();
    // A third of 10,000 yen is 3,333.3333 as money: 10,000 ÷ 3,333.3333 = 3.00000003.
    person("S実行総額配分", "年齢係数 = 1.0 / 3");
    EXPECT_EQ(commit(yen(10000)).total, yen(10000));
    EXPECT_EQ(read("SELECT 支給対象額計, 賞与係数, Ａ計算額 FROM S実行総額配分"),
              "3333.3333 3.00000003 3333.33333333333");
    // One employee gets the budget rounded to the unit, in either direction.
    for (const auto& [hasuu, expected] : {std::pair(u"2", 123000), std::pair(u"1", 124000)}) {
        rounding(u"3", hasuu);
        EXPECT_EQ(commit(yen(123456)).total, yen(expected));
    }
}

TEST_F(SougakuTest, AnUnknownRoundingWritesNoShare) {
    threeEmployees();
    rounding(u"3", u"2");
    commit(yen(1000000));
    sql("UPDATE S実行総額配分 SET 合計 = NULL WHERE 社員Code = '2'");
    rounding(u"7", u"2");
    EXPECT_EQ(commit(yen(700000)).total, yen(713000));
    EXPECT_EQ(read("SELECT 合計, 賞与係数 FROM S実行総額配分"), "571000 1|142000 1|- 1");
    EXPECT_EQ(shares(), "571000|142000|-");
    EXPECT_EQ(read("SELECT 合計 FROM S実行総額配分決定"), "-|-|-");
    EXPECT_EQ(read("SELECT 総額配分合計 FROM S実行予算"), "713000");
}

TEST_F(SougakuTest, FailuresLeaveTheTablesAsTheyWere) {
    threeEmployees();
    rounding(u"0", u"0");
    commit(yen(1000000));
    const std::pair<Reason, const char*> damages[] = {
        {Reason::Type, "UPDATE S実行総額配分 SET 出勤係数 = NULL WHERE 社員Code = '2'"},
        {Reason::Overflow, "UPDATE S実行総額配分 SET 出勤係数 = 1e300"},
        {Reason::Type, "UPDATE S実行総額配分 SET 社員Code = 'x' WHERE 社員Code = '2'"},
        {Reason::DivideByZero, "UPDATE S実行総額配分 SET 出勤係数 = 0, 入力3係数 = 0"},
        {Reason::Type, "DELETE FROM S配分基準対応社員 WHERE 社員Code = '2'"},
        {Reason::Type, "DELETE FROM Tanka_hasuu"}};
    for (const auto& [reason, damage] : damages) expectRefusal(reason, damage, [&] { commit(yen(5)); });
    // Without employees only the decision goes.
    sql("DELETE FROM S実行総額配分; DELETE FROM Tanka_hasuu");
    EXPECT_EQ(commit(yen(5)).employees, 0);
    EXPECT_EQ(read("SELECT ID FROM S実行総額配分決定"), "");
    EXPECT_EQ(read("SELECT 総額配分合計 FROM S実行予算"), "1000000");
}

}  // namespace
