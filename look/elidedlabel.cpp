// Cuts a line of text in its middle where it does not fit.
#include "look/elidedlabel.h"

#include "look/tooltips.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>

bool ElidedLabel::isTooLong() const
{
    return sizeHint().width() > width();
}

QString ElidedLabel::elidedText() const
{
    const QString ending = text().endsWith(keptEnding) ? keptEnding : QString();
    const int room = contentsRect().width() - fontMetrics().horizontalAdvance(ending);
    return fontMetrics().elidedText(text().chopped(ending.size()), Qt::ElideMiddle, room) + ending;
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || !isTooLong())
        return QLabel::event(event);
    // A tool tip would take a text that looks like it for markup.
    const QString whole = Qt::convertFromPlainText(text(), Qt::WhiteSpaceNoWrap);
    showToolTip(*this, whole);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    if (!isTooLong()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    const int flags = int(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, contentsRect(), flags | Qt::TextSingleLine, palette(),
                          isEnabled(), elidedText(), foregroundRole());
}
