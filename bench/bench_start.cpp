// Measures how long the program takes to its first painted window and what memory it holds then, and the
// same for a bare window; each in a process of its own.
#include "bench/run.h"

#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <chrono>

namespace {

/// Starts \a program, which ends with its first painted window; the home folder is an empty one.
void start(benchmark::State &state, const char *program)
{
    const QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(PLUMARA_WATCHER));
    environment.insert(QStringLiteral("HOME"), home.path());
    // A program that is already running, which is known by this folder, is left alone.
    environment.insert(QStringLiteral("TMPDIR"), home.path());
    while (state.KeepRunning()) {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::SeparateChannels);
        const auto begin = std::chrono::steady_clock::now();
        process.start(QString::fromUtf8(program), QStringList());
        process.waitForFinished();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(taken.count());
        const QList<QByteArray> told = process.readAllStandardOutput().split(' ');
        if (told.size() != 2) {
            state.SkipWithError("The program painted no window.");
            return;
        }
        constexpr double kilobyte = 1024;
        state.counters["bytes"] = told[0].toDouble() * kilobyte;
        state.counters["shared bytes"] = told[1].toDouble() * kilobyte;
    }
}

} // namespace

int main(int argc, char *argv[])
{
    constexpr int starts = 4;
    const std::string platform = qEnvironmentVariable("QT_QPA_PLATFORM").toStdString();
    const std::string suffix = platform.empty() ? "" : "/" + platform;
    return runBenchmarks(
        argc, argv,
        {{"start/home" + suffix, starts, [](auto &state) { start(state, PLUMARA_PROGRAM); }, true},
         {"start/bare" + suffix, starts, [](auto &state) { start(state, PLUMARA_BARE_WINDOW); },
          true}});
}
