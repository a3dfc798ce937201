// The text of a document: to the byte what the toolkit writes of the same values.

#include "storage/boarddocument.h"

#include "tests/storage/boarddocuments.h"
#include "tests/support/items/imageoncanvas.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QBuffer>
#include <QJsonArray>
#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

using namespace Qt::Literals::StringLiterals;

class TestDocumentText : public QObject
{
    Q_OBJECT

private slots:
    void specialNumbers_data();
    void specialNumbers();
    void randomNumbers_data();
    void randomNumbers();
    void randomBoards_data();
    void randomBoards();
    void theExpectedSizeIsAboutThatOfTheText_data();
    void theExpectedSizeIsAboutThatOfTheText();
};

namespace {

QJsonObject valueOf(const QPainterPath::Element &element)
{
    return {{"x"_L1, element.x}, {"y"_L1, element.y}, {"type"_L1, int(element.type)}};
}

QJsonObject valueOf(const QGraphicsPathItem &stroke)
{
    QJsonArray points;
    const QPainterPath path = stroke.path();
    for (int i = 0; i < path.elementCount(); ++i)
        points << valueOf(path.elementAt(i));
    return {{"type"_L1, "freedraw"_L1},
            {"path"_L1, points},
            {"penColor"_L1, stroke.pen().color().name()},
            {"penWidth"_L1, stroke.pen().width()}};
}

QJsonObject valueOf(const QGraphicsLineItem &arrow)
{
    return {{"type"_L1, "arrow"_L1},          {"x1"_L1, arrow.line().x1()},
            {"y1"_L1, arrow.line().y1()},     {"x2"_L1, arrow.line().x2()},
            {"y2"_L1, arrow.line().y2()},     {"color"_L1, arrow.pen().color().name()},
            {"width"_L1, arrow.pen().width()}};
}

QJsonObject valueOf(const StickyNoteItem &note)
{
    return {{"type"_L1, "postit"_L1},
            {"x"_L1, note.x()},
            {"y"_L1, note.y()},
            {"text"_L1, note.getText()},
            {"color"_L1, int(note.noteColor())}};
}

QJsonObject valueOf(const QGraphicsPixmapItem &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    image.pixmap().save(&buffer, "PNG");
    return {{"type"_L1, "image"_L1},
            {"x"_L1, image.x()},
            {"y"_L1, image.y()},
            {"imageData"_L1, QString::fromLatin1(png.toBase64())}};
}

/// What the toolkit writes of \a scene.
QByteArray toolkitsText(const QGraphicsScene &scene)
{
    QJsonArray elements;
    const auto items = scene.items(Qt::DescendingOrder);
    for (const auto *item : items) {
        if (const auto *note = dynamic_cast<const StickyNoteItem *>(item))
            elements << valueOf(*note);
        else if (const auto *path = qgraphicsitem_cast<const QGraphicsPathItem *>(item)) {
            if (!path->path().isEmpty())
                elements << valueOf(*path);
        } else if (const auto *line = qgraphicsitem_cast<const QGraphicsLineItem *>(item))
            elements << valueOf(*line);
        else if (const auto *picture = qgraphicsitem_cast<const QGraphicsPixmapItem *>(item))
            elements << valueOf(*picture);
    }
    return QJsonDocument(QJsonObject{{"items"_L1, elements}}).toJson(QJsonDocument::Indented);
}

/// A stroke through points of all pairs of neighbours in \a numbers, which may be none.
void addStrokeOf(QGraphicsScene &scene, const std::vector<double> &numbers)
{
    QPainterPath path;
    path.moveTo(0, 0);
    for (int i = 1; i < int(numbers.size()); ++i) {
        path.lineTo(i, i);
        // A line to such a place may be refused; a point may be put there all the same.
        path.setElementPositionAt(i, numbers.at(std::size_t(i - 1)), numbers.at(std::size_t(i)));
    }
    addStroke(scene, path);
}

/// Random boards of all that a scene may hold.
class RandomBoard
{
public:
    explicit RandomBoard(quint32 seed)
        : random(seed)
    { }

