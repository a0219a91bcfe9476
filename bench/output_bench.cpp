#include <benchmark/benchmark.h>

#include <QPdfWriter>
#include <QTemporaryDir>
#include <map>

#include "calc/result_list.h"
#include "calc/ui_result_output.h"
#include "company/company_open.h"
#include "forms/global_record.h"
#include "reports/frmReport.h"
#include "sample_company.h"

// Opening a company, and what shows a result: totals, the list's pages, the sheet.
namespace {

/// A program folder with a company whose employees all stand in one criterion.
class Program {
  public:
    explicit Program(int employees) {
        sample::SampleOptions options;
        options.dataDir = folder_.filePath(QStringLiteral("Data"));
        options.employees = employees;
        options.wageItems = false;
        options.earlierRuns = false;
        options.spread = sample::Spread::OneCriterion;
        sample::makeSampleCompany(options);
        company_ = options.company;
    }
    company::OpenedCompany open() const {
        std::unique_ptr<company::CompanyLock> none;
        return company::openCompany(company::placesOf(folder_.path()), company_, none);
    }
    QString file(const QString& name) const { return folder_.filePath(name); }

  private:
    QTemporaryDir folder_;
    QString company_;
};

Program& program(benchmark::State& state) {
    static std::map<qint64, std::unique_ptr<Program>> made;
    auto& entry = made[state.range(0)];
    if (!entry) entry = std::make_unique<Program>(static_cast<int>(state.range(0)));
    return *entry;
}

const domain::RunKey kRun = sample::runKey(sample::kCriteria[0], sample::newestKijunbi());

void perEmployee(benchmark::State& state, qint64 rows) {
    state.counters["rows"] = static_cast<double>(rows);
    state.counters["per_row"] =
        benchmark::Counter(static_cast<double>(rows),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void openCompany(benchmark::State& state) {
    const Program& p = program(state);
    p.open();  // the first open writes the links
    for (auto _ : state) benchmark::DoNotOptimize(p.open().cn_main.get());
}

void grandTotals(benchmark::State& state) {
    const auto opened = program(state).open();
    const auto rows = static_cast<qint64>(calc::resultRows(*opened.cn_main, kRun).size());
    for (auto _ : state) benchmark::DoNotOptimize(calc::freshResultRows(*opened.cn_main, kRun).data());
    perEmployee(state, rows);
}

void reportPages(benchmark::State& state) {
    const Program& p = program(state);
    const auto rows = calc::resultRows(*p.open().cn_main, kRun);
    const reports::ListTitle title{
        QStringLiteral("計測"), {kRun.kijunbi}, {}, QStringLiteral("賞与支給額"), {}, {}};
    for (auto _ : state) {
        std::unique_ptr<QDialog> preview(calc::resultPreview(rows, title, {}, false, nullptr));
        dynamic_cast<reports::frmReport&>(*preview).savePdf(p.file(QStringLiteral("list.pdf")));
    }
    perEmployee(state, static_cast<qint64>(rows.size()));
}

void sheet(benchmark::State& state) {
    const Program& p = program(state);
    const auto rows = calc::resultRows(*p.open().cn_main, kRun);
    for (auto _ : state) {
        const reports::SheetFolder sheets({p.file(QStringLiteral("sheets"))});
        sheets.send(calc::resultSheet(QStringLiteral("計測"), QStringLiteral("計測"), {}, rows),
                    {QStringLiteral("計測"), {}, {}, QStringLiteral("賞与支給額"), {}, {}});
    }
    perEmployee(state, static_cast<qint64>(rows.size()));
}

}  // namespace

// The sheet's counter ends at row 32,767, three of which are headings.
BENCHMARK(openCompany)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32767)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(grandTotals)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32767)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(reportPages)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32767)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(sheet)->Arg(100)->Arg(1000)->Arg(10000)->Arg(32767)->Unit(benchmark::kMillisecond)->UseRealTime();
