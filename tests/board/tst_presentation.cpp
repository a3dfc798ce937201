// Entering the presentation of a board on the full screen.

#include "items/freedrawitem.h"
#include "tests/board/presentation.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <optional>

using namespace Qt::Literals::StringLiterals;

class TestPresentation : public QObject
{
    Q_OBJECT

private slots:
    void theKeyboardEntersThroughTheCombo();
    void theMouseEntersThroughTheCombo();
    void theWheelOverTheComboEntersNothing();
    void theSlotEnters();
    void otherIndicesDoNothing_data();
    void otherIndicesDoNothing();
    void enteringTwiceIsEnteringOnce();
    void thePanelsGoToTheEdges();
    void theCanvasFillsTheWindow();
    void theWholeBoardIsVisible();
    void theComboKeepsItsChoice();
    void theReminderStandsAtItsPlace();
    void theReminderIsThereAtOnce();
    void toolsWorkWhilePresenting();
    void openingABoardKeepsWhatIsPresented();
    void theWindowManagerMayLetTheWindowGrow();

    void theReminderLastsElevenSecondsFromTheFirstEntry();
};

void TestPresentation::theKeyboardEntersThroughTheCombo()
{
    ShownBoard board;
    board.window.activateWindow();
    board.find<QComboBox>("Presentar")->setFocus();

    pressKey(board, Qt::Key_Down);

    QVERIFY(presents(board));
    QCOMPARE(board.find<QComboBox>("Presentar")->currentIndex(), 0);
}

void TestPresentation::theMouseEntersThroughTheCombo()
{
    ShownBoard board;
    board.click("Presentar");
    const auto *const list = board.find<QComboBox>("Presentar")->view();
    QTRY_VERIFY(list->isVisible());
    // A release that comes soon after the press that opened the list does not choose.
    QTest::qWait(QApplication::doubleClickInterval());
    const QPoint entry = list->visualRect(list->model()->index(0, 0)).center();

    auto *const popup = list->window()->windowHandle();
    QTest::mouseClick(popup, Qt::LeftButton, {}, list->viewport()->mapTo(list->window(), entry));

    QTRY_VERIFY(presents(board));
}

void TestPresentation::theWheelOverTheComboEntersNothing()
{
    ShownBoard board;
    auto &combo = *board.find<QComboBox>("Presentar");
    const QPointF middle = combo.rect().center();
    QWheelEvent down(middle, combo.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, {},
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&combo, &down);

    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(!presents(board));
    // What lies around the list may scroll with it.
    QVERIFY(!down.isAccepted());
}

void TestPresentation::theSlotEnters()
{
    ShownBoard board;

    QVERIFY(QMetaObject::invokeMethod(&board.window, "manejarPresentacion", Q_ARG(int, 0)));

    QVERIFY(presents(board));
    QVERIFY(reminds(board));
}

void TestPresentation::otherIndicesDoNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("none") << -1;
    QTest::newRow("the one after") << 1;
    QTest::newRow("far away") << 1000;
}

void TestPresentation::otherIndicesDoNothing()
{
    QFETCH(const int, index);
    ShownBoard board;

    board.window.manejarPresentacion(index);
    QVERIFY(!board.window.isFullScreen());
    QVERIFY(!reminds(board));

    enterPresentation(board);
    board.window.manejarPresentacion(index);
    QVERIFY(presents(board));
}

void TestPresentation::enteringTwiceIsEnteringOnce()
{
    ShownBoard board;
    enterPresentation(board);
    board.find<QWidget>("AdviseFS")->hide();

    board.window.manejarPresentacion(0);

    QVERIFY(!reminds(board));
}

void TestPresentation::thePanelsGoToTheEdges()
{
    ShownBoard board;
    enterPresentation(board);
    // As large as built, the window would have some panels where they are anyway.
    QTRY_VERIFY(board.window.size() != QSize(1200, 700));
    const int w = board.window.width();
    const int h = board.window.height();

    const auto place = [&board](const char *name) { return board.find<QWidget>(name)->geometry(); };
    QCOMPARE(place("ToolPanel"), QRect(10, (h - 325) / 2, 35, 325));
    QCOMPARE(place("ExitPanel"), QRect(10, h - 35 - 10, 35, 35));
    QCOMPARE(place("MainPanel"), QRect(10, 10, 270, 35));
    QCOMPARE(place("AccountPanel"), QRect(w - 200 - 10, 10, 200, 35));
    QCOMPARE(place("DateTimePanel"), QRect(w - 200 - 10, h - 35 - 10, 200, 35));
}

