// Keeps the picture of a board up to date with as little painting as possible.
#include "painting/canvasframe.h"

#include "items/freedrawitem.h"
#include "painting/itempainting.h"
#include "painting/wholenumbers.h"

#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <ranges>
#include <utility>

namespace {

constexpr QRgb paper = 0xffffffff;
constexpr QRgb nothing = 0;

QRgb *lineOf(QImage &image, int y)
{
    return reinterpret_cast<QRgb *>(image.scanLine(y));
}

void fill(QImage &image, const QRect &pixels, QRgb color)
{
    for (int y = pixels.top(); y <= pixels.bottom(); ++y)
        std::fill_n(lineOf(image, y) + pixels.left(), pixels.width(), color);
}

void copy(const QImage &from, QImage &to, const QRect &pixels)
{
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        const auto *const line = reinterpret_cast<const QRgb *>(from.constScanLine(y));
        std::copy_n(line + pixels.left(), pixels.width(), lineOf(to, y) + pixels.left());
    }
}

/// Keeps \a painter, whose device has a ratio of its own, inside \a pixels.
void clip(QPainter &painter, const QRect &pixels)
{
    const qreal ratio = painter.device()->devicePixelRatio();
    painter.setClipRect(QRectF(QPointF(pixels.topLeft()) / ratio, QSizeF(pixels.size()) / ratio));
}

/// Whether the raster engine draws \a stroke as a line without width. What that covers depends a little on
/// where it is cut off; so it is the same everywhere only if it is always laid down from its coverage.
bool isHairline(const FreeDrawItem &stroke, const QTransform &toPixels)
{
    return stroke.QGraphicsPathItem::pen().widthF() * std::sqrt(std::abs(toPixels.determinant()))
        <= 1;
}

} // namespace

CanvasFrame::CanvasFrame(const QGraphicsView &view)
    : canvas(view)
{ }

void CanvasFrame::clear()
{
    clearPicture();
    coverages.clear();
}

void CanvasFrame::clearPicture()
{
    image = {};
    unprepared = {};
    painted.clear();
    outlined.clear();
    layers = {};
    reach = 0;
}

qsizetype CanvasFrame::bytes() const
{
    // A note stands in a table and, by its place, in another.
    constexpr size_t bytesPerNote = sizeof(PaintedState) + 256;
    return image.sizeInBytes() + layers.beneath.sizeInBytes() + layers.above.sizeInBytes()
        + coverages.bytes() + static_cast<qsizetype>(painted.size() * bytesPerNote);
}

QRect CanvasFrame::toPixels(const QRectF &sceneRect) const
{
    return (toDevice.mapRect(sceneRect) & wholeNumbers).toAlignedRect().adjusted(-1, -1, 1, 1);
}

QRectF CanvasFrame::toScene(const QRect &pixels) const
{
    return toDevice.inverted().mapRect(QRectF(pixels));
}

QRegion CanvasFrame::toViewport(const QRegion &pixels) const
{
    const qreal ratio = image.devicePixelRatio();
    QRegion units;
    for (const QRect &part : pixels &image.rect()) {
        units +=
            QRectF(QPointF(part.topLeft()) / ratio, QSizeF(part.size()) / ratio).toAlignedRect();
    }
    return units;
}

QRegion CanvasFrame::follow(const QList<QRectF> &changed)
{
    if (image.isNull() || !canvas.scene())
        return {};
    QRegion differing;
    // Undone or opened items rest, and so do all others when one was deleted.
    if (NotedItems<PaintedState>::concernsAll(*canvas.scene(), changed)) {
        differing = reviewAll();
        layers = {};
        return toViewport(paintAll(differing));
    }

    std::unordered_set<const QGraphicsItem *> wholes;
    painted.reviewChanged(*canvas.scene(), changed, [&](const auto *item) {
        const bool differs = review(item, differing) || reviewText(item, differing);
        if (differs) {
            moving.insert(item);
            wholes.insert(item->topLevelItem());
        }
        return differs;
    });
    if (wholes.empty())
        return {};
    const auto *const only = wholes.size() == 1 ? *wholes.begin() : nullptr;
    const bool again = only && only == std::exchange(lastChanged, only);
    QRegion anew = differing.boundingRect() & image.rect();
    if (!again || !paintBetweenLayers(only, anew.boundingRect())) {
        layers = {};
        anew = paintAnew(differing);
    }
    moving.clear();
    return toViewport(anew);
}

