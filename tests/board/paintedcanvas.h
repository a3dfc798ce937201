// Collects what the canvas of a board paints.
#pragma once

#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QWidget>

/// What of a canvas is painted for as long as the object lives.
class PaintedCanvas : public QObject
{
public:
    explicit PaintedCanvas(QWidget &canvas) { canvas.installEventFilter(this); }

    QRegion region;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
};
