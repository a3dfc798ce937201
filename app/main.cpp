#include "app/translation.h"
#include "app/xr9a1.h"
#include "home/mainwindow.h"

#include <QApplication>
#include <QSharedMemory>
#include <QStyleFactory>
#include <QTranslator>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Asks the windows of the program to come to the front and to draw attention. A second instance
/// has no window of its own, and none of another process can be reached, so nothing happens today;
/// the call stands for the day when there is a way over.
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

} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    // Null where the platform has no such style; the toolkit's default stays then.
    QApplication::setStyle(QStyleFactory::create(u"WindowsVista"_s));

    Xr9A1 guard;
    if (guard.isRunning()) {
        notifyRunningInstance();
        return 0;
    }

    QTranslator translator;
    installTranslation(translator, systemLanguages());

    MainWindow window(nullptr);
    window.setFocusPolicy(Qt::NoFocus);
    window.show();
    return QApplication::exec();
}
