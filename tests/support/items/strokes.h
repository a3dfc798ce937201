// Strokes as they are drawn on a board.
#pragma once

#include "items/freedrawitem.h"

#include <QGraphicsScene>
#include <QPainterPath>

/// The path with straight lines through \a points, of which there must be one at least.
inline QPainterPath pathThrough(const QList<QPointF> &points)
{
    QPainterPath path(points.constFirst());
    for (const auto &point : points.sliced(1))
        path.lineTo(point);
    return path;
}

/// Puts a stroke with \a path on \a scene, which owns it.
inline FreeDrawItem *addStroke(QGraphicsScene &scene, const QPainterPath &path)
{
    auto *const stroke = new FreeDrawItem;
    stroke->setPath(path);
    scene.addItem(stroke);
    return stroke;
}

/// The same with straight lines through \a points.
inline FreeDrawItem *addStroke(QGraphicsScene &scene, const QList<QPointF> &points)
{
    return addStroke(scene, pathThrough(points));
}
