// The kept picture of a small board: what it shows, what it tells to show, and what it takes.

#include "painting/canvasframe.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/support/items/strokes.h"
#include "tests/support/look/imagedifferences.h"
#include "tests/support/main/registeredtest.h"

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTest>

#include <cmath>
#include <memory>

#ifdef __GLIBC__
#include <malloc.h>
#endif

class TestCanvasFrame : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void nothingIsKeptBeforeTheViewIsMatched();
    void withoutASceneOrASizeThereIsNoPicture();
    void whateverChangesLooksAsPaintedAnew_data();
    void whateverChangesLooksAsPaintedAnew();
    void whatMovesIsToldOfAndLittleElse();
    void whatIsDeletedIsToldOfAndLittleElse();
    void scrollingTellsOfTheNewStripOnly_data();
    void scrollingTellsOfTheNewStripOnly();
    void hairlinesAtTheEdgeOfANewStripAreSeen();
    void aHeadThatReachesIntoTheViewIsSeenAtOnce();
    void whatIsScrolledIsLaidDownAndNotPainted();
    void whatRestsIsWorkedOutOnce();
    void aStrokeThatIsTooLongPaintsItself();
    void preparingGoesInShortSteps();
    void anotherSizeKeepsWhatStrokesCover();
    void anotherScaleKeepsNothing();
    void strokesThatChangePaintThemselves();
    void anItemThatChangesAgainIsPaintedBetweenLayers();
    void whatMovesOnAndOnLooksAsPaintedAnew_data();
    void whatMovesOnAndOnLooksAsPaintedAnew();
    void whatLiesOnAnItemChangesWithIt();
    void whatWasDeletedIsInNoLayer();
    void layersAreAsLargeAsTheView();
    void dashedOutlinesStayWhole();
    void dashesBeginWhereTheViewDoes();
    void aHairlineIsTheSameFromTheFirstTimeOn_data();
    void aHairlineIsTheSameFromTheFirstTimeOn();
    void whatItTakesStaysWithinItsLimit();
    void whatTheSceneHasNotToldYetIsSeenWhilePainting();
    void whatDeletedStrokesCoverGoes();
    void whatItTakesIsCounted();
    void clearingLetsGoOfAll();
    void whatWasOutlinedMayBeDeletedAfterClearing();
};

namespace {

/// A view of a small board, and a frame that hears of its changes.
class FramedBoard
{
public:
    explicit FramedBoard(QSize size = {160, 120})
    {
        view.setFrameShape(QFrame::NoFrame);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setRenderHint(QPainter::Antialiasing);
        view.setViewportUpdateMode(QGraphicsView::NoViewportUpdate);
        view.setBackgroundBrush(Qt::white);
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.resize(size);
        view.show();
        view.horizontalScrollBar()->setValue(0);
        view.verticalScrollBar()->setValue(0);
        QObject::connect(&scene, &QGraphicsScene::changed, &view,
                         [this](const QList<QRectF> &changed) { told += frame.follow(changed); });
        // The first change has the scene find its views.
        scene.update();
        settle();
        frame.matchView();
        told = {};
    }

    /// Lets the scene tell of its changes, which it does from the event loop.
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    /// What is to be shown anew after the scene has told of its changes and the view was matched.
    QRegion change()
    {
        settle();
        told += frame.matchView();
        return std::exchange(told, {});
    }

    /// Shows the board as if it had just been opened, and works out what all strokes in sight cover.
    void reopen()
    {
        settle();
        frame.clear();
        frame.matchView();
        while (frame.canPrepare())
            frame.prepare();
        told = {};
    }

    /// How the kept picture differs from what painting everything anew shows; empty when it does not.
    QString difference() const
    {
        const QImage &picture = frame.picture();
        return differences(picture, fresh(), picture.rect());
    }

    /// The same for a board with dashed outlines: they end where the view does.
    QString differenceOfView() const
    {
        const QImage &picture = frame.picture();
        return differences(picture,
                           view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32),
                           picture.rect());
    }

    ArrowLineItem *addArrow(QPointF from, QPointF to, int width = 2)
    {
        auto *const arrow = new ArrowLineItem(from, to);
        arrow->setWidth(width);
        scene.addItem(arrow);
        return arrow;
    }

