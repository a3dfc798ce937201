// Remembers something about each item of a scene, and finds those that a change concerns.
#pragma once

#include "items/boarditems.h"

#include <QGraphicsObject>
#include <QGraphicsScene>
#include <QPointer>
#include <QRectF>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// What is noted about the items of a scene, and where each of them was then.
///
/// A scene tells of a change by rectangles: that of an item before it was moved or reshaped, that
/// after it, or a part of an item that looks different. So most changed items are found by the place
/// at which they were noted, and only where nothing noted explains a rectangle the scene is asked
/// what lies there. What a change costs then depends on the change and not on the board.
template <typename Note> class NotedItems
{
public:
    /// Whether \a changed, as the scene told it, may mean any item: also deleted ones, of which a
    /// scene tells only by naming all of itself.
    static bool concernsAll(const QGraphicsScene &scene, const QList<QRectF> &changed)
    {
        constexpr qsizetype many = 64; // looking at everything is then as fast
        return changed.size() > many || std::ranges::any_of(changed, [&](const QRectF &rect) {
                   return rect.contains(scene.sceneRect());
               });
    }

    /// The note about \a item, which need not exist any more; null when there is none.
    const Note *find(const QGraphicsItem *item) const
    {
        const auto found = entries.find(item);
        return found == entries.end() ? nullptr : &found->second.note;
    }

    /// Notes \a note about \a item, and where it is now, in place of what was noted before.
    void insert(const QGraphicsItem *item, Note note)
    {
        erase(item);
        const QRectF place = item->sceneBoundingRect();
        byPlace.emplace(hash(place), item);
        entries.emplace(item, Entry{std::move(note), place, objectOf(item)});
    }

    void erase(const QGraphicsItem *item)
    {
        const auto entry = entries.find(item);
        if (entry == entries.end())
            return;
        const auto [first, last] = byPlace.equal_range(hash(entry->second.place));
        byPlace.erase(
            std::find_if(first, last, [&](const auto &other) { return other.second == item; }));
        entries.erase(entry);
    }

    void clear()
    {
        entries.clear();
        byPlace.clear();
    }

    size_t size() const { return entries.size(); }

    /// Calls \a visitor with each item, which need not exist any more, and its note.
    template <typename Visitor> void visit(const Visitor &visitor) const
    {
        for (const auto &[item, entry] : entries)
            visitor(item, entry.note);
    }

    /// Calls \a review once with each item that may have come or changed when \a scene tells that it
    /// has \a changed there. It returns whether the item has, and may note it anew.
    template <typename Review>
    void reviewChanged(const QGraphicsScene &scene, const QList<QRectF> &changed,
                       const Review &review)
    {
        std::unordered_set<const QGraphicsItem *> reviewed;
        std::vector<QRectF> explained;
        for (const QRectF &rect : changed) {
            for (const auto *item : notedAt(rect)) {
                if (!reviewed.insert(item).second || !review(item))
                    continue;
                explained.push_back(rect);
                explained.push_back(item->sceneBoundingRect());
            }
        }
        for (const QRectF &rect : changed) {
            if (std::ranges::find(explained, rect) != explained.end())
                continue;
            explained.push_back(rect);
            const auto items = scene.items(rect, Qt::IntersectsItemBoundingRect);
            for (const auto *item : items) {
                if (reviewed.insert(item).second)
                    review(item);
            }
        }
    }

private:
    struct Entry
    {
        Note note;
        QRectF place;
        QPointer<const QObject> object; // null when it is gone
    };

    static size_t hash(const QRectF &rect)
    {
        return qHashMulti(0, rect.x(), rect.y(), rect.width(), rect.height());
    }

    static QPointer<const QObject> objectOf(const QGraphicsItem *item)
    {
        QPointer<const QObject> object(item->toGraphicsObject());
        visitBoardItem(item, [&object](const auto &known) { object = &known; });
        return object;
    }

    /// The items that were noted exactly at \a place and still exist.
    std::vector<const QGraphicsItem *> notedAt(const QRectF &place) const
    {
        std::vector<const QGraphicsItem *> items;
        const auto [first, last] = byPlace.equal_range(hash(place));
        for (auto here = first; here != last; ++here) {
            const Entry &entry = entries.at(here->second);
            if (entry.place == place && entry.object && here->second->scene())
                items.push_back(here->second);
        }
        return items;
    }

    std::unordered_map<const QGraphicsItem *, Entry> entries;
    std::unordered_multimap<size_t, const QGraphicsItem *> byPlace;
};
