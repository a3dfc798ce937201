// Draws the note, edits its text, drags it and offers its menu.
#include "items/stickynoteitem.h"

#include "items/geometrychange.h"
#include "items/notedocument.h"
#include "items/notetext.h"

#include <QDebug>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QLinearGradient>
#include <QMap>
#include <QMenu>
#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <iterator>

namespace {

constexpr qreal noteZ = 1.0;
constexpr qreal noteSide = 300.0; // scene units
constexpr qreal textMargin = 10.0; // scene units
constexpr qreal textWidth = noteSide - 2 * textMargin;
constexpr int fontPoints = 12;
constexpr int longestText = 300; // UTF-16 code units

struct Paper
{
    StickyNoteItem::NoteColor color;
    const char16_t *label;
    const char16_t *top;
    const char16_t *bottom;
};

constexpr Paper papers[] = {
    {StickyNoteItem::Yellow, u"🟡 Amarillo", u"#FFFCC9", u"#FFF75C"},
    {StickyNoteItem::LightBlue, u"🔵 Celeste", u"#C9F8FF", u"#5CE3FF"},
    {StickyNoteItem::Red, u"🔴 Rojo", u"#FFC9C9", u"#FF5C5C"},
    {StickyNoteItem::Pink, u"🌸 Rosado", u"#FFD9F2", u"#FF77C2"},
    {StickyNoteItem::Orange, u"🟠 Naranja", u"#FFE1C9", u"#FF9E5C"},
    {StickyNoteItem::Grey, u"⚪ Gris", u"#E0E0E0", u"#A0A0A0"},
};

// Quirk: the menu of a note lists grey first and yellow last, because a map sorts the labels by
// their characters; hands know the order by now.
QMap<QString, StickyNoteItem::NoteColor> colorsByLabel()
{
    QMap<QString, StickyNoteItem::NoteColor> colors;
    for (const auto &paper : papers)
        colors.insert(QString::fromUtf16(paper.label), paper.color);
    return colors;
}

} // namespace

StickyNoteItem::StickyNoteItem(QGraphicsItem *parent)
    : QGraphicsObject(parent)
{
    // So that the type can be found by its name, too.
    qRegisterMetaType<StickyNoteItem::NoteColor>();

    setFlag(ItemIsMovable);
    setFlag(ItemIsSelectable);
    setFlag(ItemIsFocusable);
    setZValue(noteZ);

    textItem = new NoteText(this);
    textItem->setDocument(new NoteDocument(textItem));
    textItem->setTextInteractionFlags(Qt::TextEditorInteraction);
    textItem->setDefaultTextColor(Qt::black);
    textItem->setFont(QFont(QStringLiteral("Segoe UI"), fontPoints));
    textItem->setTextWidth(textWidth);
    textItem->setPos(textMargin, textMargin);
    textItem->setPlainText(placeholderText);
    connect(textItem->document(), &QTextDocument::contentsChanged, this,
            &StickyNoteItem::limitText);
}

void StickyNoteItem::setNoteColor(StickyNoteItem::NoteColor color)
{
    noteColor_ = color;
    update();
}

void StickyNoteItem::setText(const QString &text)
{
    if (textItem)
        textItem->setPlainText(text);
}

QString StickyNoteItem::getText() const
{
    if (!textItem) {
        qDebug("[ERROR] textItem es nullptr en getText()");
        return {};
    }
    return textItem->toPlainText();
}

QRectF StickyNoteItem::boundingRect() const
{
    return {0.0, 0.0, noteSide, noteSide};
}

void StickyNoteItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    QLinearGradient gradient(0.0, 0.0, 0.0, noteSide);
    const auto *const paper = std::ranges::find(papers, noteColor_, &Paper::color);
    // Quirk: a note of an unknown colour goes from black to white, because a gradient without stops
    // does; the number is kept, so that a file from elsewhere is saved as it was.
    if (paper != std::end(papers)) {
        gradient.setColorAt(0.0, QColor::fromString(QStringView(paper->top)));
        gradient.setColorAt(1.0, QColor::fromString(QStringView(paper->bottom)));
    }
    painter->setBrush(gradient);
    painter->setPen(Qt::NoPen);
    painter->drawRect(boundingRect());
}

/// Keeps a text that the person edits within the longest length, with the cursor at its end.
void StickyNoteItem::limitText()
{
    // Quirk: a note whose text alone was clicked takes a text of any length, because the limit
    // holds from the first focus of the paper on, and a click on the text gives the focus to the
    // text.
    if (placeholderActive)
        return;
    auto *const document = textItem->document();
    const QString text = document->toPlainText();
    if (text.size() <= longestText)
        return;

    // Quirk: typing into the middle of a full note drops its end and takes the cursor there,
    // because the text is cut as a whole; it shows that the paper is full.
    // Quirk: the cut may leave half an emoji at the end of a note, because the limit counts UTF-16
    // code units, of which an emoji has two.
    document->blockSignals(true);
    document->setPlainText(text.left(longestText));
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::End);
    textItem->setTextCursor(cursor);
    document->blockSignals(false);
}

void StickyNoteItem::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        // The context menu comes as an event of its own; the click itself selects nothing.
        event->accept();
        return;
    }
    dragging = true;
    lastScenePos = event->scenePos();
    QGraphicsObject::mousePressEvent(event);
}

void StickyNoteItem::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (dragging) {
        setPos(pos() + event->scenePos() - lastScenePos);
        lastScenePos = event->scenePos();
    }
    // Quirk: the first step of dragging a note counts twice, because the toolkit moves the item as
    // well, from where it stood at its own first step.
    QGraphicsObject::mouseMoveEvent(event);
}

void StickyNoteItem::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    dragging = false;
    QGraphicsObject::mouseReleaseEvent(event);
}

void StickyNoteItem::focusInEvent(QFocusEvent *event)
{
    // Quirk: "Agregar texto..." stays in a note until it is deleted by hand, because it is text
    // like any other; the first focus leaves it alone.
    // Quirk: a text of more than 300 characters that came with the file stays until it is edited,
    // because the limit holds from the first focus on, and only what is typed then is cut.
    placeholderActive = false;
    QGraphicsObject::focusInEvent(event);
}

void StickyNoteItem::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    const auto colors = colorsByLabel();
    QMenu menu;
    for (auto color = colors.cbegin(); color != colors.cend(); ++color) {
        auto *const action = menu.addAction(color.key());
        if (color.value() != noteColor_)
            continue;
        QFont font = action->font();
        font.setBold(true);
        action->setFont(font);
        action->setCheckable(true);
        action->setChecked(true);
    }

    // Quirk: another colour of a note does not mark the board unsaved, because a note does not emit
    // itemModified() for its colour or its text.

    // The note may be gone when the menu closes: the menu runs an event loop of its own.
    const QPointer<StickyNoteItem> self(this);
    const auto *const chosen = menu.exec(event->screenPos());
    if (self && chosen)
        setNoteColor(colors.value(chosen->text(), Yellow));
}

QVariant StickyNoteItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    if (isGeometryChange(change))
        emit itemModified();
    return QGraphicsObject::itemChange(change, value);
}
