// Measures what a person does on a full board, on an empty one, and on the toolkit's own view.
#include "bench/gestures.h"
#include "bench/run.h"

#include <string>

namespace {

constexpr int manyStrokes = 10000;

const Strokes empty{};
const Strokes many = shortStrokes(manyStrokes);

Strokes inWindow()
{
    Strokes strokes = shortStrokes(2000);
    strokes.area = {0, 0, 1200, 700};
    return strokes;
}

using Gesture = void (*)(benchmark::State &, Board &);

Benchmark gesture(const std::string &name, int iterations, Gesture work, const Strokes &strokes)
{
    return {name, iterations, [=](benchmark::State &state) {
                Board board(strokes);
                work(state, board);
            }};
}

Benchmark erasing(const std::string &name, int iterations, bool onlyWhatGoes)
{
    return {name, iterations, [=](benchmark::State &state) {
                const QList<QPainterPath> paths = lesson().paths();
                Board board;
                eraseByDrag(state, board, onlyWhatGoes ? underTheEraser(paths) : paths);
            }};
}

using Viewing = void (*)(benchmark::State &, QGraphicsView &);

template <typename Shown>
Benchmark viewing(const std::string &name, int iterations, Viewing work, const Strokes &strokes)
{
    return {name, iterations, [=](benchmark::State &state) {
                Shown board(strokes);
                work(state, board.view());
            }};
}

Benchmark listing(const std::string &name, int iterations, const Strokes &strokes)
{
    return {name, iterations, [=](benchmark::State &state) {
                const Board board(strokes);
                while (state.KeepRunning())
                    benchmark::DoNotOptimize(board.scene().items());
            }};
}

std::vector<Benchmark> benchmarks()
{
    const int moves = isQuick() ? 120 : 240;
    const int bareViews = isQuick() ? 4 : 10;
    return {
        gesture("pen/empty", moves, movePen, empty),
        gesture("pen/lesson", moves, movePen, lesson()),
        gesture("pen/many", moves, movePen, many),
        gesture("note/empty", moves, dragNote, empty),
        gesture("note/lesson", moves, dragNote, lesson()),
        gesture("arrow/empty", moves, dragArrow, empty),
        gesture("arrow/lesson", moves, dragArrow, lesson()),
        gesture("picture/empty", moves, dragPicture, empty),
        gesture("picture/lesson", moves, dragPicture, lesson()),
        gesture("type/empty", moves, typeIntoNote, empty),
        gesture("type/lesson", moves, typeIntoNote, lesson()),
        erasing("erase/empty", moves, true),
        erasing("erase/lesson", moves, false),
        viewing<Board>("scroll/lesson", moves, scroll, lesson()),
        viewing<BareBoard>("scroll/lesson/bare", bareViews, scroll, lesson()),
        viewing<Board>("scroll/short", moves, scroll, inWindow()),
        viewing<BareBoard>("scroll/short/bare", bareViews, scroll, inWindow()),
        viewing<Board>("repaint/lesson", moves, repaint, lesson()),
        viewing<BareBoard>("repaint/lesson/bare", bareViews, repaint, lesson()),
        viewing<Board>("repaint/short", moves, repaint, inWindow()),
        viewing<BareBoard>("repaint/short/bare", bareViews, repaint, inWindow()),
        viewing<Board>("change/many", moves, changeLittle, many),
        listing("items/many", moves, many),
    };
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmarks(argc, argv, benchmarks());
}
