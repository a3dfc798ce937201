// An item of each kind, for tests that hold for all of them.
#pragma once

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/datarows.h"

#include <QPixmap>
#include <QTest>

/// Makes an item, which is the caller's.
using ItemMaker = QGraphicsItem *(*)();

inline QGraphicsItem *makeStroke()
{
    auto *const stroke = new FreeDrawItem;
    stroke->setPath(pathThrough({{0, 0}, {30, 40}}));
    return stroke;
}

inline QGraphicsItem *makeArrow()
{
    return new ArrowLineItem({0, 0}, {30, 40});
}

inline QGraphicsItem *makeNote()
{
    return new StickyNoteItem;
}

inline QGraphicsItem *makePicture()
{
    QPixmap pixmap(30, 40);
    pixmap.fill(Qt::red);
    return new ResizablePixmapItem(pixmap);
}

/// Adds the column "make" of ItemMaker, and a row for each kind.
inline void addItemKinds()
{
    QTest::addColumn<ItemMaker>("make");
    addRow<ItemMaker>("a stroke", makeStroke);
    addRow<ItemMaker>("an arrow", makeArrow);
    addRow<ItemMaker>("a note", makeNote);
    addRow<ItemMaker>("a picture", makePicture);
}
