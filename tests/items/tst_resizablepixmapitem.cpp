// An image: its handles and cursors, what it paints, its signal, and how it is moved.

#include "items/resizablepixmapitem.h"

#include "tests/items/itemfacts.h"
#include "tests/items/paintrecorder.h"
#include "tests/support/items/imageoncanvas.h"
#include "tests/support/main/registeredtest.h"

#include <QCursor>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestResizablePixmapItem : public QObject
{
    Q_OBJECT

private slots:
    void isAnObjectWithOneSignal();
    void isFoundByItsBases();
    void showsThePictureBeneathEverythingElse();
    void canBeMovedSelectedAndFocused();

    void theBoundingRectangleHoldsTheHandles();
    void handlesGoClockwiseFromTheTopLeft_data();
    void handlesGoClockwiseFromTheTopLeft();
    void otherHandleNumbersGiveASquareAroundTheOrigin();
    void theHandleAtAPointIsTheLowest();
    void theCursorFitsTheHandle_data();
    void theCursorFitsTheHandle();
    void hoveringShowsNoCursor();

    void paintsNoHandlesUnlessSelected();
    void paintsEightHandlesWhenSelected();
    void paintsNoFrameWhenSelected();
    void anEmptyPictureIsHarmless();

    void aPressOnThePictureSelects();
    void aDragOnThePictureMovesIt();
    void eachChangeOfPlaceEmitsOnce();
    void everyGeometryChangeEmits();
    void nothingElseEmits();
    void belongsToItsScene();
};

void TestResizablePixmapItem::isAnObjectWithOneSignal()
{
    verifyOneSignal(ResizablePixmapItem::staticMetaObject, "ResizablePixmapItem",
                    QObject::staticMetaObject);
}

void TestResizablePixmapItem::isFoundByItsBases()
{
    ResizablePixmapItem image({});
    verifyCasts<QGraphicsPixmapItem>(image, "ResizablePixmapItem", "QGraphicsPixmapItem");
}

void TestResizablePixmapItem::showsThePictureBeneathEverythingElse()
{
    const ResizablePixmapItem image(motley(30, 20));
    QCOMPARE(image.pixmap().toImage(), motley(30, 20).toImage());
    QCOMPARE(image.zValue(), 0.0);
    QCOMPARE(image.pos(), QPointF());
    QCOMPARE(image.parent(), nullptr);
    QCOMPARE(image.parentItem(), nullptr);
}

void TestResizablePixmapItem::canBeMovedSelectedAndFocused()
{
    const ResizablePixmapItem image(motley(30, 20));
    QCOMPARE(image.flags(),
             QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable
                 | QGraphicsItem::ItemIsFocusable | QGraphicsItem::ItemSendsGeometryChanges);
    QVERIFY(image.acceptHoverEvents());
}

void TestResizablePixmapItem::theBoundingRectangleHoldsTheHandles()
{
    // Half a pixel more on every side is the toolkit's share for whatever can be selected.
    const ResizablePixmapItem image(motley(100, 80));
    QCOMPARE(image.boundingRect(), QRectF(-16.5, -16.5, 133, 113));
    QRectF handles;
    for (int number = 1; number <= 8; ++number)
        handles |= image.handleRect(number);
    QCOMPARE(image.boundingRect(), handles);
}

void TestResizablePixmapItem::handlesGoClockwiseFromTheTopLeft_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QPointF>("center");
    // Of a picture of 100 × 80.
    QTest::newRow("top left") << 1 << QPointF(-0.5, -0.5);
    QTest::newRow("top") << 2 << QPointF(50, -0.5);
    QTest::newRow("top right") << 3 << QPointF(100.5, -0.5);
    QTest::newRow("right") << 4 << QPointF(100.5, 40);
    QTest::newRow("bottom right") << 5 << QPointF(100.5, 80.5);
    QTest::newRow("bottom") << 6 << QPointF(50, 80.5);
    QTest::newRow("bottom left") << 7 << QPointF(-0.5, 80.5);
    QTest::newRow("left") << 8 << QPointF(-0.5, 40);
}

