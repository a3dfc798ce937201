// The way back to the home window: the question whether to save, and the emptying of the board.
#include "board/boardwindow.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

void BoardWindow::closeBoard()
{
    // Quirk: a board with elements on it asks about unsaved changes even when it was just saved,
    // because one question too many costs less than a lesson; only an empty board goes at once.
    if (!unsaved && scene->items().isEmpty()) {
        resetBoard();
        return;
    }

    QMessageBox box(this);
    box.setWindowTitle(u"Guardar cambios"_s);
    box.setText(u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s);
    box.setIcon(QMessageBox::Question);
    // Quirk: of this box only the three buttons can be translated, not its title and its question,
    // because the program's own texts are Spanish and short words are what other languages begin with.
    const auto *const yes = box.addButton(tr("Sí"), QMessageBox::YesRole);
    box.addButton(tr("No"), QMessageBox::NoRole);
    const auto *const cancel = box.addButton(tr("Cancelar"), QMessageBox::RejectRole);
    box.exec();

    if (box.clickedButton() == cancel)
        return;
    // Quirk: after "Sí" the board closes even when it could not be saved, because who answers the
    // question wants to leave; the failure has been told.
    if (box.clickedButton() == yes)
        saveBoard();
    resetBoard();
}

void BoardWindow::resetBoard()
{
    // Quirk: closing a board keeps the undo history, the tool and the presentation for the next one,
    // because one window serves every board and only what is on the canvas is cleared.
    scene->clear();
    currentFilePath.clear();
    // Quirk: the first board of a run is named "Pizarra1.vrtz" and every later one "Pizarra1.vtrz",
    // because the form and the closing spell the name differently, and people know both.
    showBoardName(u"Pizarra1.vtrz"_s);
    setUnsaved(false);
    if (homeWindow)
        homeWindow->show();
    // Quirk: closing the board through the window's frame asks nothing and does not come back to the
    // home window, because only its own button runs this flow.
    close();
}
