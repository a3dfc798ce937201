// The tools: how the window shows each mode, and what the pointer does on the canvas in it.
#include "board/boardwindow.h"

#include "board/picturefile.h"
#include "items/boarditems.h"

#include "ui_boardwindow.h"

#include <QCursor>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMouseEvent>

#include <algorithm>
#include <iterator>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int penWidth = 2; // scene units

// As long as a stroke has fewer points, looking at each move takes less time than there is between two
// of a fast mouse. What a move of the pen costs grows with the stroke.
constexpr int fewPoints = 500;

/// How the window shows the mode that is on.
struct ModeAppearance
{
    ToolMode mode;
    const char16_t *title;
    Qt::CursorShape cursor;
    QPushButton *Ui::BoardWindow::*button;
};

// Quirk: the window says "Modo Linea" without the accent that the tool tip has, because that is the
// title's spelling, by which tools on the desktop find the window.
constexpr ModeAppearance appearances[] = {
    {ToolMode::Cursor, u"Orvane Plumara - Modo Pizarra", Qt::ArrowCursor,
     &Ui::BoardWindow::ModoCursor},
    {ToolMode::Note, u"Orvane Plumara - Modo PostIt de cuadro de texto", Qt::IBeamCursor,
     &Ui::BoardWindow::ModoPostIt},
    {ToolMode::Pen, u"Orvane Plumara - Modo Lápiz", Qt::CrossCursor, &Ui::BoardWindow::ModoLapiz},
    {ToolMode::Line, u"Orvane Plumara - Modo Linea", Qt::CrossCursor, &Ui::BoardWindow::ModoLinea},
    {ToolMode::Image, u"Orvane Plumara - Modo Imagen", Qt::BusyCursor,
     &Ui::BoardWindow::ModoImagen},
    {ToolMode::Eraser, u"Orvane Plumara - Modo Borrador", Qt::PointingHandCursor,
     &Ui::BoardWindow::ModoBorrador},
};

// Whether the eraser takes an item away, said for each kind.
constexpr bool eraserTakes(const FreeDrawItem &)
{
    return true;
}
constexpr bool eraserTakes(const StickyNoteItem &)
{
    return true;
}
constexpr bool eraserTakes(const ArrowLineItem &)
{
    return true;
}
constexpr bool eraserTakes(const ResizablePixmapItem &)
{
    return true;
}

bool isErasable(const QGraphicsItem *item)
{
    bool erasable = false;
    const bool known = visitBoardItem(
        item, [&erasable](const auto &boardItem) { erasable = eraserTakes(boardItem); });
    // Quirk: the eraser takes a bare picture of the toolkit but no bare path or line, because it
    // asks for the class of pictures and for the program's own strokes and arrows.
    return known ? erasable : dynamic_cast<const QGraphicsPixmapItem *>(item) != nullptr;
}

} // namespace

void BoardWindow::enterMode(ToolMode mode)
{
    // Quirk: a tool chosen in the middle of a gesture leaves the stroke or the arrow unfinished,
    // because choosing a tool only chooses it; back in its mode, the pointer goes on with it.
    toolMode = mode;
    const auto *const shown = std::ranges::find(appearances, mode, &ModeAppearance::mode);
    Q_ASSERT(shown != std::end(appearances));
    setWindowTitle(QString::fromUtf16(shown->title));
    ui->PizarraMain->setCursor(shown->cursor);
    // The view gives its viewport a cursor when the pointer leaves an arrow that has one; it would
    // hide the mode's.
    ui->PizarraMain->viewport()->unsetCursor();
    for (const auto &other : appearances)
        (ui.get()->*other.button)->setChecked(other.mode == mode);
}

void BoardWindow::setCursorMode()
{
    enterMode(ToolMode::Cursor);
    ui->PizarraMain->setDragMode(QGraphicsView::NoDrag);
}

void BoardWindow::setPostItMode()
{
    enterMode(ToolMode::Note);
}

