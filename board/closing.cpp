#include "board/boardwindow.h"

#include "home/mainwindow.h"

#include "ui_boardwindow.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

// The way back to the home window, of which only that it can be shown is known here.

void BoardWindow::closeBoard()
{
    // A board with elements is asked for even when it is saved; this is wanted.
    if (!unsaved && scene->items().isEmpty()) {
        resetBoard();
        return;
    }

    QMessageBox box(this);
    box.setWindowTitle(u"Guardar cambios"_s);
    box.setText(u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s);
    box.setIcon(QMessageBox::Question);
    const auto *const yes = box.addButton(tr("Sí"), QMessageBox::YesRole);
    box.addButton(tr("No"), QMessageBox::NoRole);
    const auto *const cancel = box.addButton(tr("Cancelar"), QMessageBox::RejectRole);
    box.exec();

    if (box.clickedButton() == cancel)
        return;
    if (box.clickedButton() == yes)
        saveBoard();
    // Whatever became of the save, the board closes; this is wanted.
    resetBoard();
}

void BoardWindow::resetBoard()
{
    scene->clear();
    currentFilePath.clear();
    // Spelt differently from the name that the first board of a run starts with; both are wanted.
    ui->NombreProyectoTxt->setText(u"Pizarra1.vtrz"_s);
    setUnsaved(false);
    if (homeWindow)
        homeWindow->show();
    close();
}
