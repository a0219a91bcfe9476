#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "company/main_connection.h"
#include "personnel/person_import.h"
#include "personnel/person_lists.h"
#include "personnel/position_in_force.h"
#include "personnel/selection.h"
#include "sample_company.h"
#include "store/work.h"

// Selecting among 20,000 people by each kind of condition, what the lists then need, and judging and writing
// a sheet of as many new people.
namespace {

using namespace Qt::StringLiterals;

constexpr int kPeople = 20000;
const QDate kToday(2026, 12, 1);

store::Connection& company() {
    static const QTemporaryDir folder;
    static const auto cn = [] {
        sample::SampleOptions options;
        options.dataDir = folder.path();
        options.employees = kPeople;
        options.companions = options.wageItems = options.earlierRuns = false;
        sample::makeSampleCompany(options);
        return company::openMainConnection(folder.path(), options.company);
    }();
    return *cn;
}

personnel::SelectionConditions asked(int64_t kind) {
    personnel::SelectionConditions conditions;
    conditions.kijunbi = kToday;
    if (kind == 1) conditions.syainCode = u"012345"_s;
    if (kind == 2) conditions.furigana = u"さ"_s;
    if (kind == 3) conditions.ageFrom = u"30"_s;
    if (kind >= 4) conditions.position[1] = u"01"_s;
    if (kind == 5) {
        conditions.position[0] = u"01"_s;
        conditions.seibetsu = u"2"_s;
    }
    return conditions;
}

void BM_Select(benchmark::State& state) {
    store::Connection& cn = company();
    const auto conditions = asked(state.range(0));
    std::size_t found = 0;
    for (auto _ : state) found = personnel::selectPeople(cn, conditions).size();
    state.counters["found"] = double(found);
}
BENCHMARK(BM_Select)->ArgName("condition")->DenseRange(0, 5)->Unit(benchmark::kMillisecond);

void BM_StaffSheet(benchmark::State& state) {
    store::Connection& cn = company();
    QStringList codes;
    for (const auto& person : personnel::selectPeople(cn, asked(0))) codes << person.code;
    for (auto _ : state) {
        store::Work work(cn);
        personnel::SelectIntoZ(cn, codes, kToday);
        personnel::storeSelection(cn, codes);
        work.commit();
        const auto rows = personnel::personRows(cn, personnel::PersonList::StaffSheet);
        benchmark::DoNotOptimize(personnel::personSheet(cn, personnel::PersonList::StaffSheet, rows));
    }
}
BENCHMARK(BM_StaffSheet)->Unit(benchmark::kMillisecond);

void BM_Import(benchmark::State& state) {
    store::Connection& cn = company();
    QString sheet =
        u"社員Code,氏名,フリガナ,性別,生年月日,入社日,最終学歴,出身地,住宅区分,採用区分,自由1,自由2,自由3\n"_s;
    for (int i = 0; i < kPeople; ++i)
        sheet += u"%1,見本　太郎,ﾐﾎﾝ ﾀﾛｳ,男,1990/4/1,2013/4/1,01,13,01,01,01,01,01\n"_s.arg(500000 + i);
    for (auto _ : state) {
        const auto plan = personnel::planImport(cn, personnel::ImportKind::Employees, domain::parseCsv(sheet),
                                                {false, kToday});
        if (!plan.mayRun()) {
            state.SkipWithError(qPrintable(plan.rows.front().reasons.join(u' ')));
            return;
        }
        store::Work work(cn);  // rolled back: every turn meets the same company
        personnel::runImport(cn, plan);
    }
}
BENCHMARK(BM_Import)->Unit(benchmark::kMillisecond);

}  // namespace
