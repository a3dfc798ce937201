// Compares the work that grows with the board with the part of it that cannot be avoided.
//
// Both are measured in the same run. What counts are the ratios at the end; the times before them
// depend on the machine.
#include "bench/largeboard.h"
#include "bench/ratioreporter.h"
#include "history/boardsnapshot.h"
#include "items/freedrawitem.h"
#include "storage/boarddocument.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QJsonDocument>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <utility>

namespace {

constexpr int strokeCount = 5000;
constexpr int pointCount = 40;
constexpr int longStroke = 1000; // points

QGraphicsScene &board()
{
    static auto *const scene = [] {
        auto *const filled = new QGraphicsScene(0, 0, 1920, 1080, qApp);
        addStrokes(*filled, strokeCount, pointCount);
        return filled;
    }();
    return *scene;
}

QByteArray boardFile()
{
    return buildBoardDocument(board());
}

// The same board, whose paths share nothing with those in the scene.
BoardSnapshot unsharedSnapshot()
{
    BoardSnapshot snapshot = takeSnapshot(board());
    for (auto &state : snapshot) {
        auto stroke = state.data.value<std::pair<QPainterPath, QColor>>();
        stroke.first.setElementPositionAt(0, stroke.first.elementAt(0).x,
                                          stroke.first.elementAt(0).y);
        state.data = QVariant::fromValue(stroke);
    }
    return snapshot;
}

void listItems(benchmark::State &state)
{
    while (state.KeepRunning())
        benchmark::DoNotOptimize(board().items());
}

void takeSnapshots(benchmark::State &state)
{
    while (state.KeepRunning())
        benchmark::DoNotOptimize(takeSnapshot(board()));
}

void compareUnchanged(benchmark::State &state)
{
    const BoardSnapshot top = takeSnapshot(board());
    const BoardSnapshot newer = takeSnapshot(board());
    while (state.KeepRunning())
        benchmark::DoNotOptimize(snapshotsEqual(newer, top));
}

void comparePointByPoint(benchmark::State &state)
{
    const BoardSnapshot top = takeSnapshot(board());
    const BoardSnapshot newer = unsharedSnapshot();
    while (state.KeepRunning())
        benchmark::DoNotOptimize(snapshotsEqual(newer, top));
}

void writeJson(benchmark::State &state)
{
    const QJsonDocument document = QJsonDocument::fromJson(boardFile());
    while (state.KeepRunning())
        benchmark::DoNotOptimize(document.toJson(QJsonDocument::Indented));
}

void saveBoard(benchmark::State &state)
{
    while (state.KeepRunning())
        benchmark::DoNotOptimize(boardFile());
}

void parseJson(benchmark::State &state)
{
    const QByteArray file = boardFile();
    while (state.KeepRunning())
        benchmark::DoNotOptimize(QJsonDocument::fromJson(file));
}

void openBoard(benchmark::State &state)
{
    const QByteArray file = boardFile();
    while (state.KeepRunning()) {
        QGraphicsScene scene(0, 0, 1920, 1080);
        for (auto &item : itemsOf(QJsonDocument::fromJson(file).object()))
            scene.addItem(item.release());
    }
}

void addItems(benchmark::State &state)
{
    while (state.KeepRunning()) {
        QGraphicsScene scene(0, 0, 1920, 1080);
        addStrokes(scene, strokeCount, pointCount);
    }
}

void restoreBoard(benchmark::State &state)
{
    const BoardSnapshot snapshot = takeSnapshot(board());
    while (state.KeepRunning()) {
        QGraphicsScene scene(0, 0, 1920, 1080);
        restoreSnapshot(scene, snapshot);
    }
}

/// What the pen does in one stroke: every move makes the path longer by a point.
template <int points> void drawStroke(benchmark::State &state)
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

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const std::pair<const char *, void (*)(benchmark::State &)> benchmarks[] = {
        {"list items", listItems},
        {"take a snapshot", takeSnapshots},
        {"compare unchanged", compareUnchanged},
        {"compare point by point", comparePointByPoint},
        {"write JSON", writeJson},
        {"save", saveBoard},
        {"parse JSON", parseJson},
        {"open", openBoard},
        {"add items", addItems},
        {"restore", restoreBoard},
        {"draw", drawStroke<longStroke>},
        {"draw twice as long", drawStroke<2 * longStroke>},
    };
    for (const auto &[name, function] : benchmarks)
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);

    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\nA board of %d strokes of %d points; times as multiples:\n", strokeCount,
                pointCount);
    reporter.printRatio("taking a snapshot / listing the scene's items", "take a snapshot",
                        "list items");
    reporter.printRatio("comparing an unchanged board / point by point", "compare unchanged",
                        "compare point by point");
    reporter.printRatio("saving a board / writing its JSON", "save", "write JSON");
    reporter.printRatio("opening a board / parsing its JSON", "open", "parse JSON");
    reporter.printRatio("restoring a snapshot / making and adding its items", "restore",
                        "add items");
    std::printf("\nA single stroke of %d points:\n", longStroke);
    reporter.printRatio("drawing one twice as long / drawing it", "draw twice as long", "draw");
}
