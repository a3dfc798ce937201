// Board files as the tests write and read them, without the program's own code for that.
#pragma once

#include "tests/support/files/files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace BoardFile {

/// Saves a board of \a items as \a path, dates the file \a changed where that is given, and returns
/// the path. What is no board, or no whole one, is written with writeFile().
inline QString write(const QString &path, const QJsonArray &items = {},
                     const QDateTime &changed = {})
{
    const QJsonObject document{{QStringLiteral("items"), items}};
    return writeFile(path, QJsonDocument(document).toJson(), changed);
}

/// The "items" of the board file \a path.
inline QJsonArray items(const QString &path)
{
    return QJsonDocument::fromJson(readFile(path))
        .object()
        .value(QStringLiteral("items"))
        .toArray();
}

inline QJsonObject note(int x, int y, const QString &text = QStringLiteral("Idea"), int color = 0)
{
    return {{QStringLiteral("type"), QStringLiteral("postit")},
            {QStringLiteral("x"), x},
            {QStringLiteral("y"), y},
            {QStringLiteral("text"), text},
            {QStringLiteral("color"), color}};
}

inline QJsonObject arrow(int x1, int y1, int x2, int y2)
{
    return {{QStringLiteral("type"), QStringLiteral("arrow")},
            {QStringLiteral("x1"), x1},
            {QStringLiteral("y1"), y1},
            {QStringLiteral("x2"), x2},
            {QStringLiteral("y2"), y2},
            {QStringLiteral("color"), QStringLiteral("#ff0000")},
            {QStringLiteral("width"), 5}};
}

/// A straight stroke through the two points.
inline QJsonObject stroke(int x1, int y1, int x2, int y2)
{
    const auto point = [](int x, int y, int type) {
        return QJsonObject{
            {QStringLiteral("x"), x}, {QStringLiteral("y"), y}, {QStringLiteral("type"), type}};
    };
    return {{QStringLiteral("type"), QStringLiteral("freedraw")},
            {QStringLiteral("path"), QJsonArray{point(x1, y1, 0), point(x2, y2, 1)}},
            {QStringLiteral("penColor"), QStringLiteral("#0000ff")},
            {QStringLiteral("penWidth"), 7}};
}

/// \a png is a picture in the PNG format.
inline QJsonObject image(int x, int y, const QByteArray &png)
{
    return {{QStringLiteral("type"), QStringLiteral("image")},
            {QStringLiteral("x"), x},
            {QStringLiteral("y"), y},
            {QStringLiteral("imageData"), QString::fromLatin1(png.toBase64())}};
}

} // namespace BoardFile