void TestResizablePixmapItem::handlesGoClockwiseFromTheTopLeft()
{
    QFETCH(int, number);
    QFETCH(QPointF, center);
    const ResizablePixmapItem image(motley(100, 80));
    QCOMPARE(image.handleRect(number), QRectF(center - QPointF(16, 16), QSizeF(32, 32)));
    QCOMPARE(image.handleAt(center), number);
}

void TestResizablePixmapItem::otherHandleNumbersGiveASquareAroundTheOrigin()
{
    const ResizablePixmapItem image(motley(100, 80));
    for (const int number : {0, 9, -1, 1000})
        QCOMPARE(image.handleRect(number), QRectF(-16, -16, 32, 32));
}

void TestResizablePixmapItem::theHandleAtAPointIsTheLowest()
{
    const ResizablePixmapItem large(motley(100, 80));
    QCOMPARE(large.handleAt({30, 40}), 0);
    QCOMPARE(large.handleAt({15.5, 15.5}), 1);
    QCOMPARE(large.handleAt({15.6, 15.6}), 0);
    QCOMPARE(large.handleAt({-16.5, -16.5}), 1);
    QCOMPARE(large.handleAt({-16.6, 0}), 0);

    // The squares of a small picture overlap.
    const ResizablePixmapItem small(motley(20, 20));
    QCOMPARE(small.handleAt({10, 10}), 1);
    QCOMPARE(small.handleAt({20, 10}), 2);
    QCOMPARE(small.handleAt({30, 10}), 3);
    QCOMPARE(small.handleAt({30, 20}), 4);
    QCOMPARE(small.handleAt({30, 30}), 5);
    QCOMPARE(small.handleAt({20, 30}), 5);
    QCOMPARE(small.handleAt({0, 30}), 6);
    QCOMPARE(small.handleAt({-10, 30}), 7);
    QCOMPARE(small.handleAt({-10, 20}), 7);
}

void TestResizablePixmapItem::theCursorFitsTheHandle_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<Qt::CursorShape>("shape");
    QTest::newRow("top left") << 1 << Qt::SizeFDiagCursor;
    QTest::newRow("top") << 2 << Qt::SizeVerCursor;
    QTest::newRow("top right") << 3 << Qt::SizeBDiagCursor;
    QTest::newRow("right") << 4 << Qt::SizeHorCursor;
    QTest::newRow("bottom right") << 5 << Qt::SizeFDiagCursor;
    QTest::newRow("bottom") << 6 << Qt::SizeVerCursor;
    QTest::newRow("bottom left") << 7 << Qt::SizeBDiagCursor;
    QTest::newRow("left") << 8 << Qt::SizeHorCursor;
}

void TestResizablePixmapItem::theCursorFitsTheHandle()
{
    QFETCH(int, number);
    QFETCH(Qt::CursorShape, shape);
    ResizablePixmapItem image(motley(100, 80));
    image.cursorForPosition(image.handleRect(number).center());
    QCOMPARE(image.cursor().shape(), shape);

    image.cursorForPosition({30, 40});
    QVERIFY(image.hasCursor());
    QCOMPARE(image.cursor().shape(), Qt::ArrowCursor);
}

void TestResizablePixmapItem::hoveringShowsNoCursor()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    for (int number = 1; number <= 8; ++number) {
        on.canvas.pointer.move(on.onHandle(number));
        QVERIFY(!on.image->hasCursor());
        QCOMPARE(on.canvas.view->viewport()->cursor().shape(), Qt::ArrowCursor);
    }
}

void TestResizablePixmapItem::paintsNoHandlesUnlessSelected()
{
    ImageOnCanvas on;
    const auto shapes = paintedBy(*on.image);
    QCOMPARE(shapes.size(), 1);
    QCOMPARE(shapes.constFirst().kind, PaintedShape::Pixmap);
    QCOMPARE(shapes.constFirst().rect, QRectF(0, 0, 200, 200));
}

void TestResizablePixmapItem::paintsEightHandlesWhenSelected()
{
    ImageOnCanvas on;
    on.image->setSelected(true);
    const auto shapes = paintedBy(*on.image);
    QCOMPARE(shapes.size(), 9);
    QCOMPARE(shapes.constFirst().kind, PaintedShape::Pixmap);
    for (int number = 1; number <= 8; ++number) {
        const PaintedShape &handle = shapes.at(number);
        QCOMPARE(handle.kind, PaintedShape::Rectangle);
        QCOMPARE(handle.rect, on.image->handleRect(number));
        QCOMPARE(handle.pen, QPen(Qt::blue));
        QCOMPARE(handle.brush, QBrush(Qt::white, Qt::SolidPattern));
    }
}

