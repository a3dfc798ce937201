// A message is a mark, the length of a path in bytes and the path itself.
#include "app/handoffmessage.h"

#include <QDataStream>
#include <QDir>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char mark[] = "Plumara\n";
constexpr qsizetype markSize = sizeof mark - 1;
constexpr qsizetype headSize = markSize + static_cast<qsizetype>(sizeof(quint32));
constexpr qsizetype longestPath = 32767 * static_cast<qsizetype>(sizeof(char16_t)); // of Windows

// Programs that were built with another version of the toolkit understand it, too.
constexpr auto streamVersion = QDataStream::Qt_6_0;

/// Whether a board could have that path. What begins with a colon would be something in the program
/// itself.
bool isPath(const QString &text)
{
    return QDir::isAbsolutePath(text) && !text.startsWith(u':') && !text.contains(QChar::Null);
}

} // namespace

const qsizetype HandoffMessage::longest = headSize + longestPath;

QByteArray HandoffMessage::write(const QString &boardPath)
{
    QByteArray bytes(mark, markSize);
    QDataStream stream(&bytes, QIODevice::Append);
    stream.setVersion(streamVersion);
    const auto size = boardPath.size() * static_cast<qsizetype>(sizeof(char16_t));
    stream << (size <= longestPath && isPath(boardPath) ? boardPath : u""_s);
    return bytes;
}

HandoffMessage HandoffMessage::read(const QByteArray &bytes)
{
    const QByteArray known = bytes.first(std::min(bytes.size(), markSize));
    if (!QByteArrayView(mark, markSize).startsWith(known))
        return {Status::Foreign, {}};
    if (bytes.size() < headSize)
        return {Status::Incomplete, {}};
    const qsizetype size = qFromBigEndian<quint32>(bytes.constData() + markSize);
    // What is too long, and what goes on behind its end, is not waited for.
    if (size > longestPath || size % 2 != 0 || bytes.size() > headSize + size)
        return {Status::Foreign, {}};
    if (bytes.size() < headSize + size)
        return {Status::Incomplete, {}};
    QDataStream stream(bytes.sliced(markSize));
    stream.setVersion(streamVersion);
    QString path;
    stream >> path;
    if (!path.isEmpty() && !isPath(path))
        return {Status::Foreign, {}};
    return {Status::Complete, path};
}
