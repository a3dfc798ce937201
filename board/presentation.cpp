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
    const int right = width() - margin;
    const int bottom = height() - margin;
    const auto middle = (height() - ui->ToolPanel->height()) / 2;
    ui->ToolPanel->move(margin, middle);
    ui->ExitPanel->move(margin, bottom - ui->ExitPanel->height());
    ui->MainPanel->move(margin, margin);
    ui->AccountPanel->move(right - ui->AccountPanel->width(), margin);
    ui->DateTimePanel->move(right - ui->DateTimePanel->width(),
                            bottom - ui->DateTimePanel->height());

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

    ui->ToolPanel->move(10, 188);
    ui->ExitPanel->move(10, 655);
    ui->MainPanel->move(10, 10);
    // Not the place where the panel was built (x 990); this is wanted.
    ui->AccountPanel->move(920, 10);
    ui->DateTimePanel->move(990, 655);

    setCursorMode();
    ui->Presentar->setCurrentIndex(-1);
    // The change of the window's flags loses the styling: have it applied again.
    registerFont();
    setStyleSheet(styleSheet());
}
