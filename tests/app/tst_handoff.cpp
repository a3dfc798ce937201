// Other starts of the program, and what is none, call the one that runs.

#include "app/handoff.h"
#include "app/handoffmessage.h"
#include "app/handoffplace.h"
#include "tests/app/sessionfolder.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/heapsize.h"

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#ifdef Q_OS_UNIX
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patience = 2000; // ms, of a start and of the program that runs
constexpr int busyMachine = 3000; // ms, that may come on top

QString boardPath()
{
    return QDir::rootPath() + u"home/María José/plan.vtrz"_s;
}

/// A start of the program beside this one: both ends wait for each other.
class SecondStart
{
public:
    explicit SecondStart(const QString &board)
        : thread(QThread::create([board] { handOff(board); }))
    {
        timer.start();
        thread->start();
    }
    ~SecondStart() { thread->wait(); }
    Q_DISABLE_COPY_MOVE(SecondStart)

    /// Waits until it is over, and returns how long it has taken, in ms.
    qint64 duration()
    {
        if (!QTest::qWaitFor([this] { return thread->isFinished(); }, patience + busyMachine))
            qFatal("The start does not end.");
        return timer.elapsed();
    }

private:
    std::unique_ptr<QThread> thread;
    QElapsedTimer timer;
};

/// The program that runs, and what it has heard.
struct Running
{
    HandoffListener listener;
    QSignalSpy heard{&listener, &HandoffListener::startedAgain};

    QStringList boards() const
    {
        QStringList all;
        for (const auto &call : heard)
            all << call.constFirst().toString();
        return all;
    }
};

/// Somebody who reaches the socket and is no start of the program.
class Caller
{
public:
    Caller()
    {
        socket.connectToServer(handoffPlace());
        if (!socket.waitForConnected())
            qFatal("Nobody listens.");
    }

    void say(const QByteArray &bytes) { socket.write(bytes); }
    void hangUp() { socket.disconnectFromServer(); }
    bool isConnected() const { return socket.state() == QLocalSocket::ConnectedState; }
    qint64 unheard() const { return socket.bytesToWrite(); }

private:
    QLocalSocket socket;
};

#ifdef Q_OS_UNIX

/// A socket at the place, as a program of the system leaves it that does nothing more.
class DeadSocket
{
public:
    explicit DeadSocket(int backlog)
        : descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray place = QFile::encodeName(handoffPlace());
        std::ranges::copy(place, static_cast<char *>(address.sun_path));
        if (::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
            || ::listen(descriptor, backlog) != 0) {
            qFatal("The test cannot make its socket.");
        }
    }
    ~DeadSocket() { ::close(descriptor); }
    Q_DISABLE_COPY_MOVE(DeadSocket)

private:
    int descriptor;
};

#endif

} // namespace

class TestHandoff : public QObject
{
    Q_OBJECT

private slots:
    void init() { session.emplace(); }
    void cleanup() { session.reset(); }

    void aStartIsHeard_data();
    void aStartIsHeard();
    void fiftyAtOnceAreHeard();
    void aStartWaitsForAProgramThatHasJustBegun();
    void aStartThatNobodyHearsEndsAfterTwoSeconds();
    void nobodyListensAnyMoreAfterTheEnd();

    // From anybody else
    void whatIsNoMessageIsRefusedAtOnce_data();
    void whatIsNoMessageIsRefusedAtOnce();
    void aMessageThatIsCutIsPassedOver();
    void aMessageInPiecesIsHeard();
    void aMessageThatNeverEndsIsCutOff();
    void ofAGigabyteLittleIsTaken();
    void manyWhoSayNothingKeepNobodyOut();
    void whoHasCalledLeavesNothingBehind();

#ifdef Q_OS_UNIX
    void aSocketThatACrashLeftIsReplaced();
    void aProgramThatHangsHoldsNobodyUp_data();
    void aProgramThatHangsHoldsNobodyUp();
#endif

private:
    std::optional<SessionFolder> session;
};

