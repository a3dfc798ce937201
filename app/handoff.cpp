// The two ends of the call from a second start to the program that runs.
#include "app/handoff.h"

#include "app/handoffmessage.h"
#include "app/handoffplace.h"

#include <QDeadlineTimer>
#include <QLocalSocket>
#include <QThread>
#include <QTimer>

#include <chrono>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto patience = 2s; // of both ends
constexpr auto betweenTries = 20ms;
constexpr qsizetype mostCallers = 64;

/// How long a function of the toolkit may wait.
int left(const QDeadlineTimer &deadline)
{
    return static_cast<int>(deadline.remainingTime());
}

/// Windows has a program come to the front only when the one that the person has just started says so.
void letComeToFront([[maybe_unused]] const QLocalSocket &socket)
{
#ifdef Q_OS_WIN
    ULONG process = 0;
    if (GetNamedPipeServerProcessId(reinterpret_cast<HANDLE>(socket.socketDescriptor()), &process))
        AllowSetForegroundWindow(process);
#endif
}

/// Whether the program at \a place has room for one more call. Windows would have us wait for it, and for
/// longer than a start may take.
bool hasRoom([[maybe_unused]] const QString &place, [[maybe_unused]] const QDeadlineTimer &deadline)
{
#ifdef Q_OS_WIN
    const QString pipe = uR"(\\.\pipe\)"_s + place;
    return WaitNamedPipeW(qUtf16Printable(pipe), static_cast<DWORD>(left(deadline)) + 1) != FALSE;
#else
    return true;
#endif
}

/// Whether \a message was said to the program at \a place.
bool send(const QByteArray &message, const QString &place, const QDeadlineTimer &deadline)
{
    if (!hasRoom(place, deadline))
        return false;
    QLocalSocket socket;
    socket.connectToServer(place);
    if (!socket.waitForConnected(left(deadline)))
        return false;
    letComeToFront(socket);
    socket.write(message);
    while (socket.bytesToWrite() > 0) {
        if (!socket.waitForBytesWritten(left(deadline)))
            return false;
    }
    // Until the other has read it and hangs up: not every system keeps what a caller who has gone has
    // said.
    if (socket.state() == QLocalSocket::ConnectedState)
        socket.waitForDisconnected(left(deadline));
    return true;
}

} // namespace

HandoffListener::HandoffListener()
{
    const QString place = handoffPlace();
    if (place.isEmpty())
        return;
#ifdef Q_OS_WIN
    server.setSocketOptions(QLocalServer::UserAccessOption);
#endif
    connect(&server, &QLocalServer::newConnection, this, &HandoffListener::answerCalls);
    // What a crash has left there. Of a program that runs it cannot be: there is none but this one.
    QLocalServer::removeServer(place);
    server.listen(place);
}

void HandoffListener::answerCalls()
{
    while (auto *const caller = server.nextPendingConnection()) {
        // Of those who say nothing, the oldest has had the most time.
        if (callers.size() == mostCallers)
            callers.constFirst()->abort();
        callers << caller;
        // One byte more shows that there is more.
        caller->setReadBufferSize(HandoffMessage::longest + 1);
        connect(caller, &QLocalSocket::readyRead, this, [this, caller] { listenTo(caller); });
        connect(caller, &QLocalSocket::disconnected, this, [this, caller] { forget(caller); });
        QTimer::singleShot(patience, caller, &QLocalSocket::abort);
    }
}

void HandoffListener::listenTo(QLocalSocket *caller)
{
    const HandoffMessage message = HandoffMessage::read(caller->peek(caller->readBufferSize()));
    if (message.status == HandoffMessage::Status::Incomplete)
        return;
    caller->abort(); // before anything else: the other waits for it
    if (message.status == HandoffMessage::Status::Complete)
        emit startedAgain(message.boardPath);
}

void HandoffListener::forget(QLocalSocket *caller)
{
    callers.removeOne(caller);
    caller->deleteLater();
}

void handOff(const QString &boardPath)
{
    const QString place = handoffPlace();
    if (place.isEmpty())
        return;
    const QByteArray message = HandoffMessage::write(boardPath);
    const QDeadlineTimer deadline(patience);
    while (!send(message, place, deadline) && !deadline.hasExpired())
        QThread::msleep(betweenTries.count());
}
