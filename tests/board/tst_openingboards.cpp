// Opening a board, and how a file that is no board is refused.

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString unreadable = u"No se pudo abrir el archivo."_s;
const QString noBoard = u"El archivo no tiene un formato válido."_s;

/// A board bound to "antes.vtrz", which holds one note.
void openFirst(ShownBoard &board, const ScratchHome &home)
{
    board.window.loadBoard(BoardFile::write(home.path(u"antes.vtrz"_s),
                                            QJsonArray{BoardFile::note(500, 300, u"Antes"_s)}));
}

} // namespace

class TestOpeningBoards : public QObject
{
    Q_OBJECT

private slots:
    void anOpenedBoardHoldsTheItemsOfItsFile();
    void anOpenedBoardIsNamedAfterItsFile();
    void anOpenedBoardIsSaved();
    void openingReplacesTheBoard();
    void openingKeepsTheMode();
    void unknownElementsAreLeftOut();
    void theMarkOfItsEncodingIsPassedOver();
    void blanksInFrontArePassedOver_data();
    void blanksInFrontArePassedOver();
    void aBoardWithoutItemsIsEmpty_data();
    void aBoardWithoutItemsIsEmpty();

    void aRefusedFileIsAnsweredWithAWarning_data();
    void aRefusedFileIsAnsweredWithAWarning();
    void aRefusedFileLeavesTheBoardAsItWas_data();
    void aRefusedFileLeavesTheBoardAsItWas();
    void aRefusedFileLeavesTheFlagAsItWas_data();
    void aRefusedFileLeavesTheFlagAsItWas();
    void aRefusedFileLeavesANewBoardNew();

    void movingAnOpenedImageMarksTheBoard();
    void draggingAnOpenedNoteMarksTheBoard();
    void anotherWidthOfAnOpenedStrokeMarksTheBoard();
    void aModifiedItemRecordsNothing();
};

void TestOpeningBoards::anOpenedBoardHoldsTheItemsOfItsFile()
{
    const ScratchHome home;
    ShownBoard board;

    board.window.loadBoard(BoardFile::write(
        home.path(u"plan.vtrz"_s),
        QJsonArray{BoardFile::note(500, 300, u"Idea"_s, 3), BoardFile::arrow(1, 2, 3, 4),
                   BoardFile::stroke(10, 20, 30, 40), BoardFile::image(7, 8, {})}));

    QCOMPARE(board.count(), 4);
    QCOMPARE(board.only<StickyNoteItem>()->getText(), u"Idea"_s);
    QCOMPARE(board.only<StickyNoteItem>()->noteColor(), StickyNoteItem::Pink);
    QCOMPARE(board.only<StickyNoteItem>()->pos(), QPointF(500, 300));
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(1, 2, 3, 4));
    QCOMPARE(board.only<FreeDrawItem>()->color(), QColor(0, 0, 255));
    QCOMPARE(board.only<ResizablePixmapItem>()->pos(), QPointF(7, 8));
}

void TestOpeningBoards::anOpenedBoardIsNamedAfterItsFile()
{
    const ScratchHome home;
    ShownBoard board;

    board.window.loadBoard(writeFile(home.path(u"mi año.2.vtrz"_s), "{}"));

    QCOMPARE(board.name(), u"mi año.2.vtrz"_s);
}

void TestOpeningBoards::anOpenedBoardIsSaved()
{
    const ScratchHome home;
    ShownBoard board;
    openFirst(board, home);
    board.window.setUnsaved(true);

    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::note(500, 300)}));
    board.processEvents();

    QCOMPARE(board.name(), u"plan.vtrz"_s);
    // Only the label's next update shows the flag.
    board.window.updateTitleLabel();
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestOpeningBoards::openingReplacesTheBoard()
{
    const ScratchHome home;
    ShownBoard board;
    openFirst(board, home);
    board.only<StickyNoteItem>()->setSelected(true);

    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::arrow(1, 2, 3, 4)}));

    QCOMPARE(board.count(), 1);
    QVERIFY(board.only<ArrowLineItem>());
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestOpeningBoards::openingKeepsTheMode()
{
    const ScratchHome home;
    ShownBoard board;
    board.click("ModoLapiz");

    openFirst(board, home);

    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Lápiz"_s);
    board.pointer.drag({{100, 100}, {200, 200}});
    QVERIFY(board.only<FreeDrawItem>());
}

