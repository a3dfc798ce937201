// The image: a picture on the board that is moved and resized by handles.
#pragma once

#include <QGraphicsPixmapItem>
#include <QObject>

/// An image on the board that the person moves and, by eight handles, resizes.
///
/// A selected image shows its handles. Every resize scales the picture that the item was made
/// with, so resizing again and again loses nothing. The item is made without a QObject parent and
/// belongs to the scene that it is added to.
class ResizablePixmapItem : public QObject, public QGraphicsPixmapItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ResizablePixmapItem)

public:
    /// A null \a pixmap gives an item that shows nothing.
    explicit ResizablePixmapItem(const QPixmap &pixmap);

    /// The square of a handle in item coordinates. Handles are numbered 1 to 8, clockwise from
    /// the top-left corner; any other number gives a square around the origin.
    QRectF handleRect(int handle) const;
    /// The lowest-numbered handle whose square contains \a itemPos, or 0.
    int handleAt(const QPointF &itemPos) const;
    /// Scales the image for a pointer that went from the press on the active handle to
    /// \a scenePos. The top-left corner stays where it is, whichever handle is dragged.
    void resizeTo(const QPointF &scenePos);
    /// Sets the cursor that fits the handle at \a itemPos.
    // Quirk: the pointer shows no resize cursor over a handle, because nothing calls this on
    // hovering; the handles themselves show where to drag.
    void cursorForPosition(const QPointF &itemPos);

    /// The image and the halves of the handles that stick out of it.
    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

signals:
    /// Emitted once for each change of position, transform, rotation or scale; resizing emits
    /// nothing.
    void itemModified();

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    int activeHandle = 0;
    QPointF pressScenePos;
    QRectF startRect;
    QPixmap sourcePixmap;
};
