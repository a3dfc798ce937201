// The board's name at the top of its window, with the marker of unsaved changes after it.
#include "board/boardwindow.h"

#include "ui_boardwindow.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

QString unsavedMarker()
{
    return u"* (Sin guardar)"_s;
}

} // namespace

/// However long the name is, the marker after it is seen.
void BoardWindow::keepMarkerInSight()
{
    ui->NombreProyectoTxt->setKeptEnding(unsavedMarker());
}

void BoardWindow::setUnsaved(bool value)
{
    unsaved = value;
    updateTitleLabel();
}

void BoardWindow::updateTitleLabel()
{
    // Quirk: a new board never shows that it is unsaved, because the marker follows the name of a
    // file and a new board has none.
    if (currentFilePath.isEmpty())
        return;
    QString text = QFileInfo(currentFilePath).fileName();
    if (unsaved)
        text += unsavedMarker();
    showBoardName(text);
}

void BoardWindow::showBoardName(const QString &name)
{
    ui->NombreProyectoTxt->setText(name);
}
