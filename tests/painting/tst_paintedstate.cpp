// What of an item is known about how it looks, and where it looks different after a change.

#include "painting/paintedstate.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/support/items/itemkinds.h"
#include "tests/support/items/noteoncanvas.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QCoreApplication>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QTest>
#include <QTextCursor>

#include <memory>

using Change = void (*)(QGraphicsItem &item);

class TestPaintedState : public QObject
{
    Q_OBJECT

private slots:
    void whatRestsLooksTheSame_data();
    void whatRestsLooksTheSame();
    void whatChangesLooksDifferent_data();
    void whatChangesLooksDifferent();
    void ofALongerStrokeTheTailIsNew_data();
    void ofALongerStrokeTheTailIsNew();
    void ofOneThatWasHardlyBegunTheRestIsNew();
    void aStrokeThatBendsElsewhereIsNewAsAWhole();
    void aStrokeThatIsFilledOtherwiseIsNewAsAWhole();
    void anotherTextIsNewWhateverItsHistory();
    void aHeadIsPartOfItsArrow();
    void aLineWithoutWidthTakesPlace();
    void whoHasDashesIsKnown();
    void whatCannotBeToldIsUncertain();
};

namespace {

/// A scene that takes itself for active, so that its items can have the focus.
class ActiveScene : public QGraphicsScene
{
public:
    ActiveScene()
    {
        QEvent activation(QEvent::WindowActivate);
        QCoreApplication::sendEvent(this, &activation);
    }
};

struct Difference
{
    PaintedState before;
    PaintedState after;

    QRectF area() const { return changedArea(before, after); }
};

Difference differenceBy(QGraphicsItem &item, const Change &change)
{
    const PaintedState before = paintedState(&item);
    change(item);
    return {before, paintedState(&item)};
}

} // namespace

void TestPaintedState::whatRestsLooksTheSame_data()
{
    addItemKinds();
}

void TestPaintedState::whatRestsLooksTheSame()
{
    QFETCH(const ItemMaker, make);
    const std::unique_ptr<QGraphicsItem> item(make());
    const PaintedState state = paintedState(item.get());
    QCOMPARE(state.item, item.get());
    QVERIFY(!state.uncertain);
    QVERIFY(!state.outlined);
    QVERIFY(state.area.contains(item->sceneBoundingRect()));
    QVERIFY(changedArea(state, paintedState(item.get())).isEmpty());
}

void TestPaintedState::whatChangesLooksDifferent_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<ItemMaker>("make");
    const auto row = [](const char *name, Change change, ItemMaker make) {
        QTest::newRow(name) << change << make;
    };
    const ItemMaker text = []() -> QGraphicsItem * {
        return new QGraphicsTextItem(QStringLiteral("a"));
    };
    row("place", [](QGraphicsItem &item) { item.moveBy(1, 0); }, makeNote);
    row("opacity", [](QGraphicsItem &item) { item.setOpacity(0.5); }, makeNote);
    row("level", [](QGraphicsItem &item) { item.setZValue(7); }, makeNote);
    row("selection", [](QGraphicsItem &item) { item.setSelected(true); }, makeNote);
    row(
        "colour of a note",
        [](QGraphicsItem &item) {
            dynamic_cast<StickyNoteItem &>(item).setNoteColor(StickyNoteItem::Pink);
        },
        makeNote);
    row(
        "colour of a stroke",
        [](QGraphicsItem &item) { dynamic_cast<FreeDrawItem &>(item).setColor(Qt::red); },
        makeStroke);
    row(
        "colour of an arrow",
        [](QGraphicsItem &item) { dynamic_cast<ArrowLineItem &>(item).setColor(Qt::red); },
        makeArrow);
    row(
        "direction of an arrow",
        [](QGraphicsItem &item) { dynamic_cast<ArrowLineItem &>(item).setLine(30, 40, 0, 0); },
        makeArrow);
    row(
        "pixels of a picture",
        [](QGraphicsItem &item) {
            QPixmap other(30, 40);
            other.fill(Qt::blue);
            dynamic_cast<ResizablePixmapItem &>(item).setPixmap(other);
        },
        makePicture);
    row(
        "letters of a text",
        [](QGraphicsItem &item) {
            dynamic_cast<QGraphicsTextItem &>(item).setPlainText(QStringLiteral("b"));
        },
        text);
    row(
        "look of a letter",
        [](QGraphicsItem &item) {
            auto &edited = dynamic_cast<QGraphicsTextItem &>(item);
            QTextCursor cursor(edited.document());
            cursor.select(QTextCursor::Document);
            QTextCharFormat red;
            red.setForeground(Qt::red);
            cursor.mergeCharFormat(red);
        },
        text);
}

