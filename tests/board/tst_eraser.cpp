// The eraser: a click erases what lies under it, a drag what its rectangle touches.

#include "items/arrowlineitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A picture that notes down when it is deleted.
class MortalPixmap : public QGraphicsPixmapItem
{
public:
    MortalPixmap(QString name, QStringList &deaths)
        : QGraphicsPixmapItem(QPixmap(100, 100))
        , itsName(std::move(name))
        , deleted(deaths)
    { }
    ~MortalPixmap() override { deleted << itsName; }
    Q_DISABLE_COPY_MOVE(MortalPixmap)

private:
    QString itsName;
    QStringList &deleted;
};

} // namespace

class TestEraser : public QObject
{
    Q_OBJECT

private slots:
    void aPressErasesNothingYet();
    void aClickErasesTheStrokeUnderIt();
    void aClickErasesEverythingUnderIt();
    void aClickOnEmptyCanvasErasesNothing();
    void theEraserGoesByTheShapeOfAStroke();
    void theTopmostIsErasedFirst();
    void anyClickEndsTheMode();
    void aDragErasesEveryKindOfItemItTouches();
    void aDragInsideACircleTakesTheCircle();
    void aDragLeavesOtherItemsAlone();
    void aDragErasesWhileItMoves();
    void whatADragHasErasedStaysErased();
    void aDragUpOrLeftErasesWhatTheToolkitAnswers_data();
    void aDragUpOrLeftErasesWhatTheToolkitAnswers();
    void aDragAlongOneAxisErasesNothing();
    void aDragThatEndsWhereItBeganErasesThere();
    void aDragThatEndsElsewhereErasesNothingThere();
    void movingWithoutTheLeftButtonErasesNothing();
    void aReleaseNeedsNoPressBefore();
    void erasingMarksTheBoardBeforeTheRelease();
    void erasingNothingMarksNothing();
    void aWholeDragIsOneStepOfTheHistory();
};

void TestEraser::aPressErasesNothingYet()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 300}});
    board.click("ModoBorrador");

    board.pointer.press({550, 300});

    QCOMPARE(board.count(), 1);
    QCOMPARE(QWidget::mouseGrabber(), &board.view);
}

void TestEraser::aClickErasesTheStrokeUnderIt()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 300}});
    auto *const other = addStroke(board.scene, {{500, 400}, {600, 400}});
    board.click("ModoBorrador");

    board.pointer.click({550, 300});

    QCOMPARE(board.only<FreeDrawItem>(), other);
}

void TestEraser::aClickErasesEverythingUnderIt()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 300}});
    addStroke(board.scene, {{550, 250}, {550, 350}});
    // An arrow that takes no mouse buttons lets the press through like a stroke.
    auto *const arrow = new ArrowLineItem({500, 250}, {600, 350});
    arrow->setAcceptedMouseButtons(Qt::NoButton);
    board.scene.addItem(arrow);
    board.click("ModoBorrador");

    board.pointer.click({550, 300});

    QCOMPARE(board.count(), 0);
}

void TestEraser::aClickOnEmptyCanvasErasesNothing()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 300}});
    board.click("ModoBorrador");

    board.pointer.click({550, 320});

    QCOMPARE(board.count(), 1);
}

void TestEraser::theEraserGoesByTheShapeOfAStroke()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 400}});

    // Inside of its bounding rectangle, but off the stroke itself.
    board.click("ModoBorrador");
    board.pointer.click({590, 310});
    board.click("ModoBorrador");
    board.quickDrag({570, 302}, {598, 330});

    QCOMPARE(board.count(), 1);
}

void TestEraser::theTopmostIsErasedFirst()
{
    ShownBoard board;
    QStringList deaths;
    for (const auto &name : {u"low"_s, u"mid"_s, u"top"_s})
        board.scene.addItem(new MortalPixmap(name, deaths));
    board.click("ModoBorrador");

    board.quickDrag({20, 20}, {60, 60});

    QCOMPARE(deaths, QStringList({u"top"_s, u"mid"_s, u"low"_s}));
}

