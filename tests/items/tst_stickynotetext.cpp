// The text of a note and its limit of 300 characters.

#include "items/stickynoteitem.h"

#include "tests/support/items/noteoncanvas.h"
#include "tests/support/main/registeredtest.h"

#include <QApplication>
#include <QClipboard>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QPalette>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

#include <memory>

using namespace Qt::Literals::StringLiterals;

class TestStickyNoteText : public QObject
{
    Q_OBJECT

private slots:
    void itsTextIsBlackTwelvePointAndWraps();
    void itsTextIsBlackAlsoAmongLightLetters();
    void anyTextIsTakenBeforeTheFirstFocus();
    void theFirstFocusKeepsThePlaceholder();
    void theFirstFocusLeavesALongTextUntilItIsEdited();
    void afterTheFirstFocusALongerTextIsCut();
    void threeHundredCharactersAreNotCut();
    void pastingBeyondTheLimitCutsAtTheEnd();
    void pastingNothingLeavesTheText();
    void typingBeyondTheLimitCutsAtTheEnd();
    void theCutMayHalveAnEmoji();
    void cuttingIsNoEditOfItsOwn();
    void typingOnTheTextAloneIsNotLimited();
    void aPictureThatATextNamesCannotBeSeen();
    void aNoteWithoutItsTextItemHasNoText();
};

namespace {

QString letters(int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar(u'a' + i % 26);
    return text;
}

} // namespace

void TestStickyNoteText::itsTextIsBlackTwelvePointAndWraps()
{
    const StickyNoteItem note;
    QCOMPARE(note.childItems().size(), 1);
    const auto *const text = textOf(note);
    QVERIFY(text);
    QCOMPARE(text->toPlainText(), u"Agregar texto..."_s);
    QCOMPARE(text->defaultTextColor(), QColor(Qt::black));
    QCOMPARE(text->font().family(), u"Segoe UI"_s);
    QCOMPARE(text->font().pointSize(), 12);
    QCOMPARE(text->font().weight(), QFont::Normal);
    QVERIFY(!text->font().italic());
    QCOMPARE(text->textWidth(), 280.0);
    QCOMPARE(text->pos(), QPointF(10, 10));
    QCOMPARE(text->textInteractionFlags(), Qt::TextEditorInteraction);
}

void TestStickyNoteText::itsTextIsBlackAlsoAmongLightLetters()
{
    const auto restore =
        qScopeGuard([before = QApplication::palette()] { QApplication::setPalette(before); });
    QPalette dark(Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    const StickyNoteItem note;
    QCOMPARE(textOf(note)->defaultTextColor(), QColor(Qt::black));
}

void TestStickyNoteText::anyTextIsTakenBeforeTheFirstFocus()
{
    StickyNoteItem note;
    note.setText(letters(500));
    QCOMPARE(note.getText(), letters(500));
}

void TestStickyNoteText::theFirstFocusKeepsThePlaceholder()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    QVERIFY(on.note->hasFocus());
    QCOMPARE(on.note->getText(), u"Agregar texto..."_s);
}

void TestStickyNoteText::theFirstFocusLeavesALongTextUntilItIsEdited()
{
    NoteOnCanvas on;
    on.note->setText(letters(302).replace(10, 1, u"\n"_s));
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    QCOMPARE(on.note->getText().size(), 302);

    on.canvas.pointer.click(on.onText());
    on.canvas.press(Qt::Key_Delete);
    QCOMPARE(on.note->getText().size(), 300);
}

void TestStickyNoteText::afterTheFirstFocusALongerTextIsCut()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());

    on.note->setText(letters(500));
    QCOMPARE(on.note->getText(), letters(300));
    // The limit still stands after the cut.
    on.note->setText(letters(301));
    QCOMPARE(on.note->getText(), letters(300));
}

void TestStickyNoteText::threeHundredCharactersAreNotCut()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    on.note->setText(letters(300));
    QCOMPARE(on.note->getText(), letters(300));
    QCOMPARE(textOf(*on.note)->textCursor().position(), 0);
}

void TestStickyNoteText::pastingBeyondTheLimitCutsAtTheEnd()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    on.canvas.pointer.click(on.onText());
    on.canvas.press(Qt::Key_A, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText(letters(1000));
    on.canvas.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(on.note->getText(), letters(300));
    QCOMPARE(textOf(*on.note)->textCursor().position(), 300);
}

