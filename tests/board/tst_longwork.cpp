// Long work shows itself, and what a person presses meanwhile reaches nobody.

#include "board/longwork.h"

#include "items/stickynoteitem.h"
#include "tests/board/boardathome.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/files.h"
#include "tests/support/home/boardshome.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"

#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <functional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

/// What a person does, or an input method.
using Input = void (*)(ShownBoard &board);

class TestLongWork : public QObject
{
    Q_OBJECT

private slots:
    void muchWorkShowsTheSignForWaiting();
    void littleWorkChangesNothing();
    void workWithinWorkIsAPartOfIt();
    void whatIsPressedMeanwhileIsDropped();
    void whatWaitsAtTheEndIsDropped();
    void theRestOfADroppedPressIsDropped();
    void whatElseComesInMeanwhileIsDropped_data();
    void whatElseComesInMeanwhileIsDropped();
    void whatWasPressedBeforeIsLetGoMeanwhile();
    void theWindowCannotBeClosedMeanwhile();
    void workBeginsWhenAWindowHasTheKeyboard();

    void openingALargeBoardShowsIt();
    void openingASmallBoardShowsNothing();
    void aLargeBoardIsPaintedBeforeTheHomeWindowGoes();
    void clicksOnTheHomeWindowMeanwhileReachNoBoard();
    void aWindowThatIsNotPaintedIsWaitedForInVain();
    void waitingEndsWithThePaint();
    void anotherWindowThatIsPaintedEndsNoWaiting();
    void aRefusedFileIsReportedUnderTheUsualPointer();

    void savingALargeBoardShowsIt();
    void savingASmallBoardShowsNothing();
    void aFailedSaveIsReportedUnderTheUsualPointer();
    void theSaveDialogHasTheUsualPointer();
    void aLargeBoardIsSavedAndClosed();
};

namespace {

constexpr qint64 much = 100'000'000;
constexpr qint64 little = 1000;

constexpr qint64 soon = 500; // ms, of the thousand that are waited for what does not come

bool showsWaiting()
{
    const auto *const cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
}

/// Does something as soon as the program looks at its events, as an event does that waits there.
void next(const std::function<void()> &action)
{
    QTimer::singleShot(0, qApp, action);
}

/// Whether the sign for waiting is shown at the first look at events in \a work.
bool showsWaitingDuring(const std::function<void()> &work)
{
    bool seen = false;
    next([&seen] { seen = showsWaiting(); });
    work();
    // Little work looks at no events; then this does.
    QCoreApplication::processEvents();
    return seen;
}

/// Does something each time when a widget is painted.
class PaintWatch : public QObject
{
public:
    PaintWatch(QWidget &widget, std::function<void()> whenPainted)
        : action(std::move(whenPainted))
    {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            action();
        return false;
    }

private:
    std::function<void()> action;
};

/// A window with a button to click and to type on.
struct ButtonWindow
{
    ButtonWindow()
    {
        button.resize(200, 100);
        button.show();
        button.setFocus();
        if (!QTest::qWaitForWindowActive(&button))
            qFatal("The button never appeared.");
    }
    void click() { QTest::mouseClick(button.windowHandle(), Qt::LeftButton, {}, {50, 50}); }
    void type() { QTest::keyClick(button.windowHandle(), Qt::Key_Space); }

    QPushButton button;
    QSignalSpy clicks{&button, &QPushButton::clicked};
};

QJsonArray manyStrokes()
{
    QJsonArray items;
    for (int i = 0; i < 3000; ++i)
        items << BoardFile::stroke(i % 1000, 10, i % 1000 + 5, 500);
    return items;
}

void addManyPoints(QGraphicsScene &scene)
{
    QPainterPath path({0, 0});
    for (int i = 1; i < 5000; ++i)
        path.lineTo(i % 1000, i % 700);
    addStroke(scene, path);
}

} // namespace

