// The six tool modes: how each looks, and which events of the canvas they leave alone.

#include "items/arrowlineitem.h"
#include "items/resizablepixmapitem.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/board/toolmodes.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Offers the window's filter a mouse event of the view and returns whether it took it.
bool takes(ShownBoard &board, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, QPointF(300, 300), QPointF(300, 300), button, buttons, {});
    return board.window.eventFilter(&board.view, &event);
}

} // namespace

class TestToolModes : public QObject
{
    Q_OBJECT

private slots:
    void theNumbersOfTheModesStay();
    void aModeHasItsTitleCursorAndButton_data();
    void aModeHasItsTitleCursorAndButton();
    void aModesCursorShowsAfterThatOfAnItem();
    void theImageModeLastsWhileItsDialogIsOpen();
    void choosingAModeAgainKeepsItsButtonPressed_data();
    void choosingAModeAgainKeepsItsButtonPressed();
    void onlyTheCursorModeEndsTheDragMode_data();
    void onlyTheCursorModeEndsTheDragMode();

    void rightButtonIsLeftAlone_data();
    void rightButtonIsLeftAlone();
    void aPressOnAnItemGoesToTheItem_data();
    void aPressOnAnItemGoesToTheItem();
    void aPressOnAStrokeGoesToTheTool();
    void theFilterTakesOnlyWhatTheToolUses_data();
    void theFilterTakesOnlyWhatTheToolUses();
    void theFilterTakesNothingInTheImageMode();
    void eventsOfOtherObjectsAreLeftAlone();
    void otherEventsAreLeftAlone_data();
    void otherEventsAreLeftAlone();
};

void TestToolModes::theNumbersOfTheModesStay()
{
    int number = 0;
    for (const auto mode : {ToolMode::Cursor, ToolMode::Note, ToolMode::Pen, ToolMode::Line,
                            ToolMode::Image, ToolMode::Eraser})
        QCOMPARE(static_cast<int>(mode), number++);
}

void TestToolModes::aModeHasItsTitleCursorAndButton_data()
{
    QTest::addColumn<bool>("byClick");
    for (const auto &mode : modes) {
        if (mode.slot == &BoardWindow::setImageMode)
            continue;
        QTest::addRow("%s by its button", mode.button) << true;
        QTest::addRow("%s by its slot", mode.button) << false;
    }
}

void TestToolModes::aModeHasItsTitleCursorAndButton()
{
    QFETCH(const bool, byClick);
    const QByteArray button = QByteArray(QTest::currentDataTag()).split(' ').constFirst();
    const Mode &mode = modeOf(button);
    ShownBoard board;
    // From another mode, so that the cursor mode too has something to do.
    board.window.setEraseMode();
    if (mode.slot == &BoardWindow::setEraseMode)
        board.window.setPenMode();

    if (byClick)
        board.click(mode.button);
    else
        (board.window.*mode.slot)();

    QCOMPARE(board.window.windowTitle(), QString::fromUtf16(mode.title));
    QCOMPARE(board.view.cursor().shape(), mode.cursor);
    QCOMPARE(checkedButtons(board.window), QList<QByteArray>{mode.button});
}

void TestToolModes::aModesCursorShowsAfterThatOfAnItem()
{
    ShownBoard board;
    // So does the view when the pointer comes onto an item with a cursor.
    board.view.viewport()->setCursor(Qt::WaitCursor);

    board.click("ModoLapiz");

    QCOMPARE(board.view.viewport()->cursor().shape(), Qt::CrossCursor);
}

