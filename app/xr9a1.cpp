// Holds the shared-memory segment by which instances know of each other.
#include "app/xr9a1.h"

#include <QFileInfo>

#include <mutex>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int segmentSize = 1; // byte; its contents are never used

/// Unix keeps a segment when the process that made it is killed. The last one to detach removes
/// it, so attaching to a left-over and letting go of it, as is done at the end, clears the way; a
/// segment that a living process holds stays. Returns whether there is one of another person: on
/// Unix all persons with the same temporary folder come upon each other's segments.
bool clearStaleSegment()
{
#ifdef Q_OS_UNIX
    QSharedMemory stale(Xr9A1::key());
    const QFileInfo keyFile(stale.nativeKey());
    // Root may attach to everybody's.
    const bool foreign = keyFile.exists() && keyFile.ownerId() != ::geteuid();
    if (stale.attach())
        return foreign;
    // The toolkit says the same of a folder in which it can make no file for the key.
    return stale.error() == QSharedMemory::PermissionDenied
        && QFileInfo(keyFile.path()).isWritable();
#else
    return false;
#endif
}

} // namespace

QString Xr9A1::key()
{
    return u"Plumara"_s;
}

QString Xr9A1::turnPurpose()
{
    return u"turn"_s;
}

Xr9A1::Xr9A1(QObject *parent)
    : QObject(parent)
    , turn(turnPurpose())
    , place(u"place"_s)
    , memory(key())
{
    takePlace();
}

Xr9A1::~Xr9A1()
{
    // Until all members are gone: what the toolkit does last of all concerns others, too.
    turn.lock();
    memory.detach();
}

bool Xr9A1::isRunning()
{
    return !takePlace();
}

/// Creates the segment, and returns whether this is the one instance.
bool Xr9A1::takePlace()
{
    const std::lock_guard myTurn(turn);
    // Creating once more fails on some systems because of our own segment. Being attached means
    // that we have created it: nobody else was there.
    if (!memory.create(segmentSize, QSharedMemory::ReadWrite) && !memory.isAttached()) {
        // Only after a failed create(), which makes the key file: the system's key is the number of
        // that file. A new file can have the number of a deleted one, and a left-over segment with
        // it.
        const bool foreign = clearStaleSegment();
        // Quirk: where the temporary folder is missing or cannot be written the program does not
        // start, because a segment that cannot be created is taken for that of an instance.
        if (!memory.create(segmentSize, QSharedMemory::ReadWrite) && !foreign)
            return false;
    }
    // One that came upon another person's segment has its place without a segment.
    if (place.tryLock())
        return true;
    memory.detach();
    return false;
}
