#include "items/arrowlineitem.h"

#include "tests/support/itemcanvas.h"
#include "tests/support/itemfacts.h"
#include "tests/support/menuanswer.h"
#include "tests/support/paintrecorder.h"

#include <QCursor>
#include <QGraphicsRectItem>
#include <QPointer>
#include <QSignalSpy>
#include <QStyleOptionGraphicsItem>
#include <QTest>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

class TestArrowLineItem : public QObject
{
    Q_OBJECT

private slots:
    void isAnObjectWithOneSignal();
    void isFoundByItsBases();
    void startsBlackTwoWideAndRound();
    void liesAboveStrokesAndNotes();
    void takesAGraphicsParentOnly();
    void canBeMovedAndSelectedOnly();

    void colorAndWidthChangeNothingElseOfThePen();
    void colorAndWidthRepaint();
    void aChangeStartsFromTheArrowsOwnPen();

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

    void nothingTells();
    void geometryIsToldOnlyWithTheFlagThatArrowsLack();

    void aDragCountsItsFirstStepTwice();
    void aDragShowsTheClosedHand();
    void theMiddleButtonDoesNotDrag();
    void releasingOneOfTwoButtonsEndsTheDrag();
    void theRightButtonDoesNotDrag();
    void belongsToItsScene();
};

namespace {

QPen penOf(const ArrowLineItem &arrow)
{
    return arrow.QGraphicsLineItem::pen();
}

QPen roundPen(const QColor &color, qreal width)
{
    return {QBrush(color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

QList<PaintedShape> headsOf(ArrowLineItem &arrow, QStyle::State state = QStyle::State_None)
{
    PaintRecorder recorder;
    QPainter painter(&recorder);
    QStyleOptionGraphicsItem option;
    option.state = state;
    arrow.paint(&painter, &option);
    painter.end();
    return recorder.ofKind(PaintedShape::Polygon);
}

qreal distance(const QPointF &a, const QPointF &b)
{
    return QLineF(a, b).length();
}

/// An arrow from (100, 100) to (300, 100) on a canvas.
struct ArrowOnCanvas
{
    ItemCanvas canvas;
    ArrowLineItem *arrow = canvas.add(new ArrowLineItem({100, 100}, {300, 100}));
};

} // namespace

void TestArrowLineItem::isAnObjectWithOneSignal()
{
    verifyOneSignal(ArrowLineItem::staticMetaObject, "ArrowLineItem", QObject::staticMetaObject);
}

void TestArrowLineItem::isFoundByItsBases()
{
    ArrowLineItem arrow({}, {});
    verifyCasts<QGraphicsLineItem>(arrow, "ArrowLineItem", "QGraphicsLineItem");
}

void TestArrowLineItem::startsBlackTwoWideAndRound()
{
    const ArrowLineItem arrow({1, 2}, {3.5, -4});
    QCOMPARE(arrow.line(), QLineF(1, 2, 3.5, -4));
    QCOMPARE(penOf(arrow), roundPen(Qt::black, 2.0));
    QCOMPARE(arrow.pos(), QPointF());
}

void TestArrowLineItem::liesAboveStrokesAndNotes()
{
    QCOMPARE(ArrowLineItem({}, {}).zValue(), 2.0);
}

void TestArrowLineItem::takesAGraphicsParentOnly()
{
    QGraphicsRectItem sheet;
    auto *const arrow = new ArrowLineItem({}, {}, &sheet);
    QCOMPARE(arrow->parentItem(), &sheet);
    QCOMPARE(arrow->parent(), nullptr);
}

void TestArrowLineItem::canBeMovedAndSelectedOnly()
{
    const ArrowLineItem arrow({}, {});
    QCOMPARE(arrow.flags(), QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
}

void TestArrowLineItem::colorAndWidthChangeNothingElseOfThePen()
{
    ArrowLineItem arrow({}, {});
    arrow.setColor(QColor(1, 2, 3, 4));
    arrow.setWidth(7);
    QCOMPARE(penOf(arrow), roundPen(QColor(1, 2, 3, 4), 7.0));
}

void TestArrowLineItem::colorAndWidthRepaint()
{
    ArrowOnCanvas on;
    QSignalSpy changed(&on.canvas.scene, &QGraphicsScene::changed);
    QTRY_VERIFY(!changed.isEmpty());

    changed.clear();
    on.arrow->setColor(Qt::black);
    QTRY_VERIFY(!changed.isEmpty());

    changed.clear();
    on.arrow->setWidth(2);
    QTRY_VERIFY(!changed.isEmpty());
}

void TestArrowLineItem::aChangeStartsFromTheArrowsOwnPen()
{
    ArrowLineItem arrow({}, {});
    arrow.setPen(QPen(Qt::red, 5));
    arrow.setWidth(9);
    QCOMPARE(penOf(arrow), roundPen(Qt::black, 9.0));
}

void TestArrowLineItem::linesFromTenUnitsOnHaveAHead_data()
{
    QTest::addColumn<QPointF>("tip");
    QTest::addColumn<int>("heads");
    QTest::newRow("no length") << QPointF(0, 0) << 0;
    QTest::newRow("the last below ten") << QPointF(std::nextafter(10.0, 0.0), 0) << 0;
    QTest::newRow("ten") << QPointF(10, 0) << 1;
    QTest::newRow("ten, slanted") << QPointF(6, -8) << 1;
    QTest::newRow("much more") << QPointF(500, 300) << 1;
}

void TestArrowLineItem::linesFromTenUnitsOnHaveAHead()
{
    QFETCH(QPointF, tip);
    QFETCH(int, heads);
    ArrowLineItem arrow({0, 0}, tip);
    QCOMPARE(headsOf(arrow).size(), heads);
}

void TestArrowLineItem::theHeadGrowsWithTheWidth_data()
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

void TestArrowLineItem::theHeadGrowsWithTheWidth()
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

void TestArrowLineItem::theHeadIsFilledAndOutlinedLikeTheLine()
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

void TestArrowLineItem::theHeadOfASelectedArrowKeepsItsFill()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    arrow.setColor(Qt::red);
    const auto heads = headsOf(arrow, QStyle::State_Selected);
    QCOMPARE(heads.size(), 1);
    QCOMPARE(heads.constFirst().brush, QBrush(Qt::red, Qt::SolidPattern));
    // The pen is the one that the toolkit has drawn the selection's outline with.
    QCOMPARE(heads.constFirst().pen.style(), Qt::DashLine);
}

void TestArrowLineItem::theHeadFollowsThePenThatIsShown()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    arrow.setPen(QPen(Qt::blue, 9));
    const auto heads = headsOf(arrow);
    QCOMPARE(heads.size(), 1);
    QCOMPARE(heads.constFirst().brush, QBrush(Qt::blue, Qt::SolidPattern));
    QCOMPARE(distance(heads.constFirst().points.at(0), heads.constFirst().points.at(1)), 27.0);
}

void TestArrowLineItem::theHeadPointsWhereTheLineGoes_data()
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

void TestArrowLineItem::theHeadPointsWhereTheLineGoes()
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

void TestArrowLineItem::theHeadReachesOutOfTheBoundingRectangle()
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

void TestArrowLineItem::nothingTells()
{
    ArrowOnCanvas on;
    const QSignalSpy modified(on.arrow, &ArrowLineItem::itemModified);
    QVERIFY(on.canvas.show());
    on.arrow->setColor(Qt::green);
    on.arrow->setWidth(5);
    on.arrow->setLine(100, 100, 200, 100);
    changeAllButGeometry(*on.arrow);
    on.canvas.pointer.drag({{150, 100}, {170, 130}});
    changeGeometry(*on.arrow);
    QCOMPARE(modified.count(), 0);
}

void TestArrowLineItem::geometryIsToldOnlyWithTheFlagThatArrowsLack()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    arrow.setFlag(QGraphicsItem::ItemSendsGeometryChanges);
    const QSignalSpy modified(&arrow, &ArrowLineItem::itemModified);
    changeGeometry(arrow);
    QCOMPARE(modified.count(), 4);
    QCOMPARE(arrow.pos(), QPointF(30, 40));
}

void TestArrowLineItem::aDragCountsItsFirstStepTwice()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press({150, 100});
    QVERIFY(on.arrow->isSelected());
    on.canvas.pointer.move({160, 103});
    QCOMPARE(on.arrow->pos(), QPointF(20, 6));
    on.canvas.pointer.move({190, 95});
    on.canvas.pointer.release({190, 95});
    QCOMPARE(on.arrow->pos(), QPointF(50, -2));

