// Has an item of the board paint itself, and of what lies far from sight only what can be seen.
#include "painting/itempainting.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "painting/visiblepath.h"
#include "painting/wholenumbers.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace {

QStyleOptionGraphicsItem optionFor(const QGraphicsItem &item)
{
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_None;
    option.rect = (item.boundingRect() & wholeNumbers).toRect();
    option.exposedRect = item.boundingRect();
    option.state.setFlag(QStyle::State_Enabled, item.isEnabled());
    option.state.setFlag(QStyle::State_Selected, item.isSelected());
    option.state.setFlag(QStyle::State_HasFocus, item.hasFocus());
    return option;
}

// What lies farther from what is seen is not painted, in units of the item: the raster engine would
// walk through every row of pixels up to there.
constexpr qreal farthest = 4096;

QRectF nearOf(const QRectF &view)
{
    return view.adjusted(-farthest, -farthest, farthest, farthest);
}

bool isNear(const ArrowLineItem &arrow, const QRectF &view)
{
    return nearOf(view).contains(arrow.line().p1()) && nearOf(view).contains(arrow.line().p2());
}

/// Paints of \a arrow what can be seen in \a view: one that ends where it gets out of sight.
void paintFarArrow(QPainter &painter, const ArrowLineItem &arrow, const QRectF &view,
                   const QStyleOptionGraphicsItem &option)
{
    const auto line = visibleLine(arrow.line(), nearOf(view));
    if (!line)
        return;
    ArrowLineItem standIn(line->p1(), line->p2());
    static_cast<QGraphicsLineItem &>(standIn).setPen(arrow.QGraphicsLineItem::pen());
    standIn.paint(&painter, &option);
}

/// Has \a item, which is no stroke, paint what can be seen of it in \a pixels.
void paintOther(QPainter &painter, QGraphicsItem &item, const QRect &pixels, QWidget *viewport)
{
    const auto option = optionFor(item);
    const QRectF view = painter.deviceTransform().inverted().mapRect(QRectF(pixels));
    const auto *const arrow = dynamic_cast<const ArrowLineItem *>(&item);
    if (arrow && !isNear(*arrow, view))
        paintFarArrow(painter, *arrow, view, option);
    else
        item.paint(&painter, &option, viewport);
}

} // namespace

void paintAsViewed(QPainter &painter, QGraphicsItem &item, const QTransform &toView,
                   const QRect &pixels, QWidget *viewport)
{
    painter.save();
    // In the very numbers of the toolkit's own views: halves of pixels are rounded alike.
    painter.setWorldTransform(item.deviceTransform(toView));
    painter.setOpacity(item.effectiveOpacity());
    if (const auto *const stroke = dynamic_cast<const FreeDrawItem *>(&item)) {
        painter.setPen(stroke->QGraphicsPathItem::pen());
        painter.setBrush(stroke->brush());
        drawVisiblePath(painter, stroke->path(), pixels);
    } else {
        paintOther(painter, item, pixels, viewport);
    }
    painter.restore();
}
