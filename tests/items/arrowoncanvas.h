// An arrow on a bare canvas.
#pragma once

#include "items/arrowlineitem.h"
#include "tests/support/items/itemcanvas.h"

#include <QPen>

/// The pen that \a arrow is drawn with.
inline QPen penOf(const ArrowLineItem &arrow)
{
    return arrow.QGraphicsLineItem::pen();
}

/// An arrow from (100, 100) to (300, 100) on a canvas.
struct ArrowOnCanvas
{
    static constexpr QPointF onLine{150, 100};

    ItemCanvas canvas;
    ArrowLineItem *arrow = canvas.add(new ArrowLineItem({100, 100}, {300, 100}));
};