void TestStickyNoteText::pastingNothingLeavesTheText()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    on.canvas.pointer.click(on.onText());
    QTRY_VERIFY(textOf(*on.note)->hasFocus());
    on.note->setText(u"algo"_s);
    auto *const clipboard = QGuiApplication::clipboard();
    // As they are on X11 when the program that was copied from has ended.
    clipboard->setMimeData(new QMimeData);
    if (clipboard->supportsSelection())
        clipboard->setMimeData(new QMimeData, QClipboard::Selection);
    on.canvas.press(Qt::Key_V, Qt::ControlModifier);
    on.canvas.press(Qt::Key_Insert, Qt::ShiftModifier);
    on.canvas.press(Qt::Key_Insert, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(on.note->getText(), u"algo"_s);

    clipboard->setText(u"!"_s);
    if (clipboard->supportsSelection())
        on.canvas.press(Qt::Key_Insert, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(on.note->getText(), u"algo"_s);
    on.canvas.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(on.note->getText().size(), 5);
}

void TestStickyNoteText::typingBeyondTheLimitCutsAtTheEnd()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    on.note->setText(letters(299));
    on.canvas.pointer.click(on.onText());
    QTRY_VERIFY(textOf(*on.note)->hasFocus());

    on.canvas.press(Qt::Key_Home, Qt::ControlModifier);
    on.canvas.type(u"XYZ"_s);
    // "X" fills the note; "Y" pushes its last letter out and the cursor to the end, where there
    // is no room for "Z".
    QCOMPARE(on.note->getText(), u"XY"_s + letters(298));
    QCOMPARE(textOf(*on.note)->textCursor().position(), 300);
}

void TestStickyNoteText::theCutMayHalveAnEmoji()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());

    on.note->setText(letters(299) + u"😀"_s);

    QCOMPARE(on.note->getText(), letters(299) + QChar(QChar::highSurrogate(0x1F600)));
}

void TestStickyNoteText::cuttingIsNoEditOfItsOwn()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onPaper());
    on.note->setText(letters(300));
    on.canvas.pointer.click(on.onText());
    QTRY_VERIFY(textOf(*on.note)->hasFocus());

    const QSignalSpy edited(textOf(*on.note)->document(), &QTextDocument::contentsChanged);
    on.canvas.type(u"X"_s);
    QCOMPARE(on.note->getText().size(), 300);
    QCOMPARE(edited.count(), 1);
    // The next edit is reported again.
    on.canvas.press(Qt::Key_Backspace);
    QCOMPARE(on.note->getText().size(), 299);
    QCOMPARE(edited.count(), 2);
}

void TestStickyNoteText::typingOnTheTextAloneIsNotLimited()
{
    // The limit waits for the paper's own focus, which a click on the text does not give it.
    NoteOnCanvas on;
    on.note->setText(letters(300));
    QVERIFY(on.canvas.show());
    on.canvas.pointer.click(on.onText());
    QTRY_VERIFY(textOf(*on.note)->hasFocus());
    on.canvas.press(Qt::Key_End, Qt::ControlModifier);
    on.canvas.type(u"XYZ"_s);
    QCOMPARE(on.note->getText(), letters(300) + u"XYZ"_s);
}

void TestStickyNoteText::aPictureThatATextNamesCannotBeSeen()
{
    const StickyNoteItem note;
    for (int i = 0; i < 20; ++i) {
        // What is left in the memory of an earlier picture is none of it.
        QImage(1, 1, QImage::Format_ARGB32_Premultiplied).fill(Qt::white);
        const auto picture =
            textOf(note)->document()->resource(QTextDocument::ImageResource, QUrl(u"foto.png"_s));
        QCOMPARE(picture.value<QImage>().size(), QSize(1, 1));
        QCOMPARE(picture.value<QImage>().pixelColor(0, 0), QColor(Qt::transparent));
    }
}

void TestStickyNoteText::aNoteWithoutItsTextItemHasNoText()
{
    StickyNoteItem note;
    std::unique_ptr<QGraphicsTextItem>(textOf(note)).reset();

    note.setText(u"nada"_s);
    QTest::ignoreMessage(QtDebugMsg, "[ERROR] textItem es nullptr en getText()");
    QCOMPARE(note.getText(), QString());
}

PLUMARA_TEST(TestStickyNoteText)
#include "tst_stickynotetext.moc"