void TestPresentation::theCanvasFillsTheWindow()
{
    ShownBoard board;
    enterPresentation(board);

    QCOMPARE(board.view.geometry(), board.window.rect());
    QCOMPARE(board.view.viewport()->size(), board.window.size());
    QCOMPARE(board.view.sceneRect(), QRectF(board.window.rect()));
    QCOMPARE(board.scene.sceneRect(), QRectF(0, 0, 1920, 1080));
    QCOMPARE(board.view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(board.view.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

void TestPresentation::theWholeBoardIsVisible()
{
    ShownBoard board;
    enterPresentation(board);

    // Fitted in with its proportions kept, less the small margin that the toolkit leaves.
    const QTransform transform = board.view.transform();
    QCOMPARE(transform.m11(), transform.m22());
    const qreal scale = std::min(board.window.width() / 1920.0, board.window.height() / 1080.0);
    QVERIFY(transform.m11() <= scale);
    QVERIFY(transform.m11() > scale * 0.98);
}

void TestPresentation::theComboKeepsItsChoice()
{
    ShownBoard board;
    enterPresentation(board);

    QCOMPARE(board.find<QComboBox>("Presentar")->currentIndex(), 0);
}

void TestPresentation::theReminderStandsAtItsPlace()
{
    ShownBoard board;
    QVERIFY(!reminds(board));

    enterPresentation(board);

    QVERIFY(reminds(board));
    QCOMPARE(board.find<QWidget>("AdviseFS")->geometry(), QRect(290, 10, 480, 35));
}

void TestPresentation::theReminderIsThereAtOnce()
{
    ShownBoard board;

    enterPresentation(board);

    // The fade-in has just begun and shows nothing of itself.
    const auto *const reminder = board.find<QWidget>("AdviseFS");
    QVERIFY(reminds(board));
    QCOMPARE(reminder->windowOpacity(), 1.0);
    QVERIFY(!reminder->graphicsEffect());
}

void TestPresentation::toolsWorkWhilePresenting()
{
    ShownBoard board;
    enterPresentation(board);

    board.click("ModoLapiz");
    const QPointF start = board.pointer.pixel({500, 300});
    board.pointer.drag({start, {700, 400}});

    QVERIFY(board.only<FreeDrawItem>());
    QCOMPARE(QPointF(board.only<FreeDrawItem>()->path().elementAt(0)), start);
    QVERIFY(presents(board));
}

void TestPresentation::openingABoardKeepsWhatIsPresented()
{
    const ScratchHome home;
    ShownBoard board;
    // So small that the screen shows it larger than it is, and not from the view's corner on.
    board.scene.setSceneRect(200, 200, 100, 75);
    enterPresentation(board);
    const QPointF corner = board.view.mapToScene(0, 0);
    QVERIFY(corner.x() > 0 && corner.y() > 0);

    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));

    QCOMPARE(board.name(), u"plan.vtrz"_s);
    QCOMPARE(board.view.mapToScene(0, 0), corner);
}

void TestPresentation::theWindowManagerMayLetTheWindowGrow()
{
    ShownBoard board;
    enterPresentation(board);

    const auto *const window = board.window.windowHandle();
    QCOMPARE(window->minimumSize(), QSize(0, 0));
    QCOMPARE(window->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

void TestPresentation::theReminderLastsElevenSecondsFromTheFirstEntry()
{
    // Two boards share the wait: one that presents all the time, and one that is left at once and
    // presents again later. The first reminder's end cuts the second one of that board short.
    ShownBoard steady;
    ShownBoard again;
    QElapsedTimer elapsed;
    elapsed.start();
    enterPresentation(steady);
    enterPresentation(again);
    pressKey(again, Qt::Key_Escape);
    QVERIFY(reminds(steady));
    QVERIFY(!reminds(again));
    // Two waits as the reminder's, which a slow machine lengthens as it does those, and half a second.
    std::optional<bool> isOverTime;
    QTimer::singleShot(10'500, Qt::PreciseTimer, &steady.window, [&] {
        QTimer::singleShot(1'000, Qt::PreciseTimer, &steady.window,
                           [&] { isOverTime = reminds(steady); });
    });

    // So late that its own end, 17 seconds from the start, is far from the one that comes.
    QTest::qWait(6000);
    enterPresentation(again);
    QVERIFY(reminds(again));

    QTRY_VERIFY_WITH_TIMEOUT(!reminds(steady) && !reminds(again), 10000);
    QVERIFY2(elapsed.elapsed() >= 10900, QByteArray::number(elapsed.elapsed()).constData());
    QTRY_VERIFY(isOverTime);
    QVERIFY(isOverTime == false);
    QVERIFY(presents(steady));
    QVERIFY(presents(again));
}

PLUMARA_TEST(TestPresentation)
#include "tst_presentation.moc"
