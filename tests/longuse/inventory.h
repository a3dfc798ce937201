// What the program has of the system's and of its own at a moment.
#pragma once

#include <QByteArray>
#include <QList>
#include <QtGlobal>

/// How much there is of each thing that a program can forget to give back.
struct Inventory
{
    /// What there is now. To be called where no work is under way.
    static Inventory take();

    qint64 heap = 0; // bytes asked for and not given back; 0 where nobody counts them
    qint64 resident = 0; // bytes of memory that the system has given to the process
    qint64 handles = 0; // open files, or handles of Windows
    qint64 gdiObjects = 0; // of Windows, which has ten thousand for a process
    qint64 userObjects = 0; // the same
    qint64 objects = 0; // QObjects that can be reached from the application and its windows
    qint64 timers = 0; // that run for those objects
    qint64 widgets = 0;
    qint64 windows = 0;

    /// The names of the columns of toRow().
    static QByteArray columns();
    QByteArray toRow() const;

    /// The counts that are to return to what they were, by name.
    QList<std::pair<const char *, qint64>> counts() const;
};
