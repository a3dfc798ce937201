// Board documents of the tests, and boards to and from them.
#pragma once

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "storage/boarddocument.h"

#include <QFile>
#include <QGraphicsScene>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPainterPath>
#include <QPen>

#include <memory>

/// The document \a name that the test carries in its resources.
inline QByteArray documentBytes(const QString &name)
{
    QFile file(QStringLiteral(":/%1.vtrz").arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The bytes of the board file for \a scene.
inline QByteArray bytesOf(const QGraphicsScene &scene)
{
    return buildBoardDocument(scene);
}

/// The elements in the board file for \a scene.
inline QJsonArray elementsOf(const QGraphicsScene &scene)
{
    return QJsonDocument::fromJson(bytesOf(scene))
        .object()
        .value(QStringLiteral("items"))
        .toArray();
}

/// The item that the element of the JSON text \a json describes.
inline std::unique_ptr<QGraphicsItem> itemFrom(const QByteArray &json)
{
    return itemFromElement(QJsonDocument::fromJson(json).object());
}

/// Adds the items of the document \a bytes to \a scene and returns whether it was one.
inline bool openDocument(QGraphicsScene &scene, const QByteArray &bytes)
{
    const auto document = QJsonDocument::fromJson(bytes);
    for (auto &item : itemsOf(document.object()))
        scene.addItem(item.release());
    return document.isObject();
}

/// A line that describes all that can be read from a file of \a item, for comparisons.
inline QString describe(const QGraphicsItem *item)
{
    const auto number = [](qreal value) { return QString::number(value, 'g', 17); };
    const auto place = [&](QPointF point) { return number(point.x()) + u' ' + number(point.y()); };
    const auto colorAndWidth = [](const QPen &pen) {
        const QColor color = pen.color();
        const QString name =
            color.isValid() ? color.name(QColor::HexArgb) : QStringLiteral("invalid");
        return QStringLiteral("%1 wide %2").arg(name).arg(pen.width());
    };

    QString text;
    if (const auto *note = dynamic_cast<const StickyNoteItem *>(item)) {
        text = QStringLiteral("note '%1' coloured %2").arg(note->getText()).arg(note->noteColor());
    } else if (const auto *stroke = dynamic_cast<const FreeDrawItem *>(item)) {
        text = QStringLiteral("stroke");
        const QPainterPath path = stroke->path();
        for (int i = 0; i < path.elementCount(); ++i) {
            const auto element = path.elementAt(i);
            text += u' ' + QString(u"MLCc"[element.type]) + place(element);
        }
        text += u' ' + colorAndWidth(stroke->QGraphicsPathItem::pen());
    } else if (const auto *arrow = dynamic_cast<const ArrowLineItem *>(item)) {
        text = QStringLiteral("arrow %1 to %2 %3")
                   .arg(place(arrow->line().p1()), place(arrow->line().p2()),
                        colorAndWidth(arrow->QGraphicsLineItem::pen()));
    } else if (const auto *image = dynamic_cast<const ResizablePixmapItem *>(item)) {
        text = QStringLiteral("image %1x%2")
                   .arg(image->pixmap().width())
                   .arg(image->pixmap().height());
    } else {
        return item ? QStringLiteral("something else") : QStringLiteral("nothing");
    }
    return text
        + QStringLiteral(" at %1, level %2").arg(place(item->pos()), number(item->zValue()));
}

/// The board items of \a scene, the lowest first.
inline QStringList describeAll(const QGraphicsScene &scene)
{
    QStringList lines;
    const auto items = scene.items(Qt::AscendingOrder);
    for (const auto *item : items) {
        if (!item->parentItem())
            lines << describe(item);
    }
    return lines;
}
