// Shows that the program is busy, and drops the input that comes in meanwhile.
#include "board/longwork.h"

#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace {

// About as much as is read and painted in a tenth of a second; and on a machine a few times slower,
// before anybody wonders.
constexpr qint64 much = 512 * 1024; // bytes

constexpr int longestWait = 1000; // ms

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

/// The sign for waiting and the end of all input, from its construction to end().
class Waiting : public QObject
{
public:
    Waiting()
        : QObject(QCoreApplication::instance())
    {
        // Not the sign for being busy, with which a person may go on working.
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        QCoreApplication::instance()->installEventFilter(this);
        // Has the sign shown, and painted what a closed dialog has uncovered: no event is looked at
        // until the work is done.
        QGuiApplication::sync();
    }

    void waitUntilPainted(const QWidget &window)
    {
        QEventLoop loop;
        QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
        awaited = &window;
        painted = &loop;
        loop.exec();
    }

    /// Deletes the object, now or when the last button is released.
    void end()
    {
        QGuiApplication::sync();
        QGuiApplication::restoreOverrideCursor();
        if (QGuiApplication::mouseButtons() == Qt::NoButton)
            delete this;
        else
            ended = true;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (ended)
            return isRestOfPress(*event);
        if (event->type() == QEvent::Paint)
            notePaint(watched);
        if (!isInput(event->type()))
            return false;
        // Nobody has taken it; to the system, a closing that was taken is the end of the window.
        event->ignore();
        return true;
    }

private:
    void notePaint(const QObject *watched)
    {
        const auto *const widget = qobject_cast<const QWidget *>(watched);
        if (!painted || !widget || widget->window() != awaited)
            return;
        // All of the window is painted in one go; the loop ends after that.
        QMetaObject::invokeMethod(painted, &QEventLoop::quit, Qt::QueuedConnection);
        painted = nullptr;
    }

    /// Whether \a event belongs to a press that was dropped. The next press is not.
    bool isRestOfPress(const QEvent &event)
    {
        const bool rest =
            event.type() == QEvent::MouseMove || event.type() == QEvent::MouseButtonRelease;
        if (!rest && event.type() != QEvent::MouseButtonPress)
            return false;
        if (!rest || QGuiApplication::mouseButtons() == Qt::NoButton) {
            QCoreApplication::instance()->removeEventFilter(this);
            deleteLater();
        }
        return rest;
    }

    bool ended = false;
    const QWidget *awaited = nullptr;
    QPointer<QEventLoop> painted; // ends when the awaited window has been painted
};

// The present work, of which there is one at a time: all that waits waits in the GUI thread.
Waiting *waiting = nullptr;

} // namespace

LongWork::LongWork(qint64 bytes)
{
    if (waiting || bytes < much)
        return;
    outermost = true;
    waiting = new Waiting;
}

LongWork::~LongWork()
{
    if (outermost)
        interrupt();
}

void LongWork::interrupt()
{
    if (waiting)
        std::exchange(waiting, nullptr)->end();
}

void LongWork::waitUntilPainted(const QWidget &window)
{
    if (waiting && window.isVisible())
        waiting->waitUntilPainted(window);
}