    QGraphicsScene scene{0, 0, 400, 300};
    QGraphicsView view{&scene};
    CanvasFrame frame{view};
    QRegion told;

private:
    /// The middle of what a larger view paints: of an arrow that lies beside a view, the toolkit would
    /// leave out the head even where that reaches into it.
    QImage fresh() const
    {
        constexpr int around = 100;
        QGraphicsView larger(view.scene());
        larger.setFrameShape(QFrame::NoFrame);
        larger.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        larger.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        larger.setRenderHints(view.renderHints());
        larger.setBackgroundBrush(Qt::white);
        larger.setAttribute(Qt::WA_DontShowOnScreen);
        // So that it can be scrolled as far as the view, and farther.
        const qreal farther = 10 * around;
        larger.setSceneRect(view.sceneRect().adjusted(-farther, -farther, farther, farther));
        larger.setTransform(view.transform());
        larger.resize(view.size().grownBy({around, around, around, around}));
        larger.show();
        larger.horizontalScrollBar()->setValue(view.horizontalScrollBar()->value() - around);
        larger.verticalScrollBar()->setValue(view.verticalScrollBar()->value() - around);
        const QImage all =
            larger.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QPoint corner = QPoint(around, around) * all.devicePixelRatio();
        return all.copy(QRect(corner, frame.picture().size()));
    }
};

/// Where two pictures of one size differ.
QRegion differing(const QImage &one, const QImage &other)
{
    QRegion pixels;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y))
                pixels += QRect(x, y, 1, 1);
        }
    }
    return pixels;
}

/// \a pixels of a picture with a ratio, in units of its view.
QRegion inUnits(const QRegion &pixels, qreal ratio)
{
    QRegion units;
    for (const QRect &part : pixels)
        units +=
            QRectF(QPointF(part.topLeft()) / ratio, QSizeF(part.size()) / ratio).toAlignedRect();
    return units;
}

/// What a hand may do on a board, by chance; but nothing is selected, since the dashes of a frame depend
/// on where the view ends.
class Hand
{
public:
    Hand(FramedBoard &framed, quint32 seed)
        : board(framed)
        , random(seed)
    { }

    void act()
    {
        const auto items = board.scene.items();
        auto *const item = items.isEmpty() ? nullptr : items.at(random.bounded(items.size()));
        switch (random.bounded(items.size() < 30 ? 12 : 8)) {
        case 0:
            delete (item ? item->topLevelItem() : nullptr);
            break;
        case 1:
        case 2:
        case 3:
            if (item)
                item->topLevelItem()->moveBy(random.bounded(-40, 40), random.bounded(-40, 40));
            break;
        case 4:
            scrollBy(random.bounded(-50, 50), random.bounded(-50, 50));
            break;
        case 5:
            scrollBy(random.bounded(-1, 2), random.bounded(-1, 2));
            break;
        case 6:
        case 7:
            changeLook(item);
            break;
        case 8:
            board.scene.addItem(new StickyNoteItem);
            board.scene.items().constFirst()->setPos(place());
            break;
        case 9:
            board.addArrow(place(), place(), random.bounded(1, 12));
            break;
        default:
            addStroke(board.scene, {place(), place(), place()});
            break;
        }
    }

private:
    QPointF place()
    {
        return {random.bounded(-20.0) + random.bounded(400.0), random.bounded(300.0)};
    }
    void scrollBy(int dx, int dy)
    {
        auto *const across = board.view.horizontalScrollBar();
        auto *const down = board.view.verticalScrollBar();
        across->setValue(across->value() + dx);
        down->setValue(down->value() + dy);
    }
    void changeLook(QGraphicsItem *item)
    {
        if (auto *const stroke = dynamic_cast<FreeDrawItem *>(item)) {
            QPainterPath path = stroke->path();
            path.lineTo(place());
            stroke->setPath(path);
        } else if (auto *const arrow = dynamic_cast<ArrowLineItem *>(item)) {
            arrow->setColor(Qt::red);
        } else if (auto *const note = dynamic_cast<StickyNoteItem *>(item)) {
            note->setNoteColor(StickyNoteItem::Pink);
        }
    }

    FramedBoard &board;
    QRandomGenerator random;
};

} // namespace

