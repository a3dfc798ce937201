// The board on the full screen, with the panels at the screen's edges.
#include "board/boardwindow.h"

#include "board/boardgeometry.h"
#include "look/windowlook.h"
#include "look/windowplace.h"

#include "ui_boardwindow.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPropertyAnimation>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr int margin = 10; // pixels between a panel and the window's edge

constexpr int presentIndex = 0; // "Pantalla completa"

constexpr int fadeInTime = 500; // ms
constexpr int fadeOutTime = 1000; // ms
constexpr auto reminderTime = 10s;

struct PanelPlaces
{
    QWidget *Ui::BoardWindow::*panel;
    Qt::Alignment presenting; // the edges of the window that the panel keeps to
    QPoint afterwards;
};

constexpr PanelPlaces panels[] = {
    {&Ui::BoardWindow::ToolPanel, Qt::AlignLeft | Qt::AlignVCenter, {10, 188}},
    {&Ui::BoardWindow::ExitPanel, Qt::AlignLeft | Qt::AlignBottom, {10, 655}},
    {&Ui::BoardWindow::MainPanel, Qt::AlignLeft | Qt::AlignTop, {10, 10}},
    // Quirk: after a presentation the panel for saving stands 70 pixels further left than before,
    // because the place it goes back to is not the one it was built at; people find it there.
    {&Ui::BoardWindow::AccountPanel, Qt::AlignRight | Qt::AlignTop, {920, 10}},
    {&Ui::BoardWindow::DateTimePanel, Qt::AlignRight | Qt::AlignBottom, {990, 655}},
};

/// Where a panel of that size stands in a window of that size while it presents.
QPoint presentingPlace(const QSize &window, const QSize &panel, Qt::Alignment edges)
{
    const QSize space = window - panel;
    const int x = edges.testFlag(Qt::AlignRight) ? space.width() - margin : margin;
    if (edges.testFlag(Qt::AlignVCenter))
        return {x, space.height() / 2};
    return {x, edges.testFlag(Qt::AlignBottom) ? space.height() - margin : margin};
}

} // namespace

void BoardWindow::manejarPresentacion(int index)
{
    if (index == presentIndex && !presenting)
        startPresentation();
}

void BoardWindow::keyPressEvent(QKeyEvent *event)
{
    if (presenting && event->key() == Qt::Key_Escape)
        stopPresentation();
    QMainWindow::keyPressEvent(event);
}

void BoardWindow::startPresentation()
{
    presenting = true;
    setFrameless(true);
    setSizeHints({}, {QWIDGETSIZE_MAX, QWIDGETSIZE_MAX});
    showFullScreen();
    layOutPresentation();
    showReminder();
}

/// Changes the frame and gives the window a new native window. Changing the frame hides the window;
/// if the old native window were shown again at once, the window manager might only then come
/// round to the hiding and with it forget that the full screen was asked for.
void BoardWindow::setFrameless(bool frameless)
{
    setWindowFlag(Qt::FramelessWindowHint, frameless);
    destroy();
    create();
}

/// Opens or closes the size that the window manager lets the window have, while the widget keeps
/// its fixed size: some window managers refuse the full screen to a window that cannot grow.
void BoardWindow::setSizeHints(const QSize &smallest, const QSize &largest)
{
    windowHandle()->setMinimumSize(smallest);
    windowHandle()->setMaximumSize(largest);
}

void BoardWindow::layOutPresentation()
{
    for (const auto &places : panels) {
        auto *const panel = ui.get()->*places.panel;
        panel->move(presentingPlace(size(), panel->size(), places.presenting));
    }

    auto *const view = ui->PizarraMain;
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setGeometry(rect());
    // Quirk: on a screen that is not 1920 × 1080 a presented board is not in the middle, because
    // the view's own scene rectangle is the screen's while the board is scaled to fit.
    view->setSceneRect(rect());
    view->fitInView(scene->sceneRect(), Qt::KeepAspectRatio);
    view->viewport()->update();
}

void BoardWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    // Some window systems deliver the size of the full screen only after showFullScreen().
    if (presenting)
        layOutPresentation();
}

// Quirk: the reminder comes and goes without fading, because a window's opacity means nothing to a
// panel inside it; the fade-out still decides when the panel goes.
// Quirk: a presentation soon after another one has a shorter reminder, because the first one's
// timer runs on and hides the panel for both.

/// Shows how to leave, for about 11 seconds.
void BoardWindow::showReminder()
{
    std::erase_if(reminderFades,
                  [](const auto &fade) { return fade->state() == QAbstractAnimation::Stopped; });

    ui->AdviseFS->show();
    ui->AdviseFS->setWindowOpacity(1.0);
    fadeReminder(fadeInTime, 0.0, 1.0);
    QTimer::singleShot(reminderTime, Qt::PreciseTimer, this, [this] {
        fadeReminder(fadeOutTime, 1.0, 0.0);
        connect(reminderFades.back().get(), &QPropertyAnimation::finished, ui->AdviseFS,
                &QWidget::hide);
    });
}

void BoardWindow::fadeReminder(int duration, qreal from, qreal to)
{
    auto &fade = reminderFades.emplace_back(
        std::make_unique<QPropertyAnimation>(ui->AdviseFS, "windowOpacity"));
    fade->setDuration(duration);
    fade->setStartValue(from);
    fade->setEndValue(to);
    fade->start();
}

void BoardWindow::stopPresentation()
{
    presenting = false;
    ui->AdviseFS->hide();
    setFrameless(false);
    showNormal();
    resize(BoardGeometry::window);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QPoint corner((screen.left() + screen.right()) / 2 - (width() - 1) / 2,
                        (screen.top() + screen.bottom()) / 2 - (height() - 1) / 2);
    moveWindow(*this, corner);

    auto *const view = ui->PizarraMain;
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    scene->setSceneRect(BoardGeometry::board);
    // Quirk: after a presentation the window shows the whole board, smaller than before, because it
    // is fitted into the view, which keeps the presentation's scene rectangle.
    view->resize(BoardGeometry::window);
    view->fitInView(scene->sceneRect(), Qt::KeepAspectRatio);
    view->viewport()->update();

    for (const auto &places : panels)
        (ui.get()->*places.panel)->move(places.afterwards);

    setCursorMode();
    ui->Presentar->setCurrentIndex(-1);
    // The change of the window's flags loses the styling: have it applied again.
    registerFont();
    setStyleSheet(styleSheet());
}
