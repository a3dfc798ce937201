// The kinds of items that a board holds, and the ways to go through them.
#pragma once

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"

#include <type_traits>

/// Calls \a visitor with a \c std::type_identity of the class of each kind of item that a board
/// holds, until it returns true. Returns whether it did.
///
/// This is the one list of the kinds. Code that treats them differently has one specialisation of a
/// template, or one overload of a function, per class and no chain of casts; so the compiler leads
/// whoever adds a class here to every place that has no answer for it yet.
template <typename Visitor> bool findBoardItemClass(const Visitor &visitor)
{
    const auto any = [&visitor]<typename... Items>(std::type_identity<Items>... classes) {
        return (visitor(classes) || ...);
    };
    return any(std::type_identity<FreeDrawItem>(), std::type_identity<StickyNoteItem>(),
               std::type_identity<ArrowLineItem>(), std::type_identity<ResizablePixmapItem>());
}

/// Calls \a visitor with \a item as the class that it is. Returns whether it is a board item; for
/// any other item, such as the text on a note, and for a null one \a visitor is not called.
template <typename Visitor> bool visitBoardItem(const QGraphicsItem *item, const Visitor &visitor)
{
    return findBoardItemClass([&]<typename Item>(std::type_identity<Item>) {
        const auto *const known = dynamic_cast<const Item *>(item);
        if (known)
            visitor(*known);
        return known != nullptr;
    });
}
