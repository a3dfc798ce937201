// Waits until a person is not in the middle of something.
#pragma once

#include <QTimer>

#include <functional>

/// Waits for a moment in which another board may come: no dialog and no menu is open, no button of the
/// pointer is held, no long work is under way, and none of that has just ended. What comes up over a
/// running event loop of its own is never met in there.
class QuietMoment : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(QuietMoment)

public:
    /// Calls \a moment each time that such a moment was awaited and is there.
    explicit QuietMoment(std::function<void()> moment);
    ~QuietMoment() override = default;

    /// Waits for the next one, from now on.
    void await();

private:
    void look();

    std::function<void()> come;
    QTimer timer;
    bool quietBefore = false;
};
