// What of an item decides how it looks, to know whether it has to be painted anew.
#pragma once

#include <QGraphicsItem>
#include <QLineF>
#include <QPainterPath>
#include <QPen>
#include <QString>
#include <QTransform>

/// The look of one item when it was painted last.
struct PaintedState
{
    const QGraphicsItem *item = nullptr;
    QTransform transform; // to the scene
    QRectF area; // all that it paints, in scene units
    qreal opacity = 1;
    qreal z = 0;
    bool selected = false;
    QPainterPath path; // of a stroke
    QPen pen; // of a stroke or an arrow
    QLineF line; // of an arrow
    qint64 content = 0; // of a note its colour, of its text the revision, of an image its key
    QString text; // of a note
    qreal headReach = 0; // how far an arrow's head reaches outside its rectangle, in scene units
    /// It has, or may have, a dashed outline; where the dashes begin depends on what is cut off.
    bool outlined = false;
    /// It cannot be told whether it looks the same: a text that is edited, an unknown item.
    bool uncertain = false;
};

/// The present look of \a item.
PaintedState paintedState(const QGraphicsItem *item);

/// What of the scene looks different now that an item has gone from \a before to \a after, in scene
/// units; empty when nothing does.
QRectF changedArea(const PaintedState &before, const PaintedState &after);
