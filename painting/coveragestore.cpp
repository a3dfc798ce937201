// Finds what is kept of a stroke, and works it out where there is room for it.
#include "painting/coveragestore.h"

#include "items/freedrawitem.h"

#include <QGraphicsScene>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace {

/// What of a stroke says how it looks.
struct Look
{
    explicit Look(const FreeDrawItem &stroke)
        : path(stroke.path())
        , pen(stroke.QGraphicsPathItem::pen())
    { }

    size_t hash() const { return StrokeCoverage::hash(path, pen); }

    QPainterPath path;
    QPen pen;
};

} // namespace

const StrokeCoverage *CoverageStore::find(const FreeDrawItem &stroke,
                                          const QTransform &toPixels) const
{
    const Look look(stroke);
    const QTransform transform = stroke.deviceTransform(toPixels);
    const auto [first, last] = coverages.equal_range(look.hash());
    const auto kept = std::find_if(first, last, [&](const auto &entry) {
        return entry.second.holdsFor(look.path, look.pen, transform);
    });
    return kept == last ? nullptr : &kept->second;
}

const StrokeCoverage *CoverageStore::make(const FreeDrawItem &stroke, const QTransform &toPixels,
                                          bool antialiased, qsizetype limit)
{
    const Look look(stroke);
    const QTransform transform = stroke.deviceTransform(toPixels);
    if (bytes() > limit || !StrokeCoverage::isFeasible(look.path, look.pen, transform))
        return nullptr;
    StrokeCoverage coverage(look.path, look.pen, transform, antialiased, sheet);
    constexpr qsizetype largeSheet = qsizetype(4) * 1024 * 1024; // bytes
    const auto isTooMuch = [&] { return bytes() + coverage.bytes() > limit; };
    if (sheet.sizeInBytes() > largeSheet || isTooMuch())
        sheet = {};
    if (!coverage.isValid() || isTooMuch())
        return nullptr;
    coverageBytes += coverage.bytes();
    return &coverages.emplace(look.hash(), std::move(coverage))->second;
}

void CoverageStore::dropUnused(const QGraphicsScene &scene)
{
    std::unordered_set<size_t> used;
    const auto items = scene.items();
    for (const auto *item : items) {
        if (const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item))
            used.insert(Look(*stroke).hash());
    }
    std::erase_if(coverages, [&](const auto &entry) {
        if (used.contains(entry.first))
            return false;
        coverageBytes -= entry.second.bytes();
        return true;
    });
}

void CoverageStore::clear()
{
    coverages.clear();
    coverageBytes = 0;
    sheet = {};
}
