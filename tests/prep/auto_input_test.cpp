#include "prep/auto_input.h"

#include "prep/run_company.h"
#include "prep/snapshot.h"
#include "schema/catalog.h"
#include "store/work.h"

namespace {

using namespace preptest;
using design::Houshiki;

const QString kFirst = u"260000.5|○ 180000|○ 7000|○ 0|× 0|×"_s;
const QString kUntouched = u"10000|- 10000|- 10000|- 10000|- 10000|-"_s;

/// Five people of one run. Their wages: 1 has all items at one date; the allowance of 2 is later than the
/// base pay; 3 has one item twice; 4 has no base pay at all; the base pay of 5 is 0.
class AutoInput : public RunCompany {
  protected:
    AutoInput() : RunCompany(Content::Empty) {
        for (const QString& table : {u"C新賃金体系基本給"_s, u"C新賃金体系手当"_s})
            for (const QString& statement : schema::createStatements(schema::tableNamed(table)))
                sql(statement);
        for (int number : {5, 3, 1, 2, 4}) {
            const QString code = u"00000%1"_s.arg(number);
            sql(u"INSERT INTO 履歴書テーブル(社員Code, 氏名) VALUES(?, '氏名')"_s, {code});
            sql(u"INSERT INTO IdoChuusyutsuMax2(社員Code, 年齢, 勤続年数) VALUES(?, 30, 5)"_s, {code});
            for (prep::RunTable table : {prep::RunTable::KojinBetsu, prep::RunTable::SougakuHaibun})
                for (const QString& kijun : {u"01"_s, u"02"_s})
                    if (kijun == u"01"_s || number == 5)
                        prep::RunRowWriter(cn_, table, run_.kijunbi).add(code, u"01"_s, kijun);
        }
        pay(u"基本給"_s,
            {u"1|2026-04-01|本給|200000"_s, u"1|2026-04-01|職能給|50000.5"_s, u"1|2025-04-01|本給|999"_s,
             u"1|2027-01-01|本給|888"_s, u"2|2026-04-01|本給|180000"_s, u"3|2026-04-01|本給|100"_s,
             u"3|2026-04-01|本給|200"_s, u"5|2026-04-01|本給|0"_s});
        pay(u"手当"_s, {u"1|2026-04-01|役職手当|10000"_s, u"1|2026-04-01|通勤手当|77"_s,
                        u"2|2026-10-01|役職手当|20000"_s, u"3|2026-04-01|役職手当|7000"_s,
                        u"4|2026-04-01|役職手当|5000"_s});
    }
    void pay(const QString& item, const QStringList& rows) {
        for (const QString& row : rows) {
            const QStringList cell = row.split(u'|');
            sql(u"INSERT INTO C新賃金体系%1(社員Code, 基準日, %1, 金額) VALUES(?, ?, ?, ?)"_s.arg(item),
                {u"00000"_s + cell[0], d(cell[1]), cell[2], store::Money::fromText(cell[3])});
        }
    }
    void base(Houshiki houshiki, const QString& syori, char16_t method, const store::Value& uniform = {}) {
        sql(u"INSERT INTO S基礎額設定(配分区分, 配分基準, 算定方式, 処理区分, 設定方法, 一律金額) "
            "VALUES('01', '01', ?, ?, ?, ?)"_s,
            {design::houshikiCode(houshiki), syori, QString(QChar(method)), uniform});
    }
    void items(Houshiki houshiki, const QString& syori, const QString& kind, const QStringList& names) {
        for (const QString& name : names)
            sql(u"INSERT INTO S基礎額%1(配分区分, 配分基準, 算定方式, 処理区分, %1) "
                "VALUES('01', '01', ?, ?, ?)"_s.arg(kind),
                {design::houshikiCode(houshiki), syori, name});
    }
    void coefficient(const QString& code, bool a, bool b, const QString& input = u"2"_s) {
        sql(u"INSERT INTO S係数設定(配分区分Code, 配分基準Code, 設定名称, 算定方式, 入力区分Code, "
            "基礎額Ａ, 基礎額Ｂ) VALUES('01', '01', ?, '1', ?, ?, ?)"_s,
            {code, input, a, b});
    }
    void grade(const QString& table, const QString& code, const QString& grade, double value) {
        sql(u"INSERT INTO %1(配分区分, 配分基準, 評価Code, 評価, %2) VALUES('01', '01', ?, ?, ?)"_s.arg(
                table, table == u"S係数評価"_s ? u"係数"_s : u"支給係数"_s),
            {code, grade, value});
    }
    void grades(const QStringList& ofPeople) {
        for (int i = 0; i < ofPeople.size(); ++i)
            sql(u"UPDATE S実行個人別計算 SET 評価 = ? WHERE 社員Code = ?"_s,
                {ofPeople[i], u"00000%1"_s.arg(i + 1)});
    }
    prep::AutoItems fill(Houshiki houshiki = Houshiki::Kojinbetsu) {
        store::Work work(cn_);
        const auto filled = prep::autoInput(cn_, run_, houshiki);
        work.commit();
        return filled;
    }
    void expectRefusal() {
        const QByteArray before = support::dump(cn_);
        EXPECT_THROW(fill(), store::Error);
        expectUnchanged(before);
    }
    /// Value and judgment of everybody, in the order of the run.
    QString result(const QString& column, Houshiki houshiki = Houshiki::Kojinbetsu) {
        const auto table =
            houshiki == Houshiki::Kojinbetsu ? prep::RunTable::KojinBetsu : prep::RunTable::SougakuHaibun;
        return read(
                   u"SELECT 行.%1, 判定.%1 FROM %2 AS 行 JOIN S実行自動入力判定 AS 判定 "
                   "ON 判定.社員Code = 行.社員Code WHERE 配分基準 = '01' ORDER BY 判定.ID"_s.arg(
                       column, prep::runTableName(table)))
            .join(u' ');
    }

