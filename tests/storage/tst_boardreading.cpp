// Reading a board: every form of an element that is accepted, and what becomes of the rest.

#include "storage/boarddocument.h"

#include "tests/storage/boarddocuments.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/main/registeredtest.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

#include <limits>

using namespace Qt::Literals::StringLiterals;

class TestBoardReading : public QObject
{
    Q_OBJECT

private slots:
    void aDocumentIsReadLeniently_data();
    void aDocumentIsReadLeniently();

    void coordinatesAreNumbersOrZero_data();
    void coordinatesAreNumbersOrZero();
    void wholeNumbersAreExactOrZero_data();
    void wholeNumbersAreExactOrZero();
    void colorsHaveManyNames_data();
    void colorsHaveManyNames();
    void pointsBecomeMovesAndLines_data();
    void pointsBecomeMovesAndLines();
    void pictureDataIsTakenAsItComes_data();
    void pictureDataIsTakenAsItComes();

    void aNoteMayHaveAnyColor();
    void aPenWidthWithAFractionIsZero();
    void widthsThatNoPenCanHaveLeaveTheDefault_data();
    void widthsThatNoPenCanHaveLeaveTheDefault();
    void aLongTextIsKept();
    void aStrokeKeepsItsRoundPen();
    void anArrowHasAPlainPen();
    void aChangedArrowStartsFromTheDefaultPen();
    void anItemBelongsToNobodyYet();
};

namespace {

const QString invalidPen = u"invalid wide 0"_s;

/// The element \a json with \a value in place of each @.
QByteArray filled(QByteArray json, const QByteArray &value)
{
    return json.replace("@", value);
}

/// A small picture as a file of \a format, in Base64.
QByteArray pictureAs(const char *format)
{
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.save(&buffer, format);
    return bytes.toBase64();
}

template <typename Item> std::unique_ptr<Item> read(const QByteArray &json)
{
    auto item = itemFrom(json);
    if (!dynamic_cast<Item *>(item.get()))
        return nullptr;
    return std::unique_ptr<Item>(dynamic_cast<Item *>(item.release()));
}

} // namespace

void TestBoardReading::aDocumentIsReadLeniently_data()
{
    QTest::addColumn<QStringList>("lowestFirst");
    const QStringList empty{u"image 0x0 at 0 0, level 0"_s, u"note '' coloured 0 at 0 0, level 1"_s,
                            u"stroke "_s + invalidPen + u" at 0 0, level 2"_s,
                            u"arrow 0 0 to 0 0 "_s + invalidPen + u" at 0 0, level 3"_s};
    QTest::newRow("missing-values") << empty;
    QTest::newRow("mistyped-values") << empty;
    QTest::newRow("unknown-kinds") << QStringList{u"note 'Aquí sigo' coloured 0 at 1 2, level 1"_s};
    QTest::newRow("not-objects") << QStringList{
        u"arrow 1 2 to 3 4 #ffff0000 wide 5 at 0 0, level 3"_s};
    QTest::newRow("unknown-keys") << QStringList{
        u"image 0x0 at 7 8, level 0"_s, u"note '' coloured 0 at 1 2, level 1"_s,
        u"stroke M1 2 L3 4 #ffff0000 wide 3 at 0 0, level 2"_s};
    // By kind, and among one kind in the order of the file.
    QTest::newRow("levels") << QStringList{
        u"image 0x0 at 1 1, level 0"_s,
        u"image 0x0 at 2 2, level 0"_s,
        u"note '1' coloured 1 at 1 1, level 1"_s,
        u"note '2' coloured 2 at 2 2, level 1"_s,
        u"stroke M1 1 #ff010101 wide 1 at 0 0, level 2"_s,
        u"stroke M2 2 #ff020202 wide 2 at 0 0, level 2"_s,
        u"arrow 1 1 to 2 2 #ff010101 wide 1 at 0 0, level 3"_s,
        u"arrow 2 2 to 3 3 #ff020202 wide 2 at 0 0, level 3"_s,
    };
}

