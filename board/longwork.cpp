// Shows that the program is busy, and drops the input that comes in meanwhile.
#include "board/longwork.h"

#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <memory>
#include <utility>

namespace {

// About as much as is read and painted in a tenth of a second; and on a machine a few times slower,
// before anybody wonders.
constexpr qint64 much = 500'000; // bytes

constexpr int longestWait = 1000; // ms, for what a busy window manager does late

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

/// The sign for waiting and the end of all input, for as long as the object lives.
class Waiting : public QObject
{
public:
    Waiting()
    {
        // Not the sign for being busy, with which a person may go on working.
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        QCoreApplication::instance()->installEventFilter(this);
        // Has the sign shown, and painted what a closed dialog has uncovered: no event is looked at
        // until the work is done.
        QGuiApplication::sync();
        waitForFocus();
    }

    ~Waiting() override
    {
        // What has come in until now is dropped. The toolkit drops by itself what is left of a press
        // that nobody got.
        QGuiApplication::sync();
        QGuiApplication::restoreOverrideCursor();
    }
    Q_DISABLE_COPY_MOVE(Waiting)

    void waitUntilPainted(const QWidget &window)
    {
        QEventLoop loop;
        QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
        awaited = &window;
        painted = &loop;
        loop.exec();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            notePaint(watched);
        if (!isInput(event->type()) || endsWhatBegan(*event))
            return false;
        // Nobody has taken it; to the system, a closing that was taken is the end of the window.
        event->ignore();
        return true;
    }

private:
    /// A window manager takes its frame off a closed dialog a little later than the toolkit takes
    /// the dialog, and then gives the focus to a window that stays.
    static void waitForFocus()
    {
        if (hasFocus())
            return;
        QEventLoop loop;
        QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
        connect(qGuiApp, &QGuiApplication::focusWindowChanged, &loop, [&loop] {
            if (hasFocus())
                loop.quit();
        });
        loop.exec();
        QGuiApplication::sync();
    }

    static bool hasFocus()
    {
        const auto *const window = QGuiApplication::focusWindow();
        return window && window->isVisible();
    }

    /// Whether \a event lets go of a button that was held when the work began: whoever got the press has
    /// to hear of it.
    bool endsWhatBegan(const QEvent &event) const
    {
        return event.type() == QEvent::MouseButtonRelease
            && heldBefore.testFlag(static_cast<const QMouseEvent &>(event).button());
    }

    void notePaint(const QObject *watched)
    {
        const auto *const widget = qobject_cast<const QWidget *>(watched);
        if (!painted || !widget || widget->window() != awaited)
            return;
        // All of the window is painted in one go; the loop ends after that.
        QMetaObject::invokeMethod(painted, &QEventLoop::quit, Qt::QueuedConnection);
        painted = nullptr;
    }

    const Qt::MouseButtons heldBefore = QGuiApplication::mouseButtons();
    const QWidget *awaited = nullptr;
    QPointer<QEventLoop> painted; // ends when the awaited window has been painted
};

// The present work, of which there is one at a time: all that waits waits in the GUI thread.
std::unique_ptr<Waiting> waiting;

// From before the present work delivers events for the first time until it has delivered the last.
bool underWay = false;

} // namespace

LongWork::LongWork(qint64 bytes)
{
    if (underWay || bytes < much)
        return;
    outermost = true;
    underWay = true;
    waiting = std::make_unique<Waiting>();
}

LongWork::~LongWork()
{
    if (outermost)
        interrupt();
}

void LongWork::interrupt()
{
    // Events that are delivered at the end find no sign for waiting to wait with any more.
    std::exchange(waiting, nullptr).reset();
    underWay = false;
}

bool LongWork::isUnderWay()
{
    return underWay;
}

void LongWork::waitUntilPainted(const QWidget &window)
{
    if (waiting)
        waiting->waitUntilPainted(window);
}
