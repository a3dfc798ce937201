// What is cut off a path cannot be seen.
#include "painting/visiblepath.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <functional>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QRectF view(0, 0, 200, 150);

QImage seen(const QPainterPath &path, qreal width)
{
    QImage image(view.size().toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(roundPen(Qt::black, width));
    painter.drawPath(path);
    return image;
}

/// To the last bit: the toolkit's own comparison allows for rounding.
bool isSame(QPointF one, QPointF other)
{
    return std::equal_to()(one.x(), other.x()) && std::equal_to()(one.y(), other.y());
}

} // namespace

class TestVisiblePath : public QObject
{
    Q_OBJECT

private slots:
    void aPathInSightStaysWhole();
    void whatIsSeenStaysTheSame_data();
    void whatIsSeenStaysTheSame();
    void whatIsOutOfSightIsCutOff();
    void piecesThatMeetStayOneLine();
    void aPathWithCurvesStaysWhole();
    void aLongPathIsDrawnTheSame_data();
    void aLongPathIsDrawnTheSame();
    void aLongPathIsDrawnToTheLastPixel();
    void longLinesAreDrawnInLessTimeThanAsAWhole();
    void aLineInSightStaysTheSame();
    void noEndInSightIsRounded();
    void aLineIsCutWhereItGetsOutOfSight();
    void anEndInSightStaysToTheLastBit_data();
    void anEndInSightStaysToTheLastBit();
};

void TestVisiblePath::aPathInSightStaysWhole()
{
    const QPainterPath path = pathThrough({{10, 10}, {190, 20}, {100, 140}});
    QCOMPARE(visiblePath(path, view, 2), path);
}

void TestVisiblePath::whatIsSeenStaysTheSame_data()
{
    QTest::addColumn<QPainterPath>("path");
    QTest::addColumn<qreal>("width");
    const auto add = [](const char *name, const QList<QPointF> &points, qreal width) {
        QTest::newRow(name) << pathThrough(points) << width;
    };
    add("in and out", {{50, 50}, {900, 80}, {60, 120}}, 3);
    add("across", {{-500, -300}, {700, 450}}, 2);
    add("a corner beside the edge", {{100, 50}, {203, 75}, {100, 100}, {-400, 100}}, 12);
    add("a corner above the edge", {{50, 100}, {100, -3}, {150, 100}, {100, 900}}, 12);
    add("a corner below the edge", {{50, 50}, {100, 153}, {150, 50}, {100, -900}}, 12);
    add("an end beside the edge", {{-400, 75}, {-3, 75}}, 12);
    add("far away", {{100, 75}, {4000, 75}, {150, 3000}}, 4);
}

void TestVisiblePath::whatIsSeenStaysTheSame()
{
    QFETCH(const QPainterPath, path);
    QFETCH(const qreal, width);
    const QPainterPath visible = visiblePath(path, view, width);
    QVERIFY(visible != path);
    QVERIFY(seen(path, width) != seen({}, width));

    const QImage before = seen(path, width);
    const QImage after = seen(visible, width);
    // Where a line was cut, its direction is rounded.
    constexpr int rounding = 3;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x)
            QVERIFY(qAbs(qGray(before.pixel(x, y)) - qGray(after.pixel(x, y))) <= rounding);
    }
}

void TestVisiblePath::whatIsOutOfSightIsCutOff()
{
    const QPainterPath path = pathThrough({{100, 75}, {1e7, 75}, {120, 1e7}, {-1e12, 80}});
    const QPainterPath visible = visiblePath(path, view, 2);
    QVERIFY(!visible.isEmpty());
    const QRectF nearby(-100, -100, 400, 350);
    for (int i = 0; i < visible.elementCount(); ++i)
        QVERIFY(nearby.contains(visible.elementAt(i)));
    QVERIFY(visiblePath(pathThrough({{1000, 0}, {1000, 500}}), view, 2).isEmpty());
}

void TestVisiblePath::piecesThatMeetStayOneLine()
{
    const QPainterPath path = pathThrough({{10, 10}, {50, 10}, {50, 60}, {900, 60}});
    const QPainterPath visible = visiblePath(path, view, 2);
    QCOMPARE(visible.elementCount(), 4);
    QCOMPARE(visible.toSubpathPolygons().size(), 1);
}

void TestVisiblePath::aPathWithCurvesStaysWhole()
{
    QPainterPath path({10, 10});
    path.cubicTo({900, 10}, {900, 140}, {10, 140});
    QCOMPARE(visiblePath(path, view, 2), path);
}

void TestVisiblePath::aLongPathIsDrawnTheSame_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::newRow("100 %") << 1.0;
    QTest::newRow("125 %") << 1.25;
    QTest::newRow("200 %") << 2.0;
}

