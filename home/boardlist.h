// The list of recent boards.
#pragma once

#include <QListWidget>

/// A list whose rows are as wide as what is seen of it, so that it scrolls up and down only. While
/// it is empty, it shows its placeholder. Everything else is the toolkit's, its class name for style sheets and look-ups, too.
class BoardList : public QListWidget
{
public:
    using QListWidget::QListWidget;

    /// What stands in the middle of the list while it has no rows; a line that is too long for it is cut
    /// in its middle.
    void setPlaceholder(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString placeholder;
};
