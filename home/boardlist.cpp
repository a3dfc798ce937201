// Keeps the rows of the list as wide as what is seen of it.
#include "home/boardlist.h"

#include <QResizeEvent>

/// The rows are first laid out before it is known that the bar beside them takes some of their width.
void BoardList::resizeEvent(QResizeEvent *event)
{
    QListWidget::resizeEvent(event);
    scheduleDelayedItemsLayout();
}

/// By this a delegate knows how wide a row may be: the toolkit tells it the width of the whole list.
void BoardList::initViewItemOption(QStyleOptionViewItem *option) const
{
    QListWidget::initViewItemOption(option);
    option->rect.setWidth(viewport()->width());
}
