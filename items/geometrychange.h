// Which of the toolkit's notifications tell that an item was moved or transformed.
#pragma once

#include <QGraphicsItem>

// Quirk: moving an opened note or arrow does not mark the board unsaved, moving an image does,
// because the toolkit sends these notifications only to items with ItemSendsGeometryChanges, which
// of all items only images set. (What selects the note or arrow marks the board anyway.)

/// Whether \a change tells that an item's place on the board or its shape there has changed.
constexpr bool isGeometryChange(QGraphicsItem::GraphicsItemChange change)
{
    return change == QGraphicsItem::ItemPositionHasChanged
        || change == QGraphicsItem::ItemTransformHasChanged
        || change == QGraphicsItem::ItemRotationHasChanged
        || change == QGraphicsItem::ItemScaleHasChanged;
}
