// The emoji in the menu of a note.

#include "tests/board/shownboard.h"
#include "tests/support/main/registeredtest.h"

#include <QApplication>
#include <QGlyphRun>
#include <QRawFont>
#include <QTest>
#include <QTextLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The families of the fonts in which \a text is drawn.
QStringList familiesOf(const QString &text, const QFont &font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    QStringList families;
    const auto runs = layout.glyphRuns();
    for (const auto &run : runs)
        families << run.rawFont().familyName();
    return families;
}

} // namespace

class TestEmoji : public QObject
{
    Q_OBJECT

private slots:
    void menusShowColoredCirclesInTheirColors_data();
    void menusShowColoredCirclesInTheirColors();
};

void TestEmoji::menusShowColoredCirclesInTheirColors_data()
{
    QTest::addColumn<QString>("circle");
    QTest::newRow("grey") << u"⚪"_s;
    QTest::newRow("pink") << u"🌸"_s;
    QTest::newRow("red") << u"🔴"_s;
    QTest::newRow("light blue") << u"🔵"_s;
    QTest::newRow("orange") << u"🟠"_s;
    QTest::newRow("yellow") << u"🟡"_s;
}

void TestEmoji::menusShowColoredCirclesInTheirColors()
{
    QFETCH(const QString, circle);
    const ShownBoard board;
    const QStringList families = familiesOf(circle, QApplication::font("QMenu"));
    QCOMPARE(families.size(), 1);
    QVERIFY2(families.constFirst().contains(u"Emoji"), qPrintable(families.constFirst()));
}

PLUMARA_TEST(TestEmoji)
#include "tst_emoji.moc"
