#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

// Board files as the tests write and read them, without the program's own code for that.

namespace BoardFile {

inline QByteArray bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Creates or replaces the file \a path and returns the path.
inline QString write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test cannot write its file");
    return path;
}

inline QString write(const QString &path, const QJsonArray &items)
{
    return write(path, QJsonDocument(QJsonObject{{QStringLiteral("items"), items}}).toJson());
}

/// The "items" of the board file \a path.
inline QJsonArray items(const QString &path)
{
    return QJsonDocument::fromJson(bytes(path)).object().value(QStringLiteral("items")).toArray();
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
