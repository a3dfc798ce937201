// Files as tests write and read them.
#pragma once

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

/// Creates or replaces the file \a path and the folders above it, dates it \a changed where that is
/// given, and returns the path.
inline QString writeFile(const QString &path, const QByteArray &content = "x",
                         const QDateTime &changed = {})
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test cannot write %s.", qPrintable(path));
    file.flush();
    if (changed.isValid() && !file.setFileTime(changed, QFileDevice::FileModificationTime))
        qFatal("The test cannot date %s.", qPrintable(path));
    return path;
}

/// Empty when there is no such file.
inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
