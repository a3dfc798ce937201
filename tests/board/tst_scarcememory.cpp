// What becomes of a board when there is no memory left for what is asked of it.

#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "painting/canvasview.h"
#include "tests/board/presentation.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/items/strokes.h"
#include "tests/support/look/canvaspicture.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/memorylimit.h"
#include "tests/support/system/scratchhome.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 megabyte = qint64(1024) * 1024;

/// A board with one note, bound to "antes.vtrz" in the home folder, that has been shown and has
/// shown a box before: what both take once is had.
struct BoundBoard
{
    ScratchHome home;
    ShownBoard board;

    BoundBoard()
    {
        board.window.loadBoard(
            BoardFile::write(path(u"antes.vtrz"_s), QJsonArray{BoardFile::note(500, 300)}));
        const BoxAnswer warning(u"OK"_s);
        board.window.loadBoard(path(u"nada.vtrz"_s));
        board.processEvents();
    }
    QString path(const QString &name) const { return home.path(name); }
    bool isAsItWas()
    {
        return board.count() == 1 && board.only<StickyNoteItem>()
            && board.name() == u"antes.vtrz"_s;
    }
};

/// A picture that does not get smaller when it is packed.
QPixmap noise()
{
    QImage image(750, 500, QImage::Format_RGB32);
    QRandomGenerator(1).fillRange(reinterpret_cast<quint32 *>(image.bits()),
                                  image.sizeInBytes() / 4);
    return QPixmap::fromImage(image);
}

/// Counts how often the watched widget is painted.
class PaintCount : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return false;
    }
};

constexpr int manyStrokes = 1500;

/// A board file of 5 MB.
QString writeLargeBoard(const QString &path)
{
    QByteArray text = R"({"items": [)";
    for (int i = 0; i < manyStrokes; ++i) {
        text += i == 0 ? "" : ",";
        text += R"({"type": "freedraw", "penColor": "#000000", "penWidth": 2, "path": [)";
        for (int j = 0; j < 100; ++j) {
            text += j == 0 ? R"({"type": 0, "x": )" : R"(,{"type": 1, "x": )";
            text += QByteArray::number(i + j) + R"(, "y": )" + QByteArray::number(j) + '}';
        }
        text += "]}";
    }
    return writeFile(path, text + "]}");
}

} // namespace

class TestScarceMemory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aBoardThatIsTooLargeCannotBeOpened_data();
    void aBoardThatIsTooLargeCannotBeOpened();
    void gigabytesThatMayBeABoardCannotBeOpened();
    void manyItemsAreOpenedAllOrNotAtAll_data();
    void manyItemsAreOpenedAllOrNotAtAll();
    void aBoardThatCannotBeWrittenDownLeavesItsFile();
    void aPictureThatCannotBePackedLeavesTheFile_data();
    void aPictureThatCannotBePackedLeavesTheFile();
    void aPictureThatCannotBeUnpackedIsNotLost();
    void aPictureThatIsTooLargeIsReported_data();
    void aPictureThatIsTooLargeIsReported();
    void theBoardIsSeenWithoutItsKeptPicture();
    void whatIsDrawnIsSeenWithoutTheKeptPicture();
    void whatMovesIsSeenWithoutWhatIsKeptBeside();
    void aPresentationGoesOn();
};

void TestScarceMemory::initTestCase()
{
    if (!MemoryLimit::isPossible())
        QSKIP("A sanitizer does not bear to get no memory.");
}

void TestScarceMemory::aBoardThatIsTooLargeCannotBeOpened_data()
{
    QTest::addColumn<int>("megabytes");
    for (const int room : {1, 8, 24, 43, 57, 96})
        QTest::addRow("%d MB", room) << room;
}

void TestScarceMemory::aBoardThatIsTooLargeCannotBeOpened()
{
    QFETCH(const int, megabytes);
    BoundBoard at;
    const QString path = writeLargeBoard(at.path(u"grande.vtrz"_s));
    const BoxAnswer warning(u"OK"_s);
    {
        const MemoryLimit limit(megabytes * megabyte);
        at.board.window.loadBoard(path);
    }

    // The file alone has 5 MB, and some are kept back.
    if (megabytes <= 8)
        QVERIFY(warning.seen());
    if (warning.seen()) {
        QCOMPARE(warning.box().text, u"No se pudo abrir el archivo."_s);
        QVERIFY(at.isAsItWas());
    } else {
        QCOMPARE(at.board.count(), manyStrokes);
    }
    at.board.window.loadBoard(path);
    QCOMPARE(at.board.count(), manyStrokes);
}

void TestScarceMemory::gigabytesThatMayBeABoardCannotBeOpened()
{
    BoundBoard at;
    QFile file(writeFile(at.path(u"grande.vtrz"_s), "{"));
    QVERIFY(file.resize(qint64(2) * 1024 * megabyte));
    const BoxAnswer warning(u"OK"_s);
    {
        const MemoryLimit limit(1024 * megabyte);
        at.board.window.loadBoard(file.fileName());
    }

    QCOMPARE(warning.box().text, u"No se pudo abrir el archivo."_s);
    QVERIFY(at.isAsItWas());
}

