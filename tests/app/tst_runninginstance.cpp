// What a second start asks the program that runs already.

#include "app/runninginstance.h"
#include "app/xr9a1.h"
#include "tests/support/main/registeredtest.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// An active window that keeps what it is asked to do.
class AskedWindow : public QWidget
{
    Q_OBJECT

public:
    AskedWindow()
    {
        show();
        activateWindow();
        if (!QTest::qWaitForWindowActive(this))
            qFatal("The window never became active.");
    }

    QStringList asked;

public slots:
    void restoreWindow() { asked << u"restoreWindow"_s; }
    void flashTaskbarIcon() { asked << u"flashTaskbarIcon"_s; }
};

} // namespace

class TestRunningInstance : public QObject
{
    Q_OBJECT

private slots:
    void theActiveWindowIsAskedToComeAndThenToFlash();
    void whatIsAskedIsDoneByTheEventLoop();
    void withoutARunningInstanceNobodyIsAsked();
    void theSegmentIsLetGo();
};

void TestRunningInstance::theActiveWindowIsAskedToComeAndThenToFlash()
{
    const Xr9A1 running;
    const AskedWindow window;
    notifyRunningInstance();
    QTRY_COMPARE(window.asked, QStringList({u"restoreWindow"_s, u"flashTaskbarIcon"_s}));
}

void TestRunningInstance::whatIsAskedIsDoneByTheEventLoop()
{
    const Xr9A1 running;
    const AskedWindow window;
    notifyRunningInstance();
    QCOMPARE(window.asked, QStringList());
    QTRY_VERIFY(!window.asked.isEmpty());
}

void TestRunningInstance::withoutARunningInstanceNobodyIsAsked()
{
    const AskedWindow window;
    notifyRunningInstance();
    QCoreApplication::processEvents();
    QCOMPARE(window.asked, QStringList());
}

void TestRunningInstance::theSegmentIsLetGo()
{
    std::optional<Xr9A1> running(std::in_place);
    const AskedWindow window;
    notifyRunningInstance();
    running.reset();
    QSharedMemory segment(Xr9A1::key());
    QVERIFY(!segment.attach());
    QCOMPARE(segment.error(), QSharedMemory::NotFound);
}

PLUMARA_TEST(TestRunningInstance)
#include "tst_runninginstance.moc"
