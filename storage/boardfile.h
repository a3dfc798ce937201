// The file in which a board's document is kept.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// What became of reading a board file.
struct BoardFileContents
{
    enum class Status { Read, CannotOpen, NoBoard };

    Status status = Status::CannotOpen;
    /// The document, when it was read.
    QJsonObject document;
};

/// Reads the board file \a path. What is no regular file cannot be opened; anything that is no JSON
/// object is no board. Throws \c std::bad_alloc when there is not the memory for it.
BoardFileContents readDocument(const QString &path);

/// What became of writing a board file. After WriteFailed the file is empty, after CannotOpen it is
/// as it was.
enum class BoardFileWriting { Written, CannotOpen, WriteFailed };

/// Replaces the contents of the file \a path by the text \a document.
BoardFileWriting writeDocument(const QString &path, const QByteArray &document);
