// Asks the system, and goes through the objects of the toolkit.
#include "tests/longuse/inventory.h"

#include "tests/support/system/heapsize.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QSet>
#include <QWidget>
#include <QWindow>

#include <utility>

#ifdef Q_OS_WIN
#include <qt_windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <cstddef>
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

/// What is in use of all heaps of the process.
qint64 allocated()
{
    std::array<HANDLE, 64> heaps = {};
    const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    qint64 bytes = 0;
    for (DWORD i = 0; i < qMin<DWORD>(count, heaps.size()); ++i) {
        HeapLock(heaps.at(i));
        PROCESS_HEAP_ENTRY entry = {};
        while (HeapWalk(heaps.at(i), &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                bytes += entry.cbData;
        }
        HeapUnlock(heaps.at(i));
    }
    return bytes;
}

// Wine answers the system's questions for counts with 0; so things are counted one by one there.

qint64 openHandles()
{
    DWORD told = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &told) && told > 0)
        return told;
    constexpr quintptr step = 4; // between the values of handles
    constexpr quintptr highest = 0x8000; // far more than the program ever has
    qint64 count = 0;
    for (quintptr value = step; value < highest; value += step) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0;
    }
    return count;
}

/// A row of the table in which a process of 64 bits sees its GDI objects: the layout that debuggers
/// of Windows go by.
struct GdiTableRow
{
    void *kernelObject;
    quint32 owner;
    quint16 generation;
    quint8 type; // 0 where the row is free
    quint8 flags;
    void *userObject;
};

qint64 gdiObjects()
{
    if (const DWORD told = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); told > 0)
        return told;
    using EnvironmentBlock = const std::byte *(WINAPI *)();
    const auto block = reinterpret_cast<EnvironmentBlock>(
        QLibrary::resolve(QStringLiteral("ntdll"), "RtlGetCurrentPeb"));
    if (!block)
        return 0;
    constexpr qsizetype tableAddress = 0xf8; // in the environment block of a process
    constexpr int rows = 0x4000;
    const auto *const table = *reinterpret_cast<const GdiTableRow *const *>(block() + tableAddress);
    return table ? std::count_if(table, table + rows, [](const auto &row) { return row.type != 0; })
                 : 0;
}

/// Without wine's help only the windows among them, those that only hear messages too.
qint64 userObjects()
{
    if (const DWORD told = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS); told > 0)
        return told;
    qint64 count = 0;
    for (HWND parent : {HWND(nullptr), HWND_MESSAGE}) {
        for (HWND window = nullptr; (window = FindWindowEx(parent, window, nullptr, nullptr));) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            count += process == GetCurrentProcessId();
        }
    }
    return count;
}

void askSystem(Inventory &inventory)
{
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    inventory.heap = allocated();
    inventory.resident = static_cast<qint64>(memory.WorkingSetSize);
    inventory.handles = openHandles();
    inventory.gdiObjects = gdiObjects();
    inventory.userObjects = userObjects();
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
