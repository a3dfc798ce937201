// Runs a table of benchmarks.
#include "bench/run.h"

#include <QApplication>
#include <QLoggingCategory>

int runBenchmarks(int argc, char *argv[], const std::vector<Benchmark> &benchmarks)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    // The offscreen platform says at each gesture that it grabs no mouse.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    const int scale = qRound(app.devicePixelRatio());
    std::string suffix;
    if (scale > 1)
        suffix.append("@").append(std::to_string(scale));
    for (const Benchmark &row : benchmarks) {
        auto *const registered =
            benchmark::RegisterBenchmark((row.name + suffix).c_str(), row.work);
        registered->Unit(benchmark::kMillisecond)->Iterations(row.iterations);
        if (row.manualTime)
            registered->UseManualTime();
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

bool isQuick()
{
    return qEnvironmentVariableIsSet("PLUMARA_BENCH_QUICK");
}
