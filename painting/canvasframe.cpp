// Keeps the picture of a board up to date with as little painting as possible.
#include "painting/canvasframe.h"

#include "items/freedrawitem.h"
#include "painting/visiblepath.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace {

constexpr QRgb paper = 0xffffffff;

QStyleOptionGraphicsItem optionFor(const QGraphicsItem *item)
{
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_None;
    option.rect = item->boundingRect().toRect();
    option.exposedRect = item->boundingRect();
    option.state.setFlag(QStyle::State_Enabled, item->isEnabled());
    option.state.setFlag(QStyle::State_Selected, item->isSelected());
    option.state.setFlag(QStyle::State_HasFocus, item->hasFocus());
    return option;
}

} // namespace

CanvasFrame::CanvasFrame(const QGraphicsView &view)
    : canvas(view)
{ }

void CanvasFrame::clear()
{
    image = {};
    painted.clear();
    outlined.clear();
    moving.clear();
    coverages.clear();
    coverageBytes = 0;
    reach = 0;
}

qsizetype CanvasFrame::bytes() const
{
    // A note stands in a table and, by its place, in another.
    constexpr size_t bytesPerNote = sizeof(PaintedState) + 256;
    return image.sizeInBytes() + coverageBytes
        + static_cast<qsizetype>(painted.size() * bytesPerNote);
}

/// Lets go of the coverage of strokes that are no longer on the board.
void CanvasFrame::dropUnusedCoverage()
{
    std::unordered_set<size_t> used;
    const auto items = canvas.scene()->items();
    for (const auto *item : items) {
        if (const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item))
            used.insert(StrokeCoverage::hash(stroke->path(), stroke->QGraphicsPathItem::pen()));
    }
    std::erase_if(coverages, [&](const auto &entry) {
        if (used.contains(entry.first))
            return false;
        coverageBytes -= entry.second.bytes();
        return true;
    });
}

QRect CanvasFrame::toPixels(const QRectF &sceneRect) const
{
    // Places far outside would not fit into whole numbers.
    const QRectF far(-1e6, -1e6, 2e6, 2e6);
    return toDevice.mapRect(sceneRect).intersected(far).toAlignedRect().adjusted(-1, -1, 1, 1);
}

QRectF CanvasFrame::toScene(const QRect &pixels) const
{
    return toDevice.inverted().mapRect(QRectF(pixels));
}

