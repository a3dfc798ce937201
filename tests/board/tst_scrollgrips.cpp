// The grips of the board's slim scroll bars: how far beside them the pointer meets them.

#include "tests/board/presentation.h"
#include "tests/board/shownboard.h"
#include "tests/support/main/registeredtest.h"

#include <QScrollBar>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestScrollGrips : public QObject
{
    Q_OBJECT

private slots:
    void aGripIsTakenTenPixelsFromTheEdge_data();
    void aGripIsTakenTenPixelsFromTheEdge();
    void theStripGoesAlongWithTheGrip_data();
    void theStripGoesAlongWithTheGrip();
    void theShortestGripHasAShortStrip_data();
    void theShortestGripHasAShortStrip();
    void theStripIsSeenThrough();
    void besideTheGripTheCanvasIsThePointers();
    void aShorterGripIsTakenOnlyWhereItIs();
    void thePointerIsAnArrowOnTheGripWhateverTheTool();
    void aPresentationHasNoGrips();
    void aBarThatGoesTakesItsGripAlong();
};

namespace {

struct Side
{
    QScrollBar *bar;
    QPoint onGrip; // in the window
    QPoint along; // a step in the direction of the bar
};

constexpr int onGripStart = 100; // pixels from the beginning of the bar

Side sideOf(const ShownBoard &board, Qt::Orientation orientation, int fromEdge)
{
    if (orientation == Qt::Vertical)
        return {board.view.verticalScrollBar(), {1200 - fromEdge, onGripStart}, {0, 60}};
    return {board.view.horizontalScrollBar(), {onGripStart, 700 - fromEdge}, {60, 0}};
}

void drag(ShownBoard &board, const QPoint &from, const QPoint &to)
{
    auto *const window = board.window.windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    QTest::mouseMove(window, to);
    QTest::mouseRelease(window, Qt::LeftButton, {}, to);
}

} // namespace

void TestScrollGrips::aGripIsTakenTenPixelsFromTheEdge_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("fromEdge");
    for (const int fromEdge : {1, 5, 6, 10}) {
        QTest::addRow("upright, %d", fromEdge) << Qt::Vertical << fromEdge;
        QTest::addRow("across, %d", fromEdge) << Qt::Horizontal << fromEdge;
    }
}

void TestScrollGrips::aGripIsTakenTenPixelsFromTheEdge()
{
    QFETCH(const Qt::Orientation, orientation);
    QFETCH(const int, fromEdge);
    ShownBoard board;
    const Side side = sideOf(board, orientation, fromEdge);
    side.bar->setValue(0);

    drag(board, side.onGrip, side.onGrip + side.along);
    const int dragged = side.bar->value();
    QVERIFY(dragged > 0);

    // The strip has gone along with the grip.
    drag(board, side.onGrip + side.along, side.onGrip);
    QCOMPARE(side.bar->value(), 0);
}

void TestScrollGrips::theStripGoesAlongWithTheGrip_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("upright") << Qt::Vertical;
    QTest::newRow("across") << Qt::Horizontal;
}

void TestScrollGrips::theStripGoesAlongWithTheGrip()
{
    QFETCH(const Qt::Orientation, orientation);
    ShownBoard board;
    // The board does not begin at zero, and the grip is short.
    board.scene.setSceneRect(-3000, -3000, 12000, 12000);
    const Side side = sideOf(board, orientation, 8);
    const bool upright = orientation == Qt::Vertical;
    const auto stripAt = [&](int along) {
        const QPoint place = upright ? QPoint(1192, along) : QPoint(along, 692);
        return board.window.childAt(place) != board.view.viewport();
    };
    const int length = upright ? side.bar->height() : side.bar->width();

    side.bar->setValue(side.bar->minimum());
    QVERIFY(stripAt(10) && !stripAt(length / 2) && !stripAt(length - 10));
    side.bar->setValue((side.bar->minimum() + side.bar->maximum()) / 2);
    QVERIFY(!stripAt(10) && stripAt(length / 2) && !stripAt(length - 10));
    side.bar->setValue(side.bar->maximum());
    QVERIFY(!stripAt(10) && !stripAt(length / 2) && stripAt(length - 10));
}

