// The part of a path that can be seen through a rectangle.
#pragma once

#include <QLineF>
#include <QPainterPath>

#include <optional>

class QPainter;

/// The part of \a line inside \a box, all in the same units; a point of it may be all.
std::optional<QLineF> visibleLine(const QLineF &line, const QRectF &box);

/// The pieces of the straight lines of \a path that come within \a reach of \a view, all in the same
/// units. Drawn with a pen that reaches no farther than \a reach it looks inside \a view like the
/// whole path, and costs what is visible of it, however far the rest goes. A path with curves comes
/// back whole.
QPainterPath visiblePath(const QPainterPath &path, const QRectF &view, qreal reach);

/// Draws what \a path shows inside \a pixels of the device of \a painter, with its pen. Very long paths
/// are drawn square by square: what the raster engine does for each row of pixels grows with the
/// square of the lines that cross it.
void drawVisiblePath(QPainter &painter, const QPainterPath &path, const QRect &pixels);
