// A shown home window in an empty home folder, with a pointer on it.
#pragma once

#include "home/mainwindow.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>
#include <QWindow>

/// A shown home window in an empty home folder, with a pointer on it: clicks go to the window, as
/// a person's do, so that what lies on top gets them.
class HomeWindow
{
public:
    HomeWindow()
    {
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("The home window never appeared.");
    }

    template <typename Widget = QWidget> Widget *child(const QString &name) const
    {
        auto *const found = window.findChild<Widget *>(name);
        if (!found)
            qFatal("The home window has no %s of that class.", qPrintable(name));
        return found;
    }

    /// Clicks the middle of the widget \a name.
    void click(const QString &name) { clickAt(name, child(name)->rect().center()); }

    void clickAt(const QString &name, QPoint position)
    {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                          child(name)->mapTo(&window, position));
    }

private:
    ScratchHome scratch; // before the window, which lives in it

public:
    MainWindow window;

    QString dataPath() const { return scratch.dataPath(); }
    QString path(const QString &name) const { return scratch.path(name); }
};
