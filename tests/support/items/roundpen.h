// The pen of strokes and arrows.
#pragma once

#include <QBrush>
#include <QPen>

/// A pen as strokes and arrows have it: solid, with round ends and joins.
inline QPen roundPen(const QColor &color, qreal width)
{
    return {QBrush(color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}
