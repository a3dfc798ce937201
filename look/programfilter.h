// What hears every event of the program.
#pragma once

#include <QCoreApplication>
#include <QPointer>

/// The one \a Filter, an event filter, that hears of everything in the program from the first call on.
/// The application owns it.
template <typename Filter> Filter &programFilter()
{
    static QPointer<Filter> filter;
    if (!filter) {
        filter = new Filter(QCoreApplication::instance());
        QCoreApplication::instance()->installEventFilter(filter);
    }
    return *filter;
}
