// What undo brings back of each kind of item, and what it loses on purpose.

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QPen>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Records the board as it is, then another state, and goes back to the first.
void undoAStep(ShownBoard &board)
{
    board.processEvents();
    board.window.captureSnapshot();
    board.scene.addItem(new ArrowLineItem({900, 550}, {950, 600}));
    board.processEvents();
    board.click("ModoDeshacer");
}

/// A picture that a smaller copy cannot bring back.
QPixmap checkered()
{
    QImage image(200, 200, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, (x / 5 + y / 5) % 2 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    }
    return QPixmap::fromImage(image);
}

/// Drags the handle at the bottom-right corner of the only image, which must be selected.
void dragCorner(ShownBoard &board, QPointF by)
{
    const auto *const image = board.only<ResizablePixmapItem>();
    const QPointF corner =
        image->pos() + QPointF(image->pixmap().width(), image->pixmap().height());
    board.pointer.drag({corner, corner + by});
}

bool showsDetail(const ShownBoard &board)
{
    const QPixmap shown = board.only<ResizablePixmapItem>()->pixmap();
    const QPixmap scaled =
        checkered().scaled(shown.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return shown.toImage() == scaled.toImage();
}

} // namespace

class TestRestoredItems : public QObject
{
    Q_OBJECT

private slots:
    void aNoteKeepsPlaceAndColourAndLosesItsText();
    void aStrokeKeepsPathAndColourAndLosesItsWidth();
    void anArrowKeepsLineAndPlaceAndLosesColourAndWidth();
    void anImageKeepsPlaceAndPicture();
    void aResizedImageScalesFromItsFullSize();
    void aRestoredImageScalesFromWhatItShowed();
    void anEmptyImageDoesNotComeBack();
    void itemsComeBackUnselected();
    void openedItemsComeBackAtTheHeightsOfDrawnOnes();
    void itemsOfOtherKindsAreLost();
};

void TestRestoredItems::aNoteKeepsPlaceAndColourAndLosesItsText()
{
    ShownBoard board;
    auto *const note = new StickyNoteItem;
    note->setPos(500, 300);
    note->setNoteColor(StickyNoteItem::Pink);
    note->setText(u"Comprar pan"_s);
    board.scene.addItem(note);

    undoAStep(board);

    const auto *const restored = board.only<StickyNoteItem>();
    QCOMPARE(restored->pos(), QPointF(500, 300));
    QCOMPARE(restored->noteColor(), StickyNoteItem::Pink);
    QCOMPARE(restored->getText(), u"Agregar texto..."_s);
    QVERIFY(!restored->parent());
}

void TestRestoredItems::aStrokeKeepsPathAndColourAndLosesItsWidth()
{
    ShownBoard board;
    QPainterPath path({500, 300});
    path.cubicTo(520, 200, 560, 400, 600, 300);
    path.moveTo(610, 310);
    path.lineTo(620.25, 320.75);
    auto *const stroke = new FreeDrawItem;
    stroke->setPath(path);
    stroke->setColor(QColor(10, 20, 30));
    stroke->setWidth(9);
    board.scene.addItem(stroke);

    undoAStep(board);

    const auto *const restored = board.only<FreeDrawItem>();
    QCOMPARE(restored->path(), path);
    QCOMPARE(restored->color(), QColor(10, 20, 30));
    QCOMPARE(static_cast<const QGraphicsPathItem *>(restored)->pen().width(), 2);
}

void TestRestoredItems::anArrowKeepsLineAndPlaceAndLosesColourAndWidth()
{
    ShownBoard board;
    auto *const arrow = new ArrowLineItem({500, 300}, {600, 400});
    arrow->setPos(7, 9);
    arrow->setColor(Qt::red);
    arrow->setWidth(9);
    board.scene.addItem(arrow);
    board.processEvents();
    board.window.captureSnapshot();
    board.scene.clear();
    board.processEvents();

    board.click("ModoDeshacer");

    const auto *const restored = board.only<ArrowLineItem>();
    QCOMPARE(restored->line(), QLineF(500, 300, 600, 400));
    QCOMPARE(restored->pos(), QPointF(7, 9));
    const QPen pen = static_cast<const QGraphicsLineItem *>(restored)->pen();
    QCOMPARE(pen.color(), QColor(Qt::black));
    QCOMPARE(pen.width(), 2);
}

