// Saving and opening when the disk or the permissions are against it.

#include "items/freedrawitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/look/markingtranslator.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/limits.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString cannotOpen = u"No se pudo guardar el archivo."_s;
const QString cannotWrite = u"Error al escribir en el archivo."_s;

/// Opens a board with one note from the file \a path.
void open(ShownBoard &board, const QString &path)
{
    board.window.loadBoard(BoardFile::write(path, QJsonArray{BoardFile::note(500, 300)}));
}

/// Saves and returns the text of the warning that must come.
QString warningOfSave(ShownBoard &board)
{
    const BoxAnswer warning(u"OK"_s);
    board.window.saveBoard();
    return warning.box().text;
}

/// What the board's label reads when it is written anew: it shows the flag and the file that the
/// board has now, and not those of the time when it was last written.
QString nameAnew(ShownBoard &board)
{
    board.window.updateTitleLabel();
    return board.name();
}

/// Puts a folder in the place of the file \a path, if there is one.
void putFolderInPlace(const QString &path)
{
    QFile::remove(path);
    if (!QDir().mkdir(path))
        qFatal("The test cannot make its folder");
}

/// The items of a large board.
QJsonArray manyStrokes()
{
    QJsonArray items;
    for (int i = 0; i < 1000; ++i)
        items << BoardFile::stroke(i, 10, i + 5, 20);
    return items;
}

} // namespace

class TestSaveFailures : public QObject
{
    Q_OBJECT

private slots:
    void theWarningIsOneOfTheProgram_data();
    void theWarningIsOneOfTheProgram();
    void aVanishedFolderIsReported();
    void aFolderInTheFilesPlaceIsReported();
    void aFileThatMayNotBeWrittenIsReportedAndUntouched();
    void aNewNameThatCannotBeWrittenIsNotAdopted_data();
    void aNewNameThatCannotBeWrittenIsNotAdopted();
    void aFileThatMayNotBeReadIsReported();

    void aFullDiskIsReported();
    void aFullDiskLeavesTheBoardUnsavedAndBound();
    void aFullDiskDoesNotAdoptTheNewName();
    void aFullDiskLeavesTheBoardToItsEarlierFile();
    void aNewBoardThatFailsToBeSavedStaysUnsaved_data();
    void aNewBoardThatFailsToBeSavedStaysUnsaved();
    void aFailedWriteLeavesAnEmptyFile();
    void aWriteThatStopsHalfwayCountsAsSaved_data();
    void aWriteThatStopsHalfwayCountsAsSaved();
    void aBoardThatCannotBeSavedIsNotReplaced_data();
    void aBoardThatCannotBeSavedIsNotReplaced();
};

void TestSaveFailures::theWarningIsOneOfTheProgram_data()
{
    QTest::addColumn<bool>("opens");
    QTest::addColumn<QString>("text");
    QTest::newRow("cannot open") << false << cannotOpen;
    QTest::newRow("cannot write") << true << cannotWrite;
}

void TestSaveFailures::theWarningIsOneOfTheProgram()
{
    QFETCH(const bool, opens);
    const ScratchHome home;
    ShownBoard board;
    open(board, home.path(u"plan.vtrz"_s));
    if (!opens)
        putFolderInPlace(home.path(u"plan.vtrz"_s));
    board.window.setUnsaved(true);
    // Nothing in the box that is the program's own is translated.
    const MarkingTranslator translator("BoardWindow");
    const BoxAnswer warning(u"OK"_s);
    const FileSizeLimit full(0);

    board.window.saveBoard();

    QVERIFY(warning.seen());
    QCOMPARE(warning.box().title, u"Error"_s);
    QTEST(warning.box().text, "text");
    QCOMPARE(warning.box().icon, QMessageBox::Warning);
    QCOMPARE(warning.box().buttons, QStringList{u"OK"_s});
    QCOMPARE(warning.box().parent, &board.window);
    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
}

void TestSaveFailures::aVanishedFolderIsReported()
{
    const ScratchHome home;
    QVERIFY(QDir(home.path()).mkdir(u"lejos"_s));
    ShownBoard board;
    open(board, home.path(u"lejos/plan.vtrz"_s));
    board.window.setUnsaved(true);
    QVERIFY(QDir(home.path(u"lejos"_s)).removeRecursively());

    QCOMPARE(warningOfSave(board), cannotOpen);

    QVERIFY(!QFile::exists(home.path(u"lejos"_s)));
    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
    QCOMPARE(board.count(), 1);
    // Still bound: with the folder back, the board is saved there.
    QVERIFY(QDir(home.path()).mkdir(u"lejos"_s));
    board.window.saveBoard();
    QCOMPARE(BoardFile::items(home.path(u"lejos/plan.vtrz"_s)).size(), 1);
    QCOMPARE(nameAnew(board), u"plan.vtrz"_s);
}

