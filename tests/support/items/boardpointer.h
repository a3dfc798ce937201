// A pointer on the canvas of a window.
#pragma once

#include <QGraphicsView>
#include <QTest>
#include <QWindow>

/// A pointer and a keyboard on the canvas of a shown board window: its events go to the window, as
/// a person's do, so that focus, grabs and items decide who sees them.
///
/// Points are scene points; they are rounded to whole pixels of the view. Use
/// distinct points for successive presses: two presses at one place within a moment are a double
/// click.
class BoardPointer
{
public:
    explicit BoardPointer(QWidget &boardWindow)
        : window(boardWindow)
        , view(*boardWindow.findChild<QGraphicsView *>(QStringLiteral("PizarraMain")))
    { }

    void press(QPointF scenePoint, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(window.windowHandle(), button, {}, windowPoint(scenePoint));
    }
    void move(QPointF scenePoint)
    {
        QTest::mouseMove(window.windowHandle(), windowPoint(scenePoint));
    }
    void release(QPointF scenePoint, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(window.windowHandle(), button, {}, windowPoint(scenePoint));
    }
    void click(QPointF scenePoint, Qt::MouseButton button = Qt::LeftButton)
    {
        press(scenePoint, button);
        release(scenePoint, button);
    }
    /// Presses at the first point, moves through the others and releases at the last.
    void drag(const QList<QPointF> &scenePoints)
    {
        press(scenePoints.constFirst());
        for (const auto &point : scenePoints)
            move(point);
        release(scenePoints.constLast());
    }

    QPoint windowPoint(QPointF scenePoint) const
    {
        return view.viewport()->mapTo(&window, view.mapFromScene(scenePoint));
    }
    /// The scene point of the canvas pixel that \a scenePoint falls on.
    QPointF pixel(QPointF scenePoint) const
    {
        return view.mapToScene(view.mapFromScene(scenePoint));
    }

private:
    QWidget &window;
    QGraphicsView &view;
};
