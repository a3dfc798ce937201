// Shows the board from its kept picture.
#include "painting/canvasview.h"

#include "items/arrowlineitem.h"

#include <QPainter>
#include <QPaintEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

CanvasView::CanvasView(QWidget *parent)
    : QGraphicsView(parent)
{
    // The toolkit still finds the exposed items, and notes where they were shown, but leaves drawing
    // them to drawItems().
    setOptimizationFlag(QGraphicsView::IndirectPainting);
}

void CanvasView::paintEvent(QPaintEvent *event)
{
    {
        const QScopedValueRollback painting(inPaintEvent, true);
        QGraphicsView::paintEvent(event);
    }
    if (!scene())
        return;
    // The toolkit exposes a deleted item by its bare rectangle, without blurred edges and heads.
    const QRegion rest = canvas.update(event->region());
    if (!rest.isEmpty())
        viewport()->update(rest);
    QPainter painter(viewport());
    painter.setClipRegion(event->region());
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, canvas.picture());
}

void CanvasView::drawItems(QPainter *painter, int count, QGraphicsItem *items[],
                           const QStyleOptionGraphicsItem options[])
{
    // Whoever has the view rendered elsewhere gets the items themselves.
    if (!inPaintEvent)
        QGraphicsView::drawItems(painter, count, items, options);
}

void CanvasView::hideEvent(QHideEvent *event)
{
    canvas.clear();
    QGraphicsView::hideEvent(event);
}

void CanvasView::repaintArrowHeads(const QList<QRectF> &changed)
{
    if (!scene())
        return;
    // The heads that are to vanish were there at the last change.
    const qreal reachBefore = std::exchange(arrowReach, 0);
    const auto items = scene()->items();
    for (const auto *item : items) {
        if (const auto *const arrow = dynamic_cast<const ArrowLineItem *>(item))
            arrowReach = std::max(arrowReach, arrow->headReach());
    }
    const qreal reach = std::max(arrowReach, reachBefore);
    canvas.setReach(reach);
    if (reach == 0)
        return;
    QList<QRectF> grown;
    grown.reserve(changed.size());
    for (const auto &region : changed)
        grown.append(region.adjusted(-reach, -reach, reach, reach));
    updateScene(grown);
}
