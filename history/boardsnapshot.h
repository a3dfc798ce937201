#pragma once

#include <QList>
#include <QPointF>
#include <QString>
#include <QVariant>

class QGraphicsItem;
class QGraphicsScene;

/// One board item as the undo history keeps it.
///
/// Only the kind, the position and one value are kept: a stroke's path and colour, a note's
/// colour, an arrow's line, the picture that an image shows. A restored item has the defaults for
/// everything else (a note its placeholder text, a stroke and an arrow their width of 2). This
/// loss is wanted: two states that differ in nothing else count as the same state.
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

/// Makes the item that \a state describes. The caller owns it. Null when the kind is unknown or
/// the picture is empty.
QGraphicsItem *restoreItem(const ItemState &state);
