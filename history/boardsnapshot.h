// The board as the undo history keeps it.
#pragma once

#include <QList>
#include <QPointF>
#include <QString>
#include <QVariant>

class QGraphicsItem;
class QGraphicsScene;

// Quirk: undo and redo forget the texts of notes, the widths of strokes, the colours and widths of
// arrows and the full size of pictures, because the history keeps one value an item, and two boards
// that differ in nothing else are one state to it.

/// One board item as the undo history keeps it.
///
/// Only the kind, the position and one value are kept: a stroke's path and colour, a note's colour,
/// an arrow's line, the picture that an image shows. A restored item has the defaults for all
/// else (a note its placeholder text, a stroke and an arrow their width of 2).
struct ItemState
{
    /// "FreeDraw", "StickyNote", "ArrowLine" or "Pixmap".
    QString type;
    /// In scene units.
    QPointF pos;
    /// std::pair<QPainterPath, QColor>, StickyNoteItem::NoteColor, QLineF or QPixmap.
    QVariant data;
};

/// The items of a board, topmost first.
using BoardSnapshot = QList<ItemState>;

/// Records the board items of \a scene; items of other classes are left out.
BoardSnapshot takeSnapshot(const QGraphicsScene &scene);

/// Whether both snapshots show the same board: the same items in the same order.
bool snapshotsEqual(const BoardSnapshot &newer, const BoardSnapshot &top);

/// Makes the item that \a state describes. The caller owns it. Null when the kind is unknown or the
/// picture is empty.
QGraphicsItem *restoreItem(const ItemState &state);

/// Replaces all items of \a scene by those that \a snapshot describes.
void restoreSnapshot(QGraphicsScene &scene, const BoardSnapshot &snapshot);
