// Under which names the widgets of a window are read out to people who do not see them.
#pragma once

#include "tests/support/look/sharppictures.h"

#include <QAccessible>
#include <QLabel>
#include <QWidget>

namespace Names {

inline QString of(QWidget &widget)
{
    // Not "interface", which the headers of Windows take for themselves.
    auto *const accessible = QAccessible::queryAccessibleInterface(&widget);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

/// The widgets of \a window that can have the focus or show a picture and have no name. Those that
/// the toolkit makes for itself have no object name.
inline QStringList missing(const QWidget &window)
{
    QStringList names;
    const auto widgets = window.findChildren<QWidget *>();
    for (auto *widget : widgets) {
        const auto *const label = qobject_cast<const QLabel *>(widget);
        const bool picture = label && SharpPictures::isPicture(*label);
        if (widget->objectName().isEmpty() || (widget->focusPolicy() == Qt::NoFocus && !picture))
            continue;
        if (of(*widget).isEmpty())
            names << widget->objectName();
    }
    return names;
}

} // namespace Names
