// The whole program, started inside a test.

#include "app/xr9a1.h"
#include "tests/app/sessionfolder.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/system/scratchhome.h"

#include <QApplication>
#include <QLabel>
#include <QProcess>
#include <QStyle>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

/// The main routine of the program.
int plumaraMain(int argc, char *argv[]);

namespace {

/// What is done in the next start of the program as soon as its event loop runs.
std::function<void()> task;

void planTask()
{
    QTimer::singleShot(0, [] {
        if (auto work = std::exchange(task, nullptr))
            work();
    });
}

/// Starts the program, does \a work in it and returns the program's exit code.
int runProgram(std::function<void()> work, QByteArray argument = {})
{
    task = std::move(work);
    QByteArray name = "Plumara";
    char *arguments[] = {name.data(), argument.isEmpty() ? nullptr : argument.data(), nullptr};
    return plumaraMain(argument.isEmpty() ? 1 : 2, arguments);
}

/// Starts the program once more, as a process of its own, with \a arguments in the folder \a folder.
/// Returns whether it has ended without an error and without a word.
bool startAgain(const QStringList &arguments = {}, const QString &folder = {})
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(PLUMARA_EXE), arguments);
    const bool ended =
        QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 10'000);
    const QByteArray said = process.readAll();
    if (!said.isEmpty())
        qInfo("It said: %s", said.constData());
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
        && said.isEmpty();
}

/// The window of the class \a name that is shown.
QWidget *shown(const char *name)
{
    for (auto *const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->inherits(name))
            return window;
    }
    return nullptr;
}

/// The name on the board that is shown alone; empty when none is.
QString openBoard()
{
    const auto *const board = shown("BoardWindow");
    return board && !shown("MainWindow")
        ? board->findChild<QLabel *>(u"NombreProyectoTxt"_s)->text()
        : QString();
}

bool opens(const QString &name)
{
    return QTest::qWaitFor([&name] { return openBoard() == name; });
}

} // namespace

class TestStartedProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

#ifdef Q_OS_WIN
    void itsStyleIsThatOfVista();
#else
    void itSpeaksThePersonsLanguage();
#endif
    void itsBoardsLieInTheDocumentsOfTheProfile();
    void closingTheHomeWindowEndsItWithoutAnError();
    void besideAnotherItEndsAtOnceWithoutAnError();

    // Starts that name a board, and second starts
    void aBoardThatIsNamedIsOpenedAfterTheHomeWindow();
    void aBoardThatCannotBeOpenedIsReported_data();
    void aBoardThatCannotBeOpenedIsReported();
    void optionsAreNotRead();
    void aSecondStartBringsTheWindowBack();
    void aSecondStartOpensItsBoard();
    void aSecondStartTakesItsBoardFromItsOwnFolder();
    void manySecondStartsCostNoBoard();
    void aSecondStartDuringADialogWaits();

private:
    QByteArray board(const QString &name) const
    {
        return QFile::encodeName(
            BoardFile::write(home.path(name), QJsonArray{BoardFile::note(100, 100)}));
    }

    const ScratchHome home;
    const SessionFolder session;
};

void TestStartedProgram::initTestCase()
{
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANGUAGE", "es_MX");
    qAddPreRoutine(planTask);
}

#ifdef Q_OS_WIN
void TestStartedProgram::itsStyleIsThatOfVista()
{
    // Whatever else the system, or the person, has set.
    qputenv("QT_STYLE_OVERRIDE", "fusion");
    QString style;
    runProgram([&] {
        // The one below the sheet, which has no name.
        qApp->setStyleSheet(QString());
        style = QApplication::style()->name();
        QApplication::closeAllWindows();
    });
    qunsetenv("QT_STYLE_OVERRIDE");
    QCOMPARE(style, u"windowsvista"_s);
}
#else
void TestStartedProgram::itSpeaksThePersonsLanguage()
{
    QString text;
    runProgram([&] {
        text = QCoreApplication::translate("QPlatformTheme", "Cancel");
        QApplication::closeAllWindows();
    });
    QCOMPARE(text, u"Cancelar"_s);
}
#endif

void TestStartedProgram::itsBoardsLieInTheDocumentsOfTheProfile()
{
    QDir(home.dataPath()).removeRecursively();
    QVERIFY(!QDir(home.dataPath()).exists());
    runProgram([] { QApplication::closeAllWindows(); });
    QVERIFY(QDir(home.dataPath()).exists());
}

void TestStartedProgram::closingTheHomeWindowEndsItWithoutAnError()
{
    QStringList titles;
    const int code = runProgram([&] {
        for (auto *window : QApplication::topLevelWidgets()) {
            if (window->isVisible()) {
                titles << window->windowTitle();
                window->close();
            }
        }
    });
    QCOMPARE(titles, QStringList{u"Orvane Plumara - Inicio"_s});
    QCOMPARE(code, 0);
}

void TestStartedProgram::besideAnotherItEndsAtOnceWithoutAnError()
{
    Xr9A1 other;
    QVERIFY(!other.isRunning());
    bool wentOn = false;
    const int code = runProgram([&] {
        wentOn = true;
        QApplication::closeAllWindows();
    });
    QVERIFY(!wentOn);
    QCOMPARE(code, 0);
}

