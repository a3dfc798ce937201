#include "board/boardwindow.h"

#include "board/boardgeometry.h"
#include "board/windowlook.h"
#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"

#include "ui_boardwindow.h"

#include <QDateTime>
#include <QFileInfo>
#include <QMessageBox>
#include <QPropertyAnimation>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int clockInterval = 1000; // ms

} // namespace

BoardWindow::BoardWindow(MainWindow *home, QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::BoardWindow>())
    , homeWindow(home)
{
    ui->setupUi(this);
    ui->AdviseFS->hide();
    buildScene();
    buildWindow();
    startClock();
    ui->PizarraMain->installEventFilter(this);
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
    ui->PizarraMain->setScene(scene);
    ui->PizarraMain->setRenderHint(QPainter::Antialiasing);
    scene->setSceneRect(BoardGeometry::board);
}

void BoardWindow::buildWindow()
{
    applyWindowLook(*this);
    setWindowFlags(Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint);
    // From here on the whole application formats dates and numbers as in Mexico.
    QLocale::setDefault(locale);
    setFixedSize(size());
    setFocusPolicy(Qt::NoFocus);
}

void BoardWindow::showEvent(QShowEvent *event)
{
    // The board stands for itself while the home window is hidden. On Windows a window that belongs
    // to another has no button in the task bar and goes with it when that one is minimised. And the
    // toolkit does not end the program with a window that belongs to another: closed by the window
    // manager, the board would leave an invisible program that keeps the next one from starting.
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
        {ui->GuardarComo, &BoardWindow::saveBoardAs},
        {ui->CloseBoardBtn, &BoardWindow::closeBoard},
    };
    for (const auto &click : clicks)
        connect(click.button, &QPushButton::clicked, this, click.slot);

    connect(scene, &QGraphicsScene::sceneRectChanged, this, &BoardWindow::captureSnapshot);
    connect(scene, &QGraphicsScene::changed, this, &BoardWindow::captureSnapshot);
    connect(scene, &QGraphicsScene::changed, this, &BoardWindow::repaintArrowHeads);
    // Selecting an item is enough to mark the board unsaved; this is wanted.
    connect(scene, &QGraphicsScene::selectionChanged, this, [this] {
        if (!scene->selectedItems().isEmpty())
            setUnsaved(true);
    });
}

/// Has the view paint more than what the scene says has changed: arrow heads reach outside their
/// items' bounding rectangles, and what is left of a moved or deleted one would stay to be seen.
void BoardWindow::repaintArrowHeads(const QList<QRectF> &changed)
{
    // The heads that are to vanish were there at the last change.
    const qreal reachBefore = std::exchange(arrowReach, 0);
    const auto items = scene->items();
    for (const auto *item : items) {
        if (const auto *const arrow = dynamic_cast<const ArrowLineItem *>(item))
            arrowReach = std::max(arrowReach, arrow->headReach());
    }
    const qreal reach = std::max(arrowReach, reachBefore);
    if (reach == 0)
        return;
    QList<QRectF> grown;
    grown.reserve(changed.size());
    for (const auto &region : changed)
        grown.append(region.adjusted(-reach, -reach, reach, reach));
    ui->PizarraMain->updateScene(grown);
}

void BoardWindow::setUnsaved(bool value)
{
    unsaved = value;
    updateTitleLabel();
}

void BoardWindow::updateTitleLabel()
{
    if (currentFilePath.isEmpty())
        return;
    QString text = QFileInfo(currentFilePath).fileName();
    if (unsaved)
        text += u"* (Sin guardar)"_s;
    ui->NombreProyectoTxt->setText(text);
}

void BoardWindow::warn(const QString &text)
{
    QMessageBox::warning(this, u"Error"_s, text, QMessageBox::Ok);
}
