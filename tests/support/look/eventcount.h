// How often a widget is told something.
#pragma once

#include <QEvent>
#include <QWidget>

/// Counts the events of a type that a widget gets, for as long as it lives.
class EventCount : public QObject
{
public:
    EventCount(QWidget &widget, QEvent::Type counted)
        : type(counted)
    {
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == type)
            ++count;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;

private:
    const QEvent::Type type;
};
