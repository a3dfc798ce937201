// Which snapshots of a board are equal.

#include "history/boardsnapshot.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/support/items/noteoncanvas.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QImage>
#include <QPainterPath>
#include <QPixmap>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <numeric>
#include <utility>

using namespace Qt::Literals::StringLiterals;

using Stroke = std::pair<QPainterPath, QColor>;

class TestSnapshotEquality : public QObject
{
    Q_OBJECT

private slots:
    void twoEmptyBoardsAreEqual();
    void twoSnapshotsOfOneBoardAreEqual();
    void theNumberOfItemsCounts();
    void theOrderCounts();
    void theKindCounts_data();
    void theKindCounts();

    void placesAreComparedWithATolerance_data();
    void placesAreComparedWithATolerance();
    void endPointsAreComparedWithATolerance_data();
    void endPointsAreComparedWithATolerance();

    void everyPlaceIsTheSameToTheLastBit_data();
    void everyPlaceIsTheSameToTheLastBit();
    void everyPointIsTheSameToTheLastBit();

    void strokesAreTheirPathAndColor_data();
    void strokesAreTheirPathAndColor();
    void notesAreTheirColor();
    void imagesAreTheirPixels_data();
    void imagesAreTheirPixels();
    void valuesOfUnknownKindsDoNotCount();

    void whatIsLostOnPurposeDoesNotCount();
    void aBlinkingTextCursorDoesNotCount();
    void theRebuiltBoardIsEqual();
    void itemsAtOneHeightComeBackInReverse();
    void fiveThousandStrokesComeBackEqual();
};

namespace {

/// Whether two boards with one item each are equal, whichever of them is the newer one.
bool equal(const ItemState &a, const ItemState &b)
{
    const bool answer = snapshotsEqual({a}, {b});
    return snapshotsEqual({b}, {a}) == answer && answer;
}
bool different(const ItemState &a, const ItemState &b)
{
    return !snapshotsEqual({a}, {b}) && !snapshotsEqual({b}, {a});
}

QPixmap plain(int width, int height, QRgb color)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return QPixmap::fromImage(image);
}

void addToleranceRows()
{
    QTest::addColumn<qreal>("first");
    QTest::addColumn<qreal>("second");
    QTest::addColumn<bool>("same");
    QTest::newRow("the same") << 120.5 << 120.5 << true;
    QTest::newRow("a hair apart") << 100.0 << 100.0 + 5e-11 << true;
    QTest::newRow("more than a hair apart") << 100.0 << 100.0 + 2e-10 << false;
    QTest::newRow("zero and a hair") << 0.0 << 9e-13 << true;
    QTest::newRow("zero and more than a hair") << 0.0 << 2e-12 << false;
    QTest::newRow("both tiny, far apart in ratio") << 1e-13 << 2e-13 << false;
    QTest::newRow("a pixel apart") << 100.0 << 101.0 << false;
    QTest::newRow("opposite signs") << 100.0 << -100.0 << false;
}

} // namespace

void TestSnapshotEquality::twoEmptyBoardsAreEqual()
{
    QVERIFY(snapshotsEqual({}, {}));
}

void TestSnapshotEquality::twoSnapshotsOfOneBoardAreEqual()
{
    QGraphicsScene scene;
    scene.addItem(new StickyNoteItem);
    scene.addItem(new ArrowLineItem({0, 0}, {5, 5}));
    scene.addItem(new ResizablePixmapItem(plain(5, 5, 0xFF112233)));
    scene.addItem(new FreeDrawItem);
    QVERIFY(snapshotsEqual(takeSnapshot(scene), takeSnapshot(scene)));
}

void TestSnapshotEquality::theNumberOfItemsCounts()
{
    const ItemState note{u"StickyNote"_s, {}, QVariant::fromValue(StickyNoteItem::Red)};
    QVERIFY(!snapshotsEqual({note}, {}));
    QVERIFY(!snapshotsEqual({}, {note}));
    QVERIFY(!snapshotsEqual({note, note}, {note}));
    QVERIFY(!snapshotsEqual({note}, {note, note}));
    QVERIFY(snapshotsEqual({note, note}, {note, note}));
}

void TestSnapshotEquality::theOrderCounts()
{
    const ItemState red{u"StickyNote"_s, {}, QVariant::fromValue(StickyNoteItem::Red)};
    const ItemState grey{u"StickyNote"_s, {}, QVariant::fromValue(StickyNoteItem::Grey)};
    QVERIFY(snapshotsEqual({red, grey}, {red, grey}));
    QVERIFY(!snapshotsEqual({red, grey}, {grey, red}));
}

