// The board as the undo history keeps it.
#pragma once

#include <QList>
#include <QPointF>
#include <QString>
#include <QVariant>

#include <initializer_list>
#include <optional>
#include <ranges>

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
///
/// The list is kept in parts, and snapshots that follow each other share the parts in which they do
/// not differ; so the one more that each move of the pen makes costs one part, not the board.
class BoardSnapshot
{
public:
    BoardSnapshot() = default;
    BoardSnapshot(std::initializer_list<ItemState> states);

    bool isEmpty() const { return parts.isEmpty(); }
    qsizetype size() const;
    const ItemState &at(qsizetype index) const;
    /// All states, in their order. The snapshot has to outlive what it returns.
    auto states() const { return std::views::join(parts); }

    /// Adds \a state below all others.
    void append(const ItemState &state);

private:
    using Part = QList<ItemState>; // never empty
    static constexpr qsizetype partSize = 64; // a part that has grown to twice of it is split

    friend class BoardRecorder;
    friend bool snapshotsEqual(const BoardSnapshot &newer, const BoardSnapshot &top);

    QList<Part> parts;
};

/// How the history keeps \a item; nothing when it is no board item.
std::optional<ItemState> stateOf(const QGraphicsItem *item);

/// Records the board items of \a scene; items of other classes are left out.
BoardSnapshot takeSnapshot(const QGraphicsScene &scene);

/// Whether both snapshots show the same board: the same items in the same order.
bool snapshotsEqual(const BoardSnapshot &newer, const BoardSnapshot &top);

/// Whether \a one and \a other are the same to the last bit, where snapshotsEqual() tolerates what
/// computing leaves over. Pictures are the same when they share their pixels.
bool areSame(const ItemState &one, const ItemState &other);

/// Makes the item that \a state describes. The caller owns it. Null when the kind is unknown or the
/// picture is empty.
QGraphicsItem *restoreItem(const ItemState &state);

/// Replaces all items of \a scene by those that \a snapshot describes.
void restoreSnapshot(QGraphicsScene &scene, const BoardSnapshot &snapshot);
