#pragma once

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

/// Writes a file and the folders above it, and dates it \a changed.
inline void writeFile(const QString &path, const QByteArray &content = "x",
                      const QDateTime &changed = {})
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Cannot write %s.", qPrintable(path));
    file.flush();
    if (changed.isValid() && !file.setFileTime(changed, QFileDevice::FileModificationTime))
        qFatal("Cannot date %s.", qPrintable(path));
}