void TestSnapshotEquality::theKindCounts_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("another kind") << u"ArrowLine"_s << u"FreeDraw"_s;
    QTest::newRow("another case") << u"ArrowLine"_s << u"arrowline"_s;
    QTest::newRow("unknown kinds") << u"uno"_s << u"dos"_s;
}

void TestSnapshotEquality::theKindCounts()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QVERIFY(different({first, {}, QLineF()}, {second, {}, QLineF()}));
}

void TestSnapshotEquality::placesAreComparedWithATolerance_data()
{
    addToleranceRows();
}

void TestSnapshotEquality::placesAreComparedWithATolerance()
{
    QFETCH(qreal, first);
    QFETCH(qreal, second);
    QFETCH(bool, same);
    const auto at = [](qreal x, qreal y) { return ItemState{u"StickyNote"_s, {x, y}, 0}; };
    QCOMPARE(equal(at(first, 7), at(second, 7)), same);
    QCOMPARE(equal(at(7, first), at(7, second)), same);
    QCOMPARE(different(at(first, 7), at(second, 7)), !same);
}

void TestSnapshotEquality::endPointsAreComparedWithATolerance_data()
{
    addToleranceRows();
}

void TestSnapshotEquality::endPointsAreComparedWithATolerance()
{
    QFETCH(qreal, first);
    QFETCH(qreal, second);
    QFETCH(bool, same);
    const auto arrow = [](const QLineF &line) { return ItemState{u"ArrowLine"_s, {}, line}; };
    QCOMPARE(equal(arrow({first, 1, 2, 3}), arrow({second, 1, 2, 3})), same);
    QCOMPARE(equal(arrow({1, first, 2, 3}), arrow({1, second, 2, 3})), same);
    QCOMPARE(equal(arrow({1, 2, first, 3}), arrow({1, 2, second, 3})), same);
    QCOMPARE(equal(arrow({1, 2, 3, first}), arrow({1, 2, 3, second})), same);
}

void TestSnapshotEquality::everyPlaceIsTheSameToTheLastBit_data()
{
    QTest::addColumn<ItemState>("nearby");
    const auto row = [](const char *name, QPointF pos, const QLineF &line) {
        QTest::newRow(name) << ItemState{u"ArrowLine"_s, pos, line};
    };
    constexpr qreal hair = 1e-14;
    row("x", {5 + hair, 6}, {1, 2, 3, 4});
    row("y", {5, 6 + hair}, {1, 2, 3, 4});
    row("x of the start", {5, 6}, {1 + hair, 2, 3, 4});
    row("y of the start", {5, 6}, {1, 2 + hair, 3, 4});
    row("x of the end", {5, 6}, {1, 2, 3 + hair, 4});
    row("y of the end", {5, 6}, {1, 2, 3, 4 + hair});
}

void TestSnapshotEquality::everyPlaceIsTheSameToTheLastBit()
{
    QFETCH(const ItemState, nearby);
    const ItemState arrow{u"ArrowLine"_s, {5, 6}, QLineF(1, 2, 3, 4)};
    QVERIFY(equal(arrow, nearby));
    QVERIFY(areSame(arrow, arrow));
    QVERIFY(!areSame(arrow, nearby));
    QVERIFY(!areSame(nearby, arrow));
}

void TestSnapshotEquality::everyPointIsTheSameToTheLastBit()
{
    const auto stroke = [](QPointF start, QPointF end) {
        const Stroke value(pathThrough({start, {100, 0}, end}), Qt::red);
        return ItemState{u"FreeDraw"_s, {5, 6}, QVariant::fromValue(value)};
    };
    const QPointF here(50, 50);
    const ItemState drawn = stroke(here, here);
    QVERIFY(areSame(drawn, stroke(here, here)));
    constexpr qreal hair = 1e-13;
    for (const QPointF nearby : {QPointF(50 + hair, 50), QPointF(50, 50 + hair)}) {
        for (const ItemState &other : {stroke(here, nearby), stroke(nearby, here)}) {
            QVERIFY(equal(drawn, other));
            QVERIFY(!areSame(drawn, other));
            // NOLINTNEXTLINE(readability-suspicious-call-argument) the other way round as well
            QVERIFY(!areSame(other, drawn));
        }
    }
}

