// Shows a board and works on it as a person does: through events of its window.
#include "bench/board.h"

#include "painting/canvasview.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QTest>

void flush()
{
    // The scene tells its changes first, the view paints them after that.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

Board::Board(const Strokes &strokes)
    : canvas(window.findChild<QGraphicsView *>(QStringLiteral("PizarraMain")))
{
    addStrokes(scene(), strokes.paths());
    window.show();
    canvas->horizontalScrollBar()->setValue(0);
    canvas->verticalScrollBar()->setValue(0);
    flush();
    rest();
}

void Board::rest() const
{
    while (dynamic_cast<const CanvasView &>(*canvas).frame().canPrepare())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

qint64 Board::cacheBytes() const
{
    return dynamic_cast<const CanvasView &>(*canvas).frame().bytes();
}

void Board::press(QPoint point)
{
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, inWindow(point));
    flush();
}

void Board::move(QPoint point)
{
    QTest::mouseMove(window.windowHandle(), inWindow(point));
    flush();
}

void Board::release(QPoint point)
{
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, inWindow(point));
    flush();
}

void Board::click(QPoint point)
{
    press(point);
    release(point);
}

void Board::type(char letter)
{
    QTest::keyClick(window.windowHandle(), letter);
    flush();
}

QPoint Board::inWindow(QPoint point) const
{
    return canvas->viewport()->mapTo(&window, point);
}

BareBoard::BareBoard(const Strokes &strokes)
{
    addBareStrokes(items, strokes.paths());
    canvas.setFixedSize(1200, 700);
    canvas.setFrameShape(QFrame::NoFrame);
    canvas.setRenderHint(QPainter::Antialiasing);
    canvas.setScene(&items);
    canvas.show();
    canvas.horizontalScrollBar()->setValue(0);
    canvas.verticalScrollBar()->setValue(0);
    flush();
}
