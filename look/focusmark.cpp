// Decides where the ring stands that marks the keyboard's focus.
#include "look/focusmark.h"

#include "look/focusring.h"
#include "look/programfilter.h"

#include <QApplication>
#include <QFocusEvent>
#include <QMessageBox>

namespace {

class FocusMark : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::FocusIn:
            if (auto *const widget = qobject_cast<QWidget *>(watched))
                focusIn(*widget, static_cast<QFocusEvent *>(event)->reason());
            break;
        case QEvent::FocusOut:
            if (ring && watched == ring->widget())
                delete ring;
            break;
        case QEvent::MouseButtonPress:
            byKeyboard = false;
            delete ring;
            click();
            break;
        case QEvent::MouseButtonRelease:
            click();
            break;
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
            if (ring && concernsRing(watched))
                ring->follow();
            break;
        default:
            break;
        }
        return false;
    }

private:
    /// Until the program is back in its event loop, what happens is what the click does.
    void click()
    {
        clicking = true;
        QMetaObject::invokeMethod(this, [this] { clicking = false; }, Qt::QueuedConnection);
    }

    void focusIn(QWidget &widget, Qt::FocusReason reason)
    {
        // A dialog that opens tells one of its widgets so as if the Tab key had been pressed.
        if (!widget.hasFocus())
            return;
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason
            || reason == Qt::ShortcutFocusReason) {
            // A button that is disabled by its click hands the focus on as the Tab key would.
            byKeyboard = !clicking;
        } else if (reason == Qt::MouseFocusReason) {
            byKeyboard = false;
        }
        delete ring;
        const bool isInBox = qobject_cast<QMessageBox *>(widget.window());
        if ((byKeyboard || isInBox) && widget.window()->windowType() != Qt::Popup)
            ring = new FocusRing(widget);
    }

    bool concernsRing(QObject *watched) const
    {
        const auto *const widget = qobject_cast<QWidget *>(watched);
        return widget && widget->isAncestorOf(ring->widget()); // a widget is its own ancestor, too
    }

    bool byKeyboard = false; // the focus went where it is
    bool clicking = false;
    QPointer<FocusRing> ring;
};

} // namespace

void markKeyboardFocus()
{
    programFilter<FocusMark>();
}
