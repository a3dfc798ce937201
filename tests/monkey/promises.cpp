// Looks at the windows and the board for what must never be.
#include "tests/monkey/promises.h"

#include "board/boardgeometry.h"
#include "board/boardwindow.h"
#include "items/boarditems.h"
#include "painting/canvasview.h"
#include "tests/monkey/hand.h"
#include "tests/monkey/savedboard.h"
#include "tests/support/board/toolmodes.h"
#include "tests/support/look/canvaspicture.h"

#include <QApplication>
#include <QDialog>
#include <QGraphicsTextItem>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where the toolkit can tell what lies there; it loses what is far away.
constexpr QRectF nearby = BoardGeometry::board.adjusted(-4000, -4000, 4000, 4000);

QString toolPromise(const BoardWindow &board)
{
    const auto checked = checkedButtons(board);
    if (checked.size() != 1)
        return u"one tool button is checked, not %1"_s.arg(checked.size());
    const Mode &mode = modeOf(checked.constFirst());
    if (board.windowTitle() != QString::fromUtf16(mode.title))
        return u"the title tells the tool"_s;
    const auto cursor = canvasOf(board).cursor().shape();
    if (cursor != mode.cursor)
        return u"the cursor tells the tool, not %1"_s.arg(cursor);
    return {};
}

QString itemPromise(const QGraphicsScene &scene)
{
    const auto items = scene.items();
    for (auto *const item : items) {
        const bool isBoardItem = visitBoardItem(item, [](const auto &) { });
        const bool isNoteText = dynamic_cast<QGraphicsTextItem *>(item)
            && dynamic_cast<StickyNoteItem *>(item->parentItem());
        if (!isBoardItem && !isNoteText)
            return u"only known kinds of items lie on the board"_s;
    }
    return {};
}

QString grabPromise()
{
    if (QWidget::mouseGrabber())
        return u"nobody holds the mouse without a button"_s;
    if (QWidget::keyboardGrabber())
        return u"nobody holds the keyboard"_s;
    return {};
}

QString dialogPromise()
{
    const auto *const popup = QApplication::activePopupWidget();
    const auto *const window = popup ? popup : QApplication::activeModalWidget();
    const auto *const grabber = QWidget::mouseGrabber();
    if (window && grabber && grabber->window() != window)
        return u"a dialog and a menu hear the mouse"_s;
    return {};
}

QString windowPromise()
{
    const auto windows = QApplication::topLevelWidgets();
    for (const auto *const window : windows) {
        if (window->isVisible() && qobject_cast<const QDialog *>(window))
            return u"no dialog is left over"_s;
    }
    if (QGuiApplication::overrideCursor())
        return u"the sign for waiting goes with the work"_s;
    return {};
}

bool isEverythingNear(const QGraphicsScene &scene)
{
    const auto items = scene.items();
    return std::ranges::all_of(items, [](const auto *item) {
        bool isNear = nearby.contains(item->sceneBoundingRect());
        if (const auto *const stroke = dynamic_cast<const FreeDrawItem *>(item))
            isNear = isNear && nearby.contains(stroke->path().controlPointRect());
        if (const auto *const arrow = dynamic_cast<const ArrowLineItem *>(item))
            isNear = isNear && nearby.contains(arrow->line().p1())
                && nearby.contains(arrow->line().p2());
        return isNear;
    });
}

/// Whether a line is no thicker than a pixel: the toolkit paints a piece of such a line here and there a pixel
/// beside the place that it has in the whole, on any view.
bool hasHairline(const QGraphicsScene &scene)
{
    const auto isHairline = [](const auto *item) { return item && item->pen().widthF() <= 1; };
    const auto items = scene.items();
    return std::ranges::any_of(items, [&](const auto *item) {
        return isHairline(dynamic_cast<const QGraphicsLineItem *>(item))
            || isHairline(dynamic_cast<const QGraphicsPathItem *>(item));
    });
}

QString boardPromise(const BoardWindow &board, bool isRealTime)
{
    auto &canvas = canvasOf(board);
    const QString loss = lossOf(*canvas.scene());
    if (!loss.isEmpty())
        return u"a saved board comes back: "_s + loss;
    const bool isComparable = isEverythingNear(*canvas.scene()) && !hasHairline(*canvas.scene());
    if (!board.isVisible() || board.isMinimized() || !isComparable)
        return {};
    // The offscreen platform has no window painted that was minimised and comes back.
    if (QGuiApplication::platformName() == u"offscreen" && canvas.frame().picture().isNull())
        canvas.viewport()->update();
    // Many strokes cross here, on a board that is not shown in its own size.
    constexpr int rounding = 12;
    // A window manager takes its time to show a window or to fill the screen with it.
    constexpr int patience = 3000; // ms
    QString off = differences(canvas, rounding);
    const auto isShown = [&] { return (off = differences(canvas, rounding)).isEmpty(); };
    if (isRealTime && !off.isEmpty())
        (void)QTest::qWaitFor(isShown, patience);
    return off.isEmpty() ? QString() : u"the canvas shows the board: "_s + off;
}

} // namespace

CanvasView &canvasOf(const BoardWindow &board)
{
    return dynamic_cast<CanvasView &>(*board.findChild<QGraphicsView *>(u"PizarraMain"_s));
}

QString brokenPromise(const Moment &moment)
{
    QString broken;
    const auto look = [&broken](bool isDue, const auto &promise) {
        if (isDue && broken.isEmpty())
            broken = promise();
    };
    const auto *const board = moment.board;
    look(board, [&] { return toolPromise(*board); });
    look(board, [&] { return itemPromise(*canvasOf(*board).scene()); });
    look(moment.isAtRest && !moment.hand.held(), [&] { return grabPromise(); });
    look(!moment.isAtRest, [&] { return dialogPromise(); });
    look(moment.isAtRest, [&] { return windowPromise(); });
    look(board && moment.isAtRest && moment.isLookedAt,
         [&] { return boardPromise(*board, moment.isRealTime); });
    return broken;
}
