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
#include <atomic>
#include <cerrno>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#ifdef Q_OS_UNIX
#include <dlfcn.h>
#include <poll.h>
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

    /// Whether it ends in time although nothing else is done here meanwhile.
    bool endsByItself() { return thread->wait(patience / 2); }
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

/// The address of the place.
sockaddr_un placeAddress()
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray place = QFile::encodeName(handoffPlace());
    std::ranges::copy(place, static_cast<char *>(address.sun_path));
    return address;
}

/// A socket at the place, as a program of the system leaves it that does nothing more.
class DeadSocket
{
public:
    explicit DeadSocket(int backlog)
        : descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const sockaddr_un address = placeAddress();
        if (::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
            || ::listen(descriptor, backlog) != 0) {
            qFatal("The test cannot make its socket.");
        }
    }
    ~DeadSocket() { ::close(descriptor); }
    Q_DISABLE_COPY_MOVE(DeadSocket)

    /// Hangs up on who has called.
    void hangUp() const { ::close(::accept(descriptor, nullptr, nullptr)); }
    /// Waits for a call, and returns what was said; empty when nobody calls.
    QByteArray answer() const
    {
        pollfd calls{descriptor, POLLIN, 0};
        if (::poll(&calls, 1, patience) != 1)
            return {};
        const int caller = ::accept(descriptor, nullptr, nullptr);
        QByteArray said(HandoffMessage::longest, '\0');
        const auto size = ::recv(caller, said.data(), static_cast<size_t>(said.size()), 0);
        ::close(caller);
        return said.first(std::max<qsizetype>(size, 0));
    }

private:
    int descriptor;
};

/// Has something done right after each call of a socket, for as long as it lives.
class AfterCalls
{
public:
    explicit AfterCalls(std::function<void()> function) { what = std::move(function); }
    ~AfterCalls() { what = nullptr; }
    Q_DISABLE_COPY_MOVE(AfterCalls)

    static inline std::function<void()> what;
};

#endif

#ifdef Q_OS_LINUX

/// A caller who sees what the system tells.
class UnbufferedCaller
{
public:
    UnbufferedCaller()
    {
        const sockaddr_un address = placeAddress();
        if (::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address)
            != 0)
            qFatal("Nobody listens.");
    }
    ~UnbufferedCaller() { ::close(descriptor); }
    Q_DISABLE_COPY_MOVE(UnbufferedCaller)

    /// Whether the system has taken all \a bytes at once.
    bool says(const QByteArray &bytes) const
    {
        return ::send(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()),
                      MSG_DONTWAIT)
            == bytes.size();
    }
    bool wasHungUpOn() const
    {
        pollfd end{descriptor, POLLIN, 0};
        return ::poll(&end, 1, 0) == 1;
    }
    /// Why there is nothing to be read; 0 when it is only the end.
    int error() const
    {
        char byte = 0;
        return ::recv(descriptor, &byte, 1, 0) == 0 ? 0 : errno;
    }

private:
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

#endif

} // namespace

#ifdef Q_OS_UNIX

/// What the program calls in the place of the system's function.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int connect(int file, const sockaddr *address, socklen_t size)
{
    static auto *const original =
        reinterpret_cast<decltype(&::connect)>(::dlsym(RTLD_NEXT, "connect"));
    const int result = original(file, address, size);
    if (result == 0 && AfterCalls::what)
        AfterCalls::what();
    return result;
}

#endif

class TestHandoff : public QObject
{
    Q_OBJECT

private slots:
    void init() { session.emplace(); }
    void cleanup() { session.reset(); }

    void aStartIsHeard_data();
    void aStartIsHeard();
    void aStartIsOverBeforeItsBoardIsOpened();
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
    void aStartWhoseCallIsCutOffCallsAgain();
#endif
#ifdef Q_OS_LINUX
    void moreThanAMessageIsNotEvenRead_data();
    void moreThanAMessageIsNotEvenRead();
#endif

private:
    std::optional<SessionFolder> session;
};

void TestHandoff::aStartIsHeard_data()
{
    QTest::addColumn<QString>("board");
    QTest::newRow("with a board") << boardPath();
    QTest::newRow("without one") << QString();
    QTest::newRow("with the longest path") << boardPath().leftJustified(32767, u'x');
}

void TestHandoff::aStartIsHeard()
{
    QFETCH(const QString, board);
    const Running running;
    SecondStart start(board);
    QTRY_COMPARE(running.boards(), QStringList{board});
    QVERIFY(start.duration() < patience);
}

void TestHandoff::aStartIsOverBeforeItsBoardIsOpened()
{
    const HandoffListener listener;
    SecondStart start(boardPath());
    bool heard = false;
    bool wasOver = false;
    connect(&listener, &HandoffListener::startedAgain, this, [&] {
        heard = true;
        wasOver = start.endsByItself();
    });
    QTRY_VERIFY(heard);
    QVERIFY(wasOver);
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
    [[maybe_unused]] const auto begin = std::clock();
    SecondStart start(boardPath());
    const qint64 duration = start.duration();
    QVERIFY2(duration >= patience - 100, qPrintable(QString::number(duration)));
    QVERIFY2(duration < patience + 500, qPrintable(QString::number(duration)));
#ifdef Q_OS_UNIX // elsewhere the function tells another time
    const auto work = (std::clock() - begin) * 1000 / CLOCKS_PER_SEC;
    QVERIFY2(work < patience / 2, qPrintable(QString::number(work)));
#endif
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
    const auto open = [&callers] {
        return std::ranges::count_if(callers,
                                     [](const auto &caller) { return caller->isConnected(); });
    };
    QTRY_COMPARE_WITH_TIMEOUT(open(), 64, patience / 2);
    const SecondStart start(boardPath());
    QTRY_COMPARE_WITH_TIMEOUT(running.boards(), QStringList{boardPath()}, patience / 2);
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
    // It might have gone on in the meantime.
    QVERIFY2(duration >= patience - 100, qPrintable(QString::number(duration)));
    QVERIFY2(duration < patience + 500, qPrintable(QString::number(duration)));
}

void TestHandoff::aStartWhoseCallIsCutOffCallsAgain()
{
    const DeadSocket socket(1);
    std::atomic<int> calls = 0;
    const AfterCalls interruption([&] {
        if (++calls < 3)
            socket.hangUp();
    });
    const SecondStart start(boardPath());
    QTRY_COMPARE(calls.load(), 3);
    QCOMPARE(socket.answer(), HandoffMessage::write(boardPath()));
}

#endif

#ifdef Q_OS_LINUX

void TestHandoff::moreThanAMessageIsNotEvenRead_data()
{
    QTest::addColumn<qsizetype>("more");
    QTest::addColumn<int>("error");
    QTest::newRow("a byte more") << qsizetype(1) << 0;
    QTest::newRow("two bytes more") << qsizetype(2) << ECONNRESET;
    QTest::newRow("many more") << qsizetype(30'000) << ECONNRESET;
}

void TestHandoff::moreThanAMessageIsNotEvenRead()
{
    QFETCH(const qsizetype, more);
    const Running running;
    const QByteArray bytes =
        HandoffMessage::write(u'/' + QString(32766, u'x')) + QByteArray(more, 'x');
    const UnbufferedCaller caller;
    QVERIFY(caller.says(bytes));
    QTRY_VERIFY(caller.wasHungUpOn());
    // The system tells a caller when something of what was said has not been read.
    QTEST(caller.error(), "error");
    QCOMPARE(running.boards(), QStringList());
}

#endif

PLUMARA_GUILESS_TEST(TestHandoff)
#include "tst_handoff.moc"
