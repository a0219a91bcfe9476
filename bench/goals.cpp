#include "goals.h"

#include <cstdio>

namespace measured {
namespace {

using Run = benchmark::BenchmarkReporter::Run;

/// What is compared with a goal.
enum class Figure {
    TimesFloor,  ///< own work over the yardstick of the same run
    Growth,      ///< cost of an employee over that in another, smaller company
    TimesOther,  ///< time over that of another measurement
    Milliseconds
};
struct Goal {
    const char* what;
    Figure figure;
    double most;
    const char* run;
    const char* other = "";
};

constexpr double kFrame = 1000.0 / 60;
constexpr Goal kGoals[] = {
    {"open a company, 32,767 employees", Figure::Milliseconds, 300, "openCompany/32767/real_time"},
    {"individual calculation, 10,000", Figure::TimesFloor, 1.5, "BM_Kojinbetsu/10000/manual_time"},
    {"pool allocation, 10,000", Figure::TimesFloor, 1.5, "BM_Sougaku/10000/manual_time"},
    {"automatic input, 10,000", Figure::TimesFloor, 2, "BM_AutoInput/10000/manual_time"},
    {"check of the inputs, 10,000, to automatic input", Figure::TimesFloor, 1,
     "BM_Suspicions/10000/manual_time"},
    {"individual calculation, 32,767 to 1,000", Figure::Growth, 1.3, "BM_Kojinbetsu/32767/manual_time",
     "BM_Kojinbetsu/1000/manual_time"},
    {"pool allocation, 32,767 to 1,000", Figure::Growth, 1.3, "BM_Sougaku/32767/manual_time",
     "BM_Sougaku/1000/manual_time"},
    {"automatic input, 32,767 to 1,000", Figure::Growth, 1.3, "BM_AutoInput/32767/manual_time",
     "BM_AutoInput/1000/manual_time"},
    {"input grid saved, 32,767 to 1,000", Figure::Growth, 1.3, "BM_GridSave/32767/manual_time",
     "BM_GridSave/1000/manual_time"},
    {"state of the inputs, 32,767 to 1,000", Figure::Growth, 1.3, "BM_InputCheck/32767/manual_time",
     "BM_InputCheck/1000/manual_time"},
    {"the year's payments, 32,767 to 1,000", Figure::Growth, 1.3, "BM_Annual/32767/manual_time",
     "BM_Annual/1000/manual_time"},
    {"input grid opened, 5,000", Figure::Milliseconds, 200, "BM_GridOpen/5000/manual_time"},
    {"key stroke in the input grid, 32,767", Figure::Milliseconds, kFrame, "BM_GridKeyStroke/32767"},
    {"personnel record opened, 20,000 people", Figure::Milliseconds, 300, "People_Open/20000"},
    {"next personnel record, 20,000 people", Figure::Milliseconds, kFrame, "People_Move/20000"},
    {"selection of everybody, 20,000 people", Figure::Milliseconds, 300, "BM_Select/condition:0"},
    {"a 社員Code renamed, to bare updates", Figure::TimesOther, 2,
     "BM_Rename/referent:0/bare:0/min_time:2.000", "BM_Rename/referent:0/bare:1/min_time:2.000"},
};

double milliseconds(const Run& run) {
    return run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e3;
}

double counter(const Run& run, const char* name) {
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? 0 : found->second.value;
}

double figureOf(const Goal& goal, const Run& run, const Run& other) {
    switch (goal.figure) {
        case Figure::TimesFloor:
            return counter(run, "times_floor");
        case Figure::Growth:
            return counter(run, "per_employee_us") / counter(other, "per_employee_us");
        case Figure::TimesOther:
            return milliseconds(run) / milliseconds(other);
        case Figure::Milliseconds:
            return milliseconds(run);
    }
    return 0;
}

}  // namespace

void Results::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        failed_ = failed_ || run.error_occurred;
        if (!run.error_occurred) runs_.insert_or_assign(run.benchmark_name(), run);
    }
}

bool Results::tellGoals(bool all) const {
    bool reached = true;
    std::printf("\n%-42s %10s %10s\n", "Goal", "measured", "at most");
    for (const Goal& goal : kGoals) {
        const auto run = runs_.find(goal.run);
        const auto other = runs_.find(*goal.other ? goal.other : goal.run);
        if (run == runs_.end() || other == runs_.end()) {
            if (all) std::printf("%-42s %10s\n", goal.what, "not measured");
            reached = reached && !all;
            continue;
        }
        const double figure = figureOf(goal, run->second, other->second);
        const char* unit = goal.figure == Figure::Milliseconds ? "ms" : "x ";
        const bool within = figure <= goal.most;
        std::printf("%-42s %8.2f%s %8.2f%s%s\n", goal.what, figure, unit, goal.most, unit,
                    within ? "" : "   MISSED");
        reached = reached && within;
    }
    return reached;
}

}  // namespace measured
