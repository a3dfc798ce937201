// A note: its colours, its signal, and how the pointer moves it.

#include "items/stickynoteitem.h"

#include "tests/items/itemfacts.h"
#include "tests/items/menuanswer.h"
#include "tests/items/paintrecorder.h"
#include "tests/support/items/noteoncanvas.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsRectItem>
#include <QGraphicsSceneMouseEvent>
#include <QMetaEnum>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace Qt::Literals::StringLiterals;

class TestStickyNoteItem : public QObject
{
    Q_OBJECT

private slots:
    void isAGraphicsObjectWithOneSignal();
    void itsColorsAreAMetaType();

    void startsYellowWithThePlaceholder();
    void isAlwaysThreeHundredUnitsSquare();
    void canBeMovedSelectedAndFocusedOnly();
    void takesAGraphicsParentOnly();

    void paintsEveryColorFromTopToBottom_data();
    void paintsEveryColorFromTopToBottom();
    void paintsOneRectangleWithoutAnOutline();
    void anUnknownColorIsKeptAndPaintsTheBareGradient();
    void settingTheColorRepaints();

    void colorTextAndMovingEmitNothing();
    void geometryIsReportedOnlyWithTheFlagThatNotesLack();

    void aPressSelects();
    void aDragCountsItsFirstStepTwice();
    void theMiddleButtonDragsToo();
    void nothingMovesAfterTheRelease();
    void releasingOneOfTwoButtonsEndsTheDrag();
    void releasingTheOtherButtonEndsTheDragToo();
    void aClickOnOneOfSeveralDeselectsTheOthers();
    void theRightButtonNeitherDragsNorSelects();
    void aRightPressEndsAtTheNote();
    void aRightPressIsAccepted();
    void belongsToItsSceneWithItsText();
};

namespace {

class PressCounter : public QGraphicsRectItem
{
public:
    using QGraphicsRectItem::QGraphicsRectItem;

    int presses = 0;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *) override { ++presses; }
};

bool near(const QColor &a, const QColor &b)
{
    constexpr int tolerance = 2;
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance
        && qAbs(a.blue() - b.blue()) <= tolerance;
}

} // namespace

void TestStickyNoteItem::isAGraphicsObjectWithOneSignal()
{
    verifyOneSignal(StickyNoteItem::staticMetaObject, "StickyNoteItem",
                    QGraphicsObject::staticMetaObject);
    StickyNoteItem note;
    verifyCasts<QGraphicsItem>(note, "StickyNoteItem", "QGraphicsItem");
}

void TestStickyNoteItem::itsColorsAreAMetaType()
{
    const StickyNoteItem note;
    const QMetaType type = QMetaType::fromName("StickyNoteItem::NoteColor");
    QVERIFY(type.isValid());
    QCOMPARE(type, QMetaType::fromType<StickyNoteItem::NoteColor>());

    const auto colors = QMetaEnum::fromType<StickyNoteItem::NoteColor>();
    QCOMPARE(colors.keyCount(), 6);
    for (int value = 0; value < colors.keyCount(); ++value)
        QCOMPARE(colors.value(value), value);
}

void TestStickyNoteItem::startsYellowWithThePlaceholder()
{
    const StickyNoteItem note;
    QCOMPARE(note.noteColor(), 0);
    QCOMPARE(note.getText(), u"Agregar texto..."_s);
    QCOMPARE(note.zValue(), 1.0);
}

void TestStickyNoteItem::isAlwaysThreeHundredUnitsSquare()
{
    StickyNoteItem note;
    QCOMPARE(note.boundingRect(), QRectF(0, 0, 300, 300));
    note.setText(QString(2000, u'a'));
    QCOMPARE(note.boundingRect(), QRectF(0, 0, 300, 300));
}

void TestStickyNoteItem::canBeMovedSelectedAndFocusedOnly()
{
    const StickyNoteItem note;
    QCOMPARE(note.flags(),
             QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable
                 | QGraphicsItem::ItemIsFocusable);
}

void TestStickyNoteItem::takesAGraphicsParentOnly()
{
    QGraphicsRectItem sheet;
    auto *const note = new StickyNoteItem(&sheet);
    QCOMPARE(note->parentItem(), &sheet);
    QCOMPARE(note->parent(), nullptr);
}

void TestStickyNoteItem::paintsEveryColorFromTopToBottom_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QColor>("top");
    QTest::addColumn<QColor>("bottom");
    QTest::newRow("yellow") << 0 << QColor(0xFFFCC9) << QColor(0xFFF75C);
    QTest::newRow("light blue") << 1 << QColor(0xC9F8FF) << QColor(0x5CE3FF);
    QTest::newRow("red") << 2 << QColor(0xFFC9C9) << QColor(0xFF5C5C);
    QTest::newRow("pink") << 3 << QColor(0xFFD9F2) << QColor(0xFF77C2);
    QTest::newRow("orange") << 4 << QColor(0xFFE1C9) << QColor(0xFF9E5C);
    QTest::newRow("grey") << 5 << QColor(0xE0E0E0) << QColor(0xA0A0A0);
}

