// The text on a sticky note.
#pragma once

#include <QGraphicsTextItem>

/// A text that can be edited. Pasting leaves it as it is where the clipboard holds nothing at all, as that of
/// X11 does when the program that was copied from has ended: some versions of the toolkit fail there.
class NoteText : public QGraphicsTextItem
{
public:
    using QGraphicsTextItem::QGraphicsTextItem;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
