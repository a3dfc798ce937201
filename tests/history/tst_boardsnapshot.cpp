// What a snapshot of a board holds, and the items that it restores.

#include "history/boardsnapshot.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/stickynoteitem.h"
#include "tests/support/items/imageoncanvas.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsScene>
#include <QPainterPath>
#include <QTest>

#include <memory>
#include <utility>

using namespace Qt::Literals::StringLiterals;

using Stroke = std::pair<QPainterPath, QColor>;

class TestBoardSnapshot : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyBoardGivesAnEmptySnapshot();
    void aStrokeIsItsPathAndColor();
    void aNoteIsItsColor();
    void anArrowIsItsLine();
    void anImageIsThePictureThatItShows();
    void whatIsNoBoardItemIsLeftOut();
    void theTopmostItemComesFirst();
    void takingASnapshotLeavesTheBoardAlone();

    void aRestoredStrokeHasTheDefaultWidth();
    void aRestoredNoteHasThePlaceholder();
    void aRestoredArrowIsBlackAndThin();
    void aRestoredImageHasThePictureAsItsSource();
    void aRestoredItemBelongsToNobody();
    void anEmptyPictureRestoresNothing();
    void anUnknownKindRestoresNothing_data();
    void anUnknownKindRestoresNothing();
    void valuesOfAnotherTypeAreConverted();
    void valuesThatCannotBeConvertedAreEmpty();
};

namespace {

QPainterPath zigzag()
{
    QPainterPath path({1, 2});
    path.lineTo(3.5, 4);
    path.cubicTo(5, 6, 7, 8, 9, 10);
    path.moveTo(20, 20);
    path.lineTo(30, 20);
    return path;
}

/// The item that \a state restores, if it is an \c Item. The caller owns it.
template <typename Item> std::unique_ptr<Item> restored(const ItemState &state)
{
    std::unique_ptr<QGraphicsItem> item(restoreItem(state));
    if (!dynamic_cast<Item *>(item.get()))
        return nullptr;
    return std::unique_ptr<Item>(dynamic_cast<Item *>(item.release()));
}

/// The snapshot's only state for \a item at (12, 34.5) of a board of its own.
template <typename Item> ItemState stateOf(Item *item)
{
    QGraphicsScene scene;
    item->setPos(12, 34.5);
    scene.addItem(item);
    const auto snapshot = takeSnapshot(scene);
    return snapshot.size() == 1 ? snapshot.at(0) : ItemState{};
}

} // namespace

void TestBoardSnapshot::anEmptyBoardGivesAnEmptySnapshot()
{
    QVERIFY(takeSnapshot(QGraphicsScene()).isEmpty());
}

void TestBoardSnapshot::aStrokeIsItsPathAndColor()
{
    auto *const stroke = new FreeDrawItem;
    stroke->setPath(zigzag());
    stroke->setColor(QColor(1, 2, 3, 4));
    const auto state = stateOf(stroke);
    QCOMPARE(state.type, u"FreeDraw"_s);
    QCOMPARE(state.pos, QPointF(12, 34.5));
    QCOMPARE(state.data.typeName(), "std::pair<QPainterPath,QColor>");
    QCOMPARE(QMetaType::fromName("std::pair<QPainterPath,QColor>"), state.data.metaType());
    QCOMPARE(state.data.value<Stroke>(), Stroke(zigzag(), QColor(1, 2, 3, 4)));
}

void TestBoardSnapshot::aNoteIsItsColor()
{
    auto *const note = new StickyNoteItem;
    note->setNoteColor(StickyNoteItem::Orange);
    const auto state = stateOf(note);
    QCOMPARE(state.type, u"StickyNote"_s);
    QCOMPARE(state.pos, QPointF(12, 34.5));
    QCOMPARE(state.data.typeName(), "StickyNoteItem::NoteColor");
    QCOMPARE(state.data.value<StickyNoteItem::NoteColor>(), StickyNoteItem::Orange);
}

void TestBoardSnapshot::anArrowIsItsLine()
{
    const auto state = stateOf(new ArrowLineItem({1, 2}, {3.5, -4}));
    QCOMPARE(state.type, u"ArrowLine"_s);
    QCOMPARE(state.pos, QPointF(12, 34.5));
    QCOMPARE(state.data, QVariant(QLineF(1, 2, 3.5, -4)));
}

