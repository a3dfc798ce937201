// The undo history of a board: what is recorded and how far back and forth it goes.

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// An empty board whose history begins with the empty board.
class FreshBoard : public ShownBoard
{
public:
    FreshBoard() { window.captureSnapshot(); }

    StickyNoteItem *addNote(QPointF pos)
    {
        auto *const note = new StickyNoteItem;
        note->setPos(pos);
        scene.addItem(note);
        processEvents();
        return note;
    }
    void addArrow(const QLineF &line)
    {
        scene.addItem(new ArrowLineItem(line.p1(), line.p2()));
        processEvents();
    }
    void undo()
    {
        click("ModoDeshacer");
        processEvents();
    }
    void redo()
    {
        click("ModoRehacer");
        processEvents();
    }

    /// Where the notes lie, topmost first.
    QList<QPointF> notePlaces() const
    {
        QList<QPointF> places;
        const auto notes = all<StickyNoteItem>();
        for (const auto *note : notes)
            places << note->pos();
        return places;
    }
};

/// Adds a note at (0, 100) and moves it \a steps - 1 times, by 100 units to the right each time.
void walkNote(FreshBoard &board, int steps)
{
    auto *const note = board.addNote({0, 100});
    for (int step = 1; step < steps; ++step) {
        note->setPos(step * 100, 100);
        board.processEvents();
    }
}

using Change = void (*)(FreshBoard &board);

} // namespace

class TestUndoRedo : public QObject
{
    Q_OBJECT

private slots:
    void theBaselineCannotBeUndone();
    void withNothingUndoneRedoDoesNothing();
    void stepsGoBackAndForth();
    void nineStepsGoBackAndForthAgain();
    void anEleventhStateDropsTheOldest();

    void aDistinctChangeEndsTheRedoHistory();
    void anEqualStateKeepsTheRedoHistory_data();
    void anEqualStateKeepsTheRedoHistory();
    void aStrokesWidthIsNotRecorded();
    void aMoveBeyondTheToleranceIsRecorded();
    void itemsOfEqualHeightComeBackInReverseOrder();
    void reversedItemsThatDifferEndTheRedoHistory();
    void reversedItemsThatAreAlikeKeepTheRedoHistory();
    void aDragRecordsItsIntermediatePlaces();

    void undoAndRedoMarkABoardThatEqualsItsFile();
    void recordingMarksNothing();
    void changesOfRestoredItemsMarkNothing();
    void theHistorySurvivesOpeningABoard();
};

void TestUndoRedo::theBaselineCannotBeUndone()
{
    const ScratchHome home;
    BoardWindow window(nullptr);
    window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s),
                                      QJsonArray{BoardFile::arrow(100, 100, 200, 200)}));
    window.captureSnapshot();

    window.undoMode();

    QCOMPARE(window.findChild<QGraphicsScene *>()->items().size(), 1);
    QCOMPARE(window.findChild<QLabel *>(u"NombreProyectoTxt"_s)->text(), u"plan.vtrz"_s);
}

void TestUndoRedo::withNothingUndoneRedoDoesNothing()
{
    const ScratchHome home;
    FreshBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s),
                                            QJsonArray{BoardFile::arrow(100, 100, 200, 200)}));
    board.processEvents();
    const auto *const arrow = board.only<ArrowLineItem>();

    board.redo();

    QCOMPARE(board.only<ArrowLineItem>(), arrow);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestUndoRedo::stepsGoBackAndForth()
{
    FreshBoard board;
    board.addNote({500, 300});
    board.addArrow({100, 100, 200, 200});

    board.undo();
    QVERIFY(board.all<ArrowLineItem>().isEmpty());
    QCOMPARE(board.notePlaces(), QList<QPointF>({{500, 300}}));
    board.undo();
    QCOMPARE(board.count(), 0);
    board.redo();
    QVERIFY(board.all<ArrowLineItem>().isEmpty());
    QCOMPARE(board.notePlaces(), QList<QPointF>({{500, 300}}));
    board.redo();
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(100, 100, 200, 200));
    QCOMPARE(board.notePlaces(), QList<QPointF>({{500, 300}}));
}

