// Resizing an image by its handles.

#include "items/resizablepixmapitem.h"

#include "tests/support/items/imageoncanvas.h"
#include "tests/support/main/registeredtest.h"

#include <QSignalSpy>
#include <QTest>

class TestImageResizing : public QObject
{
    Q_OBJECT

private slots:
    void eachHandleFollowsThePointer_data();
    void eachHandleFollowsThePointer();
    void theTopLeftHandleShrinksWithoutMovingTheCorner();
    void theSizeIsComputedFromTheRectangleThatTheToolkitGives();
    void theSizeIsRounded_data();
    void theSizeIsRounded();
    void theSizeFollowsThePointerInItemUnits();

    void theSmallestBoxIsTwentySquare();
    void theAspectRatioIsKept();
    void theRatioOfTheSourceCounts();
    void resizingLosesNothing();
    void everyStepScalesTheSource();

    void resizingEmitsNothing();
    void resizingLeavesTheSelectionAlone();
    void clickingAHandleLeavesTheSelectionAlone();
    void theHandleIsLetGoOnRelease();
    void aPressOffTheHandlesLetsTheHandleGo();
    void anUnselectedImageIsSelectedAndMovedByItsCorner();
    void theHalfOfAHandleOutsideThePictureIsNotHit();
    void anyButtonResizes();
};

namespace {

constexpr int step = 30;

} // namespace

void TestImageResizing::eachHandleFollowsThePointer_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QPointF>("moved");
    QTest::addColumn<int>("side");

    // A picture of 200 × 200 in a rectangle of 201 × 201: the shorter side of the box decides, so
    // growing in one direction alone shows no effect.
    constexpr int same = 201;
    constexpr int less = same - step;
    struct Row
    {
        const char *name;
        int left;
        int right;
        int up;
        int down;
    };
    constexpr Row rows[] = {
        {"top left", same, less, same, less},     {"top", same, same, same, less},
        {"top right", less, same, same, less},    {"right", less, same, same, same},
        {"bottom right", less, same, less, same}, {"bottom", same, same, less, same},
        {"bottom left", same, less, less, same},  {"left", same, less, same, same},
    };
    int number = 0;
    for (const auto &row : rows) {
        ++number;
        QTest::addRow("%s to the left", row.name) << number << QPointF(-step, 0) << row.left;
        QTest::addRow("%s to the right", row.name) << number << QPointF(step, 0) << row.right;
        QTest::addRow("%s upwards", row.name) << number << QPointF(0, -step) << row.up;
        QTest::addRow("%s downwards", row.name) << number << QPointF(0, step) << row.down;
    }

    QTest::newRow("top left outwards") << 1 << QPointF(-step, -step) << same + step;
    QTest::newRow("top right outwards") << 3 << QPointF(step, -step) << same + step;
    QTest::newRow("bottom right outwards") << 5 << QPointF(step, step) << same + step;
    QTest::newRow("bottom left outwards") << 7 << QPointF(-step, step) << same + step;
}

void TestImageResizing::eachHandleFollowsThePointer()
{
    QFETCH(int, number);
    QFETCH(QPointF, moved);
    QFETCH(int, side);
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.dragHandle(number, moved);
    QCOMPARE(on.image->pixmap().size(), QSize(side, side));
    QCOMPARE(on.image->pos(), on.place);
}

void TestImageResizing::theTopLeftHandleShrinksWithoutMovingTheCorner()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.dragHandle(1, {50, 50});
    QCOMPARE(on.image->pixmap().size(), QSize(201 - 50, 201 - 50));
    QCOMPARE(on.image->pos(), on.place);
}

void TestImageResizing::theSizeIsComputedFromTheRectangleThatTheToolkitGives()
{
    // Half a pixel on every side: a handle that moves out and back leaves one pixel more.
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    const QPointF start = on.onHandle(5);
    on.canvas.pointer.drag({start, start + QPointF(9, 9), start});
    QCOMPARE(on.image->pixmap().size(), QSize(201, 201));
}

