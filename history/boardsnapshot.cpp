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

bool areSame(const QPainterPath &one, const QPainterPath &other)
{
    // The toolkit's comparison is quick when both share their points, and tolerant when not.
    if (one != other)
        return false;
    for (int i = 0; i < one.elementCount(); ++i) {
        const auto a = one.elementAt(i);
        const auto b = other.elementAt(i);
        if (a.x != b.x || a.y != b.y)
            return false;
    }
    return true;
}

bool areSame(const std::pair<QPainterPath, QColor> &one,
             const std::pair<QPainterPath, QColor> &other)
{
    return one.second == other.second && areSame(one.first, other.first);
}

bool areSame(StickyNoteItem::NoteColor one, StickyNoteItem::NoteColor other)
{
    return one == other;
}

bool areSame(QPointF one, QPointF other)
{
    return one.x() == other.x() && one.y() == other.y();
}

bool areSame(const QLineF &one, const QLineF &other)
{
    return areSame(one.p1(), other.p1()) && areSame(one.p2(), other.p2());
}

bool areSame(const QPixmap &one, const QPixmap &other)
{
    return one.cacheKey() == other.cacheKey();
}

/// Calls \a compare with the values of \a a and \a b as the type that items of \a kind have. Values
/// of a kind that is none of the board's are not compared: they count as the same.
template <typename Compare>
bool compareValues(const QString &kind, const QVariant &a, const QVariant &b,
                   const Compare &compare)
{
    bool equal = true;
    findBoardItemClass([&]<typename Item>(std::type_identity<Item>) {
        using Value = typename Record<Item>::Value;
        if (kind != Record<Item>::kind())
            return false;
        equal = compare(a.value<Value>(), b.value<Value>());
        return true;
    });
    return equal;
}

} // namespace

BoardSnapshot::BoardSnapshot(std::initializer_list<ItemState> states)
{
    for (const auto &state : states)
        append(state);
}

qsizetype BoardSnapshot::size() const
{
    qsizetype count = 0;
    for (const auto &part : parts)
        count += part.size();
    return count;
}

const ItemState &BoardSnapshot::at(qsizetype index) const
{
    auto part = parts.cbegin();
    for (; index >= part->size(); ++part)
        index -= part->size();
    return part->at(index);
}

void BoardSnapshot::append(const ItemState &state)
{
    if (parts.isEmpty() || parts.constLast().size() >= partSize)
        parts.append(Part());
    parts.last().append(state);
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

BoardSnapshot takeSnapshot(const QGraphicsScene &scene)
{
    const auto items = scene.items();
    BoardSnapshot snapshot;
    for (const auto *item : items) {
        if (const auto state = stateOf(item))
            snapshot.append(*state);
    }
    return snapshot;
}

bool snapshotsEqual(const BoardSnapshot &newer, const BoardSnapshot &top)
{
    const auto statesEqual = [](const ItemState &a, const ItemState &b) {
        const auto areEqualValues = [](const auto &one, const auto &other) {
            return areEqual(one, other);
        };
        // The comparison of points is the toolkit's fuzzy one.
        return a.type == b.type && a.pos == b.pos
            && compareValues(a.type, a.data, b.data, areEqualValues);
    };
    const auto sameSize = [](const auto &a, const auto &b) { return a.size() == b.size(); };
    if (std::ranges::equal(newer.parts, top.parts, sameSize)) {
        return std::ranges::equal(newer.parts, top.parts, [&](const auto &a, const auto &b) {
            return a.isSharedWith(b) || std::ranges::equal(a, b, statesEqual);
        });
    }
    return newer.size() == top.size()
        && std::ranges::equal(newer.states(), top.states(), statesEqual);
}

bool areSame(const ItemState &one, const ItemState &other)
{
    return one.type == other.type && areSame(one.pos, other.pos)
        && compareValues(one.type, one.data, other.data,
                         [](const auto &a, const auto &b) { return areSame(a, b); });
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
    for (const auto &state : snapshot.states()) {
        if (auto *const item = restoreItem(state))
            scene.addItem(item);
    }
}