void TestStickyNoteItem::paintsEveryColorFromTopToBottom()
{
    QFETCH(int, value);
    QFETCH(QColor, top);
    QFETCH(QColor, bottom);
    ItemCanvas canvas;
    auto *const note = canvas.add(new StickyNoteItem, NoteOnCanvas::place);
    note->setText({});
    note->setNoteColor(static_cast<StickyNoteItem::NoteColor>(value));

    const QImage picture = canvas.picture();
    const QColor middle((top.red() + bottom.red()) / 2, (top.green() + bottom.green()) / 2,
                        (top.blue() + bottom.blue()) / 2);
    for (const int x : {100, 250, 399}) {
        QVERIFY(near(picture.pixelColor(x, 100), top));
        QVERIFY(near(picture.pixelColor(x, 250), middle));
        QVERIFY(near(picture.pixelColor(x, 399), bottom));
    }
    QCOMPARE(picture.pixelColor(99, 250), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(400, 250), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(250, 99), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(250, 400), QColor(Qt::white));
}

void TestStickyNoteItem::paintsOneRectangleWithoutAnOutline()
{
    ItemCanvas canvas;
    auto *const note = canvas.add(new StickyNoteItem);
    note->setSelected(true);
    QVERIFY(note->isSelected());

    const auto shapes = paintedBy(*note);
    QCOMPARE(shapes.size(), 1);
    const PaintedShape &sheet = shapes.constFirst();
    QCOMPARE(sheet.kind, PaintedShape::Rectangle);
    QCOMPARE(sheet.rect, QRectF(0, 0, 300, 300));
    QCOMPARE(sheet.pen.style(), Qt::NoPen);
    QCOMPARE(sheet.brush.style(), Qt::LinearGradientPattern);
    const auto *const gradient = static_cast<const QLinearGradient *>(sheet.brush.gradient());
    QCOMPARE(gradient->start(), QPointF(0, 0));
    QCOMPARE(gradient->finalStop(), QPointF(0, 300));
    QCOMPARE(gradient->stops(), QGradientStops({{0.0, 0xFFFCC9}, {1.0, 0xFFF75C}}));
}

void TestStickyNoteItem::anUnknownColorIsKeptAndPaintsTheBareGradient()
{
    for (const int value : {-1, 6, 9, std::numeric_limits<int>::max()}) {
        StickyNoteItem note;
        note.setNoteColor(static_cast<StickyNoteItem::NoteColor>(value));
        QCOMPARE(static_cast<int>(note.noteColor()), value);
        const auto shapes = paintedBy(note);
        QCOMPARE(shapes.size(), 1);
        QCOMPARE(shapes.constFirst().brush.gradient()->stops(), QLinearGradient().stops());
    }
}

void TestStickyNoteItem::settingTheColorRepaints()
{
    NoteOnCanvas on;
    QSignalSpy changed(&on.canvas.scene, &QGraphicsScene::changed);
    QTRY_VERIFY(!changed.isEmpty());
    changed.clear();

    on.note->setNoteColor(StickyNoteItem::Yellow);
    QTRY_VERIFY(!changed.isEmpty());
    const auto regions = changed.constFirst().constFirst().value<QList<QRectF>>();
    QCOMPARE(regions, QList<QRectF>{on.note->sceneBoundingRect()});
}

void TestStickyNoteItem::colorTextAndMovingEmitNothing()
{
    NoteOnCanvas on;
    const QSignalSpy modified(on.note, &StickyNoteItem::itemModified);
    QVERIFY(on.canvas.show());
    on.note->setNoteColor(StickyNoteItem::Pink);
    on.note->setText(u"otro"_s);
    changeAllButGeometry(*on.note);
    on.canvas.pointer.drag({on.onPaper(), on.onPaper() + QPointF(20, 0)});
    changeGeometry(*on.note);
    QCOMPARE(modified.count(), 0);
}

void TestStickyNoteItem::geometryIsReportedOnlyWithTheFlagThatNotesLack()
{
    StickyNoteItem note;
    verifyGeometryIsReportedWithItsFlag(note);
}

void TestStickyNoteItem::aPressSelects()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onPaper());
    QVERIFY(on.note->isSelected());
    on.canvas.pointer.release(on.onPaper());
    QVERIFY(on.note->isSelected());
    QCOMPARE(on.note->pos(), NoteOnCanvas::place);
}

