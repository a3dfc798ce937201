// Draws frames around the selected notes.
#include "painting/selectedpapers.h"

#include "items/stickynoteitem.h"

#include <QGraphicsView>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int dash = 4; // pixels, and the gap after it

/// Adds the dashes from \a start to \a end, which lie on a line along an axis, to \a lines. A pen's own
/// dashes begin where the line comes into what is painted, and so in another place with each repaint.
void addDashes(QList<QLine> &lines, QPoint start, QPoint end)
{
    const int length = (end - start).manhattanLength();
    const QPoint step = length ? (end - start) / length : QPoint();
    for (int from = 0; from < length; from += 2 * dash)
        lines << QLine(start + from * step, start + std::min(from + dash - 1, length) * step);
}

} // namespace

void drawSelectedPapers(QPainter &painter, const QGraphicsView &view)
{
    const auto items = view.scene() ? view.scene()->selectedItems() : QList<QGraphicsItem *>();
    for (const auto *item : items) {
        const auto *const note = dynamic_cast<const StickyNoteItem *>(item);
        if (!note)
            continue;
        const QRectF place =
            note->deviceTransform(view.viewportTransform()).mapRect(note->boundingRect());
        // A damaged board can have notes so far away that no integer tells where.
        if (!place.intersects(view.viewport()->rect()))
            continue;
        const QRect paper = place.toAlignedRect();
        QList<QLine> dashes;
        addDashes(dashes, paper.topLeft(), paper.topRight());
        addDashes(dashes, paper.topRight(), paper.bottomRight());
        addDashes(dashes, paper.bottomLeft(), paper.bottomRight());
        addDashes(dashes, paper.topLeft(), paper.bottomLeft());
        painter.setBrush(Qt::NoBrush);
        painter.setPen(Qt::white);
        painter.drawRect(paper.adjusted(0, 0, -1, -1));
        painter.setPen(Qt::black);
        painter.drawLines(dashes);
    }
}
