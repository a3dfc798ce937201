// Saves a board, opens it and saves it again.
#include "tests/monkey/savedboard.h"

#include "board/boardgeometry.h"
#include "storage/boarddocument.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

/// An element of a document with the pixels in the place of a picture's file, which may tell more.
QByteArray valueOf(QJsonObject element)
{
    const auto data = element.find("imageData"_L1);
    if (data != element.end()) {
        const auto file = QByteArray::fromBase64(data.value().toString().toLatin1());
        const QImage image = QImage::fromData(file).convertToFormat(QImage::Format_ARGB32);
        const auto bytes = QByteArray::fromRawData(
            reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
        data.value() = u"%1x%2 %3"_s.arg(image.width()).arg(image.height()).arg(qHash(bytes, 0));
    }
    return QJsonDocument(element).toJson(QJsonDocument::Compact);
}

/// The elements of a document in an order of their own: kinds come to lie on other levels.
QList<QByteArray> valuesOf(const QByteArray &document)
{
    QList<QByteArray> values;
    const auto items = QJsonDocument::fromJson(document).object().value("items"_L1).toArray();
    for (const auto &item : items)
        values << valueOf(item.toObject());
    std::ranges::sort(values);
    return values;
}

QString difference(const QList<QByteArray> &one, const QList<QByteArray> &other)
{
    if (one == other)
        return {};
    const auto [a, b] = std::ranges::mismatch(one, other);
    const auto shown = [](const auto &list, auto place) {
        return place == list.end() ? u"nothing"_s : QString::fromUtf8(place->left(300));
    };
    return u"%1 elements and %2: %3 became %4"_s.arg(one.size())
        .arg(other.size())
        .arg(shown(one, a), shown(other, b));
}

} // namespace

QString lossOf(const QGraphicsScene &scene)
{
    return lossOf(scene, buildBoardDocument(scene));
}

QString lossOf(const QGraphicsScene &scene, const QByteArray &saved)
{
    const auto before = valuesOf(saved);
    const QString file = difference(valuesOf(buildBoardDocument(scene)), before);
    if (!file.isEmpty())
        return u"the file holds another board: "_s + file;

    QGraphicsScene reopened(BoardGeometry::board);
    for (auto &item : itemsOf(QJsonDocument::fromJson(saved).object()))
        reopened.addItem(item.release());
    return difference(before, valuesOf(buildBoardDocument(reopened)));
}
