// Names under which there is no ordinary file, odd names, and files that change under the program's
// hands.

#include "items/freedrawitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/limits.h"
#include "tests/support/system/scratchhome.h"
#include "tests/support/system/smalldisk.h"
#include "tests/support/system/unixfiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QScopeGuard>
#include <QTest>

#include <atomic>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString cannotRead = u"No se pudo abrir el archivo."_s;
const QString noBoard = u"El archivo no tiene un formato válido."_s;
const QString cannotOpen = u"No se pudo guardar el archivo."_s;
const QString cannotWrite = u"Error al escribir en el archivo."_s;

const QJsonArray oneNote{BoardFile::note(500, 300)};

/// How many files the program has open.
qsizetype openFiles()
{
    return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size();
}

/// A board with one note, bound to "antes.vtrz" in the home folder.
struct BoundBoard
{
    ScratchHome home;
    ShownBoard board;

    BoundBoard() { board.window.loadBoard(BoardFile::write(home.path(u"antes.vtrz"_s), oneNote)); }

    QString path(const QString &name) const { return home.path(name); }
    /// Opens \a path and returns the text of the warning, if one came.
    QString warningOfOpening(const QString &path)
    {
        const BoxAnswer warning(u"OK"_s);
        board.window.loadBoard(path);
        return warning.box().text;
    }
    /// Saves as \a name, as typed into the dialog, and returns the text of the warning, if one
    /// came.
    QString warningOfSavingAs(const QString &name)
    {
        const FileDialogAnswer dialog(name);
        const BoxAnswer warning(u"OK"_s);
        board.click("GuardarComo");
        return dialog.seen() ? warning.box().text : u"There was no dialog"_s;
    }
    /// Whether the board is still that of "antes.vtrz".
    bool isAsItWas()
    {
        return board.count() == 1 && board.only<StickyNoteItem>()
            && board.name().startsWith(u"antes.vtrz"_s);
    }
};

} // namespace

class TestOddFiles : public QObject
{
    Q_OBJECT

private slots:
    void whatIsNoFileCannotBeOpened_data();
    void whatIsNoFileCannotBeOpened();
    void whatIsNoFileIsNoPicture_data();
    void whatIsNoFileIsNoPicture();
    void aPipeCannotBeSavedTo_data();
    void aPipeCannotBeSavedTo();
    void aLinkToABoardIsOpenedAndSavedThrough();
    void aLinkIntoNowhereIsSavedWhereItLeads();
    void aLinkIntoNoFolderIsReported();
    void aDeviceThatIsAlwaysFullIsReported();
    void aFullDiskIsReportedAndTheBoardCanBeSavedElsewhere();
    void aDiskThatFillsUpHalfwayCountsAsSaved();
    void aFolderThatIsRemovedUnderTheDialogIsReported();
    void aFolderThatMayNotBeWrittenIsReported();
    void aNewFileHasTheRightsThatThePersonLeaves();
    void aNameOf255BytesIsSavedAndOpened();
    void aLongerNameIsReported();
    void anyNameIsSavedOpenedAndShown_data();
    void anyNameIsSavedOpenedAndShown();
    void aFileThatChangesWhileItIsOpenedIsABoardOrNone();
    void gigabytesOfNothingAreRefusedAtOnce();
};

void TestOddFiles::whatIsNoFileCannotBeOpened_data()
{
    QTest::addColumn<QString>("target");
    for (const char *const device : {"/dev/full", "/dev/zero", "/dev/null", "/dev/urandom"})
        QTest::newRow(device) << QString::fromLatin1(device);
    QTest::newRow("a pipe") << u"pipe"_s;
    QTest::newRow("a folder") << u"."_s;
    QTest::newRow("nothing") << u"nada"_s;
    QTest::newRow("itself") << u"plan.vtrz"_s;
}

