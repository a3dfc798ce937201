// Compares two pictures, of which one may be rounded a little otherwise.
#pragma once

#include <QImage>
#include <QRegion>
#include <QString>

#include <algorithm>
#include <cstdlib>
#include <cstring>

constexpr int usualRounding = 6; // of some strokes that cross

/// How many of the \a pixels differ by more than \a rounding between the two pictures, by how much and
/// where; empty when none does.
inline QString differences(const QImage &one, const QImage &other, const QRegion &pixels,
                           int rounding = usualRounding)
{
    if (one.size() != other.size()) {
        return QStringLiteral("%1x%2 and not %3x%4")
            .arg(one.width())
            .arg(one.height())
            .arg(other.width())
            .arg(other.height());
    }
    int most = 0;
    int count = 0;
    QRect where;
    for (const QRect &part : pixels &one.rect()) {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            const auto *const a = reinterpret_cast<const QRgb *>(one.constScanLine(y));
            const auto *const b = reinterpret_cast<const QRgb *>(other.constScanLine(y));
            if (std::memcmp(a + part.left(), b + part.left(),
                            static_cast<size_t>(part.width()) * sizeof(QRgb))
                == 0)
                continue;
            for (int x = part.left(); x <= part.right(); ++x) {
                const int off = std::max({std::abs(qRed(a[x]) - qRed(b[x])),
                                          std::abs(qGreen(a[x]) - qGreen(b[x])),
                                          std::abs(qBlue(a[x]) - qBlue(b[x]))});
                most = std::max(most, off);
                if (off > rounding) {
                    ++count;
                    where |= QRect(x, y, 1, 1);
                }
            }
        }
    }
    if (count == 0)
        return {};
    return QStringLiteral("%1 pixels by up to %2 in %3,%4 %5x%6")
        .arg(count)
        .arg(most)
        .arg(where.x())
        .arg(where.y())
        .arg(where.width())
        .arg(where.height());
}
