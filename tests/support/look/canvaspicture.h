// Compares what the canvas shows with what painting everything anew would show.
#pragma once

#include "look/focusring.h"
#include "painting/canvasview.h"
#include "painting/selectedpapers.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <cstring>

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

constexpr int usualRounding = 6; // of some strokes that cross

/// How many of the \a pixels differ by more than \a rounding between the two pictures, by how much and
/// where; empty when none does.
inline QString differences(const QImage &one, const QImage &other, const QRegion &pixels,
                           int rounding = usualRounding)
{
    if (one.size() != other.size()) {
        return QStringLiteral("%1x%2 and not %3x%4")
            .arg(one.width())
            .arg(one.height())
            .arg(other.width())
            .arg(other.height());
    }
    int most = 0;
    int count = 0;
    QRect where;
    for (const QRect &part : pixels &one.rect()) {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            const auto *const a = reinterpret_cast<const QRgb *>(one.constScanLine(y));
            const auto *const b = reinterpret_cast<const QRgb *>(other.constScanLine(y));
            if (std::memcmp(a + part.left(), b + part.left(),
                            static_cast<size_t>(part.width()) * sizeof(QRgb))
                == 0)
                continue;
            for (int x = part.left(); x <= part.right(); ++x) {
                const int off = std::max({std::abs(qRed(a[x]) - qRed(b[x])),
                                          std::abs(qGreen(a[x]) - qGreen(b[x])),
                                          std::abs(qBlue(a[x]) - qBlue(b[x]))});
                most = std::max(most, off);
                if (off > rounding) {
                    ++count;
                    where |= QRect(x, y, 1, 1);
                }
            }
        }
    }
    if (count == 0)
        return {};
    return QStringLiteral("%1 pixels by up to %2 in %3,%4 %5x%6")
        .arg(count)
        .arg(most)
        .arg(where.x())
        .arg(where.y())
        .arg(where.width())
        .arg(where.height());
}

/// The same between what \a view shows and what painting everything anew would show.
inline QString differences(const CanvasView &view, int rounding = usualRounding)
{
    // The scene tells its changes first, the view paints them after that.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    return differences(shownPicture(view), paintedAnew(view), uncoveredPixels(view), rounding);
}
