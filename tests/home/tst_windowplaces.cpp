// Where the windows of the program come up: each where the other one was.

#include "look/windowplace.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/home/boardshome.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"

#include <QComboBox>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

using Opening = void (*)(BoardsHome &home);

class TestWindowPlaces : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { home.reset(); }

    void theBoardComesUpWhereTheHomeWindowWas_data();
    void theBoardComesUpWhereTheHomeWindowWas();
    void theNextBoardComesUpThereToo();
    void theHomeWindowComesBackWhereTheBoardWas();
    void theHomeWindowComesBackWhereItWasAfterAPresentation();
    void aKeptPresentationStaysOnTheFullScreen();
    void aMinimisedWindowGivesNoPlace();
    void aWindowThatWasClosedMinimisedIsSeenAgain();
    void aWindowIsBroughtIntoTheScreenWhereItFits();
    void aWindowThatIsTooLargeForTheScreenStaysInPlace();
    void aWindowIsBroughtInNoFurtherThanToTheEdge();
    void aWindowAsHighAsTheScreenFitsIntoIt();

private:
    std::unique_ptr<BoardsHome> home;
};

namespace {

/// A place in which the window's height fits into the screen, and its frame too.
constexpr QPoint place(123, 41);
constexpr QPoint otherPlace(77, 23);

} // namespace

void TestWindowPlaces::init()
{
    home = std::make_unique<BoardsHome>();
    home->writeBoards(1);
    home->window.move(place);
    QCOMPARE(home->window.pos(), place);
}

void TestWindowPlaces::theBoardComesUpWhereTheHomeWindowWas_data()
{
    QTest::addColumn<Opening>("open");
    addRow<Opening>("a new one", [](BoardsHome &at) { at.click(u"NewProject"_s); });
    addRow<Opening>("from the list", [](BoardsHome &at) { at.clickRow(0); });
    addRow<Opening>("from the dialog", [](BoardsHome &at) {
        const FileDialogAnswer dialog(at.boardPath(u"b1.vtrz"_s));
        at.click(u"ImportProject"_s);
    });
}

void TestWindowPlaces::theBoardComesUpWhereTheHomeWindowWas()
{
    QFETCH(const Opening, open);
    open(*home);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->board()->pos(), place);
}

void TestWindowPlaces::theNextBoardComesUpThereToo()
{
    home->clickRow(0);
    home->closeBoard();
    home->window.move(otherPlace);
    home->clickRow(0);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->board()->pos(), otherPlace);
}

void TestWindowPlaces::theHomeWindowComesBackWhereTheBoardWas()
{
    home->clickRow(0);
    home->board()->move(otherPlace);
    home->closeBoard();
    QCOMPARE(home->window.pos(), otherPlace);
}

void TestWindowPlaces::theHomeWindowComesBackWhereItWasAfterAPresentation()
{
    home->clickRow(0);
    auto *const combo = home->board()->findChild<QComboBox *>(u"Presentar"_s);
    combo->setCurrentIndex(0);
    QTRY_VERIFY(home->board()->isFullScreen());
    home->board()->closeBoard();
    QVERIFY(home->window.isVisible());
    QCOMPARE(home->window.pos(), place);
}

void TestWindowPlaces::aKeptPresentationStaysOnTheFullScreen()
{
    home->clickRow(0);
    auto *const board = home->board();
    board->findChild<QComboBox *>(u"Presentar"_s)->setCurrentIndex(0);
    const QRect screen = board->screen()->geometry();
    QTRY_COMPARE(board->geometry(), screen);
    board->closeBoard();
    home->window.move(otherPlace);
    home->clickRow(0);
    QVERIFY(board->isFullScreen());
    QCOMPARE(board->geometry(), screen);
}

void TestWindowPlaces::aMinimisedWindowGivesNoPlace()
{
    home->clickRow(0);
    home->closeBoard();
    home->window.showMinimized();
    home->window.move(otherPlace); // as some systems report of a window in the task bar
    home->window.startProject();
    QCOMPARE(home->board()->pos(), place);
}

void TestWindowPlaces::aWindowThatWasClosedMinimisedIsSeenAgain()
{
    home->clickRow(0);
    home->board()->showMinimized();
    home->board()->closeBoard();
    QVERIFY(home->window.isVisible());
    home->window.showMinimized();
    home->window.startProject();
    QVERIFY(home->board()->isVisible());
    QVERIFY(!home->board()->isMinimized());
    home->board()->closeBoard();
    QVERIFY(home->window.isVisible());
    QVERIFY(!home->window.isMinimized());
}

void TestWindowPlaces::aWindowIsBroughtIntoTheScreenWhereItFits()
{
    const QRect screen = home->window.screen()->availableGeometry();
    const int height = home->window.frameGeometry().height();
    QVERIFY(height <= screen.height());

    home->window.move(place.x(), screen.bottom() - 100);
    home->clickRow(0);
    // On some systems the frames of the two are not quite alike.
    constexpr int difference = 8; // pixels
    const QRect frame = home->board()->frameGeometry();
    QCOMPARE(frame.left(), place.x());
    QVERIFY(frame.bottom() <= screen.bottom());
    QVERIFY(frame.bottom() > screen.bottom() - difference);
    home->board()->move(place.x(), screen.top() - 100);
    home->closeBoard();
    QCOMPARE(home->window.pos(), QPoint(place.x(), screen.top()));
}

void TestWindowPlaces::aWindowThatIsTooLargeForTheScreenStaysInPlace()
{
    const QRect screen = home->window.screen()->availableGeometry();
    if (home->window.frameGeometry().width() <= screen.width())
        QSKIP("The screen is large enough.");
    home->window.move(250, place.y());
    home->window.startProject();
    QCOMPARE(home->board()->pos(), QPoint(250, place.y()));
}

void TestWindowPlaces::aWindowIsBroughtInNoFurtherThanToTheEdge()
{
    const QRect screen = home->window.screen()->availableGeometry();
    const QMargins frame = home->window.windowHandle()->frameMargins();
    home->window.move(place.x(), screen.bottom() - 100);
    QWidget next;
    next.resize(300, 200);
    takePlaceOf(next, home->window);
    QCOMPARE(next.pos().y() + 200 + frame.top() + frame.bottom() - 1, screen.bottom());
}

void TestWindowPlaces::aWindowAsHighAsTheScreenFitsIntoIt()
{
    const QRect screen = home->window.screen()->availableGeometry();
    const QMargins frame = home->window.windowHandle()->frameMargins();
    QWidget next;
    next.resize(300, screen.height() - frame.top() - frame.bottom());
    takePlaceOf(next, home->window);
    QCOMPARE(next.pos(), QPoint(place.x(), screen.top()));
}

PLUMARA_TEST(TestWindowPlaces)
#include "tst_windowplaces.moc"