void TestRestoredItems::anImageKeepsPlaceAndPicture()
{
    ShownBoard board;
    auto *const image = new ResizablePixmapItem(checkered());
    image->setPos(500, 300);
    board.scene.addItem(image);

    undoAStep(board);

    const auto *const restored = board.only<ResizablePixmapItem>();
    QCOMPARE(restored->pos(), QPointF(500, 300));
    QCOMPARE(restored->pixmap().toImage(), checkered().toImage());
}

void TestRestoredItems::aResizedImageScalesFromItsFullSize()
{
    ShownBoard board;
    board.scene.addItem(new ResizablePixmapItem(checkered()));
    board.only<ResizablePixmapItem>()->setPos(300, 200);
    board.only<ResizablePixmapItem>()->setSelected(true);

    dragCorner(board, {-150, -150});
    QVERIFY(board.only<ResizablePixmapItem>()->pixmap().width() < 60);
    dragCorner(board, {150, 150});

    QVERIFY(board.only<ResizablePixmapItem>()->pixmap().width() > 190);
    QVERIFY(showsDetail(board));
}

void TestRestoredItems::aRestoredImageScalesFromWhatItShowed()
{
    ShownBoard board;
    board.scene.addItem(new ResizablePixmapItem(checkered()));
    board.only<ResizablePixmapItem>()->setPos(300, 200);
    board.only<ResizablePixmapItem>()->setSelected(true);
    dragCorner(board, {-150, -150});

    undoAStep(board);
    board.only<ResizablePixmapItem>()->setSelected(true);
    dragCorner(board, {150, 150});

    QVERIFY(board.only<ResizablePixmapItem>()->pixmap().width() > 190);
    QVERIFY(!showsDetail(board));
}

void TestRestoredItems::anEmptyImageDoesNotComeBack()
{
    ShownBoard board;
    board.scene.addItem(new ResizablePixmapItem(QPixmap()));
    QCOMPARE(board.count(), 1);

    undoAStep(board);

    QCOMPARE(board.count(), 0);
}

void TestRestoredItems::itemsComeBackUnselected()
{
    ShownBoard board;
    auto *const note = new StickyNoteItem;
    board.scene.addItem(note);
    note->setSelected(true);

    undoAStep(board);

    QVERIFY(board.only<StickyNoteItem>());
    QVERIFY(board.scene.selectedItems().isEmpty());
}

void TestRestoredItems::openedItemsComeBackAtTheHeightsOfDrawnOnes()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s),
                                            QJsonArray{BoardFile::note(500, 300),
                                                       BoardFile::stroke(100, 100, 200, 200),
                                                       BoardFile::arrow(300, 100, 400, 200)}));
    QCOMPARE(board.only<FreeDrawItem>()->zValue(), 2.0);
    QCOMPARE(board.only<ArrowLineItem>()->zValue(), 3.0);
    board.processEvents();
    board.window.captureSnapshot();
    board.scene.clear();
    board.processEvents();

    board.click("ModoDeshacer");

    QCOMPARE(board.only<StickyNoteItem>()->zValue(), 1.0);
    QCOMPARE(board.only<FreeDrawItem>()->zValue(), 1.0);
    QCOMPARE(board.only<ArrowLineItem>()->zValue(), 2.0);
}

void TestRestoredItems::itemsOfOtherKindsAreLost()
{
    ShownBoard board;
    board.scene.addRect(300, 200, 50, 50);
    board.scene.addItem(new StickyNoteItem);

    undoAStep(board);

    QCOMPARE(board.count(), 1);
    QVERIFY(board.only<StickyNoteItem>());
}

PLUMARA_TEST(TestRestoredItems)
#include "tst_restoreditems.moc"
