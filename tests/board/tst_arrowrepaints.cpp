// How much of the canvas is painted anew because of arrows, whose heads reach outside their
// bounding rectangles.

#include "items/arrowlineitem.h"
#include "tests/board/paintedcanvas.h"
#include "tests/board/shownboard.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"

#include <QPen>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Adds an arrow from (500, 300) to (700, 300) whose pen has that width.
QGraphicsLineItem *addArrow(ShownBoard &board, int width)
{
    auto *const arrow = new ArrowLineItem({500, 300}, {700, 300});
    arrow->setWidth(width);
    board.scene.addItem(arrow);
    return arrow;
}

/// The part of the canvas that is painted when a small stroke is added around (1000, 600).
QRegion paintedForASmallChange(ShownBoard &board)
{
    const PaintedCanvas painted(*board.view.viewport());
    addStroke(board.scene, {{1000, 600}, {1010, 610}});
    [&] { QTRY_VERIFY(!painted.region.isEmpty()); }();
    return painted.region;
}

using Change = void (*)(QGraphicsLineItem *arrow);

} // namespace

class TestArrowRepaints : public QObject
{
    Q_OBJECT

private slots:
    void aHeadThatGoesIsPaintedOver_data();
    void aHeadThatGoesIsPaintedOver();
    void aWideArrowWidensNoRepaint();
};

void TestArrowRepaints::aHeadThatGoesIsPaintedOver_data()
{
    QTest::addColumn<Change>("change");
    addRow<Change>("moved", [](QGraphicsLineItem *arrow) { arrow->setY(-200); });
    addRow<Change>("grown thin",
                   [](QGraphicsLineItem *arrow) { arrow->setPen(QPen(Qt::black, 2)); });
}

void TestArrowRepaints::aHeadThatGoesIsPaintedOver()
{
    QFETCH(const Change, change);
    ShownBoard board;
    auto *const arrow = addArrow(board, 200);
    const QPoint inHead(510, 470);
    QVERIFY(!arrow->sceneBoundingRect().contains(inHead));
    board.processEvents();
    const PaintedCanvas painted(*board.view.viewport());

    change(arrow);

    QTRY_VERIFY(painted.region.contains(board.view.mapFromScene(inHead)));
}

void TestArrowRepaints::aWideArrowWidensNoRepaint()
{
    ShownBoard board;
    addArrow(board, 500);
    board.processEvents();

    QVERIFY(!paintedForASmallChange(board).contains(QPoint(100, 100)));
}

PLUMARA_TEST(TestArrowRepaints)
#include "tst_arrowrepaints.moc"
