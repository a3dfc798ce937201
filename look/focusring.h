// The ring around what has the keyboard.
#pragma once

#include <QPointer>
#include <QWidget>

/// A ring that lies over a window, around one of its widgets, or inside of the window's edges where that
/// widget fills it. The pointer does not meet it.
class FocusRing : public QWidget
{
    // Without this, style sheets would take it for a plain widget and fill it.
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(FocusRing)

public:
    explicit FocusRing(QWidget &widget);

    const QWidget *widget() const { return marked; }
    /// Goes to where the widget is now.
    void follow();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPointer<QWidget> marked;
};
