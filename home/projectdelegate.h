// A row of the list of recent boards.
#pragma once

#include "home/mainwindow.h"

#include <QIcon>
#include <QStyledItemDelegate>

/// Draws a row of the list of recent boards: the document icon, the file name and, under it, the
/// folder and the time of the last change.
class MainWindow::ProjectDelegate : public QStyledItemDelegate
{
public:
    /// The line under the file name.
    static constexpr int InfoRole = Qt::UserRole;

    ProjectDelegate();

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

    /// Every row is 60 pixels high, whatever padding a style sheet gives to the rows.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    QIcon documentIcon;
};
