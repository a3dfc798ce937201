// A window with a bare scene, for items without a board.
#pragma once

#include "tests/support/items/boardpointer.h"

#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QWidget>

/// A shown window with a bare scene of 800 × 600 units, one unit a pixel, and a pointer on it.
///
/// The scene knows nothing of tools, so that an item alone decides what a press does to it.
class ItemCanvas
{
public:
    ItemCanvas()
        : view(new QGraphicsView(&scene, &window))
        , pointer((view->setObjectName(QStringLiteral("PizarraMain")), window))
    {
        window.resize(size);
        view->setFrameShape(QFrame::NoFrame);
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setGeometry(QRect(QPoint(), size));
    }

    /// Shows the window and waits until it has the keyboard.
    bool show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    /// Adds \a item, which the scene then owns.
    template <typename Item> Item *add(Item *item, QPointF pos = {})
    {
        item->setPos(pos);
        scene.addItem(item);
        return item;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.windowHandle(), key, modifiers);
    }
    void type(const QString &text)
    {
        for (const auto letter : text)
            QTest::keyClick(window.windowHandle(), letter.toLatin1());
    }

    /// What the scene shows, on white.
    QImage picture()
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        scene.render(&painter, QRectF(), scene.sceneRect());
        return image;
    }

private:
    static constexpr QSize size{800, 600};

public:
    QGraphicsScene scene{QRectF(QPointF(), QSizeF(size))};
    QWidget window;
    QGraphicsView *view;
    BoardPointer pointer;
};
