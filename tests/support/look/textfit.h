// Whether what the widgets of a window read fits into them, in the fonts and at the scale of this
// process.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionTab>
#include <QTabBar>
#include <QTest>

#include <algorithm>

namespace TextFit {

/// Half of the smallest step of the screen is not seen.
constexpr qreal tolerance = 0.25;

/// By how much a label grows to show what it would cut, in pixels of the program: as many as are
/// whole pixels of the screen at every scale that is tested, also when halved.
constexpr int slack = 80;

/// The room that \a label gets to show what it would cut: away from where its text is held.
inline QMargins growth(const QLabel &label)
{
    const auto alignment = label.alignment();
    const int left = alignment.testFlag(Qt::AlignHCenter) ? slack / 2 : 0;
    const int top = alignment.testFlag(Qt::AlignVCenter) ? slack / 2 : 0;
    // A rule is as wide as its label, and wrapped lines change with the width.
    const bool ownWidth = label.wordWrap() || label.text() == QStringLiteral("<hr>");
    return ownWidth ? QMargins(0, top, 0, slack - top)
                    : QMargins(left, top, slack - left, slack - top);
}

/// What \a label would show in that size.
inline QImage drawn(const QLabel &label, const QSize &size)
{
    QLabel twin(label.parentWidget());
    twin.setFont(label.font());
    twin.setStyleSheet(label.styleSheet());
    twin.setTextFormat(label.textFormat());
    twin.setAlignment(label.alignment());
    twin.setWordWrap(label.wordWrap());
    twin.setText(label.text());
    twin.resize(size);
    return twin.grab().toImage();
}

/// Whether a larger label of the same text shows no ink beyond the present one's edges.
inline bool fits(const QLabel &label)
{
    const QMargins grown = growth(label);
    const QImage large = drawn(label, label.size().grownBy(grown));
    const qreal ratio = large.devicePixelRatio();
    const QRect present(QPoint(qRound(grown.left() * ratio), qRound(grown.top() * ratio)),
                        label.size() * ratio);
    const QRgb ground = large.pixel(large.width() - 1, large.height() - 1);
    for (int y = 0; y < large.height(); ++y) {
        for (int x = 0; x < large.width(); ++x) {
            if (large.pixel(x, y) != ground && !present.contains(x, y))
                return false;
        }
    }
    return true;
}

/// A widget with a frame of its own knows what it needs for text, icon and padding.
inline bool fits(const QWidget &widget)
{
    const QSize needed = widget.sizeHint();
    return needed.width() <= widget.width() && needed.height() <= widget.height();
}

/// Whether the text of the tab \a index, when that tab is the selected one, fits.
inline bool fits(const QTabBar &bar, int index)
{
    QStyleOptionTab tab;
    tab.initFrom(&bar);
    tab.rect = bar.tabRect(index);
    tab.text = bar.tabText(index);
    tab.icon = bar.tabIcon(index);
    tab.iconSize = bar.iconSize();
    tab.shape = bar.shape();
    tab.state |= QStyle::State_Selected;
    const QRectF room = bar.style()->subElementRect(QStyle::SE_TabBarTabText, &tab, &bar);
    const QFontMetricsF metrics(bar.font(), &bar);
    return metrics.horizontalAdvance(tab.text) <= room.width() + tolerance
        && metrics.height() <= room.height() + tolerance;
}

/// The names of the widgets of \a window whose text is cut, and of the tabs the texts, sorted.
inline QStringList cutTexts(const QWidget &window)
{
    QStringList cut;
    const auto note = [&cut](const QString &name, bool fitting) {
        if (!fitting)
            cut << name;
    };
    const auto labels = window.findChildren<QLabel *>();
    for (auto *label : labels) {
        label->ensurePolished();
        if (!label->text().isEmpty())
            note(label->objectName(), fits(*label));
    }
    const auto buttons = window.findChildren<QAbstractButton *>();
    for (auto *button : buttons) {
        button->ensurePolished();
        // A cover of another button opens to that one's size.
        if (!button->text().isEmpty() && button->width() > 0)
            note(button->objectName(), fits(*button));
    }
    const auto combos = window.findChildren<QComboBox *>();
    for (const auto *combo : combos)
        note(combo->objectName(), fits(*combo));
    const auto bars = window.findChildren<QTabBar *>();
    for (auto *bar : bars) {
        const int present = bar->currentIndex();
        for (int i = 0; i < bar->count(); ++i) {
            bar->setCurrentIndex(i);
            note(bar->tabText(i), fits(*bar, i));
        }
        bar->setCurrentIndex(present);
    }
    cut.sort();
    return cut;
}

/// The same text with every digit the widest one of \a font.
inline QString widest(QString text, const QFont &font)
{
    const QFontMetricsF metrics(font);
    const QString digits = QStringLiteral("0123456789");
    const QChar wide = *std::ranges::max_element(
        digits, {}, [&metrics](QChar digit) { return metrics.horizontalAdvance(digit); });
    for (QChar &character : text) {
        if (character.isDigit())
            character = wide;
    }
    return text;
}

} // namespace TextFit
