// Cuts a path to what can be seen of it.
#include "painting/visiblepath.h"

#include <QLineF>

#include <algorithm>
#include <optional>

namespace {

// Ends that were cut off lie this much farther away than a pen reaches, in its widths, so that
// neither their caps nor their joins are seen.
constexpr qreal spare = 4.0;

/// The part of \a line inside \a box, by the method of Liang and Barsky; a point of it may be all.
std::optional<QLineF> clipped(const QLineF &line, const QRectF &box)
{
    qreal from = 0;
    qreal to = 1;
    const auto cut = [&](qreal step, qreal distance) {
        // The line enters or leaves the half-plane where step * t equals distance.
        if (step == 0)
            return distance >= 0;
        const qreal t = distance / step;
        if (step < 0)
            from = std::max(from, t);
        else
            to = std::min(to, t);
        return from <= to;
    };
    const bool inside = cut(-line.dx(), line.x1() - box.left())
        && cut(line.dx(), box.right() - line.x1()) && cut(-line.dy(), line.y1() - box.top())
        && cut(line.dy(), box.bottom() - line.y1());
    if (!inside)
        return std::nullopt;
    // Ends that need no cut stay what they are, to the last bit.
    return QLineF(from > 0 ? line.pointAt(from) : line.p1(), to < 1 ? line.pointAt(to) : line.p2());
}

} // namespace

QPainterPath visiblePath(const QPainterPath &path, const QRectF &view, qreal reach)
{
    const qreal margin = spare * reach + 1;
    const QRectF box = view.adjusted(-margin, -margin, margin, margin);
    if (box.contains(path.controlPointRect()))
        return path;

    QPainterPath visible;
    QPointF last;
    for (int i = 0; i < path.elementCount(); ++i) {
        const auto element = path.elementAt(i);
        if (element.isCurveTo())
            return path;
        if (element.isLineTo()) {
            if (const auto piece = clipped({last, element}, box)) {
                if (visible.isEmpty() || visible.currentPosition() != piece->p1())
                    visible.moveTo(piece->p1());
                visible.lineTo(piece->p2());
            }
        }
        last = element;
    }
    return visible;
}