void TestSaveFailures::aFolderInTheFilesPlaceIsReported()
{
    const ScratchHome home;
    ShownBoard board;
    open(board, home.path(u"plan.vtrz"_s));
    putFolderInPlace(home.path(u"plan.vtrz"_s));
    board.window.setUnsaved(true);

    QCOMPARE(warningOfSave(board), cannotOpen);

    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
    QVERIFY(QFileInfo(home.path(u"plan.vtrz"_s)).isDir());
}

void TestSaveFailures::aFileThatMayNotBeWrittenIsReportedAndUntouched()
{
    const ReachableFolder folder;
    const QString path = folder.path(u"plan.vtrz"_s);
    ShownBoard board;
    open(board, path);
    const QByteArray before = readFile(path);
    board.scene.addItem(new StickyNoteItem);
    board.window.setUnsaved(true);

    const UnwritableFile unwritable(path);
    QCOMPARE(warningOfSave(board), cannotOpen);

    QCOMPARE(readFile(path), before);
    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
}

void TestSaveFailures::aNewNameThatCannotBeWrittenIsNotAdopted_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("in no folder") << u"no/existe/otro"_s;
    QTest::newRow("a folder's") << u"carpeta"_s;
}

void TestSaveFailures::aNewNameThatCannotBeWrittenIsNotAdopted()
{
    QFETCH(const QString, typed);
    const ScratchHome home;
    QVERIFY(QDir(home.path()).mkdir(u"carpeta.vtrz"_s));
    ShownBoard board;
    open(board, home.path(u"plan.vtrz"_s));
    board.window.setUnsaved(true);
    const FileDialogAnswer dialog(home.path(typed));
    const BoxAnswer warning(u"OK"_s);

    board.click("GuardarComo");

    QVERIFY(dialog.seen());
    QCOMPARE(warning.box().text, cannotOpen);
    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
}

void TestSaveFailures::aFileThatMayNotBeReadIsReported()
{
    const ReachableFolder folder;
    const QString path = writeFile(folder.path(u"plan.vtrz"_s), "{}");
    ShownBoard board;
    board.scene.addItem(new StickyNoteItem);
    const BoxAnswer warning(u"OK"_s);

    const UnreadableFile unreadable(path);
    board.window.loadBoard(path);

    QCOMPARE(warning.box().text, u"No se pudo abrir el archivo."_s);
    QCOMPARE(board.count(), 1);
    QCOMPARE(nameAnew(board), u"Pizarra1.vrtz"_s);
}

void TestSaveFailures::aFullDiskIsReported()
{
    const ScratchHome home;
    ShownBoard board;
    const QString path = home.path(u"plan.vtrz"_s);
    // A large board as well as the small ones of the other tests.
    board.window.loadBoard(BoardFile::write(path, manyStrokes()));
    const FileSizeLimit full(0);

    QCOMPARE(warningOfSave(board), cannotWrite);
}

void TestSaveFailures::aFullDiskLeavesTheBoardUnsavedAndBound()
{
    const ScratchHome home;
    ShownBoard board;
    const QString path = home.path(u"plan.vtrz"_s);
    open(board, path);
    board.window.setUnsaved(true);

    {
        const FileSizeLimit full(0);
        QCOMPARE(warningOfSave(board), cannotWrite);
    }
    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
    QCOMPARE(board.count(), 1);

    // With room again, the board is saved to the same file.
    board.window.saveBoard();
    QCOMPARE(BoardFile::items(path).size(), 1);
    QCOMPARE(nameAnew(board), u"plan.vtrz"_s);
}

void TestSaveFailures::aFullDiskDoesNotAdoptTheNewName()
{
    const ScratchHome home;
    ShownBoard board;
    board.scene.addItem(new StickyNoteItem);
    const FileDialogAnswer dialog(u"otro"_s);
    const BoxAnswer warning(u"OK"_s);
    const FileSizeLimit full(0);

    board.click("GuardarComo");

    QVERIFY(dialog.seen());
    QCOMPARE(warning.box().text, cannotWrite);
    QCOMPARE(nameAnew(board), u"Pizarra1.vrtz"_s);
    const FileDialogAnswer again({});
    board.window.saveBoard();
    QVERIFY(again.seen());
}

