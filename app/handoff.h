// Leads what starts once more to the program that runs already.
#pragma once

#include <QList>
#include <QLocalServer>
#include <QObject>

class QLocalSocket;

/// Listens for other starts of the program, for as long as it lives. Only the one instance may have one.
///
/// Whoever calls has two seconds to say all that there is to say, and 64 may do so at a time. What is no
/// message of ours ends the call and is passed over in silence. Where there is no place to listen, nobody
/// is heard.
class HandoffListener : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HandoffListener)

public:
    HandoffListener();
    ~HandoffListener() override = default;

signals:
    /// The program was started once more, with the board file \a boardPath, or with none.
    void startedAgain(const QString &boardPath);

private:
    void answerCalls();
    void listenTo(QLocalSocket *caller);
    void forget(QLocalSocket *caller);

    QList<QLocalSocket *> callers; // the oldest first
    QLocalServer server;
};

/// Tells the program that runs already to come to the front and to open \a boardPath, unless it is empty.
/// Tries for two seconds at most, in which that program may just have begun or hang.
void handOff(const QString &boardPath);
