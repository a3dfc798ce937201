// Locks a file in the temporary folder, for as long as the process lives or wants to.
#include "app/processlock.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

#ifdef Q_OS_UNIX

/// Calls \a function until no signal interrupts it.
template <typename Function> int untilDone(const Function &function)
{
    int result = function();
    while (result == -1 && errno == EINTR)
        result = function();
    return result;
}

/// Whether the open \a file is one of this person's. Where everybody may write, another person may
/// have put it there and never let go of it.
bool isOurs(int file)
{
    struct stat status = {};
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

/// Opens the file of the lock for \a purpose. It is made where it is missing, and it stays: nobody could
/// remove it without taking it from under those who wait for it.
int openLockFile(const QString &purpose)
{
    const QString path =
        u"%1/Plumara-%2.%3"_s.arg(QDir::tempPath(), QString::number(::geteuid()), purpose);
    const int file = untilDone([name = QFile::encodeName(path)] {
        return ::open(name.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                      S_IRUSR | S_IWUSR);
    });
    if (file == -1 || isOurs(file))
        return file;
    ::close(file);
    return -1;
}

void closeLockFile(int file)
{
    if (file != -1)
        ::close(file);
}

/// Whether nobody else has the lock \a file.
bool applyLock(int file, int operation)
{
    return untilDone([&] { return ::flock(file, operation); }) == 0 || errno != EWOULDBLOCK;
}

#else

constexpr int LOCK_EX = 0;
constexpr int LOCK_NB = 0;
constexpr int LOCK_UN = 0;

int openLockFile(const QString & /*purpose*/)
{
    return -1;
}

void closeLockFile(int /*file*/) { }

bool applyLock(int /*file*/, int /*operation*/)
{
    return true;
}

#endif

} // namespace

ProcessLock::ProcessLock(const QString &purpose)
    : file(openLockFile(purpose))
{ }

ProcessLock::~ProcessLock()
{
    closeLockFile(file);
}

// Whoever takes the lock changes something, though it is nothing in here.
// NOLINTBEGIN(readability-make-member-function-const)
void ProcessLock::lock()
{
    applyLock(file, LOCK_EX);
}

bool ProcessLock::tryLock()
{
    return applyLock(file, LOCK_EX | LOCK_NB);
}

void ProcessLock::unlock()
{
    applyLock(file, LOCK_UN);
}
// NOLINTEND(readability-make-member-function-const)
