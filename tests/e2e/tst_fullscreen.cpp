// A presentation under a real window manager, on whatever screen the test is run.

#include "board/boardwindow.h"

#include <QComboBox>
#include <QGraphicsView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace Qt::Literals::StringLiterals;

class TestFullScreen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void theBoardFillsTheScreenWithoutAFrame();
    void everyPanelSitsAtItsEdge();
    void theWindowKeepsItsFixedSizeAsAWidget();
    void theReminderIsSeen();
    void theToolsWorkWhilePresenting();
    void leavingRestoresTheWindow();
    void leavingPutsThePanelsBack();
    void thePersonCannotResizeTheWindowAfterwards();
    void presentingAgainFillsTheScreenAgain();
    void enteringAndLeavingAtOnceEndsInTheWindow();

private:
    QWidget *panel(const QString &name) const { return board->findChild<QWidget *>(name); }
    QComboBox *combo() const { return board->findChild<QComboBox *>(u"Presentar"_s); }
    QRect screenRect() const { return board->screen()->geometry(); }

    void present();
    void leave();
    bool fillsTheScreen() const;

    std::unique_ptr<BoardWindow> board;
};

void TestFullScreen::initTestCase()
{
    if (QGuiApplication::platformName() != u"xcb")
        QFAIL("This test needs a display with a window manager: scripts/with-display");
}

void TestFullScreen::init()
{
    board = std::make_unique<BoardWindow>(nullptr);
    board->show();
    QVERIFY(QTest::qWaitForWindowActive(board.get()));
}

void TestFullScreen::cleanup()
{
    board.reset();
}

void TestFullScreen::present()
{
    QTest::mouseClick(combo(), Qt::LeftButton);
    QTest::keyClick(combo(), Qt::Key_Down);
    QTest::keyClick(combo(), Qt::Key_Return);
    QCOMPARE(combo()->currentIndex(), 0);
    QTRY_VERIFY(fillsTheScreen());
    QVERIFY(QTest::qWaitForWindowActive(board.get()));
}

void TestFullScreen::leave()
{
    QTest::keyClick(board->windowHandle(), Qt::Key_Escape);
    QVERIFY(QTest::qWaitForWindowActive(board.get()));
}

/// The native window, as the window manager has placed it, and the widget.
bool TestFullScreen::fillsTheScreen() const
{
    return board->windowHandle()->geometry() == screenRect()
        && board->size() == screenRect().size();
}

void TestFullScreen::theBoardFillsTheScreenWithoutAFrame()
{
    present();
    QVERIFY(board->isFullScreen());
    QCOMPARE(board->frameGeometry(), screenRect());
    QCOMPARE(panel(u"PizarraMain"_s)->geometry(), QRect({0, 0}, screenRect().size()));
}

void TestFullScreen::everyPanelSitsAtItsEdge()
{
    present();
    const int right = screenRect().width() - 10;
    const int bottom = screenRect().height() - 10;
    QTRY_COMPARE(panel(u"MainPanel"_s)->geometry(), QRect(10, 10, 270, 35));
    QTRY_COMPARE(panel(u"ToolPanel"_s)->geometry(),
                 QRect(10, (screenRect().height() - 325) / 2, 35, 325));
    QTRY_COMPARE(panel(u"ExitPanel"_s)->geometry(), QRect(10, bottom - 35, 35, 35));
    QTRY_COMPARE(panel(u"AccountPanel"_s)->geometry(), QRect(right - 200, 10, 200, 35));
    QTRY_COMPARE(panel(u"DateTimePanel"_s)->geometry(), QRect(right - 200, bottom - 35, 200, 35));
}

void TestFullScreen::theWindowKeepsItsFixedSizeAsAWidget()
{
    present();
    QCOMPARE(board->minimumSize(), QSize(1200, 700));
    QCOMPARE(board->maximumSize(), QSize(1200, 700));
}

void TestFullScreen::theReminderIsSeen()
{
    present();
    QVERIFY(panel(u"AdviseFS"_s)->isVisible());
    QVERIFY(!panel(u"AdviseFS"_s)->visibleRegion().isEmpty());
}

void TestFullScreen::theToolsWorkWhilePresenting()
{
    present();
    auto *const view = board->findChild<QGraphicsView *>(u"PizarraMain"_s);
    QTest::mouseClick(panel(u"ModoPostIt"_s), Qt::LeftButton);
    QTest::mouseClick(board->windowHandle(), Qt::LeftButton, {}, screenRect().center());
    const QPointF middle = view->mapToScene(screenRect().center());
    QVERIFY(view->scene()->itemAt(middle + QPointF(5, 5), {}));
}

void TestFullScreen::leavingRestoresTheWindow()
{
    const auto framedSize = board->frameGeometry().size();
    present();
    leave();
    QTRY_COMPARE(board->size(), QSize(1200, 700));
    QVERIFY(!board->isFullScreen());
    QTRY_COMPARE(board->frameGeometry().size(), framedSize);
    const QRect screen = screenRect();
    QTRY_COMPARE(board->pos(),
                 QPoint((screen.left() + screen.right()) / 2 - 1199 / 2,
                        (screen.top() + screen.bottom()) / 2 - 699 / 2));
    QCOMPARE(board->windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
    QCOMPARE(combo()->currentIndex(), -1);
}

void TestFullScreen::leavingPutsThePanelsBack()
{
    present();
    leave();
    QTRY_COMPARE(panel(u"PizarraMain"_s)->geometry(), QRect(0, 0, 1200, 700));
    QCOMPARE(panel(u"ToolPanel"_s)->pos(), QPoint(10, 188));
    QCOMPARE(panel(u"ExitPanel"_s)->pos(), QPoint(10, 655));
    QCOMPARE(panel(u"MainPanel"_s)->pos(), QPoint(10, 10));
    QCOMPARE(panel(u"AccountPanel"_s)->pos(), QPoint(920, 10));
    QCOMPARE(panel(u"DateTimePanel"_s)->pos(), QPoint(990, 655));
    QVERIFY(!panel(u"AdviseFS"_s)->isVisible());
}

void TestFullScreen::thePersonCannotResizeTheWindowAfterwards()
{
    present();
    leave();
    QCOMPARE(board->windowHandle()->minimumSize(), QSize(1200, 700));
    QCOMPARE(board->windowHandle()->maximumSize(), QSize(1200, 700));
}

void TestFullScreen::presentingAgainFillsTheScreenAgain()
{
    for (int i = 0; i < 3; ++i) {
        present();
        leave();
        QTRY_COMPARE(board->windowHandle()->size(), QSize(1200, 700));
    }
}

void TestFullScreen::enteringAndLeavingAtOnceEndsInTheWindow()
{
    // Before the window manager has answered at all.
    board->manejarPresentacion(0);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(board.get(), &escape);
    QVERIFY(QTest::qWaitForWindowActive(board.get()));
    QTRY_COMPARE(board->windowHandle()->size(), QSize(1200, 700));
    QCOMPARE(board->size(), QSize(1200, 700));
    QVERIFY(!board->isFullScreen());
    QCOMPARE(panel(u"AccountPanel"_s)->pos(), QPoint(920, 10));
}

QTEST_MAIN(TestFullScreen)
#include "tst_fullscreen.moc"
