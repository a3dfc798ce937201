// Documents that a person would not write: they are opened, painted, selected and saved again
// without a crash and without making anybody wait.

#include "storage/boarddocument.h"

#include "tests/storage/boarddocuments.h"
#include "tests/support/main/registeredtest.h"

#include <QImage>
#include <QJsonArray>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class TestHostileDocuments : public QObject
{
    Q_OBJECT

private slots:
    void whatIsNoJsonIsNoDocument_data();
    void whatIsNoJsonIsNoDocument();
    void oddValuesAreShownAndSaved_data();
    void oddValuesAreShownAndSaved();

    void coordinatesOfEverySizeAreShown_data();
    void coordinatesOfEverySizeAreShown();

    void brokenPicturesAreEmpty();
    void oddTextsComeBackFromTheFile();
    void nestingWithoutEndIsNoDocument();
    void deepNestingInWhatIsIgnoredIsIgnored();
    void anEnormousPathIsShown();
    void anEnormousTextIsShown();
    void aVeryLongStrokeIsOpenedAndSaved();
    void veryManyStrokesAreOpenedAndSaved();
    void farCoordinatesComeBackFromTheFile_data();
    void farCoordinatesComeBackFromTheFile();
    void aPictureThatUnpacksToAGigabyteIsEmpty();
    void muchGarbageIsIgnored();
};

namespace {

constexpr QRectF board{0, 0, 1920, 1080};

/// A board as the program has it: its size does not follow what lies on it.
struct Board : QGraphicsScene
{
    Board()
        : QGraphicsScene(board)
    { }
};

/// Paints \a scene as the board's view does, as it is and with all selected that can be.
void paint(QGraphicsScene &scene)
{
    QImage image(board.size().toSize(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    scene.render(&painter, QRectF(), board);
    const auto items = scene.items();
    for (auto *const item : items)
        item->setSelected(true);
    scene.render(&painter, QRectF(), board);
}

qsizetype elementCount(const QGraphicsScene &scene)
{
    return elementsOf(scene).size();
}

/// Whether \a scene can be shown and saved, and opens again with all its elements.
bool survives(QGraphicsScene &scene)
{
    paint(scene);
    Board reopened;
    return openDocument(reopened, bytesOf(scene)) && elementCount(reopened) == elementCount(scene);
}

QByteArray documentOf(const QByteArray &elements)
{
    return R"({"items": [)" + elements + "]}";
}

} // namespace

void TestHostileDocuments::whatIsNoJsonIsNoDocument_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const char *const name : {"invalid-utf8", "nan", "overflow", "cut-off", "twice"})
        QTest::newRow(name) << documentBytes(u"hostile/"_s + QLatin1StringView(name));
    QTest::newRow("a bare number") << "5"_ba;
    QTest::newRow("UTF-16") << R"("\0{)"_ba + QByteArray("\xFF\xFE{\0}\0", 6);
    QTest::newRow("zero bytes") << QByteArray(4096, '\0');
}

void TestHostileDocuments::whatIsNoJsonIsNoDocument()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!bytes.isEmpty());
    Board scene;
    QVERIFY(!openDocument(scene, bytes));
    QVERIFY(scene.items().isEmpty());
}

void TestHostileDocuments::oddValuesAreShownAndSaved_data()
{
    QTest::addColumn<int>("items");
    QTest::newRow("huge-coordinates") << 8;
    QTest::newRow("widths") << 6;
    QTest::newRow("texts") << 5;
    QTest::newRow("colours-of-notes") << 5;
    QTest::newRow("pictures") << 6;
}

void TestHostileDocuments::oddValuesAreShownAndSaved()
{
    QFETCH(int, items);
    const QString name = QString::fromUtf8(QTest::currentDataTag());
    Board scene;
    QVERIFY(openDocument(scene, documentBytes(u"hostile/"_s + name)));
    QCOMPARE(describeAll(scene).size(), items);
    QVERIFY(survives(scene));
}

void TestHostileDocuments::brokenPicturesAreEmpty()
{
    Board scene;
    QVERIFY(openDocument(scene, documentBytes(u"hostile/pictures"_s)));
    const auto lines = describeAll(scene);
    for (const auto &line : lines)
        QVERIFY2(line.startsWith("image 0x0 at "_L1), qPrintable(line));
}

