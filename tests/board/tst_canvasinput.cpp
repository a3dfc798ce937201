// What the pointer puts on the board with the pen and with notes, and where.

#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QPen>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString cursorTitle = u"Orvane Plumara - Modo Pizarra"_s;

/// Notes what the pointer does that reaches a widget.
class PointerNotes : public QObject
{
public:
    explicit PointerNotes(QWidget &widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (dynamic_cast<QMouseEvent *>(event))
            types << event->type();
        return false;
    }

    QList<QEvent::Type> types;
};

} // namespace

class TestCanvasInput : public QObject
{
    Q_OBJECT

private slots:
    void thePenStartsAThinBlackStroke();
    void thePenDrawsThroughEveryPointItIsMovedTo();
    void thePenDrawsOnWhateverButtonsAreHeld();
    void everyMoveOfThePenModifiesItsStroke();
    void liftingThePenRecordsTheStrokeAndEndsTheMode();
    void aLiftedPenDrawsNoFurther();
    void everyMoveArrivesWhileAStrokeIsShort();
    void aPenClickLeavesAnEmptyStroke();
    void anotherButtonDoesNotLiftThePen();

    void aClickInNoteModeAddsAYellowNoteThere();
    void theNoteModeStaysOn();
    void aNewNoteIsNeitherSelectedNorHoldsTheMouse();
    void aNoteIsRecordedWithTheChangeOfTheScene();
    void aClickOnANoteAddsNoOther();

    void placesBetweenPixelsAreRounded_data();
    void placesBetweenPixelsAreRounded();
    void placesFollowTheScrolledView();
    void movesAndReleasesWithoutAPressDoNothing_data();
    void movesAndReleasesWithoutAPressDoNothing();
    void whatAToolTakesGoesNoFurther_data();
    void whatAToolTakesGoesNoFurther();
    void drawingLeavesTheBoardsNameAlone();
};

void TestCanvasInput::thePenStartsAThinBlackStroke()
{
    ShownBoard board;
    board.click("ModoLapiz");

    board.pointer.press({500, 300});

    const auto *const stroke = board.only<FreeDrawItem>();
    QVERIFY(stroke);
    QCOMPARE(stroke->color(), QColor(Qt::black));
    QCOMPARE(static_cast<const QGraphicsPathItem *>(stroke)->pen().width(), 2);
    QCOMPARE(stroke->zValue(), 1.0);
    QCOMPARE(stroke->pos(), QPointF(0, 0));
    QVERIFY(!stroke->parentItem());
    QVERIFY(!stroke->parent());
    // The press alone gives the stroke no path yet.
    QVERIFY(stroke->path().isEmpty());
    QCOMPARE(board.count(), 1);
    QCOMPARE(QWidget::mouseGrabber(), &board.view);
}

void TestCanvasInput::thePenDrawsThroughEveryPointItIsMovedTo()
{
    ShownBoard board;
    board.click("ModoLapiz");

    board.pointer.press({500, 300});
    const auto *const stroke = board.only<FreeDrawItem>();
    board.pointer.move({520, 310});
    QCOMPARE(stroke->path(), pathThrough({{500, 300}, {520, 310}}));
    board.pointer.move({540, 290});
    QCOMPARE(stroke->path(), pathThrough({{500, 300}, {520, 310}, {540, 290}}));
    // The release adds no point of its own.
    board.send(QEvent::MouseButtonRelease, {600, 400}, Qt::LeftButton, Qt::NoButton);
    QCOMPARE(stroke->path(), pathThrough({{500, 300}, {520, 310}, {540, 290}}));
}

void TestCanvasInput::thePenDrawsOnWhateverButtonsAreHeld()
{
    ShownBoard board;
    board.click("ModoLapiz");
    board.pointer.press({500, 300});

    board.send(QEvent::MouseMove, {520, 310}, Qt::NoButton, Qt::NoButton);
    board.send(QEvent::MouseMove, {540, 290}, Qt::NoButton, Qt::RightButton);

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}, {540, 290}}));
}

void TestCanvasInput::everyMoveOfThePenModifiesItsStroke()
{
    ShownBoard board;
    board.click("ModoLapiz");
    board.pointer.press({500, 300});
    const QSignalSpy modified(board.only<FreeDrawItem>(), &FreeDrawItem::itemModified);

    board.pointer.move({520, 310});
    board.pointer.move({540, 290});
    board.pointer.release({540, 290});

    QCOMPARE(modified.size(), 2);
}