void TestSnapshotEquality::strokesAreTheirPathAndColor_data()
{
    QTest::addColumn<QPainterPath>("changedPath");
    QTest::addColumn<QColor>("changedColor");
    QTest::addColumn<bool>("same");

    const QPainterPath same = pathThrough({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    QPainterPath curve({0, 0});
    curve.cubicTo({10, 0}, {10, 10}, {0, 10});
    QTest::newRow("the same") << same << QColor(Qt::red) << true;
    QTest::newRow("another point")
        << pathThrough({{0, 0}, {10, 0}, {10, 11}, {0, 10}}) << QColor(Qt::red) << false;
    QTest::newRow("a point less") << pathThrough({{0, 0}, {10, 0}, {10, 10}}) << QColor(Qt::red)
                                  << false;
    QTest::newRow("no point") << QPainterPath() << QColor(Qt::red) << false;
    QTest::newRow("a curve through the same points") << curve << QColor(Qt::red) << false;
    QTest::newRow("another colour") << same << QColor(Qt::blue) << false;
    QTest::newRow("another transparency") << same << QColor(255, 0, 0, 128) << false;
    QTest::newRow("no colour") << same << QColor() << false;
}

void TestSnapshotEquality::strokesAreTheirPathAndColor()
{
    QFETCH(QPainterPath, changedPath);
    QFETCH(QColor, changedColor);
    QFETCH(bool, same);
    const Stroke before(pathThrough({{0, 0}, {10, 0}, {10, 10}, {0, 10}}), Qt::red);
    const Stroke after(changedPath, changedColor);
    const ItemState first{u"FreeDraw"_s, {}, QVariant::fromValue(before)};
    const ItemState second{u"FreeDraw"_s, {}, QVariant::fromValue(after)};
    QCOMPARE(equal(first, second), same);
    QCOMPARE(different(first, second), !same);
}

void TestSnapshotEquality::notesAreTheirColor()
{
    for (int first = 0; first < 7; ++first) {
        for (int second = 0; second < 7; ++second) {
            const auto note = [](int color) {
                const auto value = static_cast<StickyNoteItem::NoteColor>(color);
                return ItemState{u"StickyNote"_s, {1, 1}, QVariant::fromValue(value)};
            };
            QCOMPARE(equal(note(first), note(second)), first == second);
        }
    }
}

void TestSnapshotEquality::imagesAreTheirPixels_data()
{
    QTest::addColumn<QPixmap>("first");
    QTest::addColumn<QPixmap>("second");
    QTest::addColumn<bool>("same");

    const QPixmap red = plain(4, 3, 0xFFFF0000);
    QImage almost = red.toImage();
    almost.setPixelColor(3, 2, QColor(255, 0, 1));
    QTest::newRow("the same pixmap") << red << red << true;
    QTest::newRow("another pixmap of the same pixels") << red << red.copy() << true;
    QTest::newRow("one pixel differs") << red << QPixmap::fromImage(almost) << false;
    QTest::newRow("another size") << red << plain(3, 4, 0xFFFF0000) << false;
    QTest::newRow("a part of it") << red << plain(4, 2, 0xFFFF0000) << false;
    QTest::newRow("another transparency") << red << plain(4, 3, 0x80FF0000) << false;
    QTest::newRow("one is empty") << red << QPixmap() << false;
    QTest::newRow("both are empty") << QPixmap() << QPixmap() << true;
}

void TestSnapshotEquality::imagesAreTheirPixels()
{
    QFETCH(QPixmap, first);
    QFETCH(QPixmap, second);
    QFETCH(bool, same);
    QCOMPARE(equal({u"Pixmap"_s, {}, first}, {u"Pixmap"_s, {}, second}), same);
    QCOMPARE(different({u"Pixmap"_s, {}, first}, {u"Pixmap"_s, {}, second}), !same);
}

void TestSnapshotEquality::valuesOfUnknownKindsDoNotCount()
{
    QVERIFY(equal({u"Ellipse"_s, {1, 2}, 3}, {u"Ellipse"_s, {1, 2}, u"otro"_s}));
    QVERIFY(different({u"Ellipse"_s, {1, 2}, 3}, {u"Ellipse"_s, {2, 2}, 3}));
}

void TestSnapshotEquality::whatIsLostOnPurposeDoesNotCount()
{
    QGraphicsScene scene;
    auto *const stroke = new FreeDrawItem;
    stroke->setPath(pathThrough({{0, 0}, {10, 10}}));
    auto *const note = new StickyNoteItem;
    auto *const arrow = new ArrowLineItem({0, 0}, {50, 50});
    note->setZValue(0.5);
    scene.addItem(stroke);
    scene.addItem(note);
    scene.addItem(arrow);
    const auto before = takeSnapshot(scene);

    stroke->setWidth(9);
    note->setText(u"Comprar pan"_s);
    note->setSelected(true);
    note->setZValue(0.75);
    note->setRotation(30);
    arrow->setColor(Qt::red);
    arrow->setWidth(9);
    arrow->setVisible(false);
    QVERIFY(snapshotsEqual(takeSnapshot(scene), before));

    note->setNoteColor(StickyNoteItem::Red);
    QVERIFY(!snapshotsEqual(takeSnapshot(scene), before));
}

void TestSnapshotEquality::aBlinkingTextCursorDoesNotCount()
{
    const auto restore = qScopeGuard(
        [time = QApplication::cursorFlashTime()] { QApplication::setCursorFlashTime(time); });
    QApplication::setCursorFlashTime(40); // ms
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onText());
    QTRY_VERIFY(textOf(*on.note)->hasFocus());
    const auto before = takeSnapshot(on.canvas.scene);

    // With nobody touching it, the board changes by the cursor alone, and goes on to.
    const QSignalSpy changed(&on.canvas.scene, &QGraphicsScene::changed);
    for (int blink = 1; blink <= 6; ++blink) {
        QTRY_VERIFY(changed.count() >= blink);
        QVERIFY(snapshotsEqual(takeSnapshot(on.canvas.scene), before));
    }
}

void TestSnapshotEquality::theRebuiltBoardIsEqual()
{
    QGraphicsScene scene;
    auto *const stroke = new FreeDrawItem;
    stroke->setPath(pathThrough({{0, 0}, {10.25, 1.0 / 3}}));
    stroke->setColor(Qt::darkGreen);
    scene.addItem(stroke);
    scene.addItem(new ArrowLineItem({0.1, 0.2}, {50, 50}));
    auto *const image = new ResizablePixmapItem(plain(20, 30, 0x40123456));
    image->setPos(-7.5, 1e6);
    scene.addItem(image);
    const auto before = takeSnapshot(scene);
    QCOMPARE(before.size(), 3);

    // On another board, which had other items.
    QGraphicsScene rebuilt;
    rebuilt.addItem(new StickyNoteItem);
    restoreSnapshot(rebuilt, before);
    QVERIFY(snapshotsEqual(takeSnapshot(rebuilt), before));
}

void TestSnapshotEquality::itemsAtOneHeightComeBackInReverse()
{
    QGraphicsScene scene;
    scene.addItem(new ArrowLineItem({0, 0}, {50, 0}));
    scene.addItem(new ArrowLineItem({0, 0}, {0, 50}));
    const auto before = takeSnapshot(scene);

    restoreSnapshot(scene, before);
    const auto after = takeSnapshot(scene);
    QVERIFY(!snapshotsEqual(after, before));
    QVERIFY(snapshotsEqual({after.at(1), after.at(0)}, before));
}

void TestSnapshotEquality::fiveThousandStrokesComeBackEqual()
{
    constexpr int count = 5000;
    QGraphicsScene scene;
    for (int i = 0; i < count; ++i) {
        auto *const stroke = new FreeDrawItem;
        const qreal x = i / 7.0;
        stroke->setPath(pathThrough({{x, 0}, {x + 1, 20}, {x + 2, (i % 13) / 2.0}, {x + 3, 40}}));
        stroke->setColor(QColor::fromRgb(static_cast<QRgb>(i)));
        scene.addItem(stroke);
    }
    const auto before = takeSnapshot(scene);
    QCOMPARE(before.size(), count);

    QGraphicsScene rebuilt;
    restoreSnapshot(rebuilt, before);
    const auto after = takeSnapshot(rebuilt);
    QCOMPARE(after.size(), count);
    // All restored strokes share one height, and what was added last lies on top.
    BoardSnapshot reversed;
    for (int i = count - 1; i >= 0; --i)
        reversed.append(after.at(i));
    QVERIFY(snapshotsEqual(reversed, before));

    QList<int> order(count);
    std::iota(order.begin(), order.end(), 0);
    order.swapItemsAt(2500, 2501);
    BoardSnapshot swapped;
    for (const int i : order)
        swapped.append(reversed.at(i));
    QVERIFY(!snapshotsEqual(swapped, before));
}

PLUMARA_TEST(TestSnapshotEquality)
#include "tst_snapshotequality.moc"
