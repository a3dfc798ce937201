// Writing a board: the document for every kind of item, byte by byte.

#include "storage/boarddocument.h"

#include "tests/storage/boarddocuments.h"
#include "tests/support/items/imageoncanvas.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsEllipseItem>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestBoardDocument : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyBoardHasNoElements();
    void aNoteIsWritten();
    void aFreshNoteIsWrittenWithItsPlaceholder();
    void halfACharacterIsWrittenAsAnEscape();
    void everyNoteColorIsWritten();
    void anUnknownNoteColorIsWrittenAsItIs();
    void aStrokeIsWrittenWithoutItsPlace();
    void transparencyIsNotWritten();
    void noColorIsWrittenAsBlack();
    void strokesWithoutAPathAreNotWritten();
    void aDraggedArrowIsWrittenWhereItWasDrawn();
    void numbersAreWrittenInTheirShortestForm();
    void theTopmostElementComesFirst();
    void plainItemsCountByTheirKind();

    void anImageIsWrittenAsPng();
    void pictureDataIsPaddedBase64InOneLine();
    void aResizedImageIsWrittenAsItShows();
    void anEmptyImageIsWrittenWithoutData();

    void everyFormReadsBackToItself_data();
    void everyFormReadsBackToItself();
    void itemsOfOneKindComeBackInReverse();
    void savingChangesNothingOnTheBoard();
};

namespace {

template <typename Item> Item *add(QGraphicsScene &scene, Item *item, QPointF pos = {})
{
    item->setPos(pos);
    scene.addItem(item);
    return item;
}

StickyNoteItem *addNote(QGraphicsScene &scene, const QString &text, int color, QPointF pos)
{
    auto *const note = add(scene, new StickyNoteItem, pos);
    note->setText(text);
    note->setNoteColor(static_cast<StickyNoteItem::NoteColor>(color));
    return note;
}

QJsonObject firstElement(const QGraphicsScene &scene)
{
    return elementsOf(scene).first().toObject();
}

QByteArray withoutImageData(const QByteArray &document)
{
    static const QRegularExpression data(u"(\"imageData\": \")[^\"]*(\")"_s);
    return QString::fromUtf8(document).replace(data, u"\\1\\2"_s).toUtf8();
}

/// The picture that the first element of \a document carries.
QImage pictureIn(const QJsonObject &element)
{
    const auto data = element.value("imageData"_L1).toString().toLatin1();
    return QImage::fromData(QByteArray::fromBase64(data), "PNG");
}

} // namespace

void TestBoardDocument::anEmptyBoardHasNoElements()
{
    const QGraphicsScene scene;
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/empty"_s));
}

void TestBoardDocument::aNoteIsWritten()
{
    QGraphicsScene scene;
    addNote(scene, u"Año nuevo: ¿qué dirá el \"Ñandú\"?\n\tC:\\pizarras/1 🎉"_s, 3, {120.5, -45});
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/note"_s));
}

void TestBoardDocument::aFreshNoteIsWrittenWithItsPlaceholder()
{
    QGraphicsScene scene;
    scene.addItem(new StickyNoteItem);
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/placeholder"_s));

    QGraphicsScene reopened;
    QVERIFY(openDocument(reopened, bytesOf(scene)));
    QCOMPARE(describeAll(reopened),
             QStringList(u"note 'Agregar texto...' coloured 0 at 0 0, level 1"_s));
}

void TestBoardDocument::halfACharacterIsWrittenAsAnEscape()
{
    // What is left of an emoji when a text is cut to its longest length in the middle of it.
    QGraphicsScene scene;
    auto *const note = addNote(scene, u"fin"_s + QChar(0xD83D), 0, {});
    QVERIFY(bytesOf(scene).contains(R"("text": "fin\ud83d")"));

    QGraphicsScene reopened;
    QVERIFY(openDocument(reopened, bytesOf(scene)));
    QCOMPARE(describeAll(reopened), QStringList(describe(note)));
}

void TestBoardDocument::everyNoteColorIsWritten()
{
    QGraphicsScene scene;
    const QStringList names{u"Amarillo"_s, u"Celeste"_s, u"Rojo"_s,
                            u"Rosado"_s,   u"Naranja"_s, u"Gris"_s};
    for (int color = 0; color < names.size(); ++color)
        addNote(scene, names.at(color), color, {100.0 * color, 10.0 * color});
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/colours"_s));
}

void TestBoardDocument::anUnknownNoteColorIsWrittenAsItIs()
{
    QGraphicsScene scene;
    addNote(scene, {}, 9, {});
    QCOMPARE(firstElement(scene).value("color"_L1), QJsonValue(9));
}

