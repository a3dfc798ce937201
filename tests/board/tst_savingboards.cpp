// Saving a board: under a name that the person gives, or to the file that the board has.

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/look/markingtranslator.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray emptyDocument = "{\n    \"items\": [\n    ]\n}\n";

void addNote(ShownBoard &board, const QString &text)
{
    auto *const note = new StickyNoteItem;
    note->setPos(500.5, 300);
    note->setText(text);
    board.scene.addItem(note);
}

} // namespace

class TestSavingBoards : public QObject
{
    Q_OBJECT

private slots:
    void theDialogOffersTheHomeFolder();
    void theNameGetsTheExtension_data();
    void theNameGetsTheExtension();
    void theCompletedNameIsOverwrittenWithoutAQuestion();
    void theNameAsTypedIsOverwrittenAfterTheDialogsQuestion();
    void cancellingTheDialogChangesNothing();
    void aSavedBoardShowsItsFileNameWithoutAMark();
    void theButtonAsksEvenWhenTheBoardHasAFile();
    void anotherNameBindsTheBoardToIt();

    void savingANewBoardAsks();
    void cancellingThatLeavesTheBoardNew();
    void savingABoardWithAFileWritesItWithoutADialog();
    void savingWritesEvenWithoutChanges();
    void savingKeepsAnyFileName();

    void anEmptyBoardIsADocumentWithoutItems();
    void theFileHoldsTheBoard();
    void theFileIsPlainUtf8WithSingleLineFeeds();
    void aShorterBoardLeavesNothingOfALongerOne();
    void noOtherFileIsLeftBehind();
    void fiveThousandStrokesOpenAndSave();
};

void TestSavingBoards::theDialogOffersTheHomeFolder()
{
    const ScratchHome home;
    ShownBoard board;
    // Nothing in the dialog that is the program's own is translated.
    const MarkingTranslator translator("BoardWindow");
    const FileDialogAnswer answer({});

    board.click("GuardarComo");

    QVERIFY(answer.seen());
    QCOMPARE(answer.dialog().caption, u"Guardar proyecto como"_s);
    QCOMPARE(QDir(answer.dialog().folder).canonicalPath(), QDir(home.path()).canonicalPath());
    QCOMPARE(answer.dialog().filters, QStringList{u"Orvane Plumara (*.vtrz)"_s});
    QCOMPARE(answer.dialog().mode, QFileDialog::AcceptSave);
    QCOMPARE(answer.dialog().options, QFileDialog::Options());
    QCOMPARE(answer.dialog().parent, &board.window);
}

void TestSavingBoards::theNameGetsTheExtension_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("file");
    QTest::newRow("none") << u"plan"_s << u"plan.vtrz"_s;
    QTest::newRow("its own") << u"plan.vtrz"_s << u"plan.vtrz"_s;
    QTest::newRow("capitals") << u"plan.VTRZ"_s << u"plan.VTRZ.vtrz"_s;
    QTest::newRow("one capital") << u"plan.Vtrz"_s << u"plan.Vtrz.vtrz"_s;
    QTest::newRow("another") << u"plan.json"_s << u"plan.json.vtrz"_s;
    QTest::newRow("in the middle") << u"plan.vtrz.bak"_s << u"plan.vtrz.bak.vtrz"_s;
    QTest::newRow("letters alone") << u"planvtrz"_s << u"planvtrz.vtrz"_s;
    QTest::newRow("Spanish letters") << u"año ñandú"_s << u"año ñandú.vtrz"_s;
}

void TestSavingBoards::theNameGetsTheExtension()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, file);
    const ScratchHome home;
    ShownBoard board;
    const FileDialogAnswer answer(typed);

    board.click("GuardarComo");

    QVERIFY(answer.seen());
    QCOMPARE(QDir(home.path()).entryList(QDir::Files), QStringList{file});
    QCOMPARE(board.name(), file);
}

void TestSavingBoards::theCompletedNameIsOverwrittenWithoutAQuestion()
{
    const ScratchHome home;
    const QString path = writeFile(home.path(u"plan.vtrz"_s), "otra cosa");
    ShownBoard board;
    const FileDialogAnswer answer(u"plan"_s);
    const BoxAnswer question({});

    board.click("GuardarComo");

    QVERIFY(answer.seen());
    QVERIFY(!question.seen());
    QCOMPARE(readFile(path), emptyDocument);
}