void TestBoardReading::aDocumentIsReadLeniently()
{
    QFETCH(QStringList, lowestFirst);
    QGraphicsScene scene;
    QVERIFY(openDocument(
        scene, documentBytes(u"lenient/"_s + QString::fromUtf8(QTest::currentDataTag()))));
    QCOMPARE(describeAll(scene), lowestFirst);
}

void TestBoardReading::coordinatesAreNumbersOrZero_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<qreal>("coordinate");
    QTest::newRow("whole") << "12"_ba << 12.0;
    QTest::newRow("negative") << "-12"_ba << -12.0;
    QTest::newRow("a fraction") << "0.1"_ba << 0.1;
    QTest::newRow("all its digits") << "120.30000000000001"_ba << 120.30000000000001;
    QTest::newRow("an exponent") << "-1.5e3"_ba << -1500.0;
    QTest::newRow("beyond 32 bits") << "4294967296.5"_ba << 4294967296.5;
    QTest::newRow("beyond 64 bits") << "1e30"_ba << 1e30;
    QTest::newRow("a number in quotes") << "\"12\""_ba << 0.0;
    QTest::newRow("null") << "null"_ba << 0.0;
    QTest::newRow("true") << "true"_ba << 0.0;
    QTest::newRow("an array") << "[12]"_ba << 0.0;
    QTest::newRow("an object") << R"({"x": 12})"_ba << 0.0;
}

void TestBoardReading::coordinatesAreNumbersOrZero()
{
    QFETCH(QByteArray, value);
    QFETCH(qreal, coordinate);
    for (const auto &kind : {"postit"_ba, "image"_ba}) {
        const auto item = itemFrom(filled(R"({"type": ")" + kind + R"(", "x": @, "y": 7})", value));
        QVERIFY(item);
        QCOMPARE(item->pos(), QPointF(coordinate, 7));
        const auto other =
            itemFrom(filled(R"({"type": ")" + kind + R"(", "x": 7, "y": @})", value));
        QVERIFY(other);
        QCOMPARE(other->pos(), QPointF(7, coordinate));
    }
    const auto arrow =
        read<ArrowLineItem>(filled(R"({"type": "arrow", "x1": @, "y1": @, "x2": @})", value));
    QVERIFY(arrow);
    QCOMPARE(arrow->line(), QLineF(coordinate, coordinate, coordinate, 0));
    const auto stroke = read<FreeDrawItem>(filled(R"({"type": "freedraw", "path": [{"x": 1, "y": 2},
                                        {"x": @, "y": @, "type": 1}]})",
                                                  value));
    QVERIFY(stroke);
    QCOMPARE(stroke->path().elementCount(), 2);
    QCOMPARE(QPointF(stroke->path().elementAt(1)), QPointF(coordinate, coordinate));
}

void TestBoardReading::wholeNumbersAreExactOrZero_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("number");
    QTest::newRow("small") << "3"_ba << 3;
    QTest::newRow("with a decimal point") << "3.0"_ba << 3;
    QTest::newRow("with an exponent") << "1e2"_ba << 100;
    QTest::newRow("a fraction") << "2.5"_ba << 0;
    QTest::newRow("almost whole") << "2.0000000001"_ba << 0;
    QTest::newRow("the largest") << "2147483647"_ba << std::numeric_limits<int>::max();
    QTest::newRow("one more") << "2147483648"_ba << 0;
    QTest::newRow("the lowest") << "-2147483648"_ba << std::numeric_limits<int>::min();
    QTest::newRow("one less") << "-2147483649"_ba << 0;
    QTest::newRow("far beyond") << "1e300"_ba << 0;
    QTest::newRow("a number in quotes") << "\"3\""_ba << 0;
    QTest::newRow("null") << "null"_ba << 0;
    QTest::newRow("true") << "true"_ba << 0;
    QTest::newRow("an array") << "[3]"_ba << 0;
}