void TestHostileDocuments::coordinatesOfEverySizeAreShown_data()
{
    QTest::addColumn<QByteArray>("exponent");
    for (int exponent = 2; exponent <= 308; exponent += exponent < 40 ? 1 : 17) {
        // The toolkit shows these lines, too, but takes seconds to smooth all of their length;
        // from 1e7 on it cuts them off before.
        constexpr int slow = 6;
        if (exponent != slow)
            QTest::addRow("1e%d", exponent) << QByteArray::number(exponent);
    }
}

void TestHostileDocuments::coordinatesOfEverySizeAreShown()
{
    QFETCH(QByteArray, exponent);
    QByteArray elements = R"(
        {"type": "arrow", "x1": -9e@, "y1": 5, "x2": 9e@, "y2": 500, "width": 9},
        {"type": "arrow", "x1": 900, "y1": -9e@, "x2": 901, "y2": 9e@, "color": "red"},
        {"type": "arrow", "x1": 900, "y1": 500, "x2": 9e@, "y2": 9e@, "width": 32767},
        {"type": "freedraw", "penWidth": 9, "path": [{"x": -9e@, "y": 5}, {"x": 9e@, "y": 9e@,
         "type": 1}, {"x": 900, "y": 500, "type": 1}, {"x": 9e@, "y": -9e@, "type": 1}]},
        {"type": "postit", "x": 9e@, "y": -9e@},
        {"type": "image", "x": -9e@, "y": 9e@})";
    elements.replace("9e@", "1e" + exponent);
    Board scene;
    QVERIFY(openDocument(scene, documentOf(elements)));
    QCOMPARE(describeAll(scene).size(), 6);
    QVERIFY(survives(scene));
}

void TestHostileDocuments::oddTextsComeBackFromTheFile()
{
    Board scene;
    QVERIFY(openDocument(scene, documentBytes(u"hostile/texts"_s)));
    Board reopened;
    QVERIFY(openDocument(reopened, bytesOf(scene)));
    QStringList before = describeAll(scene);
    QStringList after = describeAll(reopened);
    std::ranges::sort(before);
    std::ranges::sort(after);
    QCOMPARE(after, before);
    // Markup is text like any other.
    QCOMPARE(before.filter(u"note '<b onclick=\"x\">no es HTML</b><img src="_s).size(), 1);
}

void TestHostileDocuments::nestingWithoutEndIsNoDocument()
{
    constexpr int depth = 100000;
    Board scene;
    QVERIFY(!openDocument(scene, R"({"items": )" + QByteArray(depth, '[')));
    QVERIFY(!openDocument(scene, documentOf(QByteArray(depth, '[') + QByteArray(depth, ']'))));
    QVERIFY(!openDocument(scene, QByteArray(R"({"items": )").repeated(depth)));
}

void TestHostileDocuments::deepNestingInWhatIsIgnoredIsIgnored()
{
    constexpr int depth = 500;
    const QByteArray nest = QByteArray(depth, '[') + QByteArray(depth, ']');
    Board scene;
    QVERIFY(openDocument(scene,
                         documentOf(nest + R"(, {"type": "postit", "text": "aquí", "x": )" + nest
                                    + R"(, "más": )" + nest + "}")));
    QCOMPARE(describeAll(scene), QStringList(u"note 'aquí' coloured 0 at 0 0, level 1"_s));
}

void TestHostileDocuments::anEnormousPathIsShown()
{
    constexpr int count = 50000;
    QByteArray points = R"({"x": 0, "y": 0, "type": 0})";
    for (int i = 1; i < count; ++i) {
        points += R"(,{"type": 1, "x": )" + QByteArray::number(i / 30.0) + R"(, "y": )"
            + QByteArray::number(500 + i % 7) + '}';
    }
    Board scene;
    QVERIFY(openDocument(
        scene, documentOf(R"({"type": "freedraw", "penWidth": 2, "path": [)" + points + "]}")));
    auto *const stroke = dynamic_cast<FreeDrawItem *>(scene.items().value(0));
    QVERIFY(stroke);
    QCOMPARE(stroke->path().elementCount(), count);
    QVERIFY(survives(scene));
}