void TestBoardDocument::aStrokeIsWrittenWithoutItsPlace()
{
    QPainterPath path({10.5, 20.25});
    path.lineTo(30, 40.125);
    path.cubicTo(50, 60, 70.75, 80, 90, 100.5);
    path.moveTo(200, -210);
    path.lineTo(220.5, 230);
    QGraphicsScene scene;
    auto *const stroke = addStroke(scene, path);
    stroke->setColor(QColor(0x12, 0xAB, 0xEF));
    stroke->setWidth(4);
    stroke->setPos(5, 5);
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/stroke"_s));
}

void TestBoardDocument::transparencyIsNotWritten()
{
    QGraphicsScene scene;
    addStroke(scene, {{0, 0}, {9, 9}})->setColor(QColor(0x12, 0xAB, 0xEF, 0x40));
    QCOMPARE(firstElement(scene).value("penColor"_L1), u"#12abef"_s);

    QGraphicsScene reopened;
    QVERIFY(openDocument(reopened, bytesOf(scene)));
    QCOMPARE(describeAll(reopened),
             QStringList(u"stroke M0 0 L9 9 #ff12abef wide 2 at 0 0, level 2"_s));
}

void TestBoardDocument::noColorIsWrittenAsBlack()
{
    QGraphicsScene scene;
    addStroke(scene, {{0, 0}, {9, 9}})->setColor(QColor());
    QCOMPARE(firstElement(scene).value("penColor"_L1), u"#000000"_s);
}

void TestBoardDocument::strokesWithoutAPathAreNotWritten()
{
    QGraphicsScene scene;
    addStroke(scene, QPainterPath());
    // A bare move draws nothing either.
    addStroke(scene, QPainterPath({10, 10}));
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/empty"_s));
}

void TestBoardDocument::aDraggedArrowIsWrittenWhereItWasDrawn()
{
    ItemCanvas canvas;
    auto *const dragged = canvas.add(new ArrowLineItem({100, 200}, {300, 400}));
    auto *const other = canvas.add(new ArrowLineItem({1900.5, 1000}, {20, 30.25}));
    other->setColor(Qt::darkGreen);
    other->setWidth(9);
    QVERIFY(canvas.show());
    canvas.pointer.drag({{150, 250}, {180, 250}, {250, 300}});
    QVERIFY(dragged->pos() != QPointF());

    QCOMPARE(bytesOf(canvas.scene), documentBytes(u"golden/arrows"_s));
}

void TestBoardDocument::numbersAreWrittenInTheirShortestForm()
{
    QGraphicsScene scene;
    add(scene, new ArrowLineItem({1920, 0.1 + 0.2}, {-1080, 9007199254740991}))->setWidth(32767);
    add(scene, new ArrowLineItem({0.1, -0.5}, {1.0 / 3, 1234567.875}))->setWidth(0);
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/numbers"_s));
}

void TestBoardDocument::theTopmostElementComesFirst()
{
    QGraphicsScene scene;
    add(scene, new ArrowLineItem({0, 0}, {50, 50}));
    addNote(scene, u"abajo"_s, 1, {10, 10});
    addNote(scene, u"arriba"_s, 0, {20, 20});
    addStroke(scene, {{1, 2}, {3, 4}});
    scene.addText(u"no es de la pizarra"_s);
    scene.addEllipse(0, 0, 10, 10);
    QCOMPARE(bytesOf(scene), documentBytes(u"golden/stacking"_s));
}

void TestBoardDocument::plainItemsCountByTheirKind()
{
    QGraphicsScene plain;
    plain.addPixmap(motley(4, 3))->setPos(5, 6);
    plain.addLine(1, 2, 3, 4, QPen(Qt::red, 5));
    plain.addPath(pathThrough({{1, 2}, {3, 4}}), QPen(Qt::blue, 3));

    QGraphicsScene board;
    add(board, new ResizablePixmapItem(motley(4, 3)), {5, 6});
    auto *const arrow = add(board, new ArrowLineItem({1, 2}, {3, 4}));
    arrow->setColor(Qt::red);
    arrow->setWidth(5);
    auto *const stroke = addStroke(board, {{1, 2}, {3, 4}});
    stroke->setColor(Qt::blue);
    stroke->setWidth(3);
    arrow->setZValue(0);
    QCOMPARE(bytesOf(plain), bytesOf(board));
}

