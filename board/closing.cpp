// The way back to the home window: the question whether to save, and the emptying of the board.
#include "board/boardwindow.h"

#include "look/windowplace.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

void BoardWindow::closeBoard()
{
    switch (askHowToLeave()) {
    case Leaving::Stay:
        return;
    case Leaving::Save:
        // Quirk: after "Sí" the board closes even when it could not be saved, because whoever answers
        // is leaving; a failed write has been reported, and cancelling the dialog counts as "No".
        saveBoard();
        break;
    case Leaving::Discard:
        break;
    }
    resetBoard();
}

/// Asks what is to become of the board, unless it is empty and unchanged.
BoardWindow::Leaving BoardWindow::askHowToLeave()
{
    // Quirk: a saved board with elements on it is asked for unsaved changes all the same, because
    // one question too many costs less than a lesson.
    if (!unsaved && scene->items().isEmpty())
        return Leaving::Discard;

    QMessageBox box(this);
    box.setWindowTitle(u"Guardar cambios"_s);
    box.setText(u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s);
    box.setIcon(QMessageBox::Question);
    // Quirk: of the question at closing only the three buttons go through translation, because its
    // title and its text are plain texts of a program that is Spanish throughout.
    const auto *const yes = box.addButton(tr("Sí"), QMessageBox::YesRole);
    box.addButton(tr("No"), QMessageBox::NoRole);
    const auto *const cancel = box.addButton(tr("Cancelar"), QMessageBox::RejectRole);
    box.exec();

    // Quirk: an answer that is none of the three counts as "No", because nothing but "Cancelar"
    // keeps the board open.
    if (box.clickedButton() == cancel)
        return Leaving::Stay;
    return box.clickedButton() == yes ? Leaving::Save : Leaving::Discard;
}

void BoardWindow::resetBoard()
{
    // Quirk: the next board begins with the undo history, the tool and the presentation of the
    // closed one, because one window serves every board and closing clears only what is on it.
    scene->clear();
    scrollToCorner();
    currentFilePath.clear();
    // Quirk: the first board of a run is named "Pizarra1.vrtz" and every later one "Pizarra1.vtrz",
    // because the form and this line spell the name differently; both have been seen for long.
    showBoardName(u"Pizarra1.vtrz"_s);
    setUnsaved(false);
    // Quirk: a board that was just saved is not in the list yet, because the home window is only
    // shown and makes its list at the start and when a row of it is opened.
    if (homeWindow) {
        takePlaceOf(*homeWindow, *this);
        homeWindow->show();
    }
    close();
}
