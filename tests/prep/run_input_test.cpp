#include "prep/run_input.h"

#include <gtest/gtest.h>

#include "prep/criterion_snapshot.h"
#include "store/error.h"
#include "support/company_fixture.h"

using namespace Qt::StringLiterals;

namespace {

const shell::RunKey kRun{sample::newestKijunbi(), u"01"_s, u"01"_s};
const store::Binds kKey{kRun.kijunbi, kRun.haibunKubun, kRun.haibunKijun};
const QString kOfRun = u" where 基準日 = ? and 配分区分 = ? and 配分基準 = ?"_s;

/// Three employees of one criterion, made by hand: 9, 10 and 1000 in this order, though as text 10 is first.
class RunInputTest : public ::testing::Test {
  protected:
    RunInputTest() {
        folder.makeEmpty();
        cn = folder.open();
        cn->execute(u"insert into 所属大マスタ(Code,所属大) values('01','営業部'),('01','二つ目')"_s);
        cn->execute(u"insert into 役職マスタ(Code,役職) values('03','課長')"_s);
        for (const QString& code : {u"001000"_s, u"000010"_s, u"000009"_s}) {
            cn->execute(u"insert into 履歴書テーブル(社員Code,氏名) values(?,?)"_s, {code, u"氏名"_s + code});
            cn->execute(u"insert into IdoChuusyutsuMax2(社員Code,所属大,役職,年齢) values(?,'01',?,40)"_s,
                        {code, code == u"000010"_s ? u"99"_s : u"03"_s});
            for (prep::RunTable table : prep::kRunTables)
                prep::RunRowWriter(*cn, table, kRun.kijunbi).add(code, u"01"_s, u"01"_s);
        }
    }
    QStringList column(const QString& table, const QString& name) {
        QStringList texts;
        auto row = cn->prepare(u"select "_s + name + u" from "_s + table + kOfRun +
                               u" order by cast(社員Code as integer)"_s);
        row.bindAll(kKey);
        while (row.step()) texts << row.value(0).toText();
        return texts;
    }
    std::vector<prep::InputRow> load(const QString& name) {
        return prep::loadInputRows(*cn, kRun, {prep::RunTable::KojinBetsu, name});
    }
    support::CompanyFolder folder;
    std::unique_ptr<store::Connection> cn;
};

TEST_F(RunInputTest, ReadsTheCriterionByNumberWithNamesAndWithoutWhoLeftTheSnapshot) {
    // A second position on one day and a second run row make no second employee of the criterion.
    cn->execute(u"insert into IdoChuusyutsuMax2(社員Code,所属大) values('000009','77')"_s);
    prep::RunRowWriter(*cn, prep::RunTable::KojinBetsu, kRun.kijunbi).add(u"000010"_s, u"01"_s, u"02"_s);
    auto rows = load(u"基礎額Ａ"_s);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0].syainCode, u"000009"_s);
    EXPECT_EQ(rows[0].text, u"10000"_s);
    EXPECT_EQ(rows[0].shimei, u"氏名000009"_s);
    EXPECT_EQ(rows[0].syozoku, u"営業部"_s);
    EXPECT_EQ(rows[0].yakusyoku, u"課長"_s);
    EXPECT_EQ(rows[1].yakusyoku, QString()) << "a code that its master lacks";
    EXPECT_EQ(rows[2].syainCode, u"001000"_s);
    const auto list = cn->query(u"select * from IdoChuusyutsuMax3"_s);
    EXPECT_EQ(list.recordCount(), 3);
    for (const auto& [position, value] :
         {std::pair(8, u"40"_s), {19, u"01"_s}, {20, u"01"_s}, {14, u"営業部"_s}})
        EXPECT_EQ(list.value(position).toText(), value) << position;

    cn->execute(u"delete from IdoChuusyutsuMax2 where 社員Code = '000010'"_s);
    EXPECT_EQ(load(u"基礎額Ａ"_s).size(), 2U);
    cn->execute(u"delete from S実行個人別計算"_s);
    EXPECT_TRUE(load(u"基礎額Ａ"_s).empty());
    // In a caller's transaction the list goes back with it.
    cn->beginTrans();
    prep::SelectIntoX3(*cn, kRun, prep::RunTable::SougakuHaibun);
    cn->rollbackTrans();
    EXPECT_EQ(cn->query(u"select 1 from IdoChuusyutsuMax3"_s).recordCount(), 0);
}