void TestSavingBoards::theNameAsTypedIsOverwrittenAfterTheDialogsQuestion()
{
    const ScratchHome home;
    const QString path = writeFile(home.path(u"plan.vtrz"_s), "otra cosa");
    ShownBoard board;
    const FileDialogAnswer answer(u"plan.vtrz"_s);
    const ModalAnswer<QMessageBox> question(
        [](QMessageBox &box) { box.button(QMessageBox::Yes)->click(); });

    board.click("GuardarComo");

    QVERIFY(question.seen());
    QCOMPARE(readFile(path), emptyDocument);
}

void TestSavingBoards::cancellingTheDialogChangesNothing()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(writeFile(home.path(u"plan.vtrz"_s), "{}"));
    board.window.setUnsaved(true);
    const FileDialogAnswer answer({});

    board.click("GuardarComo");

    QVERIFY(answer.seen());
    board.window.updateTitleLabel();
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
    QCOMPARE(readFile(home.path(u"plan.vtrz"_s)), QByteArray("{}"));
    QCOMPARE(QDir(home.path()).entryList(QDir::Files).size(), 1);
}

void TestSavingBoards::aSavedBoardShowsItsFileNameWithoutAMark()
{
    const ScratchHome home;
    ShownBoard board;
    addNote(board, u"Idea"_s);
    board.window.setUnsaved(true);
    const FileDialogAnswer answer(u"plan"_s);

    board.click("GuardarComo");
    board.processEvents();

    QVERIFY(answer.seen());
    QCOMPARE(board.name(), u"plan.vtrz"_s);
    // Only the label's next update shows the flag.
    board.window.updateTitleLabel();
    QCOMPARE(board.name(), u"plan.vtrz"_s);
    board.window.setUnsaved(true);
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestSavingBoards::theButtonAsksEvenWhenTheBoardHasAFile()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(writeFile(home.path(u"plan.vtrz"_s), "{}"));
    const FileDialogAnswer answer({});

    board.click("GuardarComo");

    QVERIFY(answer.seen());
}

void TestSavingBoards::anotherNameBindsTheBoardToIt()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(writeFile(home.path(u"plan.vtrz"_s), "{}"));
    const FileDialogAnswer answer(u"otro"_s);
    board.click("GuardarComo");
    QVERIFY(answer.seen());
    QCOMPARE(board.name(), u"otro.vtrz"_s);

    addNote(board, u"Idea"_s);
    board.window.saveBoard();

    QCOMPARE(BoardFile::items(home.path(u"otro.vtrz"_s)).size(), 1);
    QCOMPARE(readFile(home.path(u"plan.vtrz"_s)), QByteArray("{}"));
}

