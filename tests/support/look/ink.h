// Where a picture shows anything but its ground.
#pragma once

#include <QImage>
#include <QRect>

/// Where in \a image anything but its ground is painted, whose colour is that of its first pixel.
inline QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0))
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}