void TestLongWork::muchWorkShowsTheSignForWaiting()
{
    {
        const LongWork work(much);
        QVERIFY(showsWaiting());
    }
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestLongWork::littleWorkChangesNothing()
{
    ButtonWindow window;
    const LongWork work(little);
    QVERIFY(!QGuiApplication::overrideCursor());
    window.click();
    window.type();
    QCOMPARE(window.clicks.size(), 2);
}

void TestLongWork::workWithinWorkIsAPartOfIt()
{
    ButtonWindow window;
    {
        const LongWork work(much);
        {
            const LongWork part(much);
            QVERIFY(showsWaiting());
        }
        QVERIFY(showsWaiting());
        window.click();
    }
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(window.clicks.size(), 0);
}

void TestLongWork::whatIsPressedMeanwhileIsDropped()
{
    ButtonWindow window;
    {
        const LongWork work(much);
        window.click();
        window.type();
    }
    QCOMPARE(window.clicks.size(), 0);
    window.click();
    window.type();
    QCOMPARE(window.clicks.size(), 2);
}

void TestLongWork::whatWaitsAtTheEndIsDropped()
{
    ButtonWindow window;
    bool clicked = false;
    {
        const LongWork work(much);
        next([&] {
            clicked = true;
            window.click();
        });
    }
    QVERIFY(clicked);
    QCOMPARE(window.clicks.size(), 0);
}

void TestLongWork::theRestOfADroppedPressIsDropped()
{
    ShownBoard board;
    board.click("ModoBorrador");
    {
        const LongWork work(much);
        board.pointer.press({300, 300});
    }
    addStroke(board.scene, {{290, 290}, {500, 500}});
    board.pointer.move({400, 400});
    board.pointer.release({400, 400});
    QCOMPARE(board.count(), 1);

    // Whatever is pressed next counts again.
    board.pointer.drag({{250, 250}, {400, 400}});
    QCOMPARE(board.count(), 0);
}

void TestLongWork::whatElseComesInMeanwhileIsDropped_data()
{
    QTest::addColumn<Input>("input");
    addRow<Input>("a turn of the wheel", [](ShownBoard &board) {
        const QPoint place = board.pointer.windowPoint({900, 600});
        QWheelEvent turn(place, board.window.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, {},
                         Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(board.window.windowHandle(), &turn);
    });
    addRow<Input>("a text of another program", [](ShownBoard &board) {
        QMimeData text;
        text.setText(u"idea"_s);
        const QPoint place = board.pointer.windowPoint({450, 225});
        QDragEnterEvent enter(place, Qt::CopyAction, &text, Qt::LeftButton, {});
        QCoreApplication::sendEvent(board.window.windowHandle(), &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &text, Qt::LeftButton, {});
        QCoreApplication::sendEvent(board.window.windowHandle(), &move);
        QDropEvent drop(place, Qt::CopyAction, &text, Qt::NoButton, {});
        QCoreApplication::sendEvent(board.window.windowHandle(), &drop);
    });
    addRow<Input>("a composed letter", [](ShownBoard &) {
        QInputMethodEvent letter;
        letter.setCommitString(u"á"_s);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &letter);
    });
}

void TestLongWork::whatElseComesInMeanwhileIsDropped()
{
    QFETCH(const Input, input);
    ShownBoard board;
    auto *const note = new StickyNoteItem;
    note->setPos(400, 200);
    board.scene.addItem(note);
    board.pointer.click({450, 225}); // its text
    const auto state = [&] {
        return u"%1, %2"_s.arg(note->getText()).arg(board.view.verticalScrollBar()->value());
    };
    const QString before = state();
    {
        const LongWork work(much);
        input(board);
    }
    QCOMPARE(state(), before);

    input(board);
    QVERIFY(state() != before);
}

void TestLongWork::whatWasPressedBeforeIsLetGoMeanwhile()
{
    ShownBoard board;
    board.click("ModoLapiz");
    board.pointer.press({300, 300});
    board.pointer.move({320, 310});
    {
        const LongWork work(much);
        board.pointer.release({320, 310});
    }
    QVERIFY(!QWidget::mouseGrabber());
    board.pointer.move({400, 400});
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{300, 300}, {320, 310}}));
}

void TestLongWork::theWindowCannotBeClosedMeanwhile()
{
    ButtonWindow window;
    {
        const LongWork work(much);
        // To the system, a closing that was taken is the end of the window.
        QVERIFY(!window.button.windowHandle()->close());
    }
    QVERIFY(window.button.isVisible());
    QVERIFY(window.button.windowHandle()->close());
    QVERIFY(!window.button.isVisible());
}

