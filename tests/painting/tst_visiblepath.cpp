// What is cut off a path cannot be seen.
#include "painting/visiblepath.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QImage>
#include <QPainter>
#include <QTest>

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

PLUMARA_TEST(TestVisiblePath)
#include "tst_visiblepath.moc"
