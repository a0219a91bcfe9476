#include <benchmark/benchmark.h>

#include <QApplication>

#include "widgets/platform_messages.h"

int main(int argc, char** argv) {
    // Report pages need fonts, but no window is ever shown.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    widgets::dropSizeHintMessage();
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
