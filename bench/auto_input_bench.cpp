#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QTemporaryDir>
#include <stdexcept>

#include "company/create.h"
#include "company/main_connection.h"
#include "measure.h"
#include "prep/auto_input.h"
#include "prep/snapshot.h"
#include "prep/suspicions.h"
#include "schema/catalog.h"
#include "store/work.h"

// Automatic input of everything that can be automatic: both base amounts out of wages, the 14 coefficients
// and 支給係数. In turns with the floor: the same work as set-based statements of the engine, on the same
// keyed files.
namespace {

using namespace Qt::StringLiterals;

const QString kRun = u"基準日 = '2026-12-10' AND 配分区分 = '01' AND 配分基準 = '01'"_s;

struct Kind {
    QString code, table, key, column;
};
const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = {{u"01"_s, u"S係数年齢2"_s, u"年齢"_s, u"年齢係数"_s},
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
    return all;
}
bool ofPerson(const Kind& kind) {
    return kind.code > u"10"_s;
}

/// People with two wage dates each, and a set-up that leaves nothing to be typed.
class Company {
  public:
    explicit Company(int employees) {
        company::createCompany(folder_.path(), u"計測"_s, {true, false});
        cn_ = company::openMainConnection(folder_.path(), u"計測"_s);
        store::Work work(*cn_);
        QStringList person, snapshot;
        for (const Kind& kind : kinds()) (ofPerson(kind) ? person : snapshot) << kind.key;
        fill(u"履歴書テーブル(社員Code, 氏名, %1) SELECT printf('%06d', n), '氏名', %2"_s.arg(
                 person.join(u','), keys(person.size())),
             employees);
        fill(u"IdoChuusyutsuMax2(社員Code, %1) SELECT printf('%06d', n), %2"_s.arg(snapshot.join(u','),
                                                                                   keys(snapshot.size())),
             employees);
        for (const QString& date : {u"2026-04-01"_s, u"2026-10-01"_s}) wages(date, employees);
        prep::RunRowWriter writer(*cn_, prep::RunTable::KojinBetsu, run.kijunbi);
        for (int i = 1; i <= employees; ++i)
            writer.add(QString::number(i).rightJustified(6, u'0'), u"01"_s, u"01"_s);
        cn_->execute(u"UPDATE S実行個人別計算 SET 評価 = 'A'"_s);
        setUp();
        work.commit();
    }
    store::Connection& cn() { return *cn_; }
    const domain::RunKey run{QDate(2026, 12, 10), u"01"_s, u"01"_s};

  private:
    static QString keys(qsizetype count) {
        QStringList all;
        for (qsizetype i = 0; i < count; ++i) all << u"printf('%02d', (n * %1) % 40)"_s.arg(2 * i + 3);
        return all.join(u',');
    }
    void fill(const QString& rows, int employees) {
        cn_->execute(
            u"WITH RECURSIVE 番(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM 番 WHERE n < ?) "
            "INSERT INTO "_s +
                rows + u" FROM 番"_s,
            {employees});
    }
    void wages(const QString& date, int employees) {
        for (const QString& item : {u"本給"_s, u"職能給"_s})
            fill(
                u"C新賃金体系基本給(社員Code, 基準日, 基本給, 金額) SELECT printf('%06d', n), '%1', '%2', "
                "2000000000 + n"_s.arg(date, item),
                employees);
        fill(
            u"C新賃金体系手当(社員Code, 基準日, 手当, 金額) SELECT printf('%06d', n), '%1', '役職手当', "
            "100000000"_s.arg(date),
            employees);
    }
    void setUp() {
        for (const QString& side : {u"1"_s, u"2"_s}) {
            cn_->execute(
                u"INSERT INTO S基礎額設定(配分区分, 配分基準, 算定方式, 処理区分, 設定方法) "
                "VALUES('01', '01', '1', ?, '3')"_s,
                {side});
            for (const QString& item : {u"本給"_s, u"職能給"_s})
                cn_->execute(
                    u"INSERT INTO S基礎額基本給(配分区分, 配分基準, 算定方式, 処理区分, 基本給) "
                    "VALUES('01', '01', '1', ?, ?)"_s,
                    {side, item});
            cn_->execute(
                u"INSERT INTO S基礎額手当(配分区分, 配分基準, 算定方式, 処理区分, 手当) "
                "VALUES('01', '01', '1', ?, '役職手当')"_s,
                {side});
        }
        for (const Kind& kind : kinds()) {
            use(kind.code);
            for (int key = 0; key < 40; ++key)
                cn_->execute(u"INSERT INTO %1(配分区分, 配分基準, %2, 係数) VALUES('01', '01', ?, ?)"_s.arg(
                                 kind.table, kind.key),
                             {QString::number(key).rightJustified(2, u'0'), 1 + key / 100.0});
        }
        use(u"04"_s);
        cn_->execute(
            u"INSERT INTO S係数評価(配分区分, 配分基準, 評価, 係数, 評価Code) "
            "VALUES('01', '01', 'A', 1.2, '01')"_s);
        cn_->execute(
            u"INSERT INTO S支給係数設定(配分区分, 配分基準, 設定方法, 一律係数) "
            "VALUES('01', '01', '2', 2.5)"_s);
    }
    void use(const QString& code) {
        cn_->execute(
            u"INSERT INTO S係数設定(配分区分Code, 配分基準Code, 設定名称, 算定方式, 入力区分Code, "
            "基礎額Ａ, 基礎額Ｂ) VALUES('01', '01', ?, '1', '2', -1, -1)"_s,
            {code});
    }

