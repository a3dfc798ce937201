// Writes a board file with strokes on it.
#include "bench/boardfile.h"

#include <QFile>
#include <QJsonDocument>

BoardFile::BoardFile(const Strokes &strokes)
{
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly)
        || file.write(QJsonDocument(documentOf(strokes.paths())).toJson()) <= 0) {
        qFatal("No board file could be written in the temporary folder.");
    }
}

QByteArray BoardFile::bytes() const
{
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
