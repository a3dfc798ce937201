// Gestures that something interrupts: another mode, undo, another board. Whatever happens, nothing
// crashes and the rest of the window gets the mouse back.

#include "home/mainwindow.h"
#include "items/arrowlineitem.h"
#include "tests/board/presentation.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Starts a gesture with the tool of that button, from (500, 300) to (520, 310).
void begin(ShownBoard &board, const char *button)
{
    board.click(button);
    board.pointer.press({500, 300});
    board.pointer.move({520, 310});
}

} // namespace

class TestBrokenGestures : public QObject
{
    Q_OBJECT

private slots:
    void anotherModeGivesTheMouseBack_data();
    void anotherModeGivesTheMouseBack();
    void anotherModeStopsTheStroke();
    void theStrokeGoesOnWhenThePenComesBack();
    void theLineGoesOnWhenItsModeComesBack();
    void theEraserErasesTheStrokeUnderWay();
    void theEraserErasesTheLineUnderWay();
    void theEraserEndsTheGestureOfThePen();
    void undoTakesTheItemUnderWayAway_data();
    void undoTakesTheItemUnderWayAway();
    void afterUndoTheNextStrokeIsDrawn();
    void anotherBoardTakesTheItemUnderWayAway_data();
    void anotherBoardTakesTheItemUnderWayAway();
    void afterClosingTheReleaseGivesTheMouseBack_data();
    void afterClosingTheReleaseGivesTheMouseBack();
    void aSecondPressStartsANewStroke();
    void theImageDialogInterruptsAStroke();
    void leavingAPresentationInterruptsAStroke();
};

void TestBrokenGestures::anotherModeGivesTheMouseBack_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    for (const char *first : {"ModoLapiz", "ModoLinea", "ModoBorrador"}) {
        for (const char *second : {"ModoCursor", "ModoPostIt", "ModoLapiz", "ModoLinea"}) {
            if (QByteArray(first) != second)
                QTest::addRow("%s then %s", first, second)
                    << QByteArray(first) << QByteArray(second);
        }
    }
}

void TestBrokenGestures::anotherModeGivesTheMouseBack()
{
    QFETCH(const QByteArray, first);
    QFETCH(const QByteArray, second);
    ShownBoard board;
    begin(board, first.constData());
    QCOMPARE(QWidget::mouseGrabber(), &board.view);
    // The mouse is held: only the keyboard reaches a button.
    board.find<QWidget>(second.constData())->setFocus();
    QTest::keyClick(board.window.windowHandle(), Qt::Key_Space);
    const QString title = board.window.windowTitle();

    board.pointer.release({540, 320});

    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.window.windowTitle(), title);
    board.click("ModoBorrador");
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Borrador"_s);
}

void TestBrokenGestures::anotherModeStopsTheStroke()
{
    ShownBoard board;
    begin(board, "ModoLapiz");

    board.window.setCursorMode();
    board.pointer.move({700, 400});
    board.pointer.release({700, 400});

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestBrokenGestures::theStrokeGoesOnWhenThePenComesBack()
{
    ShownBoard board;
    begin(board, "ModoLapiz");
    board.window.setCursorMode();
    board.pointer.release({520, 310});
    board.window.setPenMode();

    // The stroke under way is kept until a release in its own mode.
    board.send(QEvent::MouseMove, {700, 400}, Qt::NoButton, Qt::NoButton);
    board.send(QEvent::MouseButtonRelease, {700, 400}, Qt::LeftButton, Qt::NoButton);

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}, {700, 400}}));
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestBrokenGestures::theLineGoesOnWhenItsModeComesBack()
{
    ShownBoard board;
    begin(board, "ModoLinea");
    board.window.setPenMode();
    board.send(QEvent::MouseMove, {600, 600}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 520, 310));
    board.window.setLineMode();

    board.send(QEvent::MouseButtonRelease, {700, 400}, Qt::LeftButton, Qt::NoButton);

    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 700, 400));
}

void TestBrokenGestures::theEraserErasesTheStrokeUnderWay()
{
    ShownBoard board;
    begin(board, "ModoLapiz");

    // The eraser sweeps from the board's corner: it was never pressed.
    board.window.setEraseMode();
    board.pointer.move({540, 320});
    QCOMPARE(board.count(), 0);
    board.window.setPenMode();
    board.pointer.move({560, 330});
    board.pointer.release({560, 330});

    QCOMPARE(board.count(), 0);
    QVERIFY(!QWidget::mouseGrabber());
}

void TestBrokenGestures::theEraserErasesTheLineUnderWay()
{
    ShownBoard board;
    begin(board, "ModoLinea");

    board.window.setEraseMode();
    board.pointer.move({540, 320});
    QCOMPARE(board.count(), 0);
    board.window.setLineMode();
    board.pointer.move({560, 330});
    board.pointer.release({560, 330});

    QCOMPARE(board.count(), 0);
    QVERIFY(!QWidget::mouseGrabber());
}

