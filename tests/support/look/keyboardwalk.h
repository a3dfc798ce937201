// What a person meets who walks through a window with the keyboard.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QWindow>

namespace KeyboardWalk {

/// The name under which the widget with the focus is known.
inline QString focusName(const QWidget &window)
{
    const QWidget *widget = window.focusWidget();
    while (widget && (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_")))
        widget = widget->parentWidget();
    return widget ? widget->objectName() : QString();
}

/// Presses Tab until the focus is where it began; the widgets that had it, in their order.
inline QStringList stops(QWidget &window, Qt::KeyboardModifiers modifiers = {})
{
    constexpr int enough = 40;
    QStringList names;
    for (int i = 0; i < enough; ++i) {
        const QString name = focusName(window);
        if (names.contains(name))
            break;
        names << name;
        QTest::keyClick(window.windowHandle(), modifiers ? Qt::Key_Backtab : Qt::Key_Tab,
                        modifiers);
    }
    return names;
}

/// The widgets at which the window looks the same with and without the focus on them.
inline QStringList unseen(QWidget &window)
{
    QStringList names;
    const QStringList all = stops(window);
    for (const QString &name : all) {
        auto *const widget = window.findChild<QWidget *>(name);
        widget->setFocus(Qt::TabFocusReason);
        const QImage with = window.grab().toImage();
        widget->clearFocus();
        if (window.grab().toImage() == with)
            names << name;
    }
    return names;
}

} // namespace KeyboardWalk
