// Looks for dialogs, menus and the hiding of a window among all events of the program.
#include "board/pointerwatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace {

/// What opens over the other windows and hears the pointer alone until it closes.
bool isPopup(const QObject *object)
{
    const auto *const widget = qobject_cast<const QWidget *>(object);
    return widget && widget->windowType() == Qt::Popup;
}

} // namespace

PointerWatch::PointerWatch(const QWidget &window, std::function<void()> pointerTaken)
    : board(window)
    , taken(std::move(pointerTaken))
{
    // A window is not told of the menus that open over it.
    QCoreApplication::instance()->installEventFilter(this);
}

bool PointerWatch::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if ((watched == &board && (type == QEvent::WindowBlocked || type == QEvent::Hide))
        || (type == QEvent::Show && isPopup(watched))) {
        taken();
    }
    return false;
}
