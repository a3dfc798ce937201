// The arrow: a line on the board with a head at its end.
#pragma once

#include <QGraphicsLineItem>
#include <QObject>
#include <QPen>

/// A straight line with a filled arrow head at its end point, in scene units.
///
/// The person selects and drags it, and changes colour and thickness from its context menu. It is
/// made without a QObject parent and belongs to the scene that it is added to.
///
/// The bounding rectangle and the shape are the bare line's; the head may reach outside of them.
// Quirk: an arrow is taken hold of and erased by its line, not by its head, because shape and
// rectangle are those of the toolkit's line item and the head is only drawn.
class ArrowLineItem : public QObject, public QGraphicsLineItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ArrowLineItem)

public:
    /// Makes a black arrow, 2 units wide, at z value 2.
    ArrowLineItem(const QPointF &start, const QPointF &end, QGraphicsItem *parent = nullptr);

    void setColor(const QColor &color);
    /// \a width is in whole scene units. One that no pen can have, below 0 or above 32767, leaves
    /// the width as it is; the toolkit then warns on the error output.
    void setWidth(int width);

    /// How far the head may reach outside the bounding rectangle, in scene units.
    qreal headReach() const;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

signals:
    /// Emitted for each change of position, transform, rotation or scale of an item that asks for
    /// such notifications; arrows do not.
    void itemModified();

protected:
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    QPen pen; // what setColor() and setWidth() start from
    bool dragging = false;
    QPointF lastScenePos;
};
