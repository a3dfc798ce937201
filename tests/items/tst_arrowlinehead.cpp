// The head of an arrow: when it has one, its size, place and colour.

#include "items/arrowlineitem.h"

#include "tests/items/arrowoncanvas.h"
#include "tests/items/paintrecorder.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/main/registeredtest.h"

#include <QTest>

#include <cmath>

class TestArrowLineHead : public QObject
{
    Q_OBJECT

private slots:
    void linesFromTenUnitsOnHaveAHead_data();
    void linesFromTenUnitsOnHaveAHead();
    void theHeadGrowsWithTheWidth_data();
    void theHeadGrowsWithTheWidth();
    void theHeadIsFilledAndOutlinedLikeTheLine();
    void theHeadOfASelectedArrowKeepsItsFill();
    void theHeadFollowsThePenThatIsShown();
    void theHeadPointsWhereTheLineGoes_data();
    void theHeadPointsWhereTheLineGoes();
    void theHeadReachesOutOfTheBoundingRectangle();
    void theHeadLiesWithinItsReach_data();
    void theHeadLiesWithinItsReach();
};

namespace {

QList<PaintedShape> headsOf(ArrowLineItem &arrow)
{
    auto shapes = paintedBy(arrow);
    shapes.removeIf([](const auto &shape) { return shape.kind != PaintedShape::Polygon; });
    return shapes;
}

qreal distance(const QPointF &a, const QPointF &b)
{
    return QLineF(a, b).length();
}

} // namespace

void TestArrowLineHead::linesFromTenUnitsOnHaveAHead_data()
{
    QTest::addColumn<QPointF>("tip");
    QTest::addColumn<int>("heads");
    QTest::newRow("no length") << QPointF(0, 0) << 0;
    QTest::newRow("the last below ten") << QPointF(std::nextafter(10.0, 0.0), 0) << 0;
    QTest::newRow("ten") << QPointF(10, 0) << 1;
    QTest::newRow("ten, slanted") << QPointF(6, -8) << 1;
    QTest::newRow("much more") << QPointF(500, 300) << 1;
}

void TestArrowLineHead::linesFromTenUnitsOnHaveAHead()
{
    QFETCH(QPointF, tip);
    QFETCH(int, heads);
    ArrowLineItem arrow({0, 0}, tip);
    QCOMPARE(headsOf(arrow).size(), heads);
}

void TestArrowLineHead::theHeadGrowsWithTheWidth_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<qreal>("side");
    // The second corner's way back along the line, and aside of it.
    QTest::addColumn<qreal>("back");
    QTest::addColumn<qreal>("aside");
    QTest::newRow("thin") << 2 << 20.0 << 18.019377358 << 8.677674782;
    QTest::newRow("medium") << 5 << 23.0 << 20.722283962 << 9.979326000;
    QTest::newRow("thick") << 9 << 27.0 << 24.326159433 << 11.714860956;
}

void TestArrowLineHead::theHeadGrowsWithTheWidth()
{
    QFETCH(int, width);
    QFETCH(qreal, side);
    QFETCH(qreal, back);
    QFETCH(qreal, aside);
    ArrowLineItem arrow({0, 50}, {100, 50});
    arrow.setWidth(width);

    const auto heads = headsOf(arrow);
    QCOMPARE(heads.size(), 1);
    const QPolygonF corners = heads.constFirst().points;
    QCOMPARE(corners.size(), 3);
    QCOMPARE(corners.at(0), QPointF(100, 50));
    QCOMPARE(distance(corners.at(0), corners.at(1)), side);
    QCOMPARE(distance(corners.at(0), corners.at(2)), side);
    constexpr qreal tolerance = 1e-6;
    QVERIFY(distance(corners.at(1), QPointF(100 - back, 50 + aside)) < tolerance);
    QVERIFY(distance(corners.at(2), QPointF(100 - back, 50 - aside)) < tolerance);
}

void TestArrowLineHead::theHeadIsFilledAndOutlinedLikeTheLine()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    arrow.setColor(Qt::red);
    arrow.setWidth(5);
    const auto heads = headsOf(arrow);
    QCOMPARE(heads.size(), 1);
    QCOMPARE(heads.constFirst().brush, QBrush(Qt::red, Qt::SolidPattern));
    QCOMPARE(heads.constFirst().pen, roundPen(Qt::red, 5.0));
    QCOMPARE(heads.constFirst().fillRule, QPaintEngine::OddEvenMode);
}

