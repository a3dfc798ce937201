// The mark of unsaved changes after the board's name: what sets it, and what does not.

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

using Drawing = void (*)(ShownBoard &board);

class TestUnsavedMarker : public QObject
{
    Q_OBJECT

private slots:
    void aNewBoardNeverShowsTheMarker();
    void selectingMarksASavedBoardAndDeselectingKeepsTheMark();
    void clearingAnEmptySelectionMarksNothing();
    void theMarkerFollowsTheNameWithoutASpace();
    void settingTheFlagShowsIt();
    void aChangedLoadedItemMarksTheBoard_data();
    void aChangedLoadedItemMarksTheBoard();
    void aChangedItemOfTheCanvasMarksNothing_data();
    void aChangedItemOfTheCanvasMarksNothing();
    void drawingOnAnOpenedBoardMarksNothing();
    void aCancelledSaveLeavesANewBoardUnsaved();
};

void TestUnsavedMarker::aNewBoardNeverShowsTheMarker()
{
    ShownBoard board;
    board.click("ModoPostIt");
    board.pointer.click({500, 300});
    QCOMPARE(board.count(), 1);
    board.window.setUnsaved(true);

    QCOMPARE(board.name(), u"Pizarra1.vrtz"_s);
}

void TestUnsavedMarker::selectingMarksASavedBoardAndDeselectingKeepsTheMark()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::note(500, 300)}));
    QCOMPARE(board.name(), u"plan.vtrz"_s);

    board.pointer.click({505, 305});
    QCOMPARE(board.scene.selectedItems().size(), 1);
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);

    board.pointer.click({1000, 600});
    QVERIFY(board.scene.selectedItems().isEmpty());
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestUnsavedMarker::clearingAnEmptySelectionMarksNothing()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::note(500, 300)}));
    board.only<StickyNoteItem>()->setSelected(true);
    board.window.setUnsaved(false);
    const QSignalSpy changes(&board.scene, &QGraphicsScene::selectionChanged);

    board.scene.clearSelection();

    QCOMPARE(changes.size(), 1);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestUnsavedMarker::theMarkerFollowsTheNameWithoutASpace()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"mi plan.2.vtrz"_s)));

    board.window.setUnsaved(true);

    QCOMPARE(board.name(), u"mi plan.2.vtrz* (Sin guardar)"_s);
}

void TestUnsavedMarker::settingTheFlagShowsIt()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));

    board.window.setUnsaved(true);
    QVERIFY(board.marked());
    board.window.setUnsaved(false);
    QVERIFY(!board.marked());
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestUnsavedMarker::aChangedLoadedItemMarksTheBoard_data()
{
    QTest::addColumn<QByteArray>("className");
    for (const char *name :
         {"FreeDrawItem", "StickyNoteItem", "ArrowLineItem", "ResizablePixmapItem"}) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void TestUnsavedMarker::aChangedLoadedItemMarksTheBoard()
{
    QFETCH(const QByteArray, className);
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(
        home.path(u"plan.vtrz"_s),
        QJsonArray{BoardFile::note(500, 300), BoardFile::stroke(900, 300, 1000, 400),
                   BoardFile::arrow(900, 500, 1000, 600), BoardFile::image(500, 700, {})}));
    const auto items = board.all<QObject>();
    const auto item = std::ranges::find_if(items, [&](const QObject *object) {
        return object->metaObject()->className() == className;
    });
    QVERIFY(item != items.cend());
    QVERIFY(!board.marked());

    QVERIFY(QMetaObject::invokeMethod(*item, "itemModified"));

    QVERIFY(board.marked());
}

void TestUnsavedMarker::aChangedItemOfTheCanvasMarksNothing_data()
{
    QTest::addColumn<Drawing>("draw");
    addRow<Drawing>("a drawn stroke", [](ShownBoard &board) {
        board.click("ModoLapiz");
        board.pointer.drag({{500, 300}, {600, 400}});
    });
    addRow<Drawing>("a placed note", [](ShownBoard &board) {
        board.click("ModoPostIt");
        board.pointer.click({500, 300});
    });
    addRow<Drawing>("a drawn arrow", [](ShownBoard &board) {
        board.click("ModoLinea");
        board.pointer.drag({{500, 300}, {600, 400}});
    });
    addRow<Drawing>("an inserted image", [](ShownBoard &board) {
        const FileDialogAnswer picture(u":/img/plumdoc.png"_s);
        board.click("ModoImagen");
    });
}

void TestUnsavedMarker::aChangedItemOfTheCanvasMarksNothing()
{
    QFETCH(const Drawing, draw);
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    draw(board);
    board.processEvents();
    QCOMPARE(board.count(), 1);
    // Whatever marked the board until now.
    board.window.setUnsaved(false);

    // Only the items of an opened file report their changes to the board.
    auto *const item = dynamic_cast<QObject *>(board.scene.items(Qt::AscendingOrder).constFirst());
    QVERIFY(QMetaObject::invokeMethod(item, "itemModified"));
    board.processEvents();

    board.window.updateTitleLabel();
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestUnsavedMarker::drawingOnAnOpenedBoardMarksNothing()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));

    board.click("ModoLapiz");
    board.pointer.drag({{500, 300}, {550, 350}, {600, 300}});
    board.click("ModoLinea");
    board.pointer.drag({{500, 500}, {600, 550}});
    board.click("ModoPostIt");
    board.pointer.click({900, 200});
    board.processEvents();

    QCOMPARE(board.count(), 3);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestUnsavedMarker::aCancelledSaveLeavesANewBoardUnsaved()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.setUnsaved(true);
    const FileDialogAnswer dialog({});

    board.window.saveBoard();

    QVERIFY(dialog.seen());
    // A board without a file does not show the flag; an empty one asks when it is closed.
    const BoxAnswer question(u"Cancelar"_s);
    board.window.closeBoard();
    QVERIFY(question.seen());
}

PLUMARA_TEST(TestUnsavedMarker)
#include "tst_unsavedmarker.moc"