void TestBrokenGestures::theEraserEndsTheGestureOfThePen()
{
    ShownBoard board;
    begin(board, "ModoLapiz");

    board.window.setEraseMode();
    board.pointer.release({520, 310});

    QCOMPARE(board.count(), 1);
    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestBrokenGestures::undoTakesTheItemUnderWayAway_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("ModoLapiz") << u"Orvane Plumara - Modo Lápiz"_s;
    QTest::newRow("ModoLinea") << u"Orvane Plumara - Modo Linea"_s;
}

void TestBrokenGestures::undoTakesTheItemUnderWayAway()
{
    ShownBoard board;
    board.window.captureSnapshot();
    begin(board, QTest::currentDataTag());
    board.processEvents();
    while (board.count() > 0)
        board.window.undoMode();

    board.pointer.move({540, 320});
    board.pointer.release({560, 330});

    QCOMPARE(board.count(), 0);
    QVERIFY(!QWidget::mouseGrabber());
    // No gesture was finished, so the mode stays.
    QTEST(board.window.windowTitle(), "title");
}

void TestBrokenGestures::afterUndoTheNextStrokeIsDrawn()
{
    ShownBoard board;
    board.window.captureSnapshot();
    begin(board, "ModoLapiz");
    board.processEvents();
    while (board.count() > 0)
        board.window.undoMode();
    board.pointer.release({520, 310});

    board.pointer.drag({{700, 400}, {800, 450}});

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{700, 400}, {800, 450}}));
}

void TestBrokenGestures::anotherBoardTakesTheItemUnderWayAway_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("ModoLapiz") << u"Orvane Plumara - Modo Lápiz"_s;
    QTest::newRow("ModoLinea") << u"Orvane Plumara - Modo Linea"_s;
    QTest::newRow("ModoBorrador") << u"Orvane Plumara - Modo Pizarra"_s;
}

void TestBrokenGestures::anotherBoardTakesTheItemUnderWayAway()
{
    const ScratchHome home;
    ShownBoard board;
    begin(board, QTest::currentDataTag());

    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s),
                                            QJsonArray{BoardFile::stroke(100, 100, 200, 200)}));
    board.pointer.move({540, 320});
    board.pointer.release({560, 330});

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{100, 100}, {200, 200}}));
    QVERIFY(!QWidget::mouseGrabber());
    QTEST(board.window.windowTitle(), "title");
}

void TestBrokenGestures::afterClosingTheReleaseGivesTheMouseBack_data()
{
    QTest::addColumn<bool>("asks");
    QTest::newRow("ModoLapiz") << true;
    QTest::newRow("ModoLinea") << true;
    QTest::newRow("ModoBorrador") << false;
}

void TestBrokenGestures::afterClosingTheReleaseGivesTheMouseBack()
{
    const ScratchHome folder;
    MainWindow home;
    ShownBoard board(&home);
    begin(board, QTest::currentDataTag());
    const BoxAnswer answer(u"No"_s);

    // The keyboard reaches the button while the mouse is held.
    board.find<QWidget>("CloseBoardBtn")->setFocus();
    QTest::keyClick(board.window.windowHandle(), Qt::Key_Space);
    QTEST(answer.seen(), "asks");
    QVERIFY(!board.window.isVisible());
    QVERIFY(home.isVisible());
    QTest::mouseRelease(home.windowHandle(), Qt::LeftButton, {}, {600, 400});

    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.count(), 0);
}

void TestBrokenGestures::aSecondPressStartsANewStroke()
{
    ShownBoard board;
    begin(board, "ModoLapiz");

    // As when the release went to another program.
    board.quickDrag({700, 400}, {800, 450});

    QCOMPARE(board.all<FreeDrawItem>().size(), 2);
    QCOMPARE(board.all<FreeDrawItem>().constFirst()->path(), pathThrough({{700, 400}, {800, 450}}));
    QCOMPARE(board.all<FreeDrawItem>().constLast()->path(), pathThrough({{500, 300}, {520, 310}}));
    QVERIFY(!QWidget::mouseGrabber());
}

void TestBrokenGestures::theImageDialogInterruptsAStroke()
{
    ShownBoard board;
    begin(board, "ModoLapiz");
    const FileDialogAnswer answer({});

    board.window.setImageMode();
    board.pointer.release({540, 320});

    QVERIFY(answer.seen());
    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestBrokenGestures::leavingAPresentationInterruptsAStroke()
{
    ShownBoard board;
    enterPresentation(board);
    begin(board, "ModoLapiz");
    QVERIFY(board.only<FreeDrawItem>());

    QTest::keyClick(board.window.windowHandle(), Qt::Key_Escape);
    board.pointer.release({540, 320});

    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
    QVERIFY(board.only<FreeDrawItem>());
}

PLUMARA_TEST(TestBrokenGestures)
#include "tst_brokengestures.moc"
