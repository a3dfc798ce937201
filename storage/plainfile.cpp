// Tells regular files from devices, pipes and folders, without waiting for any of them.
#include "storage/plainfile.h"

#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

constexpr QIODevice::OpenMode writing =
    QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered;

#ifdef Q_OS_UNIX

constexpr mode_t ofNewFiles = 0666; // less what the person's mask takes away

/// The kind of an open file, as the bits of its mode that say it.
mode_t kindOf(int descriptor)
{
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 ? status.st_mode & S_IFMT : 0;
}

/// Opens \a file on \a path where it is of a kind that \a accepts. The name may stand for something
/// else by now than when it was looked at; so what is open is looked at, and the system is told to
/// wait for nobody while it opens it.
template <typename Accepts>
bool openKind(QFile &file, const QString &path, int flags, QIODevice::OpenMode mode,
              const Accepts &accepts)
{
    const QByteArray name = QFile::encodeName(path);
    int descriptor = -1;
    do {
        descriptor =
            ::open(name.constData(), flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, ofNewFiles);
    } while (descriptor == -1 && errno == EINTR);
    if (descriptor == -1)
        return false;
    if (accepts(kindOf(descriptor)) && file.open(descriptor, mode, QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return false;
}

#endif

} // namespace

bool openForReading(QFile &file, const QString &path)
{
    // To open some devices is to have them do something.
    if (!QFileInfo(path).isFile())
        return false;
#ifdef Q_OS_UNIX
    return openKind(file, path, O_RDONLY, QIODevice::ReadOnly,
                    [](mode_t kind) { return kind == S_IFREG; });
#else
    file.setFileName(path);
    return file.open(QIODevice::ReadOnly);
#endif
}

bool openForWriting(QFile &file, const QString &path)
{
#ifdef Q_OS_UNIX
    return openKind(file, path, O_WRONLY | O_CREAT | O_TRUNC, writing,
                    [](mode_t kind) { return kind != S_IFIFO; });
#else
    file.setFileName(path);
    return file.open(writing);
#endif
}