void TestUndoRedo::nineStepsGoBackAndForthAgain()
{
    FreshBoard board;
    walkNote(board, 9);

    for (int step = 7; step >= 0; --step) {
        board.undo();
        QCOMPARE(board.notePlaces(), QList<QPointF>({{step * 100.0, 100}}));
    }
    board.undo();
    QCOMPARE(board.count(), 0);
    for (int step = 0; step < 9; ++step) {
        board.redo();
        QCOMPARE(board.notePlaces(), QList<QPointF>({{step * 100.0, 100}}));
    }
    // The way forth has cost no step.
    for (int step = 0; step < 9; ++step)
        board.undo();
    QCOMPARE(board.count(), 0);
}

void TestUndoRedo::anEleventhStateDropsTheOldest()
{
    FreshBoard board;
    walkNote(board, 10);
    QCOMPARE(board.notePlaces(), QList<QPointF>({{900, 100}}));

    for (int step = 0; step < 9; ++step)
        board.undo();
    QCOMPARE(board.notePlaces(), QList<QPointF>({{0, 100}}));
    board.undo();
    QCOMPARE(board.notePlaces(), QList<QPointF>({{0, 100}}));
}

void TestUndoRedo::aDistinctChangeEndsTheRedoHistory()
{
    FreshBoard board;
    board.addNote({500, 300});
    board.addArrow({100, 100, 200, 200});
    board.undo();

    board.only<StickyNoteItem>()->setPos(600, 300);
    board.processEvents();
    board.redo();

    QVERIFY(board.all<ArrowLineItem>().isEmpty());
    QCOMPARE(board.notePlaces(), QList<QPointF>({{600, 300}}));
}

void TestUndoRedo::anEqualStateKeepsTheRedoHistory_data()
{
    QTest::addColumn<Change>("change");
    addRow<Change>("a repaint", [](FreshBoard &board) { board.scene.update(); });
    addRow<Change>("a selection",
                   [](FreshBoard &board) { board.only<StickyNoteItem>()->setSelected(true); });
    addRow<Change>("another text",
                   [](FreshBoard &board) { board.only<StickyNoteItem>()->setText(u"Hola"_s); });
    addRow<Change>("a text being edited", [](FreshBoard &board) {
        board.window.activateWindow();
        board.pointer.click({600, 320});
        board.type("Hola");
        QVERIFY(board.only<StickyNoteItem>()->getText().contains(u"Hola"));
    });
    addRow<Change>("a move within the tolerance", [](FreshBoard &board) {
        board.only<StickyNoteItem>()->moveBy(2e-10, 0);
        board.scene.update();
    });
}

void TestUndoRedo::anEqualStateKeepsTheRedoHistory()
{
    QFETCH(const Change, change);
    FreshBoard board;
    board.addNote({500, 300});
    board.addArrow({100, 100, 200, 200});
    board.undo();
    const QSignalSpy changes(&board.scene, &QGraphicsScene::changed);

    change(board);
    board.processEvents();
    QVERIFY(!changes.isEmpty());

    board.redo();
    QVERIFY(board.only<ArrowLineItem>());
}

void TestUndoRedo::aStrokesWidthIsNotRecorded()
{
    FreshBoard board;
    board.click("ModoLapiz");
    board.quickDrag({500, 300}, {600, 400});
    board.processEvents();

    board.only<FreeDrawItem>()->setWidth(9);
    board.processEvents();
    board.undo();

    QCOMPARE(board.count(), 0);
}

void TestUndoRedo::aMoveBeyondTheToleranceIsRecorded()
{
    FreshBoard board;
    auto *const note = board.addNote({500, 300});

    note->setPos(500 + 1e-9, 300);
    board.processEvents();
    board.undo();

    QVERIFY(board.only<StickyNoteItem>());
    QVERIFY(board.only<StickyNoteItem>()->x() < 500 + 5e-10);
}

