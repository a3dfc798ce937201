#pragma once

#include "items/freedrawitem.h"

#include <QGraphicsScene>
#include <QPainterPath>

// Strokes as they are drawn on a board.

/// The path with straight lines through \a points, of which there must be one at least.
inline QPainterPath pathThrough(const QList<QPointF> &points)
{
    QPainterPath path(points.constFirst());
    for (const auto &point : points.sliced(1))
        path.lineTo(point);
    return path;
}

/// Puts a stroke through \a points on \a scene, which owns it.
inline FreeDrawItem *addStroke(QGraphicsScene &scene, const QList<QPointF> &points)
{
    auto *const stroke = new FreeDrawItem;
    stroke->setPath(pathThrough(points));
    scene.addItem(stroke);
    return stroke;
}