void TestSavingBoards::savingANewBoardAsks()
{
    const ScratchHome home;
    ShownBoard board;
    addNote(board, u"Idea"_s);
    const FileDialogAnswer answer(u"plan"_s);

    QVERIFY(QMetaObject::invokeMethod(&board.window, "saveBoard"));

    QVERIFY(answer.seen());
    QCOMPARE(answer.dialog().caption, u"Guardar proyecto como"_s);
    QCOMPARE(BoardFile::items(home.path(u"plan.vtrz"_s)).size(), 1);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestSavingBoards::cancellingThatLeavesTheBoardNew()
{
    const ScratchHome home;
    ShownBoard board;
    addNote(board, u"Idea"_s);
    const FileDialogAnswer first({});
    board.window.saveBoard();
    QVERIFY(first.seen());
    QCOMPARE(board.name(), u"Pizarra1.vrtz"_s);
    QCOMPARE(QDir(home.path()).entryList(QDir::Files), QStringList{});

    const FileDialogAnswer second({});
    board.window.saveBoard();
    QVERIFY(second.seen());
}

void TestSavingBoards::savingABoardWithAFileWritesItWithoutADialog()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(writeFile(home.path(u"plan.vtrz"_s), "{}"));
    addNote(board, u"Idea"_s);
    board.window.setUnsaved(true);
    const FileDialogAnswer answer({});

    board.window.saveBoard();

    QVERIFY(!answer.seen());
    QCOMPARE(BoardFile::items(home.path(u"plan.vtrz"_s)).size(), 1);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
    board.window.updateTitleLabel();
    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestSavingBoards::savingWritesEvenWithoutChanges()
{
    const ScratchHome home;
    const QString path = writeFile(home.path(u"plan.vtrz"_s), "{}");
    ShownBoard board;
    board.window.loadBoard(path);

    board.window.saveBoard();

    QCOMPARE(readFile(path), emptyDocument);
}

void TestSavingBoards::savingKeepsAnyFileName()
{
    const ScratchHome home;
    const QString path = writeFile(home.path(u"plan.txt"_s), "{}");
    ShownBoard board;
    board.window.loadBoard(path);

    board.window.saveBoard();

    QCOMPARE(QDir(home.path()).entryList(QDir::Files), QStringList{u"plan.txt"_s});
    QCOMPARE(readFile(path), emptyDocument);
    QCOMPARE(board.name(), u"plan.txt"_s);
}

void TestSavingBoards::anEmptyBoardIsADocumentWithoutItems()
{
    const ScratchHome home;
    ShownBoard board;
    const FileDialogAnswer answer(u"plan"_s);

    board.click("GuardarComo");

    QCOMPARE(readFile(home.path(u"plan.vtrz"_s)), emptyDocument);
}

void TestSavingBoards::theFileHoldsTheBoard()
{
    const ScratchHome home;
    ShownBoard board;
    addNote(board, u"Idea"_s);
    board.scene.addItem(new ArrowLineItem({100, 100}, {200, 250}));
    const FileDialogAnswer answer(u"plan"_s);

    board.click("GuardarComo");

    QCOMPARE(readFile(home.path(u"plan.vtrz"_s)), QByteArray(R"({
    "items": [
        {
            "color": "#000000",
            "type": "arrow",
            "width": 2,
            "x1": 100,
            "x2": 200,
            "y1": 100,
            "y2": 250
        },
        {
            "color": 0,
            "text": "Idea",
            "type": "postit",
            "x": 500.5,
            "y": 300
        }
    ]
}
)"));
}

void TestSavingBoards::theFileIsPlainUtf8WithSingleLineFeeds()
{
    const ScratchHome home;
    ShownBoard board;
    addNote(board, u"Café\nñandú 🟡"_s);
    const FileDialogAnswer answer(u"plan"_s);

    board.click("GuardarComo");

    const QByteArray bytes = readFile(home.path(u"plan.vtrz"_s));
    QVERIFY(bytes.contains(R"("text": "Café\nñandú 🟡")"));
    QVERIFY(!bytes.contains('\r'));
    QVERIFY(bytes.startsWith("{\n    \"items\": [\n"));
    QVERIFY(bytes.endsWith("]\n}\n"));
}

void TestSavingBoards::aShorterBoardLeavesNothingOfALongerOne()
{
    const ScratchHome home;
    const QString path = BoardFile::write(home.path(u"plan.vtrz"_s),
                                          QJsonArray{BoardFile::note(1, 1, QString(5000, u'a'))});
    ShownBoard board;
    board.window.loadBoard(path);
    board.scene.clear();

    board.window.saveBoard();

    QCOMPARE(readFile(path), emptyDocument);
}

void TestSavingBoards::noOtherFileIsLeftBehind()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(writeFile(home.path(u"plan.vtrz"_s), "{}"));

    board.window.saveBoard();

    QCOMPARE(QDir(home.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"plan.vtrz"_s});
}

void TestSavingBoards::fiveThousandStrokesOpenAndSave()
{
    constexpr int strokes = 5000;
    const ScratchHome home;
    QList<QJsonValue> written;
    for (int i = 0; i < strokes; ++i)
        written << BoardFile::stroke(i % 1900, i / 1900 * 10, i % 1900 + 15, i / 1900 * 10 + 8);
    QJsonArray items;
    for (const auto &stroke : std::as_const(written))
        items << stroke;
    const QString path = BoardFile::write(home.path(u"plan.vtrz"_s), items);
    ShownBoard board;

    board.window.loadBoard(path);
    QCOMPARE(board.count(), strokes);
    board.window.saveBoard();

    // The file lists the topmost first, and what is read first ends up lowest.
    std::ranges::reverse(written);
    QJsonArray expected;
    for (const auto &stroke : std::as_const(written))
        expected << stroke;
    QVERIFY(BoardFile::items(path) == expected);
}

PLUMARA_TEST(TestSavingBoards)
#include "tst_savingboards.moc"