    on.canvas.pointer.move({250, 250});
    QCOMPARE(on.arrow->pos(), QPointF(50, -2));
    // The line itself stays as it was drawn.
    QCOMPARE(on.arrow->line(), QLineF(100, 100, 300, 100));
}

void TestArrowLineItem::aDragShowsTheClosedHand()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    QVERIFY(!on.arrow->hasCursor());
    on.canvas.pointer.press({150, 100});
    QCOMPARE(on.arrow->cursor().shape(), Qt::ClosedHandCursor);
    on.canvas.pointer.release({150, 100});
    QVERIFY(on.arrow->hasCursor());
    QCOMPARE(on.arrow->cursor().shape(), Qt::ArrowCursor);
}

void TestArrowLineItem::theMiddleButtonDoesNotDrag()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press({150, 100}, Qt::MiddleButton);
    QVERIFY(!on.arrow->hasCursor());
    on.canvas.pointer.move({190, 140});
    on.canvas.pointer.release({190, 140}, Qt::MiddleButton);
    QCOMPARE(on.arrow->pos(), QPointF());
}

void TestArrowLineItem::releasingOneOfTwoButtonsEndsTheDrag()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press({150, 100}, Qt::LeftButton);
    on.canvas.pointer.press({150, 100}, Qt::MiddleButton);
    on.canvas.pointer.release({150, 100}, Qt::LeftButton);
    on.canvas.pointer.move({190, 140});
    QCOMPARE(on.arrow->pos(), QPointF());
    on.canvas.pointer.release({190, 140}, Qt::MiddleButton);
}

void TestArrowLineItem::theRightButtonDoesNotDrag()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    on.canvas.pointer.press({150, 100}, Qt::RightButton);
    QVERIFY(!on.arrow->hasCursor());
    // The base class took the press, as it does for every item that can be moved.
    QCOMPARE(on.canvas.scene.mouseGrabberItem(), on.arrow);
    on.canvas.pointer.move({190, 140});
    QCOMPARE(on.arrow->pos(), QPointF());
    on.canvas.pointer.move({150, 100});
    on.canvas.pointer.release({150, 100}, Qt::RightButton);
    QVERIFY(menu.seen()); // with the press, or with the release, as the platform has it
    QVERIFY(!on.arrow->isSelected());
}

void TestArrowLineItem::belongsToItsScene()
{
    ArrowOnCanvas on;
    const QPointer<ArrowLineItem> arrow(on.arrow);
    on.canvas.scene.clear();
    QVERIFY(arrow.isNull());
}

QTEST_MAIN(TestArrowLineItem)
#include "tst_arrowlineitem.moc"
