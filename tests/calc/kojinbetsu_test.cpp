#include "calc/kojinbetsu.h"

#include "run_fixture.h"

using namespace calctest;
using Reason = store::Error::Reason;
using Mode = calc::PaymentSimulation::Mode;

namespace {

class KojinbetsuTest : public testing::Test, public RunCompany {
  protected:
    calc::CalculationResult calculate(const calc::PaymentSimulation& simulation = {}) {
        calc::Kojinbetsu calculation(cn(), run, simulation);
        calculation.keisan1_kojinbetsu();
        return calculation.keisan2_kojinbetsu();
    }
    calc::CalculationResult commit(const calc::PaymentSimulation& simulation = {}) {
        calc::CalculationResult result;
        inTransaction([&] { result = calculate(simulation); });
        return result;
    }
    void expectRefusal(Reason reason, const calc::PaymentSimulation& simulation = {}) {
        RunCompany::expectRefusal(reason, [&] { calculate(simulation); });
    }
    store::Value amount(std::size_t row = 0) { return cell(u"S実行個人別計算", u"合計", row); }
    store::Value paid(std::size_t row = 0) { return cell(u"S配分基準対応社員", u"個人別計算", row); }
    store::Value effective(std::size_t row = 0) { return cell(u"S実行個人別計算決定", u"支給係数", row); }