void TestToolModes::theImageModeLastsWhileItsDialogIsOpen()
{
    ShownBoard board;
    QString title;
    Qt::CursorShape cursor{};
    QList<QByteArray> checked;
    const ModalAnswer<QFileDialog> answer([&](QFileDialog &dialog) {
        title = board.window.windowTitle();
        cursor = board.view.cursor().shape();
        checked = checkedButtons(board.window);
        dialog.reject();
    });

    board.click("ModoImagen");

    QVERIFY(answer.seen());
    QCOMPARE(title, u"Orvane Plumara - Modo Imagen"_s);
    QCOMPARE(cursor, Qt::BusyCursor);
    QCOMPARE(checked, QList<QByteArray>{"ModoImagen"});
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
    QCOMPARE(board.view.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(checkedButtons(board.window), QList<QByteArray>{"ModoCursor"});
}

void TestToolModes::choosingAModeAgainKeepsItsButtonPressed_data()
{
    QTest::addColumn<QString>("title");
    for (const auto &mode : modes) {
        if (mode.slot != &BoardWindow::setImageMode)
            QTest::newRow(mode.button) << QString::fromUtf16(mode.title);
    }
}

void TestToolModes::choosingAModeAgainKeepsItsButtonPressed()
{
    const char *const button = QTest::currentDataTag();
    ShownBoard board;
    board.click(button);
    board.click(button);

    QCOMPARE(checkedButtons(board.window), QList<QByteArray>{button});
    QTEST(board.window.windowTitle(), "title");
}

void TestToolModes::onlyTheCursorModeEndsTheDragMode_data()
{
    QTest::addColumn<int>("dragMode");
    for (const auto &mode : modes) {
        if (mode.slot == &BoardWindow::setImageMode)
            continue;
        const bool ends = mode.slot == &BoardWindow::setCursorMode;
        QTest::newRow(mode.button)
            << int(ends ? QGraphicsView::NoDrag : QGraphicsView::RubberBandDrag);
    }
}

void TestToolModes::onlyTheCursorModeEndsTheDragMode()
{
    ShownBoard board;
    board.view.setDragMode(QGraphicsView::RubberBandDrag);

    board.click(QTest::currentDataTag());

    QTEST(int(board.view.dragMode()), "dragMode");
}

void TestToolModes::rightButtonIsLeftAlone_data()
{
    QTest::addColumn<QString>("title");
    for (const auto &mode : modes) {
        if (mode.slot != &BoardWindow::setImageMode)
            QTest::newRow(mode.button) << QString::fromUtf16(mode.title);
    }
}

void TestToolModes::rightButtonIsLeftAlone()
{
    ShownBoard board;
    const auto *const stroke = addStroke(board.scene, {{500, 300}, {600, 300}});
    board.click(QTest::currentDataTag());

    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        board.pointer.press({550, 300}, button);
        QVERIFY(!QWidget::mouseGrabber());
        board.pointer.move({700, 400});
        board.pointer.release({700, 400}, button);
    }

    QCOMPARE(board.only<FreeDrawItem>(), stroke);
    QCOMPARE(stroke->path(), pathThrough({{500, 300}, {600, 300}}));
    QCOMPARE(board.count(), 1);
    QTEST(board.window.windowTitle(), "title");
}

void TestToolModes::aPressOnAnItemGoesToTheItem_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<int>("item");
    for (const auto &mode : modes) {
        if (mode.slot == &BoardWindow::setImageMode)
            continue;
        QTest::addRow("%s on a note", mode.button) << QByteArray(mode.button) << 0;
        QTest::addRow("%s on an arrow", mode.button) << QByteArray(mode.button) << 1;
        QTest::addRow("%s on an image", mode.button) << QByteArray(mode.button) << 2;
    }
}

void TestToolModes::aPressOnAnItemGoesToTheItem()
{
    QFETCH(const QByteArray, mode);
    QFETCH(const int, item);
    ShownBoard board;
    auto *const note = new StickyNoteItem;
    auto *const arrow = new ArrowLineItem({500, 500}, {700, 500});
    QPixmap pixmap(100, 100);
    pixmap.fill(Qt::green);
    auto *const image = new ResizablePixmapItem(pixmap);
    for (QGraphicsItem *const added :
         {static_cast<QGraphicsItem *>(note), static_cast<QGraphicsItem *>(arrow),
          static_cast<QGraphicsItem *>(image)}) {
        board.scene.addItem(added);
    }
    note->setPos(100, 100);
    image->setPos(800, 100);
    QGraphicsItem *const pressed = QList<QGraphicsItem *>{note, arrow, image}.at(item);
    const QPointF point = QList<QPointF>{{105, 395}, {600, 500}, {850, 150}}.at(item);
    board.click(mode.constData());

    board.pointer.click(point);

    QCOMPARE(board.scene.selectedItems(), QList<QGraphicsItem *>{pressed});
    QCOMPARE(board.count(), 3);
    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.window.windowTitle(), QString::fromUtf16(modeOf(mode).title));
}

