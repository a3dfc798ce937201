// The list of recent boards.
#pragma once

#include <QListWidget>

/// A list whose rows are as wide as what is seen of it, so that it scrolls up and down only. Everything
/// else is the toolkit's, its class name for style sheets and look-ups, too.
class BoardList : public QListWidget
{
public:
    using QListWidget::QListWidget;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;
};
