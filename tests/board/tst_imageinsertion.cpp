// Placing an image from a file on the board.

#include "items/resizablepixmapitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Writes a picture whose pixels differ from one another, and returns its path.
QString writePicture(const QString &path, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    }
    if (!image.save(path))
        qFatal("The test cannot write its picture");
    return path;
}

} // namespace

class TestImageInsertion : public QObject
{
    Q_OBJECT

private slots:
    void theFirstDialogStartsInTheCurrentFolder();
    void theDialogAsksForAPicture();
    void thePictureComesWithItsFullSizeIntoTheMiddle_data();
    void thePictureComesWithItsFullSizeIntoTheMiddle();
    void thePictureShowsTheFilesPixels();
    void thePictureComesSelected();
    void insertingEndsTheMode();
    void insertingMarksASavedBoard();
    void theHistoryGetsThePictureFromTheScene();
    void thePictureIsRecordedWithTheChangeOfTheScene();
    void cancellingChangesNothing();
    void anUnreadablePictureIsAnsweredWithAWarning_data();
    void anUnreadablePictureIsAnsweredWithAWarning();
    void theContentDecidesNotTheName();
};

// Stands before the other tests: later dialogs start where a file was chosen last.
void TestImageInsertion::theFirstDialogStartsInTheCurrentFolder()
{
    const ScratchHome home;
    QVERIFY(QDir::current() != QDir(home.path()));
    ShownBoard board;
    const FileDialogAnswer answer({});

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QCOMPARE(QDir(answer.dialog().folder).canonicalPath(), QDir::current().canonicalPath());
}

void TestImageInsertion::theDialogAsksForAPicture()
{
    ShownBoard board;
    const FileDialogAnswer answer({});

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QCOMPARE(answer.dialog().caption, u"Seleccionar imagen"_s);
    QCOMPARE(answer.dialog().filters, QStringList{u"Imágenes (*.png *.jpg *.jpeg)"_s});
    QCOMPARE(answer.dialog().mode, QFileDialog::AcceptOpen);
    QCOMPARE(answer.dialog().options, QFileDialog::Options());
    QCOMPARE(answer.dialog().parent, &board.window);
}

void TestImageInsertion::thePictureComesWithItsFullSizeIntoTheMiddle_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPointF>("place");
    QTest::newRow("odd sides") << u"a.png"_s << QSize(1001, 701) << QPointF(460, 190);
    QTest::newRow("even sides") << u"a.png"_s << QSize(1000, 700) << QPointF(460, 190);
    QTest::newRow("one pixel") << u"a.png"_s << QSize(1, 1) << QPointF(960, 540);
    QTest::newRow("JPEG") << u"a.jpg"_s << QSize(641, 480) << QPointF(640, 300);
    QTest::newRow("JPEG, long ending") << u"a.jpeg"_s << QSize(640, 481) << QPointF(640, 300);
    // Elsewhere such an ending stands for finer pixels; here a picture's pixels are the board's.
    QTest::newRow("twice as fine by name") << u"a@2x.png"_s << QSize(200, 100) << QPointF(860, 490);
    QTest::newRow("thrice as fine by name") << u"a@3x.jpg"_s << QSize(90, 60) << QPointF(915, 510);
    QTest::newRow("larger than the board") << u"a.png"_s << QSize(2001, 1201) << QPointF(-40, -60);
}

void TestImageInsertion::thePictureComesWithItsFullSizeIntoTheMiddle()
{
    QFETCH(const QString, file);
    QFETCH(const QSize, size);
    const ScratchHome home;
    ShownBoard board;
    const FileDialogAnswer answer(writePicture(home.path(file), size));

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    const auto *const image = board.only<ResizablePixmapItem>();
    QVERIFY(image);
    QCOMPARE(image->pixmap().size(), size);
    QCOMPARE(image->pixmap().deviceIndependentSize(), QSizeF(size));
    QTEST(image->pos(), "place");
    QCOMPARE(image->zValue(), 0.0);
    QVERIFY(!image->parentItem());
}

