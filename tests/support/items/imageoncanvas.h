// An image on a bare canvas.
#pragma once

#include "items/resizablepixmapitem.h"
#include "tests/support/items/itemcanvas.h"

#include <QPixmap>

/// A picture in which no two places look the same.
inline QPixmap motley(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y, QColor(x % 256, y % 256, (x / 256 + y / 256) % 256));
    }
    return QPixmap::fromImage(image);
}

/// An image of 200 × 200 with its top-left corner at (200, 200) of a canvas.
struct ImageOnCanvas
{
    static constexpr QPointF place{200, 200};
    static constexpr QPointF onPicture{270, 270};
    static constexpr int side = 200;

    ItemCanvas canvas;
    QPixmap source = motley(side, side);
    ResizablePixmapItem *image = canvas.add(new ResizablePixmapItem(source), place);

    /// Shows the canvas with the image selected.
    bool showSelected()
    {
        image->setSelected(true);
        return canvas.show();
    }

    /// A scene point on the picture and inside the square of handle \a number.
    QPointF onHandle(int number) const
    {
        const QRectF square =
            image->handleRect(number).intersected(QRectF(QPointF(), image->pixmap().size()));
        return image->mapToScene(square.center().toPoint());
    }
    /// Drags handle \a number of the selected image by \a step.
    void dragHandle(int number, QPointF step)
    {
        const QPointF start = onHandle(number);
        canvas.pointer.drag({start, start + step / 2, start + step});
    }
};
