#include "board/boardwindow.h"

#include "items/arrowlineitem.h"
#include "items/freedrawitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "storage/boarddocument.h"
#include "storage/boardfile.h"

#include "ui_boardwindow.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

// Saving the board to its file and opening boards.

namespace {

/// Marks the board unsaved when \a item, if it is an \c Item, tells that it was modified.
template <typename Item> void watchAs(QGraphicsItem *item, BoardWindow *window)
{
    if (auto *const watched = dynamic_cast<Item *>(item)) {
        QObject::connect(watched, &Item::itemModified, window,
                         [window] { window->setUnsaved(true); });
    }
}

/// The same for whichever of \c Items it is.
template <typename... Items> void watch(QGraphicsItem *item, BoardWindow *window)
{
    (watchAs<Items>(item, window), ...);
}

} // namespace

void BoardWindow::saveBoardAs()
{
    QString path = QFileDialog::getSaveFileName(this, u"Guardar proyecto como"_s, QDir::homePath(),
                                                u"Orvane Plumara (*.vtrz)"_s);
    if (path.isEmpty())
        return;
    // Case-sensitive on purpose: "plan.VTRZ" becomes "plan.VTRZ.vtrz".
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
    showFileName(path);
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
    scene->clear();
    const QJsonArray elements = elementsOf(contents.document);
    for (const auto &element : elements) {
        auto *const item = itemFromElement(element.toObject()).release();
        if (!item)
            continue;
        watch<StickyNoteItem, FreeDrawItem, ArrowLineItem, ResizablePixmapItem>(item, this);
        scene->addItem(item);
    }

    currentFilePath = path;
    setUnsaved(false);
    showFileName(path);
}

void BoardWindow::showFileName(const QString &path)
{
    ui->NombreProyectoTxt->setText(QFileInfo(path).fileName());
}