void TestCanvasInput::liftingThePenRecordsTheStrokeAndEndsTheMode()
{
    ShownBoard board;
    board.window.captureSnapshot();
    board.click("ModoLapiz");

    board.quickDrag({500, 300}, {520, 310});

    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.window.windowTitle(), cursorTitle);
    QCOMPARE(board.count(), 1);
    board.window.undoMode();
    QCOMPARE(board.count(), 0);
    board.window.redoMode();
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestCanvasInput::aLiftedPenDrawsNoFurther()
{
    ShownBoard board;
    board.click("ModoLapiz");
    board.pointer.drag({{500, 300}, {520, 310}});

    board.click("ModoLapiz");
    board.send(QEvent::MouseMove, {540, 290}, Qt::NoButton, Qt::NoButton);

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestCanvasInput::everyMoveArrivesWhileAStrokeIsShort()
{
    constexpr auto puttingTogether = Qt::AA_CompressHighFrequencyEvents;
    const bool usual = QCoreApplication::testAttribute(puttingTogether);
    const auto restore =
        qScopeGuard([usual] { QCoreApplication::setAttribute(puttingTogether, usual); });
    // With some window systems only.
    QCoreApplication::setAttribute(puttingTogether);
    ShownBoard board;
    const auto draw = [&board](int points) {
        for (int i = 0; i < points; ++i)
            board.send(QEvent::MouseMove, {500.0 + i % 100, 310}, Qt::NoButton, Qt::LeftButton);
    };
    board.click("ModoLapiz");
    board.pointer.press({500, 300});
    QVERIFY(!QCoreApplication::testAttribute(puttingTogether));
    draw(400);
    QVERIFY(!QCoreApplication::testAttribute(puttingTogether));
    board.pointer.release({500, 300});
    QVERIFY(QCoreApplication::testAttribute(puttingTogether));

    board.click("ModoLapiz");
    board.pointer.press({500, 300});
    draw(600);
    QVERIFY(QCoreApplication::testAttribute(puttingTogether));
}

void TestCanvasInput::aPenClickLeavesAnEmptyStroke()
{
    ShownBoard board;
    board.window.captureSnapshot();
    board.click("ModoLapiz");

    board.quickDrag({500, 300}, {500, 300});

    QVERIFY(board.only<FreeDrawItem>());
    QVERIFY(board.only<FreeDrawItem>()->path().isEmpty());
    QCOMPARE(board.window.windowTitle(), cursorTitle);
    board.window.undoMode();
    QCOMPARE(board.count(), 0);
}

void TestCanvasInput::anotherButtonDoesNotLiftThePen()
{
    ShownBoard board;
    board.click("ModoLapiz");
    board.pointer.press({500, 300});

    board.send(QEvent::MouseButtonRelease, {520, 310}, Qt::RightButton, Qt::LeftButton);
    QCOMPARE(QWidget::mouseGrabber(), &board.view);
    board.pointer.move({540, 290});

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {540, 290}}));
}

void TestCanvasInput::aClickInNoteModeAddsAYellowNoteThere()
{
    ShownBoard board;
    board.click("ModoPostIt");

    board.pointer.click({500, 300});

    const auto *const note = board.only<StickyNoteItem>();
    QVERIFY(note);
    QCOMPARE(note->pos(), QPointF(500, 300));
    QCOMPARE(note->noteColor(), StickyNoteItem::Yellow);
    QCOMPARE(note->getText(), u"Agregar texto..."_s);
    QCOMPARE(note->zValue(), 1.0);
    QVERIFY(!note->parentItem());
    QVERIFY(!note->parent());
}

void TestCanvasInput::theNoteModeStaysOn()
{
    ShownBoard board;
    board.click("ModoPostIt");

    board.pointer.click({100, 100});
    board.pointer.click({500, 100});
    board.pointer.click({900, 100});

    QCOMPARE(board.all<StickyNoteItem>().size(), 3);
    QCOMPARE(board.all<StickyNoteItem>().constFirst()->pos(), QPointF(900, 100));
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo PostIt de cuadro de texto"_s);
    board.click("ModoCursor");
    board.pointer.click({100, 500});
    QCOMPARE(board.count(), 3);
}

void TestCanvasInput::aNewNoteIsNeitherSelectedNorHoldsTheMouse()
{
    ShownBoard board;
    board.click("ModoPostIt");

    board.pointer.press({500, 300});

    QVERIFY(!QWidget::mouseGrabber());
    QVERIFY(board.scene.selectedItems().isEmpty());
    // The note was not pressed, only made: it does not follow the pointer.
    board.pointer.move({600, 400});
    board.pointer.release({600, 400});
    QCOMPARE(board.only<StickyNoteItem>()->pos(), QPointF(500, 300));
}

