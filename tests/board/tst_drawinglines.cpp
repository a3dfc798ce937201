// Drawing lines with the pointer.

#include "items/arrowlineitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/main/registeredtest.h"

#include <QPen>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString cursorTitle = u"Orvane Plumara - Modo Pizarra"_s;

} // namespace

class TestDrawingLines : public QObject
{
    Q_OBJECT

private slots:
    void aLineStartsAsAPoint();
    void aLineFollowsThePointer();
    void lettingALineGoRecordsItAndEndsTheMode();
    void aLineThatWasLetGoFollowsNoFurther();
    void aLineEndsWhereTheButtonIsReleased();
    void aFinishedLineCanBeSelectedAndMoved();
    void theReleaseMakesALineMovableAndSelectable();
    void aLineClickLeavesALineOfNoLength();
};

void TestDrawingLines::aLineStartsAsAPoint()
{
    ShownBoard board;
    board.click("ModoLinea");

    board.pointer.press({500, 300});

    const auto *const arrow = board.only<ArrowLineItem>();
    QVERIFY(arrow);
    QCOMPARE(arrow->line(), QLineF(500, 300, 500, 300));
    QCOMPARE(arrow->zValue(), 2.0);
    const QPen pen = static_cast<const QGraphicsLineItem *>(arrow)->pen();
    QCOMPARE(pen.color(), QColor(Qt::black));
    QCOMPARE(pen.width(), 2);
    QVERIFY(!arrow->parentItem());
    QVERIFY(!arrow->parent());
    QCOMPARE(QWidget::mouseGrabber(), &board.view);
}

void TestDrawingLines::aLineFollowsThePointer()
{
    ShownBoard board;
    board.click("ModoLinea");
    board.pointer.press({500, 300});

    board.pointer.move({600, 350});
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 600, 350));
    // Whatever buttons are held.
    board.send(QEvent::MouseMove, {400, 200}, Qt::NoButton, Qt::NoButton);
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 400, 200));
    board.send(QEvent::MouseMove, {450, 250}, Qt::NoButton, Qt::RightButton);
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 450, 250));
}

void TestDrawingLines::lettingALineGoRecordsItAndEndsTheMode()
{
    ShownBoard board;
    board.window.captureSnapshot();
    board.click("ModoLinea");

    board.quickDrag({500, 300}, {600, 350});

    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.window.windowTitle(), cursorTitle);
    board.window.undoMode();
    QCOMPARE(board.count(), 0);
    board.window.redoMode();
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 600, 350));
}

void TestDrawingLines::aLineThatWasLetGoFollowsNoFurther()
{
    ShownBoard board;
    board.click("ModoLinea");
    board.pointer.drag({{500, 300}, {600, 350}});

    board.click("ModoLinea");
    board.send(QEvent::MouseMove, {400, 200}, Qt::NoButton, Qt::NoButton);

    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 600, 350));
}

void TestDrawingLines::aLineEndsWhereTheButtonIsReleased()
{
    ShownBoard board;
    board.click("ModoLinea");

    board.pointer.press({500, 300});
    board.send(QEvent::MouseButtonRelease, {700, 400}, Qt::LeftButton, Qt::NoButton);

    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 700, 400));
}

void TestDrawingLines::aFinishedLineCanBeSelectedAndMoved()
{
    ShownBoard board;
    board.click("ModoLinea");
    board.pointer.drag({{500, 300}, {700, 300}});
    auto *const arrow = board.only<ArrowLineItem>();
    QVERIFY(
        arrow->flags().testFlags(QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable));

    board.pointer.drag({{600, 300}, {610, 310}, {620, 320}});

    QVERIFY(arrow->isSelected());
    QVERIFY(arrow->pos().x() > 0);
    QCOMPARE(board.count(), 1);
}

void TestDrawingLines::theReleaseMakesALineMovableAndSelectable()
{
    ShownBoard board;
    board.click("ModoLinea");
    board.pointer.press({500, 300});
    auto *const arrow = board.only<ArrowLineItem>();
    arrow->setFlags({});

    board.pointer.release({700, 300});

    QCOMPARE(arrow->flags(), QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable);
}

void TestDrawingLines::aLineClickLeavesALineOfNoLength()
{
    ShownBoard board;
    board.window.captureSnapshot();
    board.click("ModoLinea");

    board.quickDrag({500, 300}, {500, 300});

    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 500, 300));
    QCOMPARE(board.window.windowTitle(), cursorTitle);
    board.window.undoMode();
    QCOMPARE(board.count(), 0);
}

PLUMARA_TEST(TestDrawingLines)
#include "tst_drawinglines.moc"