void TestPaintedState::whatChangesLooksDifferent()
{
    QFETCH(const ItemMaker, make);
    QFETCH(const Change, change);
    QGraphicsScene scene;
    auto *const item = make();
    item->setFlag(QGraphicsItem::ItemIsSelectable);
    scene.addItem(item);
    const Difference difference = differenceBy(*item, change);
    QVERIFY(difference.area().contains(difference.before.area));
    QVERIFY(difference.area().contains(difference.after.area));
}

void TestPaintedState::ofALongerStrokeTheTailIsNew_data()
{
    QTest::addColumn<QList<QPointF>>("more");
    QTest::newRow("by a point") << QList<QPointF>{{100, 100}};
    QTest::newRow("by two") << QList<QPointF>{{100, 100}, {120, 90}};
}

void TestPaintedState::ofALongerStrokeTheTailIsNew()
{
    QFETCH(const QList<QPointF>, more);
    FreeDrawItem stroke;
    stroke.setPos(1000, 0);
    const QList<QPointF> points{{0, 0}, {50, 0}, {90, 90}};
    stroke.setPath(pathThrough(points));
    const PaintedState before = paintedState(&stroke);
    stroke.setPath(pathThrough(points + more));
    const QRectF area = changedArea(before, paintedState(&stroke));
    // From the last line on, whose end is a joint now, with a pen of 2 around; the first line stays.
    QVERIFY(
        area.contains(QRectF(QPointF(1049, -1), QPointF(1000 + more.constLast().x() + 1, 101))));
    QVERIFY(area.left() > 1040);
    QVERIFY(area.top() > -8);
    // One that was only begun grows as well.
    stroke.setPath(QPainterPath({5, 5}));
    const PaintedState begun = paintedState(&stroke);
    stroke.setPath(pathThrough({{5, 5}, {20, 5}}));
    QVERIFY(changedArea(begun, paintedState(&stroke)).contains(QRectF(1004, 4, 17, 2)));
    // And one that was nothing is new as a whole.
    stroke.setPath({});
    const PaintedState nothing = paintedState(&stroke);
    stroke.setPath(pathThrough({{-500, 5}, {20, 5}, {30, 5}}));
    QVERIFY(changedArea(nothing, paintedState(&stroke)).contains(QRectF(500, 4, 520, 2)));
}

/// The tail is told in numbers of its own, which a stroke's whole area is not.
void TestPaintedState::ofOneThatWasHardlyBegunTheRestIsNew()
{
    FreeDrawItem stroke;
    stroke.setPath(QPainterPath({5, 5}));
    const PaintedState point = paintedState(&stroke);
    stroke.setPath(pathThrough({{5, 5}, {20, 5}}));
    const PaintedState line = paintedState(&stroke);
    constexpr qreal beside = 2 + 2; // the pen, and a blur
    QCOMPARE(changedArea(point, line),
             QRectF(5, 5, 15, 0).adjusted(-beside, -beside, beside, beside));

    // What was nothing has a place in the corner, which is painted as well.
    stroke.setPath({});
    const PaintedState nothing = paintedState(&stroke);
    QCOMPARE(changedArea(nothing, line), nothing.area.united(line.area));
}

void TestPaintedState::aStrokeThatBendsElsewhereIsNewAsAWhole()
{
    FreeDrawItem stroke;
    const QList<QPointF> points{{0, 0}, {50, 0}, {90, 90}};
    stroke.setPath(pathThrough(points));
    const PaintedState before = paintedState(&stroke);
    for (int moved = 0; moved < 3; ++moved) {
        QList<QPointF> others = points;
        others[moved] += QPointF(7, 7);
        for (const QList<QPointF> &end : {QList<QPointF>(), QList<QPointF>{{100, 100}}}) {
            stroke.setPath(pathThrough(others + end));
            const PaintedState after = paintedState(&stroke);
            QVERIFY(changedArea(before, after).contains(before.area));
            QVERIFY(changedArea(before, after).contains(after.area));
        }
    }
    // So is a shorter one.
    stroke.setPath(pathThrough({{0, 0}, {50, 0}}));
    QVERIFY(changedArea(before, paintedState(&stroke)).contains(before.area));
}

