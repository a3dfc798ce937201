// Lets a test act while the code under test sits in an event loop of its own, as exec() does.
#pragma once

#include <QTimer>

#include <functional>
#include <utility>

/// Runs a step again and again from whatever event loop is running, until the step or the end of the
/// object stops it.
class Poll
{
public:
    explicit Poll(std::function<void(Poll &)> step)
        : action(std::move(step))
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { action(*this); });
        timer.start(interval);
    }
    Q_DISABLE_COPY_MOVE(Poll)

    void stop() { timer.stop(); }

private:
    static constexpr int interval = 2; // ms

    std::function<void(Poll &)> action;
    QTimer timer;
};