void TestCanvasFrame::initTestCase()
{
#ifdef M_PERTURB
    // New memory is not empty, so that it is seen where nobody has filled a picture. The sanitizers have
    // an allocator of their own, which does not heed it.
    mallopt(M_PERTURB, 0x5a);
#endif
}

void TestCanvasFrame::nothingIsKeptBeforeTheViewIsMatched()
{
    FramedBoard board;
    addStroke(board.scene, {{10, 10}, {50, 50}});
    CanvasFrame frame(board.view);
    QVERIFY(frame.follow({QRectF(0, 0, 60, 60)}).isEmpty());
    QVERIFY(frame.picture().isNull());
    QVERIFY(!frame.canPrepare());
    QCOMPARE(frame.bytes(), 0);
    frame.matchView();
    QVERIFY(frame.canPrepare());
}

void TestCanvasFrame::withoutASceneOrASizeThereIsNoPicture()
{
    QGraphicsView view;
    CanvasFrame frame(view);
    QVERIFY(frame.matchView().isEmpty());
    QVERIFY(frame.follow({QRectF(0, 0, 60, 60)}).isEmpty());
    QVERIFY(frame.picture().isNull());

    FramedBoard board;
    QCOMPARE(board.frame.picture().size(),
             (QSizeF(board.view.viewport()->size()) * board.view.devicePixelRatioF()).toSize());
    board.view.setScene(nullptr);
    QVERIFY(board.frame.follow({QRectF(0, 0, 60, 60)}).isEmpty());
    QVERIFY(board.frame.matchView().isEmpty());
}

void TestCanvasFrame::whateverChangesLooksAsPaintedAnew_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestCanvasFrame::whateverChangesLooksAsPaintedAnew()
{
    QFETCH(const quint32, seed);
    FramedBoard board;
    Hand hand(board, seed);
    for (int i = 0; i < 80; ++i) {
        const QImage before = board.frame.picture().copy();
        hand.act();
        const QRegion told = board.change();
        const QString difference = board.difference();
        QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(i).arg(difference)));
        const QImage &after = board.frame.picture();
        // Of scrolling, the view itself shows all anew.
        QVERIFY(!told.isEmpty() || before == after);
        if (i % 5 == 0)
            board.frame.prepare();
    }
}

void TestCanvasFrame::whatMovesIsToldOfAndLittleElse()
{
    FramedBoard board;
    addStroke(board.scene, {{0, 60}, {150, 60}});
    board.addArrow({120, 90}, {150, 110})->setSelected(true);
    auto *const stroke = addStroke(board.scene, {{20, 20}, {40, 40}});
    board.change();
    for (int i = 0; i < 4; ++i) {
        const QImage before = board.frame.picture().copy();
        const QRect from = stroke->sceneBoundingRect().toAlignedRect();
        stroke->moveBy(9, 7);
        const QRect to = stroke->sceneBoundingRect().toAlignedRect();
        const QRegion told = board.change();
        const QRegion seen = inUnits(differing(before, board.frame.picture()),
                                     board.frame.picture().devicePixelRatio());
        QVERIFY(!seen.isEmpty());
        QVERIFY((seen - told).isEmpty());
        constexpr int spare = 3;
        QVERIFY((told - (from | to).adjusted(-spare, -spare, spare, spare)).isEmpty());
    }
}

void TestCanvasFrame::whatIsDeletedIsToldOfAndLittleElse()
{
    FramedBoard board;
    addStroke(board.scene, {{0, 60}, {150, 60}});
    addStroke(board.scene, {{100, 0}, {100, 110}});
    const auto *const stroke = addStroke(board.scene, {{20, 20}, {40, 40}});
    board.change();
    const QRect place = stroke->sceneBoundingRect().toAlignedRect();
    delete stroke;
    const QRegion told = board.change();
    QCOMPARE(board.difference(), QString());
    QVERIFY(!told.isEmpty());
    QVERIFY((told - place.adjusted(-3, -3, 3, 3)).isEmpty());
}

void TestCanvasFrame::scrollingTellsOfTheNewStripOnly_data()
{
    QTest::addColumn<QPoint>("step");
    for (const QPoint step :
         {QPoint(0, 1), QPoint(0, -1), QPoint(1, 0), QPoint(-1, 0), QPoint(7, 5), QPoint(-7, 5),
          QPoint(7, -5), QPoint(-30, -30), QPoint(0, 40)})
        QTest::addRow("%d, %d", step.x(), step.y()) << step;
}

