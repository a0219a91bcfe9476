#include "prep/run_input.h"

#include "prep/criterion_snapshot.h"
#include "prep/pasted_people.h"
#include "prep/run_company.h"
#include "store/work.h"

namespace {

using namespace preptest;

const domain::RunKey kRun{sample::newestKijunbi(), u"01"_s, u"01"_s};
/// Three employees of one criterion, made by hand: 9, 10 and 1000 in this order, though as text 10 is first.
class RunInputTest : public RunCompany {
  protected:
    RunInputTest() : RunCompany(Content::Empty) {
        sql(u"insert into 所属大マスタ(Code,所属大) values('01','営業部'),('01','二つ目')"_s);
        sql(u"insert into 役職マスタ(Code,役職) values('03','課長')"_s);
        for (const QString& code : {u"001000"_s, u"000010"_s, u"000009"_s}) {
            sql(u"insert into 履歴書テーブル(社員Code,氏名) values(?,?)"_s, {code, u"氏名"_s + code});
            sql(u"insert into IdoChuusyutsuMax2(社員Code,所属大,役職,年齢) values(?,'01',?,40)"_s,
                {code, code == u"000010"_s ? u"99"_s : u"03"_s});
            for (prep::RunTable table : prep::kRunTables)
                prep::RunRowWriter(cn_, table, kRun.kijunbi).add(code, u"01"_s, u"01"_s);
        }
    }
    std::vector<prep::InputRow> load(const QString& name) {
        return prep::loadInputRows(cn_, kRun, {prep::RunTable::KojinBetsu, name});
    }
};

TEST_F(RunInputTest, ReadsTheCriterionByNumberWithNamesAndWithoutWhoLeftTheSnapshot) {
    // A second position on one day and a second run row make no second employee of the criterion.
    sql(u"insert into IdoChuusyutsuMax2(社員Code,所属大) values('000009','77')"_s);
    prep::RunRowWriter(cn_, prep::RunTable::KojinBetsu, kRun.kijunbi).add(u"000010"_s, u"01"_s, u"02"_s);
    auto rows = load(u"基礎額Ａ"_s);
    QStringList lines;
    for (const auto& row : rows) lines << row.syainCode + row.text + row.shimei + row.syozoku + row.yakusyoku;
    EXPECT_EQ(lines, (QStringList{u"00000910000氏名000009営業部課長"_s,
                                  u"00001010000氏名000010営業部"_s,  // a code that its master lacks
                                  u"00100010000氏名001000営業部課長"_s}));
    EXPECT_EQ(read(u"select 年齢, 配分区分Code, 配分基準Code, 所属大名 from IdoChuusyutsuMax3"_s),
              QStringList(3, u"40|01|01|営業部"_s));
    // Two rows of one employee stand in the order in which they came.
    prep::RunRowWriter(cn_, prep::RunTable::KojinBetsu, kRun.kijunbi).add(u"000010"_s, u"01"_s, u"01"_s);
    sql(u"update S実行個人別計算 set 基礎額Ａ = 70000 where ID = (select max(ID) from S実行個人別計算)"_s);
    EXPECT_EQ(load(u"基礎額Ａ"_s)[2].text, u"7"_s);
    sql(u"delete from IdoChuusyutsuMax2 where 社員Code = '000010'"_s);
    EXPECT_EQ(load(u"基礎額Ａ"_s).size(), 2U);
    sql(u"delete from S実行個人別計算"_s);
    EXPECT_TRUE(load(u"基礎額Ａ"_s).empty());
    // In a caller's transaction the list goes back with it.
    store::Work takenBack(cn_);
    prep::SelectIntoX3(cn_, kRun, prep::RunTable::SougakuHaibun);
    takenBack.rollback();
    EXPECT_EQ(cn_.query(u"select 1 from IdoChuusyutsuMax3"_s).recordCount(), 0);
}

TEST_F(RunInputTest, WritesRowByRowOnlyWhereTheEmployeesAgree) {
    const prep::InputTarget base{prep::RunTable::KojinBetsu, u"基礎額Ａ"_s};
    const auto column = [&](const QString& table) {
        return read(u"select 基礎額Ａ from %1 order by cast(社員Code as integer)"_s.arg(table)).join(u' ');
    };
    auto rows = load(base.column);
    rows[0].text = u"1,234,567"_s;
    rows[2].text = u"0.5"_s;
    EXPECT_EQ(prep::writeInputRows(cn_, kRun, base, rows), std::nullopt);
    EXPECT_EQ(column(u"S実行個人別計算"_s), u"1234567 10000 0.5"_s);
    EXPECT_EQ(column(u"S実行総額配分"_s), u"10000 10000 10000"_s);
    // Digits beyond those of a text stay, where the value was read and where it is copied to.
    sql(u"update S実行個人別計算 set 出勤係数 = 0.1 + 0.2"_s);
    const prep::InputTarget factor{prep::RunTable::KojinBetsu, u"出勤係数"_s};
    const auto factors = load(factor.column);
    for (const auto table : {prep::RunTable::KojinBetsu, prep::RunTable::SougakuHaibun}) {
        EXPECT_EQ(prep::writeInputRows(cn_, kRun, {table, factor.column}, factors), std::nullopt);
        EXPECT_EQ(
            read(u"select count(*) from %1 where 出勤係数 = 0.1 + 0.2"_s.arg(prep::runTableName(table))),
            QStringList{u"3"_s});
    }
    rows[1].text = QString();
    EXPECT_THROW(prep::writeInputRows(cn_, kRun, base, rows), store::Error);
    const QByteArray before = support::dump(cn_);
    const auto answer = prep::writeInputRows(cn_, kRun, base, {rows[1], rows[0], rows[2]});
    EXPECT_TRUE(answer.value_or(QString()).contains(u"社員の並び順が異なります。\n"_s));
    expectUnchanged(before);
}

TEST_F(RunInputTest, TheOtherMethodsCoefficientIsTypedInIfItHasOneRowForThat) {
    const auto typedIn = [this] { return prep::sisterTypesIn(cn_, kRun, u"2"_s, u"5"_s); };
    const QString row =
        u"insert into S係数設定(配分区分Code,配分基準Code,設定名称,算定方式,入力区分Code) values('01','01','5','2',?)"_s;
    sql(row, {u"2"_s});
    EXPECT_FALSE(typedIn());
    sql(u"update S係数設定 set 入力区分Code = '1'"_s);
    EXPECT_TRUE(typedIn());
    sql(row, {u"1"_s});
    EXPECT_FALSE(typedIn()) << "two rows are not exactly one";
    for (const auto& [code, column] : {std::pair(u"01"_s, u"年齢係数"_s), {u"18"_s, u"入力3係数"_s}})
        EXPECT_EQ(prep::coefficientColumn(code), column);
    for (const QString& code : {u"00"_s, u"19"_s, u"x"_s, QString()})
        EXPECT_THROW(prep::coefficientColumn(code), store::Error);
}

/// text, what leaving says ("" passes), the replacement, what saving says, what is shown.
struct Cell {
    const char16_t *text, *leave, *replacement, *save, *shown;
};
void expectCells(const prep::CellRules& rules, const std::vector<Cell>& cells) {
    const auto said = [](const std::optional<prep::Refusal>& r) { return r ? r->text : QString(); };
    for (const Cell& cell : cells) {
        const QString text = QString::fromUtf16(cell.text);
        const auto left = rules.leave(text);
        EXPECT_EQ(said(left), QString::fromUtf16(cell.leave)) << text.toStdString();
        EXPECT_EQ(left ? left->replacement.value_or(QString()) : QString(),
                  QString::fromUtf16(cell.replacement));
        EXPECT_EQ(said(rules.save(text)), QString::fromUtf16(cell.save)) << text.toStdString();
        EXPECT_EQ(rules.format(text), QString::fromUtf16(cell.shown)) << text.toStdString();
    }
}

TEST(CellRulesTest, AdmitWhatEachGridTakes) {
    const auto* range = u"1～99,999,999円を入力してください。";
    const auto* missing = u"未入力ヶ所があります";
    const auto* most = u"999.999以下を入力してください。";
    const auto* least = u"0.001以上を入力してください。";
    const auto* none = u"「12x」は数字として読めません。";
    const auto* comma =
        u"「3,5」は数字として読めません。\nカンマ（,）は３桁ごとの区切りです。小数点はピリオド（."
        u"）で入力してください。";
    const auto* bad = u"不正な入力がありました。暫定的に1.000にします。";
    expectCells(prep::typedAmountRules(), {{u"", u"空欄なので0にします。", u"0", missing, u""},
                                           {u"0", u"", u"", u"", u"0"},
                                           {u"1,000,000", u"", u"", u"", u"1,000,000"},
                                           {u"99999999", u"", u"", u"", u"99,999,999"},
                                           {u"100000000", range, u"", range, u"100,000,000"},
                                           {u"12x", none, u"", none, u"12x"},
                                           {u"3,5", comma, u"", comma, u"3,5"},
                                           {u"-1", range, u"", range, u"-1"}});
    expectCells(prep::baseAmountRules(), {{u"", u"空欄なので10000にします。", u"10000", missing, u""},
                                          {u"0", range, u"", range, u"0"},
                                          {u"1", u"", u"", u"", u"1"},
                                          {u"100,000,000", range, u"", range, u"100,000,000"}});
    expectCells(prep::coefficientRules(),
                {{u"", u"空欄なので1.000にします。", u"1", missing, u""},
                 {u"12x", bad, u"1", none, u"12x"},
                 {u"-1", bad, u"1", least, u"-1.000"},
                 {u"0.000", u"0.000は暫定的に1.000にします。", u"1", least, u"0.000"},
                 {u"0.0004", u"", u"", u"", u"0.000"},
                 {u"999.9994", u"", u"", u"", u"999.999"},
                 {u"1000", most, u"", most, u"1,000.000"}});
}

TEST(PastedPeople, AreWhoTheCodeMeansAndNobodyElse) {
    const std::vector<prep::InputRow> grid{{u"1"_s, {}, {}, {}, u"0009"_s},
                                           {u"1"_s, {}, {}, {}, u"009"_s},
                                           {u"1"_s, {}, {}, {}, u"0010"_s},
                                           {u"1"_s, {}, {}, {}, u"A1"_s}};
    QStringList seen;
    const auto people =
        prep::readPastedPeople(u"1\tx\t2\n10\tx\t2\n0010\n9\tx\t2\nA1\tx\t2\n009\tx\t2\n0\tx\t2\n"_s, grid,
                               prep::coefficientRules());
    for (const auto& person : people.value())
        seen << u"%1:%2%3"_s.arg(person.syainCode).arg(person.row).arg(person.why);
    EXPECT_EQ(seen, (QStringList{u"0010:-1列の数が、先頭の行と違います。"_s,
                                 u"9:-1社員コードが一人に決まりません。"_s, u"1:-1"_s, u"0:-1"_s, u"0010:2"_s,
                                 u"A1:3"_s, u"009:1"_s}));
    // Of several amounts under other headings none is guessed.
    EXPECT_EQ(
        prep::readPastedPeople(u"社員コード\t基礎額Ａ\t基礎額Ｂ\n10\t2\t3\n"_s, grid, prep::baseAmountRules())
            ->front()
            .why,
        u"どの列が値か分かりません。見出しを「金額」にしてください。"_s);
}

TEST(CellRulesTest, PastedTextAndTheCalculatorKnowTheirLimits) {
    EXPECT_EQ(domain::pastedCells(u"1\t3\r\n2\r\n\r\n"_s),
              (QList<QStringList>{{u"1"_s, u"3"_s}, {u"2"_s}, {QString()}}));
    for (const QString& text : {u" ¥1,234 "_s, u"￥１，２３４"_s, u"\\1,234"_s})
        EXPECT_EQ(domain::plainNumber(text), u"1,234"_s);
    EXPECT_EQ(prep::keisan(u"5,000"_s, u"2"_s), u"2,500.000"_s);
    EXPECT_EQ(prep::keisan(u"0"_s, u"7"_s), u"0.000"_s);
    for (const auto& [above, below] :
         {std::pair(u"7"_s, u"00"_s), {u"2147483648"_s, u"1"_s}, {u"x"_s, u"1"_s}})
        EXPECT_THROW(prep::keisan(above, below), store::Error);
}

}  // namespace
