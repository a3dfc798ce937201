// Holds the shared-memory segment by which instances know of each other.
#include "app/xr9a1.h"

namespace {

constexpr int segmentSize = 1; // byte; its contents are never used

/// Unix keeps a segment when the process that made it is killed. The last one to detach removes
/// it, so attaching to a left-over and letting go of it clears the way; a segment that a living
/// process holds stays.
void clearStaleSegment()
{
#ifdef Q_OS_UNIX
    QSharedMemory stale(Xr9A1::key());
    if (stale.attach())
        stale.detach();
#endif
}

} // namespace

QString Xr9A1::key()
{
    return QStringLiteral("Plumara");
}

Xr9A1::Xr9A1(QObject *parent)
    : QObject(parent)
    , memory(key())
{
    if (memory.create(segmentSize, QSharedMemory::ReadWrite))
        return;
    // Only after a failed create(), which makes the key file: the system's key is the number of
    // that file. A new file can have the number of a deleted one, and a left-over segment with it.
    clearStaleSegment();
    memory.create(segmentSize, QSharedMemory::ReadWrite);
}

Xr9A1::~Xr9A1()
{
    memory.detach();
}

bool Xr9A1::isRunning()
{
    // Creating once more fails on some systems because of our own segment. Being attached means
    // that the constructor has created it: nobody else was there.
    const bool created = memory.create(segmentSize, QSharedMemory::ReadWrite);
    return !created && !memory.isAttached();
}
