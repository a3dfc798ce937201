// A hand on the real mouse and keyboard of the screen.
#pragma once

#include <QProcess>
#include <QTest>
#include <QWidget>

/// What a person does with mouse and keyboard, without the program's looking at it.
inline void act(const QStringList &commands)
{
    QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), commands), 0);
}

/// To the point \a position of \a window.
inline QStringList movedTo(const QWidget &window, QPoint position)
{
    const QPoint point = window.mapToGlobal(position);
    return {QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())};
}
