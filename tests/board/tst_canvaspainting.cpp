// What the board shows is what painting everything anew would show, and costs far less.
#include "items/arrowlineitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "painting/canvasview.h"
#include "tests/board/paintedcanvas.h"
#include "tests/board/presentation.h"
#include "tests/board/shownboard.h"
#include "tests/support/items/strokes.h"
#include "tests/support/look/canvaspicture.h"
#include "tests/support/main/registeredtest.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QGraphicsTextItem>
#include <QMimeData>
#include <QPushButton>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTest>

#include <cmath>
#include <functional>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

CanvasView &canvasOf(const ShownBoard &board)
{
    return dynamic_cast<CanvasView &>(board.view);
}

QString differences(const ShownBoard &board)
{
    return differences(canvasOf(board));
}

QPainterPath circle(QPointF center, qreal radius, int points)
{
    QPainterPath path(center + QPointF(radius, 0));
    for (int i = 1; i < points; ++i) {
        const qreal angle = i * 6.3 / points;
        path.lineTo(center + radius * QPointF(std::cos(angle), std::sin(angle)));
    }
    return path;
}

/// Strokes all over the board.
void addLesson(QGraphicsScene &scene, int count)
{
    QRandomGenerator random(2026);
    for (int i = 0; i < count; ++i) {
        auto *const stroke = new FreeDrawItem;
        stroke->setPath(circle({qreal(random.bounded(1920)), qreal(random.bounded(1080))},
                               20 + random.bounded(120), 60));
        scene.addItem(stroke);
    }
}

QPixmap picture()
{
    QPixmap pixmap(160, 120);
    pixmap.fill(QColor(90, 160, 200));
    return pixmap;
}

/// Strokes that cover the whole board, of which about a megabyte is kept each.
QList<FreeDrawItem *> addCovers(QGraphicsScene &scene, int count, qreal shift, int width = 6)
{
    QList<FreeDrawItem *> covers;
    for (int i = 0; i < count; ++i) {
        QPainterPath path;
        for (int y = 0; y < 1080; y += 12) {
            path.moveTo(0, y + 0.1 * i + shift);
            path.lineTo(1920, y + 3);
        }
        covers << addStroke(scene, path);
        covers.constLast()->setWidth(width);
    }
    return covers;
}

