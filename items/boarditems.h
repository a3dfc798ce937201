// The kinds of items that a board holds, and the ways to go through them.
#pragma once

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"

#include <type_traits>
#include <utility>

/// A list of item classes.
template <typename... Items> struct ItemClasses
{ };

/// The classes of the items that a board holds, one a kind.
///
/// Code that treats the kinds differently has one specialisation of a template, or one overload of a
/// function, for each of these classes, and no chain of casts; so the compiler leads whoever adds a
/// class here to every place that has no answer for it yet.
using BoardItems = ItemClasses<FreeDrawItem, StickyNoteItem, ArrowLineItem, ResizablePixmapItem>;

namespace BoardItemsPrivate {

template <typename Item, typename AnyItem, typename Visitor>
bool visitAs(AnyItem *item, Visitor &visitor)
{
    using Known = std::conditional_t<std::is_const_v<AnyItem>, const Item, Item>;
    auto *const known = dynamic_cast<Known *>(item);
    if (known)
        visitor(*known);
    return known;
}

template <typename AnyItem, typename Visitor, typename... Items>
bool visitAny(AnyItem *item, Visitor &visitor, ItemClasses<Items...> /*classes*/)
{
    return (visitAs<Items>(item, visitor) || ...);
}

template <typename Visitor, typename... Items>
bool visitClasses(Visitor &visitor, ItemClasses<Items...> /*classes*/)
{
    return (visitor(std::type_identity<Items>()) || ...);
}

} // namespace BoardItemsPrivate

/// Calls \a visitor with \a item as the class that it is. Returns whether it is a board item; for any
/// other item, such as the text on a note, and for a null one \a visitor is not called.
template <typename AnyItem, typename Visitor> bool visitBoardItem(AnyItem *item, Visitor &&visitor)
{
    return BoardItemsPrivate::visitAny(item, visitor, BoardItems());
}

/// Calls \a visitor with a \c std::type_identity of each class of board items, until it returns true.
/// Returns whether it did.
template <typename Visitor> bool findBoardItemClass(Visitor &&visitor)
{
    return BoardItemsPrivate::visitClasses(visitor, BoardItems());
}
