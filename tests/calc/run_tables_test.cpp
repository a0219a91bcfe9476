#include "calc/result_list.h"
#include "calc/run_budget.h"
#include "calc/run_calculation.h"
#include "calc/shikyuu_store.h"
#include "run_fixture.h"
#include "support/sheet_text.h"

using namespace calctest;
using calc::PaymentSimulation;

namespace {

class RunTablesTest : public OneRun {
  protected:
    void setup(const char16_t* method) {
        sql("DELETE FROM S支給係数設定");
        sql("INSERT INTO S支給係数設定(配分区分, 配分基準, 評語タイプ, 一律係数, 設定方法)"
            " VALUES('01', '02', '5', 1.2345, ?)",
            {method});
    }
    calc::PaymentDecision decide() { return calc::decidePaymentPanel(cn(), run); }
    void storePanel(const PaymentSimulation& panel) { calc::storePaymentCoefficients(cn(), run, panel); }
    /// Rows of the panel as "letter registered corrected code".
    QStringList panelRows() {
        QStringList rows;
        const auto panel = std::get<calc::GradePanel>(decide().outcome);
        for (const auto& row : panel.rows)
            rows << QStringList{row.hyouka, row.registered, row.corrected, row.hyoukaCode}.join(u' ');
        return rows;
    }
    /// S 2.000 -> 2.500 and A 1,000.500 -> 999.000.
    static PaymentSimulation grades() {
        const calc::PanelGrade s{u"S"_s, u"2.000"_s, u"2.500"_s, u"9"_s};
        const calc::PanelGrade a{u"A"_s, u"1,000.500"_s, u"999.000"_s, u"10"_s};
        return {PaymentSimulation::Mode::Grades, {}, {}, {}, {s, a}};
    }
};

TEST_F(RunTablesTest, TheBudgetRowIsMadeOnceAndItsSumsFollowTheirSources) {
    const auto opened = [&] {
        calc::openRunBudget(cn(), run);
        return read(
            "SELECT 予算総額, 総額配分予算, 個人別計算合計, 総額配分合計, 金一封合計,"
            " 特別加算金合計 FROM S実行予算");
    };
    assignee(u"1", yen(10), yen(200));
    assignee(u"2", yen(20), {});
    EXPECT_EQ(calc::openRunBudget(cn(), run).kinIppuuGoukei, yen(0)) << "a new row has no sums yet";
    calc::storeBudgets(cn(), run, yen(5000), yen(3000));
    sql("UPDATE S実行予算 SET 個人別計算合計 = 990000, 総額配分合計 = 990000");
    EXPECT_EQ(opened(), "5000 3000 99 99 14 16") << "without inputs of a method its sum stays";
    runRow("S実行個人別計算");
    runRow("S実行総額配分", "配分基準 = '03'");
    EXPECT_EQ(opened(), "5000 3000 30 99 14 16");
    const auto totals = calc::refreshTotals(calc::readRunBudget(cn(), run));
    EXPECT_EQ(totals.haibunYotei, yen(5000 - 30 - 14 - 16));
    EXPECT_EQ(totals.soukei, yen(30 + 99 + 14 + 16));
    sql("DELETE FROM S実行個人別計算; DELETE FROM S配分基準対応社員");
    EXPECT_EQ(opened(), "5000 3000 30 99 14 16") << "nobody assigned: the sums stay";
    const domain::RunKey other{run.kijunbi, run.haibunKubun, u"03"_s};
    expectRefusal(Reason::Type, "", [&] { calc::storeBudgets(cn(), other, yen(1), yen(1)); });
}

TEST_F(RunTablesTest, ACalculationKeepsItsCoefficientsAndItsAmountsOrNeither) {
    const auto individually = [&](const char16_t* corrected) {
        calc::RunCalculation calculation(cn(), run, u"配分計算"_s);
        return calculation.individually(
            {PaymentSimulation::Mode::Uniform, {}, QString::fromUtf16(corrected), u"2.000"_s, {}});
    };
    setup(u"2");
    coefficient(1, true, false);
    rounding(u"0", u"0");
    budgetRow();
    person("S実行個人別計算");
    EXPECT_EQ(individually(u"3.000").total, yen(15000));
    EXPECT_EQ(
        read("SELECT 一律係数 FROM Sshikyuukeisuu") + ' ' + read("SELECT 個人別計算合計 FROM S実行予算"),
        "3 15000");
    expectRefusal(Reason::Type, "DELETE FROM Tanka_hasuu", [&] { individually(u"4.000"); });
}

TEST_F(RunTablesTest, WhatWasTypedComesBackAtTheNextPress) {
    setup(u"2");
    const auto uniform = [&] { return std::get<calc::UniformPanel>(decide().outcome); };
    EXPECT_EQ(uniform().corrected, u"1.235"_s);
    PaymentSimulation panel;
    panel.uniformCorrected = u"1.500"_s;
    storePanel(panel);
    EXPECT_EQ(uniform().registered + u' ' + uniform().corrected, u"1.235 1.500"_s);
    EXPECT_EQ(read("SELECT 設定方法, 評語タイプ FROM Sshikyuukeisuu"), "2 5");
    EXPECT_EQ(read("SELECT ID FROM SshikyuukeisuuHA"), "");

    setup(u"3");
    EXPECT_EQ(panelRows(), QStringList());
    sql("INSERT INTO S支給係数評価あり(配分区分, 配分基準, 評価, 評価Code, 支給係数)"
        " VALUES('01', '02', 'A', '10', 1000.5), ('01', '02', 'S', '9', 2)");
    EXPECT_EQ(panelRows(), (QStringList{u"S 2.000 2.000 9"_s, u"A 1,000.500 1,000.500 10"_s}));
    panel = grades();
    for (int press = 0; press < 2; ++press) storePanel(panel);  // the second one replaces the first
    EXPECT_EQ(panelRows(), (QStringList{u"S 2.000 2.500 9"_s, u"A 1,000.500 999.000 10"_s}));
    EXPECT_EQ(read("SELECT 評価 FROM SshikyuukeisuuHA"), "S|A");
    EXPECT_EQ(read("SELECT 一律係数 FROM Sshikyuukeisuu"), "1") << "an empty box stores 1";

    for (const char* gone :
         {"DELETE FROM S支給係数設定", "DELETE FROM S支給係数評価あり WHERE 評価Code = '10'"})
        expectRefusal(Reason::Type, gone, [&] { storePanel(panel); });
    const char* const tenGrades =  // the panel has nine boxes
        "WITH RECURSIVE 番(n) AS (SELECT 11 UNION ALL SELECT n + 1 FROM 番 WHERE n < 18)"
        " INSERT INTO S支給係数評価あり(配分区分, 配分基準, 評価Code) SELECT '01', '02', n FROM 番";
    expectRefusal(Reason::Type, tenGrades, [&] { decide(); });
}

TEST_F(RunTablesTest, TheListShowsTheStoredAmountsAndTheirTotals) {
    sql("INSERT INTO 履歴書テーブル(社員Code, 氏名)"
        " VALUES('000010', '山田 花子'), ('9', '佐藤 一郎'), ('000077', '対象外')");
    assignee(u"000010", yen(1234567), store::Money::fromRaw(5000));
    assignee(u"9", {}, yen(5));
    assignee(u"000011", yen(1), yen(1));  // no longer in the personnel records
    calc::updateGrandTotals(cn(), run);
    EXPECT_EQ(read("SELECT 合計 FROM S配分基準対応社員"), "1234582.5|-|17");

    PaymentSimulation panel = grades();
    const QString line = calc::coefficientLineForSheet(panel);
    EXPECT_EQ(calc::coefficientLineForReport(panel), u"支給係数  S=2.500  A=999.000"_s);
    EXPECT_EQ(support::sheetLines(
                  calc::resultSheet(u"正社員賞与"_s, u"管理職"_s, line, calc::resultRows(cn(), run))),
              (QStringList{u"◆正社員賞与／管理職"_s, u"★支給係数  S = 2.500  A = 999.000"_s,
                           u"社員Code|氏名|個人別計算|総額配分|金一封|特別加算金|合計"_s,
                           u"9|佐藤 一郎||5円|7円|8円"_s,
                           u"000010|山田 花子|1234567円|0.5円|7円|8円|1234582.5円"_s}));
    panel.uniformCorrected = u"1.500"_s;
    panel.mode = PaymentSimulation::Mode::Uniform;
    EXPECT_EQ(calc::coefficientLineForReport(panel), u"支給係数 = 1.500"_s);
    EXPECT_EQ(calc::coefficientLineForSheet(panel), u"★支給係数 = 1.500"_s);
    panel.mode = PaymentSimulation::Mode::Closed;
    EXPECT_EQ(calc::coefficientLineForReport(panel), QString());

    sql("UPDATE S配分基準対応社員 SET 個人別計算 = 9223372036854775807, 合計 = 1");
    const QByteArray before = support::dump(cn());
    EXPECT_THROW(calc::updateGrandTotals(cn(), run), store::Error);
    EXPECT_EQ(support::dump(cn()), before) << "a total beyond the money range changes nothing";
}

}  // namespace
