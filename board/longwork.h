// Work that takes long: the pointer shows it, and what is pressed meanwhile reaches nobody.
#pragma once

#include <QtGlobal>

class QWidget;

/// The reading or writing of a board, for as long as the object lives.
///
/// Where there is much to do, the pointer shows the sign for waiting over all windows of the
/// program, and that before the work begins. Clicks, keys and the like that come in until the work
/// ends are dropped. They would otherwise reach whatever lies under the pointer by then. Little work
/// is left alone: nothing flickers and nothing is dropped.
///
/// Where there is much to do, events are delivered at the beginning and at the end, in the
/// constructor and the destructor. Work within other work is a part of it and ends with it.
class LongWork
{
    Q_DISABLE_COPY_MOVE(LongWork)

public:
    /// \a bytes is about how much of a board file is to be read or written.
    explicit LongWork(qint64 bytes);
    ~LongWork();

    /// Ends all work ahead of its objects, for a question or a message that a person is to answer.
    static void interrupt();

    /// Whether there is such work. Events are then delivered in the middle of something else.
    static bool isUnderWay();

    /// Has \a window, which was just shown, painted as a part of the work. Gives up after a second:
    /// the window may be out of sight. Does nothing where there is little to do.
    static void waitUntilPainted(const QWidget &window);

private:
    bool outermost = false;
};