QRegion CanvasFrame::toViewport(const QRegion &pixels) const
{
    const qreal ratio = image.devicePixelRatio();
    QRegion units;
    for (const QRect &part : pixels & image.rect()) {
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
    if (NotedItems<PaintedState>::concernsAll(*canvas.scene(), changed)) {
        differing = reviewAll();
    } else {
        painted.reviewChanged(*canvas.scene(), changed, [&](const auto *item) {
            const bool differs = review(item, differing);
            if (differs)
                moving.insert(item);
            return differs;
        });
    }
    const QRegion anew = paintAnew(differing);
    moving.clear();
    return toViewport(anew);
}

QRegion CanvasFrame::matchView()
{
    if (!canvas.scene() || canvas.viewport()->size().isEmpty())
        return {};
    const qreal ratio = canvas.viewport()->devicePixelRatioF();
    const QSize size = (QSizeF(canvas.viewport()->size()) * ratio).toSize();
    const QTransform transform = canvas.viewportTransform() * QTransform::fromScale(ratio, ratio);
    const auto [fraction, place] = StrokeCoverage::split(transform);
    const auto [oldFraction, oldPlace] = StrokeCoverage::split(toDevice);
    toDevice = transform;
    if (image.size() == size && image.devicePixelRatio() == ratio && fraction == oldFraction) {
        if (place == oldPlace)
            return {};
        return toViewport(paintAnew(scroll(place - oldPlace), true));
    }

    // What is kept of strokes holds for one scale.
    clear();
    image = QImage(size, QImage::Format_RGB32);
    if (image.isNull())
        return {}; // there is no memory for it
    image.setDevicePixelRatio(ratio);
    const auto items = canvas.scene()->items();
    for (const auto *item : items)
        reach = std::max(reach, paintedState(item).headReach);
    reviewAll();
    return toViewport(paintAnew(image.rect()));
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
    return canvas.scene()->items(toScene(pixels).adjusted(-reach, -reach, reach, reach),
                                 Qt::IntersectsItemBoundingRect, Qt::AscendingOrder);
}

void CanvasFrame::note(const QGraphicsItem *item, PaintedState state)
{
    reach = std::max(reach, state.headReach);
    if (state.selected || state.uncertain)
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
    if (coverageBytes > coverageLimit / 2 || coverages.size() > 2 * painted.size() + someMore)
        dropUnusedCoverage();
    return differing;
}

/// Paints \a pending and whatever else is seen to differ there. Returns all that was painted.
QRegion CanvasFrame::paintAnew(QRegion pending, bool scrolled)
{
    // Many small pieces cost more to find their items than to paint.
    constexpr int fewPieces = 8;
    QRegion whole;
    pending = withWholeOutlines(pending, scrolled);
    while (!pending.isEmpty()) {
        const QRect part =
            pending.rectCount() > fewPieces ? pending.boundingRect() : *pending.begin();
        const QRegion differing = paint(part);
        whole += part;
        pending -= part;
        pending += withWholeOutlines(differing - part, false);
    }
    return whole;
}

/// \a pixels, and all of the dashed outlines that lie in them, or all there are after scrolling: where
/// the dashes begin depends on what is cut off, so an outline is painted as a whole.
QRegion CanvasFrame::withWholeOutlines(QRegion pixels, bool scrolled) const
{
    pixels &= image.rect();
    bool cutsOutline = false;
    // One that is added may cut through another.
    for (bool grown = true; grown;) {
        grown = false;
        for (const auto *item : outlined) {
            const QRect area = toPixels(painted.find(item)->area) & image.rect();
            if (!scrolled && !pixels.intersects(area))
                continue;
            cutsOutline = true;
            if (!(QRegion(area) - pixels).isEmpty()) {
                pixels += area;
                grown = true;
            }
        }
    }
    return cutsOutline ? pixels.boundingRect() : pixels;
}

/// Paints \a pixels. Returns what is seen to differ elsewhere as well, because of items that have
/// changed since the scene last told of changes.
QRegion CanvasFrame::paint(const QRect &pixels)
{
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y)) + pixels.left();
        std::fill_n(line, pixels.width(), paper);
    }
    QRegion differing;
    QPainter painter(&image);
    painter.setRenderHints(canvas.renderHints());
    painter.setClipRect(QRectF(QPointF(pixels.topLeft()) / image.devicePixelRatio(),
                               QSizeF(pixels.size()) / image.devicePixelRatio()));
    const auto items = itemsIn(pixels);
    for (auto *item : items) {
        // What cannot be told to be the same is told of by the scene when it changes.
        const auto *const before = painted.find(item);
        if (!before || !before->uncertain)
            review(item, differing);
        const QTransform transform = item->deviceTransform(toDevice);
        if (!layDown(item, transform, pixels))
            paintItem(painter, item, transform, pixels);
    }
    return differing;
}

/// Lays a resting stroke down from its coverage, which is made when it is first needed; returns
/// false where \a item has to paint itself.
bool CanvasFrame::layDown(const QGraphicsItem *item, const QTransform &transform,
                          const QRect &pixels)
{
    const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item);
    if (!stroke || stroke->effectiveOpacity() < 1)
        return false;
    const QPainterPath path = stroke->path();
    const QPen pen = stroke->QGraphicsPathItem::pen();
    const size_t hash = StrokeCoverage::hash(path, pen);
    const auto [first, last] = coverages.equal_range(hash);
    auto kept = std::find_if(first, last, [&](const auto &entry) {
        return entry.second.holdsFor(path, pen, transform);
    });
    if (kept == last) {
        if (moving.contains(item) || coverageBytes > coverageLimit
            || !StrokeCoverage::isFeasible(path, pen, transform)) {
            return false;
        }
        const bool antialiased = canvas.renderHints().testFlag(QPainter::Antialiasing);
        StrokeCoverage coverage(path, pen, transform, antialiased);
        if (!coverage.isValid() || coverageBytes + coverage.bytes() > coverageLimit)
            return false;
        coverageBytes += coverage.bytes();
        kept = coverages.emplace(hash, std::move(coverage));
        ++done.strokesPainted;
    }
    kept->second.blend(image, StrokeCoverage::split(transform).second, pixels);
    ++done.strokesLaidDown;
    return true;
}

void CanvasFrame::paintItem(QPainter &painter, QGraphicsItem *item, const QTransform &transform,
                            const QRect &pixels)
{
    painter.save();
    const qreal ratio = image.devicePixelRatio();
    painter.setWorldTransform(transform * QTransform::fromScale(1 / ratio, 1 / ratio));
    painter.setOpacity(item->effectiveOpacity());
    if (const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item)) {
        const QPen pen = stroke->QGraphicsPathItem::pen();
        painter.setPen(pen);
        painter.setBrush(stroke->brush());
        const QRectF view = transform.inverted().mapRect(QRectF(pixels));
        painter.drawPath(visiblePath(stroke->path(), view, std::max(1.0, pen.widthF())));
        ++done.strokesPainted;
    } else {
        const auto option = optionFor(item);
        item->paint(&painter, &option, canvas.viewport());
        ++done.othersPainted;
    }
    painter.restore();
}