void TestUndoRedo::itemsOfEqualHeightComeBackInReverseOrder()
{
    FreshBoard board;
    board.addNote({100, 100});
    board.addNote({500, 100});
    board.addArrow({100, 500, 200, 600});
    QCOMPARE(board.notePlaces(), QList<QPointF>({{500, 100}, {100, 100}}));

    board.undo();

    QVERIFY(board.all<ArrowLineItem>().isEmpty());
    QCOMPARE(board.notePlaces(), QList<QPointF>({{100, 100}, {500, 100}}));
}

void TestUndoRedo::reversedItemsThatDifferEndTheRedoHistory()
{
    FreshBoard board;
    board.addNote({100, 100});
    board.addNote({500, 100});
    board.addArrow({100, 500, 200, 600});

    board.undo();
    board.redo();

    QVERIFY(board.all<ArrowLineItem>().isEmpty());
    QCOMPARE(board.notePlaces(), QList<QPointF>({{100, 100}, {500, 100}}));
}

void TestUndoRedo::reversedItemsThatAreAlikeKeepTheRedoHistory()
{
    FreshBoard board;
    board.addNote({500, 100});
    board.addNote({500, 100});
    board.addArrow({100, 500, 200, 600});

    board.undo();
    board.redo();

    QVERIFY(board.only<ArrowLineItem>());
}

void TestUndoRedo::aDragRecordsItsIntermediatePlaces()
{
    FreshBoard board;
    board.addNote({100, 100});
    board.pointer.drag({{105, 105}, {205, 205}, {305, 305}});
    const QPointF end = board.only<StickyNoteItem>()->pos();

    board.undo();

    const QPointF between = board.only<StickyNoteItem>()->pos();
    QVERIFY(between.x() > 100);
    QVERIFY(between.x() < end.x());
}

void TestUndoRedo::undoAndRedoMarkABoardThatEqualsItsFile()
{
    const ScratchHome home;
    FreshBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    board.addArrow({100, 100, 200, 200});
    QVERIFY(!board.marked());

    // The board is as empty as its file again.
    board.undo();
    QCOMPARE(board.count(), 0);
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);

    board.redo();
    board.window.saveBoard();
    board.undo();
    board.window.setUnsaved(false);
    // The board has the arrow of its file again.
    board.redo();
    QVERIFY(board.only<ArrowLineItem>());
    QCOMPARE(BoardFile::items(home.path(u"plan.vtrz"_s)).size(), 1);
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestUndoRedo::recordingMarksNothing()
{
    const ScratchHome home;
    FreshBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    board.processEvents();

    board.addArrow({100, 100, 200, 200});
    board.window.captureSnapshot();

    QCOMPARE(board.name(), u"plan.vtrz"_s);
    board.undo();
    QCOMPARE(board.count(), 0);
}

void TestUndoRedo::changesOfRestoredItemsMarkNothing()
{
    const ScratchHome home;
    FreshBoard board;
    QPixmap pixmap(40, 40);
    pixmap.fill(Qt::green);
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    board.scene.addItem(new ResizablePixmapItem(pixmap));
    board.processEvents();
    board.addArrow({100, 100, 200, 200});
    board.undo();
    board.window.setUnsaved(false);
    auto *const image = board.only<ResizablePixmapItem>();
    const QSignalSpy modified(image, &ResizablePixmapItem::itemModified);

    image->setPos(500, 300);
    board.processEvents();

    QCOMPARE(modified.size(), 1);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestUndoRedo::theHistorySurvivesOpeningABoard()
{
    const ScratchHome home;
    FreshBoard board;
    board.addNote({500, 300});
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    board.processEvents();
    QCOMPARE(board.count(), 0);

    board.undo();

    QCOMPARE(board.notePlaces(), QList<QPointF>({{500, 300}}));
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

PLUMARA_TEST(TestUndoRedo)
#include "tst_undoredo.moc"