void BoardWindow::setPenMode()
{
    enterMode(ToolMode::Pen);
}

void BoardWindow::setLineMode()
{
    enterMode(ToolMode::Line);
}

void BoardWindow::setEraseMode()
{
    enterMode(ToolMode::Eraser);
}

void BoardWindow::setImageMode()
{
    enterMode(ToolMode::Image);
    const QString path = QFileDialog::getOpenFileName(this, u"Seleccionar imagen"_s, QString(),
                                                      u"Imágenes (*.png *.jpg *.jpeg)"_s);
    if (!path.isEmpty()) {
        const QPixmap pixmap = readPicture(path);
        if (pixmap.isNull())
            warn(u"No se pudo cargar la imagen seleccionada."_s);
        else
            insertImage(pixmap);
    }
    setCursorMode();
}

void BoardWindow::insertImage(const QPixmap &pixmap)
{
    auto *const image = new ResizablePixmapItem(pixmap);
    // Half sizes are whole numbers: the picture's pixels stay on the board's.
    const QPoint half(pixmap.width() / 2, pixmap.height() / 2);
    image->setPos(scene->sceneRect().center() - half);
    scene->addItem(image);
    image->setSelected(true);
}

bool BoardWindow::eventFilter(QObject *watched, QEvent *event)
{
    const auto pass = [&] { return QMainWindow::eventFilter(watched, event); };
    const QEvent::Type type = event->type();
    if (watched == ui->Presentar && type == QEvent::Wheel) {
        // Who scrolls past the list does not want to present.
        event->ignore();
        return true;
    }
    if (watched != ui->PizarraMain
        || (type != QEvent::MouseButtonPress && type != QEvent::MouseMove
            && type != QEvent::MouseButtonRelease)) {
        return pass();
    }

    const auto *const mouse = static_cast<QMouseEvent *>(event);
    const QPointF scenePoint = ui->PizarraMain->mapToScene(mouse->position().toPoint());
    if (type == QEvent::MouseMove)
        return canvasMoved(scenePoint, mouse->buttons()) || pass();
    if (mouse->button() != Qt::LeftButton)
        return pass();
    if (type == QEvent::MouseButtonPress)
        return canvasPressed(scenePoint) || pass();
    if (canvasReleased(scenePoint))
        return true;
    // The mode was changed in the middle of a gesture: the rest of the window must not stay cut
    // off from the mouse.
    if (QWidget::mouseGrabber() == ui->PizarraMain)
        releaseCanvas();
    return pass();
}

bool BoardWindow::canvasPressed(const QPointF &scenePoint)
{
    switch (toolMode) {
    case ToolMode::Pen:
        grabCanvas();
        everyMove.emplace();
        strokePath = QPainterPath(scenePoint);
        // Quirk: a click of the pen leaves a stroke that is neither seen nor saved, because a
        // stroke gets its path with the first move; it is a step of the history, and the board is
        // not empty.
        currentStroke = new FreeDrawItem;
        currentStroke->setColor(Qt::black);
        currentStroke->setWidth(penWidth);
        scene->addItem(currentStroke);
        return true;
    case ToolMode::Note: {
        auto *const note = new StickyNoteItem;
        note->setPos(scenePoint);
        note->setNoteColor(StickyNoteItem::Yellow);
        scene->addItem(note);
        return true;
    }
    case ToolMode::Line:
        // Quirk: a click of the line tool leaves an arrow of no length, because the arrow is there
        // from the press on.
        currentLine = new ArrowLineItem(scenePoint, scenePoint);
        scene->addItem(currentLine);
        lineStart = scenePoint;
        grabCanvas();
        return true;
    case ToolMode::Eraser:
        eraseStart = scenePoint;
        grabCanvas();
        return true;
    case ToolMode::Cursor:
    case ToolMode::Image:
        return false;
    }
    Q_UNREACHABLE();
}

