// The lock between the processes of a person.

#include "app/processlock.h"
#include "app/xr9a1.h"
#include "tests/app/passingholder.h"
#include "tests/app/sessionfolder.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/unixfiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString purpose = u"place"_s;

/// How many files this process has open.
qsizetype openFiles()
{
    const QDir list(u"/proc/self/fd"_s);
    return list.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

/// A temporary folder of its own.
struct Folder
{
    QTemporaryDir folder;
    Variable variable{"TMPDIR", QFile::encodeName(folder.path())};

    /// Where the file of the lock lies.
    QString lock() const
    {
        return folder.filePath(u"Plumara-%1.%2"_s.arg(::geteuid()).arg(purpose));
    }
};

/// For as long as it lives, a signal interrupts whatever the process waits for, and does no more.
class InterruptingSignal
{
public:
    InterruptingSignal()
    {
        struct sigaction action = {};
        action.sa_handler = [](int) { };
        ::sigaction(number, &action, &previous);
    }
    ~InterruptingSignal() { ::sigaction(number, &previous, nullptr); }
    Q_DISABLE_COPY_MOVE(InterruptingSignal)

    static constexpr int number = SIGUSR1;

private:
    struct sigaction previous = {};
};

} // namespace

class TestProcessLock : public QObject
{
    Q_OBJECT

private slots:
    void oneAtATimeHasIt();
    void itEndsWithItsHolder();
    void whoWaitsHasItAfterTheOther();
    void signalsDoNotEndTheWaiting();
    void aPipeInTheWayIsNoLock();
    void whereNoneCanBeMadeEverybodyHasIt();
};

void TestProcessLock::oneAtATimeHasIt()
{
    const Folder folder;
    ProcessLock lock(purpose);
    ProcessLock other(purpose);
    QVERIFY(other.tryLock());
    // Right after each other, so that what the system has said of one could be taken for another's.
    const bool early = lock.tryLock();
    other.unlock();
    const bool late = lock.tryLock();
    QVERIFY(!early);
    QVERIFY(late);
    QVERIFY(!other.tryLock());
    QVERIFY(lock.tryLock());
}

void TestProcessLock::itEndsWithItsHolder()
{
    const Folder folder;
    {
        ProcessLock early(purpose);
        QVERIFY(early.tryLock());
    }
    QVERIFY(ProcessLock(purpose).tryLock());
}

void TestProcessLock::whoWaitsHasItAfterTheOther()
{
    const Folder folder;
    ProcessLock lock(purpose);
    const PassingHolder other(purpose);
    lock.lock();
    QVERIFY(other.hasPassed());
    QVERIFY(!ProcessLock(purpose).tryLock());
}

void TestProcessLock::signalsDoNotEndTheWaiting()
{
    const Folder folder;
    const InterruptingSignal signal;
    ProcessLock lock(purpose);
    const PassingHolder other(purpose, [waiting = ::pthread_self()] {
        for (int i = 0; i < 25; ++i) {
            QThread::msleep(2);
            ::pthread_kill(waiting, InterruptingSignal::number);
        }
    });
    lock.lock();
    QVERIFY(other.hasPassed());
    QVERIFY(!ProcessLock(purpose).tryLock());
}

void TestProcessLock::aPipeInTheWayIsNoLock()
{
    const Folder folder;
    const QString pipe = makePipe(folder.lock());
    // Somebody has it, and never lets go of it.
    const int held = ::open(QFile::encodeName(pipe).constData(), O_RDWR | O_NONBLOCK);
    QCOMPARE(::flock(held, LOCK_EX), 0);
    const auto before = openFiles();
    {
        ProcessLock lock(purpose);
        QVERIFY(lock.tryLock());
        QCOMPARE(openFiles(), before);
    }
    QCOMPARE(openFiles(), before);
    Xr9A1 guard;
    QVERIFY(!guard.isRunning());
    ::close(held);
}

void TestProcessLock::whereNoneCanBeMadeEverybodyHasIt()
{
    const Folder folder;
    QVERIFY(QDir().mkdir(folder.lock()));
    const auto before = openFiles();
    {
        ProcessLock lock(purpose);
        ProcessLock other(purpose);
        QVERIFY(lock.tryLock());
        QVERIFY(other.tryLock());
        other.lock();
    }
    QCOMPARE(openFiles(), before);
}

PLUMARA_GUILESS_TEST(TestProcessLock)
#include "tst_processlock.moc"
