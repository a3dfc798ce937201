// The recorder knows the snapshot of a board by looking at what has changed only.

#include "history/boardrecorder.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A board with a view, whose recorder hears of each change.
class RecordedBoard
{
public:
    RecordedBoard()
    {
        view.setViewportUpdateMode(QGraphicsView::NoViewportUpdate);
        QObject::connect(&scene, &QGraphicsScene::changed, &view,
                         [this](const QList<QRectF> &changed) {
                             snapshot = recorder.snapshotAfter(changed);
                             ++changes;
                         });
        // The first change has the scene find its views.
        scene.update();
        processEvents();
    }

    /// Lets the scene tell of its changes, which it does from the event loop.
    static void processEvents()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    QGraphicsScene scene{0, 0, 1920, 1080};
    QGraphicsView view{&scene};
    BoardRecorder recorder{scene};
    BoardSnapshot snapshot;
    int changes = 0;
};

bool areTheSame(const BoardSnapshot &one, const BoardSnapshot &other)
{
    return one.size() == other.size()
        && std::ranges::equal(one.states(), other.states(),
                              [](const ItemState &a, const ItemState &b) { return areSame(a, b); });
}

/// How many states of \a newer are not those of \a older in the same memory.
int newStates(const BoardSnapshot &newer, const BoardSnapshot &older)
{
    int count = 0;
    for (const auto &state : newer.states()) {
        const auto shared = [&state](const ItemState &other) { return &other == &state; };
        if (std::ranges::none_of(older.states(), shared))
            ++count;
    }
    return count;
}

QPixmap picture(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::red);
    return pixmap;
}

} // namespace

class TestBoardRecorder : public QObject
{
    Q_OBJECT

private slots:
    void whatHappensByChanceIsRecorded_data();
    void whatHappensByChanceIsRecorded();
    void whatIsChangedBackIsRecorded();
    void aBoardThatWasEmptiedIsRecordedAnew();
    void aTwinOfAnItemIsSeen();
    void itemsThatComeOneByOneAreRecorded();
    void aBoardThatIsDividedOtherwiseIsComparedItemByItem();
    void anotherLevelIsRecorded();
    void manyItemsAtOnceAreRecorded();
    void aMoveOfThePenSharesTheRestOfTheBoard();
    void aNewItemSharesTheRestOfTheBoard();
    void aPictureIsNeverCopied();
};

void TestBoardRecorder::whatHappensByChanceIsRecorded_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 6; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

// What a hand may do is one list of cases.
// NOLINTNEXTLINE(readability-function-cognitive-complexity)
void TestBoardRecorder::whatHappensByChanceIsRecorded()
{
    QFETCH(const quint32, seed);
    constexpr int steps = 400;
    QRandomGenerator random(seed);
    RecordedBoard board;
    const auto place = [&random] { return QPointF(random.bounded(1800), random.bounded(1000)); };
    for (int i = 0; i < 150; ++i)
        addStroke(board.scene, {place(), place()});
    board.processEvents();

    FreeDrawItem *pen = nullptr;
    for (int step = 0; step < steps; ++step) {
        const auto items = board.scene.items();
        auto *item = items.isEmpty() ? nullptr : items.at(random.bounded(int(items.size())));
        if (item && item->parentItem())
            item = item->parentItem();
        const int what = random.bounded(14);
        if (what <= 3) {
            // Mostly the same stroke, as a hand draws it.
            if (!pen) {
                pen = new FreeDrawItem;
                board.scene.addItem(pen);
            }
            QPainterPath path = pen->path();
            if (path.isEmpty())
                path.moveTo(place());
            path.lineTo(path.currentPosition() + QPointF(random.bounded(9), random.bounded(9)));
            pen->setPath(path);
        } else if (what == 4) {
            pen = nullptr;
        } else if (what == 5) {
            auto *const note = new StickyNoteItem;
            note->setPos(place());
            board.scene.addItem(note);
        } else if (what == 6) {
            board.scene.addItem(new ArrowLineItem(place(), place()));
        } else if (what == 7) {
            auto *const image = new ResizablePixmapItem(picture(20 + random.bounded(90)));
            image->setPos(place());
            board.scene.addItem(image);
        } else if (what == 8 && item) {
            item->moveBy(random.bounded(50) - 25, random.bounded(50) - 25);
        } else if (what == 9 && item && item != pen) {
            delete item;
        } else if (what == 10 && item) {
            item->setZValue(random.bounded(4));
        } else if (what == 11 && random.bounded(8) == 0) {
            pen = nullptr;
            const BoardSnapshot copy = board.snapshot;
            restoreSnapshot(board.scene, copy);
        } else if (auto *const arrow = dynamic_cast<ArrowLineItem *>(item)) {
            arrow->setLine({place(), place()});
        } else if (auto *const note = dynamic_cast<StickyNoteItem *>(item)) {
            note->setNoteColor(StickyNoteItem::NoteColor(random.bounded(6)));
            note->setText(u"algo"_s);
        } else if (auto *const image = dynamic_cast<ResizablePixmapItem *>(item)) {
            image->setPixmap(picture(20 + random.bounded(90)));
        } else if (auto *const stroke = dynamic_cast<FreeDrawItem *>(item)) {
            stroke->setColor(QColor::fromHsv(random.bounded(360), 200, 200));
        }
        // Not always at once: what comes in one pass of the event loop is told together.
        if (random.bounded(4) == 0)
            continue;
        board.processEvents();
        QVERIFY2(areTheSame(board.snapshot, takeSnapshot(board.scene)),
                 qPrintable(u"step %1, kind %2"_s.arg(step).arg(what)));
    }
    QVERIFY(board.changes > steps / 2);
}

