#pragma once

#include <QGraphicsItem>

/// Whether \a change tells that an item's place on the board or its shape there has changed.
///
/// The toolkit sends these notifications only to items with ItemSendsGeometryChanges. Images set
/// that flag; strokes, notes and arrows do not, on purpose: moving them is no modification.
constexpr bool isGeometryChange(QGraphicsItem::GraphicsItemChange change)
{
    return change == QGraphicsItem::ItemPositionHasChanged
        || change == QGraphicsItem::ItemTransformHasChanged
        || change == QGraphicsItem::ItemRotationHasChanged
        || change == QGraphicsItem::ItemScaleHasChanged;
}