    double number()
    {
        switch (random.bounded(4)) {
        case 0:
            return random.bounded(4000) - 1000;
        case 1:
            return random.bounded(4000.0) - 1000;
        case 2:
            return (random.bounded(40000) - 10000) / 8.0;
        default:
            return std::bit_cast<double>(random.generate64());
        }
    }
    /// A finite one, for what the toolkit computes with.
    double coordinate() { return random.bounded(1920.0) - 200; }

    void addTo(QGraphicsScene &scene)
    {
        switch (random.bounded(8)) {
        case 0:
            placed(scene, new StickyNoteItem)->setText(text());
            break;
        case 1:
            placed(scene, new ArrowLineItem({number(), number()}, {number(), number()}))
                ->setColor(color());
            break;
        case 2:
            placed(scene, new ResizablePixmapItem(motley(random.bounded(9), random.bounded(9))));
            break;
        case 3:
            scene.addPath(path(), QPen(color(), random.bounded(9.0)));
            break;
        case 4:
            scene.addLine(number(), number(), number(), number(), QPen(color(), 3));
            break;
        case 5:
            scene.addEllipse(0, 0, 10, 10);
            scene.addPixmap(motley(2, 2));
            break;
        default:
            addStroke(scene, path())->setColor(color());
        }
    }

private:
    template <typename Item> Item *placed(QGraphicsScene &scene, Item *item)
    {
        item->setPos(number(), number());
        scene.addItem(item);
        return item;
    }
    QColor color() { return QColor::fromRgba(random.generate()); }

    QPainterPath path()
    {
        QPainterPath path;
        for (int left = random.bounded(12); left > 0; --left) {
            const QPointF point(coordinate(), coordinate());
            switch (random.bounded(3)) {
            case 0:
                path.moveTo(point);
                break;
            case 1:
                path.cubicTo(point, {coordinate(), coordinate()}, {coordinate(), coordinate()});
                break;
            default:
                path.lineTo(point);
            }
        }
        for (int i = 0; i < path.elementCount(); ++i)
            path.setElementPositionAt(i, number(), number());
        return path;
    }

    QString text()
    {
        static const QStringList pieces{u"\n"_s,
                                        u"\t"_s,
                                        u"\""_s,
                                        u"\\"_s,
                                        u"/"_s,
                                        u"[{]}"_s,
                                        u"ñandú"_s,
                                        u"🎉"_s,
                                        QString(QChar(1)),
                                        QString(QChar(0x7F)),
                                        QString(QChar(0xD83D)),
                                        QString(QChar(0x2028)),
                                        u"idea "_s};
        QString text;
        for (int left = random.bounded(20); left > 0; --left)
            text += pieces.at(random.bounded(int(pieces.size())));
        return text;
    }

    QRandomGenerator random;
};

} // namespace

void TestDocumentText::specialNumbers_data()
{
    QTest::addColumn<double>("number");
    using Limits = std::numeric_limits<double>;
    for (const double number : {0.0,
                                1.0,
                                0.1,
                                0.5,
                                0.001,
                                0.0009999,
                                0.0001,
                                0.00001,
                                0.1 + 0.2,
                                1.0 / 3,
                                99999.5,
                                123456789.125,
                                1e5,
                                1e6,
                                1e14,
                                1e15,
                                1e15 - 1,
                                1e15 - 0.5,
                                1e15 + 1,
                                1e15 + 0.5,
                                1e16,
                                1e17,
                                1e18,
                                1e19,
                                1e20,
                                1e21,
                                1e22,
                                1e100,
                                9007199254740991.0,
                                9007199254740992.0,
                                9007199254740994.0,
                                9223372036854775807.0,
                                18446744073709551615.0,
                                4503599627370495.5,
                                2147483647.0,
                                2147483648.0,
                                4294967296.5,
                                1e-7,
                                1.5e-10,
                                5e-324,
                                2.2250738585072011e-308,
                                Limits::min(),
                                Limits::max(),
                                Limits::denorm_min(),
                                Limits::epsilon(),
                                Limits::infinity(),
                                Limits::quiet_NaN()}) {
        QTest::addRow("%.17g", number) << number;
        QTest::addRow("%.17g", -number) << -number;
    }
}

