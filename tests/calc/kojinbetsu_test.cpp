#include "calc/kojinbetsu.h"

#include "calc/payment_preview.h"
#include "run_fixture.h"

using namespace calctest;
using calc::PaymentSimulation;
using Mode = PaymentSimulation::Mode;

namespace {

const std::string kExample =
    "基礎額Ａ = 300000 * 10000, 基礎額Ｂ = 20010 * 10000, 年齢係数 = 1.5,"
    " 評価係数 = 1.2, 出勤係数 = 0.95, 評価 = 'A', 支給係数 = 2.5";

class KojinbetsuTest : public OneRun {
  protected:
    calc::CalculationResult calculate(const PaymentSimulation& simulation = {}) {
        calc::Kojinbetsu calculation(cn(), run, simulation);
        calculation.keisan1_kojinbetsu();
        return calculation.keisan2_kojinbetsu();
    }
    calc::CalculationResult commit(const PaymentSimulation& simulation = {}) {
        return committed([&] { return calculate(simulation); });
    }
    void individual(const std::string& changes = "ID = ID") { person("S実行個人別計算", changes); }

    /// 評価係数 on base A only, 出勤係数 on both; whole yen, half up.
    void office() {
        coefficient(4, true, false);
        coefficient(5, true, true);
        rounding(u"0", u"0");
        budgetRow();
    }
    static PaymentSimulation uniform(const QString& corrected, const QString& registered) {
        return {Mode::Uniform, {}, corrected, registered, {}};
    }
    /// Simulated grades on the scale S A B C D (5): S 2.000 -> 3.000, A 1.000 -> 1.000, B 0.000 -> 1.000.
    PaymentSimulation grades() {
        sql("INSERT INTO S支給係数評価あり(配分区分, 配分基準, 評価, 評価Code)"
            " VALUES('01', '02', 'S', '1'), ('01', '02', 'A', '2'), ('01', '02', 'B', '3')");
        return {Mode::Grades,
                u"5"_s,
                {},
                {},
                {{{u"S"_s, u"2.000"_s, u"3.000"_s, u"1"_s},
                  {u"A"_s, u"1.000"_s, u"1.000"_s, u"2"_s},
                  {u"B"_s, u"0.000"_s, u"1.000"_s, u"3"_s}}}};
    }
};

TEST_F(KojinbetsuTest, TheExampleToTheYenInAllFourPlaces) {
    office();
    individual(kExample);
    runRow("S実行個人別計算", kExample + ", 配分基準 = '03'");
    for (const auto& [hasuu, expected] : {std::pair(u"0", 902500), std::pair(u"1", 902600)}) {
        rounding(u"2", hasuu);
        const auto result = commit();  // the second pass replaces the first one's decision
        const std::string amount = std::to_string(expected);
        EXPECT_EQ(result.employees, 1);
        EXPECT_EQ(result.total, yen(expected));
        // Inputs, the other kinds of payment and the other criterion stay.
        EXPECT_EQ(read("SELECT 合計, Ａ計算額, Ｂ計算額, 年齢係数, 支給係数 FROM S実行個人別計算"),
                  amount + " 855000 47523.75 1.5 2.5|- - - 1.5 2.5");
        EXPECT_EQ(read("SELECT 個人別計算, 金一封, 合計 FROM S配分基準対応社員"), amount + " 7 9");
        EXPECT_EQ(read("SELECT 個人別計算合計 FROM S実行予算"), amount);
        EXPECT_EQ(read("SELECT 合計 FROM S実行個人別計算決定"), amount);
    }
    EXPECT_EQ(read("SELECT 社員Code, 配分区分, 配分基準, 基準日, 評価, 支給係数, Ａ計算額, Ｂ計算額,"
                   " 基礎額Ａ, 年齢係数Ａ, 評価係数Ａ, 出勤係数Ａ, 入力3係数Ａ,"
                   " 基礎額Ｂ, 年齢係数Ｂ, 評価係数Ｂ, 出勤係数Ｂ, 入力3係数Ｂ FROM S実行個人別計算決定"),
              "1 01 02 2026/12/10 A 2.5 855000 47523.75 300000 1 1.2 0.95 1 20010 1 1 0.95 1");
}

TEST_F(KojinbetsuTest, ACoefficientActsOnlyWhereItIsSet) {
    // Base A 1000, base B 10: each digit of the amount tells which factor reached which side.
    rounding(u"0", u"0");
    budgetRow();
    individual("基礎額Ａ = 1000 * 10000, 基礎額Ｂ = 10 * 10000, 年齢係数 = 3, 入力3係数 = 2, 所属大係数 = 0");
    EXPECT_EQ(commit().total, yen(0)) << "a base without a coefficient counts nothing";
    const struct {
        int k;
        bool onA, onB;
        qint64 expected;
    } cases[] = {{1, true, false, 3000},
                 {18, false, true, 3000 + 20},
                 {18, true, true, 6000 + 20},
                 {2, true, true, 6000 + 20},
                 {7, false, true, 6000}};
    for (const auto& c : cases) {  // each adds to the ones before
        coefficient(c.k, c.onA, c.onB);
        coefficient(c.k, true, true, u"2");  // the pool's set-up does not count here
        EXPECT_EQ(commit().total, yen(c.expected)) << c.k;
    }
    // Any row on a base uses the base, even one that names no coefficient.
    sql("DELETE FROM S係数設定");
    coefficient(99, false, true);
    EXPECT_EQ(commit().total, yen(10));
}

TEST_F(KojinbetsuTest, MultipliesStrictlyFromLeftToRight) {
    for (int k : {1, 2, 18}) coefficient(k, true, false);
    rounding(u"9", u"0");
    budgetRow();
    const double base = 300001, f1 = 1.1, f2 = 0.87, f18 = 0.77, payment = 2.3;
    individual("基礎額Ａ = 300001 * 10000");
    sql("UPDATE S実行個人別計算 SET 年齢係数 = ?, 勤続年数係数 = ?, 入力3係数 = ?, 支給係数 = ?",
        {f1, f2, f18, payment});
    commit();
    const double forward = (((base * f1) * f2) * f18) * payment;
    ASSERT_NE(forward, (((base * payment) * f1) * f2) * f18) << "the case must tell the orders apart";
    ASSERT_NE(forward, base * (f1 * f2 * f18 * payment));
    ASSERT_NE(forward, (((base * f18) * f2) * f1) * payment);
    auto side = cn().prepare(u"SELECT Ａ計算額 FROM S実行個人別計算"_s);
    ASSERT_TRUE(side.step());
    EXPECT_EQ(side.toDouble(0), forward);
}

TEST_F(KojinbetsuTest, AnUnknownRoundingKeepsTheSumToTheTenThousandth) {
    coefficient(1, true, true);
    budgetRow();
    // 1/32 and 3/32 yen are exact ties: they go to the even ten-thousandth. The sides keep what they are.
    individual("基礎額Ａ = 10000, 基礎額Ｂ = 0, 年齢係数 = 1 / 32.0");
    individual("基礎額Ａ = 10000, 基礎額Ｂ = 0, 年齢係数 = 3 / 32.0");
    individual("基礎額Ａ = -10000, 基礎額Ｂ = -25, 年齢係数 = 2");
    for (const auto& [tanka, hasuu] : {std::pair(u"5", u"0"), std::pair(u"0", u"3")}) {
        rounding(tanka, hasuu);
        commit();
        EXPECT_EQ(read("SELECT 合計, Ａ計算額 FROM S実行個人別計算"),
                  "0.0312 0.03125|0.0938 0.09375|-2.005 -2");
    }
    EXPECT_EQ(read("SELECT 個人別計算合計 FROM S実行予算"), "-1.88");
}

TEST_F(KojinbetsuTest, RowsPairByThePlaceOfTheirNumber) {
    office();
    // As text 10 stands before 9; the longer list's rest keeps its amounts and counts, Null does not.
    for (const char* who :
         {"社員Code = '10', 基礎額Ａ = 1000 * 10000", "社員Code = '9', 基礎額Ａ = 900 * 10000",
          "社員Code = '000008', 基礎額Ａ = 800 * 10000"})
        runRow("S実行個人別計算", std::string(who) + ", 基礎額Ｂ = 0");
    for (const char16_t* code : {u"500", u"400", u"300", u"7"}) assignee(code, yen(41));
    assignee(u"600", {});
    EXPECT_EQ(commit().total, yen(800 + 900 + 1000 + 41));
    EXPECT_EQ(read("SELECT 個人別計算 FROM S配分基準対応社員"), "41|1000|900|800|-");
    EXPECT_EQ(read("SELECT 社員Code FROM S実行個人別計算決定"), "000008|9|10");
}

TEST_F(KojinbetsuTest, WithoutEmployeesOnlyTheOldDecisionGoes) {
    office();
    individual(kExample);
    assignee(u"2", yen(55));
    commit();
    sql("DELETE FROM S実行個人別計算; DELETE FROM Tanka_hasuu");
    const auto result = commit();
    EXPECT_EQ(result.employees, 0);
    EXPECT_TRUE(result.total.isNull());
    EXPECT_EQ(read("SELECT ID FROM S実行個人別計算決定"), "");
    EXPECT_EQ(read("SELECT 個人別計算 FROM S配分基準対応社員"), "902524|55");
    EXPECT_EQ(read("SELECT 個人別計算合計 FROM S実行予算"), "902579");
}

TEST_F(KojinbetsuTest, ASimulationScalesTheStoredCoefficient) {
    office();
    individual(kExample);
    const auto panel = uniform(u"2.400"_s, u"1,200.000"_s), byGrade = grades();
    auto closed = panel;
    closed.mode = Mode::Closed;
    const struct {
        const char16_t* grade;
        const PaymentSimulation& simulation;
        const char* effective;
        qint64 amount;
    } cases[] = {{u"A", closed, "2.5", 902524},
                 {u"A", panel, "0.005", 1805},      // 361,009.5 × 0.005 = 1,805.0475
                 {u"S", byGrade, "3.75", 1353786},  // × 3.75 = 1,353,785.625
                 {u"A", byGrade, "2.5", 902524}};
    for (const auto& c : cases) {
        sql("UPDATE S実行個人別計算 SET 評価 = ?", {c.grade});
        const QByteArray before = support::dump(cn());
        const auto effect = calc::PaymentPreview(cn(), run).effectOf(c.simulation).totals.value();
        EXPECT_EQ(support::firstDifference(before, support::dump(cn())).toStdString(), "");
        EXPECT_EQ(effect.registered, yen(902524));
        EXPECT_EQ(effect.corrected, yen(c.amount));
        EXPECT_EQ(effect.difference, yen(c.amount - 902524));
        EXPECT_EQ(commit(c.simulation).total, yen(c.amount)) << c.effective;
        EXPECT_EQ(read("SELECT 支給係数 FROM S実行個人別計算決定"), c.effective);
        EXPECT_EQ(read("SELECT 支給係数 FROM S実行個人別計算"), "2.5") << "stored";
    }
}

TEST(GradeScale, ALetterHasItsPlaceOnItsScaleOnly) {
    const struct {
        const char16_t *type, *grade;
        int place;
    } cases[] = {{u"1", u"H", 8},   {u"6", u"C", 3},   {u"07", u"A", 0}, {u"12", u"B", 1}, {u"7", u"S", -1},
                 {u"12", u"C", -1}, {u"13", u"A", -1}, {u"", u"A", -1},  {u"1", u"", -1},  {u"1", u"AB", -1}};
    for (const auto& c : cases)
        EXPECT_EQ(calc::gradeIndex(QString::fromUtf16(c.type), QString::fromUtf16(c.grade)).value_or(-1),
                  c.place);
}

TEST_F(KojinbetsuTest, EveryFailureLeavesTheTablesAsTheyWere) {
    office();
    individual();
    individual("社員Code = '2', 評価 = 'A'");
    commit();
    const auto byGrade = grades();
    const auto refused = [&](Reason reason, const char* damage, const PaymentSimulation& simulation = {}) {
        expectRefusal(reason, damage, [&] {
            const auto effect = calc::PaymentPreview(cn(), run).effectOf(simulation);
            EXPECT_TRUE(!effect.totals && !effect.reason.isEmpty());
            calculate(simulation);
        });
    };
    refused(Reason::DivideByZero, "", uniform(u"1.000"_s, u"0.000"_s));
    refused(Reason::Type, "", uniform(u"1.000"_s, u""_s));
    refused(Reason::Type, "", byGrade);  // one employee has no grade at all
    refused(Reason::DivideByZero, "UPDATE S実行個人別計算 SET 評価 = 'B'", byGrade);
    refused(Reason::Type, "UPDATE S実行個人別計算 SET 評価 = 'F'", byGrade);
    refused(Reason::Type,
            "UPDATE S実行個人別計算 SET 評価 = 'A';"
            "INSERT INTO S支給係数評価あり(配分区分, 配分基準, 評価) VALUES('01', '02', 'A')",
            byGrade);
    refused(Reason::Type, "UPDATE Tanka_hasuu SET 基準日 = '2026-12-11'");
    refused(Reason::Type, "UPDATE S実行個人別計算 SET 基礎額Ｂ = NULL WHERE 社員Code = '2'");
    refused(Reason::Type, "UPDATE S実行個人別計算 SET 出勤係数 = NULL");
    refused(Reason::Type, "UPDATE S実行個人別計算 SET 支給係数 = NULL");
    refused(Reason::Overflow, "UPDATE S実行個人別計算 SET 評価係数 = 1e200, 出勤係数 = 1e200");
    refused(Reason::Overflow, "UPDATE S実行個人別計算 SET 評価係数 = 1e306, 支給係数 = 0");  // infinity × 0
    refused(Reason::Overflow, "UPDATE S実行個人別計算 SET 出勤係数 = 1e12");  // more than money holds
    refused(Reason::Type, "UPDATE S実行個人別計算 SET 社員Code = 'A1'");
    refused(Reason::Type, "UPDATE S配分基準対応社員 SET 社員Code = ''");
    refused(Reason::Type, "DELETE FROM S配分基準対応社員 WHERE 社員Code = '2'");
    expectRefusal(Reason::Type, "DELETE FROM S実行予算", [&] { calculate(); });
    // What does not act may be missing.
    sql("UPDATE S実行個人別計算 SET 年齢係数 = NULL, 評価 = NULL");
    EXPECT_EQ(commit().total, yen(40000));
}

TEST_F(KojinbetsuTest, TheRowCounterEndsAt32767) {
    office();
    individual("基礎額Ａ = 10000, 基礎額Ｂ = 0");
    sql("WITH RECURSIVE 番(n) AS (SELECT 2 UNION ALL SELECT n + 1 FROM 番 WHERE n < 32767)"
        " INSERT INTO S実行個人別計算(社員Code, 配分区分, 配分基準, 基準日, 基礎額Ａ, 基礎額Ｂ, 評価係数,"
        " 出勤係数, 支給係数) SELECT n, 配分区分, 配分基準, 基準日, 基礎額Ａ, 基礎額Ｂ, 1, 1, 1"
        " FROM 番, S実行個人別計算;"
        "INSERT INTO S配分基準対応社員(社員Code, 配分区分, 配分基準, 基準日)"
        " SELECT 社員Code, 配分区分, 配分基準, 基準日 FROM S実行個人別計算 WHERE 社員Code <> '1'");
    EXPECT_EQ(commit().total, yen(32767));
    individual("社員Code = '32768'");
    expectRefusal(Reason::Overflow, "", [&] { calculate(); });
}

}  // namespace
