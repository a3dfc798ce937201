// Loaded into the program ahead of the system's library: ends it with its input, and slows it down or
// kills it at the calls by which instances know of each other.

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <random>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

int variable(const char *name)
{
    const char *const value = std::getenv(name);
    return value ? std::atoi(value) : 0;
}

/// Counts a call, takes its time, and dies instead of making the call of the given number.
void beforeCall()
{
    static const int last = variable("INTERLOPER_LAST_CALL");
    static const auto delay = static_cast<useconds_t>(variable("INTERLOPER_DELAY"));
    static std::minstd_rand random(static_cast<unsigned>(::getpid()));
    static int calls = 0;
    if (++calls == last)
        ::kill(::getpid(), SIGKILL);
    // Now and then for long, so that starts meet which are not at the same step.
    if (delay > 0 && random() % 4 == 0)
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 8 * delay)(random));
}

/// Whether the file \a path is one by which instances know of each other.
bool isOurs(const char *path)
{
    return std::strstr(path, "/qipc_") || std::strstr(path, "/Plumara-");
}

/// Whether \a address is that of a socket by which instances talk to each other.
bool isOurs(const sockaddr *address)
{
    return address->sa_family == AF_UNIX
        && isOurs(
               static_cast<const char *>(reinterpret_cast<const sockaddr_un *>(address)->sun_path));
}

/// What the program would call without us. \a function is only there for its type.
template <typename Function> Function *real(Function * /*function*/, const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

/// The argument that may follow the flags of an open().
mode_t modeAfter(int flags, va_list arguments)
{
    return (flags & O_CREAT) ? va_arg(arguments, mode_t) : 0;
}

void endWithInput()
{
    auto *const notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(endWithInput)

// The system's headers name the parameters in their own way.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

int shmget(key_t key, size_t size, int flags) noexcept
{
    beforeCall();
    return real(&shmget, "shmget")(key, size, flags);
}

void *shmat(int id, const void *address, int flags) noexcept
{
    beforeCall();
    return real(&shmat, "shmat")(id, address, flags);
}

int shmdt(const void *address) noexcept
{
    beforeCall();
    return real(&shmdt, "shmdt")(address);
}

int shmctl(int id, int command, shmid_ds *status) noexcept
{
    beforeCall();
    return real(&shmctl, "shmctl")(id, command, status);
}

int semget(key_t key, int count, int flags) noexcept
{
    beforeCall();
    return real(&semget, "semget")(key, count, flags);
}

int semop(int id, sembuf *operations, size_t count)
{
    beforeCall();
    return real(&semop, "semop")(id, operations, count);
}

int semctl(int id, int number, int command, ...) noexcept
{
    beforeCall();
    va_list arguments;
    va_start(arguments, command);
    void *const value = va_arg(arguments, void *);
    va_end(arguments);
    return real(&semctl, "semctl")(id, number, command, value);
}

int flock(int file, int operation) noexcept
{
    beforeCall();
    return real(&flock, "flock")(file, operation);
}

int bind(int file, const sockaddr *address, socklen_t size) noexcept
{
    if (isOurs(address))
        beforeCall();
    return real(&bind, "bind")(file, address, size);
}

int listen(int file, int backlog) noexcept
{
    beforeCall();
    return real(&listen, "listen")(file, backlog);
}

int connect(int file, const sockaddr *address, socklen_t size)
{
    if (isOurs(address))
        beforeCall();
    return real(&connect, "connect")(file, address, size);
}

int unlink(const char *path) noexcept
{
    if (isOurs(path))
        beforeCall();
    return real(&unlink, "unlink")(path);
}

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeAfter(flags, arguments);
    va_end(arguments);
    if (isOurs(path))
        beforeCall();
    return real(&open, "open")(path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeAfter(flags, arguments);
    va_end(arguments);
    if (isOurs(path))
        beforeCall();
    return real(&open64, "open64")(path, flags, mode);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
