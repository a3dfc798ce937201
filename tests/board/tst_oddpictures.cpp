// Pictures that a camera, a scanner or a broken download leaves behind, as the board shows them or
// refuses them, and as they come back from its file.

#include "items/resizablepixmapitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// All of one red, which not even JPEG changes by more than a shade.
QImage redImage(const QSize &size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(Qt::red);
    return image;
}

QByteArray fileOf(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, format))
        qFatal("The test cannot make its picture");
    return bytes;
}

/// A JPEG file of \a size with a tag by which the camera was held sideways.
QByteArray sideways(const QSize &size)
{
    QByteArray bytes = fileOf(redImage(size), "JPEG");
    return bytes.insert(2,
                        QByteArray("\xff\xe1\x00\x22"
                                   "Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06"
                                   "\0\0\0\0\0\0",
                                   36));
}

const QByteArray sixteenBits =
    "iVBORw0KGgoAAAANSUhEUgAAAAYAAAAEEAIAAABy9gVXAAAAFElEQVR4nGP4/58BCPCTBKSprQgA"
    "MyYv0c+vOqYAAAAASUVORK5CYII=";
const QByteArray interlaced =
    "iVBORw0KGgoAAAANSUhEUgAAAAYAAAAECAIAAAFVYemCAAAAFElEQVR4nGP4z8DAgIT/E8HCJwQA"
    "s8YX6UINHC8AAAAASUVORK5CYII=";
// Two pictures, the first one red and the second one blue.
const QByteArray animatedPng =
    "iVBORw0KGgoAAAANSUhEUgAAAAYAAAAECAIAAAAiZtkUAAAACGFjVEwAAAACAAAAAPONk3AAAAAa"
    "ZmNUTAAAAAAAAAAGAAAABAAAAAAAAAAAAAEACgAAI8YFEAAAABJJREFUeJxj+M/AgIbQ+UQLAQCk"
    "0RfpWXsx4gAAABpmY1RMAAAAAQAAAAYAAAAEAAAAAAAAAAAAAQAKAAC4te/EAAAAFGZkQVQAAAAC"
    "eJxjYGD4j4HIFAIAdQEX6f4XMy4AAAAASUVORK5CYII=";
const QByteArray animatedGif =
    "R0lGODlhBgAEAJEAAP8AAAAA/wAAAAAAACH/C05FVFNDQVBFMi4wAwEAAAAh+QQACgAAACwAAAAA"
    "BgAEAAACDgQIECBAgAABAgQIECBQACH5BAAKAAAALAAAAAAGAAQAAAIOTJgwYcKECRMmTJgwYVIA"
    "Ow==";
// As print shops use it: in inks and not in light.
const QByteArray inks =
    "/9j/7gAOQWRvYmUAZAAAAAAA/9sAQwABAQEBAQEBAQEBAQEBAQEBAQEBAQEBAQEBAQEBAQEBAQEB"
    "AQEBAQEBAQEBAQEBAQEBAQEBAQEBAQEBAQEBAQEB/8AAFAgACAAIBAERAAIRAAMRAAQRAP/EAB8A"
    "AAAADAAAAAAAAAAAAAAAAAABAgMEBQYHCAkKC//EABQQAQAAAAAAAAAAAAAAAAAAAAD/2gAOBAEA"
    "AgADAAQAAD8Ar+Fv/W/9X8P/2Q==";
// A few bytes that speak of 60,000 x 60,000 pixels.
const QByteArray enormous =
    "iVBORw0KGgoAAAANSUhEUgAA6mAAAOpgCAIAAAAPsOIVAAAAEUlEQVR4nGNgGAWjYBQMdwAAA+gA"
    "AbOm00YAAAAASUVORK5CYII=";

} // namespace

class TestOddPictures : public QObject
{
    Q_OBJECT

private slots:
    void whateverCanBeReadIsShownAndSaved_data();
    void whateverCanBeReadIsShownAndSaved();
    void whatCannotBeReadIsReported_data();
    void whatCannotBeReadIsReported();
    void aTruncatedPhotographShowsWhatIsThere();
};

