// Asks for memory ahead of work that does not bear to get none.
#pragma once

#include <QByteArray>

/// Throws \c std::bad_alloc unless \a bytes could be had just now.
///
/// Items, and what the toolkit does with them, do not look whether they get the many small pieces
/// that they ask for. So work that makes many of them asks for all at once beforehand.
inline void expectMemory(qint64 bytes)
{
    const QByteArray room(bytes, Qt::Uninitialized);
}
