// What a closed board leaves behind for the next one.

#include "items/freedrawitem.h"
#include "tests/board/boardathome.h"
#include "tests/board/presentation.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/main/registeredtest.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestClosedBoard : public QObject
{
    Q_OBJECT

private slots:
    void aClosedBoardIsNamedAnew();
    void aClosedBoardHasNoFileAndNoChanges();
    void theNextBoardStartsEmpty();
    void theHistoryIsKept();
    void theModeIsKept();
    void aPresentationIsKept();
    void theFrameClosesWithoutAQuestion();
    void aBoardWithoutAHomeWindowClosesToo();
};

void TestClosedBoard::aClosedBoardIsNamedAnew()
{
    BoardAtHome at;
    QCOMPARE(at.board.name(), u"Pizarra1.vrtz"_s);

    // Not the name that the first board of a run has.
    at.close();
    QCOMPARE(at.board.name(), u"Pizarra1.vtrz"_s);

    at.board.window.show();
    at.openPlan();
    QCOMPARE(at.board.name(), u"plan.vtrz"_s);
    const BoxAnswer question(u"Sí"_s);
    at.close();
    QCOMPARE(at.board.name(), u"Pizarra1.vtrz"_s);
}

void TestClosedBoard::aClosedBoardHasNoFileAndNoChanges()
{
    BoardAtHome at;
    at.openPlan();
    at.board.window.setUnsaved(true);
    {
        const BoxAnswer question(u"No"_s);
        at.close();
        QVERIFY(question.seen());
    }

    at.board.window.show();
    at.board.processEvents();
    const BoxAnswer again({});
    at.close();
    QVERIFY(!again.seen());
    const FileDialogAnswer dialog({});
    at.board.window.saveBoard();
    QVERIFY(dialog.seen());
    QCOMPARE(at.savedPlan().size(), 1);
}

void TestClosedBoard::theNextBoardStartsEmpty()
{
    const ScratchHome folder;
    MainWindow home;
    home.startProject();
    BoardWindow *window = nullptr;
    const auto windows = QApplication::topLevelWidgets();
    for (auto *const candidate : windows) {
        if (auto *const board = qobject_cast<BoardWindow *>(candidate))
            window = board;
    }
    QVERIFY(window && window->isVisible());
    auto *const scene = window->findChild<QGraphicsScene *>();
    scene->addItem(new StickyNoteItem);
    const BoxAnswer question(u"No"_s);
    window->closeBoard();
    QVERIFY(home.isVisible());

    home.startProject();

    QVERIFY(window->isVisible());
    QVERIFY(!home.isVisible());
    QVERIFY(scene->items().isEmpty());
    QCOMPARE(window->findChild<QLabel *>(u"NombreProyectoTxt"_s)->text(), u"Pizarra1.vtrz"_s);
}

void TestClosedBoard::theHistoryIsKept()
{
    BoardAtHome at;
    at.addNote();
    at.board.processEvents();
    const BoxAnswer question(u"No"_s);
    at.close();
    QVERIFY(at.closed());

    at.board.window.show();
    at.board.processEvents();
    at.board.click("ModoDeshacer");

    QVERIFY(at.board.only<StickyNoteItem>());
}

void TestClosedBoard::theModeIsKept()
{
    BoardAtHome at;
    at.board.click("ModoLapiz");
    at.close();
    QVERIFY(at.closed());

    at.board.window.show();
    QCOMPARE(at.board.window.windowTitle(), u"Orvane Plumara - Modo Lápiz"_s);
    at.board.pointer.drag({{500, 300}, {600, 400}});

    QVERIFY(at.board.only<FreeDrawItem>());
}

void TestClosedBoard::aPresentationIsKept()
{
    BoardAtHome at;
    enterPresentation(at.board);
    at.close();
    QVERIFY(at.closed());

    // A presentation ends with Esc alone: the next board is presented too, and can be left.
    at.board.window.show();
    QVERIFY(presents(at.board));
    pressKey(at.board, Qt::Key_Escape);

    QVERIFY(!presents(at.board));
    QCOMPARE(at.board.window.size(), QSize(1200, 700));
}

void TestClosedBoard::theFrameClosesWithoutAQuestion()
{
    BoardAtHome at;
    at.openPlan();
    at.board.window.setUnsaved(true);
    const BoxAnswer question({});

    at.board.window.windowHandle()->close();

    QVERIFY(!at.board.window.isVisible());
    QVERIFY(!question.seen());
    QVERIFY(!at.home.isVisible());
    QVERIFY(at.board.only<StickyNoteItem>());
    QCOMPARE(at.board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestClosedBoard::aBoardWithoutAHomeWindowClosesToo()
{
    ShownBoard board;

    board.click("CloseBoardBtn");

    QVERIFY(!board.window.isVisible());
}

PLUMARA_TEST(TestClosedBoard)
#include "tst_closedboard.moc"