void TestImageInsertion::thePictureShowsTheFilesPixels()
{
    const ScratchHome home;
    const QString path = writePicture(home.path(u"a.png"_s), {300, 200});
    ShownBoard board;
    const FileDialogAnswer answer(path);

    board.click("ModoImagen");

    QCOMPARE(
        board.only<ResizablePixmapItem>()->pixmap().toImage().convertToFormat(QImage::Format_RGB32),
        QImage(path).convertToFormat(QImage::Format_RGB32));
}

void TestImageInsertion::thePictureComesSelected()
{
    const ScratchHome home;
    const QString path = writePicture(home.path(u"a.png"_s), {300, 200});
    ShownBoard board;
    const FileDialogAnswer answer(path);

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QVERIFY(board.only<ResizablePixmapItem>()->isSelected());
}

void TestImageInsertion::insertingEndsTheMode()
{
    const ScratchHome home;
    const QString path = writePicture(home.path(u"a.png"_s), {300, 200});
    ShownBoard board;
    const FileDialogAnswer answer(path);

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
    QCOMPARE(board.view.cursor().shape(), Qt::ArrowCursor);
}

void TestImageInsertion::insertingMarksASavedBoard()
{
    const ScratchHome home;
    const QString path = writePicture(home.path(u"a.png"_s), {300, 200});
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    const FileDialogAnswer answer(path);

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestImageInsertion::theHistoryGetsThePictureFromTheScene()
{
    const ScratchHome home;
    const QString path = writePicture(home.path(u"a.png"_s), {300, 200});
    ShownBoard board;
    board.window.captureSnapshot();
    const FileDialogAnswer answer(path);
    board.click("ModoImagen");
    board.processEvents();

    board.window.undoMode();
    QCOMPARE(board.count(), 0);
    board.window.redoMode();
    QCOMPARE(board.only<ResizablePixmapItem>()->pos(), QPointF(810, 440));
}

void TestImageInsertion::thePictureIsRecordedWithTheChangeOfTheScene()
{
    const ScratchHome home;
    const QString path = writePicture(home.path(u"a.png"_s), {300, 200});
    ShownBoard board;
    board.window.captureSnapshot();
    const FileDialogAnswer answer(path);
    board.window.setImageMode();

    board.window.undoMode();
    QCOMPARE(board.count(), 1);
    board.processEvents();
    board.window.undoMode();
    QCOMPARE(board.count(), 0);
}

void TestImageInsertion::cancellingChangesNothing()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    const FileDialogAnswer answer({});

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QCOMPARE(board.count(), 0);
    QCOMPARE(board.name(), u"plan.vtrz"_s);
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestImageInsertion::anUnreadablePictureIsAnsweredWithAWarning_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a text") << QByteArray("No soy una imagen");
    QTest::newRow("a picture's beginning only") << QByteArray("\x89PNG\r\n\x1a\n");
}

void TestImageInsertion::anUnreadablePictureIsAnsweredWithAWarning()
{
    QFETCH(const QByteArray, content);
    const ScratchHome home;
    const QString path = writeFile(home.path(u"a.png"_s), content);
    ShownBoard board;
    const FileDialogAnswer file(path);
    const BoxAnswer warning(u"OK"_s);

    board.click("ModoImagen");

    QVERIFY(file.seen());
    QVERIFY(warning.seen());
    QCOMPARE(warning.box().title, u"Error"_s);
    QCOMPARE(warning.box().text, u"No se pudo cargar la imagen seleccionada."_s);
    QCOMPARE(warning.box().icon, QMessageBox::Warning);
    QCOMPARE(warning.box().buttons, QStringList{u"OK"_s});
    QCOMPARE(warning.box().parent, &board.window);
    QCOMPARE(board.count(), 0);
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestImageInsertion::theContentDecidesNotTheName()
{
    const ScratchHome home;
    const QString picture = writePicture(home.path(u"a.png"_s), {300, 200});
    const QString path = writeFile(home.path(u"b.jpg"_s), readFile(picture));
    ShownBoard board;
    const FileDialogAnswer answer(path);

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QVERIFY(board.only<ResizablePixmapItem>());
    QCOMPARE(board.only<ResizablePixmapItem>()->pixmap().size(), QSize(300, 200));
}

PLUMARA_TEST(TestImageInsertion)
#include "tst_imageinsertion.moc"
