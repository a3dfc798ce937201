// Asks for the attention of the person in the place of a second instance.
#include "app/runninginstance.h"

#include "app/xr9a1.h"

#include <QApplication>
#include <QSharedMemory>
#include <QWidget>

void notifyRunningInstance()
{
    QSharedMemory segment(Xr9A1::key());
    if (!segment.attach(QSharedMemory::ReadWrite))
        return;
    if (auto *const window = QApplication::activeWindow()) {
        QMetaObject::invokeMethod(window, "restoreWindow", Qt::QueuedConnection);
        QMetaObject::invokeMethod(window, "flashTaskbarIcon", Qt::QueuedConnection);
    }
    segment.detach();
}
