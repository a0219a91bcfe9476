#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <map>

#include "calc/annual.h"
#include "calc/input_check.h"
#include "company/create.h"
#include "company/main_connection.h"
#include "measure.h"
#include "store/work.h"

// The year's payments over four dates and the status check, in turns with the floor: the same answer by bare
// set-based statements into and out of one scratch table.
namespace {

using namespace Qt::StringLiterals;

const domain::RunKey kRun{QDate(2026, 12, 10), u"01"_s, u"01"_s};
const calc::NenkanDates kDates{QDate(2025, 7, 10), QDate(2025, 12, 10), QDate(2026, 7, 10), kRun.kijunbi};

/// People with two paid rows on each date, and with inputs and a decision of the last one.
class Company {
  public:
    explicit Company(int employees) {
        company::createCompany(folder_.path(), u"計測"_s, {});
        cn_ = company::openMainConnection(folder_.path(), u"計測"_s);
        store::Work work(*cn_);
        const auto fill = [&](const QString& insert, const store::Binds& more = {}) {
            store::Binds binds{employees};
            binds.insert(binds.end(), more.begin(), more.end());
            cn_->execute(kNumbers + insert + u" FROM 番"_s, binds);
        };
        fill(u"INSERT INTO 履歴書テーブル(社員Code,氏名) SELECT printf('%06d', n), '社員' || n"_s);
        for (QDate date : kDates)
            for (const QString& criterion : {u"01"_s, u"02"_s})
                fill(
                    u"INSERT INTO S配分基準対応社員(社員Code,配分区分,配分基準,基準日,個人別計算,総額配分,"
                    "金一封,特別加算金) SELECT printf('%06d', n), '01', ?, ?, n * 1000000, n * 10000, 0, 0"_s,
                    {criterion, date});
        for (const QString& table : {u"S実行個人別計算"_s, u"S実行個人別計算決定"_s})
            fill(
                u"INSERT INTO %1(社員Code,配分区分,配分基準,基準日,基礎額Ａ,支給係数,評価,合計) "
                "SELECT printf('%06d', n), '01', '01', ?, n * 10000, 2.5, 'A', n * 25000"_s.arg(table),
                {kRun.kijunbi});
        for (int kind = 1; kind <= 18; ++kind)
            cn_->execute(
                u"INSERT INTO S係数設定(配分区分Code,配分基準Code,算定方式,設定名称,基礎額Ａ) "
                "VALUES('01','01','1',printf('%02d', ?),-1)"_s,
                {kind});
        work.commit();
    }
    store::Connection& cn() { return *cn_; }
    /// Into a table of its own, read to the end, gone again; values travel as binds. `before` makes what the
    /// answer looks up.
    void bare(const QString& answer, const store::Binds& binds, const QStringList& before = {}) {
        store::Work work(*cn_);
        cn_->execute(u"CREATE TABLE 下限(a,b,c,d,e,f,g,h)"_s);
        cn_->execute(u"CREATE TABLE 下限決定(社員Code PRIMARY KEY, 支給係数) WITHOUT ROWID"_s);
        for (const QString& statement : before) cn_->execute(statement, binds);
        cn_->execute(u"INSERT INTO 下限 "_s + answer, binds);
        auto rows = cn_->prepare(u"SELECT * FROM 下限"_s);
        while (rows.step()) benchmark::DoNotOptimize(rows.toText(0));
        cn_->execute(u"DROP TABLE 下限"_s);
        cn_->execute(u"DROP TABLE 下限決定"_s);
        work.commit();
    }

  private:
    inline static const QString kNumbers =
        u"WITH RECURSIVE 番(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM 番 WHERE n < ?) "_s;
    QTemporaryDir folder_;
    std::unique_ptr<store::Connection> cn_;
};

void BM_Annual(benchmark::State& state) {
    Company& c = measured::company<Company>(int(state.range(0)));
    QStringList sums;
    for (int n = 1; n <= 4; ++n)
        sums << u"sum(CASE 基準日 WHEN ?%1 THEN 個人別計算+総額配分+金一封+特別加算金 END)"_s.arg(n);
    const QString answer =
        u"SELECT p.社員Code, p.氏名, %1, 0, 0 FROM 履歴書テーブル p INNER JOIN S配分基準対応社員 s ON "
        "s.社員Code = p.社員Code WHERE 基準日 IN (?1,?2,?3,?4) GROUP BY p.社員Code"_s.arg(sums.join(u','));
    measured::compare(
        state, [&] { benchmark::DoNotOptimize(calc::nenkanRows(c.cn(), kDates).data()); },
        [&] {
            c.bare(answer, {kDates[0], kDates[1], kDates[2], kDates[3]});
        });
}

void BM_InputCheck(benchmark::State& state) {
    Company& c = measured::company<Company>(int(state.range(0)));
    // Every row meets one person and one decision by key, so that the yardstick grows as the rows do: the
    // index of the run's tables ends before 社員Code, and a join the other way round would read them anew for
    // every person.
    const QString decided =
        u"INSERT INTO 下限決定 SELECT 社員Code, 支給係数 FROM S実行個人別計算決定 WHERE 基準日 = ?1 AND "
        "配分区分 = ?2 AND 配分基準 = ?3"_s;
    const QString answer =
        u"SELECT p.社員Code, p.氏名, r.基礎額Ａ, r.年齢係数, r.評価, d.支給係数, r.合計, 0 "
        "FROM S実行個人別計算 r CROSS JOIN 履歴書テーブル p ON p.社員Code = r.社員Code "
        "LEFT JOIN 下限決定 d ON d.社員Code = r.社員Code "
        "WHERE r.基準日 = ?1 AND r.配分区分 = ?2 AND r.配分基準 = ?3"_s;
    measured::compare(
        state,
        [&] { calc::inputCheckSheet(c.cn(), kRun, design::Houshiki::Kojinbetsu, u"計測"_s, u"計測"_s); },
        [&] {
            c.bare(answer, {kRun.kijunbi, kRun.haibunKubun, kRun.haibunKijun}, {decided});
        });
}

#define SIZES Arg(100)->Arg(1000)->Arg(10000)->Arg(32767)->UseManualTime()->Unit(benchmark::kMillisecond)
BENCHMARK(BM_Annual)->SIZES;
BENCHMARK(BM_InputCheck)->SIZES;

}  // namespace