void TestBoardRecorder::whatIsChangedBackIsRecorded()
{
    RecordedBoard board;
    auto *const stroke = addStroke(board.scene, {{100, 100}, {200, 200}});
    for (const QColor color : {Qt::red, Qt::blue, Qt::red, Qt::blue}) {
        stroke->setColor(color);
        board.processEvents();
        QVERIFY(areTheSame(board.snapshot, takeSnapshot(board.scene)));
    }
}

void TestBoardRecorder::aBoardThatWasEmptiedIsRecordedAnew()
{
    RecordedBoard board;
    // The one that lies lowest stands at the end of a snapshot.
    auto *const lowest = addStroke(board.scene, {{500, 500}, {510, 500}});
    for (int i = 0; i < 1000; ++i)
        addStroke(board.scene, {{1.0 * i, 100}, {1.5 * i, 300}});
    board.processEvents();
    lowest->setColor(Qt::red);
    board.processEvents();
    board.scene.clear();
    board.processEvents();
    auto *const stroke = addStroke(board.scene, {{100, 100}, {200, 200}});
    board.processEvents();
    stroke->setColor(Qt::red);
    board.processEvents();
    QVERIFY(areTheSame(board.snapshot, takeSnapshot(board.scene)));
}

void TestBoardRecorder::aTwinOfAnItemIsSeen()
{
    RecordedBoard board;
    for (int i = 0; i < 3; ++i) {
        auto *const note = new StickyNoteItem;
        note->setPos(300, 200);
        board.scene.addItem(note);
        board.processEvents();
        QCOMPARE(board.snapshot.size(), i + 1);
    }
    // Of an item without any others on it, the scene tells in one rectangle.
    for (int i = 3; i < 6; ++i) {
        addStroke(board.scene, {{100, 100}, {200, 200}});
        board.processEvents();
        QCOMPARE(board.snapshot.size(), i + 1);
    }
}

void TestBoardRecorder::itemsThatComeOneByOneAreRecorded()
{
    RecordedBoard board;
    for (int i = 0; i < 400; ++i) {
        const QPointF place(4.0 * i, i);
        if (i % 2 == 0)
            addStroke(board.scene, {place, place + QPointF(9, 9)});
        else
            board.scene.addItem(new ArrowLineItem(place, place + QPointF(20, 30)));
        board.processEvents();
        const BoardSnapshot whole = takeSnapshot(board.scene);
        QVERIFY2(areTheSame(board.snapshot, whole), qPrintable(QString::number(i)));
        QVERIFY(snapshotsEqual(board.snapshot, whole));
    }
}

