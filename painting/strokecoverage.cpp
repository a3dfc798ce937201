// Works out which pixels a stroke covers, and lays them down.
#include "painting/strokecoverage.h"

#include "painting/visiblepath.h"
#include "painting/wholenumbers.h"

#include <QHashFunctions>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace {

// A picture of the stroke is made for a moment; larger ones would be felt.
constexpr qint64 mostPixels = 4096LL * 4096;
constexpr int longestSide = 16384; // well inside of what a run can tell

/// \a color with each channel times \a a / 255, rounded as the toolkit's raster engine does it.
constexpr QRgb byteMul(QRgb color, uint a)
{
    uint even = (color & 0xff00ffU) * a;
    even = (even + ((even >> 8) & 0xff00ffU) + 0x800080U) >> 8;
    even &= 0xff00ffU;
    uint odd = ((color >> 8) & 0xff00ffU) * a;
    odd = odd + ((odd >> 8) & 0xff00ffU) + 0x800080U;
    odd &= 0xff00ff00U;
    return even | odd;
}

/// The first pixel of a row that is not empty, of which there are few.
const QRgb *firstCovered(const QRgb *pixel, const QRgb *end)
{
    constexpr std::ptrdiff_t many = 8;
    while (end - pixel >= many && std::accumulate(pixel, pixel + many, 0U, std::bit_or()) == 0)
        pixel += many;
    return std::find_if(pixel, end, [](QRgb color) { return color != 0; });
}

QRect pixelBounds(const QPainterPath &path, const QPen &pen, const QTransform &transform)
{
    // A mitre reaches farther than half the pen's width.
    const qreal corner = pen.joinStyle() == Qt::RoundJoin ? 1.0 : std::max(1.0, pen.miterLimit());
    const qreal reach = std::max(pen.widthF(), 1.0) * corner;
    const QRectF rect =
        transform.mapRect(path.controlPointRect().adjusted(-reach, -reach, reach, reach));
    if (!wholeNumbers.contains(rect))
        return wholeNumbers.toRect();
    return rect.toAlignedRect().adjusted(-1, -1, 1, 1);
}

} // namespace

bool StrokeCoverage::isFeasible(const QPainterPath &path, const QPen &pen,
                                const QTransform &transform)
{
    const QRect bounds = pixelBounds(path, pen, split(transform).first);
    return bounds.width() <= longestSide && bounds.height() <= longestSide
        && qint64(bounds.width()) * bounds.height() <= mostPixels;
}

std::pair<QTransform, QPoint> StrokeCoverage::split(const QTransform &t)
{
    // Places beyond whole numbers are out of sight. Fractions are rounded finer than any eye sees, so
    // that those of one place are the same after every scrolling.
    constexpr qreal farthest = 1e9;
    constexpr qreal fineness = 4096;
    const auto fraction = [](qreal value) {
        return std::round((value - std::floor(value)) * fineness) / fineness;
    };
    const qreal dx = std::clamp(t.dx(), -farthest, farthest);
    const qreal dy = std::clamp(t.dy(), -farthest, farthest);
    const QPoint whole(static_cast<int>(std::floor(dx)), static_cast<int>(std::floor(dy)));
    return {QTransform(t.m11(), t.m12(), t.m21(), t.m22(), fraction(dx), fraction(dy)), whole};
}

StrokeCoverage::StrokeCoverage(const QPainterPath &path, const QPen &strokePen,
                               const QTransform &transform, bool antialiased, Sheet &sheet)
    : source(path)
    , pen(strokePen)
    , fraction(split(transform).first)
    , box(pixelBounds(path, strokePen, fraction))
{
    constexpr auto format = QImage::Format_ARGB32_Premultiplied;
    const qsizetype bytesPerLine = box.width() * qsizetype(sizeof(QRgb));
    if (sheet.sizeInBytes() < bytesPerLine * box.height())
        sheet = QImage(box.size(), format);
    isPainted = !sheet.isNull();
    if (!isPainted)
        return;
    QImage picture(sheet.bits(), box.width(), box.height(), bytesPerLine, format);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing, antialiased);
    painter.setWorldTransform(fraction * QTransform::fromTranslate(-box.x(), -box.y()));
    QPen black(pen);
    black.setColor(Qt::black);
    painter.setPen(black);
    drawVisiblePath(painter, path, picture.rect());
    painter.end();

    const auto *line = reinterpret_cast<const QRgb *>(sheet.constBits());
    for (int y = 0; y < box.height(); ++y, line += box.width()) {
        const auto *const end = line + box.width();
        for (const auto *first = firstCovered(line, end); first != end;) {
            const auto *const last = std::find(first, end, 0U);
            runs.push_back({static_cast<qint16>(first - line), static_cast<qint16>(y),
                            static_cast<qint32>(last - first),
                            static_cast<qint32>(coverage.size())});
            for (const auto *pixel = first; pixel != last; ++pixel)
                coverage.push_back(static_cast<uchar>(qAlpha(*pixel)));
            first = firstCovered(last, end);
        }
    }
    runs.shrink_to_fit();
    coverage.shrink_to_fit();
}

bool StrokeCoverage::holdsFor(const QPainterPath &path, const QPen &strokePen,
                              const QTransform &transform) const
{
    return split(transform).first == fraction && strokePen == pen && path == source;
}

size_t StrokeCoverage::hash(const QPainterPath &path, const QPen &pen)
{
    size_t seed = qHashMulti(0, path.elementCount(), pen.widthF(), pen.color().rgba());
    if (const int count = path.elementCount(); count > 0) {
        for (const int index : {0, count / 2, count - 1}) {
            const auto element = path.elementAt(index);
            seed = qHashMulti(seed, element.x, element.y);
        }
    }
    return seed;
}

qsizetype StrokeCoverage::bytes() const
{
    const auto points = static_cast<size_t>(source.elementCount());
    const size_t all = sizeof(*this) + runs.capacity() * sizeof(Run) + coverage.capacity()
        + points * sizeof(QPainterPath::Element);
    return static_cast<qsizetype>(all);
}

void StrokeCoverage::blend(QImage &image, QPoint offset, const QRect &clip) const
{
    const QRect place = box.translated(offset);
    const QRect visible = place.intersected(clip).intersected(QRect(QPoint(), image.size()));
    if (visible.isEmpty())
        return;

    const QRgb color = qPremultiply(pen.color().rgba());
    const bool opaque = qAlpha(color) == 255;
    const bool black = (color & 0xffffffU) == 0 && opaque;
    uchar *const bits = image.bits();
    const qsizetype bytesPerLine = image.bytesPerLine();
    const auto firstRun = std::ranges::lower_bound(runs, visible.top() - place.top(), {}, &Run::y);
    for (auto run = firstRun; run != runs.end(); ++run) {
        const int y = place.top() + run->y;
        if (y > visible.bottom())
            break;
        const int left = std::max(place.left() + run->x, visible.left());
        const int right = std::min(place.left() + run->x + run->length - 1, visible.right());
        if (left > right)
            continue;
        const uchar *covered = coverage.data() + run->first + (left - place.left() - run->x);
        auto *pixel = reinterpret_cast<QRgb *>(bits + y * bytesPerLine) + left;
        for (int x = left; x <= right; ++x, ++pixel, ++covered) {
            if (*covered == 255 && opaque) {
                *pixel = color;
            } else {
                const QRgb share = black ? QRgb(*covered) << 24 : byteMul(color, *covered);
                *pixel = share + byteMul(*pixel, 255U - static_cast<uint>(qAlpha(share)));
            }
        }
    }
}
