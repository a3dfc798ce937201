// Takes, compares and restores snapshots of the board.
#include "history/boardsnapshot.h"

#include "items/boarditems.h"

#include <QGraphicsScene>
#include <QImage>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

/// What the history keeps of a class of items. Each class has
///   kind()     its name in ItemState::type
///   Value      the type of its ItemState::data
///   valueOf()  that value of an item
///   make()     a new item with a value, or null where there is none
template <typename Item> struct Record;

template <> struct Record<FreeDrawItem>
{
    using Value = std::pair<QPainterPath, QColor>;

    static QString kind() { return QStringLiteral("FreeDraw"); }
    static Value valueOf(const FreeDrawItem &stroke) { return {stroke.path(), stroke.color()}; }
    static QGraphicsItem *make(const Value &value)
    {
        auto *const stroke = new FreeDrawItem;
        stroke->setPath(value.first);
        stroke->setColor(value.second);
        return stroke;
    }
};

template <> struct Record<StickyNoteItem>
{
    using Value = StickyNoteItem::NoteColor;

    static QString kind() { return QStringLiteral("StickyNote"); }
    static Value valueOf(const StickyNoteItem &note) { return note.noteColor(); }
    static QGraphicsItem *make(Value color)
    {
        auto *const note = new StickyNoteItem;
        note->setNoteColor(color);
        return note;
    }
};

template <> struct Record<ArrowLineItem>
{
    using Value = QLineF;

    static QString kind() { return QStringLiteral("ArrowLine"); }
    static Value valueOf(const ArrowLineItem &arrow) { return arrow.line(); }
    static QGraphicsItem *make(const Value &line)
    {
        auto *const arrow = new ArrowLineItem({}, {});
        arrow->setLine(line);
        return arrow;
    }
};

template <> struct Record<ResizablePixmapItem>
{
    using Value = QPixmap;

    static QString kind() { return QStringLiteral("Pixmap"); }
    static Value valueOf(const ResizablePixmapItem &image) { return image.pixmap(); }
    static QGraphicsItem *make(const Value &pixmap)
    {
        return pixmap.isNull() ? nullptr : new ResizablePixmapItem(pixmap);
    }
};

template <typename Value> bool areEqual(const Value &newer, const Value &top)
{
    return newer == top;
}

bool areEqual(const QPixmap &newer, const QPixmap &top)
{
    // Copies of one pixmap share their key: no need to look at the pixels.
    if (newer.cacheKey() == top.cacheKey())
        return true;
    return newer.size() == top.size() && newer.toImage() == top.toImage();
}

std::optional<ItemState> stateOf(const QGraphicsItem *item)
{
    std::optional<ItemState> state;
    visitBoardItem(item, [&state]<typename Item>(const Item &known) {
        state = {Record<Item>::kind(), known.pos(),
                 QVariant::fromValue(Record<Item>::valueOf(known))};
    });
    return state;
}

/// Values of a kind that is none of the board's are not compared: they count as the same.
bool valuesEqual(const QString &kind, const QVariant &newer, const QVariant &top)
{
    bool equal = true;
    findBoardItemClass([&]<typename Item>(std::type_identity<Item>) {
        using Value = typename Record<Item>::Value;
        if (kind != Record<Item>::kind())
            return false;
        equal = areEqual(newer.value<Value>(), top.value<Value>());
        return true;
    });
    return equal;
}

} // namespace

BoardSnapshot takeSnapshot(const QGraphicsScene &scene)
{
    const auto items = scene.items();
    BoardSnapshot snapshot;
    snapshot.reserve(items.size());
    for (const auto *item : items) {
        if (auto state = stateOf(item))
            snapshot.append(*std::move(state));
    }
    return snapshot;
}

bool snapshotsEqual(const BoardSnapshot &newer, const BoardSnapshot &top)
{
    return std::ranges::equal(newer, top, [](const ItemState &a, const ItemState &b) {
        // The comparison of points is the toolkit's fuzzy one.
        return a.type == b.type && a.pos == b.pos && valuesEqual(a.type, a.data, b.data);
    });
}

QGraphicsItem *restoreItem(const ItemState &state)
{
    QGraphicsItem *item = nullptr;
    findBoardItemClass([&]<typename Item>(std::type_identity<Item>) {
        if (state.type != Record<Item>::kind())
            return false;
        item = Record<Item>::make(state.data.value<typename Record<Item>::Value>());
        return true;
    });
    if (item)
        item->setPos(state.pos);
    return item;
}

void restoreSnapshot(QGraphicsScene &scene, const BoardSnapshot &snapshot)
{
    scene.clear();
    // Quirk: after undo or redo, items of one level lie in reverse order, because they are added in
    // the order of the snapshot, topmost first. Where such items differ, the snapshot that follows
    // counts as a new state and ends the redo history.
    for (const auto &state : snapshot) {
        if (auto *const item = restoreItem(state))
            scene.addItem(item);
    }
}
