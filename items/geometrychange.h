// Which of the toolkit's notifications tell that an item was moved or transformed.
#pragma once

#include <QGraphicsItem>

// Quirk: moving a note or an arrow that is still selected after saving does not mark the board
// unsaved, because the toolkit sends these notifications only to items with
// ItemSendsGeometryChanges, and of the four kinds only images set it. Selecting marks the board.

/// Whether \a change tells that an item's place on the board or its shape there has changed.
constexpr bool isGeometryChange(QGraphicsItem::GraphicsItemChange change)
{
    return change == QGraphicsItem::ItemPositionHasChanged
        || change == QGraphicsItem::ItemTransformHasChanged
        || change == QGraphicsItem::ItemRotationHasChanged
        || change == QGraphicsItem::ItemScaleHasChanged;
}
