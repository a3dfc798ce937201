// Comes from a timer, does a step, and looks whether the promises hold.
#include "tests/monkey/monkey.h"

#include "board/boardwindow.h"
#include "board/longwork.h"
#include "home/mainwindow.h"
#include "tests/monkey/logbook.h"
#include "tests/monkey/promises.h"

#include <QApplication>
#include <QThread>
#include <QTimer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int usualPause = 5; // ms
constexpr int deepest = 6; // event loops
constexpr quint32 looksEvery = 10; // steps

/// How many event loops run inside of each other.
int loops()
{
    return QThread::currentThread()->loopLevel();
}

} // namespace

Monkey::Monkey(const Plan &whatToDo, Litter &files, QString homePath, QString dataPath)
    : plan(whatToDo)
    , litter(files)
    , homeFolder(std::move(homePath))
    , dataFolder(std::move(dataPath))
    , step(whatToDo.first)
{ }

void Monkey::begin(MainWindow &window)
{
    home = &window;
    actingLevel = 0;
    isOver = false;
    say(u"start"_s);
    comeLater();
}

void Monkey::finish()
{
    if (home)
        hand.releaseAll(*home, {5, 5});
    home = nullptr;
}

BoardWindow *Monkey::board() const
{
    return home ? home->findChild<BoardWindow *>() : nullptr;
}

void Monkey::say(const QString &what)
{
    Logbook::write(u"%1 %2%3"_s.arg(step).arg(QString(loops(), u'>'), what));
}

void Monkey::comeLater()
{
    // With the window it goes; a timer for each step, since one in whose handler the program waits does
    // not come again.
    QTimer::singleShot(usualPause, home, [this] { come(); });
}

void Monkey::come()
{
    if (actingLevel > 0 && loops() <= actingLevel) {
        // The step before, or the look at it, lets events through and is not done yet.
        comeLater();
        return;
    }
    const int before = std::exchange(actingLevel, loops());
    // What opens meanwhile is answered.
    comeLater();
    look();
    takeStep();
    actingLevel = before;
}

void Monkey::takeStep()
{
    if (isEnding())
        return;
    if (isDone() || loops() > deepest) {
        say(u"quit"_s);
        // Asks no window whether it agrees.
        QCoreApplication::exit();
        return;
    }
    ++step;
    Dice dice(plan.seed, step);
    act(dice);
}

/// Whether no window is there any more. The program then ends with the next events, or never.
bool Monkey::isEnding()
{
    if (home->isVisible() || (board() && board()->isVisible()) || QGuiApplication::modalWindow())
        return false;
    if (std::exchange(isOver, true))
        return true;
    say(u"the last window is gone"_s);
    constexpr int longEnough = 1000; // ms
    QTimer::singleShot(longEnough, home,
                       [] { Logbook::complain(u"the program ends with its last window"_s); });
    return true;
}

void Monkey::look()
{
    // Long work that no step has begun delivers events without a loop of its own.
    const bool isAtRest =
        loops() == 1 && !QApplication::activePopupWidget() && !LongWork::isUnderWay();
    const QString broken =
        brokenPromise({board(), hand, isAtRest, step % looksEvery == 0, plan.realTime});
    if (!broken.isEmpty())
        Logbook::complain(broken);
}

/// Brings \a window back if it is minimised. There a person could do nothing else with it, and a window
/// manager would put away with it what the program opened over it.
bool Monkey::comesBack(QWidget &window)
{
    if (!window.isMinimized())
        return false;
    say(u"come back"_s);
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    return true;
}

void Monkey::act(Dice &dice)
{
    if (dice.oneIn(50)) {
        startAgain(dice);
    } else if (QGuiApplication::overrideCursor()) {
        waitForWork(dice);
    } else if (auto *const popup = QApplication::activePopupWidget()) {
        usePopup(*popup, dice);
    } else if (auto *const dialog = QApplication::activeModalWidget()) {
        useDialog(*dialog, dice);
    } else {
        patience = 12;
        const bool isAtBoard = board() && board()->isVisible();
        if (plan.realTime && comesBack(isAtBoard ? static_cast<QWidget &>(*board()) : *home))
            return;
        if (isAtBoard)
            useBoard(dice);
        else
            useHome(dice);
    }
}
