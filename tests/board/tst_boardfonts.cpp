// Which fonts a person gets to see around a board.

#include "tests/board/shownboard.h"
#include "tests/support/main/registeredtest.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPushButton>
#include <QToolTip>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class TestBoardFonts : public QObject
{
    Q_OBJECT

private slots:
    void theProgramBringsItsFont();
    void notesAreWrittenInAFontThatTheProgramKnows();
    void menusTakeEmojiFromTheFontOfEachSystem();
    void menusKeepTheirSize();
    void toolTipsAreWrittenInTheProgramsFont();
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

void TestBoardFonts::menusTakeEmojiFromTheFontOfEachSystem()
{
    const ShownBoard board;
    QCOMPARE(QApplication::font("QMenu").families(),
             QStringList({u"Montserrat"_s, u"Segoe UI Emoji"_s, u"Noto Color Emoji"_s}));
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

PLUMARA_TEST(TestBoardFonts)
#include "tst_boardfonts.moc"
