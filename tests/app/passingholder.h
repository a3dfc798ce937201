// Somebody else who has a lock for a moment.
#pragma once

#include "app/processlock.h"

#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

/// Another holder of the lock of a purpose, who lets go of it after a moment. That it is in the
/// same process makes no difference: a lock belongs to the file that was opened.
class PassingHolder
{
public:
    /// \a meanwhile is done by a thread of its own, and has the lock let go of with its end.
    explicit PassingHolder(
        const QString &purpose, std::function<void()> meanwhile = [] { QThread::msleep(50); })
        : lock(purpose)
    {
        if (!lock.tryLock())
            qFatal("Somebody has the lock already.");
        thread.reset(QThread::create([this, meanwhile = std::move(meanwhile)] {
            meanwhile();
            passed = true;
            lock.unlock();
        }));
        thread->start();
    }
    ~PassingHolder() { thread->wait(); }
    Q_DISABLE_COPY_MOVE(PassingHolder)

    /// Whether the lock is free again, or just about to be.
    bool hasPassed() const { return passed; }

private:
    ProcessLock lock;
    std::atomic<bool> passed = false;
    std::unique_ptr<QThread> thread;
};
