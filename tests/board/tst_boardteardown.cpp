// The end of a board window, whatever it was doing at that moment. Each row leaves the window in
// one state; what goes wrong then shows as a warning, a crash or a sanitizer's report.

#include "home/mainwindow.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QComboBox>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using Preparation = void (*)(ShownBoard &board);

class TestBoardTeardown : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theWindowTakesAllItOwnsWithIt_data();
    void theWindowTakesAllItOwnsWithIt();
    void aWindowThatWasNeverShownEndsToo();
    void theHomeWindowStays();
};

void TestBoardTeardown::init()
{
    // The offscreen platform says that it grabs no mouse and knows no size hints, and Qt's network
    // that wine does not list the ciphers of Windows.
    QTest::failOnWarning(
        QRegularExpression(u"^(?!This plugin does not support |Failed to enumerate ciphers)"_s));
}

void TestBoardTeardown::theWindowTakesAllItOwnsWithIt_data()
{
    QTest::addColumn<Preparation>("prepare");

    addRow<Preparation>("nothing happened", [](ShownBoard &) { });
    addRow<Preparation>("items are selected", [](ShownBoard &board) {
        board.scene.addItem(new StickyNoteItem);
        auto *const image = new ResizablePixmapItem(QPixmap(u":/img/plumdoc.png"_s));
        board.scene.addItem(image);
        image->setSelected(true);
        board.only<StickyNoteItem>()->setSelected(true);
    });
    addRow<Preparation>("a note is edited", [](ShownBoard &board) {
        board.window.activateWindow();
        board.click("ModoPostIt");
        board.pointer.click({500, 300});
        board.pointer.click({600, 320});
        board.type("Hola");
        QVERIFY(board.only<StickyNoteItem>()->getText().contains(u"Hola"));
    });
    addRow<Preparation>("a stroke is being drawn", [](ShownBoard &board) {
        board.click("ModoLapiz");
        board.pointer.press({500, 300});
        board.pointer.move({600, 400});
        QCOMPARE(QWidget::mouseGrabber(), &board.view);
    });
    addRow<Preparation>("a line is being dragged", [](ShownBoard &board) {
        board.click("ModoLinea");
        board.pointer.press({500, 300});
        board.pointer.move({600, 400});
        QCOMPARE(QWidget::mouseGrabber(), &board.view);
    });
    addRow<Preparation>("the eraser is pressed", [](ShownBoard &board) {
        board.click("ModoBorrador");
        board.pointer.press({500, 300});
        board.pointer.move({600, 400});
        QCOMPARE(QWidget::mouseGrabber(), &board.view);
    });
    addRow<Preparation>("an item is being dragged", [](ShownBoard &board) {
        board.scene.addItem(new StickyNoteItem);
        board.only<StickyNoteItem>()->setPos(500, 300);
        board.pointer.press({503, 303});
        board.pointer.move({600, 400});
        QVERIFY(board.only<StickyNoteItem>()->pos().x() > 500);
    });
    addRow<Preparation>("changes wait to be recorded", [](ShownBoard &board) {
        board.scene.addItem(new StickyNoteItem);
        board.scene.setSceneRect(0, 0, 500, 500);
        board.scene.addItem(new StickyNoteItem);
    });
    addRow<Preparation>("there is a history", [](ShownBoard &board) {
        board.window.captureSnapshot();
        board.scene.addItem(new StickyNoteItem);
        board.window.captureSnapshot();
        board.window.undoMode();
        QCOMPARE(board.count(), 0);
    });
    addRow<Preparation>("the window is hidden", [](ShownBoard &board) { board.window.hide(); });
    addRow<Preparation>("the window is minimized",
                        [](ShownBoard &board) { board.window.showMinimized(); });
    addRow<Preparation>("it presents", [](ShownBoard &board) {
        board.find<QComboBox>("Presentar")->setCurrentIndex(0);
        QVERIFY(board.window.isFullScreen());
    });
    addRow<Preparation>("it has presented and fades wait", [](ShownBoard &board) {
        board.find<QComboBox>("Presentar")->setCurrentIndex(0);
        QTest::keyClick(board.window.windowHandle(), Qt::Key_Escape);
        QVERIFY(!board.window.isFullScreen());
    });
    addRow<Preparation>("the board was closed", [](ShownBoard &board) {
        board.click("CloseBoardBtn");
        QVERIFY(!board.window.isVisible());
    });
}

void TestBoardTeardown::theWindowTakesAllItOwnsWithIt()
{
    QFETCH(const Preparation, prepare);
    auto board = std::make_unique<ShownBoard>();
    prepare(*board);
    if (QTest::currentTestFailed())
        return;
    const QPointer<QGraphicsScene> scene(&board->scene);
    const QPointer<QGraphicsView> view(&board->view);
    auto *const last = new StickyNoteItem;
    const QPointer<StickyNoteItem> note(last);
    board->scene.addItem(last);

    board.reset();

    QVERIFY(!scene);
    QVERIFY(!view);
    QVERIFY(!note);
    QVERIFY(!QWidget::mouseGrabber());
    // What the window had asked the event loop for must not come any more.
    QCoreApplication::processEvents();
}

void TestBoardTeardown::aWindowThatWasNeverShownEndsToo()
{
    auto window = std::make_unique<BoardWindow>(nullptr);
    const QPointer<QGraphicsScene> scene(window->findChild<QGraphicsScene *>());
    QVERIFY(scene);

    window.reset();

    QVERIFY(!scene);
}

void TestBoardTeardown::theHomeWindowStays()
{
    const ScratchHome folder;
    MainWindow home;
    const QPointer<MainWindow> guard(&home);

    std::make_unique<ShownBoard>(&home).reset();

    QVERIFY(guard);
}

PLUMARA_TEST(TestBoardTeardown)
#include "tst_boardteardown.moc"
