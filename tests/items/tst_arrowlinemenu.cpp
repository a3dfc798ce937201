// The context menu of an arrow.

#include "items/arrowlineitem.h"

#include "tests/items/arrowoncanvas.h"
#include "tests/items/menuanswer.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/main/registeredtest.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestArrowLineMenu : public QObject
{
    Q_OBJECT

private slots:
    void listsColorsThenWidths();
    void marksNothing();
    void opensWhereTheMouseIs();

    void choosingAnEntryChangesThePen_data();
    void choosingAnEntryChangesThePen();
    void colorAndWidthAddUp();
    void aPenFromElsewhereIsReplaced();
    void escapeChangesNothing();
    void theArrowMayGoWhileTheMenuIsOpen();
};

namespace {

/// Right-clicks the arrow; the menu must be answered by a MenuAnswer.
void askForMenu(ArrowOnCanvas &on)
{
    on.canvas.pointer.click(on.onLine, Qt::RightButton);
}

/// Chooses the entry \a label of the arrow's menu and returns whether the menu came.
bool choose(ArrowOnCanvas &on, const QString &label)
{
    const MenuAnswer menu(label);
    askForMenu(on);
    return menu.seen();
}

} // namespace

void TestArrowLineMenu::listsColorsThenWidths()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    askForMenu(on);
    QCOMPARE(menu.texts(),
             QStringList({u"Negro"_s, u"Rojo"_s, u"Azul"_s, u"Verde"_s, u"---"_s, u"Delgado"_s,
                          u"Medio"_s, u"Grueso"_s}));
}

void TestArrowLineMenu::marksNothing()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    askForMenu(on);
    QCOMPARE(menu.entries().size(), 8);
    for (const auto &entry : menu.entries())
        QCOMPARE(entry, (MenuEntry{entry.text, entry.separator}));
}

void TestArrowLineMenu::opensWhereTheMouseIs()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    const MenuAnswer menu;
    askForMenu(on);
    QCOMPARE(menu.place(), on.canvas.window.mapToGlobal(on.canvas.pointer.windowPoint(on.onLine)));
}

void TestArrowLineMenu::choosingAnEntryChangesThePen_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QPen>("pen");
    // From a grey arrow, 7 units wide.
    QTest::newRow("black") << u"Negro"_s << roundPen(Qt::black, 7);
    QTest::newRow("red") << u"Rojo"_s << roundPen(QColor(0xFF0000), 7);
    QTest::newRow("blue") << u"Azul"_s << roundPen(QColor(0x0000FF), 7);
    QTest::newRow("dark green") << u"Verde"_s << roundPen(QColor(0x008000), 7);
    QTest::newRow("thin") << u"Delgado"_s << roundPen(Qt::gray, 2);
    QTest::newRow("medium") << u"Medio"_s << roundPen(Qt::gray, 5);
    QTest::newRow("thick") << u"Grueso"_s << roundPen(Qt::gray, 9);
}

void TestArrowLineMenu::choosingAnEntryChangesThePen()
{
    QFETCH(QString, label);
    QFETCH(QPen, pen);
    ArrowOnCanvas on;
    on.arrow->setColor(Qt::gray);
    on.arrow->setWidth(7);
    QVERIFY(on.canvas.show());
    const QSignalSpy modified(on.arrow, &ArrowLineItem::itemModified);

    QVERIFY(choose(on, label));
    QCOMPARE(penOf(*on.arrow), pen);
    QCOMPARE(modified.count(), 0);
}

void TestArrowLineMenu::colorAndWidthAddUp()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    QVERIFY(choose(on, u"Verde"_s));
    QVERIFY(choose(on, u"Grueso"_s));
    QCOMPARE(penOf(*on.arrow), roundPen(Qt::darkGreen, 9));
}

void TestArrowLineMenu::aPenFromElsewhereIsReplaced()
{
    ArrowOnCanvas on;
    on.arrow->setPen(QPen(Qt::red, 5));
    QVERIFY(on.canvas.show());
    QVERIFY(choose(on, u"Azul"_s));
    QCOMPARE(penOf(*on.arrow), roundPen(Qt::blue, 2));
}

void TestArrowLineMenu::escapeChangesNothing()
{
    ArrowOnCanvas on;
    on.arrow->setPen(QPen(Qt::red, 5));
    QVERIFY(on.canvas.show());
    QVERIFY(choose(on, {}));
    QCOMPARE(penOf(*on.arrow), QPen(Qt::red, 5));
}

void TestArrowLineMenu::theArrowMayGoWhileTheMenuIsOpen()
{
    ArrowOnCanvas on;
    QVERIFY(on.canvas.show());
    const QPointer<ArrowLineItem> arrow(on.arrow);
    const MenuAnswer menu(u"Rojo"_s, [&] { on.canvas.scene.clear(); });
    askForMenu(on);
    QVERIFY(menu.seen());
    QVERIFY(arrow.isNull());
}

PLUMARA_TEST(TestArrowLineMenu)
#include "tst_arrowlinemenu.moc"