void TestBoardSnapshot::anImageIsThePictureThatItShows()
{
    auto *const image = new ResizablePixmapItem(motley(50, 50));
    const QPixmap shown = motley(30, 20);
    image->setPixmap(shown);
    const auto state = stateOf(image);
    QCOMPARE(state.type, u"Pixmap"_s);
    QCOMPARE(state.pos, QPointF(12, 34.5));
    QCOMPARE(state.data.metaType(), QMetaType::fromType<QPixmap>());
    // The very pixmap, no copy of its pixels.
    QCOMPARE(state.data.value<QPixmap>().cacheKey(), shown.cacheKey());
}

void TestBoardSnapshot::whatIsNoBoardItemIsLeftOut()
{
    QGraphicsScene scene;
    scene.addRect(0, 0, 10, 10);
    scene.addPath(zigzag());
    scene.addLine(0, 0, 10, 10);
    scene.addPixmap(motley(5, 5));
    scene.addText(u"texto"_s);
    QVERIFY(takeSnapshot(scene).isEmpty());

    // A note brings its text item, which is no item of the board.
    scene.addItem(new StickyNoteItem);
    QCOMPARE(takeSnapshot(scene).size(), 1);
}

void TestBoardSnapshot::theTopmostItemComesFirst()
{
    QGraphicsScene scene;
    scene.addItem(new ArrowLineItem({0, 0}, {9, 0}));
    scene.addItem(new ArrowLineItem({0, 0}, {0, 9}));
    scene.addItem(new ResizablePixmapItem(motley(5, 5)));
    scene.addItem(new StickyNoteItem);
    scene.addItem(new FreeDrawItem);

    const auto snapshot = takeSnapshot(scene);
    QStringList types;
    for (const auto &state : snapshot.states())
        types << state.type;
    QCOMPARE(
        types,
        QStringList({u"ArrowLine"_s, u"ArrowLine"_s, u"FreeDraw"_s, u"StickyNote"_s, u"Pixmap"_s}));
    // Of items at one height the one added last is on top.
    QCOMPARE(snapshot.at(0).data.toLineF(), QLineF(0, 0, 0, 9));
}

void TestBoardSnapshot::takingASnapshotLeavesTheBoardAlone()
{
    QGraphicsScene scene;
    auto *const note = new StickyNoteItem;
    scene.addItem(note);
    note->setSelected(true);
    note->setText(u"hola"_s);
    takeSnapshot(scene);
    QVERIFY(note->isSelected());
    QCOMPARE(note->getText(), u"hola"_s);
    QCOMPARE(scene.items().size(), 2);
}

void TestBoardSnapshot::aRestoredStrokeHasTheDefaultWidth()
{
    auto *const drawn = new FreeDrawItem;
    drawn->setPath(zigzag());
    drawn->setColor(QColor(1, 2, 3, 4));
    drawn->setWidth(9);
    drawn->setZValue(7);

    const auto stroke = restored<FreeDrawItem>(stateOf(drawn));
    QVERIFY(stroke);
    QCOMPARE(stroke->path(), zigzag());
    QCOMPARE(stroke->pos(), QPointF(12, 34.5));
    QCOMPARE(stroke->QGraphicsPathItem::pen(), roundPen(QColor(1, 2, 3, 4), 2));
    QCOMPARE(stroke->zValue(), 1.0);
}

void TestBoardSnapshot::aRestoredNoteHasThePlaceholder()
{
    auto *const written = new StickyNoteItem;
    written->setText(u"Comprar pan"_s);
    written->setNoteColor(StickyNoteItem::Pink);
    written->setZValue(7);

    const auto note = restored<StickyNoteItem>(stateOf(written));
    QVERIFY(note);
    QCOMPARE(note->getText(), u"Agregar texto..."_s);
    QCOMPARE(note->noteColor(), StickyNoteItem::Pink);
    QCOMPARE(note->pos(), QPointF(12, 34.5));
    QCOMPARE(note->zValue(), 1.0);
}

void TestBoardSnapshot::aRestoredArrowIsBlackAndThin()
{
    auto *const drawn = new ArrowLineItem({1, 2}, {3.5, -4});
    drawn->setColor(Qt::red);
    drawn->setWidth(9);

    const auto arrow = restored<ArrowLineItem>(stateOf(drawn));
    QVERIFY(arrow);
    QCOMPARE(arrow->line(), QLineF(1, 2, 3.5, -4));
    QCOMPARE(arrow->pos(), QPointF(12, 34.5));
    QCOMPARE(arrow->QGraphicsLineItem::pen(), roundPen(Qt::black, 2));
    QCOMPARE(arrow->zValue(), 2.0);
}

