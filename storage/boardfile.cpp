#include "storage/boardfile.h"

#include <QFile>
#include <QJsonDocument>

BoardFileContents readBoardFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {BoardFileContents::CannotOpen, {}};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject())
        return {BoardFileContents::NoBoard, {}};
    return {BoardFileContents::Read, document.object()};
}

BoardFileWriting writeBoardFile(const QString &path, const QJsonObject &document)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return BoardFileWriting::CannotOpen;
    const qint64 written = file.write(QJsonDocument(document).toJson(QJsonDocument::Indented));
    // A small board waits in the file's buffer: only with the flush does a full disk show.
    if (written <= 0 || !file.flush())
        return BoardFileWriting::WriteFailed;
    return BoardFileWriting::Written;
}
