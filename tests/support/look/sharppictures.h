// Whether the labels of a window show their pictures as fine as the screen of this process is.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPainter>
#include <QTest>

#include <algorithm>
#include <cstdlib>

namespace SharpPictures {

/// \a image, pixel by pixel of the screen, on \a ground.
inline QImage laidOn(const QColor &ground, QImage image)
{
    image.setDevicePixelRatio(1.0);
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(ground);
    QPainter(&flat).drawImage(0, 0, image);
    return flat;
}

/// Whether \a label is there to show a picture, decoded yet or not.
inline bool isPicture(const QLabel &label)
{
    return !label.property("picture").toString().isEmpty();
}

/// The picture of \a label in the best drawing that there is, scaled once to the screen's pixels.
inline QImage expected(const QLabel &label)
{
    QString path = label.property("picture").toString();
    if (label.devicePixelRatioF() > 1.0)
        path.insert(path.lastIndexOf(u'.'), QStringLiteral("@2x"));
    return QPixmap(path).toImage().scaled(label.size() * label.devicePixelRatioF(),
                                          Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// The largest difference of any channel of any pixel; 256 for images of different sizes.
inline int difference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size())
        return 256;
    int most = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            most = std::max({most, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return most;
}

/// The names of the labels of \a window that show their picture blurred or coarse, with by how much.
inline QStringList blurred(const QWidget &window)
{
    constexpr int rounding = 2;
    QStringList names;
    const auto labels = window.findChildren<QLabel *>();
    for (auto *label : labels) {
        if (!isPicture(*label))
            continue;
        const QImage seen = label->grab().toImage();
        const QColor corner = seen.pixelColor(0, 0);
        const QColor ground = corner.alpha() == 255 ? corner : QColor(Qt::white);
        const int off = difference(laidOn(ground, seen), laidOn(ground, expected(*label)));
        if (off > rounding)
            names << QStringLiteral("%1 by %2").arg(label->objectName()).arg(off);
    }
    return names;
}

/// The names of the buttons of \a window whose icon has fewer pixels than the screen shows of it.
inline QStringList coarseIcons(const QWidget &window)
{
    QStringList names;
    const auto buttons = window.findChildren<QAbstractButton *>();
    for (const auto *button : buttons) {
        if (button->icon().isNull())
            continue;
        const qreal ratio = button->devicePixelRatioF();
        const QSize pixels = button->icon().pixmap(button->iconSize(), ratio).size();
        const QSize wanted = button->iconSize() * ratio;
        // A picture that is not square fills its place in one direction only.
        if (pixels.width() < wanted.width() - 1 && pixels.height() < wanted.height() - 1)
            names << button->objectName();
    }
    return names;
}

} // namespace SharpPictures
