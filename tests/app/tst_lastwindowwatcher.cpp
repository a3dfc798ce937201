#include "app/lastwindowwatcher.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>

// A hidden home window and a window whose parent it is, as home and board are.
struct Windows
{
    Windows()
        : board(&home, Qt::Window)
    {
        board.show();
    }

    QWidget home;
    QWidget board;
};

class TestLastWindowWatcher : public QObject
{
    Q_OBJECT

private slots:
    void closingTheOnlyWindowToBeSeenEndsTheProgram();
    void closingAWindowBesideAnotherEndsNothing();
    void hidingAWindowEndsNothing();
    void aWindowThatRefusesToCloseEndsNothing();
    void quitOnLastWindowClosedIsObeyed();
};

namespace {

// Long enough for every event that is waiting to be handled.
constexpr int settled = 50; // ms

/// Runs the program's event loop, does \a action in it, and tells whether that ended the program.
bool endsTheProgram(const std::function<void()> &action)
{
    constexpr int stillRunning = 1;
    QTimer::singleShot(0, qApp, action);
    QTimer::singleShot(settled, qApp, [] { QCoreApplication::exit(stillRunning); });
    return QApplication::exec() != stillRunning;
}

class RefusingWindow : public QWidget
{
protected:
    void closeEvent(QCloseEvent *event) override { event->ignore(); }
};

} // namespace

void TestLastWindowWatcher::closingTheOnlyWindowToBeSeenEndsTheProgram()
{
    Windows windows;
    QVERIFY(!endsTheProgram([&] { windows.board.close(); }));

    windows.board.show();
    const LastWindowWatcher watcher;
    QVERIFY(endsTheProgram([&] { windows.board.close(); }));
}

void TestLastWindowWatcher::closingAWindowBesideAnotherEndsNothing()
{
    Windows windows;
    windows.home.show();
    const LastWindowWatcher watcher;
    QVERIFY(!endsTheProgram([&] { windows.board.close(); }));
}

void TestLastWindowWatcher::hidingAWindowEndsNothing()
{
    Windows windows;
    const LastWindowWatcher watcher;
    QVERIFY(!endsTheProgram([&] { windows.board.hide(); }));
}

void TestLastWindowWatcher::aWindowThatRefusesToCloseEndsNothing()
{
    RefusingWindow window;
    window.show();
    const LastWindowWatcher watcher;
    QVERIFY(!endsTheProgram([&] { window.close(); }));
}

void TestLastWindowWatcher::quitOnLastWindowClosedIsObeyed()
{
    Windows windows;
    const LastWindowWatcher watcher;
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const bool ended = endsTheProgram([&] { windows.board.close(); });
    QGuiApplication::setQuitOnLastWindowClosed(true);
    QVERIFY(!ended);
}

QTEST_MAIN(TestLastWindowWatcher)
#include "tst_lastwindowwatcher.moc"
