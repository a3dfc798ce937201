// Keeps the rows of the list as wide as what is seen of it, and says what it is for while it has none.
#include "home/boardlist.h"

#include <QPainter>
#include <QResizeEvent>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QRgb quietInk = 0xff5c5c5c;
constexpr int sideMargin = 20; // pixels

} // namespace

void BoardList::setPlaceholder(const QString &text)
{
    placeholder = text;
    viewport()->update();
}

void BoardList::paintEvent(QPaintEvent *event)
{
    QListWidget::paintEvent(event);
    if (count() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(QColor(quietInk));
    const QRect place = viewport()->rect().adjusted(sideMargin, 0, -sideMargin, 0);
    QStringList lines = placeholder.split(u'\n');
    for (QString &line : lines)
        line = painter.fontMetrics().elidedText(line, Qt::ElideMiddle, place.width());
    painter.drawText(place, Qt::AlignCenter, lines.join(u'\n'));
}

/// The toolkit makes the first row the current one and does not select it, so that the arrow keys could
/// only leave it.
void BoardList::focusInEvent(QFocusEvent *event)
{
    QListWidget::focusInEvent(event);
    if (count() == 0 || !selectedItems().isEmpty())
        return;
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
        setCurrentRow(0);
    else
        selectionModel()->clearCurrentIndex();
}

/// The rows are first laid out before it is known that the bar beside them takes some of their width.
void BoardList::resizeEvent(QResizeEvent *event)
{
    QListWidget::resizeEvent(event);
    scheduleDelayedItemsLayout();
}
