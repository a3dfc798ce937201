// The picture of a board as its view shows it, kept from one painting to the next.
#pragma once

#include "painting/paintedstate.h"
#include "painting/strokecoverage.h"

#include <QImage>
#include <QRegion>

#include <unordered_map>
#include <unordered_set>
#include <vector>

class QGraphicsView;

/// What a view shows of its scene, as a picture of the screen's pixels.
///
/// Before a part of it is shown, update() compares how the items there look with how they looked when
/// they were painted, and paints anew what differs and nothing else; so a stroke that grows by a
/// point costs that point, whatever lies beneath it. Strokes that rest are laid down from their kept
/// coverage, all others paint themselves. The result is what painting everything anew would give.
class CanvasFrame
{
public:
    /// The frame of \a view, which has to outlive it.
    explicit CanvasFrame(const QGraphicsView &view);

    /// Items paint up to this far outside their bounding rectangles, in scene units.
    void setReach(qreal sceneUnits) { reach = sceneUnits; }

    /// Brings the picture up to date inside \a exposed and wherever else what is seen to have changed
    /// there shows. Returns what of the latter lies outside \a exposed and is to be exposed as well;
    /// all in the viewport's units.
    QRegion update(const QRegion &exposed);

    /// The picture, of the viewport's size; its device pixel ratio is the screen's.
    const QImage &picture() const { return image; }

    /// Lets go of all memory.
    void clear();

    /// How much memory it takes, in bytes.
    qsizetype bytes() const { return image.sizeInBytes() + coverageBytes; }

    /// What update() has done so far, for tests: strokes and other items that were painted anew.
    struct Work
    {
        qint64 strokesPainted = 0;
        qint64 strokesLaidDown = 0;
        qint64 othersPainted = 0;
    };
    const Work &work() const { return done; }

    /// All kept coverage together takes no more than this, in bytes; further strokes paint themselves.
    static constexpr qsizetype coverageLimit = qsizetype(96) * 1024 * 1024;

private:
    QRegion matchView();
    QRegion scroll(QPoint step);
    std::vector<PaintedState> statesIn(const QRectF &sceneRect) const;
    QRegion changes(const QRegion &exposed);
    QRegion changesOfAll();
    QRect changedPixels(const PaintedState &before, const PaintedState &after);
    QRegion withWholeOutlines(const QRegion &changed, bool scrolled) const;
    void paint(const QRect &pixels);
    bool layDown(const QGraphicsItem *item, const QTransform &transform, const QRect &pixels);
    void paintItem(QPainter &painter, QGraphicsItem *item, const QTransform &transform,
                   const QRect &pixels);
    QRect toPixels(const QRectF &sceneRect) const;
    QRectF toScene(const QRect &pixels) const;
    void dropUnusedCoverage();

    const QGraphicsView &canvas;
    QImage image;
    QTransform toDevice; // from the scene to pixels, when the picture was painted
    std::vector<PaintedState> painted; // in the order of stacking, the lowest first
    // By StrokeCoverage::hash(), not by item: undoing puts other items in the place of all.
    std::unordered_multimap<size_t, StrokeCoverage> coverages;
    qsizetype coverageBytes = 0;
    qreal reach = 0;
    // What has just changed, and may well change again with the next event: it paints itself.
    std::unordered_set<const QGraphicsItem *> moving;
    // What has changed and will not, by itself, look changed again at the next painting; in pixels.
    QRegion settled;
    Work done;
};