void TestOpeningBoards::unknownElementsAreLeftOut()
{
    const ScratchHome home;
    ShownBoard board;

    board.window.loadBoard(
        writeFile(home.path(u"plan.vtrz"_s),
                  QByteArray(R"({"items": [7, {}, {"type": "circle"}, {"type": "PostIt"}, null,
                                 {"type": "postit", "x": 5}]})")));

    QCOMPARE(board.count(), 1);
    QCOMPARE(board.only<StickyNoteItem>()->pos(), QPointF(5, 0));
}

/// Some editors of texts put it in front.
void TestOpeningBoards::theMarkOfItsEncodingIsPassedOver()
{
    const ScratchHome home;
    ShownBoard board;
    const QString path = BoardFile::write(home.path(u"plan.vtrz"_s), {BoardFile::note(500, 300)});
    writeFile(path, "\xef\xbb\xbf" + readFile(path));

    board.window.loadBoard(path);

    QVERIFY(board.only<StickyNoteItem>());
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestOpeningBoards::blanksInFrontArePassedOver_data()
{
    QTest::addColumn<QByteArray>("blanks");
    QTest::newRow("a space") << QByteArray(" ");
    QTest::newRow("a tab") << QByteArray("\t");
    QTest::newRow("a line of Unix") << QByteArray("\n");
    QTest::newRow("lines of Windows") << QByteArray("\r\n\r\n");
    QTest::newRow("behind the mark of its encoding") << QByteArray("\xef\xbb\xbf \t");
}

void TestOpeningBoards::blanksInFrontArePassedOver()
{
    QFETCH(const QByteArray, blanks);
    const ScratchHome home;
    ShownBoard board;
    const QString path = BoardFile::write(home.path(u"plan.vtrz"_s), {BoardFile::note(500, 300)});
    writeFile(path, blanks + readFile(path));

    board.window.loadBoard(path);

    QVERIFY(board.only<StickyNoteItem>());
}

void TestOpeningBoards::aBoardWithoutItemsIsEmpty_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no items") << QByteArray("{}");
    QTest::newRow("other keys only") << QByteArray(R"({"version": 2})");
    QTest::newRow("a number") << QByteArray(R"({"items": 3})");
    QTest::newRow("an object") << QByteArray(R"({"items": {}})");
    QTest::newRow("an empty list") << QByteArray(R"({"items": []})");
}

void TestOpeningBoards::aBoardWithoutItemsIsEmpty()
{
    QFETCH(const QByteArray, content);
    const ScratchHome home;
    ShownBoard board;
    openFirst(board, home);
    board.window.setUnsaved(true);
    const BoxAnswer warning({});

    board.window.loadBoard(writeFile(home.path(u"plan.vtrz"_s), content));
    board.processEvents();

    QVERIFY(!warning.seen());
    QCOMPARE(board.count(), 0);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
    board.window.updateTitleLabel();
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestOpeningBoards::aRefusedFileIsAnsweredWithAWarning_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    QTest::newRow("no such file") << u"nada.vtrz"_s << QByteArray() << unreadable;
    QTest::newRow("no name") << QString() << QByteArray() << unreadable;
    QTest::newRow("a folder") << u"."_s << QByteArray() << unreadable;
    QTest::newRow("empty") << u"plan.vtrz"_s << QByteArray("") << noBoard;
    QTest::newRow("an array") << u"plan.vtrz"_s << QByteArray(R"([{"items": []}])") << noBoard;
    QTest::newRow("a text") << u"plan.vtrz"_s << QByteArray(R"("items")") << noBoard;
    QTest::newRow("null") << u"plan.vtrz"_s << QByteArray("null") << noBoard;
    QTest::newRow("cut short") << u"plan.vtrz"_s << QByteArray(R"({"items": [)") << noBoard;
    QTest::newRow("rubbish after it") << u"plan.vtrz"_s << QByteArray("{} x") << noBoard;
    QTest::newRow("a picture") << u"plan.vtrz"_s << QByteArray("\x89PNG\r\n\x1a\n") << noBoard;
}

