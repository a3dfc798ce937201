// A stroke as the pixels that it covers, painted once and laid down again and again.
#pragma once

#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QRect>
#include <QTransform>

#include <utility>
#include <vector>

/// How much of each pixel a stroke covers. Working that out is what painting a stroke costs; laying
/// it down afterwards takes a thousandth of that, and the result is the same to the last bit. Only
/// the covered pixels are kept, a byte each.
class StrokeCoverage
{
public:
    /// Room to draw a stroke in. It grows with the strokes, and asking the system for it each time
    /// would take as long as drawing one.
    using Sheet = QImage;

    /// The stroke along \a path, which \a transform takes to pixels. Only translations by whole pixels
    /// are allowed for between here and blend(). What \a sheet holds does not matter.
    StrokeCoverage(const QPainterPath &path, const QPen &pen, const QTransform &transform,
                   bool antialiased, Sheet &sheet);

    /// Whether it holds for that stroke at that place, or a whole number of pixels beside it.
    bool holdsFor(const QPainterPath &path, const QPen &pen, const QTransform &transform) const;

    /// Lays the stroke, moved by \a offset pixels, on the pixels of \a image inside \a clip. The image
    /// is opaque, of the format RGB32.
    void blend(QImage &image, QPoint offset, const QRect &clip) const;

    /// A number that strokes which look alike share, and others hardly ever.
    static size_t hash(const QPainterPath &path, const QPen &pen);

    /// How much memory it takes, in bytes, with the path, which the item may have let go.
    qsizetype bytes() const;

    /// Whether the coverage of such a stroke can be made with little memory.
    static bool isFeasible(const QPainterPath &path, const QPen &pen, const QTransform &transform);

    /// Whether there was the memory to make it.
    bool isValid() const { return isPainted; }

    /// The part of \a transform that is no translation by whole pixels, and that translation.
    static std::pair<QTransform, QPoint> split(const QTransform &transform);

private:
    /// Covered pixels side by side.
    struct Run
    {
        qint16 x;
        qint16 y;
        qint32 length;
        qint32 first; // index into coverage
    };

    QPainterPath source;
    QPen pen;
    QTransform fraction;
    QRect box;
    bool isPainted = false;
    std::vector<Run> runs;
    std::vector<uchar> coverage;
};