void TestOddFiles::whatIsNoFileCannotBeOpened()
{
    QFETCH(const QString, target);
    BoundBoard at;
    makePipe(at.path(u"pipe"_s));
    makeLink(at.path(u"plan.vtrz"_s), target);

    QCOMPARE(at.warningOfOpening(at.path(u"plan.vtrz"_s)), cannotRead);

    QVERIFY(at.isAsItWas());
}

void TestOddFiles::whatIsNoFileIsNoPicture_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("/dev/zero") << u"/dev/zero"_s;
    QTest::newRow("a pipe") << u"pipe"_s;
}

void TestOddFiles::whatIsNoFileIsNoPicture()
{
    QFETCH(const QString, target);
    BoundBoard at;
    makePipe(at.path(u"pipe"_s));
    makeLink(at.path(u"foto.png"_s), target);
    const FileDialogAnswer dialog(at.path(u"foto.png"_s));
    const BoxAnswer warning(u"OK"_s);

    at.board.click("ModoImagen");

    QVERIFY(dialog.seen());
    QCOMPARE(warning.box().text, u"No se pudo cargar la imagen seleccionada."_s);
    QVERIFY(at.isAsItWas());
}

void TestOddFiles::aPipeCannotBeSavedTo_data()
{
    QTest::addColumn<bool>("isRead");
    QTest::newRow("that nobody reads") << false;
    QTest::newRow("that somebody reads") << true;
}

void TestOddFiles::aPipeCannotBeSavedTo()
{
    QFETCH(const bool, isRead);
    BoundBoard at;
    const QString pipe = makePipe(at.path(u"plan.vtrz"_s));
    const int reader =
        isRead ? ::open(QFile::encodeName(pipe).constData(), O_RDONLY | O_NONBLOCK) : -1;

    QCOMPARE(at.warningOfSavingAs(at.path(u"plan"_s)), cannotOpen);
    const qsizetype before = openFiles();
    QCOMPARE(at.warningOfSavingAs(at.path(u"plan"_s)), cannotOpen);

    QCOMPARE(openFiles(), before);
    QVERIFY(at.isAsItWas());
    if (isRead)
        ::close(reader);
}

void TestOddFiles::aLinkToABoardIsOpenedAndSavedThrough()
{
    BoundBoard at;
    const QString file = BoardFile::write(at.path(u"lejos/plan.vtrz"_s), oneNote);
    const QString link = makeLink(at.path(u"enlace.vtrz"_s), file);
    at.board.window.loadBoard(link);
    QCOMPARE(at.board.name(), u"enlace.vtrz"_s);
    at.board.scene.addItem(new StickyNoteItem);

    at.board.window.saveBoard();

    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(BoardFile::items(file).size(), 2);
}

void TestOddFiles::aLinkIntoNowhereIsSavedWhereItLeads()
{
    BoundBoard at;
    makeLink(at.path(u"plan.vtrz"_s), at.path(u"nuevo.vtrz"_s));

    QCOMPARE(at.warningOfSavingAs(at.path(u"plan"_s)), QString());

    QCOMPARE(at.board.name(), u"plan.vtrz"_s);
    QCOMPARE(BoardFile::items(at.path(u"nuevo.vtrz"_s)).size(), 1);
}

void TestOddFiles::aLinkIntoNoFolderIsReported()
{
    BoundBoard at;
    makeLink(at.path(u"plan.vtrz"_s), at.path(u"no/existe.vtrz"_s));

    QCOMPARE(at.warningOfSavingAs(at.path(u"plan"_s)), cannotOpen);

    QVERIFY(at.isAsItWas());
    QVERIFY(!QFile::exists(at.path(u"no"_s)));
}

void TestOddFiles::aDeviceThatIsAlwaysFullIsReported()
{
    BoundBoard at;
    makeLink(at.path(u"plan.vtrz"_s), u"/dev/full"_s);

    QCOMPARE(at.warningOfSavingAs(at.path(u"plan"_s)), cannotWrite);

    QVERIFY(at.isAsItWas());
}