void TestBoardRecorder::aBoardThatIsDividedOtherwiseIsComparedItemByItem()
{
    RecordedBoard board;
    // A part and one more; a new one then comes to the first part, and in a fresh snapshot to the second.
    for (int i = 0; i < 65; ++i)
        addStroke(board.scene, {{1.0 * i, 100}, {1.5 * i, 300}});
    board.processEvents();
    auto *const stroke = addStroke(board.scene, {{500, 500}, {510, 500}});
    board.processEvents();
    const BoardSnapshot before = board.snapshot;
    QVERIFY(snapshotsEqual(before, takeSnapshot(board.scene)));
    stroke->setPath(pathThrough({{500, 500}, {510, 505}}));
    QVERIFY(!snapshotsEqual(before, takeSnapshot(board.scene)));
}

void TestBoardRecorder::anotherLevelIsRecorded()
{
    RecordedBoard board;
    auto *const stroke = addStroke(board.scene, {{100, 100}, {200, 200}});
    board.scene.addItem(new StickyNoteItem);
    board.processEvents();
    QCOMPARE(board.snapshot.at(0).type, u"StickyNote"_s);

    stroke->setZValue(5);
    board.processEvents();

    QCOMPARE(board.snapshot.at(0).type, u"FreeDraw"_s);
}

void TestBoardRecorder::manyItemsAtOnceAreRecorded()
{
    RecordedBoard board;
    for (int i = 0; i < 500; ++i)
        addStroke(board.scene, {{1.0 * i, 100}, {2.0 * i, 300}});
    board.processEvents();
    QVERIFY(areTheSame(board.snapshot, takeSnapshot(board.scene)));

    // Two of one level, in an order that their places do not tell.
    addStroke(board.scene, {{900, 900}, {901, 901}});
    addStroke(board.scene, {{10, 10}, {11, 11}});
    board.processEvents();
    QVERIFY(areTheSame(board.snapshot, takeSnapshot(board.scene)));
}

void TestBoardRecorder::aMoveOfThePenSharesTheRestOfTheBoard()
{
    RecordedBoard board;
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i)
        addStroke(board.scene, {{1.0 * i, 100}, {1.5 * i, 300}});
    auto *const stroke = addStroke(board.scene, {{500, 500}, {510, 500}});
    board.processEvents();
    const BoardSnapshot before = board.snapshot;

    stroke->setPath(pathThrough({{500, 500}, {510, 500}, {520, 505}}));
    board.processEvents();

    QVERIFY(areTheSame(board.snapshot, takeSnapshot(board.scene)));
    QVERIFY(newStates(board.snapshot, before) <= 128);
    QVERIFY(!areSame(board.snapshot.at(0), before.at(0)));
}

void TestBoardRecorder::aNewItemSharesTheRestOfTheBoard()
{
    RecordedBoard board;
    for (int i = 0; i < 1000; ++i)
        addStroke(board.scene, {{1.0 * i, 100}, {1.5 * i, 300}});
    board.processEvents();
    for (int i = 0; i < 2; ++i) {
        const BoardSnapshot before = board.snapshot;

        addStroke(board.scene, {{500, 500}, {510.0 + i, 500}});
        board.processEvents();

        QCOMPARE(board.snapshot.size(), before.size() + 1);
        QVERIFY(newStates(board.snapshot, before) <= 128);
    }
}

void TestBoardRecorder::aPictureIsNeverCopied()
{
    RecordedBoard board;
    auto *const image = new ResizablePixmapItem(picture(500));
    board.scene.addItem(image);
    auto *const stroke = addStroke(board.scene, {{500, 500}, {510, 500}});
    const qint64 key = image->pixmap().cacheKey();
    for (int i = 0; i < 12; ++i) {
        stroke->setPath(pathThrough({{500, 500}, {520.0 + i, 505}}));
        image->setPos(10 * i, 0);
        board.processEvents();
        QCOMPARE(board.snapshot.at(1).data.value<QPixmap>().cacheKey(), key);
    }
}

PLUMARA_TEST(TestBoardRecorder)
#include "tst_boardrecorder.moc"
