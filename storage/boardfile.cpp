// Reads and writes the file in which a board's document is kept.
#include "storage/boardfile.h"

#include <QFile>
#include <QJsonDocument>

BoardFileContents readDocument(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {BoardFileContents::Status::CannotOpen, {}};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject())
        return {BoardFileContents::Status::NoBoard, {}};
    return {BoardFileContents::Status::Read, document.object()};
}

BoardFileWriting writeDocument(const QString &path, const QByteArray &document)
{
    QFile file(path);
    // Quirk: a save whose writing fails leaves the file empty, because a board is written straight
    // into its file, without a temporary file, a backup or a lock.
    // Unbuffered, so that the write itself meets a full disk: a small board would otherwise wait in
    // the buffer and fail unseen when the file is closed.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return BoardFileWriting::CannotOpen;
    const qint64 written = file.write(document);
    // Quirk: a board that was written only in part counts as saved, because any number of bytes
    // above zero is taken for a success.
    return written > 0 ? BoardFileWriting::Written : BoardFileWriting::WriteFailed;
}
