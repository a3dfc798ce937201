// The present snapshot of a board, brought up to date with each change.
#pragma once

#include "history/boardsnapshot.h"
#include "items/noteditems.h"

class QGraphicsScene;

/// Knows what takeSnapshot() would give, and looks only at what has changed in order to know it.
class BoardRecorder
{
public:
    /// The recorder of \a scene, which has to outlive it.
    explicit BoardRecorder(const QGraphicsScene &scene);

    /// The snapshot of the board as it is now. Looks at all items.
    const BoardSnapshot &snapshot();

    /// The snapshot of the board when nothing has changed but what the scene told with its signal
    /// changed().
    const BoardSnapshot &snapshotAfter(const QList<QRectF> &changed);

private:
    struct Place
    {
        const QGraphicsItem *item;
        qreal z;
    };
    using Places = std::vector<Place>;
    struct Note
    {
        ItemState state;
        qreal z;
    };

    bool review(const QGraphicsItem *item);
    void replace(const QGraphicsItem *item, const ItemState &state);
    void insert(const QGraphicsItem *item, const ItemState &state);

    const QGraphicsScene &board;
    BoardSnapshot now;
    std::vector<Places> places; // of the states of each of its parts
    size_t lastPart = 0; // the part that changed last, and most probably will again
    NotedItems<Note> noted;
    int newItems = 0; // since the beginning of a review
    bool orderIsKnown = false;
};
