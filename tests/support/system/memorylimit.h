// Takes the memory away that the program has not asked for yet, on Linux.
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

/// Under the limit, the library for memory would look for room in the arenas of other threads,
/// which cannot grow, and stay with them. With one arena from the start, what is there can be had.
inline const int oneArena = mallopt(M_ARENA_MAX, 1);

/// For as long as it lives, the program can ask for no more than so many bytes beside those that it
/// has.
class MemoryLimit
{
public:
    explicit MemoryLimit(qint64 bytes)
    {
        getrlimit(RLIMIT_AS, &previous);
        limit(0);
        takeWhatWasFreed();
        limit(bytes);
    }
    ~MemoryLimit()
    {
        setrlimit(RLIMIT_AS, &previous);
        while (taken)
            std::free(std::exchange(taken, taken->next));
    }
    Q_DISABLE_COPY_MOVE(MemoryLimit)

    /// A sanitizer takes more memory than there is, and ends the program when it gets none.
    static constexpr bool isPossible()
    {
#ifdef __SANITIZE_ADDRESS__
        return false;
#else
        return true;
#endif
    }

private:
    struct Block
    {
        Block *next;
    };

    void limit(qint64 bytes) const
    {
        rlimit limit = previous;
        limit.rlim_cur = static_cast<rlim_t>(size() + bytes);
        setrlimit(RLIMIT_AS, &limit);
    }

    /// What was freed before and is kept for later would come on top.
    void takeWhatWasFreed()
    {
        constexpr std::size_t largest = 16 * 1024 * 1024;
        constexpr std::size_t smallest = 1024;
        for (std::size_t bytes = largest; bytes >= smallest; bytes /= 2) {
            while (auto *const block = static_cast<Block *>(std::malloc(bytes))) {
                block->next = taken;
                taken = block;
            }
        }
    }

    /// All that is mapped, in bytes.
    static qint64 size()
    {
        long pages = 0;
        auto *const file = std::fopen("/proc/self/statm", "r");
        if (!file || std::fscanf(file, "%ld", &pages) != 1)
            qFatal("The test cannot see how large it is");
        std::fclose(file);
        return qint64{pages} * sysconf(_SC_PAGESIZE);
    }

    rlimit previous{};
    Block *taken = nullptr;
};
