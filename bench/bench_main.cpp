#include <benchmark/benchmark.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "forms/box.h"
#include "goals.h"
#include "widgets/platform_messages.h"

namespace {

/// Nobody answers a box here: what brings one up is a fault of the measurement, and ends it at once.
forms::BoxAnswer failAtBox(const forms::BoxRequest& request) {
    std::fprintf(stderr, "unexpected box: %s: %s\n", qPrintable(request.title), qPrintable(request.text));
    std::_Exit(3);
}

}  // namespace

/// 0 when every goal that was measured is reached, 1 for a wrong argument or an error, 2 for a missed goal.
int main(int argc, char** argv) {
    // Report pages need fonts, but no window is ever shown.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    widgets::dropSizeHintMessage();
    const QApplication application(argc, argv);
    forms::setBoxHandler(failAtBox);
    const bool all = argc == 1;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    measured::Results results(benchmark::ConsoleReporter::OO_Tabular);
    benchmark::RunSpecifiedBenchmarks(&results);
    const bool reached = results.tellGoals(all);
    if (results.failed()) return 1;
    return reached ? 0 : 2;
}