/// Rows of \a count seeds, or of one where pixels are finer: each look at them then takes longer.
void addSeeds(quint32 count)
{
    QTest::addColumn<quint32>("seed");
    const quint32 last = qGuiApp->devicePixelRatio() > 1 ? 1 : count;
    for (quint32 seed = 1; seed <= last; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

} // namespace

class TestCanvasPainting : public QObject
{
    Q_OBJECT

private slots:
    void everyKindLooksAsPaintedAnew();
    void wideArrowHeadsSurviveWhatHappensBesideThem_data();
    void wideArrowHeadsSurviveWhatHappensBesideThem();
    void whatHappensByChanceLeavesNothingBehind_data();
    void whatHappensByChanceLeavesNothingBehind();
    void gesturesByChanceLookAsPaintedAnew_data();
    void gesturesByChanceLookAsPaintedAnew();
    void whatMovesBetweenOthersLooksAsPaintedAnew_data();
    void whatMovesBetweenOthersLooksAsPaintedAnew();
    void whatMovesOverADashedOutlineLooksAsPaintedAnew();
    void whatHappensAmidAGestureIsSeen();
    void aSelectedNoteHasAFrame();
    void theFrameOfASelectedNoteGoesWithIt();
    void aDeletedArrowLeavesNoHead();
    void anotherTextInTheSamePlaceIsSeen();
    void whereATextWouldBeDroppedIsSeen();
    void hairlinesVanishWhenErased();
    void anArrowThatEndsFarAwayLooksLikeANearerOne_data();
    void anArrowThatEndsFarAwayLooksLikeANearerOne();
    void anArrowThatPassesFarAwayIsNotSeen();
    void whatIsAddedToAStrokeLooksAsPaintedAnew();
    void aPresentationLooksAsPaintedAnew();
    void aMoveOfThePenPaintsOneStroke();
    void aMoveOfThePenShowsItsPiece();
    void whatIsMovedIsAllThatIsPainted_data();
    void whatIsMovedIsAllThatIsPainted();
    void whatIsErasedPaintsOnlyWhereItWas();
    void scrollingPaintsOnlyWhatComesIntoSight();
    void scrollingPaintsNoStrokeAgain();
    void undoingPaintsNoStrokeAgain();
    void whatMovesOutOfSightPaintsNoStroke();
    void whatWasOpenedIsPreparedWhileTheHandRests();
    void elsewhereTheViewRendersItsItems();
    void aHiddenBoardHoldsNoPictures();
    void whatIsKeptStaysWithinItsLimit();
    void whatIsKeptOfDeletedStrokesGoes();
    void aViewOfNothingIsEmpty();
};

void TestCanvasPainting::everyKindLooksAsPaintedAnew()
{
    ShownBoard board;
    addLesson(board.scene, 40);
    auto *const note = new StickyNoteItem;
    note->setPos(300, 200);
    board.scene.addItem(note);
    board.scene.addItem(new ArrowLineItem({100, 100}, {700, 500}));
    auto *const image = new ResizablePixmapItem(picture());
    image->setPos(600, 150);
    board.scene.addItem(image);
    image->setSelected(true);
    board.processEvents();
    QCOMPARE(differences(board), QString());

    image->setPos(610, 170);
    note->setPos(310, 190);
    note->setNoteColor(StickyNoteItem::Pink);
    note->setText(u"otra idea"_s);
    board.processEvents();
    QCOMPARE(differences(board), QString());

    delete note;
    board.processEvents();
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::wideArrowHeadsSurviveWhatHappensBesideThem_data()
{
    QTest::addColumn<int>("width");
    QTest::newRow("thin") << 2;
    QTest::newRow("wide") << 12;
    QTest::newRow("very wide") << 60;
}

void TestCanvasPainting::wideArrowHeadsSurviveWhatHappensBesideThem()
{
    QFETCH(const int, width);
    ShownBoard board;
    auto *const arrow = new ArrowLineItem({600, 500}, {600, 250});
    arrow->setWidth(width);
    board.scene.addItem(arrow);
    board.processEvents();

    board.click("ModoLapiz");
    board.pointer.press({500, 240});
    for (int x = 505; x < 700; x += 5) {
        board.pointer.move({qreal(x), 255});
        board.processEvents();
    }
    QCOMPARE(differences(board), QString());
    board.pointer.release({700, 240});
    board.processEvents();
    QCOMPARE(differences(board), QString());

    board.click("ModoDeshacer");
    board.processEvents();
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::whatHappensByChanceLeavesNothingBehind_data()
{
    addSeeds(4);
}

void TestCanvasPainting::whatHappensByChanceLeavesNothingBehind()
{
    QFETCH(const quint32, seed);
    constexpr int steps = 60;
    QRandomGenerator random(seed);
    ShownBoard board;
    addLesson(board.scene, 60);
    board.processEvents();
    const auto place = [&random] {
        return QPointF(80 + random.bounded(1000), 80 + random.bounded(500));
    };
    for (int step = 0; step < steps; ++step) {
        const auto items = board.scene.items();
        auto *const item = items.isEmpty() ? nullptr : items.at(random.bounded(int(items.size())));
        const int what = random.bounded(11);
        if (what == 0) {
            board.click("ModoLapiz");
            const QPointF start = board.view.mapToScene(place().toPoint());
            board.pointer.drag({start, start + QPointF(60, 30), start + QPointF(20, 90)});
        } else if (what == 1) {
            board.click("ModoLinea");
            const QPointF start = board.view.mapToScene(place().toPoint());
            board.pointer.drag({start, start + QPointF(random.bounded(200) - 100, 80)});
        } else if (what == 2) {
            auto *const note = new StickyNoteItem;
            note->setPos(place());
            board.scene.addItem(note);
        } else if (what == 3) {
            auto *const image = new ResizablePixmapItem(picture());
            image->setPos(place());
            board.scene.addItem(image);
        } else if (what == 4 && item && !item->parentItem()) {
            item->moveBy(random.bounded(200) - 100, random.bounded(200) - 100);
        } else if (what == 5 && item && !item->parentItem()) {
            delete item;
        } else if (what == 6) {
            board.view.verticalScrollBar()->setValue(random.bounded(380));
            board.view.horizontalScrollBar()->setValue(random.bounded(720));
        } else if (what == 7) {
            board.click(random.bounded(2) ? "ModoDeshacer" : "ModoRehacer");
        } else if (what == 8 && item) {
            item->setSelected(!item->isSelected());
        } else if (what == 9 && item && !item->parentItem()) {
            item->setZValue(random.bounded(4));
        } else if (auto *const arrow = dynamic_cast<ArrowLineItem *>(item)) {
            arrow->setWidth(1 + random.bounded(20));
        } else if (auto *const note = dynamic_cast<StickyNoteItem *>(item)) {
            note->setText(QString::number(random.generate()));
        }
        // Not always at rest: what comes before the next painting comes together.
        if (random.bounded(3) == 0)
            continue;
        board.processEvents();
        const QString off = differences(board);
        QVERIFY2(off.isEmpty(), qPrintable(u"step %1, kind %2: %3"_s.arg(step).arg(what).arg(off)));
    }
}

void TestCanvasPainting::gesturesByChanceLookAsPaintedAnew_data()
{
    addSeeds(3);
}

/// A person's gestures, looked at in the middle of each.
void TestCanvasPainting::gesturesByChanceLookAsPaintedAnew()
{
    QFETCH(const quint32, seed);
    constexpr int gestures = 14;
    QRandomGenerator random(seed);
    ShownBoard board;
    addLesson(board.scene, 50);
    board.scene.addItem(new ArrowLineItem({300, 120}, {900, 480}));
    board.processEvents();
    const auto place = [&] {
        return board.view.mapToScene(100 + random.bounded(900), 100 + random.bounded(400));
    };
    for (int gesture = 0; gesture < gestures; ++gesture) {
        // A note lies now above the strokes, now, as in an opened board, below them.
        const auto strokes = board.all<FreeDrawItem>();
        const qreal level = random.bounded(2) ? 2 : 1;
        for (auto *const stroke : strokes)
            stroke->setZValue(level);
        const int what = random.bounded(6);
        QPointF at = place();
        if (what == 0) {
            board.click("ModoLapiz");
        } else if (what == 1) {
            board.click("ModoLinea");
        } else if (what == 2) {
            board.click("ModoBorrador");
        } else if (what == 3) {
            board.click("ModoPostIt");
            board.pointer.click(at);
            board.click("ModoCursor");
        } else if (what == 4) {
            auto *const image = new ResizablePixmapItem(picture());
            image->setPos(at - QPointF(80, 60));
            board.scene.addItem(image);
            image->setSelected(random.bounded(2));
        } else {
            auto *const note = new StickyNoteItem;
            note->setPos(at - QPointF(150, 150));
            board.scene.addItem(note);
            board.processEvents();
            board.pointer.click(at - QPointF(100, 130)); // its text
            board.type("hola");
        }
        board.pointer.press(at);
        for (int move = 0; move < 9; ++move) {
            at += QPointF(random.bounded(60) - 25, random.bounded(60) - 25);
            board.pointer.move(at);
            const QString off = differences(board);
            QVERIFY2(off.isEmpty(),
                     qPrintable(
                         u"gesture %1, kind %2, move %3: %4"_s.arg(gesture).arg(what).arg(move).arg(
                             off)));
        }
        board.pointer.release(at);
        QVERIFY2(differences(board).isEmpty(), "released");
        if (random.bounded(4) == 0) {
            board.click("ModoDeshacer");
            QVERIFY2(differences(board).isEmpty(), "undone");
        }
        if (random.bounded(4) == 0) {
            board.view.verticalScrollBar()->setValue(random.bounded(380));
            QVERIFY2(differences(board).isEmpty(), "scrolled");
        }
    }
}

void TestCanvasPainting::whatMovesBetweenOthersLooksAsPaintedAnew_data()
{
    QTest::addColumn<int>("strokesAbove");
    QTest::newRow("nothing above") << 0;
    QTest::newRow("a little above") << 9;
    QTest::newRow("much above") << 120;
}

void TestCanvasPainting::whatMovesBetweenOthersLooksAsPaintedAnew()
{
    QFETCH(const int, strokesAbove);
    ShownBoard board;
    addLesson(board.scene, 60);
    auto *const note = new StickyNoteItem;
    note->setPos(100, 100);
    board.scene.addItem(note);
    addLesson(board.scene, strokesAbove);
    for (int i = 0; i < 30; ++i) {
        note->moveBy(13 * (i % 5), 7 * (i % 3));
        QCOMPARE(differences(board), QString());
    }
}

void TestCanvasPainting::whatMovesOverADashedOutlineLooksAsPaintedAnew()
{
    ShownBoard board;
    addLesson(board.scene, 30);
    auto *const arrow = new ArrowLineItem({200, 120}, {900, 480});
    arrow->setWidth(12);
    board.scene.addItem(arrow);
    arrow->setSelected(true);
    auto *const note = new StickyNoteItem;
    note->setPos(250, 150);
    board.scene.addItem(note);
    for (int i = 0; i < 6; ++i) {
        note->moveBy(37, 11);
        QCOMPARE(differences(board), QString());
    }
}

void TestCanvasPainting::aSelectedNoteHasAFrame()
{
    ShownBoard board;
    if (!isOnReadableScreen(canvasOf(board)))
        QSKIP("The screen cannot be read here.");
    auto *const note = new StickyNoteItem;
    note->setPos(300, 200);
    board.scene.addItem(note);
    board.processEvents();
    board.processEvents();
    const QImage before = shownPicture(canvasOf(board));

    board.pointer.click({305, 205});
    QVERIFY(note->isSelected());
    board.processEvents();
    board.processEvents();
    const QImage selected = shownPicture(canvasOf(board));
    // Dashes all around, and nothing else.
    const QRect paper(300, 200, 300, 300);
    const QRegion frame = QRegion(paper) - paper.adjusted(1, 1, -1, -1);
    int black = 0;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            if (!frame.contains(QPoint(x, y)))
                QCOMPARE(selected.pixel(x, y), before.pixel(x, y));
            else if (selected.pixelColor(x, y) == QColor(Qt::black))
                ++black;
            else
                QCOMPARE(selected.pixelColor(x, y), QColor(Qt::white));
        }
    }
    QVERIFY(black > 500 && black < 800);

    board.pointer.click({1000, 600});
    QVERIFY(!note->isSelected());
    board.processEvents();
    board.processEvents();
    QCOMPARE(shownPicture(canvasOf(board)), before);
}

void TestCanvasPainting::theFrameOfASelectedNoteGoesWithIt()
{
    ShownBoard board;
    addLesson(board.scene, 40);
    auto *const note = new StickyNoteItem;
    note->setPos(300, 200);
    board.scene.addItem(note);
    board.processEvents();

    board.pointer.press({305, 205});
    QCOMPARE(differences(board), QString());
    for (const QPointF place : {QPointF(310, 215), QPointF(390, 240), QPointF(391, 241)}) {
        board.pointer.move(place);
        QCOMPARE(differences(board), QString());
    }
    board.pointer.release({391, 241});
    board.view.verticalScrollBar()->setValue(33);
    QCOMPARE(differences(board), QString());
    // A stroke across the frame has only its own pixels painted.
    addStroke(board.scene, {{350, 260}, {500, 300}, {420, 230}});
    QCOMPARE(differences(board), QString());
    note->setNoteColor(StickyNoteItem::Pink);
    QCOMPARE(differences(board), QString());
    delete note;
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::whatHappensAmidAGestureIsSeen()
{
    ShownBoard board;
    addLesson(board.scene, 60);
    auto *const note = new StickyNoteItem;
    note->setPos(400, 200);
    board.scene.addItem(note);
    auto *const other = new StickyNoteItem;
    other->setPos(600, 300);
    board.scene.addItem(other);
    board.processEvents();
    board.pointer.press({420, 480});
    QPointF at(420, 480);
    const auto moveOn = [&] {
        for (int i = 0; i < 3; ++i) {
            at += QPointF(9, 4);
            board.pointer.move(at);
            QCOMPARE(differences(board), QString());
        }
    };
    moveOn();
    other->setNoteColor(StickyNoteItem::Red);
    moveOn();
    // Beneath the note that is held.
    auto *const arrow = new ArrowLineItem({300, 100}, {900, 600});
    board.scene.addItem(arrow);
    moveOn();
    arrow->setSelected(true);
    moveOn();
    delete other;
    moveOn();
    board.view.horizontalScrollBar()->setValue(35);
    moveOn();
    board.window.hide();
    board.window.show();
    moveOn();
    board.click("ModoDeshacer");
    moveOn();
}

void TestCanvasPainting::aDeletedArrowLeavesNoHead()
{
    ShownBoard board;
    auto *const arrow = new ArrowLineItem({400.3, 500.4}, {600.6, 250.7});
    arrow->setWidth(12);
    board.scene.addItem(arrow);
    auto *const stroke = addStroke(board.scene, {{700.6, 300.6}, {720.4, 380.4}});
    board.processEvents();
    QCOMPARE(differences(board), QString());

    delete arrow;
    delete stroke;

    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::anotherTextInTheSamePlaceIsSeen()
{
    ShownBoard board;
    const auto addNote = [&board](const QString &text) {
        auto *const note = new StickyNoteItem;
        note->setText(text);
        note->setPos(400, 200);
        board.scene.addItem(note);
        return note;
    };
    for (int i = 0; i < 5; ++i) {
        auto *const note = addNote(u"uno"_s);
        QCOMPARE(differences(board), QString());
        // Mostly at the same address, and with as many revisions.
        delete note;
        const auto *const other = addNote(u"dos"_s);
        QCOMPARE(differences(board), QString());
        delete other;
    }
}

void TestCanvasPainting::whereATextWouldBeDroppedIsSeen()
{
    ShownBoard board;
    auto *const note = new StickyNoteItem;
    note->setPos(400, 200);
    board.scene.addItem(note);
    QCOMPARE(differences(board), QString());
    const QImage before = canvasOf(board).frame().picture();

    QMimeData text;
    text.setText(u"idea"_s);
    const QPoint place = board.pointer.windowPoint({450, 225});
    QDragEnterEvent enter(place, Qt::CopyAction, &text, Qt::LeftButton, {});
    QCoreApplication::sendEvent(board.window.windowHandle(), &enter);
    QDragMoveEvent move(place, Qt::CopyAction, &text, Qt::LeftButton, {});
    QCoreApplication::sendEvent(board.window.windowHandle(), &move);
    QCOMPARE(differences(board), QString());
    QVERIFY(canvasOf(board).frame().picture() != before);

    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(board.window.windowHandle(), &leave);
    QCOMPARE(differences(board), QString());
    QVERIFY(canvasOf(board).frame().picture() == before);
}

void TestCanvasPainting::hairlinesVanishWhenErased()
{
    ShownBoard board;
    auto *const across = addStroke(board.scene, {{300, 300}, {700, 300}});
    across->setWidth(0);
    auto *const down = addStroke(board.scene, {{500, 100}, {500, 500}});
    down->setWidth(0);
    QCOMPARE(differences(board), QString());

    delete across;
    QCOMPARE(differences(board), QString());
    delete down;
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::anArrowThatEndsFarAwayLooksLikeANearerOne_data()
{
    QTest::addColumn<qreal>("far");
    QTest::newRow("ten thousand") << 1e4;
    QTest::newRow("a million") << 1e6;
    QTest::newRow("out of every raster") << 1e9;
}

void TestCanvasPainting::anArrowThatEndsFarAwayLooksLikeANearerOne()
{
    QFETCH(const qreal, far);
    // The head of one and the tail of the other are in sight.
    const auto board = [](qreal away) {
        auto shownBoard = std::make_unique<ShownBoard>();
        auto *const arrow = new ArrowLineItem({500, 300}, {500 + away, 300 + away});
        arrow->setWidth(9);
        shownBoard->scene.addItem(arrow);
        shownBoard->scene.addItem(new ArrowLineItem({300 - away, 200}, {300, 200}));
        return shownBoard;
    };
    const auto nearer = board(3000);
    QCOMPARE(differences(*nearer), QString());
    const auto farther = board(far);
    farther->processEvents();
    farther->processEvents();

    QCOMPARE(canvasOf(*farther).frame().picture(), canvasOf(*nearer).frame().picture());
}

void TestCanvasPainting::anArrowThatPassesFarAwayIsNotSeen()
{
    ShownBoard board;
    QCOMPARE(differences(board), QString());
    const QImage before = canvasOf(board).frame().picture();

    // The rectangle of its ends holds the whole board.
    board.scene.addItem(new ArrowLineItem({-100, -20000}, {22000, 2000}));

    QCOMPARE(differences(board), QString());
    QCOMPARE(canvasOf(board).frame().picture(), before);
}

void TestCanvasPainting::whatIsAddedToAStrokeLooksAsPaintedAnew()
{
    ShownBoard board;
    auto *const stroke = addStroke(board.scene, {{300, 200}, {400, 250}});
    stroke->setWidth(9);
    QCOMPARE(differences(board), QString());

    QPainterPath path = stroke->path();
    path.cubicTo({700, 100}, {300, 500}, {600, 400});
    stroke->setPath(path);
    QCOMPARE(differences(board), QString());

    path.moveTo(500, 200);
    path.quadTo({800, 200}, {800, 350});
    stroke->setPath(path);
    QCOMPARE(differences(board), QString());

    // One with more points that is another one from the beginning.
    stroke->setPath(circle({450, 300}, 150, 60));
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::aPresentationLooksAsPaintedAnew()
{
    ShownBoard board;
    addLesson(board.scene, 60);
    board.processEvents();
    enterPresentation(board);
    QCOMPARE(differences(board), QString());

    pressKey(board, Qt::Key_Escape);
    board.processEvents();
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::aMoveOfThePenPaintsOneStroke()
{
    ShownBoard board;
    addLesson(board.scene, 600);
    board.processEvents();
    board.click("ModoLapiz");
    board.pointer.press({300, 200});
    // Once around, so that every stroke there has been laid down once.
    for (int i = 0; i <= 40; ++i) {
        board.pointer.move(QPointF(600, 350)
                           + QPointF(300 * std::cos(i * 0.16), 200 * std::sin(i * 0.16)));
        board.processEvents();
    }
    const auto before = canvasOf(board).frame().work();

    board.pointer.move({900, 352});
    board.processEvents();

    const auto after = canvasOf(board).frame().work();
    QCOMPARE(after.strokesPainted - before.strokesPainted, 1);
    QCOMPARE(after.othersPainted, before.othersPainted);
    // Of the others those that lie under the new piece.
    QVERIFY(after.strokesLaidDown - before.strokesLaidDown < 60);
}

void TestCanvasPainting::aMoveOfThePenShowsItsPiece()
{
    ShownBoard board;
    board.click("ModoLapiz");
    board.pointer.press({200, 200});
    for (int i = 0; i < 40; ++i) {
        board.pointer.move(QPointF(210 + 10 * i, 200 + (i % 2) * 300));
        board.processEvents();
        board.processEvents();
    }
    const PaintedCanvas shown(*board.view.viewport());

    board.pointer.move({620, 500});
    QTRY_VERIFY(!shown.region.isEmpty());

    // From the point before the last one on, whose end has become a joint.
    const QRect piece(board.view.mapFromScene(QPointF(590, 200)),
                      board.view.mapFromScene(QPointF(620, 500)));
    const QRect rect = shown.region.boundingRect();
    QVERIFY(piece.adjusted(-20, -20, 20, 20).contains(rect));
    QVERIFY(rect.contains(QRect(board.view.mapFromScene(QPointF(600, 500)),
                                board.view.mapFromScene(QPointF(620, 500)))));
}

void TestCanvasPainting::whatIsMovedIsAllThatIsPainted_data()
{
    using Maker = std::function<QGraphicsItem *()>;
    QTest::addColumn<Maker>("make");
    QTest::addColumn<int>("strokesBesideAbove");
    const Maker note = [] { return new StickyNoteItem; };
    const Maker arrow = [] { return new ArrowLineItem({0, 0}, {300, 120}); };
    const Maker image = [] { return new ResizablePixmapItem(picture()); };
    QTest::newRow("a note") << note << 0;
    QTest::newRow("a note, with some above beside it") << note << 9;
    QTest::newRow("an arrow") << arrow << 0;
    QTest::newRow("a picture") << image << 0;
}

void TestCanvasPainting::whatIsMovedIsAllThatIsPainted()
{
    QFETCH(const std::function<QGraphicsItem *()>, make);
    QFETCH(const int, strokesBesideAbove);
    ShownBoard board;
    addLesson(board.scene, 300);
    auto *const item = make();
    item->setPos(100, 100);
    item->setZValue(3);
    board.scene.addItem(item);
    item->setSelected(true);
    for (int i = 0; i < strokesBesideAbove; ++i) {
        auto *const stroke = addStroke(board.scene, circle({900, 500}, 20 + 3 * i, 60));
        stroke->setZValue(4);
    }
    board.processEvents();
    QTRY_VERIFY(!canvasOf(board).frame().canPrepare());
    const auto moveOn = [&] {
        item->moveBy(3, 2);
        board.processEvents();
    };
    moveOn();
    moveOn();
    for (int i = 0; i < 30; ++i) {
        const auto before = canvasOf(board).frame().work();
        moveOn();
        const auto after = canvasOf(board).frame().work();
        QCOMPARE(after.strokesLaidDown, before.strokesLaidDown);
        QCOMPARE(after.strokesPainted, before.strokesPainted);
        QCOMPARE(after.othersPainted - before.othersPainted, 1 + item->childItems().size());
    }
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::whatIsErasedPaintsOnlyWhereItWas()
{
    ShownBoard board;
    for (int i = 0; i < 20; ++i)
        addStroke(board.scene, circle({100.0 + 50 * i, 100}, 20, 60));
    auto *const across = addStroke(board.scene, {{190, 60}, {210, 140}});
    board.processEvents();
    QTRY_VERIFY(!canvasOf(board).frame().canPrepare());
    // The first time, what lies there gets its coverage.
    auto *const neighbour = addStroke(board.scene, {{190, 140}, {210, 60}});
    board.processEvents();
    delete neighbour;
    board.processEvents();
    const auto before = canvasOf(board).frame().work();

    delete across;
    board.processEvents();

    const auto after = canvasOf(board).frame().work();
    QCOMPARE(after.strokesPainted, before.strokesPainted);
    // The one that it crossed, and those beside that one, whose bounds touch its place.
    const qint64 laidDown = after.strokesLaidDown - before.strokesLaidDown;
    QVERIFY2(laidDown >= 1 && laidDown <= 3, qPrintable(QString::number(laidDown)));
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::scrollingPaintsOnlyWhatComesIntoSight()
{
    ShownBoard board;
    const int height = board.view.viewport()->height();
    for (int i = 0; i < 20; ++i)
        addStroke(board.scene, circle({100.0 + 50 * i, 100}, 20, 60));
    auto *const below = addStroke(board.scene, {{300.0, height - 20.0}, {400.0, height + 20.0}});
    board.processEvents();
    QTRY_VERIFY(!canvasOf(board).frame().canPrepare());
    const auto before = canvasOf(board).frame().work();

    auto *const bar = board.view.verticalScrollBar();
    for (int i = 0; i < 5; ++i) {
        bar->setValue(bar->value() + 4); // whole pixels at every usual scale
        board.processEvents();
    }

    const auto after = canvasOf(board).frame().work();
    QVERIFY(below->sceneBoundingRect().bottom() > height);
    QCOMPARE(after.strokesPainted - before.strokesPainted, 1);
    QCOMPARE(after.strokesLaidDown - before.strokesLaidDown, 5);
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::scrollingPaintsNoStrokeAgain()
{
    ShownBoard board;
    addLesson(board.scene, 200);
    board.processEvents();
    QTRY_VERIFY(!canvasOf(board).frame().canPrepare());
    auto *const bar = board.view.verticalScrollBar();
    bar->setValue(bar->maximum());
    board.processEvents();
    bar->setValue(bar->minimum());
    board.processEvents();
    const auto before = canvasOf(board).frame().work();

    bar->setValue(bar->maximum());
    board.processEvents();

    QCOMPARE(canvasOf(board).frame().work().strokesPainted, before.strokesPainted);
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::undoingPaintsNoStrokeAgain()
{
    ShownBoard board;
    addLesson(board.scene, 200);
    board.processEvents();
    board.click("ModoPostIt");
    board.pointer.click({500, 300});
    board.processEvents();
    board.click("ModoDeshacer");
    board.processEvents();
    board.click("ModoRehacer");
    board.processEvents();
    QTRY_VERIFY(!canvasOf(board).frame().canPrepare());
    const auto before = canvasOf(board).frame().work();

    // Other items now stand for the same strokes.
    board.click("ModoDeshacer");
    board.processEvents();

    const auto after = canvasOf(board).frame().work();
    QCOMPARE(after.strokesPainted, before.strokesPainted);
    QVERIFY(after.strokesLaidDown > before.strokesLaidDown);
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::whatMovesOutOfSightPaintsNoStroke()
{
    ShownBoard board;
    addLesson(board.scene, 40);
    const QPointF corner = board.view.mapToScene(0, 0);
    addStroke(board.scene, {corner, corner + QPointF(20, 20)});
    auto *const note = new StickyNoteItem;
    note->setPos(6000, 4000);
    board.scene.addItem(note);
    QCOMPARE(differences(board), QString());
    const auto before = canvasOf(board).frame().work();

    for (int i = 0; i < 4; ++i) {
        note->moveBy(10, 5);
        QCOMPARE(differences(board), QString());
    }

    const auto after = canvasOf(board).frame().work();
    QCOMPARE(after.strokesPainted, before.strokesPainted);
    QCOMPARE(after.strokesLaidDown, before.strokesLaidDown);
}

void TestCanvasPainting::whatWasOpenedIsPreparedWhileTheHandRests()
{
    ShownBoard board;
    board.window.hide();
    addLesson(board.scene, 200);
    board.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&board.window));
    board.processEvents();
    const auto &frame = canvasOf(board).frame();
    const auto opened = frame.work();
    QVERIFY(frame.canPrepare());

    QTRY_VERIFY(!frame.canPrepare());

    const auto rested = frame.work();
    QCOMPARE(rested.strokesPainted, opened.strokesPainted);
    QVERIFY(opened.strokesPainted > 0);
    QCOMPARE(rested.strokesPrepared, opened.strokesPainted);
    addStroke(board.scene, {{10, 10}, {900, 600}});
    board.processEvents();
    QVERIFY(frame.work().strokesLaidDown > rested.strokesLaidDown);
    QCOMPARE(frame.work().strokesPainted, rested.strokesPainted + 1);
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::elsewhereTheViewRendersItsItems()
{
    ShownBoard board;
    addStroke(board.scene, {{100, 100}, {400, 300}});
    board.processEvents();
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QImage blank = image;

    QPainter painter(&image);
    board.view.render(&painter);
    painter.end();

    QVERIFY(image != blank);
}

void TestCanvasPainting::aHiddenBoardHoldsNoPictures()
{
    ShownBoard board;
    addLesson(board.scene, 100);
    board.processEvents();
    QVERIFY(canvasOf(board).frame().bytes() > 1000000);

    board.window.hide();

    QCOMPARE(canvasOf(board).frame().bytes(), 0);

    board.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&board.window));
    board.processEvents();
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::whatIsKeptStaysWithinItsLimit()
{
    ShownBoard board;
    if (board.window.devicePixelRatioF() > 1)
        QSKIP("It is the same at every scale, and takes long.");
    const auto &frame = canvasOf(board).frame();
    for (int round = 0; round < 2; ++round) {
        addCovers(board.scene, 40, 5 * round, 11);
        board.processEvents();
        board.view.verticalScrollBar()->setValue(100 * round + 50);
        board.processEvents();
        QTRY_VERIFY_WITH_TIMEOUT(!frame.canPrepare(), 60'000);
        QVERIFY(frame.bytes() <= CanvasFrame::memoryLimit);
    }
    constexpr qsizetype ofOneStroke = qsizetype(1920) * 1080 * 2;
    QVERIFY(frame.bytes() > CanvasFrame::memoryLimit - ofOneStroke);
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::whatIsKeptOfDeletedStrokesGoes()
{
    ShownBoard board;
    if (board.window.devicePixelRatioF() > 1)
        QSKIP("It is the same at every scale, and takes long.");
    const auto &frame = canvasOf(board).frame();
    addLesson(board.scene, 20);
    QList<FreeDrawItem *> covers;
    // Well beyond the half from which on it is looked through, and not so much that anything is refused.
    constexpr qsizetype enough = CanvasFrame::memoryLimit / 8 * 5;
    for (int round = 0; round < 40 && frame.bytes() <= enough; ++round) {
        covers += addCovers(board.scene, 4, round);
        board.processEvents();
        board.view.verticalScrollBar()->setValue(round % 2 == 0 ? 100 : 0);
        board.processEvents();
    }
    QVERIFY(frame.bytes() > enough);
    const auto before = frame.work();

    qDeleteAll(covers);
    board.processEvents();

    QVERIFY(frame.bytes() < CanvasFrame::memoryLimit / 4);
    QCOMPARE(frame.work().strokesPainted, before.strokesPainted);
    QCOMPARE(differences(board), QString());
}

void TestCanvasPainting::aViewOfNothingIsEmpty()
{
    CanvasView view;
    view.resize(200, 100);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.showChanges({QRectF(0, 0, 100, 100)});
    QVERIFY(!view.grab().isNull());
    QVERIFY(view.frame().picture().isNull());
}

PLUMARA_TEST(TestCanvasPainting)
#include "tst_canvaspainting.moc"
