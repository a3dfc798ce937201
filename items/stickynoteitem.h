// The sticky note: a paper on the board with a text to edit.
#pragma once

#include <QGraphicsObject>
#include <QGraphicsTextItem>
#include <QPointer>

/// A square paper note of 300 × 300 scene units with an editable plain text on it.
///
/// The person drags it, edits its text in place and changes its colour from its context menu. It
/// belongs to the scene that it is added to; the text item is its graphics child.
class StickyNoteItem : public QGraphicsObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(StickyNoteItem)

public:
    // A fixed underlying type, because board files may hold any number here.
    enum NoteColor : int { Yellow = 0, LightBlue = 1, Red = 2, Pink = 3, Orange = 4, Grey = 5 };
    Q_ENUM(NoteColor)

    /// Makes a yellow note with the placeholder text, at z value 1.
    explicit StickyNoteItem(QGraphicsItem *parent = nullptr);

    /// A value that is none of the six colours is kept; the paper then shows the toolkit's own
    /// gradient from black to white.
    void setNoteColor(StickyNoteItem::NoteColor color);
    StickyNoteItem::NoteColor noteColor() const { return noteColor_; }

    /// Until the note has had the keyboard focus once, a text of any length is taken; from then on
    /// it is cut to 300 characters.
    void setText(const QString &text);
    QString getText() const;

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

signals:
    /// Emitted for each change of position, transform, rotation or scale of an item that asks for
    /// such notifications; notes do not.
    void itemModified();

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent *event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    void limitText();

    QPointer<QGraphicsTextItem> textItem;
    bool dragging = false;
    QPointF lastScenePos;
    bool placeholderActive = true;
    QString placeholderText = QStringLiteral("Agregar texto...");
    NoteColor noteColor_ = Yellow;
};
