// Asks the system, and goes through the objects of the toolkit.
#include "tests/longuse/inventory.h"

#include "tests/support/system/heapsize.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSet>
#include <QWidget>
#include <QWindow>

#include <utility>

#ifdef Q_OS_WIN
#include <qt_windows.h>

#include <psapi.h>
#else
#include <unistd.h>
#endif

namespace {

/// Everything that belongs to the application or to a window, and what belongs to that.
QSet<const QObject *> reachableObjects()
{
    QSet<const QObject *> found;
    const auto add = [&found](const QObject *root) {
        found << root;
        const auto below = root->findChildren<const QObject *>();
        found.unite({below.cbegin(), below.cend()});
    };
    add(QCoreApplication::instance());
    const auto widgets = QApplication::allWidgets();
    for (const auto *widget : widgets)
        add(widget);
    const auto windows = QGuiApplication::allWindows();
    for (const auto *window : windows)
        add(window);
    return found;
}

qint64 timersOf(const QSet<const QObject *> &objects)
{
    const auto &dispatcher = *QAbstractEventDispatcher::instance();
    qint64 timers = 0;
    for (const auto *object : objects)
        timers += dispatcher.registeredTimers(const_cast<QObject *>(object)).size();
    return timers;
}

#ifdef Q_OS_WIN

void askSystem(Inventory &inventory)
{
    const HANDLE process = GetCurrentProcess();
    PROCESS_MEMORY_COUNTERS_EX memory = {};
    GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&memory),
                         sizeof memory);
    inventory.heap = static_cast<qint64>(memory.PrivateUsage);
    inventory.resident = static_cast<qint64>(memory.WorkingSetSize);
    DWORD handles = 0;
    GetProcessHandleCount(process, &handles);
    inventory.handles = handles;
    inventory.gdiObjects = GetGuiResources(process, GR_GDIOBJECTS);
    inventory.userObjects = GetGuiResources(process, GR_USEROBJECTS);
}

#else

void askSystem(Inventory &inventory)
{
    inventory.heap = heapSize().value_or(0);
    QFile pages(QStringLiteral("/proc/self/statm"));
    if (pages.open(QIODevice::ReadOnly))
        inventory.resident = pages.readAll().split(' ').value(1).toLongLong() * ::getpagesize();
    pages.close();
    const QDir files(QStringLiteral("/proc/self/fd"));
    inventory.handles =
        files.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

#endif

} // namespace

Inventory Inventory::take()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    Inventory now;
    const auto objects = reachableObjects();
    now.objects = objects.size();
    now.timers = timersOf(objects);
    now.widgets = QApplication::allWidgets().size();
    now.windows = QGuiApplication::allWindows().size();
    askSystem(now);
    return now;
}

QList<std::pair<const char *, qint64>> Inventory::counts() const
{
    return {{"handles", handles}, {"GDI objects", gdiObjects}, {"user objects", userObjects},
            {"objects", objects}, {"timers", timers},          {"widgets", widgets},
            {"windows", windows}};
}

QByteArray Inventory::columns()
{
    QByteArray names = "heap,resident";
    const auto all = Inventory().counts();
    for (const auto &[name, count] : all)
        names += ',' + QByteArray(name);
    return names;
}

QByteArray Inventory::toRow() const
{
    QByteArray row = QByteArray::number(heap) + ',' + QByteArray::number(resident);
    const auto all = counts();
    for (const auto &[name, count] : all)
        row += ',' + QByteArray::number(count);
    return row;
}