TEST_F(RunInputTest, WritesRowByRowOnlyWhereTheEmployeesAgree) {
    const prep::InputTarget base{prep::RunTable::KojinBetsu, u"基礎額Ａ"_s};
    auto rows = load(base.column);
    rows[0].text = u"1,234,567"_s;
    rows[2].text = u"0.5"_s;
    EXPECT_EQ(prep::writeInputRows(*cn, kRun, base, rows), std::nullopt);
    EXPECT_EQ(column(u"S実行個人別計算"_s, base.column), (QStringList{u"1234567"_s, u"10000"_s, u"0.5"_s}));
    EXPECT_EQ(column(u"S実行総額配分"_s, base.column), QStringList(3, u"10000"_s));
    rows[1].text = QString();
    EXPECT_THROW(prep::writeInputRows(*cn, kRun, base, rows), store::Error);
    EXPECT_EQ(prep::writeInputRows(*cn, kRun, {prep::RunTable::SougakuHaibun, u"評価"_s}, rows),
              std::nullopt);

    const QByteArray before = support::dump(*cn);
    const auto refuses = [&](std::vector<prep::InputRow> grid, const QString& why) {
        const auto answer = prep::writeInputRows(*cn, kRun, base, grid);
        ASSERT_TRUE(answer);
        EXPECT_TRUE(answer->startsWith(
            u"画面の社員と「S実行個人別計算」の社員が一致しないため、更新しませんでした。\n"_s));
        EXPECT_TRUE(answer->contains(why)) << answer->toStdString();
        EXPECT_EQ(support::firstDifference(before, support::dump(*cn)).toStdString(), "");
    };
    refuses({rows[0], rows[2]}, u"画面にいない社員: 000010\n"_s);
    refuses({rows[0], rows[1], rows[2], rows[2]}, u"登録先にいない社員: 001000\n"_s);
    refuses({rows[1], rows[0], rows[2]}, u"社員の並び順が異なります。\n"_s);
}

TEST_F(RunInputTest, BudgetTakesTheSumOfTheCriterion) {
    const auto budget = [&](const QString& name) {
        return cn->query(u"select "_s + name + u" from S実行予算"_s + kOfRun, kKey);
    };
    cn->execute(u"update S配分基準対応社員 set 金一封 = 123450000 where 社員Code <> '000009'"_s);
    prep::storeTypedTotal(*cn, kRun, u"金一封"_s);
    EXPECT_EQ(budget(u"金一封合計"_s).value(0).toMoney(), store::Money::fromYen(24690));
    EXPECT_TRUE(budget(u"特別加算金合計"_s).value(0).isNull());
    cn->execute(u"update S配分基準対応社員 set 特別加算金 = null"_s);
    prep::storeTypedTotal(*cn, kRun, u"特別加算金"_s);
    EXPECT_EQ(budget(u"金一封合計"_s).recordCount(), 1);
    EXPECT_TRUE(budget(u"特別加算金合計"_s).value(0).isNull());
}

