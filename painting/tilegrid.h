// A picture in square tiles.
#pragma once

#include <QRect>
#include <QSize>

#include <cstddef>

/// Divides a picture into tiles, in pixels. Those at its right and at its lower edge may be cut.
class TileGrid
{
public:
    static constexpr int side = 32; // pixels

    TileGrid() = default;
    explicit TileGrid(const QSize &pictureSize);

    std::size_t count() const;

    /// \a pixels, as far as they lie in the picture, grown to whole tiles.
    QRect wholeTiles(const QRect &pixels) const;

    /// Calls \a visitor with the number, from 0 to count() - 1, and the pixels of each tile that
    /// \a pixels touch.
    template <typename Visitor> void forEachTile(const QRect &pixels, const Visitor &visitor) const
    {
        const QRect touched = tilesIn(pixels);
        for (int row = touched.top(); row <= touched.bottom(); ++row) {
            for (int column = touched.left(); column <= touched.right(); ++column)
                visitor(numberOf(column, row), pixelsOf(QRect(column, row, 1, 1)));
        }
    }

private:
    QRect tilesIn(const QRect &pixels) const;
    QRect pixelsOf(const QRect &someTiles) const;
    std::size_t numberOf(int column, int row) const;

    QRect picture;
    QSize tiles; // columns and rows
};
