// Fades what is disabled: some style sheets say nothing of it.
#include "look/fading.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QWidget>

namespace {

// Faint beside its neighbours, and still to be read.
constexpr qreal fadedOpacity = 0.67;

class Fading : public QGraphicsOpacityEffect
{
public:
    explicit Fading(QWidget &widget)
        : QGraphicsOpacityEffect(&widget)
    {
        setOpacity(fadedOpacity);
        setEnabled(!widget.isEnabled());
        widget.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange)
            setEnabled(!static_cast<QWidget *>(watched)->isEnabled());
        return QGraphicsOpacityEffect::eventFilter(watched, event);
    }
};

} // namespace

void fadeWhileDisabled(QWidget &widget)
{
    widget.setGraphicsEffect(new Fading(widget));
}
