// The guard that lets only one instance of the program run.
#pragma once

#include "app/processlock.h"

#include <QObject>
#include <QSharedMemory>

/// The single-instance guard: as long as it lives it holds a shared-memory segment, whose mere
/// existence tells later starts of the program that one is running.
class Xr9A1 : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Xr9A1)

public:
    /// Tries to create the segment.
    explicit Xr9A1(QObject *parent = nullptr);
    /// Lets go of the segment; the system removes it with its last holder.
    ~Xr9A1() override;

    /// Whether another instance holds the segment.
    bool isRunning();

    /// The name of the segment.
    static QString key();
    /// The purpose of the lock that whoever touches the segment has meanwhile.
    static QString turnPurpose();

private:
    bool takePlace();

    // In this order, so that the segment goes before the locks.
    ProcessLock turn;
    ProcessLock place;
    QSharedMemory memory;
};