void TestImageResizing::theSizeIsRounded_data()
{
    QTest::addColumn<qreal>("moved");
    QTest::addColumn<int>("side");
    QTest::newRow("less than a half") << 10.4 << 211;
    QTest::newRow("a half, growing") << 10.5 << 212;
    QTest::newRow("a half, shrinking") << -10.5 << 191;
    QTest::newRow("more than a half") << -10.6 << 190;
    QTest::newRow("just at the smallest") << -181.0 << 20;
    QTest::newRow("just above the smallest") << -180.4 << 21;
    QTest::newRow("just below the smallest") << -181.1 << 20;
}

void TestImageResizing::theSizeIsRounded()
{
    QFETCH(qreal, moved);
    QFETCH(int, side);
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    const QPointF start = on.onHandle(5);
    on.canvas.pointer.press(start);
    on.image->resizeTo(on.canvas.pointer.pixel(start) + QPointF(moved, moved));
    QCOMPARE(on.image->pixmap().size(), QSize(side, side));
}

void TestImageResizing::theSizeFollowsThePointerInItemUnits()
{
    ImageOnCanvas on;
    on.image->setScale(0.5);
    QVERIFY(on.showSelected());
    on.dragHandle(5, {-20, -20});
    QCOMPARE(on.image->pixmap().size(), QSize(161, 161));
}

void TestImageResizing::theSmallestBoxIsTwentySquare()
{
    ItemCanvas canvas;
    auto *const image = canvas.add(new ResizablePixmapItem(motley(400, 200)), {300, 300});
    image->setSelected(true);
    QVERIFY(canvas.show());
    canvas.pointer.drag({{695, 495}, {100, 100}, {5, 5}});
    QCOMPARE(image->pixmap().size(), QSize(20, 10));
    QCOMPARE(image->pos(), QPointF(300, 300));
}

void TestImageResizing::theAspectRatioIsKept()
{
    ItemCanvas canvas;
    auto *const image = canvas.add(new ResizablePixmapItem(motley(400, 200)), {100, 100});
    image->setSelected(true);
    QVERIFY(canvas.show());
    // The box is 401 - 201 by 201 + 99.
    canvas.pointer.drag({{495, 295}, {294, 394}});
    QCOMPARE(image->pixmap().size(), QSize(200, 100));
}

void TestImageResizing::theRatioOfTheSourceCounts()
{
    // 20 × 9 is wider, for its height, than the source; growing goes back to the source's ratio.
    ItemCanvas canvas;
    auto *const image = canvas.add(new ResizablePixmapItem(motley(400, 185)), {390, 380});
    image->setSelected(true);
    QVERIFY(canvas.show());
    canvas.pointer.drag({{785, 560}, {395, 385}});
    QCOMPARE(image->pixmap().size(), QSize(20, 9));
    canvas.pointer.drag({{395, 384}, {395 - 379, 384 - 300}});
    QCOMPARE(image->pixmap().size(), QSize(400, 185));
}

void TestImageResizing::resizingLosesNothing()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.dragHandle(5, {-300, -300});
    QCOMPARE(on.image->pixmap().size(), QSize(20, 20));
    // Of a picture this small, handle 1 covers all.
    on.dragHandle(1, {-179, -179});
    QCOMPARE(on.image->pixmap().size(), QSize(200, 200));
    QCOMPARE(on.image->pixmap().toImage(), on.source.toImage());
}

void TestImageResizing::everyStepScalesTheSource()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.dragHandle(5, {-150, -150});
    on.dragHandle(5, {74, 74});
    QCOMPARE(on.image->pixmap().size(), QSize(126, 126));
    QCOMPARE(on.image->pixmap().toImage(),
             on.source.scaled(126, 126, Qt::KeepAspectRatio, Qt::SmoothTransformation).toImage());
}

void TestImageResizing::resizingEmitsNothing()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    const QSignalSpy modified(on.image, &ResizablePixmapItem::itemModified);
    on.dragHandle(5, {-50, -50});
    QCOMPARE(on.image->pixmap().size(), QSize(151, 151));
    QCOMPARE(modified.count(), 0);
}

