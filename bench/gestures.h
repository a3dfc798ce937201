// What a person does on a board, to be measured move by move.
#pragma once

#include "bench/board.h"

#include <benchmark/benchmark.h>

/// The pen goes round in circles of 640 x 440 units, each a stroke of 120 points.
void movePen(benchmark::State &state, Board &board);

/// A selected note, an arrow, a picture: each is dragged round in circles.
void dragNote(benchmark::State &state, Board &board);
void dragArrow(benchmark::State &state, Board &board);
void dragPicture(benchmark::State &state, Board &board);

/// The eraser is drawn over 60 x 40 units of a board with \a strokes, which come back for the next time.
void eraseByDrag(benchmark::State &state, Board &board, const QList<QPainterPath> &strokes);

/// Those of \a strokes that it erases.
QList<QPainterPath> underTheEraser(const QList<QPainterPath> &strokes);

/// Letters are typed into a note.
void typeIntoNote(benchmark::State &state, Board &board);

/// Scrolls down by 40 units, and up again.
void scroll(benchmark::State &state, QGraphicsView &view);

/// Paints the whole view, where nothing has changed.
void repaint(benchmark::State &state, QGraphicsView &view);

/// Something of 4 x 4 units in the middle of the view changes.
void changeLittle(benchmark::State &state, QGraphicsView &view);
