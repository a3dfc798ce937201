// What the screen really shows of arrows, whose heads reach outside their bounding rectangles.

#include "board/boardwindow.h"
#include "tests/support/items/boardpointer.h"

#include <QGraphicsLineItem>
#include <QPushButton>
#include <QScreen>

#include <memory>

using namespace Qt::Literals::StringLiterals;

class TestArrowHeads : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { board.reset(); }

    void aFlatArrowShowsItsHead();
    void aDraggedArrowLeavesNothingBehind();
    void aThickArrowLeavesNothingBehind();
    void anErasedArrowLeavesNothingBehind();
    void theToolsCursorShowsAfterAnArrowWasDragged();

private:
    void drawArrow();
    QImage shown() const;
    QImage wanted() const;

    // The part of the canvas that no panel covers.
    static constexpr QRect canvas{100, 100, 800, 500};

    std::unique_ptr<BoardWindow> board;
    std::unique_ptr<BoardPointer> pointer;
    QGraphicsScene *scene = nullptr;
};

void TestArrowHeads::init()
{
    board = std::make_unique<BoardWindow>(nullptr);
    board->show();
    QVERIFY(QTest::qWaitForWindowActive(board.get()));
    pointer = std::make_unique<BoardPointer>(*board);
    scene = board->findChild<QGraphicsScene *>();
}

void TestArrowHeads::drawArrow()
{
    board->setLineMode();
    pointer->drag({{300, 300}, {350, 300}, {420, 300}, {500, 300}});
    QCOMPARE(scene->items().size(), 1);
    QTRY_COMPARE(shown(), wanted());
}

/// What the window system holds of the canvas.
QImage TestArrowHeads::shown() const
{
    auto *const screen = board->screen();
    return screen
        ->grabWindow(board->winId(), canvas.x(), canvas.y(), canvas.width(), canvas.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/// The same, painted anew as a whole.
QImage TestArrowHeads::wanted() const
{
    return board->grab(canvas).toImage().convertToFormat(QImage::Format_RGB32);
}

void TestArrowHeads::aFlatArrowShowsItsHead()
{
    drawArrow();
    // A point of the head well above the line, which is 2 units wide.
    const QPoint inHead = pointer->windowPoint({484, 295}) - canvas.topLeft();
    QTRY_COMPARE(shown().pixelColor(inHead), QColor(Qt::black));
}

void TestArrowHeads::aDraggedArrowLeavesNothingBehind()
{
    drawArrow();
    pointer->drag({{380, 300}, {400, 340}, {420, 360}, {440, 420}});
    QTRY_COMPARE(shown(), wanted());
}

void TestArrowHeads::aThickArrowLeavesNothingBehind()
{
    drawArrow();
    auto *const arrow = dynamic_cast<QGraphicsLineItem *>(scene->items().constFirst());
    arrow->setPen(QPen(Qt::red, 60));
    QTRY_COMPARE(shown(), wanted());
    arrow->setPos(30, 90);
    QTRY_COMPARE(shown(), wanted());
}

void TestArrowHeads::anErasedArrowLeavesNothingBehind()
{
    drawArrow();
    board->setEraseMode();
    pointer->drag({{600, 200}, {500, 250}, {350, 350}, {250, 400}});
    board->setEraseMode();
    pointer->drag({{200, 200}, {350, 250}, {600, 400}});
    QCOMPARE(scene->items().size(), 0);
    QTRY_COMPARE(shown(), wanted());
}

void TestArrowHeads::theToolsCursorShowsAfterAnArrowWasDragged()
{
    drawArrow();
    const auto *const viewport = board->findChild<QGraphicsView *>(u"PizarraMain"_s)->viewport();
    pointer->drag({{380, 300}, {390, 310}, {400, 320}});
    pointer->move({410, 330});
    pointer->move({700, 500});
    QTest::mouseClick(board->findChild<QPushButton *>(u"ModoLapiz"_s), Qt::LeftButton);
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);
    pointer->move({720, 520});
    QCOMPARE(viewport->cursor().shape(), Qt::CrossCursor);
}

QTEST_MAIN(TestArrowHeads)
#include "tst_arrowheads.moc"
