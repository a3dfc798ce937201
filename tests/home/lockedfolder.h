// A folder from which nothing can be deleted.
#pragma once

#include "tests/support/system/limits.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

/// A folder from which nothing can be deleted for as long as the object lives, not even by an
/// administrator: the process steps down to a person without rights meanwhile. The folder must
/// hold the file \c keep.
class LockedFolder
{
public:
    LockedFolder(const QString &folder, const QString &keep)
#ifdef Q_OS_UNIX
        : lock(folder)
    {
        Q_UNUSED(keep);
    }
#else
        : open(folder + QLatin1Char('/') + keep, FILE_SHARE_READ)
    {
    }
#endif
    Q_DISABLE_COPY_MOVE(LockedFolder)

private:
#ifdef Q_OS_UNIX
    /// Takes the right to write away from everybody but an administrator.
    class Lock
    {
    public:
        explicit Lock(const QString &folder)
            : path(QFile::encodeName(folder))
        {
            // What root has made can be read by others all the way down.
            for (QDir dir(folder); dir.path().startsWith(QLatin1String("/tmp/")); dir.cdUp())
                ::chmod(QFile::encodeName(dir.path()).constData(), 0755);
            // As everybody's own boards, they belong to the one who deletes them.
            const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
            for (const QFileInfo &file : files)
                OrdinaryUser::give(file.filePath());
            ::chmod(path.constData(), 0555);
        }
        ~Lock() { ::chmod(path.constData(), 0755); }
        Q_DISABLE_COPY_MOVE(Lock)

    private:
        QByteArray path;
    };

    const Lock lock;
    const OrdinaryUser user; // gone before the lock is
#else
    const SharedFile open; // an open file cannot be deleted here
#endif
};
