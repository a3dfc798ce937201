// The context menu of a note.

#include "items/stickynoteitem.h"

#include "tests/items/menuanswer.h"
#include "tests/support/items/noteoncanvas.h"
#include "tests/support/main/registeredtest.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class TestStickyNoteMenu : public QObject
{
    Q_OBJECT

private slots:
    void listsTheColorsInTheOrderOfTheirLabels();
    void marksThePresentColorOnly_data();
    void marksThePresentColorOnly();
    void marksNothingForAnUnknownColor();
    void opensWhereTheMouseIs();

    void choosingALabelSetsItsColor_data();
    void choosingALabelSetsItsColor();
    void choosingAColorRepaints();
    void choosingThePresentColorChangesNothing();
    void escapeChangesNothing();
    void theNoteMayGoWhileTheMenuIsOpen();
};

namespace {

struct Entry
{
    const char *name;
    QString label;
    StickyNoteItem::NoteColor color;
};

// As the menu shows them, from top to bottom.
QList<Entry> menuEntries()
{
    return {
        {"grey", u"⚪ Gris"_s, StickyNoteItem::Grey},
        {"pink", u"🌸 Rosado"_s, StickyNoteItem::Pink},
        {"red", u"🔴 Rojo"_s, StickyNoteItem::Red},
        {"light blue", u"🔵 Celeste"_s, StickyNoteItem::LightBlue},
        {"orange", u"🟠 Naranja"_s, StickyNoteItem::Orange},
        {"yellow", u"🟡 Amarillo"_s, StickyNoteItem::Yellow},
    };
}

void addColorRows()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<StickyNoteItem::NoteColor>("color");
    for (const auto &entry : menuEntries())
        QTest::newRow(entry.name) << entry.label << entry.color;
}

/// Right-clicks the paper; the menu must be answered by a MenuAnswer.
void askForMenu(NoteOnCanvas &on)
{
    on.canvas.pointer.click(NoteOnCanvas::onPaper(), Qt::RightButton);
}

} // namespace

void TestStickyNoteMenu::listsTheColorsInTheOrderOfTheirLabels()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    askForMenu(on);
    QStringList labels;
    for (const auto &entry : menuEntries())
        labels << entry.label;
    QCOMPARE(menu.texts(), labels);
}

void TestStickyNoteMenu::marksThePresentColorOnly_data()
{
    addColorRows();
}

void TestStickyNoteMenu::marksThePresentColorOnly()
{
    QFETCH(QString, label);
    QFETCH(StickyNoteItem::NoteColor, color);
    NoteOnCanvas on;
    on.note->setNoteColor(color);
    QVERIFY(on.canvas.show());

    const MenuAnswer menu;
    askForMenu(on);
    QCOMPARE(menu.entries().size(), 6);
    for (const auto &entry : menu.entries()) {
        const bool present = entry.text == label;
        QCOMPARE(entry, (MenuEntry{entry.text, false, present, present, present}));
    }
}

void TestStickyNoteMenu::marksNothingForAnUnknownColor()
{
    NoteOnCanvas on;
    on.note->setNoteColor(static_cast<StickyNoteItem::NoteColor>(9));
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    askForMenu(on);
    QCOMPARE(menu.entries().size(), 6);
    for (const auto &entry : menu.entries())
        QCOMPARE(entry, MenuEntry{entry.text});
}

void TestStickyNoteMenu::opensWhereTheMouseIs()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    askForMenu(on);
    QCOMPARE(menu.place(),
             on.canvas.window.mapToGlobal(on.canvas.pointer.windowPoint(on.onPaper())));
}

void TestStickyNoteMenu::choosingALabelSetsItsColor_data()
{
    addColorRows();
}

void TestStickyNoteMenu::choosingALabelSetsItsColor()
{
    QFETCH(QString, label);
    QFETCH(StickyNoteItem::NoteColor, color);
    NoteOnCanvas on;
    // None of the six, so that every row changes the colour.
    on.note->setNoteColor(static_cast<StickyNoteItem::NoteColor>(9));
    const QSignalSpy modified(on.note, &StickyNoteItem::itemModified);
    QVERIFY(on.canvas.show());

    const MenuAnswer menu(label);
    askForMenu(on);
    QVERIFY(menu.seen());
    QCOMPARE(on.note->noteColor(), color);
    QCOMPARE(modified.count(), 0);
}

void TestStickyNoteMenu::choosingAColorRepaints()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    QSignalSpy changed(&on.canvas.scene, &QGraphicsScene::changed);
    const MenuAnswer menu(u"🔴 Rojo"_s);
    askForMenu(on);
    QVERIFY(menu.seen());
    const QRectF whole = on.note->sceneBoundingRect();
    QTRY_VERIFY(std::ranges::any_of(changed, [&](const auto &arguments) {
        return arguments.constFirst().template value<QList<QRectF>>().contains(whole);
    }));
}

void TestStickyNoteMenu::choosingThePresentColorChangesNothing()
{
    NoteOnCanvas on;
    on.note->setNoteColor(StickyNoteItem::Orange);
    QVERIFY(on.canvas.show());
    const QImage before = on.canvas.picture();
    const MenuAnswer menu(u"🟠 Naranja"_s);
    askForMenu(on);
    QVERIFY(menu.seen());
    QCOMPARE(on.note->noteColor(), StickyNoteItem::Orange);
    QCOMPARE(on.canvas.picture(), before);
}

void TestStickyNoteMenu::escapeChangesNothing()
{
    NoteOnCanvas on;
    on.note->setNoteColor(StickyNoteItem::Grey);
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    askForMenu(on);
    QVERIFY(menu.seen());
    QCOMPARE(on.note->noteColor(), StickyNoteItem::Grey);
}

void TestStickyNoteMenu::theNoteMayGoWhileTheMenuIsOpen()
{
    NoteOnCanvas on;
    QVERIFY(on.canvas.show());
    const QPointer<StickyNoteItem> note(on.note);
    const MenuAnswer menu(u"🔴 Rojo"_s, [&] { on.canvas.scene.clear(); });
    askForMenu(on);
    QVERIFY(menu.seen());
    QVERIFY(note.isNull());
}

PLUMARA_TEST(TestStickyNoteMenu)
#include "tst_stickynotemenu.moc"
