// Work for which there may not be enough memory.
#pragma once

#include <QByteArray>

#include <new>

/// Does \a work. Returns false when there is not the memory for it: then it ended where it was, and what
/// it had asked for is free again.
template <typename Work> bool fitsInMemory(const Work &work)
{
    // Kept back, so that what is left is enough to say so and to go on with the board.
    constexpr qsizetype reserved = qsizetype(4) * 1024 * 1024;
    try {
        const QByteArray reserve(reserved, Qt::Uninitialized);
        work();
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}