    QTemporaryDir folder_;
    std::unique_ptr<store::Connection> cn_;
};

/// The same in the engine: the list of employees, one update and one insert, each for all rows at once.
QStringList setBased() {
    const QString wage =
        u"coalesce((SELECT sum(金額) FROM C新賃金体系%1 AS 賃金 WHERE 賃金.社員Code = 行.社員Code AND 基準日 "
        u"= "
        "(SELECT max(基準日) FROM C新賃金体系基本給 AS 最新 WHERE 最新.社員Code = 行.社員Code AND "
        "基準日 <= '2026-12-10') AND %1 IN (%2)), 0)"_s;
    const QString base =
        wage.arg(u"基本給"_s, u"'本給', '職能給'"_s) + u" + "_s + wage.arg(u"手当"_s, u"'役職手当'"_s);
    QStringList sets{u"基礎額Ａ = "_s + base, u"基礎額Ｂ = "_s + base, u"評価係数 = 1.2"_s,
                     u"支給係数 = 2.5"_s};
    QStringList marks{u"基礎額Ａ"_s, u"基礎額Ｂ"_s, u"評価係数"_s, u"支給係数"_s};
    QStringList selected;
    for (const Kind& kind : kinds()) {
        sets << u"%1 = coalesce((SELECT 係数 FROM temp.表%2 WHERE 値 = %3.%4), 行.%1)"_s.arg(
            kind.column, kind.code, ofPerson(kind) ? u"人"_s : u"位置"_s, kind.key);
        marks << kind.column;
    }
    for (qsizetype i = 0; i < marks.size(); ++i) selected << u"'○'"_s;
    QStringList statements;
    for (const Kind& kind : kinds())
        statements << u"CREATE TEMP TABLE IF NOT EXISTS 表%1(値 TEXT PRIMARY KEY, 係数 REAL)"_s.arg(kind.code)
                   << u"INSERT OR REPLACE INTO temp.表%1 SELECT %2, 係数 FROM %3"_s.arg(kind.code, kind.key,
                                                                                        kind.table);
    statements
        << u"DELETE FROM IdoChuusyutsuMax3"_s
        << u"INSERT INTO IdoChuusyutsuMax3 SELECT 位置.*, '01', '01', 人.氏名 FROM IdoChuusyutsuMax2 AS "
           "位置 JOIN 履歴書テーブル AS 人 ON 人.社員Code = 位置.社員Code"_s
        << u"UPDATE S実行個人別計算 AS 行 SET %1 FROM IdoChuusyutsuMax3 AS 位置, 履歴書テーブル AS 人 "
           "WHERE 位置.社員Code = 行.社員Code AND 人.社員Code = 行.社員Code AND %2"_s.arg(
               sets.join(u", "_s), QString(kRun)
                                       .replace(u"基準日"_s, u"行.基準日"_s)
                                       .replace(u"配分区分"_s, u"行.配分区分"_s)
                                       .replace(u"配分基準"_s, u"行.配分基準"_s))
        << u"DELETE FROM S実行自動入力判定"_s
        << u"INSERT INTO S実行自動入力判定(社員Code, %1) SELECT 社員Code, %2 FROM S実行個人別計算 "
           "WHERE %3 ORDER BY Clng(社員Code)"_s.arg(marks.join(u','), selected.join(u','), kRun);
    return statements;
}

/// The task in a work of its own, commit included.
template <typename Task>
auto committed(Company& c, const Task& task) {
    return [&c, task] {
        store::Work work(c.cn());
        task();
        work.commit();
    };
}

void BM_AutoInput(benchmark::State& state) {
    Company& c = measured::company<Company>(int(state.range(0)));
    const QStringList floor = setBased();
    measured::compare(state,
                      committed(c, [&] { prep::autoInput(c.cn(), c.run, design::Houshiki::Kojinbetsu); }),
                      committed(c, [&] {
                          for (const QString& statement : floor) c.cn().execute(statement);
                      }));
}

/// What is asked before each calculation, beside automatic input itself.
void BM_Suspicions(benchmark::State& state) {
    Company& c = measured::company<Company>(int(state.range(0)));
    const auto houshiki = design::Houshiki::Kojinbetsu;
    const auto fill = committed(c, [&] { prep::autoInput(c.cn(), c.run, houshiki); });
    fill();
    if (!prep::suspicionsBeforeCalculation(c.cn(), c.run, houshiki).empty())
        state.SkipWithError("filled inputs are suspicious");
    measured::compare(
        state, [&] { benchmark::DoNotOptimize(prep::suspicionsBeforeCalculation(c.cn(), c.run, houshiki)); },
        fill);
}
BENCHMARK(BM_Suspicions)->Arg(1000)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK(BM_AutoInput)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32767)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