void TestOddFiles::aFullDiskIsReportedAndTheBoardCanBeSavedElsewhere()
{
    BoundBoard at;
    const QString folder = at.path(u"disco"_s);
    QVERIFY(QDir().mkdir(folder));
    const SmallDisk disk(folder, 64 * 1024);
    if (!disk.isMounted())
        QSKIP("Only root can mount a small disk.");
    QFile filler(folder + u"/lleno"_s);
    QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) == 4096) {
    }

    QCOMPARE(at.warningOfSavingAs(folder + u"/plan"_s), cannotWrite);

    QCOMPARE(readFile(folder + u"/plan.vtrz"_s), QByteArray());
    QVERIFY(at.isAsItWas());
    QCOMPARE(at.warningOfSavingAs(at.path(u"plan"_s)), QString());
    QCOMPARE(BoardFile::items(at.path(u"plan.vtrz"_s)), oneNote);
}

void TestOddFiles::aDiskThatFillsUpHalfwayCountsAsSaved()
{
    BoundBoard at;
    const QString folder = at.path(u"disco"_s);
    QVERIFY(QDir().mkdir(folder));
    const SmallDisk disk(folder, 16 * 1024);
    if (!disk.isMounted())
        QSKIP("Only root can mount a small disk.");
    for (int i = 0; i < 500; ++i)
        at.board.scene.addItem(new StickyNoteItem);

    // Some bytes are enough for a success.
    QCOMPARE(at.warningOfSavingAs(folder + u"/plan"_s), QString());

    QCOMPARE(readFile(folder + u"/plan.vtrz"_s).size(), 16 * 1024);
    QCOMPARE(at.board.name(), u"plan.vtrz"_s);
    QCOMPARE(at.board.count(), 501);
}

