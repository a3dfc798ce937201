// Compares what a person does on a full board with the same on an empty one, and with the toolkit's
// own view.
//
// All is measured in the same run, until the pixels are there. What counts are the ratios at the end.
#include "bench/largeboard.h"
#include "bench/ratioreporter.h"
#include "board/boardwindow.h"
#include "items/freedrawitem.h"
#include "items/stickynoteitem.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QScrollBar>

#include <cmath>

namespace {

constexpr int lessonStrokes = 600;
constexpr int lessonPoints = 120;
constexpr int manyStrokes = 10000;
constexpr int manyPoints = 20;

void flush()
{
    // The scene tells its changes first, the view paints them after that.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

/// The program's own board window, or a view of the toolkit of the same size, over some strokes.
class Board
{
public:
    Board(int strokes, int points, bool bare = false)
    {
        if (bare) {
            plain.setFixedSize(1200, 700);
            plain.setFrameShape(QFrame::NoFrame);
            plain.setRenderHint(QPainter::Antialiasing);
            plain.setScene(&plainScene);
            view = &plain;
        } else {
            view = window.findChild<QGraphicsView *>(QStringLiteral("PizarraMain"));
        }
        addStrokes(*view->scene(), strokes, points);
        view->window()->show();
        flush();
    }

    QGraphicsScene &scene() const { return *view->scene(); }
    QGraphicsView &canvas() const { return *view; }

private:
    BoardWindow window{nullptr};
    QGraphicsScene plainScene{0, 0, 1920, 1080};
    QGraphicsView plain;
    QGraphicsView *view = nullptr;
};

/// One move of a pen that goes round in a circle of 640 x 440 units.
void movePen(benchmark::State &state, const Board &board)
{
    constexpr int around = 120;
    auto *const stroke = new FreeDrawItem;
    board.scene().addItem(stroke);
    QPainterPath path;
    int i = 0;
    while (state.KeepRunning()) {
        const qreal angle = i * 2 * M_PI / around;
        const QPointF point(600 + 320 * std::cos(angle), 350 + 220 * std::sin(angle));
        if (i++ % around == 0)
            path = QPainterPath(point - QPointF(1, 0));
        path.lineTo(point);
        stroke->setPath(path);
        flush();
    }
    delete stroke;
    flush();
}

void dragNote(benchmark::State &state, const Board &board)
{
    auto *const note = new StickyNoteItem;
    board.scene().addItem(note);
    int i = 0;
    while (state.KeepRunning()) {
        ++i;
        note->setPos(200 + 4 * (i % 100), 150 + i % 50);
        flush();
    }
    delete note;
    flush();
}

void scroll(benchmark::State &state, const Board &board)
{
    auto *const bar = board.canvas().verticalScrollBar();
    int i = 0;
    while (state.KeepRunning()) {
        bar->setValue(++i % 2 == 0 ? 0 : 40);
        flush();
    }
}

void repaint(benchmark::State &state, const Board &board)
{
    while (state.KeepRunning())
        board.canvas().viewport()->repaint();
}

using Work = void (*)(benchmark::State &state, const Board &board);

template <int strokes, int points, bool bare, Work work> void on(benchmark::State &state)
{
    const Board board(strokes, points, bare);
    work(state, board);
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const std::pair<const char *, void (*)(benchmark::State &)> benchmarks[] = {
        {"pen, empty", on<0, 0, false, movePen>},
        {"pen, lesson", on<lessonStrokes, lessonPoints, false, movePen>},
        {"pen, many", on<manyStrokes, manyPoints, false, movePen>},
        {"pen, lesson, bare", on<lessonStrokes, lessonPoints, true, movePen>},
        {"note, empty", on<0, 0, false, dragNote>},
        {"note, lesson", on<lessonStrokes, lessonPoints, false, dragNote>},
        {"scroll, lesson", on<lessonStrokes, lessonPoints, false, scroll>},
        {"scroll, lesson, bare", on<lessonStrokes, lessonPoints, true, scroll>},
        {"repaint, lesson", on<lessonStrokes, lessonPoints, false, repaint>},
        {"repaint, lesson, bare", on<lessonStrokes, lessonPoints, true, repaint>},
    };
    for (const auto &[name, function] : benchmarks)
        benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);

    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\nA lesson of %d strokes of %d points, %d short strokes; times as multiples:\n",
                lessonStrokes, lessonPoints, manyStrokes);
    reporter.printRatio("a move of the pen: lesson / empty board", "pen, lesson", "pen, empty");
    reporter.printRatio("a move of the pen: many strokes / empty board", "pen, many", "pen, empty");
    reporter.printRatio("a move of the pen on the lesson: board / bare view", "pen, lesson",
                        "pen, lesson, bare");
    reporter.printRatio("dragging a note: lesson / empty board", "note, lesson", "note, empty");
    reporter.printRatio("scrolling the lesson: board / bare view", "scroll, lesson",
                        "scroll, lesson, bare");
    reporter.printRatio("repainting the lesson: board / bare view", "repaint, lesson",
                        "repaint, lesson, bare");
}