void TestCanvasFrame::scrollingTellsOfTheNewStripOnly()
{
    QFETCH(const QPoint, step);
    FramedBoard board;
    for (int i = 0; i < 20; ++i)
        addStroke(board.scene, {{20.0 * i, 0}, {100, 150}, {20.0 * i, 300}});
    // Its head is wider than the rectangle of its line.
    for (int i = 0; i < 7; ++i)
        board.addArrow({10.0 + 45 * i, 250}, {10.0 + 45 * i, 10}, 9);
    board.view.horizontalScrollBar()->setValue(60);
    board.view.verticalScrollBar()->setValue(60);
    board.change();
    board.view.horizontalScrollBar()->setValue(60 - step.x());
    board.view.verticalScrollBar()->setValue(60 - step.y());
    const QRegion told = board.frame.matchView();
    const QRect all = board.view.viewport()->rect();
    QCOMPARE(told, QRegion(all) - all.translated(step));
    QCOMPARE(board.difference(), QString());
    QVERIFY(board.frame.matchView().isEmpty());
}

void TestCanvasFrame::hairlinesAtTheEdgeOfANewStripAreSeen()
{
    constexpr int step = 5;
    for (int place = -2; place <= step + 1; ++place) {
        FramedBoard board;
        const QSize size = board.view.viewport()->size();
        for (const QLine line : {QLine(size.width() + place, 0, size.width() + place, 300),
                                 QLine(0, size.height() + place, 400, size.height() + place)})
            addStroke(board.scene, {line.p1(), line.p2()})->setWidth(0);
        board.reopen();
        board.view.horizontalScrollBar()->setValue(step);
        board.view.verticalScrollBar()->setValue(step);
        board.change();
        QCOMPARE(board.difference(), QString());
        board.view.horizontalScrollBar()->setValue(100);
        board.view.verticalScrollBar()->setValue(100);
        board.change();
        board.view.horizontalScrollBar()->setValue(100 - step);
        board.view.verticalScrollBar()->setValue(100 - step);
        board.change();
        QCOMPARE(board.difference(), QString());
    }
}

