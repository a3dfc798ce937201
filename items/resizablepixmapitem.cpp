// Draws the image with its handles, resizes and moves it.
#include "items/resizablepixmapitem.h"

#include "items/geometrychange.h"

#include <QCursor>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <iterator>

namespace {

constexpr qreal handleSide = 32.0; // item units
constexpr qreal handleReach = handleSide / 2;
constexpr int smallestSide = 20; // pixels

struct Handle
{
    int number;
    // Where the handle sits, as shares of the image's width and height.
    qreal x;
    qreal y;
    // How the size follows the pointer: -1 against it, 0 not at all, 1 with it.
    int widthFactor;
    int heightFactor;
    Qt::CursorShape cursor;
};

// Clockwise from the top-left corner. Where squares overlap, the earlier row wins.
constexpr Handle handles[] = {
    {1, 0.0, 0.0, -1, -1, Qt::SizeFDiagCursor}, {2, 0.5, 0.0, 0, -1, Qt::SizeVerCursor},
    {3, 1.0, 0.0, 1, -1, Qt::SizeBDiagCursor},  {4, 1.0, 0.5, 1, 0, Qt::SizeHorCursor},
    {5, 1.0, 1.0, 1, 1, Qt::SizeFDiagCursor},   {6, 0.5, 1.0, 0, 1, Qt::SizeVerCursor},
    {7, 0.0, 1.0, -1, 1, Qt::SizeBDiagCursor},  {8, 0.0, 0.5, -1, 0, Qt::SizeHorCursor},
};

const Handle *findHandle(int number)
{
    const auto *const found = std::ranges::find(handles, number, &Handle::number);
    return found == std::end(handles) ? nullptr : found;
}

int boxSide(qreal side)
{
    return side < smallestSide ? smallestSide : qRound(side);
}

} // namespace

ResizablePixmapItem::ResizablePixmapItem(const QPixmap &pixmap)
    : QGraphicsPixmapItem(pixmap)
    , sourcePixmap(pixmap)
{
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemSendsGeometryChanges);
    setAcceptHoverEvents(true);
}

QRectF ResizablePixmapItem::handleRect(int handle) const
{
    QPointF center;
    if (const auto *place = findHandle(handle)) {
        const QRectF image = QGraphicsPixmapItem::boundingRect();
        center = {image.x() + place->x * image.width(), image.y() + place->y * image.height()};
    }
    return {center.x() - handleReach, center.y() - handleReach, handleSide, handleSide};
}

int ResizablePixmapItem::handleAt(const QPointF &itemPos) const
{
    for (const auto &handle : handles) {
        if (handleRect(handle.number).contains(itemPos))
            return handle.number;
    }
    return 0;
}

void ResizablePixmapItem::resizeTo(const QPointF &scenePos)
{
    const QPointF moved = mapFromScene(scenePos) - mapFromScene(pressScenePos);
    QSizeF size = startRect.size();
    if (const auto *handle = findHandle(activeHandle)) {
        size += QSizeF(handle->widthFactor * moved.x(), handle->heightFactor * moved.y());
    }
    // Quirk: the handles in the middle of an edge make a picture smaller but never larger, because
    // the picture keeps its proportions inside the box, which grows in one direction only.
    // Quirk: resizing a picture does not mark the board unsaved, because it does not emit
    // itemModified(); whoever resizes has selected the picture, which does.
    // Quirk: a picture keeps its top-left corner in place whichever handle is dragged, because only
    // its size changes; the item is not moved.
    setPixmap(sourcePixmap.scaled(boxSide(size.width()), boxSide(size.height()),
                                  Qt::KeepAspectRatio, Qt::SmoothTransformation));
    update();
}

void ResizablePixmapItem::cursorForPosition(const QPointF &itemPos)
{
    const auto *handle = findHandle(handleAt(itemPos));
    setCursor(handle ? handle->cursor : Qt::ArrowCursor);
}

// Quirk: the outer half of a handle cannot be grabbed, because the shape of a picture is the
// picture; only its rectangle is grown for the handles to be painted.
QRectF ResizablePixmapItem::boundingRect() const
{
    return QGraphicsPixmapItem::boundingRect().adjusted(-handleReach, -handleReach, handleReach,
                                                        handleReach);
}

void ResizablePixmapItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
                                QWidget *widget)
{
    // Without the toolkit's dashed frame: the handles show the selection.
    QStyleOptionGraphicsItem unselected(*option);
    unselected.state.setFlag(QStyle::State_Selected, false);
    QGraphicsPixmapItem::paint(painter, &unselected, widget);
    if (!isSelected())
        return;
    painter->setPen(Qt::blue);
    painter->setBrush(Qt::white);
    for (const auto &handle : handles)
        painter->drawRect(handleRect(handle.number));
}

void ResizablePixmapItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (isSelected()) {
        activeHandle = handleAt(event->pos());
        if (activeHandle != 0) {
            pressScenePos = event->scenePos();
            // Quirk: a resized picture starts from a size one pixel larger than it is, because the
            // toolkit's rectangle of a selectable picture is half a pixel larger on every side.
            startRect = QGraphicsPixmapItem::boundingRect();
            event->accept();
            return;
        }
    }
    QGraphicsPixmapItem::mousePressEvent(event);
}

void ResizablePixmapItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (activeHandle != 0) {
        resizeTo(event->scenePos());
        event->accept();
        return;
    }
    QGraphicsPixmapItem::mouseMoveEvent(event);
}

void ResizablePixmapItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    if (activeHandle != 0) {
        activeHandle = 0;
        event->accept();
        return;
    }
    QGraphicsPixmapItem::mouseReleaseEvent(event);
}

QVariant ResizablePixmapItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (isGeometryChange(change))
        emit itemModified();
    return QGraphicsPixmapItem::itemChange(change, value);
}