void TestStickyNoteItem::aDragCountsItsFirstStepTwice()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onPaper());
    on.canvas.pointer.move(on.onPaper() + QPointF(10, 3));
    QCOMPARE(on.note->pos(), NoteOnCanvas::place + QPointF(20, 6));
    on.canvas.pointer.move(on.onPaper() + QPointF(40, -5));
    QCOMPARE(on.note->pos(), NoteOnCanvas::place + QPointF(50, -2));
    on.canvas.pointer.release(on.onPaper() + QPointF(40, -5));
    QCOMPARE(on.note->pos(), NoteOnCanvas::place + QPointF(50, -2));
}

void TestStickyNoteItem::theMiddleButtonDragsToo()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onPaper(), Qt::MiddleButton);
    on.canvas.pointer.move(on.onPaper() + QPointF(10, 3));
    on.canvas.pointer.move(on.onPaper() + QPointF(40, -5));
    on.canvas.pointer.release(on.onPaper() + QPointF(40, -5), Qt::MiddleButton);
    // The base class moves with the left button only, so no step counts twice.
    QCOMPARE(on.note->pos(), NoteOnCanvas::place + QPointF(40, -5));
    QVERIFY(!on.note->isSelected());
}

void TestStickyNoteItem::nothingMovesAfterTheRelease()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    on.canvas.pointer.move(on.onPaper() + QPointF(30, 30));
    QCOMPARE(on.note->pos(), NoteOnCanvas::place);
}

void TestStickyNoteItem::releasingOneOfTwoButtonsEndsTheDrag()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onPaper(), Qt::LeftButton);
    on.canvas.pointer.press(on.onPaper(), Qt::MiddleButton);
    on.canvas.pointer.release(on.onPaper(), Qt::LeftButton);
    on.canvas.pointer.move(on.onPaper() + QPointF(30, 30));
    QCOMPARE(on.note->pos(), NoteOnCanvas::place);
    on.canvas.pointer.release(on.onPaper() + QPointF(30, 30), Qt::MiddleButton);
}

void TestStickyNoteItem::releasingTheOtherButtonEndsTheDragToo()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.press(on.onPaper(), Qt::LeftButton);
    on.canvas.pointer.press(on.onPaper(), Qt::MiddleButton);
    on.canvas.pointer.release(on.onPaper(), Qt::MiddleButton);
    // The toolkit moves it on with the left button, so no step counts twice.
    on.canvas.pointer.move(on.onPaper() + QPointF(10, 3));
    QCOMPARE(on.note->pos(), NoteOnCanvas::place + QPointF(10, 3));
    on.canvas.pointer.release(on.onPaper() + QPointF(10, 3), Qt::LeftButton);
}

void TestStickyNoteItem::aClickOnOneOfSeveralDeselectsTheOthers()
{
    NoteOnCanvas on;
    auto *const other = on.canvas.add(new StickyNoteItem, {450, 100});
    QVERIFY(on.canvas.show());
    on.note->setSelected(true);
    other->setSelected(true);
    on.canvas.pointer.press(on.onPaper());
    QVERIFY(other->isSelected());
    on.canvas.pointer.release(on.onPaper());
    QVERIFY(on.note->isSelected());
    QVERIFY(!other->isSelected());
}

void TestStickyNoteItem::theRightButtonNeitherDragsNorSelects()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    on.canvas.pointer.press(on.onPaper(), Qt::RightButton);
    on.canvas.pointer.move(on.onPaper() + QPointF(30, 30));
    on.canvas.pointer.release(on.onPaper() + QPointF(30, 30), Qt::RightButton);
    QVERIFY(menu.seen()); // with the press, or with the release, as the platform has it
    QCOMPARE(on.note->pos(), NoteOnCanvas::place);
    QVERIFY(!on.note->isSelected());
}

void TestStickyNoteItem::aRightPressEndsAtTheNote()
{
    NoteOnCanvas on;
    auto *const below = on.canvas.add(new PressCounter(on.canvas.scene.sceneRect()));
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    on.canvas.pointer.click(on.onPaper(), Qt::RightButton);
    QCOMPARE(below->presses, 0);
    on.canvas.pointer.click({700, 500}, Qt::RightButton);
    QCOMPARE(below->presses, 1);
}

void TestStickyNoteItem::aRightPressIsAccepted()
{
    NoteOnCanvas on;
    QGraphicsSceneMouseEvent press(QEvent::GraphicsSceneMousePress);
    press.setButton(Qt::RightButton);
    press.ignore();
    QVERIFY(on.canvas.scene.sendEvent(on.note, &press));
    QVERIFY(press.isAccepted());
}

void TestStickyNoteItem::belongsToItsSceneWithItsText()
{
    NoteOnCanvas on;
    const QPointer<StickyNoteItem> note(on.note);
    const QPointer<QGraphicsTextItem> text(textOf(*on.note));
    on.canvas.scene.clear();
    QVERIFY(note.isNull());
    QVERIFY(text.isNull());
}

PLUMARA_TEST(TestStickyNoteItem)
#include "tst_stickynoteitem.moc"
