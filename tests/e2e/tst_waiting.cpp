// What a person really sees and can do while the program reads or writes a large board.

#include "board/boardwindow.h"
#include "board/longwork.h"
#include "tests/e2e/hand.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/home/boardshome.h"

#include <QFileDialog>
#include <QGraphicsItem>
#include <QLibrary>
#include <QProcess>
#include <QScopeGuard>
#include <QScreen>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

class TestWaiting : public QObject
{
    Q_OBJECT

private slots:
    void theSignIsOnTheScreenBeforeTheWorkBegins();
    void clicksAndKeysMeanwhileReachNobody();
    void whatADialogCoveredIsPaintedBeforeTheWorkBegins();
    void aLargeBoardComesUpComplete();
};

namespace {

constexpr qint64 much = 100'000'000;

/// The function \a name of \a library, which the tests do without at build time.
template <typename Function> Function *function(QLibrary &library, const char *name)
{
    auto *const found = reinterpret_cast<Function *>(library.resolve(name));
    if (!found)
        qFatal("%s", qPrintable(library.errorString()));
    return found;
}

/// A number that the X server gives the picture which the pointer has now on the screen.
unsigned long shownPointer()
{
    // As in X11/extensions/Xfixes.h.
    struct CursorImage
    {
        short x, y;
        unsigned short width, height, xhot, yhot;
        unsigned long serial;
        unsigned long *pixels;
    };
    static QLibrary x11(u"X11"_s, 6);
    static QLibrary fixes(u"Xfixes"_s, 3);
    static void *const display = function<void *(const char *)>(x11, "XOpenDisplay")(nullptr);
    auto *const image = function<CursorImage *(void *)>(fixes, "XFixesGetCursorImage")(display);
    if (!image)
        qFatal("The pointer cannot be looked at.");
    const unsigned long serial = image->serial;
    function<int(void *)>(x11, "XFree")(image);
    return serial;
}

QString windowManager()
{
    return qEnvironmentVariable("PLUMARA_DISPLAY_PROCESSES").section(u' ', 1, 1);
}

// The part of the canvas that no panel covers.
constexpr QRect canvas{100, 100, 800, 500};

/// What the window system holds of the canvas in \a board.
QImage shownCanvas(const BoardWindow &board)
{
    return board.screen()
        ->grabWindow(board.winId(), canvas.x(), canvas.y(), canvas.width(), canvas.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/// The same, painted anew as a whole.
QImage paintedCanvas(BoardWindow &board)
{
    return board.grab(canvas).toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

void TestWaiting::theSignIsOnTheScreenBeforeTheWorkBegins()
{
    BoardWindow board(nullptr);
    board.show();
    QVERIFY(QTest::qWaitForWindowActive(&board));
    act(movedTo(board, {600, 350}));
    QTRY_VERIFY(board.findChild<QGraphicsView *>(u"PizarraMain"_s)->underMouse());
    const unsigned long usual = shownPointer();
    {
        const LongWork work(much);
        QVERIFY(shownPointer() != usual);
    }
    QTRY_COMPARE(shownPointer(), usual);
}

void TestWaiting::clicksAndKeysMeanwhileReachNobody()
{
    BoardWindow board(nullptr);
    board.show();
    QVERIFY(QTest::qWaitForWindowActive(&board));
    board.setPostItMode();
    const auto *const scene = board.findChild<QGraphicsScene *>();
    const QString mode = board.windowTitle();
    {
        const LongWork work(much);
        act(movedTo(board, {600, 350}) + QStringList{u"click"_s, u"1"_s, u"key"_s, u"space"_s});
    }
    act(movedTo(board, {500, 250}) + QStringList{u"click"_s, u"1"_s});
    // The click after the work leaves a note; had the one before it left one, it would be there.
    QTRY_VERIFY(!scene->items().isEmpty());
    QCOMPARE(scene->items(Qt::AscendingOrder).constFirst()->pos(),
             board.findChild<QGraphicsView *>(u"PizarraMain"_s)->mapToScene(500, 250));
    QCOMPARE(board.windowTitle(), mode);
}

void TestWaiting::whatADialogCoveredIsPaintedBeforeTheWorkBegins()
{
    const auto goOn = [] { QProcess::execute(u"kill"_s, {u"-CONT"_s, windowManager()}); };
    BoardWindow board(nullptr);
    board.show();
    QVERIFY(QTest::qWaitForWindowActive(&board));
    QTRY_COMPARE(shownCanvas(board), paintedCanvas(board));
    {
        QFileDialog dialog(&board);
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.show();
        // Before it has the keyboard the toolkit calls it active already, as the board is.
        QTRY_COMPARE(QGuiApplication::focusWindow(), dialog.windowHandle());
        QTRY_VERIFY(shownCanvas(board) != paintedCanvas(board));
        // The window manager is busy and takes its frame off the dialog late.
        QCOMPARE(QProcess::execute(u"kill"_s, {u"-STOP"_s, windowManager()}), 0);
        QTimer::singleShot(30, qApp, goOn);
    }
    const auto inAnyCase = qScopeGuard(goOn);
    const LongWork work(much);
    QCOMPARE(shownCanvas(board), paintedCanvas(board));
}

void TestWaiting::aLargeBoardComesUpComplete()
{
    BoardsHome home;
    QJsonArray strokes;
    for (int i = 0; i < 3000; ++i)
        strokes << BoardFile::stroke(i % 1000, i % 600, 1000 - i % 1000, i % 700);
    BoardFile::write(home.boardPath(u"grande.vtrz"_s), strokes);
    home.window.showProjects();

    home.clickRow(0);
    QVERIFY(home.boardIsOpen());
    QCOMPARE(shownCanvas(*home.board()), paintedCanvas(*home.board()));
}

QTEST_MAIN(TestWaiting)
#include "tst_waiting.moc"
