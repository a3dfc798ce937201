// Tells when the pointer is taken from a window in the middle of what it does there.
#pragma once

#include <QObject>

#include <functional>

class QWidget;

/// Watches a window, for as long as the object lives, for what takes the pointer from it: a dialog
/// or a menu opens, or the window hides. A button that is held is then let go elsewhere, and the
/// window never hears of it.
class PointerWatch : public QObject
{
    Q_DISABLE_COPY_MOVE(PointerWatch)

public:
    /// Calls \a pointerTaken whenever that happens to \a window, which has to outlive the watch.
    PointerWatch(const QWidget &window, std::function<void()> pointerTaken);
    ~PointerWatch() override = default;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const QWidget &board;
    std::function<void()> taken;
};