void TestBoardReading::wholeNumbersAreExactOrZero()
{
    QFETCH(QByteArray, value);
    QFETCH(int, number);
    const auto note = read<StickyNoteItem>(filled(R"({"type": "postit", "color": @})", value));
    QVERIFY(note);
    QCOMPARE(static_cast<int>(note->noteColor()), number);

    constexpr int widest = 32767; // what a pen takes
    if (number < 0 || number > widest)
        return;
    const auto stroke = read<FreeDrawItem>(filled(R"({"type": "freedraw", "penWidth": @})", value));
    QVERIFY(stroke);
    QCOMPARE(stroke->QGraphicsPathItem::pen().width(), number);
    const auto arrow = read<ArrowLineItem>(filled(R"({"type": "arrow", "width": @})", value));
    QVERIFY(arrow);
    QCOMPARE(arrow->QGraphicsLineItem::pen().width(), number);
}

void TestBoardReading::colorsHaveManyNames_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QColor>("color");
    QTest::newRow("six digits") << "\"#12abef\""_ba << QColor(0x12, 0xAB, 0xEF);
    QTest::newRow("six capital digits") << "\"#12ABEF\""_ba << QColor(0x12, 0xAB, 0xEF);
    QTest::newRow("three digits") << "\"#f80\""_ba << QColor(0xFF, 0x88, 0x00);
    QTest::newRow("eight digits") << "\"#4012abef\""_ba << QColor(0x12, 0xAB, 0xEF, 0x40);
    QTest::newRow("nine digits") << "\"#fff000888\""_ba
                                 << QColor(QRgba64::fromRgba64(0xFFFF, 0, 0x8888, 0xFFFF));
    QTest::newRow("twelve digits")
        << "\"#123456789abc\""_ba << QColor(QRgba64::fromRgba64(0x1234, 0x5678, 0x9ABC, 0xFFFF));
    QTest::newRow("a name") << "\"tomato\""_ba << QColor(0xFF, 0x63, 0x47);
    QTest::newRow("a name in capitals") << "\"DarkSlateGray\""_ba << QColor(0x2F, 0x4F, 0x4F);
    QTest::newRow("transparent") << "\"transparent\""_ba << QColor(0, 0, 0, 0);
    QTest::newRow("empty") << "\"\""_ba << QColor();
    QTest::newRow("a Spanish name") << "\"rojo\""_ba << QColor();
    QTest::newRow("five digits") << "\"#12345\""_ba << QColor();
    QTest::newRow("seven digits") << "\"#1234567\""_ba << QColor();
    QTest::newRow("no digits") << "\"#ggghhh\""_ba << QColor();
    QTest::newRow("no number sign") << "\"12abef\""_ba << QColor();
    QTest::newRow("a number") << "16711680"_ba << QColor();
    QTest::newRow("null") << "null"_ba << QColor();
}

void TestBoardReading::colorsHaveManyNames()
{
    QFETCH(QByteArray, value);
    QFETCH(QColor, color);
    const auto stroke = read<FreeDrawItem>(filled(R"({"type": "freedraw", "penColor": @})", value));
    QVERIFY(stroke);
    QCOMPARE(stroke->color(), color);
    const auto arrow = read<ArrowLineItem>(filled(R"({"type": "arrow", "color": @})", value));
    QVERIFY(arrow);
    QCOMPARE(arrow->QGraphicsLineItem::pen().color(), color);
}

