// An arrow: its pen, its signal, and how the pointer moves it.

#include "items/arrowlineitem.h"

#include "tests/items/arrowoncanvas.h"
#include "tests/items/itemfacts.h"
#include "tests/items/menuanswer.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/main/registeredtest.h"

#include <QCursor>
#include <QGraphicsRectItem>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

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

    void nothingEmits();
    void geometryIsReportedOnlyWithTheFlagThatArrowsLack();

    void aDragCountsItsFirstStepTwice();
    void aDragShowsTheClosedHand();
    void theMiddleButtonDoesNotDrag();
    void releasingOneOfTwoButtonsEndsTheDrag();
    void releasingTheOtherButtonEndsTheDragToo();
    void aClickOnOneOfSeveralDeselectsTheOthers();
    void theRightButtonDoesNotDrag();
    void belongsToItsScene();
};

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

void TestArrowLineItem::nothingEmits()
{
    ArrowOnCanvas on;
    const QSignalSpy modified(on.arrow, &ArrowLineItem::itemModified);
    QVERIFY(on.canvas.show());
    on.arrow->setColor(Qt::green);
    on.arrow->setWidth(5);
    on.arrow->setLine(100, 100, 200, 100);
    changeAllButGeometry(*on.arrow);
    on.canvas.pointer.drag({on.onLine, {170, 130}});
    changeGeometry(*on.arrow);
    QCOMPARE(modified.count(), 0);
}

void TestArrowLineItem::geometryIsReportedOnlyWithTheFlagThatArrowsLack()
{
    ArrowLineItem arrow({0, 0}, {100, 0});
    verifyGeometryIsReportedWithItsFlag(arrow);
}

void TestArrowLineItem::aDragCountsItsFirstStepTwice()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onLine);
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
    on.canvas.pointer.press(on.onLine);
    QCOMPARE(on.arrow->cursor().shape(), Qt::ClosedHandCursor);
    on.canvas.pointer.release(on.onLine);
    QVERIFY(on.arrow->hasCursor());
    QCOMPARE(on.arrow->cursor().shape(), Qt::ArrowCursor);
}

void TestArrowLineItem::theMiddleButtonDoesNotDrag()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onLine, Qt::MiddleButton);
    QVERIFY(!on.arrow->hasCursor());
    on.canvas.pointer.move({190, 140});
    on.canvas.pointer.release({190, 140}, Qt::MiddleButton);
    QCOMPARE(on.arrow->pos(), QPointF());
}

void TestArrowLineItem::releasingOneOfTwoButtonsEndsTheDrag()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onLine, Qt::LeftButton);
    on.canvas.pointer.press(on.onLine, Qt::MiddleButton);
    on.canvas.pointer.release(on.onLine, Qt::LeftButton);
    on.canvas.pointer.move({190, 140});
    QCOMPARE(on.arrow->pos(), QPointF());
    on.canvas.pointer.release({190, 140}, Qt::MiddleButton);
}

void TestArrowLineItem::releasingTheOtherButtonEndsTheDragToo()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onLine, Qt::LeftButton);
    on.canvas.pointer.press(on.onLine, Qt::MiddleButton);
    on.canvas.pointer.release(on.onLine, Qt::MiddleButton);
    QVERIFY(on.arrow->hasCursor());
    QCOMPARE(on.arrow->cursor().shape(), Qt::ArrowCursor);
    // The toolkit moves it on with the left button, so no step counts twice.
    on.canvas.pointer.move({160, 103});
    QCOMPARE(on.arrow->pos(), QPointF(10, 3));
    on.canvas.pointer.release({160, 103}, Qt::LeftButton);
}

void TestArrowLineItem::aClickOnOneOfSeveralDeselectsTheOthers()
{
    ArrowOnCanvas on;
    auto *const other = on.canvas.add(new ArrowLineItem({100, 300}, {300, 300}));
    QVERIFY(on.canvas.show());
    on.arrow->setSelected(true);
    other->setSelected(true);
    on.canvas.pointer.press(on.onLine);
    QVERIFY(other->isSelected());
    on.canvas.pointer.release(on.onLine);
    QVERIFY(on.arrow->isSelected());
    QVERIFY(!other->isSelected());
}

void TestArrowLineItem::theRightButtonDoesNotDrag()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    on.canvas.pointer.press(on.onLine, Qt::RightButton);
    QVERIFY(!on.arrow->hasCursor());
    // The base class took the press, as it does for every item that can be moved.
    QCOMPARE(on.canvas.scene.mouseGrabberItem(), on.arrow);
    on.canvas.pointer.move({190, 140});
    QCOMPARE(on.arrow->pos(), QPointF());
    on.canvas.pointer.move(on.onLine);
    on.canvas.pointer.release(on.onLine, Qt::RightButton);
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

PLUMARA_TEST(TestArrowLineItem)
#include "tst_arrowlineitem.moc"
