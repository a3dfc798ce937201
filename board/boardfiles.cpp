// Saves the board to its file and opens boards.
#include "board/boardwindow.h"

#include "board/longwork.h"
#include "board/scarcememory.h"
#include "items/boarditems.h"
#include "storage/boarddocument.h"
#include "storage/boardfile.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

// Quirk: a change of a drawn or a restored item does not mark the board unsaved, because only the
// items of an opened file are connected here; undo and redo mark the board themselves.

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
    saveElsewhere();
}

void BoardWindow::saveBoard()
{
    save();
}

/// Asks for a file name and saves the board there. Returns whether it is saved, as the next two do.
bool BoardWindow::saveElsewhere()
{
    // Quirk: the dialogs for saving and for opening name the same files differently, because each
    // has its own filter text, "Orvane Plumara (*.vtrz)" and "Pizarra de Plumara (*.vtrz)".
    // Quirk: the dialog for saving starts in the home folder and not among the recent boards,
    // because a board may lie anywhere; the list shows only those of the data folder.
    QString path = QFileDialog::getSaveFileName(this, u"Guardar proyecto como"_s, QDir::homePath(),
                                                u"Orvane Plumara (*.vtrz)"_s);
    if (path.isEmpty())
        return false;
    // Quirk: "plan.VTRZ" is saved as "plan.VTRZ.vtrz", because the extension is compared exactly,
    // so that every board that the program names ends in the same letters.
    // Quirk: a completed name replaces a file of that name without a question, because the dialog
    // asks only about the name as it was typed.
    const QString extension = u".vtrz"_s;
    if (!path.endsWith(extension))
        path += extension;
    return writeBoardFile(path, true);
}

bool BoardWindow::save()
{
    return currentFilePath.isEmpty() ? saveElsewhere() : writeBoardFile(currentFilePath, false);
}

bool BoardWindow::writeBoardFile(const QString &path, bool adoptPath)
{
    std::optional<LongWork> work;
    QByteArray document;
    auto writing = BoardFileWriting::CannotOpen;
    const bool fits = fitsInMemory([&] {
        work.emplace(expectedSize(*scene));
        document = buildBoardDocument(*scene);
    });
    // The document is complete before the file is opened, and with that emptied.
    if (fits)
        writing = writeDocument(path, document);
    switch (writing) {
    case BoardFileWriting::CannotOpen:
        warn(u"No se pudo guardar el archivo."_s);
        return false;
    case BoardFileWriting::WriteFailed:
        warn(u"Error al escribir en el archivo."_s);
        return false;
    case BoardFileWriting::Written:
        break;
    }

    if (adoptPath)
        currentFilePath = path;
    setUnsaved(false);
    showBoardName(QFileInfo(path).fileName());
    return true;
}

/// The items of the board file \a path; nothing, after a warning, where there is no board in it.
std::optional<BoardWindow::Items> BoardWindow::readBoard(const QString &path)
{
    const LongWork work(QFileInfo(path).size());
    // Of a board that does not fit into memory, this is all that becomes of it.
    auto status = BoardFileContents::Status::CannotOpen;
    Items items;
    fitsInMemory([&] {
        BoardFileContents contents = readDocument(path);
        items = itemsOf(std::move(contents.document));
        status = contents.status;
    });
    switch (status) {
    case BoardFileContents::Status::CannotOpen:
        warn(u"No se pudo abrir el archivo."_s);
        return std::nullopt;
    case BoardFileContents::Status::NoBoard:
        warn(u"El archivo no tiene un formato válido."_s);
        return std::nullopt;
    case BoardFileContents::Status::Read:
        break;
    }
    return items;
}

void BoardWindow::loadBoard(const QString &path)
{
    const LongWork work(QFileInfo(path).size());
    auto items = readBoard(path);
    if (!items)
        return;
    // Quirk: opening a board keeps the tool that was chosen, because the tool belongs to the hand
    // and not to the board.
    // Only now that the document is accepted, and its items are there, does the present board go.
    // Quirk: undoing after an opening brings the board before it back under the name of the opened
    // file, because opening keeps the undo history; a board opened by mistake costs nothing so.
    scene->clear();
    // Quirk: among items of one kind, the topmost of a saved board is the lowest of the opened one,
    // because a file lists the topmost first and each item goes on top of those before it.
    for (auto &item : *items) {
        watch(item.get(), this);
        scene->addItem(item.release());
    }
    scrollToCorner();

    currentFilePath = path;
    setUnsaved(false);
    showBoardName(QFileInfo(path).fileName());
}

void BoardWindow::openInstead(const QString &path)
{
    // Before anybody is asked for the present board: what is no board does not take its place.
    if (!readBoard(path))
        return;
    switch (askHowToLeave()) {
    case Leaving::Stay:
        return;
    case Leaving::Save:
        // Quirk: after "Sí" a board that could not be saved gives way to the home window but not to a
        // board that is named from outside, because who opens another board is not leaving.
        if (!save())
            return;
        break;
    case Leaving::Discard:
        break;
    }
    // Once more from the file, in which the present board may just have been saved.
    loadBoard(path);
}

bool BoardWindow::shows(const QString &path) const
{
    const QFileInfo file(path);
    return file.exists() && file == QFileInfo(currentFilePath);
}