void TestResizablePixmapItem::paintsNoFrameWhenSelected()
{
    ImageOnCanvas on;
    on.canvas.scene.setBackgroundBrush(Qt::green);
    on.image->setSelected(true);
    const QImage picture = on.canvas.picture();
    QCOMPARE(picture.pixelColor(200, 200), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(300, 190), QColor(Qt::white));
    // Between two handles there is the picture and, right outside of it, the board.
    for (int y = 170; y < 200; ++y)
        QCOMPARE(picture.pixelColor(250, y), QColor(Qt::green));
    QCOMPARE(picture.pixelColor(250, 200), on.source.toImage().pixelColor(50, 0));
}

void TestResizablePixmapItem::anEmptyPictureIsHarmless()
{
    ItemCanvas canvas;
    auto *const image = canvas.add(new ResizablePixmapItem({}), {100, 100});
    QCOMPARE(image->boundingRect(), QRectF(-16, -16, 32, 32));
    QCOMPARE(image->handleAt({0, 0}), 1);
    QVERIFY(canvas.show());
    canvas.pointer.drag({{100, 100}, {120, 120}});
    QCOMPARE(image->pos(), QPointF(100, 100));

    image->setSelected(true);
    QCOMPARE(canvas.picture().pixelColor(100, 100), QColor(Qt::white));
    QCOMPARE(canvas.picture().pixelColor(84, 100), QColor(Qt::blue));
}

void TestResizablePixmapItem::aPressOnThePictureSelects()
{
    ImageOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onPicture);
    QVERIFY(on.image->isSelected());
    on.canvas.pointer.release(on.onPicture);
    QVERIFY(on.image->isSelected());
    QVERIFY(on.image->hasFocus());
    QCOMPARE(on.image->pos(), on.place);
}

void TestResizablePixmapItem::aDragOnThePictureMovesIt()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.canvas.pointer.press(on.onPicture);
    on.canvas.pointer.move(on.onPicture + QPointF(10, 3));
    QCOMPARE(on.image->pos(), on.place + QPointF(10, 3));
    on.canvas.pointer.move(on.onPicture + QPointF(40, -5));
    on.canvas.pointer.release(on.onPicture + QPointF(40, -5));
    QCOMPARE(on.image->pos(), on.place + QPointF(40, -5));
    QCOMPARE(on.image->pixmap().size(), on.source.size());
}

void TestResizablePixmapItem::eachChangeOfPlaceEmitsOnce()
{
    ImageOnCanvas on;
    const QSignalSpy modified(on.image, &ResizablePixmapItem::itemModified);
    on.image->setPos(10, 20);
    QCOMPARE(modified.count(), 1);
    on.image->setPos(10, 20);
    QCOMPARE(modified.count(), 1);
    on.image->setPos(10, 21);
    QCOMPARE(modified.count(), 2);
    QCOMPARE(on.image->pos(), QPointF(10, 21));
}

void TestResizablePixmapItem::everyGeometryChangeEmits()
{
    ResizablePixmapItem image(motley(30, 20));
    const QSignalSpy modified(&image, &ResizablePixmapItem::itemModified);
    changeGeometry(image);
    QCOMPARE(modified.count(), 4);
}

void TestResizablePixmapItem::nothingElseEmits()
{
    ImageOnCanvas on;
    const QSignalSpy modified(on.image, &ResizablePixmapItem::itemModified);
    changeAllButGeometry(*on.image);
    on.image->setPixmap(motley(5, 5));
    on.image->cursorForPosition({});
    QCOMPARE(modified.count(), 0);
}

void TestResizablePixmapItem::belongsToItsScene()
{
    ImageOnCanvas on;
    const QPointer<ResizablePixmapItem> image(on.image);
    on.canvas.scene.clear();
    QVERIFY(image.isNull());
}

PLUMARA_TEST(TestResizablePixmapItem)
#include "tst_resizablepixmapitem.moc"
