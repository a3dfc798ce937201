// Builds and wires the board window, and runs its clock.
#include "board/boardwindow.h"

#include "board/boardgeometry.h"
#include "board/longwork.h"
#include "board/scrollgrip.h"
#include "look/windowlook.h"

#include "ui_boardwindow.h"

#include <QDateTime>
#include <QMessageBox>
#include <QPainter>
#include <QPropertyAnimation>
#include <QScrollBar>
#include <QTimer>
#include <QWindow>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int clockInterval = 1000; // ms

} // namespace

BoardWindow::BoardWindow(QWidget *home, QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::BoardWindow>())
    , homeWindow(home)
{
    ui->setupUi(this);
    ui->AdviseFS->hide();
    buildScene();
    buildWindow();
    widenGrips();
    keepMarkerInSight();
    startClock();
    ui->PizarraMain->installEventFilter(this);
    ui->Presentar->installEventFilter(this);
    ui->PizarraMain->setAttribute(Qt::WA_MouseTracking);
    connectSignals();
    setUnsaved(false);
}

BoardWindow::~BoardWindow()
{
    // The scene goes with the base class and tells then that its selection is empty: nobody is
    // here any more to hear it.
    scene->disconnect(this);
    ui.reset();
}

void BoardWindow::buildScene()
{
    scene = new QGraphicsScene(this);
    recorder = std::make_unique<BoardRecorder>(*scene);
    ui->PizarraMain->setScene(scene);
    ui->PizarraMain->setRenderHint(QPainter::Antialiasing);
    scene->setSceneRect(BoardGeometry::board);
}

void BoardWindow::buildWindow()
{
    applyWindowLook(*this);
    // Quirk: the board window offers to be maximised, which its fixed size refuses, and has no
    // button to close, because its flags are named one by one; a board is closed by its own button.
    setWindowFlags(Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint);
    // From here on the whole application formats dates and numbers as in Mexico.
    QLocale::setDefault(locale);
    setFixedSize(size());
    setFocusPolicy(Qt::NoFocus);
}

/// The bars are drawn slimmer than a hand can aim.
void BoardWindow::widenGrips()
{
    auto *const view = ui->PizarraMain;
    for (auto *bar : {view->verticalScrollBar(), view->horizontalScrollBar()})
        new ScrollGrip(bar, view);
}

/// Every board begins where most of them have something: what is out of sight looks like lost. A
/// presentation shows its part of the board wherever that lies.
void BoardWindow::scrollToCorner()
{
    if (presenting)
        return;
    for (auto *bar : {ui->PizarraMain->verticalScrollBar(), ui->PizarraMain->horizontalScrollBar()})
        bar->setValue(bar->minimum());
}

void BoardWindow::showEvent(QShowEvent *event)
{
    // The board stands for itself while the home window is hidden. On Windows a window that belongs
    // to another has no button in the task bar and goes with it when that one is minimised. And the
    // toolkit does not end the program with a window that belongs to another: closed by the window
    // manager, the board would leave an invisible program that keeps the next one from starting.
    // Quirk: closing the board through the window manager asks nothing and ends the program,
    // because only the button of the board runs the flow that asks.
    windowHandle()->setTransientParent(nullptr);
    QMainWindow::showEvent(event);
}

void BoardWindow::startClock()
{
    showTime();
    auto *const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &BoardWindow::showTime);
    timer->start(clockInterval);
}

void BoardWindow::showTime()
{
    ui->FechaHoraTxt->setText(
        locale.toString(QDateTime::currentDateTime(), u"dd/MM/yyyy - hh:mm:ss AP"_s));
}

void BoardWindow::connectSignals()
{
    connect(ui->Presentar, &QComboBox::currentIndexChanged, this,
            &BoardWindow::manejarPresentacion);

    const struct
    {
        QPushButton *button;
        void (BoardWindow::*slot)();
    } clicks[] = {
        {ui->ModoCursor, &BoardWindow::setCursorMode},
        {ui->ModoPostIt, &BoardWindow::setPostItMode},
        {ui->ModoLapiz, &BoardWindow::setPenMode},
        {ui->ModoLinea, &BoardWindow::setLineMode},
        {ui->ModoImagen, &BoardWindow::setImageMode},
        {ui->ModoBorrador, &BoardWindow::setEraseMode},
        {ui->ModoDeshacer, &BoardWindow::undoMode},
        {ui->ModoRehacer, &BoardWindow::redoMode},
        // Quirk: the button for saving asks for a name every time, because it always saves as; a
        // board is saved to its own file on the way out.
        {ui->GuardarComo, &BoardWindow::saveBoardAs},
        {ui->CloseBoardBtn, &BoardWindow::closeBoard},
    };
    for (const auto &click : clicks)
        connect(click.button, &QPushButton::clicked, this, click.slot);

    connect(scene, &QGraphicsScene::sceneRectChanged, this, &BoardWindow::captureSnapshot);
    // Quirk: a drag of an item may fill several steps of undoing, because each change that the
    // scene tells of is recorded, also in the middle of a drag.
    connect(scene, &QGraphicsScene::changed, this, &BoardWindow::captureChanges);
    connect(scene, &QGraphicsScene::changed, ui->PizarraMain, &CanvasView::showChanges);
    // Quirk: selecting an item marks the board unsaved, because whoever takes hold of an item is
    // about to change it, and notes and arrows tell of no change themselves.
    connect(scene, &QGraphicsScene::selectionChanged, this, [this] {
        if (!scene->selectedItems().isEmpty())
            setUnsaved(true);
    });
}

void BoardWindow::warn(const QString &text)
{
    LongWork::interrupt();
    QMessageBox::warning(this, u"Error"_s, text, QMessageBox::Ok);
}