void TestScrollGrips::theShortestGripHasAShortStrip_data()
{
    theStripGoesAlongWithTheGrip_data();
}

void TestScrollGrips::theShortestGripHasAShortStrip()
{
    QFETCH(const Qt::Orientation, orientation);
    ShownBoard board;
    const Side side = sideOf(board, orientation, 8);
    board.scene.setSceneRect(0, 0, 1'000'000, 1'000'000);
    side.bar->setValue(0);
    const auto under = [&](int along, int fromEdge) -> QWidget * {
        return board.window.childAt(orientation == Qt::Vertical ? QPoint(1200 - fromEdge, along)
                                                                : QPoint(along, 700 - fromEdge));
    };

    QVERIFY(under(17, 8) != board.view.viewport());
    QCOMPARE(under(23, 8), board.view.viewport());
    // What is drawn of the grip is the bar's own.
    QCOMPARE(under(17, 3), side.bar);
}

void TestScrollGrips::theStripIsSeenThrough()
{
    ShownBoard board;
    board.scene.addRect(0, 0, 1920, 1080, {}, Qt::black);
    board.view.verticalScrollBar()->setValue(0);
    board.processEvents();

    const QPoint onStrip(1192, onGripStart);
    QVERIFY(board.window.childAt(onStrip) != board.view.viewport());
    QCOMPARE(board.window.grab(QRect(onStrip, QSize(1, 1))).toImage().pixelColor(0, 0),
             QColor(Qt::black));
}

void TestScrollGrips::besideTheGripTheCanvasIsThePointers()
{
    ShownBoard board;
    board.view.verticalScrollBar()->setValue(0);
    board.click("ModoPostIt");
    // Over the bar's track, and farther inside than the grip reaches.
    for (const QPoint place : {QPoint(1192, 640), QPoint(1189, onGripStart)}) {
        const auto before = board.count();
        QTest::mouseClick(board.window.windowHandle(), Qt::LeftButton, {}, place);
        QCOMPARE(board.count(), before + 1);
    }
    QCOMPARE(board.view.verticalScrollBar()->value(), 0);
}

void TestScrollGrips::aShorterGripIsTakenOnlyWhereItIs()
{
    ShownBoard board;
    board.view.verticalScrollBar()->setValue(0);
    const QPoint farDown(1192, 300);
    QVERIFY(board.window.childAt(farDown) != board.view.viewport());

    board.scene.setSceneRect(0, 0, 1920, 10800);
    QCOMPARE(board.view.verticalScrollBar()->value(), 0);
    QCOMPARE(board.window.childAt(farDown), board.view.viewport());
}

void TestScrollGrips::thePointerIsAnArrowOnTheGripWhateverTheTool()
{
    ShownBoard board;
    board.view.verticalScrollBar()->setValue(0);
    board.click("ModoLapiz");
    const auto *const widget = board.window.childAt(1192, onGripStart);
    QVERIFY(widget);
    QCOMPARE(widget->cursor().shape(), Qt::ArrowCursor);
}

void TestScrollGrips::aPresentationHasNoGrips()
{
    ShownBoard board;
    board.window.manejarPresentacion(0);
    QTRY_VERIFY(board.window.isFullScreen());
    const QSize size = board.window.size();
    QCOMPARE(board.window.childAt(size.width() - 8, onGripStart), board.view.viewport());
    QCOMPARE(board.window.childAt(size.width() - 2, onGripStart), board.view.viewport());
}

void TestScrollGrips::aBarThatGoesTakesItsGripAlong()
{
    ShownBoard board;
    board.view.verticalScrollBar()->setValue(0);
    const QPoint besideTheGrip(1192, onGripStart);
    const QWidget *const grip = board.window.childAt(besideTheGrip);
    QVERIFY(grip && grip != board.view.viewport());

    board.view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QTRY_COMPARE(board.window.childAt(besideTheGrip), board.view.viewport());
    board.view.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QTRY_COMPARE(board.window.childAt(besideTheGrip), grip);
}

PLUMARA_TEST(TestScrollGrips)
#include "tst_scrollgrips.moc"