void TestSaveFailures::aFullDiskLeavesTheBoardToItsEarlierFile()
{
    const ScratchHome home;
    ShownBoard board;
    open(board, home.path(u"plan.vtrz"_s));
    board.window.setUnsaved(true);
    const FileDialogAnswer dialog(u"otro"_s);
    const BoxAnswer warning(u"OK"_s);
    const FileSizeLimit full(0);

    board.click("GuardarComo");

    QVERIFY(dialog.seen());
    QCOMPARE(warning.box().text, cannotWrite);
    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
}

void TestSaveFailures::aNewBoardThatFailsToBeSavedStaysUnsaved_data()
{
    QTest::addColumn<bool>("opens");
    QTest::newRow("cannot open") << false;
    QTest::newRow("cannot write") << true;
}

void TestSaveFailures::aNewBoardThatFailsToBeSavedStaysUnsaved()
{
    QFETCH(const bool, opens);
    const ScratchHome home;
    if (!opens)
        putFolderInPlace(home.path(u"plan.vtrz"_s));
    ShownBoard board;
    board.window.setUnsaved(true);
    const FileDialogAnswer dialog(u"plan"_s);
    {
        const BoxAnswer warning(u"OK"_s);
        const FileSizeLimit full(0);
        board.click("GuardarComo");
        QVERIFY(warning.seen());
    }

    // A board without a file does not show the flag; an empty one asks when it is closed.
    const BoxAnswer question(u"Cancelar"_s);
    board.window.closeBoard();
    QVERIFY(question.seen());
}

void TestSaveFailures::aFailedWriteLeavesAnEmptyFile()
{
    const ScratchHome home;
    ShownBoard board;
    const QString path = home.path(u"plan.vtrz"_s);
    open(board, path);
    board.window.setUnsaved(true);

    {
        const FileSizeLimit full(0);
        QCOMPARE(warningOfSave(board), cannotWrite);
    }

    QVERIFY(QFile::exists(path));
    QCOMPARE(readFile(path), QByteArray());
    QCOMPARE(nameAnew(board), u"plan.vtrz* (Sin guardar)"_s);
}

void TestSaveFailures::aWriteThatStopsHalfwayCountsAsSaved_data()
{
    QTest::addColumn<QJsonArray>("items");
    QTest::addColumn<int>("room");
    QTest::newRow("a large board") << manyStrokes() << 65536;
    QTest::newRow("a small board") << QJsonArray{BoardFile::note(500, 300)} << 50;
    QTest::newRow("after a single byte") << QJsonArray{BoardFile::note(500, 300)} << 1;
}

void TestSaveFailures::aWriteThatStopsHalfwayCountsAsSaved()
{
    QFETCH(const QJsonArray, items);
    QFETCH(const int, room);
    const ScratchHome home;
    ShownBoard board;
    const QString path = home.path(u"plan.vtrz"_s);
    board.window.loadBoard(BoardFile::write(path, items));
    board.window.setUnsaved(true);
    const BoxAnswer warning({});

    // Some bytes are enough for a success.
    {
        const FileSizeLimit limit(room);
        board.window.saveBoard();
    }

    QCOMPARE(readFile(path).size(), room);
    QVERIFY(!warning.seen());
    QCOMPARE(nameAnew(board), u"plan.vtrz"_s);
}

void TestSaveFailures::aBoardThatCannotBeSavedIsNotReplaced_data()
{
    QTest::addColumn<bool>("isNew");
    QTest::newRow("no name was chosen") << true;
    QTest::newRow("the disk is full") << false;
}

void TestSaveFailures::aBoardThatCannotBeSavedIsNotReplaced()
{
    QFETCH(const bool, isNew);
    const ScratchHome home;
    const QString other = BoardFile::write(home.path(u"otro.vtrz"_s));
    ShownBoard board;
    if (isNew)
        board.scene.addItem(new StickyNoteItem);
    else
        open(board, home.path(u"plan.vtrz"_s));
    const QString name = board.name();
    const FileDialogAnswer dialog({});
    const BoxSequence boxes(isNew ? QStringList{u"Sí"_s} : QStringList{u"Sí"_s, u"OK"_s});
    const FileSizeLimit full(0);

    board.window.openInstead(other);

    QCOMPARE(dialog.seen(), isNew);
    QCOMPARE(boxes.boxes().size(), isNew ? 1 : 2);
    QCOMPARE(board.count(), 1);
    QCOMPARE(board.name(), name);
}

PLUMARA_TEST(TestSaveFailures)
#include "tst_savefailures.moc"
