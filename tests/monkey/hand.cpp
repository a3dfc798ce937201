// Sends windows what the window system would send.
#include "tests/monkey/hand.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QPointingDevice>
#include <QTest>
#include <QWheelEvent>

namespace {

/// The native window, which changes with a presentation; null when there is none.
QWindow *nativeOf(const QWidget &window)
{
    return window.windowHandle();
}

/// Qt Test takes no place for the middle.
QPoint named(QPoint place)
{
    return place.isNull() ? QPoint(1, 0) : place;
}

} // namespace

void Hand::press(const QWidget &window, Qt::MouseButton button, QPoint place)
{
    if (!nativeOf(window) || buttons.testFlag(button))
        return;
    buttons.setFlag(button);
    QTest::mousePress(nativeOf(window), button, {}, named(place));
}

void Hand::release(const QWidget &window, Qt::MouseButton button, QPoint place)
{
    if (!nativeOf(window) || !buttons.testFlag(button))
        return;
    buttons.setFlag(button, false);
    QTest::mouseRelease(nativeOf(window), button, {}, named(place));
}

void Hand::releaseAll(const QWidget &window, QPoint place)
{
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        release(window, button, place);
}

void Hand::move(const QWidget &window, QPoint place)
{
    if (nativeOf(window))
        QTest::mouseMove(nativeOf(window), named(place));
}

void Hand::click(const QWidget &window, Qt::MouseButton button, QPoint place)
{
    const QPointer<const QWidget> self(&window);
    press(window, button, place);
    if (self)
        release(window, button, place);
}

void Hand::doubleClick(const QWidget &window, QPoint place)
{
    if (nativeOf(window) && !buttons)
        QTest::mouseDClick(nativeOf(window), Qt::LeftButton, {}, named(place));
}

void Hand::turnWheel(const QWidget &window, QPoint place, QPoint angle,
                     Qt::KeyboardModifiers modifiers)
{
    if (!nativeOf(window))
        return;
    QWheelEvent event(place, nativeOf(window)->mapToGlobal(place), {}, angle, buttons, modifiers,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(nativeOf(window), &event);
}

void Hand::type(const QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (nativeOf(window))
        QTest::keyClick(nativeOf(window), key, modifiers);
}

void Hand::type(const QWidget &window, char letter)
{
    if (nativeOf(window))
        QTest::keyClick(nativeOf(window), letter);
}

void Hand::drag(const QWidget &window, const QMimeData &data, QPoint place, bool drop)
{
    if (!nativeOf(window))
        return;
    const QPointer<QWindow> native(nativeOf(window));
    const auto actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(place, actions, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(native, &enter);
    QDragMoveEvent move(place, actions, &data, Qt::LeftButton, {});
    if (native)
        QCoreApplication::sendEvent(native, &move);
    if (!native)
        return;
    if (drop) {
        QDropEvent event(place, actions, &data, Qt::NoButton, {});
        QCoreApplication::sendEvent(native, &event);
    } else {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(native, &event);
    }
}

void Hand::touch(const QWidget &window, QPoint from, QPoint to)
{
    static auto *const screen = QTest::createTouchDevice();
    const QPointer<const QWidget> self(&window);
    // The window may get another native window meanwhile, or go.
    const auto native = [&self] { return self ? nativeOf(*self) : nullptr; };
    if (native())
        QTest::touchEvent(native(), screen).press(0, from);
    if (native())
        QTest::touchEvent(native(), screen).move(0, (from + to) / 2);
    if (native())
        QTest::touchEvent(native(), screen).move(0, to);
    if (native())
        QTest::touchEvent(native(), screen).release(0, to);
}

void Hand::compose(const QString &preedit, const QString &text)
{
    QInputMethodEvent composing(preedit, {});
    if (auto *const object = QGuiApplication::focusObject())
        QCoreApplication::sendEvent(object, &composing);
    QInputMethodEvent committing;
    committing.setCommitString(text);
    if (auto *const object = QGuiApplication::focusObject())
        QCoreApplication::sendEvent(object, &committing);
}