    /// 評価係数 on base A only, 出勤係数 on both; two amounts of 1 yen rounding.
    void office() {
        coefficient(4, true, false);
        coefficient(5, true, true);
        rounding(u"0", u"0");
        budgetRow();
    }
    /// Simulated grades on the scale S A B C D (5): S 2.000 -> 3.000, A 1.000 -> 1.000, B 0.000 -> 1.000.
    calc::PaymentSimulation grades() {
        for (const auto& [letter, code] :
             {std::pair(u"S", u"1"), std::pair(u"A", u"2"), std::pair(u"B", u"3")})
            insert(u"S支給係数評価あり", {{u(u"配分区分"), run.haibunKubun},
                                          {u(u"配分基準"), run.haibunKijun},
                                          {u(u"評価"), letter},
                                          {u(u"評価Code"), code}});
        calc::PaymentSimulation simulation;
        simulation.mode = Mode::Grades;
        simulation.hyougoType = u(u"5");
        simulation.grades[0] = {u(u"S"), u(u"2.000"), u(u"3.000"), u(u"1")};
        simulation.grades[1] = {u(u"A"), u(u"1.000"), u(u"1.000"), u(u"2")};
        simulation.grades[2] = {u(u"B"), u(u"0.000"), u(u"1.000"), u(u"3")};
        return simulation;
    }
};

Employee example() {
    return {.kisoA = yen(300000),
            .kisoB = yen(20010),
            .keisuu = {{1, 1.5}, {4, 1.2}, {5, 0.95}},
            .hyouka = u"A",
            .payment = 2.5};
}

TEST_F(KojinbetsuTest, TheExampleToTheYenInAllFourPlaces) {
    office();
    individual(example());
    runRow(u"S実行個人別計算", example(), otherRun);
    for (const auto& [hasuu, expected] : {std::pair(u"0", 902500), std::pair(u"1", 902600)}) {
        rounding(u"2", hasuu);
        const auto result = commit();  // the second pass replaces the first one's decision
        EXPECT_EQ(result.employees, 1);
        expectCell(result.total, yen(expected), "total");
        expectCell(amount(), yen(expected), "合計");
        expectCell(cell(u"S実行個人別計算", u"Ａ計算額"), 855000.0, "A");
        expectCell(cell(u"S実行個人別計算", u"Ｂ計算額"), 47523.75, "B");
        expectCell(paid(), yen(expected), "個人別計算");
        expectCell(cell(u"S実行予算", u"個人別計算合計"), yen(expected), "S実行予算");
        expectCell(cell(u"S実行個人別計算決定", u"合計"), yen(expected), "decision");
    }
    // Inputs and the other kinds of payment stay, so does the other criterion.
    expectCell(cell(u"S実行個人別計算", u"年齢係数"), 1.5, "input");
    expectCell(cell(u"S実行個人別計算", u"支給係数"), 2.5, "input");
    expectCell(cell(u"S配分基準対応社員", u"金一封"), yen(7), "other kind");
    expectCell(cell(u"S配分基準対応社員", u"合計"), yen(9), "other kind");
    expectCell(amount(1), {}, "other run");

    ASSERT_EQ(column(u"S実行個人別計算決定", u"ID").size(), 1u);
    const std::pair<const char16_t*, store::Value> decision[] = {
        {u"社員Code", u"000001"},   {u"配分区分", u"01"},      {u"配分基準", u"02"}, {u"基準日", run.kijunbi},
        {u"基礎額Ａ", yen(300000)}, {u"年齢係数Ａ", 1.0},      {u"評価係数Ａ", 1.2}, {u"出勤係数Ａ", 0.95},
        {u"入力3係数Ａ", 1.0},      {u"基礎額Ｂ", yen(20010)}, {u"年齢係数Ｂ", 1.0}, {u"評価係数Ｂ", 1.0},
        {u"出勤係数Ｂ", 0.95},      {u"入力3係数Ｂ", 1.0},     {u"評価", u"A"},      {u"支給係数", 2.5},
        {u"Ａ計算額", 855000.0},    {u"Ｂ計算額", 47523.75}};
    for (const auto& [name, expected] : decision)
        expectCell(cell(u"S実行個人別計算決定", name), expected, u(name).toUtf8().constData());
}

TEST_F(KojinbetsuTest, ACoefficientActsOnlyWhereItIsSet) {
    // Base A 1000, base B 10: each digit of the amount tells which factor reached which side.
    struct Case {
        int k;
        bool onA, onB;
        qint64 expected;
    };
    rounding(u"0", u"0");
    budgetRow();
    individual({.kisoA = yen(1000), .kisoB = yen(10), .keisuu = {{1, 3.0}, {18, 2.0}, {7, 0.0}}});
    EXPECT_EQ(commit().total, store::Value(yen(0))) << "a base without a coefficient counts nothing";
    const Case cases[] = {{1, true, false, 3000},
                          {18, false, true, 3000 + 20},
                          {18, true, true, 6000 + 20},
                          {2, true, true, 6000 + 20},
                          {7, false, true, 6000}};
    for (const Case& c : cases) {  // each adds to the ones before
        coefficient(c.k, c.onA, c.onB);
        coefficient(c.k, true, true, u"2");  // the pool's set-up does not count here
        EXPECT_EQ(commit().total, store::Value(yen(c.expected))) << c.k;
    }
    // Any row on a base uses the base, even one that names no coefficient.
    cn().execute(u(u"DELETE FROM S係数設定"));
    coefficient(99, false, true);
    EXPECT_EQ(commit().total, store::Value(yen(10)));
}

TEST_F(KojinbetsuTest, MultipliesStrictlyFromLeftToRight) {
    coefficient(1, true, false);
    coefficient(2, true, false);
    coefficient(18, true, false);
    rounding(u"9", u"0");
    budgetRow();
    const double base = 300001, f1 = 1.1, f2 = 0.87, f18 = 0.77, payment = 2.3;
    individual({.kisoA = yen(300001), .keisuu = {{1, f1}, {2, f2}, {18, f18}}, .payment = payment});
    commit();
    const double forward = (((base * f1) * f2) * f18) * payment;
    ASSERT_NE(forward, (((base * payment) * f1) * f2) * f18) << "the case must tell the orders apart";
    ASSERT_NE(forward, base * (f1 * f2 * f18 * payment));
    ASSERT_NE(forward, (((base * f18) * f2) * f1) * payment);
    expectCell(cell(u"S実行個人別計算", u"Ａ計算額"), forward, "left to right");
}

TEST_F(KojinbetsuTest, AnUnknownRoundingKeepsTheSumToTheTenThousandth) {
    coefficient(1, true, true);
    budgetRow();
    // 1/32 and 3/32 yen are exact ties: they go to the even ten-thousandth. The sides keep what they are.
    individual({.code = u"1", .kisoA = yen(1), .kisoB = yen(0), .keisuu = {{1, 1 / 32.0}}});
    individual({.code = u"2", .kisoA = yen(1), .kisoB = yen(0), .keisuu = {{1, 3 / 32.0}}});
    individual({.code = u"3", .kisoA = yen(-1), .kisoB = store::Money::fromRaw(-25), .keisuu = {{1, 2.0}}});
    for (const auto& [tanka, hasuu] : {std::pair(u"5", u"0"), std::pair(u"0", u"3")}) {
        rounding(tanka, hasuu);
        commit();
        const qint64 expected[] = {312, 938, -20050};
        for (std::size_t row = 0; row < 3; ++row)
            expectCell(amount(row), store::Money::fromRaw(expected[row]), "unrounded");
    }
    expectCell(cell(u"S実行個人別計算", u"Ａ計算額"), 1 / 32.0, "side");
    expectCell(cell(u"S実行予算", u"個人別計算合計"), store::Money::fromRaw(-18800), "sum");
    rounding(u"0", u"0");
    commit();
    expectCell(amount(2), yen(-1), "toward zero");  // -2.005 + 0.5
}

TEST_F(KojinbetsuTest, RowsPairByThePlaceOfTheirNumber) {
    office();
    // As text 10 stands before 9; the longer list's rest keeps its amounts and counts, Null does not.
    for (const char16_t* code : {u"10", u"9", u"000008"})
        runRow(u"S実行個人別計算", {.code = code, .kisoA = yen(u(code).toInt() * 100), .kisoB = yen(0)}, run);
    assignee(u"500", yen(41));
    assignee(u"400", yen(1));
    assignee(u"300", yen(2));
    assignee(u"7", yen(3));
    assignee(u"600", {});
    EXPECT_EQ(commit().total, store::Value(yen(800 + 900 + 1000 + 41)));
    const store::Value expected[] = {yen(41), yen(1000), yen(900), yen(800), {}};
    for (std::size_t row = 0; row < 5; ++row) expectCell(paid(row), expected[row], "個人別計算");
    EXPECT_EQ(column(u"S実行個人別計算決定", u"社員Code"),
              (std::vector<store::Value>{u"000008", u"9", u"10"}));
}

TEST_F(KojinbetsuTest, WithoutEmployeesOnlyTheOldDecisionGoes) {
    office();
    individual(example());
    assignee(u"000002", yen(55));
    commit();
    cn().execute(u(u"DELETE FROM S実行個人別計算"));
    cn().execute(u(u"DELETE FROM Tanka_hasuu"));
    const auto result = commit();
    EXPECT_EQ(result.employees, 0);
    EXPECT_TRUE(result.total.isNull());
    EXPECT_TRUE(column(u"S実行個人別計算決定", u"ID").empty());
    expectCell(paid(1), yen(55), "個人別計算");
    expectCell(cell(u"S実行予算", u"個人別計算合計"), yen(902524 + 55), "S実行予算");
}

TEST_F(KojinbetsuTest, ASimulationScalesTheStoredCoefficient) {
    office();
    individual(example());
    calc::PaymentSimulation uniform;
    uniform.uniformCorrected = u(u"2.400");
    uniform.uniformRegistered = u(u"1,200.000");
    commit(uniform);
    expectCell(effective(), 2.5, "closed panel");
    uniform.mode = Mode::Uniform;
    commit(uniform);
    expectCell(effective(), 2.4 / 1200 * 2.5, "uniform");
    expectCell(cell(u"S実行個人別計算", u"支給係数"), 2.5, "stored");

    const auto simulation = grades();
    cn().execute(u(u"UPDATE S実行個人別計算 SET 評価 = 'S'"));
    commit(simulation);
    expectCell(effective(), 3.75, "S: 3/2 of 2.5");
    expectCell(paid(), yen(1353786), "902,523.75 × 1.5 = 1,353,785.625");
    cn().execute(u(u"UPDATE S実行個人別計算 SET 評価 = 'A'"));
    commit(simulation);
    expectCell(effective(), 2.5, "ratio 1");
}

TEST(GradeScale, ALetterHasItsPlaceOnItsScaleOnly) {
    EXPECT_EQ(calc::gradeIndex(u(u"1"), u(u"H")), 8);
    EXPECT_EQ(calc::gradeIndex(u(u"6"), u(u"C")), 3);
    EXPECT_EQ(calc::gradeIndex(u(u"07"), u(u"A")), 0);
    EXPECT_EQ(calc::gradeIndex(u(u"12"), u(u"B")), 1);
    const std::pair<const char16_t*, const char16_t*> none[] = {{u"7", u"S"}, {u"12", u"C"}, {u"13", u"A"},
                                                                {u"", u"A"},  {u"1", u""},   {u"1", u"AB"}};
    for (const auto& [type, grade] : none)
        EXPECT_FALSE(calc::gradeIndex(u(type), u(grade))) << u(grade).toStdString();
}

TEST_F(KojinbetsuTest, EveryFailureLeavesTheTablesAsTheyWere) {
    office();
    individual({.code = u"000001"});
    individual({.code = u"000002", .hyouka = u"A"});
    commit();
    const auto simulation = grades();
    calc::PaymentSimulation uniform;
    uniform.mode = Mode::Uniform;
    uniform.uniformCorrected = u(u"1.000");
    uniform.uniformRegistered = u(u"0.000");
    expectRefusal(Reason::DivideByZero, uniform);
    uniform.uniformRegistered.clear();
    expectRefusal(Reason::Type, uniform);
    expectRefusal(Reason::Type, simulation);  // no grade at all

    struct Case {
        const char* what;
        const char16_t* damage;
        Reason reason;
        calc::PaymentSimulation simulation;
    };
    const Case cases[] = {
        {"registered grade 0", u"UPDATE S実行個人別計算 SET 評価 = 'B'", Reason::DivideByZero, simulation},
        {"grade off the panel's scale", u"UPDATE S実行個人別計算 SET 評価 = 'F'", Reason::Type, simulation},
        {"grade registered twice",
         u"INSERT INTO S支給係数評価あり(配分区分, 配分基準, 評価) SELECT 配分区分, 配分基準, 'A' FROM "
         u"S実行個人別計算",
         Reason::Type, simulation},
        {"no rounding of the date", u"UPDATE Tanka_hasuu SET 基準日 = '2026-12-11'", Reason::Type, {}},
        {"Null base",
         u"UPDATE S実行個人別計算 SET 基礎額Ｂ = NULL WHERE 社員Code = '000002'",
         Reason::Type,
         {}},
        {"Null coefficient that acts", u"UPDATE S実行個人別計算 SET 出勤係数 = NULL", Reason::Type, {}},
        {"Null payment coefficient", u"UPDATE S実行個人別計算 SET 支給係数 = NULL", Reason::Type, {}},
        {"infinite product",
         u"UPDATE S実行個人別計算 SET 評価係数 = 1e200, 出勤係数 = 1e200",
         Reason::Overflow,
         {}},
        {"infinity times 0",
         u"UPDATE S実行個人別計算 SET 評価係数 = 1e306, 支給係数 = 0",
         Reason::Overflow,
         {}},
        {"more than money holds", u"UPDATE S実行個人別計算 SET 出勤係数 = 1e12", Reason::Overflow, {}},
        {"number that is none", u"UPDATE S実行個人別計算 SET 社員Code = 'A1'", Reason::Type, {}},
        {"number that is none, assigned", u"UPDATE S配分基準対応社員 SET 社員Code = ''", Reason::Type, {}},
        {"too few assigned", u"DELETE FROM S配分基準対応社員 WHERE 社員Code = '000002'", Reason::Type, {}},
        {"no budget row", u"DELETE FROM S実行予算", Reason::Type, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        cn().executeScript(u(u"SAVEPOINT 元"));
        cn().execute(u(c.damage));
        // The screen's own transaction is played by savepoints, since the damage goes away again.
        const QByteArray before = support::dump(cn());
        cn().executeScript(u(u"SAVEPOINT 計算"));
        try {
            calculate(c.simulation);
            ADD_FAILURE() << "no failure";
        } catch (const store::Error& error) {
            EXPECT_EQ(error.reason(), c.reason) << error.what();
        }
        cn().executeScript(u(u"ROLLBACK TO 計算"));
        EXPECT_EQ(support::firstDifference(before, support::dump(cn())).toStdString(), "");
        cn().executeScript(u(u"ROLLBACK TO 元; RELEASE 元"));
    }
    // What does not act may be missing.
    cn().execute(u(u"UPDATE S実行個人別計算 SET 年齢係数 = NULL, 評価 = NULL"));
    EXPECT_EQ(commit().total, store::Value(yen(40000)));
}

TEST_F(KojinbetsuTest, TheRowCounterEndsAt32767) {
    office();
    const auto people = [&](int count) {
        for (const char16_t* table : {u"S実行個人別計算", u"S配分基準対応社員"}) {
            const bool runTable = u(table) == u"S実行個人別計算";
            cn().execute(u(u"DELETE FROM ") + u(table));
            cn().execute(
                u(u"WITH RECURSIVE 番(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM 番 WHERE n < ?)"
                  u" INSERT INTO %1(社員Code, 配分区分, 配分基準, 基準日%2) SELECT printf('%06d', n), ?, ?, "
                  u"?%3 FROM 番")
                    .arg(u(table), u(runTable ? u", 基礎額Ａ, 基礎額Ｂ, 評価係数, 出勤係数, 支給係数" : u""),
                         u(runTable ? u", 10000, 0, 1, 1, 1" : u"")),
                {count, run.haibunKubun, run.haibunKijun, run.kijunbi});
        }
    };
    people(32767);
    EXPECT_EQ(commit().total, store::Value(yen(32767)));
    people(32768);
    expectRefusal(Reason::Overflow);
}

}  // namespace