TEST_F(RunInputTest, CoefficientsAreListedAndNamedByTheirCode) {
    EXPECT_EQ(prep::coefficientColumn(u"01"_s), u"年齢係数"_s);
    EXPECT_EQ(prep::coefficientColumn(u"10"_s), u"コース係数"_s);
    EXPECT_EQ(prep::coefficientColumn(u"18"_s), u"入力3係数"_s);
    for (const QString& code : {u"00"_s, u"19"_s, u"x"_s, QString()})
        EXPECT_THROW(prep::coefficientColumn(code), store::Error);
    for (const QString& row : {u"16,1,1"_s, u"5,1,1"_s, u"01,1,2"_s, u"02,1,3"_s, u"5,2,1"_s, u"16,2,2"_s}) {
        const QStringList at = row.split(u',');
        cn->execute(
            u"insert into S係数設定(配分区分Code,配分基準Code,設定名称,算定方式,入力区分Code,係数) "
            "values('01','01',?,?,?,'k'||?)"_s,
            {at[0], at[1], at[2], at[0]});
    }
    const auto names = [&](const QString& method, bool correction) {
        QStringList all;
        for (const auto& c : prep::listCoefficients(*cn, kRun, method, correction))
            all << c.setteiMeisyou + u'=' + c.name;
        return all.join(u' ').toStdString();
    };
    EXPECT_EQ(names(u"1"_s, false), "5=k5 16=k16");
    EXPECT_EQ(names(u"1"_s, true), "01=k01 02=k02");
    EXPECT_EQ(names(u"2"_s, false), "5=k5");
    EXPECT_TRUE(prep::sisterTypesIn(*cn, kRun, u"2"_s, u"5"_s));
    EXPECT_FALSE(prep::sisterTypesIn(*cn, kRun, u"2"_s, u"16"_s)) << "not typed in there";
    cn->execute(
        u"insert into S係数設定 select "
        u"null,配分区分Code,配分基準Code,設定名称,算定方式,入力区分Code,入力区分,"
        "係数,表示順,基礎額Ａ,基礎額Ｂ from S係数設定 where 設定名称 = '5'"_s);
    EXPECT_FALSE(prep::sisterTypesIn(*cn, kRun, u"2"_s, u"5"_s)) << "two rows are not exactly one";
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
    const auto* bad = u"不正な入力がありました。暫定的に1.000にします。";
    expectCells(prep::typedAmountRules(), {{u"", u"空欄なので0にします。", u"0", missing, u""},
                                           {u"0", u"", u"", u"", u"0"},
                                           {u"1,000,000", u"", u"", u"", u"1,000,000"},
                                           {u"99999999", u"", u"", u"", u"99,999,999"},
                                           {u"100000000", range, u"", range, u"100,000,000"},
                                           {u"12x", range, u"", range, u"12x"},
                                           {u"-1", range, u"", range, u"-1"}});
    expectCells(prep::baseAmountRules(), {{u"", u"空欄なので10000にします。", u"10000", missing, u""},
                                          {u"0", range, u"", range, u"0"},
                                          {u"1", u"", u"", u"", u"1"},
                                          {u"100,000,000", range, u"", range, u"100,000,000"}});
    expectCells(prep::coefficientRules(),
                {{u"", u"空欄なので1.000にします。", u"1", missing, u""},
                 {u"1.2.3", bad, u"1", least, u"1.2.3"},
                 {u".", bad, u"1", least, u"."},
                 {u"0.000", u"0.000は暫定的に1.000にします。", u"1", least, u"0.000"},
                 {u"0.0004", u"", u"", u"", u"0.000"},
                 {u"999.9994", u"", u"", u"", u"999.999"},
                 {u"1000", most, u"", most, u"1,000.000"}});
}

TEST(PasteTest, TakesOneColumn) {
    EXPECT_EQ(prep::pastedColumn(u"1\r\n2\r\n\r\n"_s), (QStringList{u"1"_s, u"2"_s, QString()}));
    EXPECT_EQ(prep::pastedColumn(u"7"_s), QStringList{u"7"_s});
    EXPECT_EQ(prep::pastedColumn(u"1\t2\n"_s), std::nullopt);
    for (const QString& text : {u" ¥1,234 "_s, u"￥１，２３４"_s, u"\\1,234"_s})
        EXPECT_EQ(prep::plainNumber(text), u"1,234"_s);
}

TEST(KeisanTest, DividesWholeNumbers) {
    EXPECT_EQ(prep::keisan(u"230"_s, u"240"_s), u"0.958"_s);
    EXPECT_EQ(prep::keisan(u"5,000"_s, u"2"_s), u"2,500.000"_s);
    EXPECT_EQ(prep::keisan(u"7"_s, u"0"_s), u"0.000"_s);
    EXPECT_EQ(prep::keisan(u"0"_s, u"7"_s), u"0.000"_s);
    for (const auto& [above, below] :
         {std::pair(u"7"_s, u"00"_s), {u"2147483648"_s, u"1"_s}, {u"x"_s, u"1"_s}})
        EXPECT_THROW(prep::keisan(above, below), store::Error);
}

}  // namespace