void TestImageResizing::resizingLeavesTheSelectionAlone()
{
    ImageOnCanvas on;
    auto *const other = on.canvas.add(new ResizablePixmapItem(motley(50, 50)), {600, 50});
    other->setSelected(true);
    QVERIFY(on.showSelected());
    on.dragHandle(5, {-50, -50});
    QVERIFY(on.image->isSelected());
    QVERIFY(other->isSelected());
    QCOMPARE(other->pos(), QPointF(600, 50));
}

void TestImageResizing::clickingAHandleLeavesTheSelectionAlone()
{
    // A click anywhere else on one of several selected items deselects the others.
    ImageOnCanvas on;
    auto *const other = on.canvas.add(new ResizablePixmapItem(motley(50, 50)), {600, 50});
    other->setSelected(true);
    QVERIFY(on.showSelected());
    on.canvas.pointer.click(on.onHandle(5));
    QVERIFY(on.image->isSelected());
    QVERIFY(other->isSelected());
    on.canvas.pointer.click(on.onPicture);
    QVERIFY(on.image->isSelected());
    QVERIFY(!other->isSelected());
}

void TestImageResizing::theHandleIsLetGoOnRelease()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.dragHandle(5, {-50, -50});
    on.canvas.pointer.move({300, 300});
    QCOMPARE(on.image->pixmap().size(), QSize(151, 151));

    // Not selected any more, the image does not look for handles.
    on.canvas.pointer.click({700, 500});
    on.canvas.pointer.drag({on.onPicture, on.onPicture + QPointF(15, 5)});
    QCOMPARE(on.image->pixmap().size(), QSize(151, 151));
    QCOMPARE(on.image->pos(), on.place + QPointF(15, 5));
    // Without a handle the size stays as it was at the last press on one.
    on.image->resizeTo({0, 0});
    QCOMPARE(on.image->pixmap().size(), QSize(201, 201));
}

void TestImageResizing::aPressOffTheHandlesLetsTheHandleGo()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    const QPointF start = on.onHandle(2);
    const QPointF inside = start + QPointF(0, 80);
    on.canvas.pointer.press(start);
    on.canvas.pointer.move(inside);
    QCOMPARE(on.image->pixmap().size(), QSize(201 - 80, 201 - 80));
    QCOMPARE(on.image->handleAt(on.image->mapFromScene(inside)), 0);

    on.canvas.pointer.press(inside, Qt::MiddleButton);
    on.canvas.pointer.move(start + QPointF(0, 40));
    QCOMPARE(on.image->pixmap().size(), QSize(201 - 80, 201 - 80));
    on.canvas.pointer.release(start + QPointF(0, 40), Qt::MiddleButton);
    on.canvas.pointer.release(start + QPointF(0, 40), Qt::LeftButton);
}

void TestImageResizing::anUnselectedImageIsSelectedAndMovedByItsCorner()
{
    ImageOnCanvas on;
    QVERIFY(on.canvas.show());
    on.dragHandle(5, {-50, -50});
    QVERIFY(on.image->isSelected());
    QCOMPARE(on.image->pos(), on.place + QPointF(-50, -50));
    QCOMPARE(on.image->pixmap().size(), QSize(200, 200));
}

void TestImageResizing::theHalfOfAHandleOutsideThePictureIsNotHit()
{
    // The toolkit asks the item's shape, which is the picture alone.
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    const QPointF outside = on.place - QPointF(8, 8);
    QCOMPARE(on.image->handleAt(on.image->mapFromScene(outside)), 1);
    on.canvas.pointer.drag({outside, outside + QPointF(50, 50)});
    QCOMPARE(on.image->pixmap().size(), QSize(200, 200));
    QVERIFY(!on.image->isSelected());
}

void TestImageResizing::anyButtonResizes()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    const QPointF start = on.onHandle(5);
    on.canvas.pointer.press(start, Qt::RightButton);
    on.canvas.pointer.move(start - QPointF(50, 50));
    on.canvas.pointer.release(start - QPointF(50, 50), Qt::RightButton);
    QCOMPARE(on.image->pixmap().size(), QSize(151, 151));
}

PLUMARA_TEST(TestImageResizing)
#include "tst_imageresizing.moc"