void TestLongWork::workBeginsWhenAWindowHasTheKeyboard()
{
    qint64 least = soon;
    // On a busy machine the first one may take longer.
    for (int i = 0; i < 5 && least >= soon; ++i) {
        QPushButton button;
        QVERIFY(!QGuiApplication::focusWindow());
        QElapsedTimer sinceFocus;
        connect(qGuiApp, &QGuiApplication::focusWindowChanged, &button,
                [&sinceFocus] { sinceFocus.start(); });
        // After the first look at events, which is before it waits.
        QTimer::singleShot(100, &button, [&button] {
            button.show();
            button.activateWindow();
        });
        const LongWork work(much);
        QVERIFY(sinceFocus.isValid());
        least = std::min(least, sinceFocus.elapsed());
    }
    QVERIFY2(least < soon, qPrintable(QString::number(least)));
}

void TestLongWork::openingALargeBoardShowsIt()
{
    BoardAtHome at;
    const QString path = BoardFile::write(at.folder.path(at.planName), manyStrokes());
    qsizetype countWhenSeen = -1;
    next([&] { countWhenSeen = at.board.count(); });
    QVERIFY(showsWaitingDuring([&] { at.board.window.loadBoard(path); }));
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(at.board.count(), 3000);
    // Before the work begins, not at its end.
    QCOMPARE(countWhenSeen, 0);
}

void TestLongWork::openingASmallBoardShowsNothing()
{
    BoardAtHome at;
    QVERIFY(!showsWaitingDuring([&] { at.openPlan(); }));
}

void TestLongWork::aLargeBoardIsPaintedBeforeTheHomeWindowGoes()
{
    BoardsHome home;
    BoardFile::write(home.boardPath(u"grande.vtrz"_s), manyStrokes());
    home.window.showProjects();
    home.click(u"NewProject"_s);
    home.closeBoard();

    struct Watch : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint && !painted) {
                painted = true;
                waiting = showsWaiting();
                homeVisible = home->window.isVisible();
            }
            return false;
        }
        const BoardsHome *home = nullptr;
        bool painted = false;
        bool waiting = false;
        bool homeVisible = false;
    } watch;
    watch.home = &home;
    auto *const view = home.board()->findChild<QGraphicsView *>(u"PizarraMain"_s);
    view->viewport()->installEventFilter(&watch);

    home.clickRow(0);
    QVERIFY(home.boardIsOpen());
    QVERIFY(watch.painted);
    QVERIFY(watch.waiting);
    QVERIFY(watch.homeVisible);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestLongWork::clicksOnTheHomeWindowMeanwhileReachNoBoard()
{
    BoardsHome home;
    BoardFile::write(home.boardPath(u"grande.vtrz"_s), manyStrokes());
    home.window.showProjects();
    bool clicked = false;
    next([&] {
        clicked = true;
        home.click(u"NavHelpBtn"_s);
        home.clickRow(0);
    });

    home.clickRow(0);
    QVERIFY(clicked);
    QVERIFY(home.boardIsOpen());
    QVERIFY(home.child(u"MainMenu"_s)->isVisibleTo(&home.window));
    QCOMPARE(home.boardItems(), 3000);
}

void TestLongWork::aWindowThatIsNotPaintedIsWaitedForInVain()
{
    const QWidget hidden;
    const LongWork work(much);
    LongWork::waitUntilPainted(hidden);
    QVERIFY(showsWaiting());
}

void TestLongWork::waitingEndsWithThePaint()
{
    qint64 least = soon;
    // On a busy machine the first one may take longer.
    for (int i = 0; i < 5 && least >= soon; ++i) {
        ButtonWindow window;
        QElapsedTimer sincePaint;
        const PaintWatch watch(window.button, [&sincePaint] { sincePaint.start(); });
        const LongWork work(much);
        window.button.update();
        LongWork::waitUntilPainted(window.button);
        QVERIFY(sincePaint.isValid());
        least = std::min(least, sincePaint.elapsed());
    }
    QVERIFY2(least < soon, qPrintable(QString::number(least)));
}

