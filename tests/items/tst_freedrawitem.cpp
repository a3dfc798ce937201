// A stroke: its pen and path, its signal, and that the pointer goes through it.

#include "items/freedrawitem.h"

#include "items/stickynoteitem.h"
#include "tests/items/itemfacts.h"
#include "tests/support/items/itemcanvas.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsRectItem>
#include <QPainterPath>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::Literals::StringLiterals;

class TestFreeDrawItem : public QObject
{
    Q_OBJECT

private slots:
    void isAnObjectWithOneSignal();
    void isFoundByItsBases();
    void startsBlackTwoWideAndRound();
    void startsEmptyAboveABareItem();
    void takesAGraphicsParentOnly();
    void cannotBeSelectedMovedOrFocused();

    void everySetterEmitsOnce_data();
    void everySetterEmitsOnce();
    void colorAndWidthChangeNothingElseOfThePen();
    void paintsWithItsColorAndWidth();
    void settingThePathRepaintsEvenIfItStaysTheSame();

    void nothingButTheSettersEmits();
    void geometryIsReportedOnlyWithTheFlagThatStrokesLack();

    void aClickNeitherSelectsNorMovesIt();
    void aClickGoesThroughToWhatLiesBeneath();
    void belongsToItsScene();
};

void TestFreeDrawItem::isAnObjectWithOneSignal()
{
    verifyOneSignal(FreeDrawItem::staticMetaObject, "FreeDrawItem", QObject::staticMetaObject);
}

void TestFreeDrawItem::isFoundByItsBases()
{
    FreeDrawItem stroke;
    verifyCasts<QGraphicsPathItem>(stroke, "FreeDrawItem", "QGraphicsPathItem");
}

void TestFreeDrawItem::startsBlackTwoWideAndRound()
{
    const FreeDrawItem stroke;
    const QPen pen = stroke.QGraphicsPathItem::pen();
    QCOMPARE(pen, roundPen(Qt::black, 2.0));
    QCOMPARE(stroke.color(), QColor(Qt::black));
}

void TestFreeDrawItem::startsEmptyAboveABareItem()
{
    const FreeDrawItem stroke;
    QVERIFY(stroke.path().isEmpty());
    QCOMPARE(stroke.zValue(), 1.0);
    QVERIFY(stroke.zValue() > QGraphicsRectItem().zValue());
}

void TestFreeDrawItem::takesAGraphicsParentOnly()
{
    QGraphicsRectItem sheet;
    auto *const stroke = new FreeDrawItem(&sheet);
    QCOMPARE(stroke->parentItem(), &sheet);
    QCOMPARE(stroke->parent(), nullptr);
    QCOMPARE(FreeDrawItem().parentItem(), nullptr);
}

void TestFreeDrawItem::cannotBeSelectedMovedOrFocused()
{
    const FreeDrawItem stroke;
    QCOMPARE(stroke.flags(), QGraphicsItem::GraphicsItemFlags());
    QCOMPARE(stroke.acceptedMouseButtons(), Qt::NoButton);
    QVERIFY(!stroke.acceptHoverEvents());
}

void TestFreeDrawItem::everySetterEmitsOnce_data()
{
    QTest::addColumn<std::function<void(FreeDrawItem &)>>("set");
    using Set = std::function<void(FreeDrawItem &)>;
    QTest::newRow("a new colour") << Set([](auto &stroke) { stroke.setColor(Qt::red); });
    QTest::newRow("the same colour") << Set([](auto &stroke) { stroke.setColor(Qt::black); });
    QTest::newRow("a new width") << Set([](auto &stroke) { stroke.setWidth(9); });
    QTest::newRow("the same width") << Set([](auto &stroke) { stroke.setWidth(2); });
    QTest::newRow("a new path") << Set(
        [](auto &stroke) { stroke.setPath(pathThrough({{0, 0}, {9, 0}})); });
    QTest::newRow("the same path") << Set([](auto &stroke) { stroke.setPath(QPainterPath()); });
}

void TestFreeDrawItem::everySetterEmitsOnce()
{
    QFETCH(std::function<void(FreeDrawItem &)>, set);
    FreeDrawItem stroke;
    const QSignalSpy modified(&stroke, &FreeDrawItem::itemModified);
    set(stroke);
    QCOMPARE(modified.count(), 1);
}

