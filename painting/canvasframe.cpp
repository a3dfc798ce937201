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
    painted.shrink_to_fit();
    coverages.clear();
    coverageBytes = 0;
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

/// Follows the view where it was resized, scaled or scrolled. Returns what of the picture has to be
/// painted for that, in pixels.
QRegion CanvasFrame::matchView()
{
    const qreal ratio = canvas.viewport()->devicePixelRatioF();
    const QSize size = (QSizeF(canvas.viewport()->size()) * ratio).toSize();
    const QTransform transform = canvas.viewportTransform() * QTransform::fromScale(ratio, ratio);
    const auto [fraction, place] = StrokeCoverage::split(transform);
    const auto [oldFraction, oldPlace] = StrokeCoverage::split(toDevice);
    toDevice = transform;
    if (image.size() == size && image.devicePixelRatio() == ratio && fraction == oldFraction)
        return place == oldPlace ? QRegion() : scroll(place - oldPlace);

    // What is kept of strokes holds for one scale.
    coverages.clear();
    coverageBytes = 0;
    image = QImage(size, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    painted.clear();
    return QRect(QPoint(), size);
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

/// How the items look that show in \a sceneRect, the lowest first.
std::vector<PaintedState> CanvasFrame::statesIn(const QRectF &sceneRect) const
{
    const auto items = canvas.scene()->items(sceneRect.adjusted(-reach, -reach, reach, reach),
                                             Qt::IntersectsItemBoundingRect, Qt::AscendingOrder);
    std::vector<PaintedState> states;
    states.reserve(static_cast<size_t>(items.size()));
    for (const auto *item : items)
        states.push_back(paintedState(item));
    return states;
}

/// What differs, in pixels, now that \a exposed is to be shown. Notes how everything looks now.
QRegion CanvasFrame::changes(const QRegion &exposed)
{
    const QRectF seen = toScene(exposed.boundingRect());
    std::vector<PaintedState> now = statesIn(seen);
    for (const auto &state : now)
        reach = std::max(reach, state.headReach);
    std::erase_if(now, [&seen](const PaintedState &state) { return !state.area.intersects(seen); });

    // As long as the same items lie there in the same order, each is compared with itself.
    std::vector<PaintedState *> before;
    for (auto &state : painted) {
        if (state.area.intersects(seen))
            before.push_back(&state);
    }
    const bool sameItems =
        std::ranges::equal(before, now, {}, &PaintedState::item, &PaintedState::item);
    if (!sameItems)
        return changesOfAll();

    QRegion changed;
    for (size_t i = 0; i < now.size(); ++i) {
        const QRect area = changedPixels(*before[i], now[i]);
        changed += area;
        if (!now[i].uncertain)
            settled += area;
        if (!area.isEmpty())
            *before[i] = std::move(now[i]);
    }
    return changed;
}

/// The same where items have come, gone or changed places: all that are in sight are looked at.
QRegion CanvasFrame::changesOfAll()
{
    std::unordered_map<const QGraphicsItem *, const PaintedState *> known;
    for (const auto &state : painted)
        known.emplace(state.item, &state);

    QRegion changed;
    std::vector<PaintedState> all = statesIn(toScene(image.rect()));
    qsizetype lastPlace = -1;
    for (const auto &state : all) {
        const auto old = known.find(state.item);
        if (old == known.end()) {
            changed += toPixels(state.area);
            moving.insert(state.item);
            continue;
        }
        changed += changedPixels(*old->second, state);
        // Lies now above one that lay above it.
        const qsizetype place = old->second - painted.data();
        if (place < lastPlace)
            changed += toPixels(state.area);
        lastPlace = std::max(lastPlace, place);
        known.erase(old);
    }
    for (const auto &[item, state] : known)
        changed += toPixels(state->area);
    settled += changed;
    painted = std::move(all);

    const auto items = static_cast<size_t>(canvas.scene()->items().size());
    if (coverageBytes > coverageLimit / 2 || coverages.size() > 2 * items)
        dropUnusedCoverage();
    return changed;
}

/// What of the picture differs now that an item has gone from \a before to \a after.
QRect CanvasFrame::changedPixels(const PaintedState &before, const PaintedState &after)
{
    const QRectF area = changedArea(before, after);
    if (area.isEmpty())
        return {};
    moving.insert(after.item);
    return toPixels(area);
}

QRegion CanvasFrame::update(const QRegion &exposed)
{
    if (!canvas.scene() || canvas.viewport()->size().isEmpty())
        return {};
    const QRegion uncovered = matchView();
    if (image.isNull())
        return {}; // there is no memory for it
    const QRect all = image.rect();
    QRegion pixels = uncovered.isEmpty() ? QRegion() : QRegion(all);
    const qreal ratio = image.devicePixelRatio();
    for (const QRect &rect : exposed) {
        pixels +=
            QRectF(QPointF(rect.topLeft()) * ratio, QSizeF(rect.size()) * ratio).toAlignedRect();
    }

    moving.clear();
    settled = {};
    const bool scrolled = !uncovered.isEmpty() && !painted.empty();
    QRegion changed = changes(pixels);
    // A hand moves few items at once. What an opening, an undoing or a scrolling brings will rest.
    constexpr size_t fewItems = 8;
    if (scrolled || moving.size() > fewItems)
        moving.clear();
    changed = withWholeOutlines(changed + uncovered, scrolled) & all;
    // Many small pieces cost more to find their items than to paint.
    constexpr int fewPieces = 8;
    if (changed.rectCount() > fewPieces) {
        paint(changed.boundingRect());
    } else {
        for (const QRect &part : changed)
            paint(part);
    }

    QRegion rest;
    for (const QRect &part : settled &all) {
        rest +=
            QRectF(QPointF(part.topLeft()) / ratio, QSizeF(part.size()) / ratio).toAlignedRect();
    }
    return rest - exposed;
}

/// \a changed, and all of the dashed outlines that lie in it, or all there are after scrolling: where
/// the dashes begin depends on what is cut off, so an outline is painted as a whole.
QRegion CanvasFrame::withWholeOutlines(const QRegion &changed, bool scrolled) const
{
    QRegion whole = changed;
    // One that is added may cut through another.
    for (bool grown = true; grown;) {
        grown = false;
        for (const auto &state : painted) {
            if (!state.selected && !state.uncertain)
                continue;
            const QRegion area = toPixels(state.area) & image.rect();
            if ((scrolled || whole.intersects(area)) && !(area - whole).isEmpty()) {
                whole += area;
                grown = true;
            }
        }
    }
    return whole;
}

void CanvasFrame::paint(const QRect &pixels)
{
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y)) + pixels.left();
        std::fill_n(line, pixels.width(), paper);
    }
    const QRectF seen = toScene(pixels);
    const auto items = canvas.scene()->items(seen.adjusted(-reach, -reach, reach, reach),
                                             Qt::IntersectsItemBoundingRect, Qt::AscendingOrder);
    QPainter painter(&image);
    painter.setRenderHints(canvas.renderHints());
    painter.setClipRect(QRectF(QPointF(pixels.topLeft()) / image.devicePixelRatio(),
                               QSizeF(pixels.size()) / image.devicePixelRatio()));
    for (auto *item : items) {
        const QTransform transform = item->deviceTransform(toDevice);
        if (!layDown(item, transform, pixels))
            paintItem(painter, item, transform, pixels);
    }
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
