// How much memory the program has asked for and not given back.
#pragma once

#include <QtGlobal>

#include <optional>

#ifdef __GLIBC__
#include <malloc.h>
#endif

/// The bytes that are allocated at present; none where nobody counts them, as under a sanitizer.
inline std::optional<qint64> heapSize()
{
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 33)
    const auto info = mallinfo2();
    if (info.uordblks > 0)
        return static_cast<qint64>(info.uordblks + info.hblkhd);
#endif
    return std::nullopt;
}
