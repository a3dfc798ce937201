// Leaving the presentation of a board with Esc.

#include "items/stickynoteitem.h"
#include "tests/board/presentation.h"
#include "tests/support/main/registeredtest.h"

#include <QKeyEvent>
#include <QScreen>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Counts how often the style of the watched widget changes.
class StyleChanges : public QObject
{
public:
    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::StyleChange)
            ++count;
        return false;
    }
};

/// The sides of the visible part of the scene that the view has fitted in.
QRectF visibleScene(const ShownBoard &board)
{
    return board.view.mapToScene(board.view.viewport()->rect()).boundingRect();
}

} // namespace

class TestEndOfPresentation : public QObject
{
    Q_OBJECT

private slots:
    void otherKeysDoNothing_data();
    void otherKeysDoNothing();
    void escapeOutsideOfAPresentationDoesNothing();
    void everyKeyGoesOnToTheBaseClass();
    void escapeBringsTheWindowBack();
    void escapeBringsThePanelsBackButForOne();
    void escapeBringsTheCanvasBack();
    void escapeEndsTheToolAndTheChoice();
    void escapeLeavesWhileANoteIsEdited();
    void escapeKeepsTheStyle();
    void escapeAppliesTheStyleAgain();
    void aPresentationCanBeRepeated();
};

void TestEndOfPresentation::otherKeysDoNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("F11") << Qt::Key_F11;
    QTest::newRow("a letter") << Qt::Key_A;
    QTest::newRow("Back") << Qt::Key_Back;
}

void TestEndOfPresentation::otherKeysDoNothing()
{
    QFETCH(const Qt::Key, key);
    ShownBoard board;
    enterPresentation(board);

    pressKey(board, key);

    QVERIFY(presents(board));
    QVERIFY(reminds(board));
}

void TestEndOfPresentation::escapeOutsideOfAPresentationDoesNothing()
{
    ShownBoard board;
    board.click("ModoLapiz");
    const QPoint place = board.window.pos();

    pressKey(board, Qt::Key_Escape);

    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Lápiz"_s);
    QCOMPARE(board.window.pos(), place);
    QCOMPARE(board.find<QWidget>("AccountPanel")->x(), 990);
}

void TestEndOfPresentation::everyKeyGoesOnToTheBaseClass()
{
    ShownBoard board;
    // The base class leaves a key to the parent, by ignoring it.
    for (const bool presenting : {false, true}) {
        if (presenting)
            enterPresentation(board);
        for (const auto key : {Qt::Key_A, Qt::Key_Escape}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            event.accept();
            board.window.keyPressEvent(&event);
            QVERIFY(!event.isAccepted());
        }
    }
}

void TestEndOfPresentation::escapeBringsTheWindowBack()
{
    ShownBoard board;
    enterPresentation(board);

    // Straight to the window: the platform may correct the place when it comes to speak.
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    board.window.keyPressEvent(&escape);

    QVERIFY(!board.window.isFullScreen());
    QVERIFY(!board.window.windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(board.window.isVisible());
    QVERIFY(!reminds(board));
    QCOMPARE(board.window.size(), QSize(1200, 700));
    QCOMPARE(board.window.windowHandle()->minimumSize(), QSize(1200, 700));
    QCOMPARE(board.window.windowHandle()->maximumSize(), QSize(1200, 700));
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QCOMPARE(board.window.pos(),
             QPoint((screen.left() + screen.right()) / 2 - 1199 / 2,
                    (screen.top() + screen.bottom()) / 2 - 699 / 2));
}

void TestEndOfPresentation::escapeBringsThePanelsBackButForOne()
{
    ShownBoard board;
    enterPresentation(board);

    pressKey(board, Qt::Key_Escape);

    const auto place = [&board](const char *name) { return board.find<QWidget>(name)->geometry(); };
    QCOMPARE(place("ToolPanel"), QRect(10, 188, 35, 325));
    QCOMPARE(place("ExitPanel"), QRect(10, 655, 35, 35));
    QCOMPARE(place("MainPanel"), QRect(10, 10, 270, 35));
    QCOMPARE(place("AccountPanel"), QRect(920, 10, 200, 35));
    QCOMPARE(place("DateTimePanel"), QRect(990, 655, 200, 35));
}

void TestEndOfPresentation::escapeBringsTheCanvasBack()
{
    ShownBoard board;
    enterPresentation(board);
    const QRectF presented = board.view.sceneRect();
    board.scene.setSceneRect(0, 0, 800, 600);
    board.view.resize(800, 600);

    pressKey(board, Qt::Key_Escape);

    QCOMPARE(board.view.geometry(), QRect(0, 0, 1200, 700));
    QCOMPARE(board.view.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(board.view.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QCOMPARE(board.scene.sceneRect(), QRectF(0, 0, 1920, 1080));
    // The view keeps the scene rectangle of the presentation.
    QCOMPARE(board.view.sceneRect(), presented);
    QCOMPARE(board.view.transform().m11(), board.view.transform().m22());
    QVERIFY(board.view.transform().m11() < 1200 / 1920.0);
    QVERIFY(visibleScene(board).width() > 1880);
    // Fitted in anew, less the small margin that the toolkit leaves.
    QVERIFY(board.view.transform().m11() > 0.98 * 1200 / 1920.0);
}

void TestEndOfPresentation::escapeEndsTheToolAndTheChoice()
{
    ShownBoard board;
    enterPresentation(board);
    board.click("ModoLapiz");

    pressKey(board, Qt::Key_Escape);

    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
    const auto *const combo = board.find<QComboBox>("Presentar");
    QCOMPARE(combo->currentIndex(), -1);
    QCOMPARE(combo->placeholderText(), u"Presentar..."_s);
    QVERIFY(combo->currentText().isEmpty());
}

void TestEndOfPresentation::escapeLeavesWhileANoteIsEdited()
{
    ShownBoard board;
    enterPresentation(board);
    board.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&board.window));
    auto *const note = new StickyNoteItem;
    note->setPos(500, 300);
    board.scene.addItem(note);
    board.pointer.click({600, 320});
    board.type("Hola");
    QVERIFY(note->getText().contains(u"Hola"));

    pressKey(board, Qt::Key_Escape);

    QVERIFY(!board.window.isFullScreen());
}

void TestEndOfPresentation::escapeKeepsTheStyle()
{
    ShownBoard board;
    const QString style = board.window.styleSheet();
    QVERIFY(!style.isEmpty());
    enterPresentation(board);

    pressKey(board, Qt::Key_Escape);

    QCOMPARE(board.window.styleSheet(), style);
}

void TestEndOfPresentation::escapeAppliesTheStyleAgain()
{
    ShownBoard board;
    StyleChanges changes;
    board.window.installEventFilter(&changes);
    // The change of the frame alone applies no style.
    enterPresentation(board);
    QCOMPARE(changes.count, 0);

    pressKey(board, Qt::Key_Escape);

    QCOMPARE(changes.count, 1);
}

void TestEndOfPresentation::aPresentationCanBeRepeated()
{
    ShownBoard board;
    enterPresentation(board);
    pressKey(board, Qt::Key_Escape);

    enterPresentation(board);
    QVERIFY(presents(board));
    QVERIFY(reminds(board));
    QCOMPARE(board.find<QWidget>("AccountPanel")->x(), board.window.width() - 210);

    pressKey(board, Qt::Key_Escape);
    QVERIFY(!board.window.isFullScreen());
    QCOMPARE(board.find<QWidget>("AccountPanel")->x(), 920);
}

PLUMARA_TEST(TestEndOfPresentation)
#include "tst_endofpresentation.moc"
