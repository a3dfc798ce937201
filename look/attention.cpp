// Brings a window to the front and flashes it.
#include "look/attention.h"

#include <QApplication>
#include <QWidget>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

void bringToFront(QWidget &window)
{
    if (window.isMinimized())
        window.setWindowState(window.windowState() & Qt::WindowFullScreen);
    window.raise();
    window.activateWindow();
}

bool flash(QWidget &window)
{
#ifdef Q_OS_WIN
    FLASHWINFO info{};
    info.cbSize = sizeof(info);
    info.hwnd = reinterpret_cast<HWND>(window.winId());
    info.dwFlags = FLASHW_ALL;
    info.uCount = 3;
    info.dwTimeout = 0; // the system's own blink rate
    return FlashWindowEx(&info) != FALSE;
#else
    QApplication::alert(&window);
    return false;
#endif
}
