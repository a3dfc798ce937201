// Puts tool tips where they cover no other tool, and draws an edge around them.
#include "look/tooltips.h"

#include "look/programfilter.h"

#include <QApplication>
#include <QMainWindow>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr QRgb edgeColor = 0xff747474; // the sheets' own border is white, and so is the board
constexpr int gap = 6; // pixels between a panel and the tool tip beside it

/// Where a tool tip of that size stands for \a widget: beside an upright panel, below one that lies.
QPoint placeBeside(const QWidget &widget, const QSize &size)
{
    const QWidget &panel = widget.parentWidget() ? *widget.parentWidget() : widget;
    const QRect around(panel.mapToGlobal(QPoint()), panel.size());
    const QRect own(widget.mapToGlobal(QPoint()), widget.size());
    QRect place(QPoint(), size);
    if (panel.height() >= panel.width())
        place.moveTo(around.right() + gap, own.center().y() - size.height() / 2);
    else
        place.moveTo(own.left(), around.bottom() + gap);
    if (place.right() > widget.window()->geometry().right())
        place.moveRight(around.right());
    const QRect screen = widget.screen()->geometry();
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    return place.topLeft();
}

class ToolTips : public QObject
{
public:
    using QObject::QObject;

    void show(QWidget &widget, const QString &text)
    {
        owner = &widget;
        QToolTip::showText(widget.mapToGlobal(widget.rect().center()), text, &widget, {},
                           widget.toolTipDuration());
        // One that was there for another widget is only moved.
        if (auto *const tip = shownTip())
            place(*tip);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::ToolTip:
            return showOwn(qobject_cast<QWidget *>(watched));
        case QEvent::Show:
            // Before it is seen anywhere else.
            if (isTip(watched))
                place(static_cast<QWidget &>(*watched));
            return false;
        case QEvent::Hide:
            if (isTip(watched))
                owner = nullptr;
            return false;
        case QEvent::Paint:
            return isTip(watched) && paint(static_cast<QWidget &>(*watched), *event);
        default:
            return false;
        }
    }

private:
    static bool isTip(const QObject *object) { return object->inherits("QTipLabel"); }

    static QWidget *shownTip()
    {
        const auto windows = QApplication::topLevelWidgets();
        const auto tip = std::ranges::find_if(
            windows, [](const auto *window) { return isTip(window) && window->isVisible(); });
        return tip == windows.end() ? nullptr : *tip;
    }

    bool showOwn(QWidget *widget)
    {
        if (!widget || widget->toolTip().isEmpty()
            || !qobject_cast<QMainWindow *>(widget->window()))
            return false;
        show(*widget, widget->toolTip());
        return true;
    }

    void place(QWidget &tip) const
    {
        if (owner)
            tip.move(placeBeside(*owner, tip.size()));
    }

    bool paint(QWidget &tip, QEvent &event)
    {
        if (painting)
            return false;
        painting = true;
        QCoreApplication::sendEvent(&tip, &event);
        painting = false;
        QPainter painter(&tip);
        painter.setPen(QColor(edgeColor));
        // The middle of the line lies in the middle of a pixel, however fine the pixels are.
        painter.drawRect(QRectF(tip.rect()).adjusted(0.5, 0.5, -0.5, -0.5));
        return true;
    }

    QPointer<QWidget> owner; // of the tool tip that is shown, if it is one of our windows'
    bool painting = false;
};

} // namespace

void dressToolTips()
{
    programFilter<ToolTips>();
    // A style sheet reaches their colours and not their font.
    QFont font = QToolTip::font();
    font.setFamilies({QStringLiteral("Montserrat")});
    QToolTip::setFont(font);
}

void showToolTip(QWidget &widget, const QString &text)
{
    programFilter<ToolTips>().show(widget, text);
}