void TestScarceMemory::manyItemsAreOpenedAllOrNotAtAll_data()
{
    QTest::addColumn<QJsonObject>("item");
    QTest::addColumn<int>("count");
    // As many as take some dozens of megabytes.
    QTest::newRow("notes") << BoardFile::note(10, 20) << 600;
    QTest::newRow("arrows") << BoardFile::arrow(10, 20, 50, 40) << 6000;
    QTest::newRow("strokes") << BoardFile::stroke(10, 20, 50, 40) << 6000;
}

void TestScarceMemory::manyItemsAreOpenedAllOrNotAtAll()
{
    QFETCH(const QJsonObject, item);
    QFETCH(const int, count);
    BoundBoard at;
    QJsonArray items;
    for (int i = 0; i < count; ++i)
        items << item;
    const QString path = BoardFile::write(at.path(u"muchos.vtrz"_s), items);

    int failures = 0;
    int successes = 0;
    for (qint64 room = 2 * megabyte; room < 80 * megabyte; room += 4 * megabyte) {
        at.board.window.loadBoard(at.path(u"antes.vtrz"_s));
        const BoxAnswer warning(u"OK"_s);
        {
            const MemoryLimit limit(room);
            at.board.window.loadBoard(path);
        }
        if (warning.seen()) {
            ++failures;
            QCOMPARE(warning.box().text, u"No se pudo abrir el archivo."_s);
            QVERIFY(at.isAsItWas());
        } else {
            ++successes;
            QCOMPARE(at.board.count(), count);
        }
    }
    QVERIFY(failures > 0 && successes > 0);
}

void TestScarceMemory::aBoardThatCannotBeWrittenDownLeavesItsFile()
{
    BoundBoard at;
    const QString path = writeLargeBoard(at.path(u"grande.vtrz"_s));
    at.board.window.loadBoard(path);
    const QByteArray before = readFile(path);
    at.board.window.setUnsaved(true);
    const BoxAnswer warning(u"OK"_s);
    {
        const MemoryLimit limit(16 * megabyte);
        at.board.window.saveBoard();
    }

    QCOMPARE(warning.box().text, u"No se pudo guardar el archivo."_s);
    QCOMPARE(readFile(path), before);
    QCOMPARE(at.board.count(), manyStrokes);
    QVERIFY(at.board.marked());
    at.board.window.saveBoard();
    QCOMPARE(BoardFile::items(path).size(), manyStrokes);
    QVERIFY(!at.board.marked());
}

void TestScarceMemory::aPictureThatCannotBePackedLeavesTheFile_data()
{
    QTest::addColumn<QPixmap>("picture");
    QTest::addColumn<qint64>("least");
    QTest::addColumn<qint64>("most");
    QTest::addColumn<qint64>("step");
    QTest::newRow("a photograph") << noise() << 8 * megabyte << 20 * megabyte << megabyte / 4;
    // Room for its text takes nearly all that is expected to be there, and what packs it gets none.
    QPixmap drawing(4096, 2040);
    drawing.fill(Qt::red);
    QTest::newRow("a large drawing")
        << drawing << 12 * megabyte - megabyte / 2 << 13 * megabyte << megabyte / 16;
    // So many pixels that room for their text leaves hardly any to pack them.
    QPixmap larger(4000, 3000);
    larger.fill(Qt::red);
    QTest::newRow("a larger drawing") << larger << 15 * megabyte << 17 * megabyte << megabyte / 16;
}

void TestScarceMemory::aPictureThatCannotBePackedLeavesTheFile()
{
    QFETCH(const QPixmap, picture);
    QFETCH(const qint64, least);
    QFETCH(const qint64, most);
    QFETCH(const qint64, step);
    BoundBoard at;
    at.board.scene.addItem(new ResizablePixmapItem(picture));
    at.board.processEvents();
    at.board.window.saveBoard();
    const QString path = at.path(u"antes.vtrz"_s);
    const QByteArray before = readFile(path);
    QCOMPARE(BoardFile::items(path).size(), 2);

    // However far the work gets.
    int failures = 0;
    for (qint64 room = least; room < most; room += step) {
        const BoxAnswer warning(u"OK"_s);
        {
            const MemoryLimit limit(room);
            at.board.window.saveBoard();
        }
        if (warning.seen()) {
            QCOMPARE(warning.box().text, u"No se pudo guardar el archivo."_s);
            ++failures;
        }
        // Whether it was saved or not, the picture is there.
        QVERIFY(readFile(path) == before);
    }
    QVERIFY(failures > 0);
}