void TestArrowLineHead::theHeadOfASelectedArrowKeepsItsFill()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    arrow.setColor(Qt::red);
    arrow.setSelected(true);
    const auto heads = headsOf(arrow);
    QCOMPARE(heads.size(), 1);
    QCOMPARE(heads.constFirst().brush, QBrush(Qt::red, Qt::SolidPattern));
    // The pen is the one that the toolkit has drawn the selection's outline with.
    QCOMPARE(heads.constFirst().pen.style(), Qt::DashLine);
}

void TestArrowLineHead::theHeadFollowsThePenThatIsShown()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    arrow.setPen(QPen(Qt::blue, 9));
    const auto heads = headsOf(arrow);
    QCOMPARE(heads.size(), 1);
    QCOMPARE(heads.constFirst().brush, QBrush(Qt::blue, Qt::SolidPattern));
    QCOMPARE(distance(heads.constFirst().points.at(0), heads.constFirst().points.at(1)), 27.0);
}

void TestArrowLineHead::theHeadPointsWhereTheLineGoes_data()
{
    QTest::addColumn<QLineF>("line");
    // Two places inside the head and beside the line, close to the tip.
    QTest::addColumn<QPoint>("onHead");
    QTest::addColumn<QPoint>("alsoOnHead");
    QTest::newRow("downwards") << QLineF(200, 100, 200, 300) << QPoint(195, 285)
                               << QPoint(205, 285);
    QTest::newRow("upwards") << QLineF(200, 300, 200, 100) << QPoint(195, 115) << QPoint(205, 115);
    QTest::newRow("to the left") << QLineF(300, 200, 100, 200) << QPoint(115, 195)
                                 << QPoint(115, 205);
    QTest::newRow("to the right") << QLineF(100, 200, 300, 200) << QPoint(285, 195)
                                  << QPoint(285, 205);
}

void TestArrowLineHead::theHeadPointsWhereTheLineGoes()
{
    QFETCH(QLineF, line);
    QFETCH(QPoint, onHead);
    QFETCH(QPoint, alsoOnHead);
    ItemCanvas canvas;
    canvas.add(new ArrowLineItem(line.p1(), line.p2()));

    const QImage picture = canvas.picture();
    QCOMPARE(picture.pixelColor(onHead), QColor(Qt::black));
    QCOMPARE(picture.pixelColor(alsoOnHead), QColor(Qt::black));
    // The line's other end has none.
    const QPoint farEnd = (line.p1() + line.p2()).toPoint();
    QCOMPARE(picture.pixelColor(farEnd - onHead), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(farEnd - alsoOnHead), QColor(Qt::white));
}

void TestArrowLineHead::theHeadReachesOutOfTheBoundingRectangle()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    QGraphicsLineItem bare(0, 0, 100, 0);
    bare.setPen(penOf(arrow));
    QCOMPARE(arrow.boundingRect(), bare.boundingRect());
    QCOMPARE(arrow.shape(), bare.shape());
    const auto heads = headsOf(arrow);
    QCOMPARE(heads.size(), 1);
    QVERIFY(!arrow.boundingRect().contains(heads.constFirst().points.at(1)));
    QVERIFY(!arrow.shape().contains(heads.constFirst().points.at(1)));
}

void TestArrowLineHead::theHeadLiesWithinItsReach_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<int>("width");
    QTest::newRow("flat") << QLineF(0, 0, 100, 0) << 2;
    QTest::newRow("upright") << QLineF(0, 100, 0, 0) << 5;
    QTest::newRow("slanted") << QLineF(0, 0, 80, 60) << 9;
    QTest::newRow("shorter than its head") << QLineF(0, 0, -10, 0) << 9;
    // Wider than the arrow's own pen, as in an opened board.
    QTest::newRow("very wide") << QLineF(0, 0, 10, 0) << 500;
}

void TestArrowLineHead::theHeadLiesWithinItsReach()
{
    QFETCH(QLineF, line);
    QFETCH(int, width);
    ArrowLineItem arrow(line.p1(), line.p2());
    arrow.setPen(QPen(Qt::red, width));

    const qreal reach = arrow.headReach();
    const QRectF within = arrow.boundingRect().adjusted(-reach, -reach, reach, reach);
    const auto heads = headsOf(arrow);
    QCOMPARE(heads.size(), 1);
    const qreal outline = width / 2.0;
    for (const auto &corner : heads.constFirst().points) {
        const QRectF painted(corner.x() - outline, corner.y() - outline, width, width);
        QVERIFY(within.contains(painted));
    }
}

PLUMARA_TEST(TestArrowLineHead)
#include "tst_arrowlinehead.moc"
