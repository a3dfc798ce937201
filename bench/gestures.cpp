// Does what a person does on a board, and measures each move until its pixels are there.
#include "bench/gestures.h"

#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"

#include <QGraphicsTextItem>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace {

constexpr QPoint center(600, 350); // of the canvas
constexpr int around = 120; // moves in a circle
constexpr QPoint eraserStep(3, 2);
constexpr int eraserMoves = 20;

QPoint onCircle(int step, QPointF radius)
{
    const qreal angle = step * 2 * std::numbers::pi / around;
    return center + QPointF(radius.x() * std::cos(angle), radius.y() * std::sin(angle)).toPoint();
}

/// Measures moves round in circles; \a begin and \a end, which every circle has, are not measured.
void goRound(benchmark::State &state, Board &board, QPointF radius,
             const std::function<void()> &begin, const std::function<void()> &end)
{
    int step = 0;
    while (state.KeepRunning()) {
        if (step % around == 0) {
            state.PauseTiming();
            if (step > 0)
                end();
            begin();
            state.ResumeTiming();
        }
        board.move(onCircle(++step, radius));
    }
    end();
    state.counters["bytes"] = static_cast<double>(board.cacheBytes());
}

/// Measures moves of \a item, which lies under the middle of the canvas.
void drag(benchmark::State &state, Board &board, QGraphicsItem *item)
{
    constexpr QPointF radius(60, 60);
    const QPointF place = item->pos();
    board.window.setCursorMode();
    board.click(center);
    goRound(
        state, board, radius,
        [&] {
            // The first step of an arrow counts twice; so it does not come back by itself.
            item->setPos(place);
            flush();
            board.press(center);
        },
        [&] {
            if (item->pos() == place)
                state.SkipWithError("The item did not move.");
            board.release(center);
        });
}

StickyNoteItem *addNote(Board &board, QPoint point)
{
    board.window.setPostItMode();
    board.click(point);
    board.window.setCursorMode();
    return dynamic_cast<StickyNoteItem *>(board.scene().items().constFirst()->topLevelItem());
}

} // namespace

void movePen(benchmark::State &state, Board &board)
{
    constexpr QPointF radius(320, 220);
    const int drawn =
        static_cast<int>(std::min<benchmark::IterationCount>(state.max_iterations, around));
    goRound(
        state, board, radius,
        [&] {
            board.window.setPenMode();
            board.press(onCircle(0, radius));
        },
        [&] {
            board.release(onCircle(0, radius));
            const auto *const stroke =
                dynamic_cast<FreeDrawItem *>(board.scene().items().constFirst());
            if (!stroke || stroke->path().elementCount() <= drawn)
                state.SkipWithError("The pen drew no stroke.");
            delete stroke;
            flush();
        });
}

void dragNote(benchmark::State &state, Board &board)
{
    // So that the middle is on the paper, below the text.
    drag(state, board, addNote(board, center - QPoint(150, 250)));
}

void dragArrow(benchmark::State &state, Board &board)
{
    constexpr QPoint half(100, 50);
    board.window.setLineMode();
    board.press(center - half);
    board.move(center + half);
    board.release(center + half);
    drag(state, board, board.scene().items().constFirst());
}

void dragPicture(benchmark::State &state, Board &board)
{
    constexpr QSize size(320, 240);
    QPixmap photograph(size);
    photograph.fill(Qt::darkGreen);
    auto *const picture = new ResizablePixmapItem(photograph);
    picture->setPos(center - QPoint(size.width(), size.height()) / 2);
    picture->setZValue(1); // lies on the strokes, where it can be taken hold of
    board.scene().addItem(picture);
    flush();
    drag(state, board, picture);
}

QList<QPainterPath> underTheEraser(const QList<QPainterPath> &strokes)
{
    QGraphicsScene scene;
    addStrokes(scene, strokes);
    QList<QPainterPath> met;
    const auto items = scene.items(QRectF(center, center + eraserStep * eraserMoves));
    for (const auto *item : items)
        met << qgraphicsitem_cast<const QGraphicsPathItem *>(item)->path();
    return met;
}

void eraseByDrag(benchmark::State &state, Board &board, const QList<QPainterPath> &strokes)
{
    int step = 0;
    while (state.KeepRunning()) {
        if (step == 0) {
            state.PauseTiming();
            board.scene().clear();
            addStrokes(board.scene(), strokes);
            flush();
            board.window.setEraseMode();
            board.press(center);
            state.ResumeTiming();
        }
        ++step;
        board.move(center + eraserStep * step);
        if (step == eraserMoves) {
            state.PauseTiming();
            board.release(center + eraserStep * step);
            if (board.scene().items().size() == strokes.size())
                state.SkipWithError("Nothing was erased.");
            step = 0;
            state.ResumeTiming();
        }
    }
}

void typeIntoNote(benchmark::State &state, Board &board)
{
    constexpr int letters = 60; // that fit on the paper
    constexpr QPoint place(450, 200);
    auto *const note = addNote(board, place);
    int typed = 0;
    while (state.KeepRunning()) {
        if (typed % letters == 0) {
            state.PauseTiming();
            note->setText(QStringLiteral("Hoy: "));
            board.click(place + QPoint(20, 20));
            state.ResumeTiming();
        }
        board.type("a lesson "[typed++ % 9]);
    }
    if (note->getText().size() < 5 + (typed - 1) % letters)
        state.SkipWithError("The letters did not reach the note.");
}

void scroll(benchmark::State &state, QGraphicsView &view)
{
    constexpr int step = 40; // units, at a scale of 1
    bool down = false;
    while (state.KeepRunning()) {
        down = !down;
        view.verticalScrollBar()->setValue(down ? step : 0);
        flush();
    }
}

void repaint(benchmark::State &state, QGraphicsView &view)
{
    while (state.KeepRunning())
        view.viewport()->repaint();
}

void changeLittle(benchmark::State &state, QGraphicsView &view)
{
    const QRectF changed(view.mapToScene(center), QSizeF(4, 4));
    while (state.KeepRunning()) {
        view.scene()->update(changed);
        flush();
    }
}
