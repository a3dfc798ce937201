// What a second instance does first of all: it asks its own active window, and it has none.
#include "app/runninginstance.h"

#include "app/processlock.h"
#include "app/xr9a1.h"

#include <QApplication>
#include <QSharedMemory>
#include <QWidget>

#include <mutex>

void notifyRunningInstance()
{
    // For as long as there is a segment of ours: an instance that ends meanwhile would leave it to us.
    ProcessLock turn(Xr9A1::turnPurpose());
    const std::lock_guard myTurn(turn);
    QSharedMemory segment(Xr9A1::key());
    if (!segment.attach(QSharedMemory::ReadWrite))
        return;
    if (auto *const window = QApplication::activeWindow()) {
        QMetaObject::invokeMethod(window, "restoreWindow", Qt::QueuedConnection);
        // Quirk: the home window cannot be asked by name to flash, because flashTaskbarIcon() is no
        // slot of it; the call stands for windows that have one.
        QMetaObject::invokeMethod(window, "flashTaskbarIcon", Qt::QueuedConnection);
    }
    segment.detach();
}
