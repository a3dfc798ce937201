#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

// Limits that the operating system puts on the program, for tests of what happens then.

/// For as long as it lives, no file can grow beyond \c bytes; writing further fails as on a full
/// disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &previous);
        handler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = previous;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &previous);
        std::signal(SIGXFSZ, handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit previous{};
    void (*handler)(int) = SIG_DFL;
};

/// For as long as it lives, permissions hold for the program even when it runs as root.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        if (previous == 0 && seteuid(nobody) != 0)
            qFatal("The test cannot become an ordinary user");
    }
    ~OrdinaryUser()
    {
        if (previous == 0 && seteuid(previous) != 0)
            qFatal("The test cannot become root again");
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    static constexpr uid_t nobody = 65534;
    const uid_t previous = geteuid();
};

/// A temporary folder in which any user may read and write.
class ReachableFolder
{
public:
    ReachableFolder()
        : folder(parent() + QStringLiteral("/plumara-XXXXXX"))
    {
        QFile::setPermissions(folder.path(), QFile::Permissions::fromInt(0x7777));
    }

    QString path(const QString &name) const { return folder.filePath(name); }

private:
    // What root has set as its temporary folder may lie where no other user comes.
    static QString parent() { return geteuid() == 0 ? QStringLiteral("/tmp") : QDir::tempPath(); }

    QTemporaryDir folder;
};
