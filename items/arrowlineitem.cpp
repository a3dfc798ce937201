// Draws the arrow, drags it and offers its menu.
#include "items/arrowlineitem.h"

#include "items/geometrychange.h"

#include <QCursor>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QMenu>
#include <QPainter>

#include <cmath>
#include <numbers>

namespace {

constexpr qreal arrowZ = 2.0;
constexpr qreal defaultWidth = 2.0;

// Shorter lines (scene units) get no head.
constexpr qreal shortestLineWithHead = 10.0;
// The head's sides are this much longer than the line is wide (scene units).
constexpr int headExtra = 18;
// The angle between the line and each of the head's sides (radians).
constexpr qreal headSpread = std::numbers::pi / 7;

struct ColorEntry
{
    const char16_t *label;
    Qt::GlobalColor color;
};

constexpr ColorEntry colorEntries[] = {
    {u"Negro", Qt::black},
    {u"Rojo", Qt::red},
    {u"Azul", Qt::blue},
    // Quirk: "Verde" is the dark green, because the bright one is hard to see on white.
    {u"Verde", Qt::darkGreen},
};

struct WidthEntry
{
    const char16_t *label;
    int width; // scene units
};

constexpr WidthEntry widthEntries[] = {
    {u"Delgado", 2},
    {u"Medio", 5},
    {u"Grueso", 9},
};

constexpr int headSide(int width)
{
    return width + headExtra;
}

QPolygonF headPolygon(const QLineF &line, int width)
{
    const qreal side = headSide(width);
    // The scene's y axis points down, the angle is measured upwards.
    const qreal angle = std::atan2(-line.dy(), line.dx());
    const auto corner = [&](qreal direction) {
        return line.p2() + QPointF(-std::cos(direction) * side, std::sin(direction) * side);
    };
    return {{line.p2(), corner(angle + headSpread), corner(angle - headSpread)}};
}

} // namespace

ArrowLineItem::ArrowLineItem(const QPointF &start, const QPointF &end, QGraphicsItem *parent)
    : QGraphicsLineItem(QLineF(start, end), parent)
    , pen(QBrush(Qt::black), defaultWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin)
{
    setFlags(ItemIsMovable | ItemIsSelectable);
    setZValue(arrowZ);
    setPen(pen);
}

void ArrowLineItem::setColor(const QColor &color)
{
    pen.setColor(color);
    setPen(pen);
    update();
}

void ArrowLineItem::setWidth(int width)
{
    pen.setWidth(width);
    setPen(pen);
    update();
}

qreal ArrowLineItem::headReach() const
{
    // The outline of the head's corners stands out by less than the width of the pen.
    const int width = QGraphicsLineItem::pen().width();
    return headSide(width) + width;
}

void ArrowLineItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
                          QWidget *widget)
{
    QGraphicsLineItem::paint(painter, option, widget);

    if (line().length() < shortestLineWithHead)
        return;
    const QPen linePen = QGraphicsLineItem::pen();
    // The outline keeps the pen that the line was painted with.
    painter->setBrush(linePen.color());
    painter->drawPolygon(headPolygon(line(), linePen.width()), Qt::OddEvenFill);
}

void ArrowLineItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    QMenu menu;
    for (const auto &entry : colorEntries) {
        connect(menu.addAction(QString::fromUtf16(entry.label)), &QAction::triggered, this,
                [this, color = entry.color] { setColor(color); });
    }
    menu.addSeparator();
    for (const auto &entry : widthEntries) {
        connect(menu.addAction(QString::fromUtf16(entry.label)), &QAction::triggered, this,
                [this, width = entry.width] { setWidth(width); });
    }
    // Quirk: another colour or thickness of an arrow does not mark the board unsaved, because an
    // arrow does not emit itemModified() for its pen.
    menu.exec(event->screenPos());
}

void ArrowLineItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        dragging = true;
        lastScenePos = event->scenePos();
        setCursor(Qt::ClosedHandCursor);
    }
    QGraphicsLineItem::mousePressEvent(event);
}

void ArrowLineItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (dragging) {
        setPos(pos() + event->scenePos() - lastScenePos);
        lastScenePos = event->scenePos();
    }
    // Quirk: the first step of dragging an arrow counts twice, because the toolkit moves the item
    // as well, from where it stood at its own first step.
    QGraphicsLineItem::mouseMoveEvent(event);
}

void ArrowLineItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    dragging = false;
    // Quirk: an arrow that was dragged shows an arrow cursor in every mode, because its cursor goes
    // back to the shape of the cursor mode, in which arrows are dragged.
    setCursor(Qt::ArrowCursor);
    QGraphicsLineItem::mouseReleaseEvent(event);
}

QVariant ArrowLineItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (isGeometryChange(change))
        emit itemModified();
    return QGraphicsLineItem::itemChange(change, value);
}
