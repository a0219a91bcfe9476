#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <map>

#include "company/main_connection.h"
#include "forms/global_record.h"
#include "personnel/frmRireki.h"
#include "sample_company.h"

// The employee record on all staff of a sample company: opened until it is painted, moved from person to
// person, and searched as one types.
namespace {

using namespace Qt::StringLiterals;

struct Company {
    explicit Company(int employees) {
        sample::SampleOptions options{.dataDir = folder.path(),
                                      .employees = employees,
                                      .companions = false,
                                      .wageItems = false,
                                      .earlierRuns = false};
        sample::makeSampleCompany(options);
        global.cn_main = company::openMainConnection(options.dataDir, options.company);
        global.rireki_zenin = true;
    }
    QTemporaryDir folder;
    forms::GlobalRecord global;
    forms::ScreenRegistry screens;
    forms::House house{global, screens};
};

forms::House& houseOf(const benchmark::State& state) {
    static std::map<std::int64_t, std::unique_ptr<Company>> companies;
    auto& company = companies[state.range(0)];
    if (!company) company = std::make_unique<Company>(static_cast<int>(state.range(0)));
    company->global.rireki_zenin = true;
    return company->house;
}

void show(QWidget& form) {
    form.show();
    QApplication::processEvents();
    form.repaint();
}

void People_Open(benchmark::State& state) {
    auto& house = houseOf(state);
    for (auto _ : state) {
        personnel::frmRireki form(house, nullptr);
        show(form);
    }
}

void People_Move(benchmark::State& state) {
    personnel::frmRireki form(houseOf(state), nullptr);
    show(form);
    auto* next = form.findChild<QPushButton*>(u"cmdNext"_s);
    for (auto _ : state) {
        Q_EMIT next->clicked();
        QApplication::processEvents();
    }
}

/// The first search of an opened list folds all names; the others only look.
void People_Search(benchmark::State& state) {
    personnel::frmRireki form(houseOf(state), nullptr);
    show(form);
    auto* search = form.findChild<QLineEdit*>(u"Text1"_s);
    search->setText(u"x"_s);
    for (auto _ : state) {
        for (const QString& typed : {u"や"_s, u"やま"_s, u"ﾔﾏﾀﾞ"_s, u"山田"_s}) search->setText(typed);
        QApplication::processEvents();
    }
}

BENCHMARK(People_Open)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(People_Move)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(People_Search)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
