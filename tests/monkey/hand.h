// A person's hands on the windows of the program.
#pragma once

#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <QWindow>

class QMimeData;
class QPointingDevice;

/// A pointer, a keyboard, fingers and an input method. All that they do goes to the native windows.
class Hand
{
public:
    /// The buttons that are held.
    Qt::MouseButtons held() const { return buttons; }

    void press(const QWidget &window, Qt::MouseButton button, QPoint place);
    void release(const QWidget &window, Qt::MouseButton button, QPoint place);
    /// Lets go of all buttons over \a window.
    void releaseAll(const QWidget &window, QPoint place);
    void move(const QWidget &window, QPoint place);
    void click(const QWidget &window, Qt::MouseButton button, QPoint place);
    void doubleClick(const QWidget &window, QPoint place);
    void turnWheel(const QWidget &window, QPoint place, QPoint angle,
                   Qt::KeyboardModifiers modifiers);

    void type(const QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QWidget &window, char letter);

    /// Drags \a data from another program to \a place and drops it there, or leaves again.
    void drag(const QWidget &window, const QMimeData &data, QPoint place, bool drop);

    void touch(const QWidget &window, QPoint from, QPoint to);

    /// Composes \a preedit and then commits \a text, as a person's input method does.
    static void compose(const QString &preedit, const QString &text);

private:
    Qt::MouseButtons buttons;
};
