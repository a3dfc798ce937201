// Measures the same work on boards of more and more elements, for the plot.
#include "bench/board.h"
#include "bench/boardfile.h"
#include "bench/gestures.h"
#include "bench/run.h"

#include <string>

namespace {

Benchmark gesture(const std::string &name, int count, void (*work)(benchmark::State &, Board &))
{
    constexpr int moves = 40;
    return {name + '/' + std::to_string(count), moves, [=](benchmark::State &state) {
                Board board(shortStrokes(count));
                work(state, board);
            }};
}

void record(benchmark::State &state, Board &board)
{
    while (state.KeepRunning())
        board.window.captureSnapshot();
}

void scrollBoard(benchmark::State &state, Board &board)
{
    scroll(state, board.view());
}

Benchmark opening(int count)
{
    return {"open/" + std::to_string(count), 1, [=](benchmark::State &state) {
                const BoardFile file(shortStrokes(count));
                Board board;
                while (state.KeepRunning()) {
                    board.window.loadBoard(file.path());
                    flush();
                }
            }};
}

Benchmark saving(int count)
{
    return {"save/" + std::to_string(count), 1, [=](benchmark::State &state) {
                const BoardFile file(shortStrokes(count));
                Board board;
                board.window.loadBoard(file.path());
                while (state.KeepRunning())
                    board.window.saveBoard();
            }};
}

std::vector<Benchmark> benchmarks()
{
    std::vector<Benchmark> all;
    for (const int count : {10, 100, 1000, 10000, 50000}) {
        if (isQuick() && count > 10000)
            break;
        all.push_back(gesture("pen", count, movePen));
        all.push_back(gesture("drag", count, dragNote));
        all.push_back(gesture("scroll", count, scrollBoard));
        all.push_back(gesture("snapshot", count, record));
        all.push_back(opening(count));
        all.push_back(saving(count));
    }
    return all;
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmarks(argc, argv, benchmarks());
}