bool BoardWindow::canvasMoved(const QPointF &scenePoint, Qt::MouseButtons buttons)
{
    if (toolMode == ToolMode::Pen && currentStroke) {
        strokePath.lineTo(scenePoint);
        currentStroke->setPath(strokePath);
        if (strokePath.elementCount() > fewPoints)
            everyMove.reset();
        return true;
    }
    if (toolMode == ToolMode::Line && currentLine) {
        currentLine->setLine({lineStart, scenePoint});
        return true;
    }
    if (toolMode == ToolMode::Eraser && buttons.testFlag(Qt::LeftButton)) {
        // Quirk: erasing by a drag up, to the left or straight along an axis takes less than the
        // eye expects, because the rectangle goes to the toolkit as it is, with a negative size or
        // none.
        // Quirk: an eraser inside of a circle takes the circle, because the toolkit's shape of a
        // stroke holds all that the stroke encloses.
        const QPointF moved = scenePoint - eraseStart;
        erase(scene->items(QRectF(eraseStart, QSizeF(moved.x(), moved.y())),
                           Qt::IntersectsItemShape, Qt::DescendingOrder));
        return true;
    }
    return false;
}

bool BoardWindow::canvasReleased(const QPointF &scenePoint)
{
    if (toolMode == ToolMode::Line && currentLine)
        currentLine->setLine({lineStart, scenePoint});
    // Quirk: an eraser that is released without a press erases where the last press was, because
    // that place is kept.
    if (toolMode == ToolMode::Eraser && scenePoint == eraseStart)
        erase(scene->items(scenePoint, Qt::IntersectsItemShape, Qt::DescendingOrder));
    return endGesture();
}

/// Ends what the tool is doing with all that it has done. Returns false when it is doing nothing.
bool BoardWindow::endGesture()
{
    if (toolMode == ToolMode::Pen && currentStroke) {
        currentStroke = nullptr;
    } else if (toolMode == ToolMode::Line && currentLine) {
        currentLine->setFlag(QGraphicsItem::ItemIsMovable);
        currentLine->setFlag(QGraphicsItem::ItemIsSelectable);
        currentLine = nullptr;
    } else if (toolMode != ToolMode::Eraser) {
        return false;
    }
    releaseCanvas();
    // Quirk: drawing on an opened board does not mark it unsaved, because recording a step touches
    // no mark; closing asks all the same.
    captureSnapshot();
    // Quirk: pen, line and eraser serve for one gesture while notes stay on, because after a
    // gesture the hand usually goes on to move or edit, and notes come in rows.
    setCursorMode();
    return true;
}

/// Ends a gesture whose release will not come: what was drawn or moved stays as it is now.
void BoardWindow::breakOffGesture()
{
    if (QWidget::mouseGrabber() == ui->PizarraMain) {
        // A tool that was chosen meanwhile stays.
        if (!endGesture())
            releaseCanvas();
        currentStroke = nullptr;
        currentLine = nullptr;
    }
    if (scene->mouseGrabberItem() && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton))
        letGoOfItem();
}

/// Lets go of the item that the pointer holds, as if the button were released where the pointer is.
void BoardWindow::letGoOfItem()
{
    auto *const viewport = ui->PizarraMain->viewport();
    const QPointF place = QCursor::pos();
    QMouseEvent release(QEvent::MouseButtonRelease, viewport->mapFromGlobal(place), place,
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &release);
}

void BoardWindow::grabCanvas()
{
    ui->PizarraMain->grabMouse();
}

void BoardWindow::releaseCanvas()
{
    ui->PizarraMain->releaseMouse();
    everyMove.reset();
}

void BoardWindow::erase(const QList<QGraphicsItem *> &items)
{
    // Topmost first: a note's text child comes, and is skipped, before the note that owns it.
    for (auto *item : items) {
        if (!isErasable(item))
            continue;
        scene->removeItem(item);
        delete item;
        setUnsaved(true);
    }
}