void TestVisiblePath::aLongPathIsDrawnTheSame()
{
    QFETCH(const qreal, ratio);
    constexpr int points = 5000;
    QRandomGenerator random(7);
    QPainterPath path(view.center());
    for (int i = 0; i < points; ++i)
        path.lineTo(random.bounded(-20, 220), random.bounded(-20, 170));
    path.lineTo(1e9, 75);
    path.lineTo(50, 60);
    const auto drawn = [&](const auto &draw) {
        QImage image((view.size() * ratio).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(3.5, -2.25);
        painter.scale(0.3, 0.3);
        painter.setPen(roundPen(Qt::black, 2));
        draw(painter, image.rect());
        return image;
    };
    const QImage whole = drawn([&](QPainter &painter, const QRect &pixels) {
        const QRectF seen = painter.deviceTransform().inverted().mapRect(QRectF(pixels));
        painter.drawPath(visiblePath(path, seen, 2));
    });
    const QImage pieces = drawn(
        [&](QPainter &painter, const QRect &pixels) { drawVisiblePath(painter, path, pixels); });

    // Lines that were cut are rounded, and many of them cross.
    constexpr int rounding = 5;
    int dark = 0;
    for (int y = 0; y < whole.height(); ++y) {
        for (int x = 0; x < whole.width(); ++x) {
            QVERIFY(qAbs(qGray(whole.pixel(x, y)) - qGray(pieces.pixel(x, y))) <= rounding);
            dark += qGray(pieces.pixel(x, y)) < 128;
        }
    }
    QVERIFY(dark > 500);
}

void TestVisiblePath::aLongPathIsDrawnToTheLastPixel()
{
    // A pixel more than a square.
    constexpr int side = 129;
    QPainterPath path({0, 0});
    for (int i = 0; i <= side; ++i) {
        path.lineTo(i, i % 2 == 0 ? side : 0);
        path.lineTo(i, i % 2 == 0 ? 0 : side);
    }
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(roundPen(Qt::black, 2));
    drawVisiblePath(painter, path, image.rect());
    painter.end();
    QImage black(image.size(), image.format());
    black.fill(Qt::black);
    QCOMPARE(image, black);
}

void TestVisiblePath::longLinesAreDrawnInLessTimeThanAsAWhole()
{
    constexpr int lines = 50;
    QPainterPath path;
    for (int i = 0; i <= lines; ++i)
        path.lineTo((i * i) % 97 * 19, (i * 7) % 101 * 10);
    QImage image(1920, 1080, QImage::Format_RGB32);
    // The best of some runs is one in which nothing else held the machine up.
    const auto leastTime = [&](const auto &draw) {
        constexpr int runs = 5;
        qint64 least = std::numeric_limits<qint64>::max();
        for (int i = 0; i < runs; ++i) {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(roundPen(Qt::black, 2));
            QElapsedTimer timer;
            timer.start();
            draw(painter);
            least = std::min(least, timer.nsecsElapsed());
        }
        return least;
    };
    const qint64 whole = leastTime([&](QPainter &painter) { painter.drawPath(path); });
    const qint64 pieces =
        leastTime([&](QPainter &painter) { drawVisiblePath(painter, path, image.rect()); });
    QVERIFY2(2 * pieces < whole, qPrintable(u"%1 ns and %2 ns"_s.arg(pieces).arg(whole)));
}

void TestVisiblePath::aLineInSightStaysTheSame()
{
    QCOMPARE(visibleLine({10, 20, 190, 140}, view), QLineF(10, 20, 190, 140));
    QVERIFY(!visibleLine({300, 0, 300, 100}, view));
}

void TestVisiblePath::noEndInSightIsRounded()
{
    QRandomGenerator random(5);
    const auto place = [&random] {
        return QPointF(random.bounded(view.width()), random.bounded(view.height()));
    };
    for (int i = 0; i < 100; ++i) {
        const QLineF line(place(), place());
        const QLineF visible = visibleLine(line, view).value_or(QLineF());
        QVERIFY(isSame(visible.p1(), line.p1()));
        QVERIFY(isSame(visible.p2(), line.p2()));
    }
}

void TestVisiblePath::aLineIsCutWhereItGetsOutOfSight()
{
    QCOMPARE(visibleLine({100, 75, 1e300, 75}, view), QLineF(100, 75, 200, 75));
    QCOMPARE(visibleLine({-1e300, 75, 100, 75}, view), QLineF(0, 75, 100, 75));
    QCOMPARE(visibleLine({-1e6, -1e6, 1e6, 1e6}, view), QLineF(0, 0, 150, 150));
    QCOMPARE(visibleLine({-50, 75, 1e300, 75}, view), QLineF(0, 75, 200, 75));
}

void TestVisiblePath::anEndInSightStaysToTheLastBit_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::newRow("from beside it") << QLineF(-0.1, 20.1, 190.7, 140.3);
    QTest::newRow("from above it") << QLineF(10.3, -77.7, 190.7, 140.9);
    QTest::newRow("from far away") << QLineF(-1e15, -2e15, 190.7, 140.3);
    QTest::newRow("from where numbers end") << QLineF(1e300, 1e299, 190.7, 140.3);
}

void TestVisiblePath::anEndInSightStaysToTheLastBit()
{
    QFETCH(const QLineF, line);
    const QLineF arriving = visibleLine(line, view).value_or(QLineF());
    QVERIFY(isSame(arriving.p2(), line.p2()));
    const QLineF leaving = visibleLine({line.p2(), line.p1()}, view).value_or(QLineF());
    QVERIFY(isSame(leaving.p1(), line.p2()));
    // The same way there and back.
    QCOMPARE(arriving.p1(), leaving.p2());
    QVERIFY(view.adjusted(-1, -1, 1, 1).contains(arriving.p1()));
}

PLUMARA_TEST(TestVisiblePath)
#include "tst_visiblepath.moc"