void TestHandoff::aStartIsHeard_data()
{
    QTest::addColumn<QString>("board");
    QTest::newRow("with a board") << boardPath();
    QTest::newRow("without one") << QString();
}

void TestHandoff::aStartIsHeard()
{
    QFETCH(const QString, board);
    const Running running;
    SecondStart start(board);
    QTRY_COMPARE(running.boards(), QStringList{board});
    QVERIFY(start.duration() < patience);
}

void TestHandoff::fiftyAtOnceAreHeard()
{
    constexpr int many = 50;
    const Running running;
    std::vector<std::unique_ptr<SecondStart>> starts;
    QStringList boards;
    for (int i = 0; i < many; ++i) {
        boards << boardPath() + QString::number(i).rightJustified(2, u'0');
        starts.push_back(std::make_unique<SecondStart>(boards.constLast()));
    }
    for (const auto &start : starts)
        QVERIFY(start->duration() < patience + busyMachine);
    QTRY_COMPARE(running.heard.size(), many);
    QStringList heard = running.boards();
    heard.sort();
    QCOMPARE(heard, boards);
}

void TestHandoff::aStartWaitsForAProgramThatHasJustBegun()
{
    SecondStart start(boardPath());
    QTest::qWait(patience / 4);
    const Running running;
    QTRY_COMPARE(running.boards(), QStringList{boardPath()});
    QVERIFY(start.duration() < patience);
}

void TestHandoff::aStartThatNobodyHearsEndsAfterTwoSeconds()
{
    SecondStart start(boardPath());
    const qint64 duration = start.duration();
    QVERIFY2(duration >= patience - 100, qPrintable(QString::number(duration)));
    QVERIFY2(duration < patience + 500, qPrintable(QString::number(duration)));
}

void TestHandoff::nobodyListensAnyMoreAfterTheEnd()
{
    {
        const Running running;
    }
    QLocalSocket socket;
    socket.connectToServer(handoffPlace());
    QVERIFY(!socket.waitForConnected());
    QCOMPARE(socket.error(), QLocalSocket::ServerNotFoundError);
}

