// The part of a slim scroll bar's grip that is not drawn.
#pragma once

#include <QWidget>

class QScrollBar;

/// Widens the grip of a slim scroll bar for the pointer: an unseen strip beside it, over the view's
/// edge, on which the pointer works as on the grip. As long as the view that it belongs to, which must
/// be the one whose bar it is given.
class ScrollGrip : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ScrollGrip)

public:
    ScrollGrip(QScrollBar *scrollBar, QWidget *view);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool event(QEvent *event) override;

private:
    void follow();

    QScrollBar *bar;
};