void TestToolModes::aPressOnAStrokeGoesToTheTool()
{
    ShownBoard board;
    addStroke(board.scene, {{500, 300}, {600, 300}});
    board.click("ModoPostIt");

    board.pointer.click({550, 300});

    QVERIFY(board.only<StickyNoteItem>());
    QCOMPARE(board.only<StickyNoteItem>()->pos(), QPointF(550, 300));
}

void TestToolModes::theFilterTakesOnlyWhatTheToolUses_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<bool>("press");
    QTest::addColumn<bool>("draggedMove");
    QTest::addColumn<bool>("hoveringMove");
    QTest::addColumn<bool>("release");

    QTest::newRow("cursor") << QByteArray("ModoCursor") << false << false << false << false;
    QTest::newRow("note") << QByteArray("ModoPostIt") << true << false << false << false;
    QTest::newRow("pen") << QByteArray("ModoLapiz") << true << true << true << true;
    QTest::newRow("line") << QByteArray("ModoLinea") << true << true << true << true;
    QTest::newRow("eraser") << QByteArray("ModoBorrador") << true << true << false << true;
}

void TestToolModes::theFilterTakesOnlyWhatTheToolUses()
{
    QFETCH(const QByteArray, mode);
    ShownBoard board;
    board.click(mode.constData());

    for (const auto other : {Qt::RightButton, Qt::MiddleButton})
        QVERIFY(!takes(board, QEvent::MouseButtonPress, other, other));
    QCOMPARE(board.count(), 0);
    QTEST(takes(board, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton), "press");
    QTEST(takes(board, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton), "draggedMove");
    QTEST(takes(board, QEvent::MouseMove, Qt::NoButton, Qt::NoButton), "hoveringMove");
    QVERIFY(!takes(board, QEvent::MouseButtonRelease, Qt::RightButton, Qt::LeftButton));
    QTEST(takes(board, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton), "release");
}

void TestToolModes::theFilterTakesNothingInTheImageMode()
{
    ShownBoard board;
    QList<bool> taken;
    const ModalAnswer<QFileDialog> whileAsking([&](QFileDialog &dialog) {
        for (const auto button : {Qt::LeftButton, Qt::RightButton}) {
            taken << takes(board, QEvent::MouseButtonPress, button, button)
                  << takes(board, QEvent::MouseMove, Qt::NoButton, button)
                  << takes(board, QEvent::MouseButtonRelease, button, Qt::NoButton);
        }
        dialog.reject();
    });

    board.click("ModoImagen");

    QVERIFY(whileAsking.seen());
    QCOMPARE(taken, QList<bool>(6, false));
}

void TestToolModes::eventsOfOtherObjectsAreLeftAlone()
{
    ShownBoard board;
    board.click("ModoPostIt");
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(300, 300), QPointF(300, 300),
                      Qt::LeftButton, Qt::LeftButton, {});

    QVERIFY(!board.window.eventFilter(board.view.viewport(), &press));
    QVERIFY(!board.window.eventFilter(&board.window, &press));
    QCOMPARE(board.count(), 0);
}

void TestToolModes::otherEventsAreLeftAlone_data()
{
    QTest::addColumn<QEvent::Type>("type");
    QTest::newRow("double click") << QEvent::MouseButtonDblClick;
    QTest::newRow("enter") << QEvent::Enter;
    QTest::newRow("tool tip") << QEvent::ToolTip;
}

void TestToolModes::otherEventsAreLeftAlone()
{
    QFETCH(const QEvent::Type, type);
    ShownBoard board;
    board.click("ModoPostIt");

    QVERIFY(!takes(board, type, Qt::LeftButton, Qt::LeftButton));
    QCOMPARE(board.count(), 0);
}

PLUMARA_TEST(TestToolModes)
#include "tst_toolmodes.moc"
