// Brings the snapshot of a board up to date by looking at what has changed.
#include "history/boardrecorder.h"

#include <QGraphicsScene>

#include <algorithm>
#include <iterator>

BoardRecorder::BoardRecorder(const QGraphicsScene &scene)
    : board(scene)
{ }

const BoardSnapshot &BoardRecorder::snapshot()
{
    now = {};
    places.clear();
    noted.clear();
    lastPart = 0;
    const auto items = board.items();
    for (const auto *item : items) {
        const auto state = stateOf(item);
        if (!state)
            continue;
        now.append(*state);
        places.resize(static_cast<size_t>(now.parts.size()));
        places.back().push_back({item, item->zValue()});
        noted.insert(item, {*state, item->zValue()});
    }
    return now;
}

const BoardSnapshot &BoardRecorder::snapshotAfter(const QList<QRectF> &changed)
{
    if (NotedItems<Note>::concernsAll(board, changed))
        return snapshot();
    newItems = 0;
    orderIsKnown = true;
    noted.reviewChanged(board, changed, [this](const auto *item) { return review(item); });
    return orderIsKnown ? now : snapshot();
}

/// Takes over how \a item is now. Returns whether it has changed.
bool BoardRecorder::review(const QGraphicsItem *item)
{
    const auto state = stateOf(item);
    if (!state)
        return false;
    const auto *const before = noted.find(item);
    if (!before) {
        insert(item, *state);
        // Which of several lies above the other, only the scene can tell.
        orderIsKnown = orderIsKnown && ++newItems == 1;
    } else if (before->z != item->zValue()) {
        orderIsKnown = false;
    } else if (areSame(before->state, *state)) {
        return false;
    } else {
        replace(item, *state);
    }
    noted.insert(item, {*state, item->zValue()});
    return true;
}

void BoardRecorder::replace(const QGraphicsItem *item, const ItemState &state)
{
    const auto placeIn = [item](const Places &part) {
        return std::ranges::find(part, item, &Place::item);
    };
    const auto contains = [&](const Places &part) { return placeIn(part) != part.end(); };
    if (!contains(places[lastPart])) {
        const auto part = std::ranges::find_if(places, contains);
        lastPart = static_cast<size_t>(std::distance(places.begin(), part));
    }
    const auto index = std::distance(places[lastPart].cbegin(), placeIn(places[lastPart]));
    now.parts[static_cast<qsizetype>(lastPart)][index] = state;
}

/// Puts \a item, which is new, above all others of its level.
void BoardRecorder::insert(const QGraphicsItem *item, const ItemState &state)
{
    const qreal z = item->zValue();
    const auto below = [z](const Place &place) { return place.z <= z; };
    const auto part =
        std::ranges::find_if(places, [&](const Places &others) { return below(others.back()); });
    if (part == places.end()) {
        now.append(state);
        places.resize(static_cast<size_t>(now.parts.size()));
        places.back().push_back({item, z});
        return;
    }
    lastPart = static_cast<size_t>(std::distance(places.begin(), part));
    const auto place = std::ranges::find_if(*part, below);
    const auto index = std::distance(part->begin(), place);
    auto &states = now.parts[static_cast<qsizetype>(lastPart)];
    states.insert(index, state);
    part->insert(place, {item, z});
    if (states.size() < 2 * BoardSnapshot::partSize)
        return;
    now.parts.insert(static_cast<qsizetype>(lastPart) + 1, states.mid(BoardSnapshot::partSize));
    now.parts[static_cast<qsizetype>(lastPart)].resize(BoardSnapshot::partSize);
    const auto middle = part->begin() + BoardSnapshot::partSize;
    Places rest(middle, part->end());
    part->erase(middle, part->end());
    places.insert(part + 1, std::move(rest));
}