void TestOpeningBoards::aRefusedFileIsAnsweredWithAWarning()
{
    QFETCH(const QString, file);
    QFETCH(const QByteArray, content);
    const ScratchHome home;
    if (!content.isNull())
        writeFile(home.path(file), content);
    ShownBoard board;
    const BoxAnswer warning(u"OK"_s);

    board.window.loadBoard(file.isEmpty() ? QString() : home.path(file));

    QVERIFY(warning.seen());
    QCOMPARE(warning.box().title, u"Error"_s);
    QTEST(warning.box().text, "text");
    QCOMPARE(warning.box().icon, QMessageBox::Warning);
    QCOMPARE(warning.box().buttons, QStringList{u"OK"_s});
    QCOMPARE(warning.box().parent, &board.window);
}

void TestOpeningBoards::aRefusedFileLeavesTheBoardAsItWas_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("unreadable") << u"nada.vtrz"_s;
    QTest::newRow("no board") << u"lista.vtrz"_s;
}

void TestOpeningBoards::aRefusedFileLeavesTheBoardAsItWas()
{
    QFETCH(const QString, file);
    const ScratchHome home;
    writeFile(home.path(u"lista.vtrz"_s), "[]");
    ShownBoard board;
    openFirst(board, home);
    const auto *const note = board.only<StickyNoteItem>();
    const BoxAnswer warning({});

    board.window.loadBoard(home.path(file));
    QVERIFY(warning.seen());
    QCOMPARE(board.only<StickyNoteItem>(), note);
    QCOMPARE(board.name(), u"antes.vtrz"_s);

    // The board is still bound to its file.
    board.scene.addItem(new ArrowLineItem({1, 2}, {3, 4}));
    board.window.saveBoard();
    QCOMPARE(BoardFile::items(home.path(u"antes.vtrz"_s)).size(), 2);
}

void TestOpeningBoards::aRefusedFileLeavesTheFlagAsItWas_data()
{
    aRefusedFileLeavesTheBoardAsItWas_data();
}

void TestOpeningBoards::aRefusedFileLeavesTheFlagAsItWas()
{
    QFETCH(const QString, file);
    const ScratchHome home;
    writeFile(home.path(u"lista.vtrz"_s), "[]");
    ShownBoard board;
    openFirst(board, home);
    board.window.setUnsaved(true);
    const BoxAnswer warning({});

    board.window.loadBoard(home.path(file));

    QVERIFY(warning.seen());
    board.window.updateTitleLabel();
    QCOMPARE(board.name(), u"antes.vtrz* (Sin guardar)"_s);
}

void TestOpeningBoards::aRefusedFileLeavesANewBoardNew()
{
    const ScratchHome home;
    ShownBoard board;
    const BoxAnswer warning({});
    board.window.loadBoard(home.path(u"nada.vtrz"_s));
    QVERIFY(warning.seen());
    QCOMPARE(board.name(), u"Pizarra1.vrtz"_s);

    const FileDialogAnswer dialog({});
    board.window.saveBoard();
    QVERIFY(dialog.seen());
}

void TestOpeningBoards::movingAnOpenedImageMarksTheBoard()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::image(500, 300, {})}));
    QVERIFY(!board.marked());

    // By itself, without the selection that comes with a drag.
    board.only<ResizablePixmapItem>()->moveBy(10, 0);

    QVERIFY(board.marked());
}

void TestOpeningBoards::draggingAnOpenedNoteMarksTheBoard()
{
    const ScratchHome home;
    ShownBoard board;
    openFirst(board, home);

    board.pointer.drag({{505, 305}, {555, 355}, {605, 405}});

    QVERIFY(board.only<StickyNoteItem>()->x() > 500);
    QCOMPARE(board.name(), u"antes.vtrz* (Sin guardar)"_s);
}

void TestOpeningBoards::anotherWidthOfAnOpenedStrokeMarksTheBoard()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::stroke(10, 20, 30, 40)}));

    board.only<FreeDrawItem>()->setWidth(9);

    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestOpeningBoards::aModifiedItemRecordsNothing()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.captureSnapshot();
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::image(500, 300, {})}));

    // Only the scene's own signal, which comes later, leads to a step of the history.
    board.only<ResizablePixmapItem>()->moveBy(10, 0);
    board.window.undoMode();

    QCOMPARE(board.only<ResizablePixmapItem>()->pos(), QPointF(510, 300));
}

PLUMARA_TEST(TestOpeningBoards)
#include "tst_openingboards.moc"
