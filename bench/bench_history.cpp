// Measures undoing, redoing and recording, and what a long stroke costs.
#include "bench/board.h"
#include "bench/run.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"

#include <QFile>

namespace {

constexpr int elements = 2000;
constexpr int longStroke = 1000; // points

/// A board with a step that can be undone and redone.
class BoardWithHistory : public Board
{
public:
    BoardWithHistory()
        : Board(lesson(elements))
    {
        constexpr QPoint from(500, 300);
        window.captureSnapshot();
        window.setPenMode();
        press(from);
        move(from + QPoint(50, 50));
        release(from + QPoint(50, 50));
    }
};

// Where strokes differ, a restored board counts as a new state as soon as the scene tells of it; then
// there is again something to undo and nothing to redo.
void undo(benchmark::State &state)
{
    BoardWithHistory board;
    while (state.KeepRunning()) {
        state.PauseTiming();
        const QGraphicsItem *const shown = board.scene().items().constFirst();
        state.ResumeTiming();
        board.window.undoMode();
        flush();
        if (board.scene().items().constFirst() == shown)
            state.SkipWithError("There was nothing to undo.");
    }
}

void redo(benchmark::State &state)
{
    BoardWithHistory board;
    while (state.KeepRunning()) {
        state.PauseTiming();
        board.window.undoMode();
        const QGraphicsItem *const undone = board.scene().items().constFirst();
        state.ResumeTiming();
        board.window.redoMode();
        flush();
        if (board.scene().items().constFirst() == undone)
            state.SkipWithError("There was nothing to redo.");
    }
}

/// What no way of undoing gets around, as long as an undo brings new items: the board before goes,
/// the items of the other are built and added, and the toolkit paints them.
void replaceBare(benchmark::State &state)
{
    const QList<QPainterPath> paths = lesson(elements).paths();
    BareBoard board(lesson(elements));
    while (state.KeepRunning()) {
        board.scene().clear();
        addBareStrokes(board.scene(), paths);
        flush();
    }
}

void record(benchmark::State &state)
{
    Board board(lesson(elements));
    while (state.KeepRunning())
        board.window.captureSnapshot();
}

void listItems(benchmark::State &state)
{
    const Board board(lesson(elements));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(board.scene().items());
}

/// What the process holds of memory, in bytes; 0 where the system does not tell.
qint64 heldBytes()
{
    constexpr qint64 pageSize = 4096;
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * pageSize;
}

/// What twelve more snapshots of a board with eight photographs take. The time is of no interest.
void recordPhotographs(benchmark::State &state)
{
    constexpr int photographs = 8;
    constexpr int snapshots = 12;
    while (state.KeepRunning()) {
        Board board;
        QGraphicsItem *last = nullptr;
        for (int i = 0; i < photographs; ++i) {
            QPixmap photograph(4000, 3000);
            photograph.fill(QColor::fromHsv(i * 40, 200, 200));
            last = new ResizablePixmapItem(photograph);
            last->setPos(100 * i, 50 * i);
            board.scene().addItem(last);
            flush();
        }
        const auto move = [last](int times) {
            for (int i = 0; i < times; ++i) {
                last->moveBy(5, 5);
                flush();
            }
        };
        // What the canvas keeps of a moving item is there from the second move on.
        move(3);
        const qint64 before = heldBytes();
        move(snapshots);
        state.counters["bytes"] = static_cast<double>(heldBytes() - before);
    }
}

/// What the pen does in one stroke: every move makes the path longer by a point.
void drawStroke(benchmark::State &state, int points)
{
    while (state.KeepRunning()) {
        QGraphicsScene scene(0, 0, 1920, 1080);
        auto *const stroke = new FreeDrawItem;
        scene.addItem(stroke);
        QPainterPath path({300, 200});
        for (int i = 1; i < points; ++i) {
            path.lineTo(300 + i % 300, 200 + i % 131);
            stroke->setPath(path);
        }
    }
}

std::vector<Benchmark> benchmarks()
{
    const int steps = isQuick() ? 5 : 20;
    return {
        {"undo", steps, undo},
        {"redo", steps, redo},
        {"replace/bare", isQuick() ? 1 : 3, replaceBare},
        {"record", steps, record},
        {"items", steps, listItems},
        {"photographs", 1, recordPhotographs},
        {"draw", 1, [](auto &state) { drawStroke(state, longStroke); }},
        {"draw twice as long", 1, [](auto &state) { drawStroke(state, 2 * longStroke); }},
    };
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmarks(argc, argv, benchmarks());
}