void TestHandoff::whatIsNoMessageIsRefusedAtOnce_data()
{
    const QByteArray whole = HandoffMessage::write(boardPath());
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a browser") << QByteArray("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    QTest::newRow("a letter") << QByteArray("x");
    QTest::newRow("zeros") << QByteArray(100'000, '\0');
    QTest::newRow("two messages") << whole + whole;
    QTest::newRow("one that is to be a gigabyte long")
        << whole.first(8) + QByteArray::fromHex("40000000");
}

void TestHandoff::whatIsNoMessageIsRefusedAtOnce()
{
    QFETCH(const QByteArray, bytes);
    const Running running;
    Caller caller;
    QElapsedTimer timer;
    timer.start();
    caller.say(bytes);
    QTRY_VERIFY(!caller.isConnected());
    QVERIFY(timer.elapsed() < patience / 2);
    QCOMPARE(running.boards(), QStringList());

    const SecondStart start(boardPath());
    QTRY_COMPARE(running.boards(), QStringList{boardPath()});
}

void TestHandoff::aMessageThatIsCutIsPassedOver()
{
    const Running running;
    Caller caller;
    caller.say(HandoffMessage::write(boardPath()).chopped(1));
    caller.hangUp();
    const SecondStart start(boardPath() + u'2');
    QTRY_COMPARE(running.boards(), QStringList{boardPath() + u'2'});
}

void TestHandoff::aMessageInPiecesIsHeard()
{
    const Running running;
    Caller caller;
    const QByteArray whole = HandoffMessage::write(boardPath());
    for (const char byte : whole) {
        QVERIFY(caller.isConnected());
        caller.say(QByteArray(1, byte));
        QTRY_COMPARE(caller.unheard(), 0);
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(running.boards(), QStringList{boardPath()});
}

void TestHandoff::aMessageThatNeverEndsIsCutOff()
{
    const Running running;
    Caller silent;
    Caller slow;
    QElapsedTimer timer;
    timer.start();
    const QByteArray whole = HandoffMessage::write(u'/' + QString(10'000, u'x'));
    qsizetype said = 0;
    while ((slow.isConnected() || silent.isConnected()) && timer.elapsed() < patience * 3) {
        slow.say(whole.sliced(said++, 1));
        QTest::qWait(20);
    }
    QVERIFY2(timer.elapsed() >= patience - 100, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(timer.elapsed() < patience + 500, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(running.boards(), QStringList());
}

void TestHandoff::ofAGigabyteLittleIsTaken()
{
    constexpr qsizetype megabyte = 1'000'000;
    const Running running;
    Caller caller;
    QByteArray beginning = HandoffMessage::write(u'/' + QString(30'000, u'x'));
    caller.say(beginning.chopped(2));
    qsizetype megabytes = 0;
    for (; caller.isConnected() && megabytes < 1000; ++megabytes) {
        caller.say(QByteArray(megabyte, 'x'));
        QTRY_VERIFY(caller.unheard() == 0 || !caller.isConnected());
    }
    QVERIFY2(megabytes <= 2, qPrintable(QString::number(megabytes)));
    QCOMPARE(running.boards(), QStringList());
}

void TestHandoff::whoHasCalledLeavesNothingBehind()
{
    if (!heapSize())
        QSKIP("Nobody counts the memory here.");
    const Running running;
    const auto callAndGo = [](int times) {
        for (int i = 0; i < times; ++i) {
            Caller caller;
            caller.say("nothing of ours");
            QTRY_VERIFY(!caller.isConnected());
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    callAndGo(50); // for what the toolkit keeps
    const qint64 before = heapSize().value_or(0);
    constexpr int many = 200;
    callAndGo(many);
    // A call that is over leaves its time limit to the toolkit until that has run out.
    QTRY_VERIFY_WITH_TIMEOUT(heapSize().value_or(0) - before < qint64(many) * 200,
                             patience + busyMachine);
}

void TestHandoff::manyWhoSayNothingKeepNobodyOut()
{
    constexpr int many = 200;
    const Running running;
    std::vector<std::unique_ptr<Caller>> callers;
    for (int i = 0; i < many; ++i) {
        callers.push_back(std::make_unique<Caller>());
        QCoreApplication::processEvents();
    }
    SecondStart start(boardPath());
    QTRY_COMPARE_WITH_TIMEOUT(running.boards(), QStringList{boardPath()}, patience / 2);
    const auto open =
        std::ranges::count_if(callers, [](const auto &caller) { return caller->isConnected(); });
    QVERIFY2(open <= 64, qPrintable(QString::number(open)));
}

#ifdef Q_OS_UNIX

void TestHandoff::aSocketThatACrashLeftIsReplaced()
{
    {
        const DeadSocket left(1);
    }
    QVERIFY(QFileInfo::exists(handoffPlace()));
    const Running running;
    const SecondStart start(boardPath());
    QTRY_COMPARE(running.boards(), QStringList{boardPath()});
}

void TestHandoff::aProgramThatHangsHoldsNobodyUp_data()
{
    QTest::addColumn<int>("others");
    QTest::newRow("that has room for a call") << 0;
    QTest::newRow("that many have called already") << 3;
}

void TestHandoff::aProgramThatHangsHoldsNobodyUp()
{
    QFETCH(const int, others);
    const DeadSocket hanging(1);
    std::vector<std::unique_ptr<QLocalSocket>> callers;
    for (int i = 0; i < others; ++i) {
        callers.push_back(std::make_unique<QLocalSocket>());
        callers.back()->connectToServer(handoffPlace());
    }
    SecondStart start(boardPath());
    const qint64 duration = start.duration();
    QVERIFY2(duration < patience + 500, qPrintable(QString::number(duration)));
}

#endif

PLUMARA_GUILESS_TEST(TestHandoff)
#include "tst_handoff.moc"
