#include "calc/result_list.h"
#include "calc/run_budget.h"
#include "calc/shikyuu_store.h"
#include "run_fixture.h"

using namespace calctest;
using Reason = store::Error::Reason;
using Mode = calc::PaymentSimulation::Mode;

namespace {

class RunTablesTest : public testing::Test, public RunCompany {
  protected:
    std::vector<std::pair<QString, store::Value>> criterion() {
        return {{u(u"配分区分"), run.haibunKubun}, {u(u"配分基準"), run.haibunKijun}};
    }
    void setup(const char16_t* method) {
        cn().execute(u(u"DELETE FROM S支給係数設定"));
        auto cells = criterion();
        cells.insert(cells.end(),
                     {{u(u"設定方法"), method}, {u(u"評語タイプ"), u"5"}, {u(u"一律係数"), 1.2345}});
        insert(u"S支給係数設定", cells);
    }
    void grade(const char16_t* table, const char16_t* letter, const char16_t* code, double value) {
        auto cells = criterion();
        const bool evaluation = u(table) == u"S係数評価";
        cells.insert(cells.end(), {{u(u"評価"), letter},
                                   {u(u"評価Code"), code},
                                   {evaluation ? u(u"係数") : u(u"支給係数"), value}});
        if (u(table) == u"SshikyuukeisuuHA") cells.push_back({u(u"基準日"), run.kijunbi});
        insert(table, cells);
    }
    calc::PaymentDecision decide() { return calc::decidePaymentPanel(cn(), run); }
    template <typename Outcome>
    bool leadsTo() {
        return std::holds_alternative<Outcome>(decide().outcome);
    }
    /// Rows of the panel as "letter registered corrected code".
    QStringList panelRows() {
        QStringList rows;
        const auto panel = std::get<calc::GradePanel>(decide().outcome);
        for (const auto& row : panel.rows)
            rows << QStringList{row.hyouka, row.registered, row.corrected, row.hyoukaCode}.join(u' ');
        return rows;
    }
};

TEST_F(RunTablesTest, TheBudgetRowIsMadeOnceAndItsSumsFollowTheirSources) {
    assignee(u"1", yen(10), yen(200));
    assignee(u"2", yen(20), {});
    EXPECT_EQ(calc::openRunBudget(cn(), run).kinIppuuGoukei, yen(0)) << "a new row has no sums yet";
    EXPECT_EQ(column(u"S実行予算", u"ID").size(), 1u);
    calc::storeBudgets(cn(), run, yen(5000), yen(3000));
    cn().execute(u(u"UPDATE S実行予算 SET 個人別計算合計 = 990000, 総額配分合計 = 990000"));

    auto budget = calc::openRunBudget(cn(), run);
    EXPECT_EQ(budget.kojinbetsuGoukei, yen(99)) << "no row of 個人別計算: the sum stays";
    EXPECT_EQ(budget.sougakuGoukei, yen(99));
    EXPECT_EQ(budget.kinIppuuGoukei, yen(14));
    EXPECT_EQ(budget.tokubetsuKasankinGoukei, yen(16));
    runRow(u"S実行個人別計算", {}, run);
    runRow(u"S実行総額配分", {}, otherRun);
    budget = calc::openRunBudget(cn(), run);
    EXPECT_EQ(budget.kojinbetsuGoukei, yen(30));
    EXPECT_EQ(budget.sougakuGoukei, yen(99));
    EXPECT_EQ(budget.yosanSougaku, yen(5000));
    EXPECT_EQ(budget.sougakuHaibunYosan, yen(3000));
    const auto totals = calc::refreshTotals(budget);
    EXPECT_EQ(totals.haibunYotei, yen(5000 - 30 - 14 - 16));
    EXPECT_EQ(totals.soukei, yen(30 + 99 + 14 + 16));

    cn().execute(u(u"DELETE FROM S配分基準対応社員"));
    EXPECT_EQ(calc::openRunBudget(cn(), run).kinIppuuGoukei, yen(14)) << "nobody assigned: the sum stays";
    EXPECT_EQ(column(u"S実行予算", u"ID").size(), 1u);
    EXPECT_THROW(calc::storeBudgets(cn(), otherRun, yen(1), yen(1)), store::Error);
}

TEST_F(RunTablesTest, CorrectingCoefficientsLeadsWhereTheSetUpSays) {
    EXPECT_TRUE(leadsTo<calc::MissingSetup>());
    setup(u"1");
    EXPECT_TRUE(leadsTo<calc::RunTimeInput>());
    EXPECT_EQ(decide().hyougoType, u(u"5"));
    setup(u"3");
    EXPECT_TRUE(std::get<calc::GradePanel>(decide().outcome).rows.empty());
    setup(u"4");
    EXPECT_TRUE(leadsTo<calc::NothingToDo>());

    coefficient(4, true, false, u"2");
    coefficient(4, true, false);  // 評価係数 acts
    grade(u"S係数評価", u"A", u"1", 1);
    EXPECT_EQ(std::get<calc::MissingGrades>(decide().outcome).name, u(u"出来"));
    EXPECT_FALSE(decide().hyougoType.has_value());
    grade(u"S係数評価", u"B", u"2", 1);
    setup(u"3");
    EXPECT_EQ(std::get<calc::DoubleEvaluation>(decide().outcome).name, u(u"出来"));
    setup(u"2");
    EXPECT_EQ(std::get<calc::UniformPanel>(decide().outcome).corrected, u(u"1.235"));
    coefficient(4, true, false);
    EXPECT_TRUE(leadsTo<calc::NothingToDo>());
}

TEST_F(RunTablesTest, WhatWasTypedComesBackAtTheNextPress) {
    setup(u"2");
    calc::PaymentSimulation panel;
    panel.uniformCorrected = u(u"1.500");
    inTransaction([&] { calc::storePaymentCoefficients(cn(), run, panel); });
    const auto uniform = std::get<calc::UniformPanel>(decide().outcome);
    EXPECT_EQ(uniform.registered, u(u"1.235"));
    EXPECT_EQ(uniform.corrected, u(u"1.500"));
    expectCell(cell(u"Sshikyuukeisuu", u"設定方法"), u"2", "設定方法");
    expectCell(cell(u"Sshikyuukeisuu", u"評語タイプ"), u"5", "評語タイプ");
    EXPECT_TRUE(column(u"SshikyuukeisuuHA", u"ID").empty());

    setup(u"3");
    grade(u"S支給係数評価あり", u"A", u"10", 1000.5);
    grade(u"S支給係数評価あり", u"S", u"9", 2);
    EXPECT_EQ(panelRows(), (QStringList{u(u"S 2.000 2.000 9"), u(u"A 1,000.500 1,000.500 10")}));
    panel = {};
    panel.mode = Mode::Grades;
    panel.grades[0] = {u(u"S"), u(u"2.000"), u(u"2.500"), u(u"9")};
    panel.grades[1] = {u(u"A"), u(u"1,000.500"), u(u"999.000"), u(u"10")};
    for (int press = 0; press < 2; ++press)  // the second store step replaces the first
        inTransaction([&] { calc::storePaymentCoefficients(cn(), run, panel); });
    EXPECT_EQ(panelRows(), (QStringList{u(u"S 2.000 2.500 9"), u(u"A 1,000.500 999.000 10")}));
    EXPECT_EQ(column(u"SshikyuukeisuuHA", u"評価"), (std::vector<store::Value>{u"S", u"A"}));
    EXPECT_EQ(column(u"Sshikyuukeisuu", u"一律係数"), std::vector<store::Value>{1.0})
        << "an empty box stores 1";

    panel.grades[1].hyoukaCode = u(u"11");
    expectRefusal(Reason::Type, [&] { calc::storePaymentCoefficients(cn(), run, panel); });
    for (int extra = 11; extra < 19; ++extra)
        grade(u"S支給係数評価あり", u"X", u(u"%1").arg(extra).toStdU16String().c_str(), 1);
    EXPECT_THROW(decide(), store::Error) << "no box for the tenth grade";
    cn().execute(u(u"DELETE FROM S支給係数設定"));
    expectRefusal(Reason::Type, [&] { calc::storePaymentCoefficients(cn(), run, panel); });
}

TEST_F(RunTablesTest, TheListShowsTheStoredAmountsAndTheirTotals) {
    const auto person = [&](const char16_t* code, const char16_t* name) {
        insert(u"履歴書テーブル", {{u(u"社員Code"), code}, {u(u"氏名"), name}});
    };
    person(u"000010", u"山田 花子");
    person(u"9", u"佐藤 一郎");
    person(u"000077", u"対象外");
    assignee(u"000010", yen(1234567), store::Money::fromRaw(5000));
    assignee(u"9", {}, yen(5));
    assignee(u"000011", yen(1), yen(1));  // no longer in the personnel records
    calc::updateGrandTotals(cn(), run);
    EXPECT_EQ(column(u"S配分基準対応社員", u"合計"),
              (std::vector<store::Value>{store::Money::fromRaw(12345825000), {}, yen(17)}));

    calc::PaymentSimulation panel;
    panel.uniformCorrected = u(u"1.500");
    EXPECT_EQ(calc::coefficientLineForReport(panel), QString());
    panel.mode = Mode::Uniform;
    EXPECT_EQ(calc::coefficientLineForReport(panel), u(u"支給係数 = 1.500"));
    EXPECT_EQ(calc::coefficientLineForSheet(panel), u(u"★支給係数 = 1.500"));
    panel.mode = Mode::Grades;
    panel.grades[0] = {u(u"S"), u(u"2.000"), u(u"2.500"), u(u"9")};
    panel.grades[1] = {u(u"A"), u(u"1.000"), u(u"0.500"), u(u"10")};
    EXPECT_EQ(calc::coefficientLineForReport(panel), u(u"支給係数  S=2.500  A=0.500"));

    const auto sheet = calc::resultSheet(u(u"正社員賞与"), u(u"管理職"), calc::coefficientLineForSheet(panel),
                                         calc::resultRows(cn(), run));
    EXPECT_EQ(
        sheet,
        (std::vector<QStringList>{
            {u(u"◆正社員賞与／管理職")},
            {u(u"★支給係数  S = 2.500  A = 0.500")},
            {u(u"社員Code"), u(u"氏名"), u(u"個人別計算"), u(u"総額配分"), u(u"金一封"), u(u"特別加算金"),
             u(u"合計")},
            {u(u"9"), u(u"佐藤 一郎"), QString(), u(u"5"), u(u"7"), u(u"8"), QString()},
            {u(u"000010"), u(u"山田 花子"), u(u"1,234,567"), u(u"1"), u(u"7"), u(u"8"), u(u"1,234,583")}}));

    cn().execute(u(u"UPDATE S配分基準対応社員 SET 個人別計算 = 9223372036854775807, 合計 = 1"));
    const QByteArray before = support::dump(cn());
    EXPECT_THROW(calc::updateGrandTotals(cn(), run), store::Error);
    EXPECT_EQ(support::dump(cn()), before) << "a total beyond the money range changes nothing";
}

}  // namespace
