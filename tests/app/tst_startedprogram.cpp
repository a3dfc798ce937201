// The whole program, started inside a test.

#include "app/xr9a1.h"
#include "tests/support/system/scratchhome.h"

#include <QApplication>
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
int runProgram(std::function<void()> work)
{
    task = std::move(work);
    QByteArray name = "Plumara";
    char *arguments[] = {name.data(), nullptr};
    return plumaraMain(1, arguments);
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

private:
    const ScratchHome home;
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

QTEST_APPLESS_MAIN(TestStartedProgram)
#include "tst_startedprogram.moc"