void TestScarceMemory::aPictureThatCannotBeUnpackedIsNotLost()
{
    BoundBoard at;
    // Few bytes that become 24 MB, which is more than what is made sure of beforehand.
    QPixmap drawing(3000, 2000);
    drawing.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    QVERIFY(buffer.open(QIODevice::WriteOnly) && drawing.save(&buffer, "PNG"));
    const QString path =
        BoardFile::write(at.path(u"foto.vtrz"_s), QJsonArray{BoardFile::image(10, 20, png)});

    // However far the work gets.
    int failures = 0;
    int successes = 0;
    for (qint64 room = 4 * megabyte; room < 64 * megabyte; room += megabyte) {
        at.board.window.loadBoard(at.path(u"antes.vtrz"_s));
        const BoxAnswer warning(u"OK"_s);
        {
            const MemoryLimit limit(room);
            at.board.window.loadBoard(path);
        }
        if (warning.seen()) {
            ++failures;
            QCOMPARE(warning.box().text, u"No se pudo abrir el archivo."_s);
            QVERIFY(at.isAsItWas());
        } else {
            ++successes;
            QVERIFY(at.board.only<ResizablePixmapItem>());
            QCOMPARE(at.board.only<ResizablePixmapItem>()->pixmap().size(), drawing.size());
        }
    }
    QVERIFY(failures > 0 && successes > 0);
}

void TestScarceMemory::aPictureThatIsTooLargeIsReported_data()
{
    QTest::addColumn<int>("megabytes");
    QTest::newRow("half of its pixels") << 40;
    QTest::newRow("no more than is kept back") << 11;
}

void TestScarceMemory::aPictureThatIsTooLargeIsReported()
{
    QFETCH(const int, megabytes);
    BoundBoard at;
    const QString path = at.path(u"foto.png"_s);
    {
        QImage image(5000, 4000, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(path));
    }
    {
        const FileDialogAnswer dialog({}); // what a dialog takes once
        at.board.click("ModoImagen");
    }
    const FileDialogAnswer dialog(path);
    const BoxAnswer warning(u"OK"_s);
    {
        // The pixels take 80 MB.
        const MemoryLimit limit(megabytes * megabyte);
        at.board.click("ModoImagen");
    }

    QVERIFY(dialog.seen());
    QCOMPARE(warning.box().text, u"No se pudo cargar la imagen seleccionada."_s);
    QVERIFY(at.isAsItWas());
    QCOMPARE(at.board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestScarceMemory::theBoardIsSeenWithoutItsKeptPicture()
{
    BoundBoard at;
    QWidget *const canvas = at.board.view.viewport();
    QImage seen(50, 50, QImage::Format_RGB32);
    seen.fill(Qt::white);
    at.board.window.hide();
    {
        // Less than the kept picture takes.
        const MemoryLimit limit(2 * megabyte);
        at.board.window.show();
        at.board.processEvents();
        canvas->render(&seen, {}, QRegion(600, 400, 50, 50));
    }

    const QColor paper = seen.pixelColor(25, 25);
    QVERIFY2(paper.red() > 200 && paper.blue() < 200, qPrintable(paper.name()));
}

void TestScarceMemory::whatIsDrawnIsSeenWithoutTheKeptPicture()
{
    BoundBoard at;
    at.board.window.hide();
    PaintCount paints;
    {
        const MemoryLimit limit(2 * megabyte);
        at.board.window.show();
        at.board.processEvents();
        at.board.view.viewport()->installEventFilter(&paints);
        at.board.processEvents();
        paints.count = 0;
        addStroke(at.board.scene, {{900, 100}, {1000, 200}});
        at.board.processEvents();
    }

    QVERIFY(paints.count > 0);
}

void TestScarceMemory::whatMovesIsSeenWithoutWhatIsKeptBeside()
{
    BoundBoard at;
    const auto &canvas = dynamic_cast<CanvasView &>(at.board.view);
    auto *const note = at.board.only<StickyNoteItem>();
    // Across the board, so that its coverage begins with a picture of as many pixels.
    addStroke(at.board.scene, {{50, 50}, {1200, 650}});
    QCOMPARE(differences(canvas), QString());
    const QImage before = canvas.frame().picture().copy();
    {
        const MemoryLimit limit(2 * megabyte);
        for (int i = 0; i < 4; ++i) {
            note->moveBy(-20, -5);
            at.board.processEvents();
            at.board.processEvents();
        }
        QVERIFY(canvas.frame().picture() != before);
    }

    QCOMPARE(differences(canvas), QString());
}

void TestScarceMemory::aPresentationGoesOn()
{
    BoundBoard at;
    {
        const MemoryLimit limit(3 * megabyte);
        enterPresentation(at.board);
        QVERIFY(presents(at.board));
        at.board.click("ModoLapiz");
        at.board.pointer.drag({{1000, 800}, {1100, 900}});
        at.board.processEvents();
        pressKey(at.board, Qt::Key_Escape);
        at.board.processEvents();
    }

    QVERIFY(!presents(at.board));
    QVERIFY(at.board.only<FreeDrawItem>());
    QCOMPARE(at.board.count(), 2);
}

PLUMARA_TEST(TestScarceMemory)
#include "tst_scarcememory.moc"