void TestBoardSnapshot::aRestoredImageHasThePictureAsItsSource()
{
    ImageOnCanvas on;
    QVERIFY(on.showSelected());
    on.dragHandle(5, {-151, -151});
    const QPixmap shrunk = on.image->pixmap();
    QCOMPARE(shrunk.size(), QSize(50, 50));

    const auto snapshot = takeSnapshot(on.canvas.scene);
    QCOMPARE(snapshot.size(), 1);
    on.canvas.scene.clear();
    on.image = restored<ResizablePixmapItem>(snapshot.at(0)).release();
    QVERIFY(on.image);
    QCOMPARE(on.image->pos(), on.place);
    QCOMPARE(on.image->zValue(), 0.0);
    QCOMPARE(on.image->pixmap().toImage(), shrunk.toImage());

    on.canvas.scene.addItem(on.image);
    on.image->setSelected(true);
    on.dragHandle(5, {49, 49});
    QCOMPARE(on.image->pixmap().toImage(),
             shrunk.scaled(100, 100, Qt::KeepAspectRatio, Qt::SmoothTransformation).toImage());
}

void TestBoardSnapshot::aRestoredItemBelongsToNobody()
{
    for (auto *const drawn :
         QList<QGraphicsItem *>{new FreeDrawItem, new StickyNoteItem, new ArrowLineItem({}, {}),
                                new ResizablePixmapItem(motley(5, 5))}) {
        const std::unique_ptr<QGraphicsItem> item(restoreItem(stateOf(drawn)));
        QVERIFY(item);
        QCOMPARE(item->scene(), nullptr);
        QCOMPARE(item->parentItem(), nullptr);
        QVERIFY(!item->isSelected());
        auto *const object = dynamic_cast<QObject *>(item.get());
        QVERIFY(object);
        QCOMPARE(object->parent(), nullptr);
    }
}

void TestBoardSnapshot::anEmptyPictureRestoresNothing()
{
    const auto state = stateOf(new ResizablePixmapItem({}));
    QCOMPARE(state.type, u"Pixmap"_s);
    QCOMPARE(restoreItem(state), nullptr);
    QCOMPARE(restoreItem({u"Pixmap"_s, {}, u"no es una imagen"_s}), nullptr);
}

void TestBoardSnapshot::anUnknownKindRestoresNothing_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("none") << QString();
    QTest::newRow("another") << u"Ellipse"_s;
    QTest::newRow("another case") << u"freedraw"_s;
    QTest::newRow("the name in files") << u"postit"_s;
}

void TestBoardSnapshot::anUnknownKindRestoresNothing()
{
    QFETCH(QString, type);
    QCOMPARE(restoreItem({type, {}, QLineF(0, 0, 1, 1)}), nullptr);
}

void TestBoardSnapshot::valuesOfAnotherTypeAreConverted()
{
    const auto note = restored<StickyNoteItem>({u"StickyNote"_s, {}, 3});
    QVERIFY(note);
    QCOMPARE(note->noteColor(), StickyNoteItem::Pink);

    const auto arrow = restored<ArrowLineItem>({u"ArrowLine"_s, {}, QLine(1, 2, 3, 4)});
    QVERIFY(arrow);
    QCOMPARE(arrow->line(), QLineF(1, 2, 3, 4));
}

void TestBoardSnapshot::valuesThatCannotBeConvertedAreEmpty()
{
    const auto note = restored<StickyNoteItem>({u"StickyNote"_s, {}, {}});
    QVERIFY(note);
    QCOMPARE(note->noteColor(), StickyNoteItem::Yellow);

    const auto arrow = restored<ArrowLineItem>({u"ArrowLine"_s, {}, u"una línea"_s});
    QVERIFY(arrow);
    QCOMPARE(arrow->line(), QLineF());

    const auto stroke = restored<FreeDrawItem>({u"FreeDraw"_s, {}, QLineF(0, 0, 9, 9)});
    QVERIFY(stroke);
    QVERIFY(stroke->path().isEmpty());
    QVERIFY(!stroke->color().isValid());
}

PLUMARA_TEST(TestBoardSnapshot)
#include "tst_boardsnapshot.moc"
