// How well what a window reads stands out from its ground.
#pragma once

#include <QCheckBox>
#include <QColor>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QStyleOptionButton>

#include <algorithm>
#include <cmath>

namespace Contrast {

/// What a person with weak eyes needs for text of ordinary size.
constexpr double enough = 4.5;
/// The same for what cannot be used at present, and looks so.
constexpr double enoughWhileDisabled = 3;

inline double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

/// Between 1 (the same) and 21 (black on white).
inline double ratio(const QColor &one, const QColor &other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

/// The contrast of the strongest color in \a place of \a window to the most frequent one there. The
/// window is drawn large, so that the strokes of a letter are more than their blurred edges.
inline double in(QWidget &window, const QRect &place)
{
    constexpr qreal scale = 4.0;
    QImage image((place.size().toSizeF() * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    window.render(&image, {}, place);

    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    QRgb ground = 0;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
        if (count.value() > counts.value(ground))
            ground = count.key();
    }
    double strongest = 1.0;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        strongest = std::max(strongest, ratio(QColor(count.key()), QColor(ground)));
    return strongest;
}

/// Where \a widget reads its text, in its own pixels: not its frame, nor what can be ticked.
inline QRect textPlace(const QWidget &widget)
{
    constexpr int roundEnd = 16;
    constexpr int frame = 4;
    if (const auto *const box = qobject_cast<const QCheckBox *>(&widget)) {
        QStyleOptionButton option;
        option.initFrom(box);
        return box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box);
    }
    if (qobject_cast<const QLabel *>(&widget))
        return widget.rect();
    return widget.rect().adjusted(roundEnd, frame, -roundEnd, -frame);
}

/// The names of the labels and buttons that are to be seen of \a window and do not stand out, with
/// their contrast. Takes the pictures away, which would be seen instead of the text.
inline QStringList faint(QWidget &window)
{
    QStringList names;
    const auto check = [&](QWidget &widget, const QString &text) {
        if (text.isEmpty() || text == QStringLiteral("<hr>") || !widget.isVisible())
            return;
        const double contrast =
            in(window, textPlace(widget).translated(widget.mapTo(&window, QPoint())));
        if (contrast < (widget.isEnabled() ? enough : enoughWhileDisabled))
            names << QStringLiteral("%1: %2").arg(widget.objectName()).arg(contrast, 0, 'f', 1);
    };
    const auto labels = window.findChildren<QLabel *>();
    for (auto *label : labels) {
        if (!label->pixmap().isNull())
            label->setPixmap({});
    }
    for (auto *label : labels)
        check(*label, label->text());
    const auto buttons = window.findChildren<QAbstractButton *>();
    for (auto *button : buttons) {
        button->setIcon({});
        check(*button, button->text());
    }
    return names;
}

} // namespace Contrast
