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
