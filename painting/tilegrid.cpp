// Tells which tiles some pixels touch, and which pixels are a tile's.
#include "painting/tilegrid.h"

TileGrid::TileGrid(const QSize &pictureSize)
    : picture(QPoint(), pictureSize)
    , tiles((pictureSize.width() + side - 1) / side, (pictureSize.height() + side - 1) / side)
{ }

std::size_t TileGrid::count() const
{
    return tiles.isEmpty() ? 0 : numberOf(0, tiles.height());
}

QRect TileGrid::wholeTiles(const QRect &pixels) const
{
    return pixelsOf(tilesIn(pixels));
}

/// The columns and rows of the tiles that \a pixels touch.
QRect TileGrid::tilesIn(const QRect &pixels) const
{
    const QRect inside = pixels & picture;
    if (inside.isEmpty())
        return {};
    return {QPoint(inside.left() / side, inside.top() / side),
            QPoint(inside.right() / side, inside.bottom() / side)};
}

QRect TileGrid::pixelsOf(const QRect &someTiles) const
{
    return QRect(someTiles.topLeft() * side, someTiles.size() * side) & picture;
}

std::size_t TileGrid::numberOf(int column, int row) const
{
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(tiles.width())
        + static_cast<std::size_t>(column);
}
