// A home window with boards in its data folder.
#pragma once

#include "board/boardwindow.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/home/homewindow.h"

#include <QDateTime>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QListWidget>

/// Seven minutes past \a hour on a day of March 2026.
inline QDateTime march(int day, int hour = 14)
{
    return {QDate(2026, 3, day), QTime(hour, 7)};
}

/// A home window with boards in its data folder.
class BoardsHome : public HomeWindow
{
public:
    QListWidget *list() const { return child<QListWidget>(QStringLiteral("listWidget")); }
    QStringList listed() const
    {
        QStringList names;
        for (int row = 0; row < list()->count(); ++row)
            names << list()->item(row)->text();
        return names;
    }
    QString boardPath(const QString &name) const { return dataPath() + QLatin1Char('/') + name; }
    /// Writes boards 1 to \a count, the first one the newest, and lists them.
    void writeBoards(int count)
    {
        for (int i = 1; i <= count; ++i)
            BoardFile::write(boardPath(QStringLiteral("b%1.vtrz").arg(i)), {},
                             march(count - i + 1));
        window.showProjects();
    }
    void clickRow(int row)
    {
        const QPoint middle = list()->visualItemRect(list()->item(row)).center();
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                          list()->viewport()->mapTo(&window, middle));
    }
    BoardWindow *board() const { return window.findChild<BoardWindow *>(); }
    QString boardName() const
    {
        return board()->findChild<QLabel *>(QStringLiteral("NombreProyectoTxt"))->text();
    }
    qsizetype boardItems() const
    {
        return board()
            ->findChild<QGraphicsView *>(QStringLiteral("PizarraMain"))
            ->scene()
            ->items()
            .size();
    }
    bool boardIsOpen() const { return board() && board()->isVisible() && !window.isVisible(); }
    void closeBoard()
    {
        auto *const button = board()->findChild<QWidget *>(QStringLiteral("CloseBoardBtn"));
        QVERIFY(QTest::qWaitForWindowExposed(board()));
        QTest::mouseClick(board()->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(board(), button->rect().center()));
        QVERIFY(window.isVisible() && !board()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
    /// The row \a row as the screen shows it.
    QImage drawnRow(int row) const
    {
        QCoreApplication::processEvents();
        return list()->viewport()->grab(list()->visualItemRect(list()->item(row))).toImage();
    }
};
