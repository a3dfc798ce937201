// Reads and writes the file in which a board's document is kept.
#include "storage/boardfile.h"

#include "storage/memory.h"
#include "storage/plainfile.h"

#include <QFile>
#include <QJsonDocument>

#include <algorithm>

namespace {

/// Whether the beginning of \a file may be that of a JSON object. So a film that is opened by
/// mistake is refused at once, before gigabytes of it are read.
bool mayHoldObject(QFile &file)
{
    constexpr qint64 beginning = 4096; // bytes
    QByteArray bytes = file.peek(beginning);
    if (bytes.startsWith("\xef\xbb\xbf"))
        bytes.remove(0, 3); // the mark of UTF-8, which the parser passes over
    const auto *const first = std::ranges::find_if_not(
        bytes, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
    return first == bytes.cend() || *first == '{';
}

/// About as many bytes as the parser takes for what \a text says, and rather more than fewer: it ends the
/// program where it gets none for one of the many small pieces.
qint64 expectedMemory(const QByteArray &text)
{
    // An object or an array, with the lists of its values and of its strings.
    constexpr qint64 bytesPerContainer = 160;
    // A value or a name, in a list that grows to twice its size and is copied when it does.
    constexpr qint64 bytesPerEntry = 48;
    // Of strings, which are taken out of their marks before they are kept.
    constexpr qint64 bytesPerCharacter = 4;
    const qint64 containers = text.count('{') + text.count('[');
    const qint64 entries = containers + text.count(',') + text.count(':');
    return containers * bytesPerContainer + entries * bytesPerEntry
        + text.size() * bytesPerCharacter;
}

} // namespace

BoardFileContents readDocument(const QString &path)
{
    QFile file;
    if (!openForReading(file, path))
        return {BoardFileContents::Status::CannotOpen, {}};
    if (!mayHoldObject(file))
        return {BoardFileContents::Status::NoBoard, {}};
    const QByteArray text = file.readAll();
    expectMemory(expectedMemory(text));
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        return {BoardFileContents::Status::NoBoard, {}};
    return {BoardFileContents::Status::Read, document.object()};
}

BoardFileWriting writeDocument(const QString &path, const QByteArray &document)
{
    QFile file;
    // Quirk: a save whose writing fails leaves the file empty, because a board is written straight
    // into its file, without a temporary file, a backup or a lock.
    // Unbuffered, so that the write itself meets a full disk: a small board would otherwise wait in
    // the buffer and fail unseen when the file is closed.
    if (!openForWriting(file, path))
        return BoardFileWriting::CannotOpen;
    const qint64 written = file.write(document);
    // Quirk: a board that was written only in part counts as saved, because any number of bytes
    // above zero is taken for a success.
    return written > 0 ? BoardFileWriting::Written : BoardFileWriting::WriteFailed;
}
