#pragma once

#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

/// A folder from which nothing can be deleted for as long as the object lives, not even by an
/// administrator: the process steps down to a person without rights meanwhile. The folder must
/// hold the file \c keep.
class LockedFolder
{
public:
    LockedFolder(const QString &folder, const QString &keep)
#ifdef Q_OS_UNIX
        : path(QFile::encodeName(folder))
        , administrator(::geteuid() == 0)
    {
        Q_UNUSED(keep);
        if (administrator) {
            // Readable all the way down, but owned by someone else.
            for (QDir dir(folder); dir.path().startsWith(QLatin1String("/tmp/"));) {
                ::chmod(QFile::encodeName(dir.path()).constData(), 0755);
                if (!dir.cdUp())
                    break;
            }
        }
        ::chmod(path.constData(), 0555);
        if (administrator && ::seteuid(nobody) != 0)
            qFatal("Cannot step down.");
    }
    ~LockedFolder()
    {
        if (administrator && ::seteuid(0) != 0)
            qFatal("Cannot step up again.");
        ::chmod(path.constData(), 0755);
    }
#else
        : open(folder + QLatin1Char('/') + keep)
    {
        // An open file cannot be deleted here.
        if (!open.open(QIODevice::ReadOnly))
            qFatal("Cannot open the file to keep.");
    }
#endif
    Q_DISABLE_COPY_MOVE(LockedFolder)

private:
#ifdef Q_OS_UNIX
    static constexpr uid_t nobody = 65534;
    QByteArray path;
    bool administrator;
#else
    QFile open;
#endif
};
