// The tiles of a picture: each pixel is in one of them.

#include "painting/tilegrid.h"

#include "tests/support/main/registeredtest.h"

#include <QRegion>
#include <QTest>

#include <algorithm>
#include <vector>

class TestTileGrid : public QObject
{
    Q_OBJECT

private slots:
    void everyPixelIsInOneTile_data();
    void everyPixelIsInOneTile();
    void pixelsGrowToTheTilesThatTheyTouch();
    void whatLiesOutsideTouchesNone();
    void nothingHasNoTiles();
};

namespace {

struct Tile
{
    std::size_t number;
    QRect pixels;
};

std::vector<Tile> tilesTouched(const TileGrid &grid, const QRect &pixels)
{
    std::vector<Tile> tiles;
    grid.forEachTile(
        pixels, [&](std::size_t number, const QRect &area) { tiles.push_back({number, area}); });
    return tiles;
}

} // namespace

void TestTileGrid::everyPixelIsInOneTile_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("count");
    QTest::newRow("a pixel") << QSize(1, 1) << 1;
    QTest::newRow("a tile") << QSize(32, 32) << 1;
    QTest::newRow("a pixel more") << QSize(33, 33) << 4;
    QTest::newRow("a pixel less") << QSize(63, 31) << 2;
    QTest::newRow("whole tiles") << QSize(96, 64) << 6;
    QTest::newRow("a screen") << QSize(1366, 768) << 43 * 24;
}

void TestTileGrid::everyPixelIsInOneTile()
{
    QFETCH(const QSize, size);
    QFETCH(const int, count);
    const TileGrid grid(size);
    const auto tiles = tilesTouched(grid, QRect(QPoint(), size));
    QCOMPARE(grid.count(), static_cast<std::size_t>(count));
    QCOMPARE(tiles.size(), grid.count());

    QRegion covered;
    std::vector<std::size_t> numbers;
    for (const auto &tile : tiles) {
        QVERIFY(!covered.intersects(tile.pixels));
        covered += tile.pixels;
        QVERIFY(tile.pixels.x() % TileGrid::side == 0 && tile.pixels.y() % TileGrid::side == 0);
        QVERIFY(tile.pixels.width() <= TileGrid::side && tile.pixels.height() <= TileGrid::side);
        QVERIFY(tile.number < grid.count());
        numbers.push_back(tile.number);
    }
    QCOMPARE(covered, QRegion(QRect(QPoint(), size)));
    std::ranges::sort(numbers);
    QVERIFY(std::ranges::adjacent_find(numbers) == numbers.end());
}

void TestTileGrid::pixelsGrowToTheTilesThatTheyTouch()
{
    const TileGrid grid({100, 70});
    QCOMPARE(grid.wholeTiles({40, 10, 1, 1}), QRect(32, 0, 32, 32));
    QCOMPARE(grid.wholeTiles({31, 31, 2, 2}), QRect(0, 0, 64, 64));
    QCOMPARE(grid.wholeTiles({32, 32, 32, 32}), QRect(32, 32, 32, 32));
    QCOMPARE(grid.wholeTiles({97, 65, 1, 1}), QRect(96, 64, 4, 6));
    QCOMPARE(grid.wholeTiles({-50, -50, 1000, 51}), QRect(0, 0, 100, 32));

    const auto tiles = tilesTouched(grid, {63, 31, 2, 2});
    QCOMPARE(tiles.size(), std::size_t{4});
    QCOMPARE(tiles.front().pixels, QRect(32, 0, 32, 32));
    QCOMPARE(tiles.back().pixels, QRect(64, 32, 32, 32));
    // A tile has the same number whichever pixels touch it.
    const auto all = tilesTouched(grid, {0, 0, 100, 70});
    for (const auto &tile : tiles)
        QCOMPARE(all.at(tile.number).pixels, tile.pixels);
}

void TestTileGrid::whatLiesOutsideTouchesNone()
{
    const TileGrid grid({100, 70});
    for (const QRect &outside : {QRect(100, 0, 5, 5), QRect(0, 70, 5, 5), QRect(-5, 0, 5, 5),
                                 QRect(10, 10, 0, 5), QRect()}) {
        QVERIFY(grid.wholeTiles(outside).isEmpty());
        QVERIFY(tilesTouched(grid, outside).empty());
    }
}

void TestTileGrid::nothingHasNoTiles()
{
    for (const TileGrid &grid :
         {TileGrid(), TileGrid({0, 0}), TileGrid({0, 50}), TileGrid({50, 0})}) {
        QCOMPARE(grid.count(), std::size_t{0});
        QVERIFY(tilesTouched(grid, {0, 0, 100, 100}).empty());
    }
}

PLUMARA_GUILESS_TEST(TestTileGrid)
#include "tst_tilegrid.moc"