void TestEraser::anyClickEndsTheMode()
{
    ShownBoard board;
    board.click("ModoBorrador");

    board.pointer.click({550, 320});

    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
    QVERIFY(!QWidget::mouseGrabber());
}

void TestEraser::aDragErasesEveryKindOfItemItTouches()
{
    ShownBoard board;
    auto *const note = new StickyNoteItem;
    note->setPos(300, 200);
    board.scene.addItem(note);
    board.scene.addItem(new ArrowLineItem({620, 250}, {700, 300}));
    QPixmap pixmap(40, 40);
    pixmap.fill(Qt::green);
    auto *const image = new ResizablePixmapItem(pixmap);
    image->setPos(720, 250);
    board.scene.addItem(image);
    board.scene.addPixmap(pixmap)->setPos(780, 250);
    addStroke(board.scene, {{850, 250}, {900, 300}});
    auto *const outside = addStroke(board.scene, {{100, 550}, {200, 600}});
    board.click("ModoBorrador");

    board.pointer.drag({{100, 150}, {950, 350}});

    QCOMPARE(board.only<FreeDrawItem>(), outside);
    QCOMPARE(board.count(), 1);
}

void TestEraser::aDragInsideACircleTakesTheCircle()
{
    ShownBoard board;
    // Open at its end, as a hand leaves it.
    addStroke(board.scene, {{500, 300}, {700, 300}, {700, 450}, {500, 450}, {502, 310}});
    board.click("ModoBorrador");
    board.pointer.drag({{580, 360}, {600, 370}});
    QCOMPARE(board.count(), 0);
}

void TestEraser::aDragLeavesOtherItemsAlone()
{
    ShownBoard board;
    board.scene.addRect(300, 200, 50, 50);
    board.scene.addText(u"Texto"_s)->setPos(400, 200);
    board.click("ModoBorrador");

    board.pointer.drag({{200, 150}, {600, 400}});

    QCOMPARE(board.count(), 2);
}

void TestEraser::aDragErasesWhileItMoves()
{
    ShownBoard board;
    addStroke(board.scene, {{300, 300}, {350, 350}});
    addStroke(board.scene, {{500, 300}, {550, 350}});
    board.click("ModoBorrador");
    board.pointer.press({200, 200});

    board.pointer.move({320, 320});
    QCOMPARE(board.count(), 1);
    board.pointer.move({520, 320});
    QCOMPARE(board.count(), 0);
    board.pointer.release({520, 320});
}

void TestEraser::whatADragHasErasedStaysErased()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {550, 350}});
    board.click("ModoBorrador");

    board.pointer.drag({{200, 200}, {520, 320}, {210, 210}});

    QCOMPARE(board.count(), 0);
}

void TestEraser::aDragUpOrLeftErasesWhatTheToolkitAnswers_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::newRow("up and left") << QPointF(650, 400) << QPointF(250, 150);
    QTest::newRow("left") << QPointF(650, 150) << QPointF(250, 400);
    QTest::newRow("up") << QPointF(250, 400) << QPointF(650, 150);
}

void TestEraser::aDragUpOrLeftErasesWhatTheToolkitAnswers()
{
    QFETCH(const QPointF, from);
    QFETCH(const QPointF, to);
    ShownBoard board;
    // What lies in a rectangle of negative size is for the toolkit to say.
    addStroke(board.scene, {{500, 300}, {600, 300}});
    addStroke(board.scene, {{450, 250}, {450, 350}});
    addStroke(board.scene, {{300, 200}, {320, 220}});
    addStroke(board.scene, {{700, 500}, {720, 520}});
    const QRectF swept(from, QSizeF(to.x() - from.x(), to.y() - from.y()));
    QList<QGraphicsItem *> expected = board.scene.items();
    const auto answer = board.scene.items(swept, Qt::IntersectsItemShape, Qt::DescendingOrder);
    for (auto *const item : answer)
        expected.removeOne(item);
    QVERIFY(expected.size() < board.count());
    board.click("ModoBorrador");

    board.quickDrag(from, to);

    QCOMPARE(board.scene.items(), expected);
}

