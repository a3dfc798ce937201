// Keeps an unseen strip beside the grip of a slim scroll bar, and hands on what the pointer does there.
#include "board/scrollgrip.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>

namespace {

constexpr int leastWidth = 10; // pixels, of the grip and its strip together

QRect gripOf(const QScrollBar &bar)
{
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.state.setFlag(QStyle::State_Horizontal, bar.orientation() == Qt::Horizontal);
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.pageStep = bar.pageStep();
    option.sliderPosition = bar.sliderPosition();
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider,
                                       &bar);
}

} // namespace

ScrollGrip::ScrollGrip(QScrollBar *scrollBar, QWidget *view)
    : QWidget(view)
    , bar(scrollBar)
{
    setCursor(Qt::ArrowCursor);
    bar->installEventFilter(this);
    connect(bar, &QScrollBar::valueChanged, this, &ScrollGrip::follow);
    connect(bar, &QScrollBar::rangeChanged, this, &ScrollGrip::follow);
    follow();
}

bool ScrollGrip::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::StyleChange:
        follow();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

/// The place is that of the grip, but for what the bar is too slim for; the inner edge of the bar is the
/// outer one of the strip.
void ScrollGrip::follow()
{
    QRect place(bar->mapTo(parentWidget(), gripOf(*bar).topLeft()), gripOf(*bar).size());
    if (bar->orientation() == Qt::Vertical)
        place.adjust(std::min(0, place.width() - leastWidth), 0, -place.width(), 0);
    else
        place.adjust(0, std::min(0, place.height() - leastWidth), 0, -place.height());
    setGeometry(place);
    setVisible(bar->isVisibleTo(parentWidget()));
}

bool ScrollGrip::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::MouseButtonDblClick: {
        const auto *const mouse = static_cast<QMouseEvent *>(event);
        QPointF place = bar->mapFrom(parentWidget(), mapToParent(mouse->position()));
        place.setX(std::clamp(place.x(), 0.0, bar->width() - 1.0));
        place.setY(std::clamp(place.y(), 0.0, bar->height() - 1.0));
        QMouseEvent onBar(mouse->type(), place, mouse->globalPosition(), mouse->button(),
                          mouse->buttons(), mouse->modifiers(), mouse->pointingDevice());
        return QCoreApplication::sendEvent(bar, &onBar);
    }
    default:
        return QWidget::event(event);
    }
}