void TestHostileDocuments::anEnormousTextIsShown()
{
    const QByteArray text = QByteArray("palabra ").repeated(20000);
    Board scene;
    QVERIFY(openDocument(scene, documentOf(R"({"type": "postit", "text": ")" + text + R"("})")));
    auto *const note = dynamic_cast<StickyNoteItem *>(scene.items(Qt::AscendingOrder).value(0));
    QVERIFY(note);
    QCOMPARE(note->getText().size(), text.size());
    QVERIFY(survives(scene));
}

void TestHostileDocuments::aVeryLongStrokeIsOpenedAndSaved()
{
    constexpr int count = 200'000;
    QByteArray points;
    for (int i = 0; i < count; ++i) {
        points += i == 0 ? "" : ",";
        points += R"({"type": 1, "x": )" + QByteArray::number(i % 1900) + R"(, "y": 1})";
    }
    Board scene;
    QVERIFY(openDocument(scene, documentOf(R"({"type": "freedraw", "path": [)" + points + "]}")));
    const QJsonArray elements = elementsOf(scene);
    QCOMPARE(elements.size(), 1);
    QCOMPARE(elements.first().toObject().value("path"_L1).toArray().size(), count);
}

void TestHostileDocuments::veryManyStrokesAreOpenedAndSaved()
{
    constexpr int count = 100'000;
    const QByteArray stroke = R"({"type": "freedraw", "path": [{"x": 1}, {"x": 2, "type": 1}]},)";
    Board scene;
    QVERIFY(openDocument(scene, documentOf(stroke.repeated(count) + "{}")));
    QCOMPARE(elementCount(scene), count);
    // The scene makes itself at home with new items from the event loop.
    QCoreApplication::processEvents();
    scene.clear();
    QVERIFY(scene.items().isEmpty());
}

void TestHostileDocuments::farCoordinatesComeBackFromTheFile_data()
{
    QTest::addColumn<QByteArray>("far");
    for (const char *const far : {"1e6", "-1e6", "1e15", "-1e100", "1e127"})
        QTest::newRow(far) << QByteArray(far);
}

void TestHostileDocuments::farCoordinatesComeBackFromTheFile()
{
    QFETCH(QByteArray, far);
    QByteArray elements = R"(
        {"type": "arrow", "x1": @, "y1": 5, "x2": 1, "y2": @, "color": "red"},
        {"type": "freedraw", "penColor": "red", "path": [{}, {"x": @, "y": @, "type": 1}]},
        {"type": "postit", "x": @, "y": @},
        {"type": "image", "x": @, "y": 7})";
    elements.replace("@", far);
    Board scene;
    QVERIFY(openDocument(scene, documentOf(elements)));
    Board reopened;
    QVERIFY(openDocument(reopened, bytesOf(scene)));
    QCOMPARE(describeAll(reopened), describeAll(scene));
    QCOMPARE(describeAll(scene).size(), 4);
}

void TestHostileDocuments::aPictureThatUnpacksToAGigabyteIsEmpty()
{
    // 16,000 x 16,000 pixels of 4 bytes.
    const QByteArray png =
        "iVBORw0KGgoAAAANSUhEUgAAPoAAAD6ACAYAAABBft/eAAAA0UlEQVR42u3BMQEAAADCoPVPbQZ/oAAA"
        "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"
        "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"
        "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"
        "AAAAAG4D7iEAAblokVYAAAAASUVORK5CYII=";
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(u"Rejecting image as it exceeds .* allocation limit"_s));
    Board scene;
    QVERIFY(openDocument(
        scene, documentOf(R"({"type": "image", "x": 3, "y": 4, "imageData": ")" + png + R"("})")));
    QCOMPARE(describeAll(scene), QStringList(u"image 0x0 at 3 4, level 0"_s));
}

void TestHostileDocuments::muchGarbageIsIgnored()
{
    const QByteArray garbage =
        QByteArray(R"({}, [], 5, "postit", null, {"type": "?"}, {"x": 1}, true, -1e9, [{}], )")
            .repeated(10000);
    Board scene;
    QVERIFY(openDocument(scene, documentOf(garbage + R"({"type": "postit", "text": "aquí"})")));
    QCOMPARE(describeAll(scene), QStringList(u"note 'aquí' coloured 0 at 0 0, level 1"_s));
}

PLUMARA_TEST(TestHostileDocuments)
#include "tst_hostiledocuments.moc"
