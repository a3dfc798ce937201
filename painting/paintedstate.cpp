// Tells what of an item has changed since it was painted.
#include "painting/paintedstate.h"

#include "items/boarditems.h"

#include <QGraphicsTextItem>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace {

// What a pen paints beside its path, in widths: a joint or an end reaches half of one.
constexpr qreal penReach = 1.0;
// Blurred edges, in scene units.
constexpr qreal blur = 2.0;
// A hairline along an axis has no area of its own, and would intersect nothing.
constexpr qreal leastExtent = 0.01; // scene units

void describe(PaintedState &state, const FreeDrawItem &stroke)
{
    state.path = stroke.path();
    state.pen = stroke.QGraphicsPathItem::pen();
}

void describe(PaintedState &state, const StickyNoteItem &note)
{
    state.content = note.noteColor();
    state.uncertain = note.hasFocus();
}

void describe(PaintedState &state, const ArrowLineItem &arrow)
{
    state.line = arrow.line();
    state.pen = arrow.QGraphicsLineItem::pen();
    const qreal reach = arrow.headReach();
    state.headReach = reach;
    state.outlined = arrow.isSelected();
    state.area =
        arrow.sceneTransform().mapRect(arrow.boundingRect().adjusted(-reach, -reach, reach, reach));
}

void describe(PaintedState &state, const ResizablePixmapItem &image)
{
    state.content = image.pixmap().cacheKey();
}

/// Whether \a after goes on where \a before ends; lengthened is what is new of it.
bool isLengthened(const QPainterPath &before, const QPainterPath &after, QRectF &lengthened)
{
    const int known = before.elementCount();
    const int count = after.elementCount();
    if (known < 1 || count <= known)
        return false;
    for (int i = 0; i < known; ++i) {
        if (before.elementAt(i) != after.elementAt(i))
            return false;
    }
    // The line before the new ones as well: where they meet, its end becomes a joint. A curve lies among
    // the points that bend it.
    QPolygonF tail;
    for (int i = std::max(0, known - 2); i < count; ++i)
        tail << after.elementAt(i);
    lengthened = tail.boundingRect();
    return true;
}

} // namespace

PaintedState paintedState(const QGraphicsItem *item)
{
    PaintedState state;
    state.item = item;
    state.transform = item->sceneTransform();
    state.area = state.transform.mapRect(item->boundingRect())
                     .adjusted(-leastExtent, -leastExtent, leastExtent, leastExtent);
    state.opacity = item->effectiveOpacity();
    state.z = item->zValue();
    state.selected = item->isSelected();
    if (visitBoardItem(item, [&state](const auto &known) { describe(state, known); }))
        return state;
    if (const auto *const text = qgraphicsitem_cast<const QGraphicsTextItem *>(item)) {
        state.content = text->document()->revision();
        state.text = text->toPlainText();
        // The cursor blinks, and a selection is no revision.
        state.uncertain = text->hasFocus() || text->textCursor().hasSelection();
        state.outlined = text->hasFocus() || text->isSelected();
    } else {
        state.uncertain = true;
        state.outlined = true;
    }
    return state;
}

QRectF changedArea(const PaintedState &before, const PaintedState &after)
{
    const bool sameFrame = before.transform == after.transform && before.opacity == after.opacity
        && before.z == after.z && before.selected == after.selected && !before.uncertain
        && !after.uncertain && before.content == after.content && before.text == after.text
        && before.pen == after.pen && before.line == after.line;
    if (sameFrame && before.path == after.path)
        return before.area == after.area ? QRectF() : before.area.united(after.area);
    QRectF tail;
    if (sameFrame && isLengthened(before.path, after.path, tail)) {
        const qreal reach = penReach * after.pen.widthF() + blur;
        return after.transform.mapRect(tail.adjusted(-reach, -reach, reach, reach));
    }
    return before.area.united(after.area);
}