void TestBoardDocument::anImageIsWrittenAsPng()
{
    QImage picture(2, 2, QImage::Format_ARGB32);
    picture.setPixelColor(0, 0, Qt::red);
    picture.setPixelColor(1, 0, Qt::green);
    picture.setPixelColor(0, 1, Qt::blue);
    picture.setPixelColor(1, 1, QColor(0, 0, 0, 128));
    QGraphicsScene scene;
    add(scene, new ResizablePixmapItem(QPixmap::fromImage(picture)), {12.5, -7});

    // How well the pixels are packed is the encoder's matter; all the rest is not.
    const QByteArray golden = documentBytes(u"golden/image"_s);
    QCOMPARE(withoutImageData(bytesOf(scene)), withoutImageData(golden));
    QVERIFY(golden != withoutImageData(golden));
    const QImage written = pictureIn(firstElement(scene)).convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(written, picture);

    // Read from the golden file, they are the same picture, too.
    QGraphicsScene reopened;
    QVERIFY(openDocument(reopened, golden));
    QCOMPARE(describeAll(reopened), QStringList(u"image 2x2 at 12.5 -7, level 0"_s));
    QCOMPARE(pictureIn(firstElement(reopened)).convertToFormat(QImage::Format_ARGB32), picture);
}

void TestBoardDocument::pictureDataIsPaddedBase64InOneLine()
{
    // Pictures of several sizes, as not every length of data needs padding.
    QByteArray all;
    for (int side = 1; side <= 20; ++side) {
        QGraphicsScene scene;
        add(scene, new ResizablePixmapItem(motley(side, side)));
        const auto data = firstElement(scene).value("imageData"_L1).toString().toLatin1();
        QCOMPARE(data, QByteArray::fromBase64(data).toBase64());
        all += data;
    }
    for (const char letter : {'+', '/', '='})
        QVERIFY(all.contains(letter));
}

void TestBoardDocument::aResizedImageIsWrittenAsItShows()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.dragHandle(5, {-151, -151});
    const QImage shown = on.image->pixmap().toImage();
    QCOMPARE(shown.size(), QSize(50, 50));

    const QByteArray bytes = bytesOf(on.canvas.scene);
    on.canvas.scene.clear();
    QVERIFY(openDocument(on.canvas.scene, bytes));
    on.image = dynamic_cast<ResizablePixmapItem *>(on.canvas.scene.items().constFirst());
    QVERIFY(on.image);
    QCOMPARE(on.image->pos(), on.place);
    QCOMPARE(on.image->pixmap().toImage().convertToFormat(shown.format()), shown);

    // What is enlarged again is the small picture.
    const QPixmap small = on.image->pixmap();
    on.image->setSelected(true);
    on.dragHandle(5, {49, 49});
    QCOMPARE(on.image->pixmap().toImage(),
             small.scaled(100, 100, Qt::KeepAspectRatio, Qt::SmoothTransformation).toImage());
}

void TestBoardDocument::anEmptyImageIsWrittenWithoutData()
{
    QGraphicsScene scene;
    add(scene, new ResizablePixmapItem({}), {3, 4});
    QCOMPARE(firstElement(scene),
             QJsonObject(
                 {{"imageData"_L1, QString()}, {"type"_L1, "image"_L1}, {"x"_L1, 3}, {"y"_L1, 4}}));
}

void TestBoardDocument::everyFormReadsBackToItself_data()
{
    // Documents in which no two elements of one kind lie above each other, and no curve.
    QTest::addColumn<QString>("name");
    for (const char *const name : {"empty", "note", "placeholder", "image"})
        QTest::newRow(name) << u"golden/%1"_s.arg(QLatin1StringView(name));
}

void TestBoardDocument::everyFormReadsBackToItself()
{
    QFETCH(QString, name);
    QGraphicsScene scene;
    QVERIFY(openDocument(scene, documentBytes(name)));
    QCOMPARE(withoutImageData(bytesOf(scene)), withoutImageData(documentBytes(name)));
}

void TestBoardDocument::itemsOfOneKindComeBackInReverse()
{
    QGraphicsScene scene;
    QVERIFY(openDocument(scene, documentBytes(u"golden/colours"_s)));
    const QStringList lowestFirst = describeAll(scene);
    QCOMPARE(lowestFirst.constFirst(), u"note 'Gris' coloured 5 at 500 50, level 1"_s);
    QCOMPARE(lowestFirst.constLast(), u"note 'Amarillo' coloured 0 at 0 0, level 1"_s);

    QGraphicsScene reopened;
    QVERIFY(openDocument(reopened, bytesOf(scene)));
    QCOMPARE(bytesOf(reopened), documentBytes(u"golden/colours"_s));
}

void TestBoardDocument::savingChangesNothingOnTheBoard()
{
    QGraphicsScene scene;
    QVERIFY(openDocument(scene, documentBytes(u"golden/stacking"_s)));
    const QStringList before = describeAll(scene);
    buildBoardDocument(scene);
    QCOMPARE(describeAll(scene), before);
    QCOMPARE(before.size(), 4);
}

PLUMARA_TEST(TestBoardDocument)
#include "tst_boarddocument.moc"
