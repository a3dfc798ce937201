// Looks now and then whether anything is going on in the program.
#include "home/quietmoment.h"

#include "board/longwork.h"

#include <QApplication>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto interval = 50ms; // short for a person, and long for a program

bool isQuiet()
{
    return !QApplication::activeModalWidget() && !QApplication::activePopupWidget()
        && QGuiApplication::mouseButtons() == Qt::NoButton && !LongWork::isUnderWay();
}

} // namespace

QuietMoment::QuietMoment(std::function<void()> moment)
    : come(std::move(moment))
{
    timer.setInterval(interval);
    connect(&timer, &QTimer::timeout, this, &QuietMoment::look);
}

void QuietMoment::await()
{
    quietBefore = false;
    timer.start();
}

void QuietMoment::look()
{
    const bool quiet = isQuiet();
    // A dialog that has just gone has not yet left its event loop, in which this look may be, nor has
    // anybody read its answer. By the next look both are done.
    if (!std::exchange(quietBefore, quiet) || !quiet)
        return;
    timer.stop();
    come();
}