QRegion CanvasFrame::matchView()
{
    if (!canvas.scene() || canvas.viewport()->size().isEmpty())
        return {};
    const qreal ratio = canvas.viewport()->devicePixelRatioF();
    const QSize size = (QSizeF(canvas.viewport()->size()) * ratio).toSize();
    toView = canvas.viewportTransform();
    const QTransform transform = toView * QTransform::fromScale(ratio, ratio);
    const auto [fraction, place] = StrokeCoverage::split(transform);
    const auto [oldFraction, oldPlace] = StrokeCoverage::split(toDevice);
    toDevice = transform;
    if (image.size() == size && image.devicePixelRatio() == ratio && fraction == oldFraction) {
        if (place == oldPlace)
            return {};
        layers = {};
        return toViewport(paintAnew(scroll(place - oldPlace) + dashedOutlines()));
    }

    // What is kept of strokes holds for one scale, and for places that are whole pixels apart: of
    // those there are few, and a hand that scrolls comes back to them.
    const bool sameScale = QTransform(fraction.m11(), fraction.m12(), fraction.m21(),
                                      fraction.m22(), oldFraction.dx(), oldFraction.dy())
        == oldFraction;
    if (sameScale)
        clearPicture();
    else
        clear();
    image = QImage(size, QImage::Format_RGB32);
    if (image.isNull())
        return {}; // there is no memory for it
    image.setDevicePixelRatio(ratio);
    const auto items = canvas.scene()->items();
    for (const auto *item : items)
        reach = std::max(reach, paintedState(item).headReach);
    reviewAll();
    return toViewport(paintAll(image.rect()));
}

/// Paints \a pending of all that is in sight. As long as nothing is kept, all strokes paint themselves,
/// which takes less than preparing them, and so a board opens sooner.
QRegion CanvasFrame::paintAll(const QRegion &pending)
{
    if (!coverages.isEmpty())
        return paintAnew(pending);
    const QScopedValueRollback onlyPainting(isOnlyPainting, true);
    unprepared.clear();
    const auto items = itemsIn(image.rect());
    for (const auto *item : items) {
        if (const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item))
            unprepared.emplace_back(stroke);
    }
    return paintAnew(pending);
}

/// Moves the picture by \a step and returns what comes into sight, all in pixels.
QRegion CanvasFrame::scroll(QPoint step)
{
    const QRect all = image.rect();
    const QRect kept = all.intersected(all.translated(step));
    const auto copyRow = [&](int y) {
        constexpr qsizetype bytes = sizeof(QRgb);
        std::memmove(image.scanLine(y) + kept.left() * bytes,
                     image.constScanLine(y - step.y()) + (kept.left() - step.x()) * bytes,
                     static_cast<size_t>(kept.width()) * bytes);
    };
    // Away from where the rows go, so that none is overwritten before it is copied.
    if (step.y() > 0) {
        for (int y = kept.bottom(); y >= kept.top(); --y)
            copyRow(y);
    } else {
        for (int y = kept.top(); y <= kept.bottom(); ++y)
            copyRow(y);
    }
    return QRegion(all) - kept;
}

/// The items that may show in \a pixels, the lowest first.
QList<QGraphicsItem *> CanvasFrame::itemsIn(const QRect &pixels) const
{
    // Hairlines reach half a pixel outside of their bounding rectangles.
    const QRectF place = toScene(pixels.adjusted(-1, -1, 1, 1));
    return canvas.scene()->items(place.adjusted(-reach, -reach, reach, reach),
                                 Qt::IntersectsItemBoundingRect, Qt::AscendingOrder);
}

void CanvasFrame::note(const QGraphicsItem *item, PaintedState state)
{
    reach = std::max(reach, state.headReach);
    if (state.outlined)
        outlined.insert(item);
    else
        outlined.erase(item);
    painted.insert(item, std::move(state));
}

void CanvasFrame::forget(const QGraphicsItem *item)
{
    painted.erase(item);
    outlined.erase(item);
}

/// Compares \a item with how it was painted, notes how it is now, and adds the pixels that are to
/// differ for that to \a differing. Returns whether any do.
bool CanvasFrame::review(const QGraphicsItem *item, QRegion &differing)
{
    PaintedState state = paintedState(item);
    const auto *const before = painted.find(item);
    const QRectF area = before ? changedArea(*before, state) : state.area;
    if (area.isEmpty())
        return false;
    differing += toPixels(area);
    note(item, std::move(state));
    // They go with it, and the scene need not tell of them.
    const auto children = item->childItems();
    for (const auto *child : children)
        review(child, differing);
    return true;
}

