// The boards that the home window opens: the list of recent ones, and the two actions above it.
#include "home/mainwindow.h"

#include "board/boardwindow.h"
#include "board/longwork.h"
#include "home/projectdelegate.h"
#include "look/windowplace.h"

#include "ui_mainwindow.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QShortcut>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int InfoRole = MainWindow::ProjectDelegate::InfoRole;
constexpr int PathRole = Qt::UserRole + 1;

} // namespace

void MainWindow::showProjects()
{
    ui->listWidget->clear();

    const QDir folder(dataPath);
    if (!folder.exists())
        folder.mkpath(u"."_s);

    const QFileInfoList files =
        folder.entryInfoList({u"*.vtrz"_s}, QDir::Files | QDir::NoDotAndDotDot, QDir::Time);
    for (const QFileInfo &file : files) {
        const QString changed = QLocale().toString(file.lastModified(), u"dd/MM/yyyy hh:mm"_s);
        auto *const item = new QListWidgetItem(file.fileName());
        item->setData(InfoRole, QString(file.absolutePath() + " - "_L1 + changed));
        item->setData(PathRole, file.absoluteFilePath());
        ui->listWidget->addItem(item);
    }

    // Quirk: one click opens a board of the list, because the slot that is named after the double
    // click is connected to the click. What is disconnected is the other signal, so every run adds
    // a connection; see onProjectDoubleClicked().
    disconnect(ui->listWidget, &QListWidget::itemDoubleClicked, this,
               &MainWindow::onProjectDoubleClicked);
    connect(ui->listWidget, &QListWidget::itemClicked, this, &MainWindow::onProjectDoubleClicked);
}

void MainWindow::onProjectDoubleClicked(QListWidgetItem *item)
{
    // One click is delivered once per connection, and the first delivery deletes the item. The
    // later ones hold a dangling pointer, at whose address a row of the new list may live by now:
    // they must not touch it. The connection made first of all, in the constructor, clears the
    // mark at the start of every click. A call that no click delivers is always served.
    const bool delivered = sender() == ui->listWidget;
    if (delivered && clickServed)
        return;
    if (!item)
        return;
    const QString path = item->data(PathRole).toString();
    if (path.isEmpty())
        return;

    openBoard(path);
    showProjects();
    // Only now: opening may show a message, and so another click may come and go before.
    if (delivered)
        clickServed = true;
}

/// Has both keys for Enter open the selected row of the list while it has the keyboard.
void MainWindow::openBoardsByEnter()
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *const enter = new QShortcut(QKeySequence(key), ui->listWidget);
        enter->setContext(Qt::WidgetShortcut);
        enter->setAutoRepeat(false);
        connect(enter, &QShortcut::activated, this,
                [this] { onProjectDoubleClicked(ui->listWidget->selectedItems().value(0)); });
    }
}

void MainWindow::startProject()
{
    takePlaceOf(*board(), *this);
    board()->show();
    hide();
}

void MainWindow::openProject()
{
    // Quirk: the dialog for opening starts in the folder in which the program was started, because
    // no folder is named; the recent boards are in the list.
    const QString path = QFileDialog::getOpenFileName(this, tr("Abrir proyecto"), QString(),
                                                      tr("Pizarra de Plumara (*.vtrz)"));
    if (!path.isEmpty())
        openBoard(path);
}

/// The one board window, made when it is first asked for and kept for the life of this window.
BoardWindow *MainWindow::board()
{
    if (!boardWindow)
        boardWindow = new BoardWindow(this, this);
    return boardWindow;
}

/// Shows the board window with the board file \a path. A file that cannot be opened is reported
/// by the board window, which is shown all the same.
void MainWindow::openBoard(const QString &path)
{
    const LongWork work(QFileInfo(path).size());
    // A warning, too, stands where the person looks.
    takePlaceOf(*board(), *this);
    board()->loadBoard(path);
    // Quirk: a file that could not be opened leads to a board under that file's name, because the
    // board is named and shown whatever became of opening; it is saved to its earlier file, or
    // asks.
    board()->showBoardName(QFileInfo(path).fileName());
    board()->show();
    // A window that has just come up shows what is behind it until it is painted.
    LongWork::waitUntilPainted(*board());
    hide();
}