    const domain::RunKey run_{QDate(2026, 12, 10), u"01"_s, u"01"_s};
};

TEST_F(AutoInput, TakesBaseAmountsOutOfWagesOrOneAmountForAll) {
    for (Houshiki houshiki : {Houshiki::Kojinbetsu, Houshiki::Sougaku}) {
        for (const auto& [syori, column] : {std::pair(u"1"_s, u"基礎額Ａ"_s), {u"2"_s, u"基礎額Ｂ"_s}}) {
            SCOPED_TRACE(column.toStdString() + design::houshikiCode(houshiki).toStdString());
            const auto expect = [&](const QString& expected) {
                fill(houshiki);
                EXPECT_EQ(result(column, houshiki), expected);
            };
            base(houshiki, syori, u'1');
            expect(kUntouched);
            items(houshiki, syori, u"基本給"_s, {u"本給"_s, u"職能給"_s});
            items(houshiki, syori, u"手当"_s, {u"役職手当"_s, u"皆勤手当"_s});
            base(houshiki, syori, u'3');
            expect(kFirst);
            base(houshiki, syori, u'2', store::Money::fromYen(30000));
            expect(u"30000|○ 30000|○ 30000|○ 30000|○ 30000|○"_s);
            sql(u"UPDATE S基礎額設定 SET 一律金額 = 0 WHERE 設定方法 = '2'"_s);
            expect(u"0|× 0|× 0|× 0|× 0|×"_s);
            base(houshiki, syori, u'2', store::Money::fromYen(1));  // two rows: none of them counts
            expect(kFirst);
            sql(u"DELETE FROM S基礎額設定"_s);
        }
    }
    EXPECT_EQ(read(u"SELECT DISTINCT 基礎額Ａ, 基礎額Ｂ FROM S実行個人別計算 WHERE 配分基準 = '02'"_s),
              QStringList{u"10000|10000"_s});
}

TEST_F(AutoInput, RefusesASixthWageItemAndAnAmountWithoutValue) {
    base(Houshiki::Kojinbetsu, u"1"_s, u'3');
    items(Houshiki::Kojinbetsu, u"1"_s, u"手当"_s, {u"役職手当"_s, u"ｂ"_s, u"ｃ"_s, u"ｄ"_s, u"本給"_s});
    fill();
    EXPECT_EQ(result(u"基礎額Ａ"_s), u"10000|○ 0|× 7000|○ 0|× 0|×"_s);
    items(Houshiki::Kojinbetsu, u"1"_s, u"手当"_s, {u"ｆ"_s});
    expectRefusal();
    sql(u"DELETE FROM S基礎額手当 WHERE 手当 = 'ｆ'"_s);
    sql(u"UPDATE C新賃金体系手当 SET 金額 = NULL WHERE 社員Code = '000003'"_s);
    expectRefusal();
}

TEST_F(AutoInput, LooksUpEveryKindByItsOwnKey) {
    const struct {
        QString code, table, key, column;
    } kinds[] = {{u"01"_s, u"S係数年齢2"_s, u"年齢"_s, u"年齢係数"_s},
                 {u"02"_s, u"S係数勤続年数2"_s, u"勤続年数"_s, u"勤続年数係数"_s},
                 {u"03"_s, u"S係数等級"_s, u"等級"_s, u"等級係数"_s},
                 {u"06"_s, u"S係数社員区分"_s, u"社員区分"_s, u"社員区分係数"_s},
                 {u"07"_s, u"S係数所属大"_s, u"所属大"_s, u"所属大係数"_s},
                 {u"08"_s, u"S係数役職"_s, u"役職"_s, u"役職係数"_s},
                 {u"09"_s, u"S係数職種"_s, u"職種"_s, u"職種係数"_s},
                 {u"10"_s, u"S係数コース"_s, u"コース"_s, u"コース係数"_s},
                 {u"11"_s, u"S係数自由1"_s, u"自由1"_s, u"自由1係数"_s},
                 {u"12"_s, u"S係数自由2"_s, u"自由2"_s, u"自由2係数"_s},
                 {u"13"_s, u"S係数自由3"_s, u"自由3"_s, u"自由3係数"_s},
                 {u"14"_s, u"S係数自由4"_s, u"自由4"_s, u"自由4係数"_s},
                 {u"15"_s, u"S係数自由5"_s, u"自由5"_s, u"自由5係数"_s}};
    double factor = 1.25;
    for (const auto& [code, table, key, column] : kinds) {
        SCOPED_TRACE(column.toStdString());
        const bool years = code < u"03"_s;
        const QString people = code > u"10"_s ? u"履歴書テーブル"_s : u"IdoChuusyutsuMax2"_s;
        const store::Binds keys = {u"07"_s, u"7"_s, u"8"_s, years ? u"7"_s : u""_s,
                                   years ? store::Value(9) : store::Value()};
        for (std::size_t i = 0; i < keys.size(); ++i)
            sql(u"UPDATE %1 SET %2 = ? WHERE 社員Code = ?"_s.arg(people, key),
                {keys[i], u"00000%1"_s.arg(i + 1)});
        // Of two rows for one code the first counts; the rows of another criterion never do.
        for (const auto& [kijun, value, row] :
             {std::tuple(u"01"_s, u"07"_s, factor), {u"01"_s, u"7"_s, 9.5}, {u"02"_s, u"8"_s, 8.5}})
            sql(u"INSERT INTO %1(配分区分, 配分基準, %2, 係数) VALUES('01', ?, ?, ?)"_s.arg(table, key),
                {kijun, value, row});
        const QString f = store::Value(factor).toText();
        const QString filled = u"%1|○ %1|○ 1|× "_s.arg(f) + (years ? u"%1|○ 1|×"_s.arg(f) : u"1|× 1|×"_s);
        const QString untouched = u"1|- 1|- 1|- 1|- 1|-"_s;
        const struct {
            bool a, b, twice;
            QString input, expected;
        } cases[] = {{true, true, false, u"1"_s, untouched}, {false, false, false, u"2"_s, untouched},
                     {true, false, true, u"2"_s, untouched}, {true, false, false, u"2"_s, filled},
                     {false, true, false, u"2"_s, filled},   {true, true, false, u"2"_s, filled}};
        for (const auto& c : cases) {
            sql(u"DELETE FROM S係数設定"_s);
            sql(u"UPDATE S実行個人別計算 SET %1 = 1"_s.arg(column));
            for (int i = c.twice ? 0 : 1; i < 2; ++i) coefficient(code, c.a, c.b, c.input);
            EXPECT_EQ(fill().size(), c.expected == untouched ? 0u : 1u);
            EXPECT_EQ(result(column), c.expected);
        }
        factor += 0.25;
    }
}

TEST_F(AutoInput, GoesOnWithTheLastMatchedGrade) {
    coefficient(u"04"_s, true, true);
    for (const QString& table : {u"S係数評価"_s, u"S支給係数評価あり"_s}) {
        grade(table, u"10"_s, u"S"_s, 1.3);
        grade(table, u"9"_s, u"S"_s, 1.2);
        grade(table, u"2"_s, u"B"_s, 0.9);
    }
    const auto payment = [this](char16_t method, double uniform) {
        sql(u"INSERT INTO S支給係数設定(配分区分, 配分基準, 設定方法, 一律係数) VALUES('01', '01', ?, ?)"_s,
            {QString(QChar(method)), uniform});
    };
    payment(u'3', 0);
    grades({u""_s, u""_s, u"X"_s, u""_s, u""_s});
    fill();
    for (const QString& column : {u"評価係数"_s, u"支給係数"_s})
        EXPECT_EQ(result(column), u"1|× 1|× 1|× 1|× 1|×"_s);
    grades({u""_s, u"S"_s, u""_s, u"B"_s, u"X"_s});
    fill();
    for (const QString& column : {u"評価係数"_s, u"支給係数"_s})
        EXPECT_EQ(result(column), u"1|× 1.3|○ 1.3|○ 0.9|○ 0.9|○"_s);
    payment(u'2', 2.5);
    fill();
    EXPECT_EQ(result(u"支給係数"_s), u"2.5|○ 2.5|○ 2.5|○ 2.5|○ 2.5|○"_s);
    sql(u"UPDATE S支給係数設定 SET 一律係数 = 0"_s);
    fill();
    EXPECT_EQ(result(u"支給係数"_s), u"0|× 0|× 0|× 0|× 0|×"_s);
    fill(Houshiki::Sougaku);
    EXPECT_EQ(read(u"SELECT DISTINCT 賞与係数, 判定.評価係数, 判定.支給係数 FROM S実行総額配分, "
                   "S実行自動入力判定 AS 判定"_s),
              QStringList{u"1|-|-"_s});
}

TEST_F(AutoInput, NeedsEverybodyWhoseKeyItReads) {
    coefficient(u"11"_s, true, false);
    sql(u"DELETE FROM IdoChuusyutsuMax2 WHERE 社員Code = '000003'"_s);
    fill();
    EXPECT_EQ(result(u"自由1係数"_s), u"1|× 1|× 1|× 1|× 1|×"_s);
    coefficient(u"03"_s, false, true);
    expectRefusal();
    sql(u"DELETE FROM S係数設定 WHERE 設定名称 = '03'"_s);
    for (int i = 0; i < 17; ++i) coefficient(u"05"_s, true, false, u"1"_s);
    fill();
    coefficient(u"05"_s, true, false, u"1"_s);  // a 19th row on base A
    expectRefusal();
}

}  // namespace