void TestCanvasInput::aNoteIsRecordedWithTheChangeOfTheScene()
{
    ShownBoard board;
    board.window.captureSnapshot();
    board.click("ModoPostIt");
    board.quickDrag({500, 300}, {500, 300});

    board.window.undoMode();
    QCOMPARE(board.count(), 1);
    board.processEvents();
    board.window.undoMode();
    QCOMPARE(board.count(), 0);
}

void TestCanvasInput::aClickOnANoteAddsNoOther()
{
    ShownBoard board;
    board.click("ModoPostIt");
    board.pointer.click({500, 300});

    board.pointer.click({505, 595});

    QVERIFY(board.only<StickyNoteItem>());
    QVERIFY(board.only<StickyNoteItem>()->isSelected());
}

void TestCanvasInput::placesBetweenPixelsAreRounded_data()
{
    QTest::addColumn<QPointF>("place");
    QTest::addColumn<QPointF>("pixel");
    QTest::newRow("below the half") << QPointF(300.4, 200.49) << QPointF(300, 200);
    QTest::newRow("at the half") << QPointF(300.5, 200.5) << QPointF(301, 201);
    QTest::newRow("above the half") << QPointF(300.6, 200.51) << QPointF(301, 201);
    // A held mouse reports places outside of the view too.
    QTest::newRow("negative half") << QPointF(-0.5, -3.5) << QPointF(-1, -4);
}

void TestCanvasInput::placesBetweenPixelsAreRounded()
{
    QFETCH(const QPointF, place);
    ShownBoard board;
    board.click("ModoPostIt");

    board.send(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton);

    QTEST(board.only<StickyNoteItem>()->pos(), "pixel");
}

void TestCanvasInput::placesFollowTheScrolledView()
{
    ShownBoard board;
    board.view.centerOn(1920, 1080);
    const QPointF corner = board.view.mapToScene(0, 0);
    QVERIFY(corner.x() > 0 && corner.y() > 0);
    board.click("ModoPostIt");

    QTest::mouseClick(board.window.windowHandle(), Qt::LeftButton, {}, {400, 300});

    QCOMPARE(board.only<StickyNoteItem>()->pos(), corner + QPointF(400, 300));
}

void TestCanvasInput::movesAndReleasesWithoutAPressDoNothing_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("ModoLapiz") << u"Orvane Plumara - Modo Lápiz"_s;
    QTest::newRow("ModoLinea") << u"Orvane Plumara - Modo Linea"_s;
    QTest::newRow("ModoPostIt") << u"Orvane Plumara - Modo PostIt de cuadro de texto"_s;
}

void TestCanvasInput::movesAndReleasesWithoutAPressDoNothing()
{
    ShownBoard board;
    board.click(QTest::currentDataTag());

    board.send(QEvent::MouseMove, {500, 300}, Qt::NoButton, Qt::LeftButton);
    board.send(QEvent::MouseButtonRelease, {500, 300}, Qt::LeftButton, Qt::NoButton);

    QCOMPARE(board.count(), 0);
    QTEST(board.window.windowTitle(), "title");
}

void TestCanvasInput::whatAToolTakesGoesNoFurther_data()
{
    QTest::addColumn<QList<QEvent::Type>>("left");
    const QList<QEvent::Type> nothing;
    QTest::newRow("ModoLapiz") << nothing;
    QTest::newRow("ModoLinea") << nothing;
    QTest::newRow("ModoBorrador") << nothing;
    QTest::newRow("ModoPostIt") << QList{QEvent::MouseMove, QEvent::MouseButtonRelease};
}

void TestCanvasInput::whatAToolTakesGoesNoFurther()
{
    ShownBoard board;
    board.click(QTest::currentDataTag());
    const PointerNotes notes(board.window);

    board.quickDrag({500, 300}, {520, 310});

    QTEST(notes.types, "left");
}

void TestCanvasInput::drawingLeavesTheBoardsNameAlone()
{
    ShownBoard board;
    board.click("ModoLapiz");
    board.pointer.drag({{500, 300}, {600, 400}});
    board.click("ModoLinea");
    board.pointer.drag({{500, 500}, {600, 600}});

    QCOMPARE(board.name(), u"Pizarra1.vrtz"_s);
}

PLUMARA_TEST(TestCanvasInput)
#include "tst_canvasinput.moc"