void TestOddPictures::whateverCanBeReadIsShownAndSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QSize>("size");
    const auto decoded = [](const QByteArray &base64) { return QByteArray::fromBase64(base64); };
    const QSize small(6, 4);
    QTest::newRow("PNG that is named JPEG")
        << u"a.jpg"_s << fileOf(redImage(small), "PNG") << small;
    QTest::newRow("JPEG that is named PNG")
        << u"a.png"_s << fileOf(redImage(small), "JPEG") << small;
    QTest::newRow("orientation tag") << u"a.jpg"_s << sideways(small) << small.transposed();
    QTest::newRow("16 bits") << u"a.png"_s << decoded(sixteenBits) << small;
    QTest::newRow("16 bits, transparent")
        << u"a.png"_s << fileOf(redImage(small, QImage::Format_RGBA64), "PNG") << small;
    QTest::newRow("grey scale of 16 bits")
        << u"gris.png"_s << fileOf(redImage(small, QImage::Format_Grayscale16), "PNG") << small;
    QTest::newRow("palette") << u"a.png"_s
                             << fileOf(redImage(small).convertToFormat(QImage::Format_Indexed8),
                                       "PNG")
                             << small;
    QTest::newRow("interlaced") << u"a.png"_s << decoded(interlaced) << small;
    QTest::newRow("animated PNG") << u"a.png"_s << decoded(animatedPng) << small;
    // Where there is a reader for them.
    if (QImageReader::supportedImageFormats().contains("gif")) {
        QTest::newRow("animated GIF that is named PNG")
            << u"a.png"_s << decoded(animatedGif) << small;
    }
    QTest::newRow("CMYK") << u"a.jpeg"_s << decoded(inks) << QSize(8, 8);
    QTest::newRow("a line") << u"a.png"_s << fileOf(redImage({30000, 1}), "PNG") << QSize(30000, 1);
    QTest::newRow("rubbish after it")
        << u"a.png"_s << fileOf(redImage(small), "PNG") + QByteArray(5000, 'x') << small;
}

void TestOddPictures::whateverCanBeReadIsShownAndSaved()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, bytes);
    QFETCH(const QSize, size);
    const ScratchHome home;
    ShownBoard board;
    const FileDialogAnswer dialog(writeFile(home.path(name), bytes));
    const BoxAnswer warning(u"OK"_s);

    board.click("ModoImagen");

    QVERIFY(dialog.seen());
    QVERIFY(!warning.seen());
    const auto *const image = board.only<ResizablePixmapItem>();
    QVERIFY(image);
    QCOMPARE(image->pixmap().size(), size);
    const QImage shown = image->pixmap().toImage();
    const QColor color = shown.pixelColor(size.width() / 2, size.height() / 2);
    if (name == u"gris.png"_s)
        QVERIFY(color.red() == color.green() && color.green() == color.blue());
    else
        QVERIFY2(color.red() > 250 && color.green() < 5 && color.blue() < 5,
                 qPrintable(color.name()));
    board.processEvents();

    const QString path = home.path(u"plan.vtrz"_s);
    const FileDialogAnswer saveDialog(path);
    board.click("GuardarComo");
    board.window.loadBoard(path);
    QCOMPARE(board.only<ResizablePixmapItem>()->pixmap().toImage().convertToFormat(
                 QImage::Format_ARGB32),
             shown.convertToFormat(QImage::Format_ARGB32));
}

void TestOddPictures::whatCannotBeReadIsReported_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = fileOf(redImage({600, 400}), "PNG");
    QTest::newRow("60,000 x 60,000 pixels") << QByteArray::fromBase64(enormous);
    QTest::newRow("the head alone") << whole.first(40);
    QTest::newRow("a JPEG's head alone") << fileOf(redImage({600, 400}), "JPEG").first(200);
    QTest::newRow("a board") << QByteArray(R"({"items": []})");
    QTest::newRow("zeros") << QByteArray(100'000, '\0');
}

void TestOddPictures::whatCannotBeReadIsReported()
{
    QFETCH(const QByteArray, bytes);
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::note(500, 300)}));
    const FileDialogAnswer dialog(writeFile(home.path(u"a.png"_s), bytes));
    const BoxAnswer warning(u"OK"_s);

    board.click("ModoImagen");

    QVERIFY(dialog.seen());
    QCOMPARE(warning.box().text, u"No se pudo cargar la imagen seleccionada."_s);
    QCOMPARE(board.count(), 1);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestOddPictures::aTruncatedPhotographShowsWhatIsThere()
{
    const ScratchHome home;
    ShownBoard board;
    QImage photograph(640, 480, QImage::Format_RGB32);
    for (int y = 0; y < photograph.height(); ++y) {
        for (int x = 0; x < photograph.width(); ++x)
            photograph.setPixel(x, y, qRgb(200 + x % 50, (x * y) % 30, y % 30));
    }
    const QByteArray whole = fileOf(photograph, "JPEG");
    const FileDialogAnswer dialog(writeFile(home.path(u"a.jpg"_s), whole.first(whole.size() / 2)));
    const BoxAnswer warning(u"OK"_s);

    board.click("ModoImagen");

    QVERIFY(dialog.seen());
    QVERIFY(!warning.seen());
    const auto *const image = board.only<ResizablePixmapItem>();
    QVERIFY(image);
    QCOMPARE(image->pixmap().size(), photograph.size());
    const QImage shown = image->pixmap().toImage();
    QVERIFY(shown.pixelColor(100, 50).red() > 150 && shown.pixelColor(100, 50).green() < 80);
    // The rest is grey.
    const QColor rest = shown.pixelColor(600, 470);
    QVERIFY2(rest.red() < 150, qPrintable(rest.name()));
}

PLUMARA_TEST(TestOddPictures)
#include "tst_oddpictures.moc"
