// Measures opening and saving a large board, and what of it cannot be avoided.
#include "bench/board.h"
#include "bench/boardfile.h"
#include "bench/run.h"

#include <QJsonDocument>

namespace {

constexpr int strokePoints = 100;

const BoardFile &largeFile()
{
    static const BoardFile file(lesson(isQuick() ? 1000 : 10000, strokePoints));
    return file;
}

void open(benchmark::State &state)
{
    const QString path = largeFile().path();
    while (state.KeepRunning()) {
        state.PauseTiming();
        Board board;
        state.ResumeTiming();
        board.window.loadBoard(path);
        flush();
        state.PauseTiming(); // the end of the board
        state.counters["bytes"] = static_cast<double>(board.cacheBytes());
        board.window.close();
        board.scene().clear();
        state.ResumeTiming();
    }
}

void openBare(benchmark::State &state)
{
    const BoardFile &file = largeFile();
    while (state.KeepRunning()) {
        state.PauseTiming();
        BareBoard board;
        state.ResumeTiming();
        addBareStrokes(board.scene(), QJsonDocument::fromJson(file.bytes()).object());
        flush();
        state.PauseTiming();
        board.scene().clear();
        state.ResumeTiming();
    }
}

void save(benchmark::State &state)
{
    const BoardFile file(lesson(isQuick() ? 1000 : 10000, strokePoints));
    Board board;
    board.window.loadBoard(file.path());
    while (state.KeepRunning())
        board.window.saveBoard();
}

void saveBare(benchmark::State &state)
{
    const QJsonDocument document = QJsonDocument::fromJson(largeFile().bytes());
    while (state.KeepRunning())
        benchmark::DoNotOptimize(document.toJson());
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmarks(argc, argv,
                         {{"open", 1, open},
                          {"open/bare", 1, openBare},
                          {"save", 1, save},
                          {"save/bare", 1, saveBare}});
}
