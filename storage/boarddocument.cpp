// Makes a board's document out of its items, and items out of a document.
#include "storage/boarddocument.h"

#include "items/boarditems.h"

#include <QBuffer>
#include <QGraphicsScene>
#include <QJsonArray>
#include <QPen>

#include <optional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto elementsKey = "items"_L1;
constexpr auto kindKey = "type"_L1;

constexpr const char *imageFormat = "PNG";

QPointF pointOf(const QJsonObject &object, QLatin1StringView x, QLatin1StringView y)
{
    return {object.value(x).toDouble(), object.value(y).toDouble()};
}

QColor colorOf(const QJsonObject &object, QLatin1StringView key)
{
    return QColor::fromString(object.value(key).toString());
}

QJsonArray pointsOf(const QPainterPath &path)
{
    QJsonArray points;
    for (int i = 0; i < path.elementCount(); ++i) {
        const auto element = path.elementAt(i);
        points.append(QJsonObject{
            {"x"_L1, element.x}, {"y"_L1, element.y}, {"type"_L1, static_cast<int>(element.type)}});
    }
    return points;
}

// Quirk: a curve in a file comes back as straight pieces, because every point that does not move
// the pen draws a line; the program itself draws no curves.
QPainterPath pathOf(const QJsonArray &points)
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

/// How a class of items stands in a document. Each class has
///   kind        its name there
///   z           the z value of an opened item
///   toJson()    the element of an item, without its kind; none when the item is not stored
///   fromJson()  the item that an element describes
// Quirk: an opened board stacks strokes above notes and arrows above strokes, because a file holds
// no levels and each kind has one; boards that exist have always been shown so.
template <typename Item> struct Element;

template <> struct Element<StickyNoteItem>
{
    static constexpr auto kind = "postit"_L1;
    static constexpr qreal z = 1.0;

    static std::optional<QJsonObject> toJson(const StickyNoteItem &note)
    {
        return QJsonObject{{"x"_L1, note.pos().x()},
                           {"y"_L1, note.pos().y()},
                           {"text"_L1, note.getText()},
                           {"color"_L1, static_cast<int>(note.noteColor())}};
    }
    static std::unique_ptr<QGraphicsItem> fromJson(const QJsonObject &element)
    {
        auto note = std::make_unique<StickyNoteItem>();
        note->setPos(pointOf(element, "x"_L1, "y"_L1));
        note->setText(element.value("text"_L1).toString());
        note->setNoteColor(
            static_cast<StickyNoteItem::NoteColor>(element.value("color"_L1).toInt()));
        return note;
    }
};

template <> struct Element<FreeDrawItem>
{
    static constexpr auto kind = "freedraw"_L1;
    static constexpr qreal z = 2.0;

    static std::optional<QJsonObject> toJson(const QGraphicsPathItem &stroke)
    {
        const QPainterPath path = stroke.path();
        if (path.isEmpty())
            return std::nullopt;
        const QPen pen = stroke.pen();
        // Quirk: a transparent colour comes back opaque, because a file holds red, green and blue
        // in six digits.
        return QJsonObject{{"path"_L1, pointsOf(path)},
                           {"penColor"_L1, pen.color().name()},
                           {"penWidth"_L1, pen.width()}};
    }
    static std::unique_ptr<QGraphicsItem> fromJson(const QJsonObject &element)
    {
        auto stroke = std::make_unique<FreeDrawItem>();
        stroke->setPath(pathOf(element.value("path"_L1).toArray()));
        stroke->setColor(colorOf(element, "penColor"_L1));
        stroke->setWidth(element.value("penWidth"_L1).toInt());
        return stroke;
    }
};

