#include "history/boardsnapshot.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"

#include <QGraphicsScene>
#include <QImage>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

using Stroke = std::pair<QPainterPath, QColor>;

const QString strokeKind = QStringLiteral("FreeDraw");
const QString noteKind = QStringLiteral("StickyNote");
const QString arrowKind = QStringLiteral("ArrowLine");
const QString imageKind = QStringLiteral("Pixmap");

std::optional<ItemState> stateOf(const QGraphicsItem *item)
{
    if (const auto *stroke = dynamic_cast<const FreeDrawItem *>(item)) {
        return ItemState{strokeKind, stroke->pos(),
                         QVariant::fromValue(Stroke(stroke->path(), stroke->color()))};
    }
    if (const auto *note = dynamic_cast<const StickyNoteItem *>(item))
        return ItemState{noteKind, note->pos(), QVariant::fromValue(note->noteColor())};
    if (const auto *arrow = dynamic_cast<const ArrowLineItem *>(item))
        return ItemState{arrowKind, arrow->pos(), arrow->line()};
    if (const auto *image = dynamic_cast<const ResizablePixmapItem *>(item))
        return ItemState{imageKind, image->pos(), image->pixmap()};
    return std::nullopt;
}

bool picturesEqual(const QPixmap &newer, const QPixmap &top)
{
    // Copies of one pixmap share their key: no need to look at the pixels.
    if (newer.cacheKey() == top.cacheKey())
        return true;
    return newer.size() == top.size() && newer.toImage() == top.toImage();
}

bool valuesEqual(const QString &kind, const QVariant &newer, const QVariant &top)
{
    if (kind == strokeKind)
        return newer.value<Stroke>() == top.value<Stroke>();
    if (kind == noteKind) {
        return newer.value<StickyNoteItem::NoteColor>() == top.value<StickyNoteItem::NoteColor>();
    }
    if (kind == arrowKind)
        return newer.toLineF() == top.toLineF();
    if (kind == imageKind)
        return picturesEqual(newer.value<QPixmap>(), top.value<QPixmap>());
    return true;
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
    if (state.type == strokeKind) {
        const auto [path, color] = state.data.value<Stroke>();
        auto *const stroke = new FreeDrawItem;
        stroke->setPath(path);
        stroke->setColor(color);
        item = stroke;
    } else if (state.type == noteKind) {
        auto *const note = new StickyNoteItem;
        note->setNoteColor(state.data.value<StickyNoteItem::NoteColor>());
        item = note;
    } else if (state.type == arrowKind) {
        auto *const arrow = new ArrowLineItem({}, {});
        arrow->setLine(state.data.toLineF());
        item = arrow;
    } else if (state.type == imageKind) {
        const auto pixmap = state.data.value<QPixmap>();
        if (!pixmap.isNull())
            item = new ResizablePixmapItem(pixmap);
    }
    if (item)
        item->setPos(state.pos);
    return item;
}
