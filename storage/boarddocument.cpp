#include "storage/boarddocument.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"

#include <QBuffer>
#include <QGraphicsScene>
#include <QPen>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

// An opened board stacks its items by kind, unlike one that is being drawn: strokes come to lie
// above notes, arrows above strokes. This is wanted.
namespace OpenedZ {
constexpr qreal image = 0.0;
constexpr qreal note = 1.0;
constexpr qreal stroke = 2.0;
constexpr qreal arrow = 3.0;
} // namespace OpenedZ

constexpr auto elementsKey = "items"_L1;

constexpr const char *imageFormat = "PNG";

QJsonObject noteElement(const StickyNoteItem &note)
{
    return {{"type"_L1, "postit"_L1},
            {"x"_L1, note.pos().x()},
            {"y"_L1, note.pos().y()},
            {"text"_L1, note.getText()},
            {"color"_L1, static_cast<int>(note.noteColor())}};
}

QJsonObject strokeElement(const QGraphicsPathItem &stroke)
{
    const QPainterPath path = stroke.path();
    QJsonArray points;
    for (int i = 0; i < path.elementCount(); ++i) {
        const auto element = path.elementAt(i);
        points.append(QJsonObject{
            {"x"_L1, element.x}, {"y"_L1, element.y}, {"type"_L1, static_cast<int>(element.type)}});
    }
    const QPen pen = stroke.pen();
    return {{"type"_L1, "freedraw"_L1},
            {"path"_L1, points},
            {"penColor"_L1, pen.color().name()},
            {"penWidth"_L1, pen.width()}};
}

/// The line alone, not the item's position: a dragged arrow is stored where it was drawn. This is
/// wanted.
QJsonObject arrowElement(const QGraphicsLineItem &arrow)
{
    const QLineF line = arrow.line();
    const QPen pen = arrow.pen();
    return {{"type"_L1, "arrow"_L1},  {"x1"_L1, line.x1()}, {"y1"_L1, line.y1()},
            {"x2"_L1, line.x2()},     {"y2"_L1, line.y2()}, {"color"_L1, pen.color().name()},
            {"width"_L1, pen.width()}};
}

QJsonObject imageElement(const QGraphicsPixmapItem &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.pixmap().save(&buffer, imageFormat);
    return {{"type"_L1, "image"_L1},
            {"x"_L1, image.pos().x()},
            {"y"_L1, image.pos().y()},
            {"imageData"_L1, QString::fromLatin1(bytes.toBase64())}};
}

std::optional<QJsonObject> elementOf(const QGraphicsItem &item)
{
    if (const auto *note = dynamic_cast<const StickyNoteItem *>(&item))
        return noteElement(*note);
    switch (item.type()) {
    case QGraphicsPathItem::Type: {
        const auto &stroke = static_cast<const QGraphicsPathItem &>(item);
        return stroke.path().isEmpty() ? std::nullopt : std::optional(strokeElement(stroke));
    }
    case QGraphicsLineItem::Type:
        return arrowElement(static_cast<const QGraphicsLineItem &>(item));
    case QGraphicsPixmapItem::Type:
        return imageElement(static_cast<const QGraphicsPixmapItem &>(item));
    default:
        return std::nullopt;
    }
}

QPointF pointOf(const QJsonObject &object, QLatin1StringView x, QLatin1StringView y)
{
    return {object.value(x).toDouble(), object.value(y).toDouble()};
}

QColor colorOf(const QJsonObject &object, QLatin1StringView key)
{
    return QColor::fromString(object.value(key).toString());
}

std::unique_ptr<QGraphicsItem> noteFrom(const QJsonObject &element)
{
    auto note = std::make_unique<StickyNoteItem>();
    note->setPos(pointOf(element, "x"_L1, "y"_L1));
    note->setText(element.value("text"_L1).toString());
    note->setNoteColor(static_cast<StickyNoteItem::NoteColor>(element.value("color"_L1).toInt()));
    note->setZValue(OpenedZ::note);
    return note;
}

/// Every element but the moves becomes a line to its point, those of curves too.
QPainterPath pathFrom(const QJsonArray &points)
{
    QPainterPath path;
    bool first = true;
    for (const auto &value : points) {
        const QJsonObject object = value.toObject();
        const QPointF point = pointOf(object, "x"_L1, "y"_L1);
        if (first || object.value("type"_L1).toInt() == QPainterPath::MoveToElement)
            path.moveTo(point);
        else
            path.lineTo(point);
        first = false;
    }
    return path;
}

std::unique_ptr<QGraphicsItem> strokeFrom(const QJsonObject &element)
{
    auto stroke = std::make_unique<FreeDrawItem>();
    stroke->setPath(pathFrom(element.value("path"_L1).toArray()));
    stroke->setColor(colorOf(element, "penColor"_L1));
    stroke->setWidth(element.value("penWidth"_L1).toInt());
    stroke->setZValue(OpenedZ::stroke);
    return stroke;
}

std::unique_ptr<QGraphicsItem> arrowFrom(const QJsonObject &element)
{
    auto arrow = std::make_unique<ArrowLineItem>(pointOf(element, "x1"_L1, "y1"_L1),
                                                 pointOf(element, "x2"_L1, "y2"_L1));
    QPen pen(colorOf(element, "color"_L1));
    pen.setWidth(element.value("width"_L1).toInt());
    // Past the arrow's own pen: a change from its menu starts from the default pen. This is
    // wanted.
    static_cast<QGraphicsLineItem &>(*arrow).setPen(pen);
    arrow->setZValue(OpenedZ::arrow);
    return arrow;
}

std::unique_ptr<QGraphicsItem> imageFrom(const QJsonObject &element)
{
    const auto bytes = QByteArray::fromBase64(element.value("imageData"_L1).toString().toLatin1());
    QPixmap pixmap;
    // Bytes that are no picture leave an empty image at its place, so that the board opens.
    pixmap.loadFromData(bytes, imageFormat);
    auto image = std::make_unique<ResizablePixmapItem>(pixmap);
    image->setPos(pointOf(element, "x"_L1, "y"_L1));
    image->setZValue(OpenedZ::image);
    return image;
}

struct Reader
{
    QLatin1StringView kind;
    std::unique_ptr<QGraphicsItem> (*read)(const QJsonObject &element);
};

constexpr Reader readers[] = {
    {"postit"_L1, noteFrom},
    {"freedraw"_L1, strokeFrom},
    {"arrow"_L1, arrowFrom},
    {"image"_L1, imageFrom},
};

} // namespace

QJsonObject buildBoardDocument(const QGraphicsScene &scene)
{
    QJsonArray elements;
    const auto items = scene.items(Qt::DescendingOrder);
    for (const auto *item : items) {
        if (const auto element = elementOf(*item))
            elements.append(*element);
    }
    return {{elementsKey, elements}};
}

QJsonArray elementsOf(const QJsonObject &document)
{
    return document.value(elementsKey).toArray();
}

std::unique_ptr<QGraphicsItem> itemFromElement(const QJsonObject &element)
{
    const QString type = element.value("type"_L1).toString();
    for (const auto &reader : readers) {
        if (type == reader.kind)
            return reader.read(element);
    }
    return nullptr;
}
