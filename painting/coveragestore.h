// What the strokes of a board cover, kept from one painting to the next.
#pragma once

#include "painting/strokecoverage.h"

#include <unordered_map>

class FreeDrawItem;
class QGraphicsScene;

/// The coverage of the strokes of a board. It is found by how a stroke looks and not by which item it is:
/// undoing puts other items in the place of all. Where a stroke lies in pixels, the transform from its
/// scene tells.
class CoverageStore
{
public:
    /// The coverage of \a stroke; null where none is kept that holds for this place, or for one that is a
    /// whole number of pixels beside it. Valid until others are let go.
    const StrokeCoverage *find(const FreeDrawItem &stroke, const QTransform &toPixels) const;

    /// Works out and keeps what \a stroke covers; null where bytes() would become more than \a limit.
    const StrokeCoverage *make(const FreeDrawItem &stroke, const QTransform &toPixels,
                               bool antialiased, qsizetype limit);

    /// Lets go of the coverage of strokes that are no longer on \a scene.
    void dropUnused(const QGraphicsScene &scene);

    /// Lets go of all memory.
    void clear();

    bool isEmpty() const { return coverages.empty(); }
    size_t size() const { return coverages.size(); }

    /// How much memory it takes, in bytes.
    qsizetype bytes() const { return coverageBytes + sheet.sizeInBytes(); }

private:
    std::unordered_multimap<size_t, StrokeCoverage> coverages; // by StrokeCoverage::hash()
    qsizetype coverageBytes = 0;
    StrokeCoverage::Sheet sheet;
};
