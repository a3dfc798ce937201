// Draws a ring around a widget.
#include "look/focusring.h"

#include <QCheckBox>
#include <QPainter>
#include <QTabBar>

#include <algorithm>

namespace {

// Seen on any ground, a photograph too: a dark line and a light one inside of it.
constexpr QRgb darkColor = 0xff2d2d2d;
constexpr qreal darkWidth = 2;
constexpr qreal lightWidth = 1;
constexpr int distance = 4; // pixels from the widget to the outside of the ring
constexpr int radius = 5; // pixels

/// What of \a widget is to be ringed: of a row of tabs the one that is chosen, and of a box to tick not
/// the empty space after its text.
QRect essentialPart(const QWidget &widget)
{
    if (const auto *const tabs = qobject_cast<const QTabBar *>(&widget))
        return tabs->tabRect(tabs->currentIndex());
    QRect part = widget.rect();
    if (qobject_cast<const QCheckBox *>(&widget))
        part.setWidth(std::min(part.width(), widget.sizeHint().width()));
    return part;
}

} // namespace

FocusRing::FocusRing(QWidget &widget)
    : QWidget(widget.window())
    , marked(&widget)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (auto *const tabs = qobject_cast<QTabBar *>(&widget))
        connect(tabs, &QTabBar::currentChanged, this, &FocusRing::follow);
    follow();
    show();
}

void FocusRing::follow()
{
    const QRect part = essentialPart(*marked);
    const QRect around(marked->mapTo(window(), part.topLeft()), part.size());
    setGeometry(around.adjusted(-distance, -distance, distance, distance) & window()->rect());
    // What lies inside of it is not painted with every change there.
    setMask(QRegion(rect()) - rect().adjusted(radius, radius, -radius, -radius));
    raise();
}

void FocusRing::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto drawLine = [&](const QColor &color, qreal width, qreal inside) {
        painter.setPen(QPen(color, width));
        painter.drawRoundedRect(QRectF(rect()).adjusted(inside, inside, -inside, -inside),
                                radius - inside, radius - inside);
    };
    drawLine(QColor(darkColor), darkWidth, darkWidth / 2);
    drawLine(Qt::white, lightWidth, darkWidth + lightWidth / 2);
}
