// Makes a board's document out of its items, and items out of a document.
#include "storage/boarddocument.h"

#include "items/boarditems.h"
#include "storage/jsontext.h"
#include "storage/memory.h"

#include <QBuffer>
#include <QGraphicsScene>
#include <QImageReader>
#include <QJsonArray>
#include <QPen>

#include <algorithm>
#include <new>
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

/// Appends the points of \a path as members of the array "path" of a stroke. There are many times
/// more of them than of anything else; so they get their text without an object for each.
void appendPoints(QByteArray &text, const QPainterPath &path)
{
    for (int i = 0; i < path.elementCount(); ++i) {
        const auto element = path.elementAt(i);
        text += i == 0 ? "\n                {\n                    \"type\": "
                       : ",\n                {\n                    \"type\": ";
        text += static_cast<char>('0' + element.type);
        text += ",\n                    \"x\": ";
        appendNumber(text, element.x);
        text += ",\n                    \"y\": ";
        appendNumber(text, element.y);
        text += "\n                }";
    }
    text += "\n            ";
}

// Quirk: a curve in a file comes back as straight pieces, because every point that does not move
// the pen draws a line; the program itself draws no curves.
QPainterPath pathOf(const QJsonArray &points)
{
    QPainterPath path;
    path.reserve(static_cast<int>(points.size()));
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

/// Throws \c std::bad_alloc when it is for want of memory that the picture in \a bytes cannot be
/// shown. Taken for a damaged one, it would be lost when the board is saved.
void expectMemoryForPicture(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    const QSize size = QImageReader(&buffer, imageFormat).size();
    const qint64 pixels = qint64{size.width()} * size.height() * qint64{sizeof(QRgb)};
    if (pixels <= 0 || pixels > qint64{QImageReader::allocationLimit()} * 1024 * 1024)
        return; // the toolkit refuses more
    // It is unpacked and then converted, with some work beside.
    constexpr qint64 work = qint64{1024} * 1024;
    expectMemory(2 * pixels + work);
}

/// How a class of items stands in a document. Each class has
///   kind        its name there
///   z           the z value of an opened item
///   size()      about how many bytes the text of an item's element takes
///   memory      about how many bytes an item takes beside what its element holds, or more
///   toJson()    the element of an item, without its kind and its points; none when the item is not
///               stored
///   fromJson()  the item that an element describes
// Quirk: an opened board stacks strokes above notes and arrows above strokes, because a file holds
// no levels and each kind has one; boards that exist have always been shown so.
template <typename Item> struct Element;

template <> struct Element<StickyNoteItem>
{
    static constexpr auto kind = "postit"_L1;
    static constexpr qreal z = 1.0;
    static constexpr qint64 memory = qint64(32) * 1024;

    static qint64 size(const StickyNoteItem &) { return 400; }
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
    static constexpr qint64 memory = qint64(4) * 1024;

    static qint64 size(const QGraphicsPathItem &stroke)
    {
        return 150 + 150 * qint64{stroke.path().elementCount()};
    }
    static std::optional<QJsonObject> toJson(const QGraphicsPathItem &stroke)
    {
        if (stroke.path().isEmpty())
            return std::nullopt;
        const QPen pen = stroke.pen();
        // Quirk: a transparent colour comes back opaque, because a file holds red, green and blue
        // in six digits.
        return QJsonObject{{"path"_L1, QJsonArray()},
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
    static constexpr qint64 memory = qint64(4) * 1024;

    static qint64 size(const QGraphicsLineItem &) { return 250; }
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
    static constexpr qint64 memory = qint64(4) * 1024;

    static qint64 size(const QGraphicsPixmapItem &image)
    {
        // Photographs take more and drawings less than a byte a pixel.
        const QSize pixels = image.pixmap().size();
        return 200 + qint64{pixels.width()} * pixels.height();
    }
    static std::optional<QJsonObject> toJson(const QGraphicsPixmapItem &image)
    {
        // Quirk: a picture that was made smaller cannot be enlarged sharply after an opening,
        // because the file holds it as it is shown and not as it was inserted.
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        // A picture that is there can always be written, but for want of memory.
        if (!image.pixmap().save(&buffer, imageFormat) && !image.pixmap().isNull())
            throw std::bad_alloc();
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
        if (!pixmap.loadFromData(bytes, imageFormat))
            expectMemoryForPicture(bytes);
        auto image = std::make_unique<ResizablePixmapItem>(pixmap);
        image->setPos(pointOf(element, "x"_L1, "y"_L1));
        return image;
    }
};

/// Calls \a visitor with the kind that \a item has in a document, as the \c Element of its class,
/// and the item. An item that is of no kind there is passed over.
template <typename Visitor> void visitStored(const QGraphicsItem *item, const Visitor &visitor)
{
    if (visitBoardItem(item, [&visitor]<typename Item>(const Item &boardItem) {
            visitor(Element<Item>(), boardItem);
        }))
        return;
    // Quirk: a bare path, line or picture of the toolkit is stored as well, because a file goes by
    // the toolkit's types of items; the program itself puts none on a board.
    if (const auto *path = qgraphicsitem_cast<const QGraphicsPathItem *>(item))
        visitor(Element<FreeDrawItem>(), *path);
    else if (const auto *line = qgraphicsitem_cast<const QGraphicsLineItem *>(item))
        visitor(Element<ArrowLineItem>(), *line);
    else if (const auto *picture = qgraphicsitem_cast<const QGraphicsPixmapItem *>(item))
        visitor(Element<ResizablePixmapItem>(), *picture);
}

/// Appends the element of \a item, if it has one, as a member of the array of elements.
void appendElement(QByteArray &text, const QGraphicsItem *item)
{
    visitStored(item, [&text]<typename Item>(Element<Item> kind, const auto &stored) {
        auto element = kind.toJson(stored);
        if (!element)
            return;
        element->insert(kindKey, kind.kind);
        const QByteArray members = indentedText(*element, 2);
        text += text.endsWith('[') ? "\n        " : ",\n        ";
        if constexpr (std::is_same_v<Item, FreeDrawItem>) {
            // The array of the points is empty as yet.
            const qsizetype start = members.indexOf('[') + 1;
            text += QByteArrayView(members).first(start);
            appendPoints(text, stored.path());
            text += QByteArrayView(members).sliced(members.indexOf(']'));
        } else {
            text += members;
        }
    });
}

/// About how many bytes the items of \a elements take.
qint64 expectedMemory(const QJsonArray &elements)
{
    qint64 bytes = 0;
    for (const auto &element : elements) {
        const QString kind = element.toObject().value(kindKey).toString();
        findBoardItemClass([&]<typename Item>(std::type_identity<Item>) {
            if (kind != Element<Item>::kind)
                return false;
            bytes += Element<Item>::memory;
            return true;
        });
    }
    return bytes;
}

} // namespace

qint64 expectedSize(const QGraphicsScene &scene)
{
    qint64 size = 0;
    const auto items = scene.items();
    for (const auto *item : items) {
        visitStored(item, [&size](auto kind, const auto &stored) { size += kind.size(stored); });
    }
    return size;
}

QByteArray buildBoardDocument(const QGraphicsScene &scene)
{
    const qint64 size = expectedSize(scene);
    const auto items = scene.items(Qt::DescendingOrder);
    QByteArray text = "{\n    \"items\": [";
    // A text that grows is copied again and again, and is then in memory twice.
    text.reserve(size);
    for (const auto *item : items)
        appendElement(text, item);
    text += "\n    ]\n}\n";
    return text;
}

std::vector<std::unique_ptr<QGraphicsItem>> itemsOf(QJsonObject document)
{
    std::vector<std::unique_ptr<QGraphicsItem>> items;
    QJsonArray elements = document.take(elementsKey).toArray();
    expectMemory(expectedMemory(std::as_const(elements)));
    items.reserve(static_cast<std::size_t>(elements.size()));
    // An element goes as soon as its item is there. They are taken from the end, because from there
    // an array shrinks at no cost.
    while (!elements.isEmpty()) {
        if (auto item = itemFromElement(elements.takeAt(elements.size() - 1).toObject()))
            items.push_back(std::move(item));
    }
    std::ranges::reverse(items);
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
