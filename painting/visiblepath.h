// The part of a path that can be seen through a rectangle.
#pragma once

#include <QPainterPath>

/// The pieces of the straight lines of \a path that come within \a reach of \a view, all in the same
/// units. Drawn with a pen that reaches no farther than \a reach it looks inside \a view like the
/// whole path, and costs what is visible of it, however far the rest goes. A path with curves comes
/// back whole.
QPainterPath visiblePath(const QPainterPath &path, const QRectF &view, qreal reach);
