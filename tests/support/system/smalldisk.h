// A disk that is soon full, on Linux.
#pragma once

#include <QFile>
#include <QString>

#include <sched.h>
#include <sys/mount.h>

/// Mounts a disk of \a bytes on a folder, for as long as the object lives and for this process
/// alone.
class SmallDisk
{
public:
    SmallDisk(const QString &path, int bytes)
        : folder(QFile::encodeName(path))
    {
        const QByteArray size = "size=" + QByteArray::number(bytes);
        mounted = ::unshare(CLONE_NEWNS) == 0
            && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
            && ::mount("none", folder.constData(), "tmpfs", 0, size.constData()) == 0;
    }
    ~SmallDisk()
    {
        if (mounted)
            ::umount2(folder.constData(), MNT_DETACH);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    /// Whether the disk is there. Only root may mount one, and not in every container.
    bool isMounted() const { return mounted; }

private:
    QByteArray folder;
    bool mounted = false;
};
