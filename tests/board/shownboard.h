// A board window on the screen, and what a person does with it and sees of it.
#pragma once

#include "board/boardwindow.h"
#include "tests/support/items/boardpointer.h"

#include <QCoreApplication>
#include <QGraphicsItem>
#include <QLabel>
#include <QMouseEvent>

#include <algorithm>

/// A board window on the screen with a pointer on its canvas, and what a person sees of it.
class ShownBoard
{
public:
    explicit ShownBoard(QWidget *home = nullptr)
        : window(home)
        , pointer(window)
        , view(*find<QGraphicsView>("PizarraMain"))
        , scene(*view.scene())
    {
        window.show();
        processEvents();
    }

    /// The widget of that object name; null when there is none of the class.
    template <typename Widget> Widget *find(const char *name) const
    {
        return window.findChild<Widget *>(QString::fromLatin1(name));
    }
    /// What the board-name label reads.
    QString name() const { return find<QLabel>("NombreProyectoTxt")->text(); }
    bool marked() const { return name().endsWith(QStringLiteral("* (Sin guardar)")); }

    /// Clicks the middle of the widget of that object name.
    void click(const char *name)
    {
        const auto *const widget = find<QWidget>(name);
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                          widget->mapTo(&window, widget->rect().center()));
    }

    /// Types ASCII characters on the keyboard.
    void type(const char *text)
    {
        for (; *text; ++text)
            QTest::keyClick(window.windowHandle(), *text);
    }

    /// Sends the view itself a mouse event, also at a place between its pixels. Unlike an event of
    /// the pointer it does not let the scene report its changes.
    void send(QEvent::Type type, QPointF viewPoint, Qt::MouseButton button,
              Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, viewPoint, view.mapToGlobal(viewPoint), button, buttons, {});
        QCoreApplication::sendEvent(&view, &event);
    }
    /// A drag in straight succession: of it only what the gesture itself records is recorded.
    void quickDrag(QPointF from, QPointF to)
    {
        send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
        if (to != from)
            send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    }

    /// Lets the scene report what has changed on it, which it does from the event loop.
    static void processEvents() { QCoreApplication::processEvents(); }

    /// The items of a class, topmost first.
    template <typename Item> QList<Item *> all() const
    {
        QList<Item *> found;
        const auto items = scene.items();
        for (auto *item : items) {
            if (auto *const match = dynamic_cast<Item *>(item))
                found << match;
        }
        return found;
    }
    /// The only item of a class; null when there is none or more than one.
    template <typename Item> Item *only() const
    {
        const auto items = all<Item>();
        return items.size() == 1 ? items.constFirst() : nullptr;
    }
    /// How many items without a parent item lie on the board.
    qsizetype count() const
    {
        const auto items = scene.items();
        return std::ranges::count_if(items,
                                     [](const QGraphicsItem *item) { return !item->parentItem(); });
    }

    BoardWindow window;
    BoardPointer pointer;
    QGraphicsView &view;
    QGraphicsScene &scene;
};