void TestCanvasFrame::aHeadThatReachesIntoTheViewIsSeenAtOnce()
{
    FramedBoard board;
    const int edge = board.view.viewport()->width();
    board.addArrow({edge + 8.0, 100}, {edge + 8.0, 30}, 9);
    board.reopen();
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::whatRestsIsWorkedOutOnce()
{
    FramedBoard board;
    auto *const note = new StickyNoteItem;
    note->setPos(20, 20);
    board.scene.addItem(note);
    for (int i = 0; i < 3; ++i)
        addStroke(board.scene, {{0, 40.0 + 20 * i}, {150, 45.0 + 20 * i}});
    board.change();
    const auto before = board.frame.work();
    // Where the note is painted, those that lie on it are laid down.
    note->moveBy(5, 5);
    board.change();
    const auto first = board.frame.work();
    QCOMPARE(first.strokesPainted, before.strokesPainted + 3);
    QCOMPARE(first.strokesLaidDown, before.strokesLaidDown + 3);
    for (int i = 1; i <= 3; ++i) {
        note->moveBy(5, 5);
        board.change();
        QCOMPARE(board.frame.work().strokesPainted, first.strokesPainted);
        QCOMPARE(board.difference(), QString());
    }
}

void TestCanvasFrame::aStrokeThatIsTooLongPaintsItself()
{
    FramedBoard board;
    addStroke(board.scene, {{-40'000, 10}, {40'000, 60}});
    board.reopen();
    board.view.horizontalScrollBar()->setValue(5);
    board.change();
    QCOMPARE(board.frame.work().strokesPrepared, 0);
    QCOMPARE(board.frame.work().strokesLaidDown, 0);
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::preparingGoesInShortSteps()
{
    FramedBoard board;
    for (int i = 0; i < 3000; ++i)
        addStroke(board.scene, {{0, 0.03 * i}, {150, 100 - 0.03 * i}, {0, 0.03 * i + 20}});
    board.settle();
    board.frame.clear();
    board.frame.matchView();
    board.frame.prepare();
    QVERIFY(board.frame.work().strokesPrepared > 0);
    QVERIFY(board.frame.canPrepare());
}

void TestCanvasFrame::whatIsScrolledIsLaidDownAndNotPainted()
{
    FramedBoard board;
    for (int i = 0; i < 20; ++i)
        addStroke(board.scene, {{0, 10.0 * i}, {400, 10.0 * i + 5}});
    board.reopen();
    const auto before = board.frame.work();
    QCOMPARE(before.strokesPrepared, 12 + 1); // those in sight, with one whose pen reaches into it
    board.view.horizontalScrollBar()->setValue(50);
    board.frame.matchView();
    const auto after = board.frame.work();
    QCOMPARE(after.strokesPainted, before.strokesPainted);
    QVERIFY(after.strokesLaidDown > before.strokesLaidDown);
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::anotherSizeKeepsWhatStrokesCover()
{
    FramedBoard board;
    addStroke(board.scene, {{0, 10}, {100, 50}});
    board.reopen();
    const qint64 before = board.frame.work().strokesPainted;
    board.view.resize(140, 110);
    const QRegion told = board.frame.matchView();
    QCOMPARE(told, QRegion(board.view.viewport()->rect()));
    QCOMPARE(board.frame.work().strokesPainted, before);
    QCOMPARE(board.difference(), QString());
    // Layers are of one size, too.
    auto *const arrow = board.addArrow({10, 10}, {50, 90});
    for (const QSize size : {QSize(140, 110), QSize(140, 110), QSize(180, 130), QSize(100, 70)}) {
        board.view.resize(size);
        arrow->moveBy(7, 5);
        board.change();
        QCOMPARE(board.difference(), QString());
    }
}

void TestCanvasFrame::anotherScaleKeepsNothing()
{
    FramedBoard board;
    for (int i = 0; i < 12; ++i)
        addStroke(board.scene, {{0, 10.0 * i}, {100, 10.0 * i + 5}});
    board.reopen();
    board.view.scale(0.5, 0.5);
    QCOMPARE(board.frame.matchView(), QRegion(board.view.viewport()->rect()));
    QCOMPARE(board.difference(), QString());
    QVERIFY(board.frame.canPrepare());
    CanvasFrame other(board.view);
    other.matchView();
    QCOMPARE(board.frame.bytes(), other.bytes());
}

void TestCanvasFrame::strokesThatChangePaintThemselves()
{
    FramedBoard board;
    addStroke(board.scene, {{0, 60}, {150, 60}});
    auto *const stroke = addStroke(board.scene, {{20, 20}, {40, 40}});
    board.reopen();
    stroke->setPath(pathThrough({{20, 20}, {40, 42}}));
    board.change();
    const qsizetype bytes = board.frame.bytes();
    for (int i = 0; i < 5; ++i) {
        const auto before = board.frame.work();
        stroke->setPath(pathThrough({{20, 20}, {40.0 + i, 45.0 + i}}));
        board.change();
        QCOMPARE(board.frame.work().strokesPainted, before.strokesPainted + 1);
        QCOMPARE(board.difference(), QString());
    }
    // Of the strokes that it was on the way nothing is kept, but the two layers.
    const qsizetype layers = 2 * board.frame.picture().sizeInBytes();
    QCOMPARE(board.frame.bytes(), bytes + layers);
    // At rest it is worked out once.
    addStroke(board.scene, {{0, 0}, {150, 110}});
    board.change();
    board.view.horizontalScrollBar()->setValue(1);
    board.change();
    const qint64 rest = board.frame.work().strokesPainted;
    board.view.horizontalScrollBar()->setValue(2);
    board.change();
    QCOMPARE(board.frame.work().strokesPainted, rest);
}

void TestCanvasFrame::anItemThatChangesAgainIsPaintedBetweenLayers()
{
    FramedBoard board;
    for (int i = 0; i < 10; ++i)
        board.addArrow({15.0 * i, 0}, {15.0 * i, 110});
    auto *const stroke = addStroke(board.scene, {{20, 20}, {40, 40}});
    for (int i = 0; i < 3; ++i)
        addStroke(board.scene, {{0, 20.0 * i}, {150, 30.0 * i}});
    board.reopen();
    stroke->moveBy(3, 3);
    board.change();
    stroke->moveBy(3, 3);
    board.change(); // makes the layers
    const auto before = board.frame.work();
    stroke->moveBy(3, 3);
    board.change();
    QCOMPARE(board.frame.work().othersPainted, before.othersPainted);
    QCOMPARE(board.frame.work().strokesPainted, before.strokesPainted);
    QCOMPARE(board.frame.work().strokesLaidDown, before.strokesLaidDown + 1);
    QCOMPARE(board.difference(), QString());
    // Whatever else changes ends that.
    board.addArrow({0, 0}, {100, 90});
    board.change();
    QVERIFY(board.frame.work().othersPainted > before.othersPainted);
    stroke->moveBy(3, 3);
    board.change();
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::whatMovesOnAndOnLooksAsPaintedAnew_data()
{
    QTest::addColumn<int>("above");
    QTest::newRow("with nothing above") << 0;
    QTest::newRow("with some above") << 5;
    QTest::newRow("with much above") << 90;
}

void TestCanvasFrame::whatMovesOnAndOnLooksAsPaintedAnew()
{
    QFETCH(const int, above);
    FramedBoard board;
    for (int i = 0; i < 12; ++i)
        addStroke(board.scene, {{15.0 * i, 0}, {15.0 * i, 110}});
    auto *const note = new StickyNoteItem;
    note->setText(QString(2000, u'n')); // more than the paper holds
    note->setScale(0.1);
    board.scene.addItem(note);
    for (int i = 0; i < above; ++i)
        board.addArrow({50, 1.3 * i}, {90.0 + i % 7, 1.3 * i})->setZValue(5);
    board.reopen();
    for (int i = 0; i < 30; ++i) {
        note->setPos(5.0 * i, 40 + 40 * std::sin(i));
        board.change();
        QCOMPARE(board.difference(), QString());
    }
    // Back to where it has been, on layers that are complete there.
    note->setPos(10, 40);
    board.change();
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::dashedOutlinesStayWhole()
{
    FramedBoard board;
    for (int i = 0; i < 3; ++i) {
        auto *const arrow =
            board.addArrow({10.0 + 20 * i, 15.0 + 10 * i}, {90.0 + 20 * i, 70.0 + 10 * i});
        arrow->setSelected(true);
    }
    auto *const stroke = addStroke(board.scene, {{0, 0}, {20, 20}});
    board.reopen();
    for (int i = 0; i < 20; ++i) {
        stroke->moveBy(5, 4);
        board.change();
        QCOMPARE(board.differenceOfView(), QString());
    }
    for (const int step : {3, -3, 10}) {
        auto *const bar = board.view.horizontalScrollBar();
        bar->setValue(bar->value() + step);
        board.change();
        QCOMPARE(board.differenceOfView(), QString());
    }
    board.scene.clearSelection();
    board.change();
    QCOMPARE(board.differenceOfView(), QString());
    // What has no dashes any more is painted in pieces.
    stroke->moveBy(-5, -4);
    QVERIFY(board.change().boundingRect().width() < 40);
}

void TestCanvasFrame::whatLiesOnAnItemChangesWithIt()
{
    FramedBoard board;
    auto *const note = new StickyNoteItem;
    note->setText(QString(2000, u'n')); // more than the paper holds
    note->setScale(0.1);
    board.scene.addItem(note);
    board.change();
    for (const qreal opacity : {0.5, 0.2, 0.8}) {
        note->setOpacity(opacity);
        board.change();
        QCOMPARE(board.difference(), QString());
    }
}

void TestCanvasFrame::whatWasDeletedIsInNoLayer()
{
    FramedBoard board;
    const auto beneath = std::unique_ptr<ArrowLineItem>(board.addArrow({10, 60}, {150, 60}));
    auto *const stroke = addStroke(board.scene, {{20, 20}, {40, 100}});
    for (int i = 0; i < 3; ++i) {
        stroke->moveBy(20, 0);
        board.change();
    }
    board.scene.removeItem(beneath.get());
    board.change();
    for (int i = 0; i < 2; ++i) {
        stroke->moveBy(-20, 0);
        board.change();
        QCOMPARE(board.difference(), QString());
    }
}

void TestCanvasFrame::layersAreAsLargeAsTheView()
{
    FramedBoard board({100, 70});
    addStroke(board.scene, {{0, 0}, {300, 200}});
    auto *const note = new StickyNoteItem;
    note->setScale(0.1);
    board.scene.addItem(note);
    for (int i = 0; i < 3; ++i) {
        note->moveBy(10, 10);
        board.change();
    }
    board.view.resize(300, 200);
    board.change();
    for (int i = 0; i < 7; ++i) {
        note->moveBy(30, 20);
        board.change();
        QCOMPARE(board.difference(), QString());
    }
}

void TestCanvasFrame::dashesBeginWhereTheViewDoes()
{
    FramedBoard board;
    board.view.horizontalScrollBar()->setValue(50);
    board.view.verticalScrollBar()->setValue(50);
    board.addArrow({20, 80}, {190, 120})->setSelected(true);
    board.change();
    for (const int step : {1, 2, -3, 5}) {
        for (auto *const bar : {board.view.horizontalScrollBar(), board.view.verticalScrollBar()})
            bar->setValue(bar->value() + step);
        board.change();
        QCOMPARE(board.differenceOfView(), QString());
    }
}

void TestCanvasFrame::aHairlineIsTheSameFromTheFirstTimeOn_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<bool>("isHairline");
    QTest::newRow("without width") << 0 << 1.0 << true;
    QTest::newRow("a pixel") << 1 << 1.0 << true;
    QTest::newRow("two pixels") << 2 << 1.0 << false;
    QTest::newRow("two that are seen as one") << 2 << 0.5 << true;
    QTest::newRow("one that is seen as two") << 1 << 2.0 << false;
}

/// What covers a hairline depends on where it is cut off, so it is worked out as a whole even when a board
/// is opened; wider strokes paint themselves then, which is quicker.
void TestCanvasFrame::aHairlineIsTheSameFromTheFirstTimeOn()
{
    QFETCH(const int, width);
    QFETCH(const qreal, scale);
    QFETCH(const bool, isHairline);
    FramedBoard board;
    board.view.scale(scale, scale);
    addStroke(board.scene, {{10, 10}, {50, 30}})->setWidth(width);
    board.settle();
    CanvasFrame opened(board.view);
    opened.matchView();
    QCOMPARE(opened.work().strokesPainted, 1);
    QCOMPARE(opened.work().strokesLaidDown, isHairline ? 1 : 0);
}

void TestCanvasFrame::whatItTakesStaysWithinItsLimit()
{
    constexpr qsizetype megabyte = qsizetype(1024) * 1024;
    FramedBoard board;
    const auto addBlot = [&](int number, int width, int side) {
        QList<QPointF> points;
        for (int y = 0; y <= side; y += width) {
            points << QPointF(-0.1 * number, y) << QPointF(side, y);
            points << QPointF(side, y + width / 2.0) << QPointF(-0.1 * number, y + width / 2.0);
        }
        addStroke(board.scene, points)->setWidth(width);
    };
    // The last are prepared first. They cover 10 MB each, and what comes then fills the rest.
    for (int i = 0; i < 30; ++i)
        addBlot(i, 150, 30);
    for (int i = 0; i < 40; ++i)
        addBlot(i, 500, 30);
    constexpr int large = 16;
    for (int i = 0; i < large; ++i)
        addBlot(i, 500, 2800);
    board.settle();
    board.frame.clear();
    board.frame.matchView();
    // Each of these takes longer than a step.
    for (int i = 0; i < large; ++i)
        board.frame.prepare();
    QCOMPARE(board.frame.work().strokesPrepared, 12);
    while (board.frame.canPrepare())
        board.frame.prepare();
    const auto bytes = board.frame.bytes();
    QVERIFY2(bytes <= 128 * megabyte, qPrintable(QString::number(bytes)));
    QVERIFY2(bytes > 128 * megabyte - megabyte / 8, qPrintable(QString::number(bytes)));
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::whatTheSceneHasNotToldYetIsSeenWhilePainting()
{
    FramedBoard board;
    auto *const stroke = addStroke(board.scene, {{50, 0}, {50, 300}});
    addStroke(board.scene, {{0, 40}, {150, 60}});
    board.reopen();
    stroke->setColor(Qt::red);
    board.view.verticalScrollBar()->setValue(5);
    const QRegion told = board.frame.matchView();
    QCOMPARE(board.difference(), QString());
    QVERIFY(told.contains(QPoint(50, 60)));
}

void TestCanvasFrame::whatDeletedStrokesCoverGoes()
{
    FramedBoard board;
    const qsizetype empty = board.frame.bytes();
    const auto *const kept = addStroke(board.scene, {{10, 10}, {300, 110}});
    board.reopen();
    constexpr int count = 1200;
    std::vector<std::unique_ptr<FreeDrawItem>> strokes;
    strokes.reserve(count);
    qsizetype rest = 0;
    // Those that come again are worked out again.
    for (int time = 0; time < 2; ++time) {
        for (int i = 0; i < count; ++i) {
            const qreal x = 0.1 * i;
            strokes.emplace_back(addStroke(board.scene, {{x, 20}, {x + 3, 60}, {x / 2, 100}}));
        }
        board.change();
        QVERIFY(board.frame.work().strokesPainted >= (time + 1) * count);
        const qsizetype full = board.frame.bytes();
        strokes.clear();
        board.change();
        rest = board.frame.bytes();
        QVERIFY(rest > empty);
        QVERIFY2((rest - empty) * 10 < full - empty, qPrintable(QString::number(rest - empty)));
    }
    const auto before = board.frame.work();
    board.view.horizontalScrollBar()->setValue(5);
    board.change();
    QCOMPARE(board.frame.work().strokesPainted, before.strokesPainted);
    QVERIFY(kept->scene());
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::whatItTakesIsCounted()
{
    FramedBoard board;
    const qsizetype picture = board.frame.picture().sizeInBytes();
    QCOMPARE(board.frame.bytes(), picture);
    auto *const arrow = board.addArrow({10, 10}, {50, 90});
    board.change();
    const qsizetype one = board.frame.bytes() - picture;
    QVERIFY(one > qsizetype(sizeof(PaintedState)) && one < 4096);
    board.addArrow({10, 10}, {50, 90});
    board.change();
    QCOMPARE(board.frame.bytes(), picture + 2 * one);
    for (int i = 0; i < 2; ++i) {
        arrow->moveBy(5, 5);
        board.change();
    }
    QCOMPARE(board.frame.bytes(), 3 * picture + 2 * one);
    addStroke(board.scene, {{0, 0}, {150, 110}});
    board.change();
    board.view.horizontalScrollBar()->setValue(1);
    board.change();
    QVERIFY(board.frame.bytes() > picture + 3 * one);
}

void TestCanvasFrame::clearingLetsGoOfAll()
{
    FramedBoard board;
    auto *const arrow = board.addArrow({10, 10}, {50, 90});
    addStroke(board.scene, {{0, 0}, {150, 110}});
    addStroke(board.scene, {{0, 10}, {150, 110}});
    board.change();
    CanvasFrame opened(board.view);
    opened.matchView();
    QVERIFY(opened.canPrepare());
    opened.clear();
    QVERIFY(!opened.canPrepare());
    QCOMPARE(opened.bytes(), 0);

    board.reopen();
    for (int i = 0; i < 2; ++i) {
        arrow->moveBy(5, 5);
        board.change();
    }
    board.frame.clear();
    QCOMPARE(board.frame.bytes(), 0);
    QVERIFY(board.frame.picture().isNull());
    QCOMPARE(board.frame.matchView(), QRegion(board.view.viewport()->rect()));
    QCOMPARE(board.difference(), QString());
    arrow->moveBy(5, 5);
    QVERIFY(!board.change().isEmpty());
    QCOMPARE(board.difference(), QString());
}

void TestCanvasFrame::whatWasOutlinedMayBeDeletedAfterClearing()
{
    FramedBoard board;
    const auto arrow = std::unique_ptr<ArrowLineItem>(board.addArrow({10, 10}, {50, 90}));
    auto *const stroke = addStroke(board.scene, {{0, 0}, {150, 110}});
    arrow->setSelected(true);
    board.change();
    board.frame.clear();
    board.scene.removeItem(arrow.get());
    FramedBoard::settle();
    board.frame.matchView();
    stroke->setColor(Qt::red);
    board.change();
    QCOMPARE(board.difference(), QString());
}

PLUMARA_TEST(TestCanvasFrame)
#include "tst_canvasframe.moc"
