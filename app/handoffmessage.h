// What a start of the program tells the one that runs already.
#pragma once

#include <QByteArray>
#include <QString>

/// A message that names a board to be opened, or none. It says nothing else, and nothing else is done
/// for it.
struct HandoffMessage
{
    enum class Status {
        Incomplete, ///< the beginning of a message
        Foreign, ///< none of ours
        Complete
    };

    Status status = Status::Foreign;
    /// The absolute path of the board, when the message is complete; empty when it names none.
    QString boardPath;

    /// No message is longer, in bytes.
    static const qsizetype longest;

    /// The bytes of a message that names the board \a boardPath. A path that no system can have is left
    /// out.
    static QByteArray write(const QString &boardPath);
    /// Reads \a bytes, which are all that has come so far.
    static HandoffMessage read(const QByteArray &bytes);
};
