// The limits of limits.h on Unix.
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

class FileSizeLimit
{
public:
    explicit FileSizeLimit(qint64 bytes)
    {
        getrlimit(RLIMIT_FSIZE, &previous);
        handler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = previous;
        limit.rlim_cur = static_cast<rlim_t>(bytes);
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

    /// Makes the file \a path that user's.
    static void give(const QString &path)
    {
        if (geteuid() == 0 && ::chown(QFile::encodeName(path).constData(), nobody, nobody) != 0)
            qFatal("The test cannot give its file away");
    }

private:
    static constexpr uid_t nobody = 65534;
    const uid_t previous = geteuid();
};

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

/// A file of which the program may do no more than \c permissions say.
class RestrictedFile
{
public:
    RestrictedFile(const QString &path, QFile::Permissions permissions)
        : restricted(QFile::setPermissions(path, permissions))
    {
        if (!restricted)
            qFatal("The test cannot take the permissions of its file away");
    }
    Q_DISABLE_COPY_MOVE(RestrictedFile)

private:
    const bool restricted; // while the process still may
    const OrdinaryUser user;
};

class UnreadableFile : public RestrictedFile
{
public:
    explicit UnreadableFile(const QString &path)
        : RestrictedFile(path, {})
    { }
};

class UnwritableFile : public RestrictedFile
{
public:
    explicit UnwritableFile(const QString &path)
        : RestrictedFile(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther)
    { }
};