void TestEraser::aDragAlongOneAxisErasesNothing()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 250}, {500, 350}});
    board.click("ModoBorrador");

    // A rectangle without height touches nothing.
    board.quickDrag({400, 300}, {600, 300});

    QCOMPARE(board.count(), 1);
}

void TestEraser::aDragThatEndsWhereItBeganErasesThere()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 250}, {500, 350}});
    board.click("ModoBorrador");
    board.pointer.press({500, 300});

    board.pointer.move({600, 300});
    board.pointer.move({500, 300});
    QCOMPARE(board.count(), 1);
    board.pointer.release({500, 300});

    QCOMPARE(board.count(), 0);
}

void TestEraser::aDragThatEndsElsewhereErasesNothingThere()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 250}, {500, 350}});
    board.click("ModoBorrador");

    board.pointer.drag({{400, 300}, {500, 300}});

    QCOMPARE(board.count(), 1);
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestEraser::movingWithoutTheLeftButtonErasesNothing()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 350}});
    board.click("ModoBorrador");
    board.pointer.press({200, 200});

    board.send(QEvent::MouseMove, {700, 400}, Qt::NoButton, Qt::NoButton);
    board.send(QEvent::MouseMove, {700, 400}, Qt::NoButton, Qt::RightButton);
    QCOMPARE(board.count(), 1);
    board.send(QEvent::MouseMove, {700, 400}, Qt::NoButton, Qt::LeftButton | Qt::RightButton);
    QCOMPARE(board.count(), 0);
}

void TestEraser::aReleaseNeedsNoPressBefore()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 300}});
    board.click("ModoBorrador");
    board.pointer.click({550, 400});
    board.click("ModoBorrador");

    // The place of the press before last counts still.
    auto *const stroke = addStroke(board.scene, {{500, 400}, {600, 400}});
    board.send(QEvent::MouseButtonRelease, {550, 300}, Qt::LeftButton, Qt::NoButton);
    QCOMPARE(board.count(), 2);
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
    board.click("ModoBorrador");
    board.send(QEvent::MouseButtonRelease, {550, 400}, Qt::LeftButton, Qt::NoButton);
    QVERIFY(!board.scene.items().contains(stroke));
    QCOMPARE(board.count(), 1);
}

void TestEraser::erasingMarksTheBoardBeforeTheRelease()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s),
                                            QJsonArray{BoardFile::stroke(500, 300, 600, 350)}));
    board.click("ModoBorrador");
    board.pointer.press({400, 200});
    QCOMPARE(board.name(), u"plan.vtrz"_s);

    board.pointer.move({700, 400});

    QCOMPARE(board.name(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestEraser::erasingNothingMarksNothing()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s),
                                            QJsonArray{BoardFile::stroke(500, 300, 600, 350)}));
    board.click("ModoBorrador");

    board.pointer.drag({{700, 400}, {800, 500}});

    QCOMPARE(board.name(), u"plan.vtrz"_s);
}

void TestEraser::aWholeDragIsOneStepOfTheHistory()
{
    ShownBoard board;
    addStroke(board.scene, {{300, 300}, {350, 350}});
    board.scene.addItem(new ArrowLineItem({500, 300}, {550, 350}));
    board.window.captureSnapshot();
    board.click("ModoBorrador");

    board.send(QEvent::MouseButtonPress, {200, 200}, Qt::LeftButton, Qt::LeftButton);
    board.send(QEvent::MouseMove, {320, 320}, Qt::NoButton, Qt::LeftButton);
    board.send(QEvent::MouseMove, {520, 320}, Qt::NoButton, Qt::LeftButton);
    QCOMPARE(board.count(), 0);
    board.send(QEvent::MouseButtonRelease, {520, 320}, Qt::LeftButton, Qt::NoButton);

    board.window.undoMode();
    QCOMPARE(board.count(), 2);
}

PLUMARA_TEST(TestEraser)
#include "tst_eraser.moc"
