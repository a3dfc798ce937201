// Removes a folder with all it holds, and no more than that.
#include "home/removetree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/// Removes a file, also one that is write-protected, which Windows refuses at first.
bool removeFile(const QString &path)
{
    return QFile::remove(path)
        || (QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteUser)
            && QFile::remove(path));
}

} // namespace

bool removeTree(const QFileInfo &entry)
{
    const QString path = entry.filePath();
    if (!entry.exists() && !entry.isSymLink())
        return true; // gone meanwhile
    if (entry.isSymLink() || entry.isJunction())
        return QFile::remove(path) || QDir().rmdir(path); // a link to a folder is one to Windows
    if (!entry.isDir())
        return removeFile(path);

    const QFileInfoList entries = QDir(path).entryInfoList(QDir::AllEntries | QDir::Hidden
                                                           | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &child : entries)
        removeTree(child);
    return QDir().rmdir(path); // refused where anything is left
}