void TestDocumentText::specialNumbers()
{
    QFETCH(double, number);
    QGraphicsScene scene;
    addStrokeOf(scene, {number, number, 1, number, number});
    scene.addLine(number, 1, 2, number);
    QCOMPARE(bytesOf(scene), toolkitsText(scene));
}

void TestDocumentText::randomNumbers_data()
{
    // Each kind of number: how many digits it has before the point, and after it.
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    for (int before = 0; before <= 20; ++before) {
        for (const int after : {0, 1, 3, 17})
            QTest::addRow("%d.%d", before, after) << before << after;
    }
}

void TestDocumentText::randomNumbers()
{
    QFETCH(int, before);
    QFETCH(int, after);
    QRandomGenerator random(quint32(100 * before + after));
    const double unit = std::pow(10.0, after);
    std::vector<double> numbers;
    for (int i = 0; i < 1000; ++i) {
        const double number = std::round(random.generateDouble() * std::pow(10.0, before) * unit);
        numbers.push_back((i % 2 == 0 ? number : -number) / unit);
    }
    QGraphicsScene scene;
    addStrokeOf(scene, numbers);
    QVERIFY(bytesOf(scene) == toolkitsText(scene));
}

void TestDocumentText::randomBoards_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 100; ++seed)
        QTest::addRow("%u", seed) << seed;
}

void TestDocumentText::randomBoards()
{
    QFETCH(quint32, seed);
    RandomBoard board(seed);
    QGraphicsScene scene(0, 0, 1920, 1080);
    for (quint32 i = 0; i < seed / 3; ++i)
        board.addTo(scene);
    QCOMPARE(bytesOf(scene), toolkitsText(scene));
}

void TestDocumentText::theExpectedSizeIsAboutThatOfTheText_data()
{
    QTest::addColumn<std::function<QGraphicsItem *()>>("make");
    const auto addRow = [](const char *name, const std::function<QGraphicsItem *()> &make) {
        QTest::newRow(name) << make;
    };
    addRow("stroke", [] {
        auto *const stroke = new FreeDrawItem;
        QPainterPath path({10, 10});
        for (int i = 0; i < 200; ++i)
            path.lineTo(i / 3.0, 1000 - i);
        stroke->setPath(path);
        return stroke;
    });
    addRow("note", [] {
        auto *const note = new StickyNoteItem;
        note->setText(QString(250, u'a'));
        return note;
    });
    addRow("arrow", [] { return new ArrowLineItem({1, 2}, {300.5, 400}); });
    addRow("photograph", [] {
        QImage noise(30, 30, QImage::Format_RGB32);
        QRandomGenerator random(7);
        for (int pixel = 0; pixel < 30 * 30; ++pixel)
            noise.setPixel(pixel % 30, pixel / 30, random.generate());
        return new ResizablePixmapItem(QPixmap::fromImage(noise));
    });
}

void TestDocumentText::theExpectedSizeIsAboutThatOfTheText()
{
    QFETCH(std::function<QGraphicsItem *()>, make);
    QGraphicsScene scene;
    for (int i = 0; i < 20; ++i)
        scene.addItem(make());
    const auto size = double(bytesOf(scene).size());
    const auto expected = double(expectedSize(scene));
    QVERIFY2(size / 4 < expected && expected < size * 4,
             qPrintable(u"%1 for %2"_s.arg(expected).arg(size)));
}

PLUMARA_TEST(TestDocumentText)
#include "tst_documenttext.moc"
