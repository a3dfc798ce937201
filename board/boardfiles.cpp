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
#include <QJsonArray>
#include <QMessageBox>

using namespace Qt::Literals::StringLiterals;

// Saving the board to its file and opening boards.

namespace {

/// Calls \a changed when \a item, if it is an \c Item, tells that it was modified.
template <typename Item, typename Function>
void watch(QGraphicsItem *item, BoardWindow *window, Function changed)
{
    if (auto *const watched = dynamic_cast<Item *>(item))
        QObject::connect(watched, &Item::itemModified, window, changed);
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
    switch (::writeBoardFile(path, buildBoardDocument(*scene))) {
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
    const BoardFileContents contents = readBoardFile(path);
    switch (contents.status) {
    case BoardFileContents::CannotOpen:
        warn(u"No se pudo abrir el archivo."_s);
        return;
    case BoardFileContents::NoBoard:
        warn(u"El archivo no tiene un formato válido."_s);
        return;
    case BoardFileContents::Read:
        break;
    }

    // Only now that the document is accepted does the present board go.
    scene->clear();
    const auto markUnsaved = [this] { setUnsaved(true); };
    const QJsonArray elements = contents.document.value("items"_L1).toArray();
    for (const auto &element : elements) {
        auto *const item = itemFromElement(element.toObject()).release();
        if (!item)
            continue;
        watch<StickyNoteItem>(item, this, markUnsaved);
        watch<FreeDrawItem>(item, this, markUnsaved);
        watch<ArrowLineItem>(item, this, markUnsaved);
        watch<ResizablePixmapItem>(item, this, markUnsaved);
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

void BoardWindow::warn(const QString &text)
{
    QMessageBox::warning(this, u"Error"_s, text, QMessageBox::Ok);
}