/// Takes an item that the scene told of, and that looks as it did, for changed if it is a text: its
/// cursor is seen without the focus too, where the window is not the active one and where something
/// may be dropped.
bool CanvasFrame::reviewText(const QGraphicsItem *item, QRegion &differing) const
{
    const auto *const state = painted.find(item);
    if (!state || !qgraphicsitem_cast<const QGraphicsTextItem *>(item))
        return false;
    differing += toPixels(state->area);
    return true;
}

/// Reviews all items that are in sight and forgets all others. Returns the pixels that are to differ.
QRegion CanvasFrame::reviewAll()
{
    QRegion differing;
    std::unordered_set<const QGraphicsItem *> present;
    const auto items = itemsIn(image.rect());
    for (const auto *item : items) {
        present.insert(item);
        review(item, differing);
    }
    std::vector<const QGraphicsItem *> gone;
    painted.visit([&](const auto *item, const PaintedState &state) {
        if (present.contains(item))
            return;
        differing += toPixels(state.area);
        gone.push_back(item);
    });
    for (const auto *item : gone)
        forget(item);

    constexpr size_t someMore = 1000; // strokes that were undone, or have scrolled out of sight
    if (bytes() > memoryLimit / 2 || coverages.size() > 2 * painted.size() + someMore)
        coverages.dropUnused(*canvas.scene());
    return differing;
}

/// Paints of \a pixels what is in sight, and whatever else is seen to differ there. Returns all that was
/// painted.
QRegion CanvasFrame::paintAnew(const QRegion &pixels)
{
    // Many small pieces cost more to find their items than to paint.
    constexpr int fewPieces = 8;
    QRegion whole;
    QRegion pending = pixels & image.rect();
    while (!pending.isEmpty()) {
        const QRect part =
            pending.rectCount() > fewPieces ? pending.boundingRect() : *pending.begin();
        const QRegion differing = paint(part);
        whole += part;
        pending += differing & image.rect();
        pending -= part;
    }
    return whole;
}

/// The pixels of all dashed outlines. Where their dashes begin depends on where the picture ends.
QRegion CanvasFrame::dashedOutlines() const
{
    QRegion pixels;
    for (const auto *item : outlined)
        pixels += toPixels(painted.find(item)->area);
    return pixels;
}

/// Paints \a pixels. Returns what is seen to differ elsewhere as well, because of items that have
/// changed since the scene last told of changes.
QRegion CanvasFrame::paint(const QRect &pixels)
{
    QRegion differing;
    const auto items = itemsIn(pixels);
    for (const auto *item : items) {
        // What cannot be told to be the same is told of by the scene when it changes.
        const auto *const before = painted.find(item);
        if (!before || !before->uncertain)
            review(item, differing);
    }
    fill(image, pixels, paper);
    paintItems(image, items, pixels);
    return differing;
}

/// Paints \a pixels, where nothing but \a item and what lies on it has changed, between layers that
/// are kept as long as nothing else changes. Returns false where that cannot be done.
bool CanvasFrame::paintBetweenLayers(const QGraphicsItem *item, const QRect &pixels)
{
    if (layers.between != item && !makeLayers(item, pixels))
        return false;
    completeLayers(pixels);

    auto whole = item->childItems();
    whole.prepend(const_cast<QGraphicsItem *>(item));
    copy(layers.beneath, image, pixels);
    paintItems(image, whole, pixels);
    if (layers.isAnythingAbove) {
        QPainter painter(&image);
        clip(painter, pixels);
        painter.drawImage(0, 0, layers.above);
    }
    return true;
}

/// Makes layers for \a item, which has changed inside \a pixels, and completes them where it has been
/// and where it is. Returns false where there is no memory for them.
bool CanvasFrame::makeLayers(const QGraphicsItem *item, const QRect &pixels)
{
    layers = {};
    layers.between = item;
    layers.beneath = QImage(image.size(), image.format());
    layers.above = QImage(image.size(), QImage::Format_ARGB32_Premultiplied);
    if (layers.beneath.isNull() || layers.above.isNull())
        return false;
    layers.beneath.setDevicePixelRatio(image.devicePixelRatio());
    layers.above.setDevicePixelRatio(image.devicePixelRatio());
    layers.tiles = TileGrid(image.size());
    layers.completeTiles.resize(layers.tiles.count());

    constexpr size_t much = 64; // looking through them all would be felt
    const auto items = itemsIn(image.rect());
    for (const auto *other : items | std::views::reverse) {
        if (other->topLevelItem() == item)
            break;
        layers.areasAbove.push_back(toPixels(paintedState(other).area));
        layers.isMuchAbove = layers.areasAbove.size() > much;
        if (layers.isMuchAbove)
            break;
    }
    const auto *const state = painted.find(item);
    const QRect place = state ? toPixels(state->area) : QRect();
    paintLayers(layers.tiles.wholeTiles(pixels | place));
    return true;
}

