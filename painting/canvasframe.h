// The picture of a board as its view shows it, kept from one painting to the next.
#pragma once

#include "items/noteditems.h"
#include "painting/coveragestore.h"
#include "painting/paintedstate.h"
#include "painting/tilegrid.h"

#include <QImage>
#include <QPointer>
#include <QRegion>

#include <unordered_set>
#include <vector>

class FreeDrawItem;
class QGraphicsView;

/// What a view shows of its scene, as a picture of the screen's pixels.
///
/// Whenever the scene tells of a change, follow() compares the items that it concerns with how they
/// looked when they were painted, and paints anew what differs and nothing else; so a stroke that
/// grows by a point costs that point, whatever lies beneath it. Strokes that rest are laid down from
/// their kept coverage, all others paint themselves. The result is what painting everything anew
/// would give.
class CanvasFrame
{
public:
    /// The frame of \a view, which has to outlive it.
    explicit CanvasFrame(const QGraphicsView &view);

    /// Brings the picture up to date after the scene has \a changed there, in scene units. Returns
    /// what has to be shown anew, in the viewport's units. Does nothing until the first matchView().
    QRegion follow(const QList<QRectF> &changed);

    /// Brings the picture up to date after the view was resized, scaled or scrolled, or shown for
    /// the first time. Returns what is seen to have changed beside that, in the viewport's units.
    QRegion matchView();

    /// Whether there are strokes in sight for prepare().
    bool canPrepare() const { return !unprepared.empty(); }

    /// Works out what some of the strokes in sight cover, which takes a few milliseconds. To be called
    /// again and again while nothing else is to be done: whoever then erases or undoes waits less.
    void prepare();

    /// The picture, of the viewport's size; its device pixel ratio is the screen's.
    const QImage &picture() const { return image; }

    /// Lets go of all memory.
    void clear();

    /// How much memory it takes, in bytes.
    qsizetype bytes() const;

    /// What it has done so far, for tests: strokes and other items that were painted anew, strokes
    /// whose coverage was prepared, and those laid down from it.
    struct Work
    {
        qint64 strokesPainted = 0;
        qint64 strokesPrepared = 0;
        qint64 strokesLaidDown = 0;
        qint64 othersPainted = 0;
    };
    const Work &work() const { return done; }

    /// All that is kept takes no more than this, in bytes, as long as the screen's pixels alone do
    /// not; strokes whose coverage finds no room paint themselves.
    static constexpr qsizetype memoryLimit = qsizetype(128) * 1024 * 1024;

private:
    void clearPicture();
    bool review(const QGraphicsItem *item, QRegion &differing);
    bool reviewText(const QGraphicsItem *item, QRegion &differing) const;
    QRegion reviewAll();
    void note(const QGraphicsItem *item, PaintedState state);
    void forget(const QGraphicsItem *item);
    QRegion scroll(QPoint step);
    QRegion paintAll(const QRegion &pending);
    QRegion paintAnew(const QRegion &pixels);
    QRegion dashedOutlines() const;
    QRegion paint(const QRect &pixels);
    bool paintBetweenLayers(const QGraphicsItem *item, const QRect &pixels);
    bool makeLayers(const QGraphicsItem *item, const QRect &pixels);
    void completeLayers(const QRect &pixels);
    void paintLayers(const QRect &pixels);
    void paintItems(QImage &target, const QList<QGraphicsItem *> &items, const QRect &pixels);
    bool layDown(QImage &target, const QGraphicsItem *item, const QRect &pixels);
    const StrokeCoverage *makeCoverage(const FreeDrawItem &stroke);
    QList<QGraphicsItem *> itemsIn(const QRect &pixels) const;
    QRect toPixels(const QRectF &sceneRect) const;
    QRectF toScene(const QRect &pixels) const;
    QRegion toViewport(const QRegion &pixels) const;

    /// All that rests while one item is moved, drawn or edited, so that painting it again and again
    /// takes two copies. They are completed tile by tile where the item comes.
    struct Layers
    {
        const QGraphicsItem *between = nullptr;
        QImage beneath;
        QImage above;
        bool isAnythingAbove = false; // where they are complete
        std::vector<QRect> areasAbove; // of what lies above the item, in pixels
        bool isMuchAbove = false; // too much to list
        TileGrid tiles;
        std::vector<bool> completeTiles;
    };

    const QGraphicsView &canvas;
    QImage image;
    // From the scene to the viewport's units, and to pixels, when the picture was painted.
    QTransform toView;
    QTransform toDevice;
    NotedItems<PaintedState> painted;
    std::unordered_set<const QGraphicsItem *> outlined;
    CoverageStore coverages;
    bool isOnlyPainting = false;
    std::vector<QPointer<const FreeDrawItem>> unprepared;
    // The farthest that an item paints outside of its bounding rectangle, in scene units.
    qreal reach = 0;
    // What has just changed, and may well change again with the next event: it paints itself.
    std::unordered_set<const QGraphicsItem *> moving;
    // The one item, with what lies on it, that changed last, if it was one.
    const QGraphicsItem *lastChanged = nullptr;
    Layers layers;
    Work done;
};
