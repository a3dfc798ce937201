// Photographs of a telephone stand upright on the board, however it was held.

#include "items/resizablepixmapitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Which colour lies in each corner: red, green, blue or white, by their first letters, along the rows.
using Corners = QByteArray;

constexpr QSize upright(96, 64);
const Corners uprightCorners = "rgbw";

QColor colorOf(char letter)
{
    switch (letter) {
    case 'r':
        return Qt::red;
    case 'g':
        return Qt::green;
    case 'b':
        return Qt::blue;
    default:
        return Qt::white;
    }
}

/// The bytes of a photograph with those corners, and a tag by which it was taken.
QByteArray photograph(const QSize &size, const Corners &corners, char orientation)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    const QSize half = size / 2;
    for (int i = 0; i < 4; ++i)
        painter.fillRect(QRect(QPoint(i % 2 * half.width(), i / 2 * half.height()), half),
                         colorOf(corners.at(i)));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "JPEG"))
        qFatal("The test cannot make its picture");
    QByteArray tag("\xff\xe1\x00\x22"
                   "Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x00"
                   "\0\0\0\0\0\0",
                   36);
    constexpr int orientationPlace = 29;
    tag[orientationPlace] = orientation;
    return bytes.insert(2, tag);
}

Corners cornersOf(const QImage &image)
{
    Corners corners;
    for (int i = 0; i < 4; ++i) {
        const QColor color = image.pixelColor(image.width() * (1 + 2 * (i % 2)) / 4,
                                              image.height() * (1 + 2 * (i / 2)) / 4);
        // JPEG changes them by a shade.
        const bool red = color.red() > 127;
        const bool green = color.green() > 127;
        if (red)
            corners += green ? 'w' : 'r';
        else
            corners += green ? 'g' : 'b';
    }
    return corners;
}

} // namespace

class TestPhotographs : public QObject
{
    Q_OBJECT

private slots:
    void aPhotographStandsUpright_data();
    void aPhotographStandsUpright();
    void aTagThatMeansNothingTurnsNothing_data();
    void aTagThatMeansNothingTurnsNothing();
    void theUprightPhotographIsInTheMiddleAndIsSaved();
};

void TestPhotographs::aPhotographStandsUpright_data()
{
    QTest::addColumn<char>("orientation");
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<bool>("lying");
    // What the first row and the first column of a stored picture are, seen upright.
    QTest::newRow("top, left") << '\1' << QByteArray("rgbw") << false;
    QTest::newRow("top, right") << '\2' << QByteArray("grwb") << false;
    QTest::newRow("bottom, right") << '\3' << QByteArray("wbgr") << false;
    QTest::newRow("bottom, left") << '\4' << QByteArray("bwrg") << false;
    QTest::newRow("left, top") << '\5' << QByteArray("rbgw") << true;
    QTest::newRow("right, top") << '\6' << QByteArray("gwrb") << true;
    QTest::newRow("right, bottom") << '\7' << QByteArray("wgbr") << true;
    QTest::newRow("left, bottom") << '\10' << QByteArray("brwg") << true;
}

void TestPhotographs::aPhotographStandsUpright()
{
    QFETCH(const char, orientation);
    QFETCH(const QByteArray, stored);
    QFETCH(const bool, lying);
    const ScratchHome home;
    ShownBoard board;
    const QSize size = lying ? upright.transposed() : upright;
    const FileDialogAnswer dialog(
        writeFile(home.path(u"a.jpg"_s), photograph(size, stored, orientation)));

    board.click("ModoImagen");

    QVERIFY(dialog.seen());
    const auto *const image = board.only<ResizablePixmapItem>();
    QVERIFY(image);
    QCOMPARE(image->pixmap().size(), upright);
    QCOMPARE(cornersOf(image->pixmap().toImage()), uprightCorners);
}

void TestPhotographs::aTagThatMeansNothingTurnsNothing_data()
{
    QTest::addColumn<char>("orientation");
    QTest::newRow("none") << '\0';
    QTest::newRow("beyond all") << '\11';
    QTest::newRow("far beyond") << '\177';
}

void TestPhotographs::aTagThatMeansNothingTurnsNothing()
{
    QFETCH(const char, orientation);
    const ScratchHome home;
    ShownBoard board;
    const FileDialogAnswer dialog(
        writeFile(home.path(u"a.jpg"_s), photograph(upright, uprightCorners, orientation)));

    board.click("ModoImagen");

    QVERIFY(board.only<ResizablePixmapItem>());
    QCOMPARE(board.only<ResizablePixmapItem>()->pixmap().size(), upright);
    QCOMPARE(cornersOf(board.only<ResizablePixmapItem>()->pixmap().toImage()), uprightCorners);
}

void TestPhotographs::theUprightPhotographIsInTheMiddleAndIsSaved()
{
    const ScratchHome home;
    ShownBoard board;
    {
        const FileDialogAnswer dialog(
            writeFile(home.path(u"a.jpg"_s), photograph(upright.transposed(), "gwrb", '\6')));
        board.click("ModoImagen");
    }
    QCOMPARE(board.only<ResizablePixmapItem>()->pos(), QPointF(960 - 48, 540 - 32));

    const QString path = home.path(u"plan.vtrz"_s);
    {
        const FileDialogAnswer dialog(path);
        board.click("GuardarComo");
    }
    const QImage shown = board.only<ResizablePixmapItem>()->pixmap().toImage();
    board.window.loadBoard(path);

    const QImage opened = board.only<ResizablePixmapItem>()->pixmap().toImage();
    QCOMPARE(opened.convertToFormat(QImage::Format_RGB32),
             shown.convertToFormat(QImage::Format_RGB32));
    QCOMPARE(cornersOf(opened), uprightCorners);
}

PLUMARA_TEST(TestPhotographs)
#include "tst_photographs.moc"
