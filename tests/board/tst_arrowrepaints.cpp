// How much of the canvas is painted anew because of arrows, whose heads reach outside their
// bounding rectangles.

#include "items/arrowlineitem.h"
#include "tests/board/boardathome.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"

#include <QPaintEvent>
#include <QPen>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Collects what the canvas paints.
class PaintedCanvas : public QObject
{
public:
    explicit PaintedCanvas(QWidget &canvas) { canvas.installEventFilter(this); }

    QRegion region;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
};

/// Adds an arrow from (500, 300) to (700, 300) whose pen has that width.
QGraphicsLineItem *addArrow(ShownBoard &board, int width)
{
    auto *const arrow = new ArrowLineItem({500, 300}, {700, 300});
    arrow->setWidth(width);
    board.scene.addItem(arrow);
    return arrow;
}

/// The part of the canvas that is painted when 20 x 20 units at (1000, 600) change.
QRegion paintedForASmallChange(ShownBoard &board)
{
    const PaintedCanvas painted(*board.view.viewport());
    board.scene.update(1000, 600, 20, 20);
    [&] { QTRY_VERIFY(!painted.region.isEmpty()); }();
    return painted.region;
}

using Change = void (*)(QGraphicsLineItem *arrow);
using Removal = void (*)(BoardAtHome &at);

} // namespace

class TestArrowRepaints : public QObject
{
    Q_OBJECT

private slots:
    void aHeadThatGoesIsPaintedOver_data();
    void aHeadThatGoesIsPaintedOver();
    void aWideArrowThatIsGoneWidensNoRepaint_data();
    void aWideArrowThatIsGoneWidensNoRepaint();
    void anArrowThatGrewThinWidensNoRepaint();
};

void TestArrowRepaints::aHeadThatGoesIsPaintedOver_data()
{
    QTest::addColumn<Change>("change");
    addRow<Change>("moved", [](QGraphicsLineItem *arrow) { arrow->setY(-200); });
    addRow<Change>("grown thin",
                   [](QGraphicsLineItem *arrow) { arrow->setPen(QPen(Qt::black, 2)); });
}

void TestArrowRepaints::aHeadThatGoesIsPaintedOver()
{
    QFETCH(const Change, change);
    ShownBoard board;
    auto *const arrow = addArrow(board, 200);
    const QPoint inHead(510, 470);
    QVERIFY(!arrow->sceneBoundingRect().contains(inHead));
    // The whole canvas was painted before and is not any more.
    QTRY_VERIFY(!paintedForASmallChange(board).contains(QPoint(100, 100)));
    const PaintedCanvas painted(*board.view.viewport());

    change(arrow);

    QTRY_VERIFY(painted.region.contains(board.view.mapFromScene(inHead)));
}

void TestArrowRepaints::aWideArrowThatIsGoneWidensNoRepaint_data()
{
    QTest::addColumn<Removal>("remove");
    addRow<Removal>("deleted", [](BoardAtHome &at) { delete at.board.only<ArrowLineItem>(); });
    addRow<Removal>("another board opened", [](BoardAtHome &at) { at.openPlan(); });
    addRow<Removal>("board closed", [](BoardAtHome &at) {
        const BoxAnswer answer(u"No"_s);
        at.close();
        at.board.window.show();
    });
}

void TestArrowRepaints::aWideArrowThatIsGoneWidensNoRepaint()
{
    QFETCH(const Removal, remove);
    BoardAtHome at;
    addArrow(at.board, 32767);
    at.board.processEvents();
    QVERIFY(paintedForASmallChange(at.board).contains(QPoint(100, 100)));

    remove(at);

    // Only what the removal itself changes is painted widely still.
    QTRY_VERIFY(!paintedForASmallChange(at.board).contains(QPoint(100, 100)));
}

void TestArrowRepaints::anArrowThatGrewThinWidensNoRepaint()
{
    ShownBoard board;
    auto *const arrow = addArrow(board, 500);
    board.processEvents();
    QVERIFY(paintedForASmallChange(board).contains(QPoint(100, 100)));

    arrow->setPen(QPen(Qt::black, 2));

    QTRY_VERIFY(!paintedForASmallChange(board).contains(QPoint(100, 100)));
}

PLUMARA_TEST(TestArrowRepaints)
#include "tst_arrowrepaints.moc"
