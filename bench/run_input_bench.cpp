#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <map>

#include "company/create.h"
#include "company/main_connection.h"
#include "forms/global_record.h"
#include "measure.h"
#include "prep/frmSJikkou02.h"
#include "prep/snapshot.h"
#include "schema/catalog.h"
#include "store/work.h"

// The grids of the run-time input at 100 to 32,767 employees: opening the screen until it is painted, a key
// stroke in it, saving all rows, each beside the bare statements that do the same to the same keyed file.
namespace {

using namespace Qt::StringLiterals;

const QDate kDate(2026, 12, 10);
const prep::InputTarget kTarget{prep::RunTable::KojinBetsu, u"基礎額Ａ"_s};

class Company {
  public:
    explicit Company(int employees) : house_{global_, screens_} {
        company::createCompany(folder_.path(), u"計測"_s, {});
        global_.cn_main = company::openMainConnection(folder_.path(), u"計測"_s);
        global_.kijunbi = u"2026/12/10"_s;
        global_.haibun_kubun = global_.haibun_kijun = u"01"_s;
        global_.santei_houshiki = global_.santei_koumoku = u"1"_s;
        store::Work work(cn());
        for (
            const QString& insert :
            {u"履歴書テーブル(社員Code,氏名) SELECT printf('%06d', n), '見本　太郎' || n FROM 番"_s,
             u"IdoChuusyutsuMax2(社員Code,所属大,役職) SELECT printf('%06d', n), printf('%02d', n % 20), '03' FROM 番"_s})
            cn().execute(
                u"WITH RECURSIVE 番(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM 番 WHERE n < ?) "
                "INSERT INTO "_s +
                    insert,
                {employees});
        for (int i = 0; i < 20; ++i)
            cn().execute(u"INSERT INTO 所属大マスタ(Code,所属大) VALUES(printf('%02d', ?), '営業部')"_s, {i});
        cn().execute(u"INSERT INTO 役職マスタ(Code,役職) VALUES('03','課長')"_s);
        prep::RunRowWriter writer(cn(), kTarget.table, kDate);
        for (int i = 1; i <= employees; ++i)
            writer.add(QString::number(i).rightJustified(6, u'0'), u"01"_s, u"01"_s);
        work.commit();
    }
    store::Connection& cn() { return *global_.cn_main; }
    forms::House& house() { return house_; }
    domain::RunKey run() const { return {kDate, u"01"_s, u"01"_s}; }

  private:
    QTemporaryDir folder_;
    forms::GlobalRecord global_;
    forms::ScreenRegistry screens_;
    forms::House house_;
};

std::unique_ptr<prep::frmSJikkou02> shown(Company& c) {
    auto form = std::make_unique<prep::frmSJikkou02>(c.house(), nullptr);
    form->show();
    QApplication::processEvents();
    return form;
}

/// The floor: the list written and read again, as one statement each and without a screen.
void BM_GridOpen(benchmark::State& state) {
    Company& c = measured::company<Company>(int(state.range(0)));
    measured::compare(
        state, [&] { shown(c); },
        [&] {
            store::Work work(c.cn());
            c.cn().execute(u"DELETE FROM IdoChuusyutsuMax3"_s);
            c.cn().execute(
                u"INSERT INTO IdoChuusyutsuMax3 SELECT 位置.*, 行.配分区分, 行.配分基準, 人.氏名 FROM "
                u"S実行個人別計算 行 "
                "JOIN IdoChuusyutsuMax2 位置 ON 位置.社員Code = 行.社員Code JOIN 履歴書テーブル 人 ON "
                "人.社員Code = "
                "行.社員Code WHERE 行.基準日 = '2026-12-10' AND 行.配分区分 = '01' AND 行.配分基準 = '01'"_s);
            work.commit();
            benchmark::DoNotOptimize(c.cn().query(
                u"SELECT 基礎額Ａ, 氏名, 社員Code FROM S実行個人別計算 JOIN IdoChuusyutsuMax3 USING(社員Code)"_s));
        });
}

void BM_GridSave(benchmark::State& state) {
    Company& c = measured::company<Company>(int(state.range(0)));
    const auto rows = prep::loadInputRows(c.cn(), c.run(), kTarget);
    measured::compare(
        state,
        [&] {
            store::Work work(c.cn());
            if (prep::writeInputRows(c.cn(), c.run(), kTarget, rows)) state.SkipWithError("rows differ");
            work.commit();
        },
        [&] {
            store::Work work(c.cn());
            c.cn().execute(
                u"UPDATE S実行個人別計算 SET 基礎額Ａ = 基礎額Ａ + 10000 WHERE 基準日 = '2026-12-10' "
                "AND 配分区分 = '01' AND 配分基準 = '01'"_s);
            work.commit();
        });
}

/// A digit typed, and what it repaints; every tenth stroke goes a row down. Each sixth digit begins a new
/// amount, as a user does who types into a marked cell: a ninth one would be refused.
void BM_GridKeyStroke(benchmark::State& state) {
    auto form = shown(measured::company<Company>(int(state.range(0))));
    for (int stroke = 0; auto _ : state) {
        const bool down = stroke % 10 == 9;
        QKeyEvent key(QEvent::KeyPress, down ? Qt::Key_Down : Qt::Key_1, Qt::NoModifier,
                      down ? QString() : u"1"_s);
        auto* cell = form->findChildren<QLineEdit*>(QRegularExpression(u"^Text1_"_s)).first();
        if (stroke++ % 10 % 6 == 0) cell->selectAll();
        QApplication::sendEvent(cell, &key);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
}

BENCHMARK(BM_GridOpen)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(32767)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GridSave)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(32767)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GridKeyStroke)->Arg(100)->Arg(5000)->Arg(32767)->Unit(benchmark::kMillisecond);

}  // namespace
