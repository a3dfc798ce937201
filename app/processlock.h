// A lock between the processes of a person that ends with its holder.
#pragma once

#include <QtGlobal>

class QString;

/// A lock between the processes of one person that have the same temporary folder. The system takes it
/// from a process that dies, however it dies, so that none is ever left behind. Where there can be no
/// lock, because the folder cannot be written, and on Windows, which needs none, everybody has it.
class ProcessLock
{
    Q_DISABLE_COPY_MOVE(ProcessLock)

public:
    /// \a purpose tells one lock from another.
    explicit ProcessLock(const QString &purpose);
    ~ProcessLock();

    /// Takes the lock and waits for it as long as another has it.
    void lock();
    /// Takes the lock unless another has it; true as well if it was taken before.
    bool tryLock();
    void unlock();

private:
    const int file; // -1 where there is no lock
};
