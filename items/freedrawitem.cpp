// Gives the stroke its pen and its path, and tells of each change.
#include "items/freedrawitem.h"

#include "items/geometrychange.h"

namespace {
constexpr qreal strokeZ = 1.0;
constexpr qreal defaultWidth = 2.0;
} // namespace

FreeDrawItem::FreeDrawItem(QGraphicsItem *parent)
    : QGraphicsPathItem(parent)
    , pen(QBrush(Qt::black), defaultWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin)
{
    setAcceptedMouseButtons(Qt::NoButton);
    setAcceptHoverEvents(false);
    setPen(pen);
    setZValue(strokeZ);
}

void FreeDrawItem::setColor(const QColor &color)
{
    pen.setColor(color);
    setPen(pen);
    emit itemModified();
}

void FreeDrawItem::setWidth(int width)
{
    pen.setWidth(width);
    setPen(pen);
    emit itemModified();
}

void FreeDrawItem::setPath(const QPainterPath &path)
{
    QGraphicsPathItem::setPath(path);
    update();
    emit itemModified();
}

QVariant FreeDrawItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (isGeometryChange(change))
        emit itemModified();
    return QGraphicsPathItem::itemChange(change, value);
}
