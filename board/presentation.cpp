#include "board/boardwindow.h"

#include "board/boardgeometry.h"
#include "board/windowlook.h"

#include "ui_boardwindow.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPropertyAnimation>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <chrono>

using namespace std::chrono_literals;

// The board on the full screen, with the panels at the screen's edges.

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
    // Afterwards not at the place where the panel was built (x 990); this is wanted.
    {&Ui::BoardWindow::AccountPanel, Qt::AlignRight | Qt::AlignTop, {920, 10}},
    {&Ui::BoardWindow::DateTimePanel, Qt::AlignRight | Qt::AlignBottom, {990, 655}},
};

/// Where a panel of that size stands in a window of that size while it presents.
QPoint presentingPlace(const QSize &window, const QSize &panel, Qt::Alignment edges)
{
    const QSize room = window - panel;
    const int x = edges.testFlag(Qt::AlignRight) ? room.width() - margin : margin;
    if (edges.testFlag(Qt::AlignVCenter))
        return {x, room.height() / 2};
    return {x, edges.testFlag(Qt::AlignBottom) ? room.height() - margin : margin};
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
    view->setSceneRect(rect());
    view->fitInView(scene->sceneRect(), Qt::KeepAspectRatio);
}

void BoardWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    // Some window systems deliver the size of the full screen only after showFullScreen().
    if (presenting)
        layOutPresentation();
}

/// Shows how to leave, for about 11 seconds. A window's opacity means nothing to a panel inside
/// it, so the fades are not seen; what they do is to hide the panel at their end. This is wanted.
/// A reminder that still runs when the next presentation begins cuts that one's short.
void BoardWindow::showReminder()
{
    std::erase_if(reminderFades,
                  [](const auto &fade) { return fade->state() == QAbstractAnimation::Stopped; });

    ui->AdviseFS->show();
    ui->AdviseFS->setWindowOpacity(1.0);
    fadeReminder(fadeInTime, 0.0, 1.0);
    QTimer::singleShot(reminderTime, this, [this] {
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
    move(corner);
    // On X11 the frame of the new native window is not there yet; say that it counts.
    windowHandle()->setFramePosition(corner);

    auto *const view = ui->PizarraMain;
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    scene->setSceneRect(BoardGeometry::board);
    // The view keeps the scene rectangle that the presentation gave it; this is wanted.
    view->resize(BoardGeometry::window);
    view->fitInView(scene->sceneRect(), Qt::KeepAspectRatio);

    for (const auto &places : panels)
        (ui.get()->*places.panel)->move(places.afterwards);

    setCursorMode();
    ui->Presentar->setCurrentIndex(-1);
    // The change of the window's flags loses the styling: have it applied again.
    registerFont();
    setStyleSheet(styleSheet());
}
