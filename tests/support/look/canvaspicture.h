// Compares what the canvas shows with what painting everything anew would show.
#pragma once

#include "look/focusring.h"
#include "painting/canvasview.h"
#include "painting/selectedpapers.h"
#include "tests/support/look/imagedifferences.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QWindow>

/// Whether the screen can be read where the canvas \a view is. On Windows another window may lie before
/// it, and a screen of finer pixels cannot be read offscreen.
inline bool isOnReadableScreen([[maybe_unused]] const CanvasView &view)
{
#ifdef Q_OS_WIN
    return false;
#else
    return view.devicePixelRatioF() == 1;
#endif
}

/// What the screen shows where the canvas \a view is, or, where it cannot be read, the picture that the
/// view keeps.
inline QImage shownPicture(const CanvasView &view)
{
    if (!isOnReadableScreen(view))
        return view.frame().picture();
    const auto &window = *view.window();
    const QPoint corner = view.viewport()->mapTo(&window, QPoint());
    const QSize size = view.viewport()->size();
    return window.screen()
        ->grabWindow(window.winId(), corner.x(), corner.y(), size.width(), size.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/// What a view of the toolkit shows in the place of \a view that paints everything anew, with the frames
/// that our own draws over it.
inline QImage paintedAnew(const CanvasView &view)
{
    QGraphicsView fresh(view.scene());
    fresh.setFrameShape(QFrame::NoFrame);
    fresh.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fresh.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fresh.setRenderHints(view.renderHints());
    fresh.setStyleSheet(QStringLiteral("background: white"));
    fresh.setSceneRect(view.sceneRect());
    fresh.setTransform(view.transform());
    fresh.resize(view.viewport()->size());
    fresh.setAttribute(Qt::WA_DontShowOnScreen);
    fresh.show();
    const auto scrollLike = [](QScrollBar &bar, const QScrollBar &other) {
        bar.setRange(other.minimum(), other.maximum());
        bar.setValue(other.value());
    };
    scrollLike(*fresh.horizontalScrollBar(), *view.horizontalScrollBar());
    scrollLike(*fresh.verticalScrollBar(), *view.verticalScrollBar());
    QImage image = fresh.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    if (isOnReadableScreen(view)) {
        QPainter painter(&image);
        drawSelectedPapers(painter, fresh);
    }
    return image;
}

/// The pixels of \a view that none of the panels over it covers, and no ring around what has the
/// keyboard.
inline QRegion uncoveredPixels(const CanvasView &view)
{
    const qreal ratio = view.devicePixelRatioF();
    QRegion canvas(QRect(QPoint(), view.viewport()->size() * ratio));
    const auto siblings = view.parentWidget()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (const auto *panel : siblings) {
        if (panel != &view && panel->isVisible()) {
            const QRect place = panel->geometry();
            canvas -= QRect(place.topLeft() * ratio, place.size() * ratio).adjusted(-2, -2, 2, 2);
        }
    }
    if (!isOnReadableScreen(view))
        return canvas; // the picture that the view keeps has no rings
    const auto rings = view.window()->findChildren<FocusRing *>();
    for (const auto *ring : rings)
        canvas -= ring->mask().translated(ring->mapTo(view.window(), QPoint()));
    return canvas;
}

/// The same between what \a view shows and what painting everything anew would show.
inline QString differences(const CanvasView &view, int rounding = usualRounding)
{
    // The scene tells its changes first, the view paints them after that.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return differences(shownPicture(view), paintedAnew(view), uncoveredPixels(view), rounding);
}