void TestStartedProgram::aBoardThatIsNamedIsOpenedAfterTheHomeWindow()
{
    bool homeCameFirst = false;
    bool opened = false;
    const int code = runProgram(
        [&] {
            homeCameFirst = shown("MainWindow") && !shown("BoardWindow");
            opened = opens(u"plan.vtrz"_s);
            QApplication::closeAllWindows();
        },
        board(u"plan.vtrz"_s));
    QVERIFY(homeCameFirst);
    QVERIFY(opened);
    QCOMPARE(code, 0);
}

void TestStartedProgram::aBoardThatCannotBeOpenedIsReported_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<QString>("text");
    const QString cannotOpen = u"No se pudo abrir el archivo."_s;
    QTest::newRow("vanished") << QByteArray("none.vtrz") << cannotOpen;
    QTest::newRow("a folder") << QByteArray(".") << cannotOpen;
    QTest::newRow("too long") << QByteArray(100'000, 'x') << cannotOpen;
    QTest::newRow("a resource of the program") << QByteArray(":/img/menuhelp.png") << cannotOpen;
#ifndef Q_OS_WIN
    QTest::newRow("a device") << QByteArray("/dev/zero") << cannotOpen;
    QTest::newRow("no text") << QByteArray("\xff\xfe\x80.vtrz") << cannotOpen;
#endif
    QTest::newRow("damaged") << QFile::encodeName(writeFile(home.path(u"damaged.vtrz"_s), "{"))
                             << u"El archivo no tiene un formato válido."_s;
}

void TestStartedProgram::aBoardThatCannotBeOpenedIsReported()
{
    QFETCH(const QByteArray, argument);
    QFETCH(const QString, text);
    QList<BoxContents> boxes;
    bool shownAlone = false;
    const int code = runProgram(
        [&] {
            const BoxSequence sequence({u"OK"_s});
            // As from the list.
            shownAlone = QTest::qWaitFor([] { return !openBoard().isEmpty(); });
            boxes = sequence.boxes();
            QApplication::closeAllWindows();
        },
        argument);
    QVERIFY(shownAlone);
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].text, text);
    QCOMPARE(code, 0);
}

void TestStartedProgram::optionsAreNotRead()
{
    bool onlyHome = false;
    runProgram(
        [&] {
            QTest::qWait(500);
            onlyHome = shown("MainWindow") && !shown("BoardWindow");
            QApplication::closeAllWindows();
        },
        "--version");
    QVERIFY(onlyHome);
}

void TestStartedProgram::aSecondStartBringsTheWindowBack()
{
    bool ended = false;
    bool came = false;
    runProgram([&] {
        auto *const window = shown("MainWindow");
        window->setWindowState(Qt::WindowMinimized);
        ended = startAgain();
        came = QTest::qWaitFor([window] { return !window->isMinimized(); });
        QApplication::closeAllWindows();
    });
    QVERIFY(ended);
    QVERIFY(came);
}

void TestStartedProgram::aSecondStartOpensItsBoard()
{
    const QString first = QFile::decodeName(board(u"first.vtrz"_s));
    const QString second = QFile::decodeName(board(u"second.vtrz"_s));
    bool ended = false;
    QStringList opened;
    QStringList texts;
    runProgram([&] {
        ended = startAgain({first});
        if (opens(u"first.vtrz"_s))
            opened << openBoard();
        const BoxSequence sequence({u"No"_s});
        ended = ended && startAgain({u"--new"_s, second});
        if (opens(u"second.vtrz"_s))
            opened << openBoard();
        for (const BoxContents &box : sequence.boxes())
            texts << box.text;
        QApplication::closeAllWindows();
    });
    QVERIFY(ended);
    QCOMPARE(opened, QStringList({u"first.vtrz"_s, u"second.vtrz"_s}));
    QCOMPARE(texts, QStringList{u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s});
}

void TestStartedProgram::aSecondStartTakesItsBoardFromItsOwnFolder()
{
    board(u"elsewhere/plan.vtrz"_s);
    bool opened = false;
    runProgram([&] {
        startAgain({u"plan.vtrz"_s}, home.path(u"elsewhere"_s));
        opened = opens(u"plan.vtrz"_s) && shown("BoardWindow");
        QApplication::closeAllWindows();
    });
    QVERIFY(opened);
}

void TestStartedProgram::manySecondStartsCostNoBoard()
{
    constexpr int many = 10;
    const QString none = home.path(u"none.vtrz"_s);
    QString opened;
    int ended = 0;
    runProgram(
        [&] {
            if (opens(u"plan.vtrz"_s)) {
                const BoxSequence sequence({});
                for (int i = 0; i < many; ++i)
                    ended += startAgain({none}) ? 1 : 0;
                QTest::qWait(500);
                opened = openBoard();
            }
            QApplication::closeAllWindows();
        },
        board(u"plan.vtrz"_s));
    QCOMPARE(ended, many);
    QCOMPARE(opened, u"plan.vtrz"_s);
}

void TestStartedProgram::aSecondStartDuringADialogWaits()
{
    const QString other = QFile::decodeName(board(u"other.vtrz"_s));
    bool waited = false;
    bool opened = false;
    runProgram([&] {
        auto *const window = shown("MainWindow");
        const ModalAnswer<QMessageBox> answer([&](QMessageBox &box) {
            waited = startAgain({other}) && !shown("BoardWindow");
            answerBox(box, u"OK"_s);
        });
        QMetaObject::invokeMethod(window, "redoFolder");
        opened = opens(u"other.vtrz"_s);
        QApplication::closeAllWindows();
    });
    QVERIFY(waited);
    QVERIFY(opened);
}

QTEST_APPLESS_MAIN(TestStartedProgram)
#include "tst_startedprogram.moc"
