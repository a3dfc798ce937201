#include "app/lastwindowwatcher.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>

LastWindowWatcher::LastWindowWatcher(QObject *parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool LastWindowWatcher::eventFilter(QObject *watched, QEvent *event)
{
    // The window is still there now, and may refuse: look when the event has done its work.
    if (event->type() == QEvent::Close && watched->isWidgetType())
        QMetaObject::invokeMethod(this, &LastWindowWatcher::quitIfNoWindowIsLeft,
                                  Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void LastWindowWatcher::quitIfNoWindowIsLeft()
{
    if (!QGuiApplication::quitOnLastWindowClosed())
        return;
    const auto windows = QApplication::topLevelWidgets();
    const bool anyVisible = std::ranges::any_of(windows, &QWidget::isVisible);
    if (!anyVisible)
        QCoreApplication::quit();
}
