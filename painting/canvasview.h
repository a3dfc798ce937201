// The view of the board, which paints from a kept picture.
#pragma once

#include "painting/canvasframe.h"

#include <QGraphicsView>

/// A graphics view that shows its scene from a picture which it keeps up to date, see CanvasFrame.
/// Everything else is the toolkit's, its class name for style sheets and look-ups, too; but there is
/// neither a foreground nor a rubber band.
class CanvasView : public QGraphicsView
{
public:
    explicit CanvasView(QWidget *parent = nullptr);

    const CanvasFrame &frame() const { return canvas; }

    /// Has more painted than the \a changed regions of the scene: the heads of arrows reach outside
    /// their items' bounding rectangles, and what is left of a moved or deleted one would stay in
    /// sight. To be called whenever the scene changes.
    void repaintArrowHeads(const QList<QRectF> &changed);

protected:
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void drawItems(QPainter *painter, int count, QGraphicsItem *items[],
                   const QStyleOptionGraphicsItem options[]) override;

private:
    CanvasFrame canvas{*this};
    bool inPaintEvent = false;
    // The farthest that an arrow's head reached outside its bounding rectangle at the last change.
    qreal arrowReach = 0;
};