template <> struct Element<ArrowLineItem>
{
    static constexpr auto kind = "arrow"_L1;
    static constexpr qreal z = 3.0;

    // Quirk: a dragged arrow is stored where it was drawn, because a file holds an arrow's line and
    // not the place of its item.
    static std::optional<QJsonObject> toJson(const QGraphicsLineItem &arrow)
    {
        const QLineF line = arrow.line();
        const QPen pen = arrow.pen();
        return QJsonObject{{"x1"_L1, line.x1()},
                           {"y1"_L1, line.y1()},
                           {"x2"_L1, line.x2()},
                           {"y2"_L1, line.y2()},
                           {"color"_L1, pen.color().name()},
                           {"width"_L1, pen.width()}};
    }
    static std::unique_ptr<QGraphicsItem> fromJson(const QJsonObject &element)
    {
        auto arrow = std::make_unique<ArrowLineItem>(pointOf(element, "x1"_L1, "y1"_L1),
                                                     pointOf(element, "x2"_L1, "y2"_L1));
        QPen pen(colorOf(element, "color"_L1));
        // Quirk: an opened arrow has square ends where a drawn one has round ones, because a file
        // holds colour and width only and the rest of the pen is the toolkit's default.
        pen.setWidth(element.value("width"_L1).toInt());
        // Quirk: the first change of an opened arrow from its menu starts from a black pen of width
        // 2, because the file's pen goes to the toolkit's item, past the arrow's own.
        static_cast<QGraphicsLineItem &>(*arrow).setPen(pen);
        return arrow;
    }
};

template <> struct Element<ResizablePixmapItem>
{
    static constexpr auto kind = "image"_L1;
    static constexpr qreal z = 0.0;

    static std::optional<QJsonObject> toJson(const QGraphicsPixmapItem &image)
    {
        // Quirk: a picture that was made smaller cannot be enlarged sharply after an opening,
        // because the file holds it as it is shown and not as it was inserted.
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.pixmap().save(&buffer, imageFormat);
        return QJsonObject{{"x"_L1, image.pos().x()},
                           {"y"_L1, image.pos().y()},
                           {"imageData"_L1, QString::fromLatin1(bytes.toBase64())}};
    }
    static std::unique_ptr<QGraphicsItem> fromJson(const QJsonObject &element)
    {
        const auto bytes =
            QByteArray::fromBase64(element.value("imageData"_L1).toString().toLatin1());
        QPixmap pixmap;
        // Quirk: a damaged picture opens as an empty image at its place, because it must not cost
        // the rest of the board.
        pixmap.loadFromData(bytes, imageFormat);
        auto image = std::make_unique<ResizablePixmapItem>(pixmap);
        image->setPos(pointOf(element, "x"_L1, "y"_L1));
        return image;
    }
};

/// The element of \a item, which stands in the document as the class \c Item does.
template <typename Item, typename Written> std::optional<QJsonObject> elementAs(const Written &item)
{
    auto element = Element<Item>::toJson(item);
    if (element)
        element->insert(kindKey, Element<Item>::kind);
    return element;
}

std::optional<QJsonObject> elementOf(const QGraphicsItem *item)
{
    std::optional<QJsonObject> element;
    const bool known = visitBoardItem(item, [&element]<typename Item>(const Item &boardItem) {
        element = elementAs<Item>(boardItem);
    });
    if (known)
        return element;
    // Quirk: a bare path, line or picture of the toolkit is stored as well, because a file goes by
    // the toolkit's types of items; the program itself puts none on a board.
    if (const auto *path = qgraphicsitem_cast<const QGraphicsPathItem *>(item))
        return elementAs<FreeDrawItem>(*path);
    if (const auto *line = qgraphicsitem_cast<const QGraphicsLineItem *>(item))
        return elementAs<ArrowLineItem>(*line);
    if (const auto *picture = qgraphicsitem_cast<const QGraphicsPixmapItem *>(item))
        return elementAs<ResizablePixmapItem>(*picture);
    return std::nullopt;
}

} // namespace

QJsonObject buildBoardDocument(const QGraphicsScene &scene)
{
    QJsonArray elements;
    const auto items = scene.items(Qt::DescendingOrder);
    for (const auto *item : items) {
        if (const auto element = elementOf(item))
            elements.append(*element);
    }
    return {{elementsKey, elements}};
}

std::vector<std::unique_ptr<QGraphicsItem>> itemsOf(const QJsonObject &document)
{
    std::vector<std::unique_ptr<QGraphicsItem>> items;
    const QJsonArray elements = document.value(elementsKey).toArray();
    for (const auto &element : elements) {
        if (auto item = itemFromElement(element.toObject()))
            items.push_back(std::move(item));
    }
    return items;
}

std::unique_ptr<QGraphicsItem> itemFromElement(const QJsonObject &element)
{
    std::unique_ptr<QGraphicsItem> item;
    const QString kind = element.value(kindKey).toString();
    findBoardItemClass([&]<typename Item>(std::type_identity<Item>) {
        if (kind != Element<Item>::kind)
            return false;
        item = Element<Item>::fromJson(element);
        item->setZValue(Element<Item>::z);
        return true;
    });
    return item;
}