void TestBoardReading::pointsBecomeMovesAndLines_data()
{
    QTest::addColumn<QByteArray>("points");
    QTest::addColumn<QString>("path");
    QTest::newRow("none") << "[]"_ba << u""_s;
    QTest::newRow("one") << R"([{"x": 1, "y": 2, "type": 0}])"_ba << u" M1 2"_s;
    QTest::newRow("moves and lines")
        << R"([{"x": 1, "y": 2, "type": 0}, {"x": 3, "y": 4, "type": 1},
               {"x": 5, "y": 6, "type": 0}, {"x": 7, "y": 8, "type": 1}])"_ba
        << u" M1 2 L3 4 M5 6 L7 8"_s;
    QTest::newRow("a curve") << R"([{"x": 1, "y": 2, "type": 0}, {"x": 3, "y": 4, "type": 2},
                                    {"x": 5, "y": 6, "type": 3}, {"x": 7, "y": 8, "type": 3}])"_ba
                             << u" M1 2 L3 4 L5 6 L7 8"_s;
    QTest::newRow("a line first")
        << R"([{"x": 1, "y": 2, "type": 1}, {"x": 3, "y": 4, "type": 1}])"_ba << u" M1 2 L3 4"_s;
    QTest::newRow("an unknown type")
        << R"([{"x": 1, "y": 2, "type": 0}, {"x": 3, "y": 4, "type": 99}])"_ba << u" M1 2 L3 4"_s;
    QTest::newRow("types that read as zero")
        << R"([{"x": 1, "y": 2, "type": 0}, {"x": 3, "y": 4, "type": 1},
               {"x": 5, "y": 6, "type": "1"}, {"x": 7, "y": 8, "type": 1},
               {"x": 9, "y": 9, "type": 1.5}])"_ba
        << u" M1 2 L3 4 M5 6 L7 8 M9 9"_s;
    // Moves alone draw nothing, and of moves in a row the last one counts.
    QTest::newRow("no types") << R"([{"x": 1, "y": 2}, {"x": 3, "y": 4}, {"x": 5, "y": 6}])"_ba
                              << u" M5 6"_s;
    QTest::newRow("points that are no objects")
        << R"([{"x": 1, "y": 2, "type": 0}, {"x": 3, "y": 4, "type": 1}, 5, "6"])"_ba
        << u" M1 2 L3 4 M0 0"_s;
    QTest::newRow("a text") << "\"M 1 2 L 3 4\""_ba << u""_s;
}

void TestBoardReading::pointsBecomeMovesAndLines()
{
    QFETCH(QByteArray, points);
    QFETCH(QString, path);
    const auto stroke =
        itemFrom(filled(R"({"type": "freedraw", "penColor": "#010203", "path": @})", points));
    QCOMPARE(describe(stroke.get()), u"stroke"_s + path + u" #ff010203 wide 0 at 0 0, level 2"_s);
}

void TestBoardReading::pictureDataIsTakenAsItComes_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QSize>("size");
    const QByteArray png =
        "iVBORw0KGgoAAAANSUhEUgAAAAIAAAACCAYAAABytg0kAAAAE0lEQVR4nGP4z8DwHwyBNIho"
        "AABAUgZ77ASTAAAAAABJRU5ErkJggg==";
    QTest::newRow("a picture") << png << QSize(2, 2);
    QTest::newRow("without padding") << png.chopped(2) << QSize(2, 2);
    QTest::newRow("with line breaks")
        << QByteArray(png).insert(40, "\\n").insert(8, "\\r\\n") << QSize(2, 2);
    QTest::newRow("with foreign characters") << QByteArray(png).insert(40, "é €*") << QSize(2, 2);
    QTest::newRow("empty") << ""_ba << QSize(0, 0);
    QTest::newRow("no Base64") << "¿¡***!?"_ba << QSize(0, 0);
    QTest::newRow("Base64 of a text") << "UGl6YXJyYQ=="_ba << QSize(0, 0);
    QTest::newRow("the signature alone") << "iVBORw0KGgo="_ba << QSize(0, 0);
    QTest::newRow("an address") << "data:image/png;base64," + png << QSize(0, 0);
    for (const char *const format : {"JPG", "BMP"}) {
        const QByteArray foreign = pictureAs(format);
        QVERIFY(!foreign.isEmpty());
        QTest::addRow("a picture as %s", format) << foreign << QSize(0, 0);
    }
}

void TestBoardReading::pictureDataIsTakenAsItComes()
{
    QFETCH(QByteArray, data);
    QFETCH(QSize, size);
    const auto image = read<ResizablePixmapItem>(
        filled(R"({"type": "image", "x": 3, "y": 4, "imageData": "@"})", data));
    QVERIFY(image);
    QCOMPARE(image->pixmap().size(), size);
    QCOMPARE(image->pos(), QPointF(3, 4));
}

void TestBoardReading::aNoteMayHaveAnyColor()
{
    const auto note = itemFrom(R"({"type": "postit", "x": 1, "y": 2, "text": "a", "color": 9})");
    QCOMPARE(describe(note.get()), u"note 'a' coloured 9 at 1 2, level 1"_s);
}

void TestBoardReading::aPenWidthWithAFractionIsZero()
{
    const auto stroke = read<FreeDrawItem>(R"({"type": "freedraw", "penWidth": 2.5})");
    QVERIFY(stroke);
    QCOMPARE(stroke->QGraphicsPathItem::pen().widthF(), 0.0);
}

void TestBoardReading::widthsThatNoPenCanHaveLeaveTheDefault_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("negative") << "-5"_ba;
    QTest::newRow("too wide") << "32768"_ba;
    QTest::newRow("the largest number") << "2147483647"_ba;
}

