// Saves the board to its file and opens boards.
#include "board/boardwindow.h"

#include "items/boarditems.h"
#include "storage/boarddocument.h"
#include "storage/boardfile.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Marks the board in \a window unsaved when \a item tells that it was modified.
void watch(QGraphicsItem *item, BoardWindow *window)
{
    visitBoardItem(item, [window]<typename Item>(const Item &boardItem) {
        QObject::connect(&boardItem, &Item::itemModified, window,
                         [window] { window->setUnsaved(true); });
    });
}

} // namespace

void BoardWindow::saveBoardAs()
{
    // Quirk: saving and opening call the same files "Orvane Plumara (*.vtrz)" and "Pizarra de Plumara
    // (*.vtrz)", because each dialog has its own text, and only the one for opening is translated.
    // Quirk: the dialog for saving starts in the home folder and not among the recent boards, because
    // boards may lie anywhere; only those in the data folder are listed.
    QString path = QFileDialog::getSaveFileName(this, u"Guardar proyecto como"_s, QDir::homePath(),
                                                u"Orvane Plumara (*.vtrz)"_s);
    if (path.isEmpty())
        return;
    // Quirk: "plan.VTRZ" is saved as "plan.VTRZ.vtrz", because only the extension in small letters
    // is the program's own.
    // Quirk: a completed name replaces a file of that name without a question, because the dialog
    // asks about the name as it was typed only.
    const QString extension = u".vtrz"_s;
    if (!path.endsWith(extension))
        path += extension;
    writeBoardFile(path, true);
}

void BoardWindow::saveBoard()
{
    if (currentFilePath.isEmpty())
        saveBoardAs();
    else
        writeBoardFile(currentFilePath, false);
}

void BoardWindow::writeBoardFile(const QString &path, bool adoptPath)
{
    // The document is complete before the file is opened, and with that emptied.
    switch (writeDocument(path, buildBoardDocument(*scene))) {
    case BoardFileWriting::CannotOpen:
        warn(u"No se pudo guardar el archivo."_s);
        return;
    case BoardFileWriting::WriteFailed:
        warn(u"Error al escribir en el archivo."_s);
        return;
    case BoardFileWriting::Written:
        break;
    }

    if (adoptPath)
        currentFilePath = path;
    setUnsaved(false);
    showBoardName(QFileInfo(path).fileName());
}

void BoardWindow::loadBoard(const QString &path)
{
    const BoardFileContents contents = readDocument(path);
    switch (contents.status) {
    case BoardFileContents::Status::CannotOpen:
        warn(u"No se pudo abrir el archivo."_s);
        return;
    case BoardFileContents::Status::NoBoard:
        warn(u"El archivo no tiene un formato válido."_s);
        return;
    case BoardFileContents::Status::Read:
        break;
    }

    // Only now that the document is accepted does the present board go.
    // Quirk: undoing after a board was opened brings back the board before it, because opening keeps
    // the undo history; it keeps the tool, too.
    scene->clear();
    // Quirk: an opened board turns the order of items of one kind round, because the file lists the
    // topmost first and each item goes on top of those before it.
    for (auto &item : itemsOf(contents.document)) {
        watch(item.get(), this);
        scene->addItem(item.release());
    }

    currentFilePath = path;
    setUnsaved(false);
    showBoardName(QFileInfo(path).fileName());
}
