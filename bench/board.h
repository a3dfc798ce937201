// A board to measure on, with the hand that works on it.
#pragma once

#include "bench/strokes.h"
#include "board/boardwindow.h"

#include <QGraphicsView>

/// Lets everything happen that follows from an event, until the pixels are there.
void flush();

/// A shown board window, and a pointer and a keyboard on its canvas. Points are pixels of the canvas,
/// whose upper left corner shows that of the board.
class Board
{
public:
    /// Shows the board, and waits as a person does who looks at it before the first touch.
    explicit Board(const Strokes &strokes = {});

    QGraphicsScene &scene() const { return *canvas->scene(); }
    QGraphicsView &view() const { return *canvas; }

    /// How much memory the canvas takes to be fast, in bytes.
    qint64 cacheBytes() const;

    void press(QPoint point);
    void move(QPoint point);
    void release(QPoint point);
    void click(QPoint point);
    void type(char letter);

    BoardWindow window{nullptr};

private:
    void rest() const;
    QPoint inWindow(QPoint point) const;

    QGraphicsView *canvas;
};

/// The toolkit's own view, of the same size, over the toolkit's own items.
class BareBoard
{
public:
    explicit BareBoard(const Strokes &strokes = {});

    QGraphicsScene &scene() { return items; }
    QGraphicsView &view() { return canvas; }

private:
    QGraphicsScene items{0, 0, 1920, 1080};
    QGraphicsView canvas;
};
