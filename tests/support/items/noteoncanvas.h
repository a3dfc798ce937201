// A note on a bare canvas.
#pragma once

#include "items/stickynoteitem.h"
#include "tests/support/items/itemcanvas.h"

#include <QGraphicsTextItem>

/// The text child of \a note.
inline QGraphicsTextItem *textOf(const StickyNoteItem &note)
{
    return qgraphicsitem_cast<QGraphicsTextItem *>(note.childItems().value(0));
}

/// A note with its top-left corner at (100, 100) of a canvas.
struct NoteOnCanvas
{
    static constexpr QPointF place{100, 100};

    ItemCanvas canvas;
    StickyNoteItem *note = canvas.add(new StickyNoteItem, place);

    /// A scene point on the paper, below a text of a few lines.
    static constexpr QPointF onPaper() { return place + QPointF(150, 250); }
    /// A scene point on the first line of the text.
    static constexpr QPointF onText() { return place + QPointF(20, 20); }
};