void TestFreeDrawItem::colorAndWidthChangeNothingElseOfThePen()
{
    FreeDrawItem stroke;
    stroke.setColor(QColor(1, 2, 3, 4));
    stroke.setWidth(7);
    const QPen pen = stroke.QGraphicsPathItem::pen();
    QCOMPARE(pen, roundPen(QColor(1, 2, 3, 4), 7.0));
    QCOMPARE(stroke.color(), QColor(1, 2, 3, 4));
}

void TestFreeDrawItem::paintsWithItsColorAndWidth()
{
    ItemCanvas canvas;
    auto *const stroke = canvas.add(new FreeDrawItem);
    stroke->setPath(pathThrough({{100, 100}, {200, 100}}));
    stroke->setColor(Qt::red);
    stroke->setWidth(10);

    const QImage picture = canvas.picture();
    QCOMPARE(picture.pixelColor(150, 96), QColor(Qt::red));
    QCOMPARE(picture.pixelColor(150, 103), QColor(Qt::red));
    QCOMPARE(picture.pixelColor(150, 93), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(150, 106), QColor(Qt::white));
    // The round ends reach half a width beyond the path.
    QCOMPARE(picture.pixelColor(97, 100), QColor(Qt::red));
    QCOMPARE(picture.pixelColor(95, 96), QColor(Qt::white));
}

void TestFreeDrawItem::settingThePathRepaintsEvenIfItStaysTheSame()
{
    ItemCanvas canvas;
    auto *const stroke = canvas.add(new FreeDrawItem);
    stroke->setPath(pathThrough({{100, 100}, {200, 100}}));
    QSignalSpy changed(&canvas.scene, &QGraphicsScene::changed);
    QTRY_VERIFY(!changed.isEmpty());
    changed.clear();

    stroke->setPath(stroke->path());
    QTRY_VERIFY(!changed.isEmpty());
    const auto regions = changed.constFirst().constFirst().value<QList<QRectF>>();
    QVERIFY(std::ranges::any_of(regions, [&](const QRectF &region) {
        return region.contains(stroke->sceneBoundingRect());
    }));
}

void TestFreeDrawItem::nothingButTheSettersEmits()
{
    ItemCanvas canvas;
    auto *const stroke = canvas.add(new FreeDrawItem);
    const QSignalSpy modified(stroke, &FreeDrawItem::itemModified);
    changeAllButGeometry(*stroke);
    changeGeometry(*stroke);
    QCOMPARE(modified.count(), 0);
}

void TestFreeDrawItem::geometryIsReportedOnlyWithTheFlagThatStrokesLack()
{
    FreeDrawItem stroke;
    verifyGeometryIsReportedWithItsFlag(stroke);
}

void TestFreeDrawItem::aClickNeitherSelectsNorMovesIt()
{
    ItemCanvas canvas;
    auto *const stroke = canvas.add(new FreeDrawItem);
    stroke->setPath(pathThrough({{100, 100}, {200, 100}}));
    stroke->setWidth(20);
    QVERIFY(canvas.show());

    canvas.pointer.drag({{150, 100}, {170, 130}, {200, 160}});
    QVERIFY(!stroke->isSelected());
    QVERIFY(!stroke->hasFocus());
    QCOMPARE(stroke->pos(), QPointF());
    QCOMPARE(canvas.scene.mouseGrabberItem(), nullptr);
}

void TestFreeDrawItem::aClickGoesThroughToWhatLiesBeneath()
{
    ItemCanvas canvas;
    auto *const note = canvas.add(new StickyNoteItem, {100, 100});
    auto *const stroke = canvas.add(new FreeDrawItem);
    stroke->setPath(pathThrough({{100, 380}, {400, 380}}));
    stroke->setWidth(20);
    QCOMPARE(canvas.scene.itemAt(QPointF(250, 380), {}), stroke);
    QVERIFY(canvas.show());

    canvas.pointer.click({250, 380});
    QVERIFY(note->isSelected());
}

void TestFreeDrawItem::belongsToItsScene()
{
    ItemCanvas canvas;
    const QPointer<FreeDrawItem> stroke(canvas.add(new FreeDrawItem));
    canvas.scene.clear();
    QVERIFY(stroke.isNull());
}

PLUMARA_TEST(TestFreeDrawItem)
#include "tst_freedrawitem.moc"