void TestPaintedState::aStrokeThatIsFilledOtherwiseIsNewAsAWhole()
{
    FreeDrawItem stroke;
    QPainterPath path = pathThrough({{0, 0}, {500, 0}, {500, 90}});
    stroke.setPath(path);
    const PaintedState before = paintedState(&stroke);
    path.setFillRule(Qt::WindingFill);
    stroke.setPath(path);
    QVERIFY(changedArea(before, paintedState(&stroke)).contains(before.area));
}

/// Undoing puts other items in the place of all, and two texts can have been changed as often.
void TestPaintedState::anotherTextIsNewWhateverItsHistory()
{
    const QGraphicsTextItem one(QStringLiteral("nu"));
    const QGraphicsTextItem other(QStringLiteral("un"));
    const PaintedState before = paintedState(&one);
    const PaintedState after = paintedState(&other);
    QCOMPARE(before.content, after.content);
    QCOMPARE(before.area, after.area);
    QVERIFY(!changedArea(before, after).isEmpty());
}

void TestPaintedState::aHeadIsPartOfItsArrow()
{
    ArrowLineItem arrow({0, 0}, {0, 100});
    arrow.setWidth(9);
    const PaintedState state = paintedState(&arrow);
    QCOMPARE(state.headReach, arrow.headReach());
    QVERIFY(state.headReach > 9);
    QVERIFY(state.area.left() <= arrow.sceneBoundingRect().left() - arrow.headReach());
    QVERIFY(state.area.bottom() >= arrow.sceneBoundingRect().bottom() + arrow.headReach());
    const FreeDrawItem stroke;
    QCOMPARE(paintedState(&stroke).headReach, 0.0);
}

void TestPaintedState::aLineWithoutWidthTakesPlace()
{
    FreeDrawItem stroke;
    stroke.setPath(pathThrough({{10, 10}, {10, 50}}));
    stroke.setWidth(0);
    const QRectF upright = paintedState(&stroke).area;
    QVERIFY(upright.left() < 10 && upright.right() > 10 && upright.width() < 1);
    stroke.setPath(pathThrough({{10, 10}, {50, 10}}));
    const QRectF level = paintedState(&stroke).area;
    QVERIFY(level.top() < 10 && level.bottom() > 10 && level.height() < 1);
}

void TestPaintedState::whoHasDashesIsKnown()
{
    ActiveScene scene;
    auto *const arrow = new ArrowLineItem({0, 0}, {30, 40});
    scene.addItem(arrow);
    arrow->setSelected(true);
    QVERIFY(paintedState(arrow).outlined);
    auto *const note = new StickyNoteItem;
    scene.addItem(note);
    auto *const text = textOf(*note);
    QVERIFY(!paintedState(text).outlined);
    text->setFocus();
    QVERIFY(paintedState(text).outlined);
    text->clearFocus();
    text->setFlag(QGraphicsItem::ItemIsSelectable);
    text->setSelected(true);
    QVERIFY(paintedState(text).outlined);
    const auto *const unknown = scene.addRect(0, 0, 10, 10);
    QVERIFY(paintedState(unknown).outlined);
}

void TestPaintedState::whatCannotBeToldIsUncertain()
{
    ActiveScene scene;
    auto *const note = new StickyNoteItem;
    scene.addItem(note);
    auto *const text = textOf(*note);
    QVERIFY(!paintedState(text).uncertain);
    note->setFocus();
    QVERIFY(paintedState(note).uncertain);
    const PaintedState focused = paintedState(note);
    QVERIFY(!changedArea(focused, focused).isEmpty());
    text->setFocus();
    QVERIFY(paintedState(text).uncertain);
    text->clearFocus();
    QVERIFY(!paintedState(text).uncertain);
    QTextCursor cursor = text->textCursor();
    cursor.select(QTextCursor::Document);
    text->setTextCursor(cursor);
    QVERIFY(paintedState(text).uncertain);
    const auto *const unknown = scene.addRect(0, 0, 10, 10);
    QVERIFY(paintedState(unknown).uncertain);
}

PLUMARA_TEST(TestPaintedState)
#include "tst_paintedstate.moc"
