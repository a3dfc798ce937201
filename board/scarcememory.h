// Work for which there may not be enough memory.
#pragma once

#include "storage/memory.h"

#include <QByteArray>

#include <new>

/// Does \a work. Returns false when there is not the memory for it: then it ended where it was, and
/// what it had asked for is free again.
template <typename Work> bool fitsInMemory(const Work &work)
{
    constexpr qsizetype megabyte = qsizetype(1024) * 1024;
    try {
        // Kept back, so that what is left is enough to say so and to go on with the board.
        const QByteArray reserve(4 * megabyte, Qt::Uninitialized);
        // For what is small beside the work, such as the list of all items.
        expectMemory(8 * megabyte);
        work();
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}
