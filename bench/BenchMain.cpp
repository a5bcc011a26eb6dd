#include <benchmark/benchmark.h>

#include <QApplication>

#include "text/ProgramLocale.h"

int main(int argc, char** argv) {
    // Painting is measured as well, on a machine without a display like on any other.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    kelvo::SetProgramLocale();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
