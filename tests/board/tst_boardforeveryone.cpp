// The board window for people who use the keyboard, hear the window or see it badly.

#include "tests/board/shownboard.h"
#include "tests/support/items/noteoncanvas.h"
#include "tests/support/look/contrast.h"
#include "tests/support/look/keyboardwalk.h"
#include "tests/support/look/names.h"
#include "tests/support/main/registeredtest.h"

#include <QAbstractButton>
#include <QComboBox>

using namespace Qt::Literals::StringLiterals;

class TestBoardForEveryone : public QObject
{
    Q_OBJECT

private slots:
    void theTabKeyWalksAsTheEyeDoes();
    void theTabKeyLeavesAFinishedNoteAlone();
    void whatCannotBeUsedTakesNoFocus();
    void theFocusIsSeen();
    void everythingHasAName();
    void toolsAreNamedAsTheirToolTipsSay();
    void textsStandOutFromTheirGround();
    void thePresentationComboStandsOut_data();
    void thePresentationComboStandsOut();

private:
    static void activate(ShownBoard &board)
    {
        board.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&board.window));
    }
};

void TestBoardForEveryone::theTabKeyWalksAsTheEyeDoes()
{
    ShownBoard board;
    activate(board);

    QCOMPARE(KeyboardWalk::stops(board.window),
             QStringList({u"PizarraMain"_s, u"ModoCursor"_s, u"ModoPostIt"_s, u"ModoLapiz"_s,
                          u"ModoLinea"_s, u"ModoImagen"_s, u"ModoBorrador"_s, u"ModoDeshacer"_s,
                          u"ModoRehacer"_s, u"Presentar"_s, u"GuardarComo"_s, u"CloseBoardBtn"_s}));
}

void TestBoardForEveryone::theTabKeyLeavesAFinishedNoteAlone()
{
    ShownBoard board;
    activate(board);
    board.click("ModoPostIt");
    board.pointer.click({400, 300});
    const auto *const note = board.only<StickyNoteItem>();
    board.click("ModoCursor");
    board.pointer.click(textOf(*note)->mapToScene(textOf(*note)->boundingRect().center()));
    board.type("a");
    const QString text = note->getText();
    QVERIFY(text != u"Agregar texto..."_s);
    QVERIFY(textOf(*note)->hasFocus());
    board.pointer.click({900, 100});

    QTest::keyClick(board.window.windowHandle(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), board.find<QWidget>("ModoCursor"));
    board.type("b");
    QCOMPARE(note->getText(), text);
}

void TestBoardForEveryone::whatCannotBeUsedTakesNoFocus()
{
    const ShownBoard board;
    QCOMPARE(board.window.focusPolicy(), Qt::NoFocus);
    for (const char *name : {"ExitPanel", "DateTimePanel", "MainPanel", "ToolPanel", "AccountPanel",
                             "AdviseFS", "FechaHoraTxt", "NombreProyectoTxt", "TXTFS"}) {
        QCOMPARE(board.find<QWidget>(name)->focusPolicy(), Qt::NoFocus);
    }
}

void TestBoardForEveryone::theFocusIsSeen()
{
    ShownBoard board;
    activate(board);

    // The clock may tick meanwhile.
    board.find<QWidget>("FechaHoraTxt")->hide();
    QCOMPARE(KeyboardWalk::unseen(board.window).join(u", "), QString());
}

void TestBoardForEveryone::everythingHasAName()
{
    const ShownBoard board;
    // The program's picture only decorates the board's name beside it.
    QCOMPARE(Names::missing(board.window), QStringList(u"AppIcoImg"_s));
}

void TestBoardForEveryone::toolsAreNamedAsTheirToolTipsSay()
{
    const ShownBoard board;
    QCOMPARE(Names::of(*board.find<QWidget>("ModoLapiz")), u"Modo lápiz"_s);
    QCOMPARE(Names::of(*board.find<QWidget>("Presentar")), u"Opciones de presentación"_s);
}

void TestBoardForEveryone::textsStandOutFromTheirGround()
{
    ShownBoard board;
    board.find<QWidget>("AdviseFS")->show();
    QCOMPARE(Contrast::faint(board.window).join(u", "), QString());
}

void TestBoardForEveryone::thePresentationComboStandsOut_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("placeholder") << -1;
    QTest::newRow("presenting") << 0;
}

void TestBoardForEveryone::thePresentationComboStandsOut()
{
    QFETCH(const int, index);
    ShownBoard board;
    auto *const combo = board.find<QComboBox>("Presentar");
    const QSignalBlocker quiet(combo);
    combo->setCurrentIndex(index);
    constexpr int arrow = 25;
    const QRect text = combo->rect().adjusted(4, 4, -arrow, -4);
    QVERIFY(Contrast::in(board.window, text.translated(combo->mapTo(&board.window, QPoint())))
            >= Contrast::enough);
}

PLUMARA_TEST(TestBoardForEveryone)
#include "tst_boardforeveryone.moc"
