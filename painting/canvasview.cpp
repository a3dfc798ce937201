// Puts the kept picture of the board on the screen.
#include "painting/canvasview.h"

#include "painting/selectedpapers.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPaintEvent>

namespace {

// Nothing is prepared before the hand has rested for this long, and then in steps that leave most of
// the time to whatever comes, in ms.
constexpr int restingTime = 300;
constexpr int pauseBetweenSteps = 10;

} // namespace

CanvasView::CanvasView(QWidget *parent)
    : QGraphicsView(parent)
{
    // The toolkit would expose whole items where a few pixels differ.
    setViewportUpdateMode(QGraphicsView::NoViewportUpdate);
    connect(&preparing, &QTimer::timeout, this, &CanvasView::prepare);
}

/// The Tab key goes on to the next tool: the toolkit would have it begin to edit the last note again.
bool CanvasView::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress && !(scene() && scene()->focusItem())) {
        const auto &press = *static_cast<const QKeyEvent *>(event);
        const bool isForward = press.key() == Qt::Key_Tab;
        const bool isOther = press.modifiers().testAnyFlags(Qt::ControlModifier | Qt::AltModifier);
        if ((isForward || press.key() == Qt::Key_Backtab) && !isOther
            && focusNextPrevChild(isForward))
            return true;
    }
    return QGraphicsView::event(event);
}

void CanvasView::paintEvent(QPaintEvent *event)
{
    showPicture(event);
    QPainter painter(viewport());
    drawSelectedPapers(painter, *this);
}

void CanvasView::showPicture(QPaintEvent *event)
{
    const QRegion rest = canvas.matchView() - event->region();
    if (canvas.picture().isNull()) {
        // There is no memory for it; slowly is better than not at all.
        QGraphicsView::paintEvent(event);
        return;
    }
    if (!rest.isEmpty())
        viewport()->update(rest);
    QPainter(viewport()).drawImage(0, 0, canvas.picture());
    prepareLater();
}

void CanvasView::prepareLater()
{
    if (canvas.canPrepare())
        preparing.start(restingTime);
}

void CanvasView::prepare()
{
    canvas.prepare();
    if (canvas.canPrepare())
        preparing.start(pauseBetweenSteps);
    else
        preparing.stop();
}

void CanvasView::hideEvent(QHideEvent *event)
{
    preparing.stop();
    canvas.clear();
    QGraphicsView::hideEvent(event);
}

void CanvasView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    viewport()->update();
}

void CanvasView::showChanges(const QList<QRectF> &changed)
{
    const QRegion differing = canvas.follow(changed);
    if (canvas.picture().isNull())
        viewport()->update();
    else if (!differing.isEmpty())
        viewport()->update(differing);
}
