// How an item of the board is painted where something else than a view of the toolkit's paints it.
#pragma once

class QGraphicsItem;
class QPainter;
class QRect;
class QTransform;
class QWidget;

/// Has \a item paint itself with \a painter as a view does that shows the scene by \a toView and has
/// \a viewport. Of what lies far from \a pixels of the painter's device nothing is painted: the raster
/// engine would walk through every row of pixels up to there.
void paintAsViewed(QPainter &painter, QGraphicsItem &item, const QTransform &toView,
                   const QRect &pixels, QWidget *viewport);