void CanvasFrame::completeLayers(const QRect &pixels)
{
    QRect missing;
    layers.tiles.forEachTile(pixels, [&](size_t tile, const QRect &area) {
        if (layers.completeTiles[tile])
            return;
        const auto covers = [&area](const QRect &above) { return above.intersects(area); };
        if (layers.isMuchAbove || std::ranges::any_of(layers.areasAbove, covers)) {
            missing |= area;
            return;
        }
        // The item has not been here: what is seen is all that rests.
        copy(image, layers.beneath, area);
        layers.completeTiles[tile] = true;
    });
    paintLayers(missing);
}

/// Paints all but the item between them on the layers inside \a pixels, which are whole tiles.
void CanvasFrame::paintLayers(const QRect &pixels)
{
    if (pixels.isEmpty())
        return;
    // With the item itself, to know what lies above it.
    const auto *const between = painted.find(layers.between);
    const auto items = itemsIn(between ? pixels | toPixels(between->area) : pixels);
    const auto isOfItem = [this](const auto *item) {
        return item->topLevelItem() == layers.between;
    };
    const auto first = std::ranges::find_if(items, isOfItem);
    const auto end = std::find_if_not(first, items.end(), isOfItem);
    const auto isInside = [&](const auto *item) {
        return toPixels(paintedState(item).area).intersects(pixels);
    };
    QList<QGraphicsItem *> beneath;
    QList<QGraphicsItem *> above;
    std::copy_if(items.begin(), first, std::back_inserter(beneath), isInside);
    std::copy_if(end, items.end(), std::back_inserter(above), isInside);

    fill(layers.beneath, pixels, paper);
    paintItems(layers.beneath, beneath, pixels);
    if (!above.isEmpty() && !layers.isAnythingAbove) {
        layers.above.fill(nothing);
        layers.isAnythingAbove = true;
    }
    if (layers.isAnythingAbove)
        fill(layers.above, pixels, nothing);
    paintItems(layers.above, above, pixels);
    layers.tiles.forEachTile(
        pixels, [&](size_t tile, const QRect &) { layers.completeTiles[tile] = true; });
}

/// Paints \a items, the lowest first, on \a target inside \a pixels.
void CanvasFrame::paintItems(QImage &target, const QList<QGraphicsItem *> &items,
                             const QRect &pixels)
{
    QPainter painter(&target);
    painter.setRenderHints(canvas.renderHints());
    clip(painter, pixels);
    for (auto *item : items) {
        if (layDown(target, item, pixels))
            continue;
        paintAsViewed(painter, *item, toView, pixels, canvas.viewport());
        ++(dynamic_cast<const FreeDrawItem *>(item) ? done.strokesPainted : done.othersPainted);
    }
}

/// Lays a resting stroke down from its coverage, which is made when it is first needed; returns
/// false where \a item has to paint itself.
bool CanvasFrame::layDown(QImage &target, const QGraphicsItem *item, const QRect &pixels)
{
    const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item);
    if (!stroke || stroke->effectiveOpacity() < 1)
        return false;
    const QTransform transform = stroke->deviceTransform(toDevice);
    const auto *coverage = coverages.find(*stroke, toDevice);
    if (!coverage) {
        if (moving.contains(item) || (isOnlyPainting && !isHairline(*stroke, transform)))
            return false;
        coverage = makeCoverage(*stroke);
        if (!coverage)
            return false;
        ++done.strokesPainted;
    }
    coverage->blend(target, StrokeCoverage::split(transform).second, pixels);
    ++done.strokesLaidDown;
    return true;
}

/// Works out and keeps what \a stroke covers; null where that would take too much memory.
const StrokeCoverage *CanvasFrame::makeCoverage(const FreeDrawItem &stroke)
{
    const qsizetype others = bytes() - coverages.bytes();
    return coverages.make(stroke, toDevice, canvas.renderHints().testFlag(QPainter::Antialiasing),
                          memoryLimit - others);
}

void CanvasFrame::prepare()
{
    constexpr qint64 longest = 3; // ms
    QElapsedTimer timer;
    timer.start();
    while (canPrepare() && timer.elapsed() < longest) {
        const QPointer<const FreeDrawItem> stroke = unprepared.back();
        unprepared.pop_back();
        if (stroke && stroke->scene() == canvas.scene() && !coverages.find(*stroke, toDevice)
            && makeCoverage(*stroke))
            ++done.strokesPrepared;
    }
}