void TestLongWork::anotherWindowThatIsPaintedEndsNoWaiting()
{
    ButtonWindow other;
    QWidget awaited;
    bool otherPainted = false;
    bool awaitedPainted = false;
    const PaintWatch otherWatch(other.button, [&] {
        otherPainted = true;
        // Not at once: the loop that waits would only then see that it was to end.
        QTimer::singleShot(50, &awaited, &QWidget::show);
    });
    const PaintWatch awaitedWatch(awaited, [&] { awaitedPainted = true; });
    const LongWork work(much);
    next([&] {
        // Nor does anything else that the awaited one hears.
        QCoreApplication::postEvent(&awaited, new QEvent(QEvent::User));
        // And no native window that is told to paint.
        QWindow native;
        QPaintEvent paint(QRect(0, 0, 1, 1));
        QCoreApplication::sendEvent(&native, &paint);
        other.button.update();
    });

    LongWork::waitUntilPainted(awaited);
    QVERIFY(otherPainted);
    QVERIFY(awaitedPainted);
}

void TestLongWork::aRefusedFileIsReportedUnderTheUsualPointer()
{
    BoardsHome home;
    writeFile(home.boardPath(u"grande.vtrz"_s), QByteArray(2'000'000, '['));
    home.window.showProjects();
    bool waiting = true;
    bool clicked = false;
    const ModalAnswer<QMessageBox> answer([&](QMessageBox &box) {
        waiting = QGuiApplication::overrideCursor();
        const auto *const button = box.button(QMessageBox::Ok);
        QTest::mouseClick(box.windowHandle(), Qt::LeftButton, {},
                          button->mapTo(&box, button->rect().center()));
        clicked = !box.isVisible();
        // Else the box stays open for ever.
        LongWork::interrupt();
        box.reject();
    });

    home.clickRow(0);
    QVERIFY(answer.seen());
    QVERIFY(!waiting);
    QVERIFY(clicked);
    QVERIFY(home.boardIsOpen());
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestLongWork::savingALargeBoardShowsIt()
{
    BoardAtHome at;
    at.openPlan();
    addManyPoints(at.board.scene);
    QVERIFY(showsWaitingDuring([&] { at.board.window.saveBoard(); }));
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(at.savedPlan().size(), 2);
}

void TestLongWork::savingASmallBoardShowsNothing()
{
    BoardAtHome at;
    at.openPlan();
    QVERIFY(!showsWaitingDuring([&] { at.board.window.saveBoard(); }));
}

void TestLongWork::aFailedSaveIsReportedUnderTheUsualPointer()
{
    BoardAtHome at;
    at.openPlan();
    addManyPoints(at.board.scene);
    const QString path = at.folder.path(at.planName);
    QVERIFY(QFile::remove(path) && QDir().mkdir(path));
    bool waiting = true;
    const ModalAnswer<QMessageBox> answer([&](QMessageBox &box) {
        waiting = QGuiApplication::overrideCursor();
        // Else the box stays open for ever.
        LongWork::interrupt();
        answerBox(box, u"OK"_s);
    });

    at.board.window.saveBoard();
    QVERIFY(answer.seen());
    QVERIFY(!waiting);
    QVERIFY(!QGuiApplication::overrideCursor());
}

void TestLongWork::theSaveDialogHasTheUsualPointer()
{
    BoardAtHome at;
    addManyPoints(at.board.scene);
    bool waiting = true;
    const ModalAnswer<QFileDialog> answer([&](QFileDialog &dialog) {
        waiting = QGuiApplication::overrideCursor();
        dialog.reject();
    });

    at.board.click("GuardarComo");
    QVERIFY(answer.seen());
    QVERIFY(!waiting);
}

void TestLongWork::aLargeBoardIsSavedAndClosed()
{
    BoardAtHome at;
    at.openPlan();
    addManyPoints(at.board.scene);
    const BoxAnswer answer(u"Sí"_s);
    at.close();
    QVERIFY(answer.seen());
    QVERIFY(at.closed());
    QCOMPARE(at.savedPlan().size(), 2);
    QVERIFY(!QGuiApplication::overrideCursor());
}

PLUMARA_TEST(TestLongWork)
#include "tst_longwork.moc"