void TestBoardReading::widthsThatNoPenCanHaveLeaveTheDefault()
{
    QFETCH(QByteArray, value);
    const auto stroke = read<FreeDrawItem>(filled(R"({"type": "freedraw", "penWidth": @})", value));
    QVERIFY(stroke);
    QCOMPARE(stroke->QGraphicsPathItem::pen().width(), 2);
    const auto arrow = read<ArrowLineItem>(filled(R"({"type": "arrow", "width": @})", value));
    QVERIFY(arrow);
    QCOMPARE(arrow->QGraphicsLineItem::pen().width(), QPen().width());
}

void TestBoardReading::aLongTextIsKept()
{
    const QByteArray text(5000, 'a');
    const auto note = read<StickyNoteItem>(filled(R"({"type": "postit", "text": "@"})", text));
    QVERIFY(note);
    QCOMPARE(note->getText(), QString::fromLatin1(text));
}

void TestBoardReading::aStrokeKeepsItsRoundPen()
{
    const auto stroke =
        read<FreeDrawItem>(R"({"type": "freedraw", "penColor": "red", "penWidth": 5})");
    QVERIFY(stroke);
    QCOMPARE(stroke->QGraphicsPathItem::pen(), roundPen(Qt::red, 5));
}

void TestBoardReading::anArrowHasAPlainPen()
{
    const auto arrow = read<ArrowLineItem>(R"({"type": "arrow", "color": "red", "width": 5})");
    QVERIFY(arrow);
    QCOMPARE(arrow->QGraphicsLineItem::pen(),
             QPen(QBrush(Qt::red), 5, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
}

void TestBoardReading::aChangedArrowStartsFromTheDefaultPen()
{
    const auto arrow = read<ArrowLineItem>(R"({"type": "arrow", "color": "red", "width": 5})");
    QVERIFY(arrow);
    arrow->setWidth(9);
    QCOMPARE(arrow->QGraphicsLineItem::pen(), roundPen(Qt::black, 9));
}

void TestBoardReading::anItemBelongsToNobodyYet()
{
    for (const auto &kind : {"postit"_ba, "freedraw"_ba, "arrow"_ba, "image"_ba}) {
        const auto item = itemFrom(filled(R"({"type": "@"})", kind));
        QVERIFY(item);
        QCOMPARE(item->scene(), nullptr);
        QCOMPARE(item->parentItem(), nullptr);
        auto *const object = dynamic_cast<QObject *>(item.get());
        QVERIFY(object);
        QCOMPARE(object->parent(), nullptr);
    }
}

PLUMARA_TEST(TestBoardReading)
#include "tst_boardreading.moc"
