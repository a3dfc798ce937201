// Stands between the toolkit and the system where the toolkit asks for the time and waits for it.
#include "tests/support/system/virtualclock.h"

#ifndef Q_OS_WIN

#include <poll.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <ctime>

namespace {

constexpr int64_t second = 1'000'000'000; // ns
constexpr int64_t millisecond = 1'000'000; // ns

bool running = false;
pthread_t living; // the thread that lives by it
int64_t now = 0; // ns

bool isLivedBy()
{
    return running && pthread_equal(pthread_self(), living) != 0;
}

int64_t inNanoseconds(const timespec &time)
{
    return time.tv_sec * second + time.tv_nsec;
}

int readSystemClock(clockid_t clock, timespec *time)
{
    return static_cast<int>(syscall(SYS_clock_gettime, clock, time));
}

int wait(pollfd *descriptors, nfds_t count, const timespec *longest, const sigset_t *mask)
{
    // The system writes the rest of the time there.
    timespec rest = longest ? *longest : timespec{};
    constexpr size_t signalBytes = 8; // of the system's own set
    return static_cast<int>(
        syscall(SYS_ppoll, descriptors, count, longest ? &rest : nullptr, mask, signalBytes));
}

/// Waits by the virtual clock: until something happens that is no timer, or no time at all.
int skip(pollfd *descriptors, nfds_t count, const timespec &longest, const sigset_t *mask)
{
    const timespec none{};
    const int ready = wait(descriptors, count, &none, mask);
    if (ready == 0)
        now += inNanoseconds(longest);
    return ready;
}

} // namespace

void VirtualClock::begin()
{
    timespec time{};
    readSystemClock(CLOCK_MONOTONIC, &time);
    // The toolkit rounds when its timers are due to parts of a second.
    now = (time.tv_sec + 1) * second;
    living = pthread_self();
    running = true;
}

void VirtualClock::advance(int milliseconds)
{
    now += milliseconds * millisecond;
}

// The system's headers name the parameters in their own way.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
// Found before the functions of the C library, by the toolkit's libraries too.
extern "C" {

int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    if (!isLivedBy() || (clock != CLOCK_MONOTONIC && clock != CLOCK_MONOTONIC_COARSE))
        return readSystemClock(clock, time);
    *time = {now / second, now % second};
    return 0;
}

int ppoll(pollfd *descriptors, nfds_t count, const timespec *longest, const sigset_t *mask)
{
    if (!isLivedBy() || !longest)
        return wait(descriptors, count, longest, mask);
    return skip(descriptors, count, *longest, mask);
}

int poll(pollfd *descriptors, nfds_t count, int longest)
{
    const timespec time{longest / 1000, longest % 1000 * millisecond};
    return ppoll(descriptors, count, longest < 0 ? nullptr : &time, nullptr);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

#else

void VirtualClock::begin() { }

void VirtualClock::advance(int /*milliseconds*/) { }

#endif