void TestOddFiles::aFolderThatIsRemovedUnderTheDialogIsReported()
{
    BoundBoard at;
    const QString folder = at.path(u"lejos"_s);
    QVERIFY(QDir().mkdir(folder));
    const ModalAnswer<QFileDialog> dialog([&](QFileDialog &shown) {
        shown.setDirectory(folder);
        QDir(folder).removeRecursively();
        auto *const edit = shown.findChild<QLineEdit *>(u"fileNameEdit"_s);
        edit->setText(folder + u"/plan"_s);
        QTimer::singleShot(0, &shown, &QDialog::reject);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    const BoxAnswer warning(u"OK"_s);

    at.board.click("GuardarComo");

    QVERIFY(dialog.seen());
    QCOMPARE(warning.box().text, cannotOpen);
    QVERIFY(!QFile::exists(folder));
    QVERIFY(at.isAsItWas());
}

void TestOddFiles::aFolderThatMayNotBeWrittenIsReported()
{
    BoundBoard at;
    const ReachableFolder outer;
    const QString folder = outer.path(u"solo lectura"_s);
    QVERIFY(QDir().mkdir(folder));
    const UnwritableFile unwritable(folder);

    QCOMPARE(at.warningOfSavingAs(folder + u"/plan"_s), cannotOpen);

    QVERIFY(at.isAsItWas());
}

void TestOddFiles::aNewFileHasTheRightsThatThePersonLeaves()
{
    for (const mode_t mask : {0U, 077U}) {
        BoundBoard at;
        const auto restore = qScopeGuard([before = ::umask(mask)] { ::umask(before); });
        QCOMPARE(at.warningOfSavingAs(u"nueva"_s), QString());
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(at.path(u"nueva.vtrz"_s)).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0666U & ~mask);
    }
}

void TestOddFiles::aNameOf255BytesIsSavedAndOpened()
{
    BoundBoard at;
    const QString name = QString(125, u'ñ');
    QCOMPARE((name + u".vtrz"_s).toUtf8().size(), 255);

    QCOMPARE(at.warningOfSavingAs(name), QString());

    QCOMPARE(at.board.name(), name + u".vtrz"_s);
    QCOMPARE(at.warningOfOpening(at.path(name + u".vtrz"_s)), QString());
    QCOMPARE(at.board.count(), 1);
}

void TestOddFiles::aLongerNameIsReported()
{
    BoundBoard at;
    // Short enough as it is typed.
    const QString name = QString(125, u'ñ') + u'x';

    QCOMPARE(at.warningOfSavingAs(name), cannotOpen);

    QVERIFY(at.isAsItWas());
}

void TestOddFiles::anyNameIsSavedOpenedAndShown_data()
{
    QTest::addColumn<QString>("name");
    QString all;
    for (char16_t c = 1; c < 0x80; ++c) {
        if (c != u'/')
            all += QChar(c);
    }
    QTest::newRow("every character of ASCII") << all + u".vtrz"_s;
    QTest::newRow("markup") << u"<h1>plan<br>.vtrz"_s;
    QTest::newRow("nothing but the ending") << u".vtrz"_s;
    QTest::newRow("blanks") << u"  .vtrz"_s;
    QTest::newRow("two scripts and an emoji") << u"مخطط план 🎨.vtrz"_s;
    QTest::newRow("a line feed") << u"a\nb.vtrz"_s;
    QTest::newRow("a per cent sign") << u"50%1 %20.vtrz"_s;
}

void TestOddFiles::anyNameIsSavedOpenedAndShown()
{
    QFETCH(const QString, name);
    BoundBoard at;
    const QString path = BoardFile::write(at.path(name), oneNote);

    QCOMPARE(at.warningOfOpening(path), QString());
    QCOMPARE(at.board.count(), 1);
    QCOMPARE(at.board.name(), name);
    // Nothing in a name is taken for markup.
    QCOMPARE(at.board.find<QLabel>("NombreProyectoTxt")->textFormat(), Qt::PlainText);

    at.board.scene.addItem(new StickyNoteItem);
    at.board.window.saveBoard();
    QCOMPARE(BoardFile::items(path).size(), 2);
}

void TestOddFiles::aFileThatChangesWhileItIsOpenedIsABoardOrNone()
{
    BoundBoard at;
    const QString path = at.path(u"plan.vtrz"_s);
    QJsonArray items;
    for (int i = 0; i < 300; ++i)
        items << BoardFile::stroke(i, 10, i + 5, 20);
    const QByteArray whole = readFile(BoardFile::write(path, items));

    // Shrinks, grows, vanishes and comes back.
    std::atomic<bool> done = false;
    std::thread other([&] {
        const QByteArray name = QFile::encodeName(path);
        while (!done) {
            QFile file(path);
            if (file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
                file.resize(whole.size() / 2);
                file.seek(whole.size() / 2);
                file.write(whole.mid(whole.size() / 2));
                file.write(" \n");
                file.resize(0);
                file.seek(0);
                file.write(whole);
            }
            ::unlink(name.constData());
        }
    });
    QMap<QString, int> answers;
    for (int i = 0; i < 300; ++i) {
        const QString answer = at.warningOfOpening(path);
        ++answers[answer];
        if (answer.isEmpty() && at.board.count() != 300)
            ++answers[u"A part of the board was opened."_s];
    }
    done = true;
    other.join();

    for (const QString &expected : {QString(), cannotRead, noBoard})
        answers.remove(expected);
    QCOMPARE(answers.keys(), QStringList());
}

void TestOddFiles::gigabytesOfNothingAreRefusedAtOnce()
{
    BoundBoard at;
    const QString path = at.path(u"pelicula.vtrz"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(qint64(2) * 1024 * 1024 * 1024));
    file.close();
    QElapsedTimer timer;
    timer.start();

    QCOMPARE(at.warningOfOpening(path), noBoard);

    // To read it alone takes longer.
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(at.isAsItWas());
}

PLUMARA_TEST(TestOddFiles)
#include "tst_oddfiles.moc"
