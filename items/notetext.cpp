// Keeps the toolkit from pasting nothing into the text of a note.
#include "items/notetext.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>

namespace {

/// From where the toolkit pastes at \a press, which asks for it.
QClipboard::Mode pasteSource(const QKeyEvent &press)
{
    const bool isOfSelection = QGuiApplication::clipboard()->supportsSelection()
        && press.key() == Qt::Key_Insert
        && press.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    return isOfSelection ? QClipboard::Selection : QClipboard::Clipboard;
}

bool holdsNothing(QClipboard::Mode mode)
{
    const auto *const data = QGuiApplication::clipboard()->mimeData(mode);
    return data && data->formats().isEmpty();
}

} // namespace

void NoteText::keyPressEvent(QKeyEvent *event)
{
    if (!event->matches(QKeySequence::Paste) || !holdsNothing(pasteSource(*event)))
        QGraphicsTextItem::keyPressEvent(event);
}
