// The stroke: what the pen draws on the board.
#pragma once

#include <QGraphicsPathItem>
#include <QObject>
#include <QPen>

/// One pen stroke on the board: a painter path in scene units, drawn with the item's own pen.
///
/// The stroke is inert: it takes no mouse buttons and can be neither selected nor moved. It is
/// made without a QObject parent and belongs to the scene that it is added to.
class FreeDrawItem : public QObject, public QGraphicsPathItem
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FreeDrawItem)

public:
    /// Makes an empty black stroke, 2 units wide with round ends, at z value 1.
    explicit FreeDrawItem(QGraphicsItem *parent = nullptr);

    void setColor(const QColor &color);
    /// \a width is in whole scene units. One that no pen can have, below 0 or above 32767, leaves
    /// the width as it is; the toolkit then warns on the error output.
    void setWidth(int width);
    void setPath(const QPainterPath &path);

    /// The colour that the stroke is drawn with. Its width is the base item's pen().
    QColor color() const { return pen.color(); }

signals:
    /// Emitted once by each setter, also when the value stays the same.
    void itemModified();

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    QPen pen;
};
