#include "tests/support/shownboard.h"

#include <QApplication>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QPushButton>
#include <QRawFont>
#include <QTextLayout>
#include <QToolTip>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

// Which fonts a person gets to see around a board.

class TestBoardFonts : public QObject
{
    Q_OBJECT

private slots:
    void theProgramBringsItsFont();
    void notesAreWrittenInAFontThatTheProgramKnows();
    void menusShowColoredCirclesInTheirColors_data();
    void menusShowColoredCirclesInTheirColors();
    void menusKeepTheirSize();
    void toolTipsAreWrittenInTheProgramsFont();

private:
    /// The families of the fonts in which \a text is drawn.
    static QStringList familiesOf(const QString &text, const QFont &font)
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
};

void TestBoardFonts::theProgramBringsItsFont()
{
    const ShownBoard board;
    QCOMPARE(QFontInfo(board.find<QLabel>("NombreProyectoTxt")->font()).family(), u"Montserrat"_s);
}

void TestBoardFonts::notesAreWrittenInAFontThatTheProgramKnows()
{
    const ShownBoard board;
    const QString windowsOnly = u"Segoe UI"_s;
    QCOMPARE(QFontInfo(QFont(windowsOnly)).family(),
             QFontDatabase::families().contains(windowsOnly) ? windowsOnly : u"Montserrat"_s);
}

void TestBoardFonts::menusShowColoredCirclesInTheirColors_data()
{
    QTest::addColumn<QString>("circle");
    QTest::newRow("grey") << u"⚪"_s;
    QTest::newRow("pink") << u"🌸"_s;
    QTest::newRow("red") << u"🔴"_s;
    QTest::newRow("light blue") << u"🔵"_s;
    QTest::newRow("orange") << u"🟠"_s;
    QTest::newRow("yellow") << u"🟡"_s;
}

void TestBoardFonts::menusShowColoredCirclesInTheirColors()
{
    QFETCH(const QString, circle);
    const ShownBoard board;
    const QStringList families = familiesOf(circle, QApplication::font("QMenu"));
    QCOMPARE(families.size(), 1);
    QVERIFY2(families.constFirst().contains(u"Emoji"), qPrintable(families.constFirst()));
}

void TestBoardFonts::menusKeepTheirSize()
{
    const qreal before = QApplication::font("QMenu").pointSizeF();
    const ShownBoard board;
    QCOMPARE(QApplication::font("QMenu").pointSizeF(), before);
}

void TestBoardFonts::toolTipsAreWrittenInTheProgramsFont()
{
    const ShownBoard board;
    auto *const pencil = board.find<QPushButton>("ModoLapiz");
    QToolTip::showText(pencil->mapToGlobal(QPoint()), pencil->toolTip(), pencil);

    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto tip = std::ranges::find_if(windows, [](const QWidget *window) {
        return window->isVisible() && window->windowType() == Qt::ToolTip;
    });
    QVERIFY(tip != windows.end());
    QCOMPARE(QFontInfo((*tip)->font()).family(), u"Montserrat"_s);
}

QTEST_MAIN(TestBoardFonts)
#include "tst_boardfonts.moc"
