// Gestures that lose their window to a dialog, a menu or another window: they end there, with all
// that they have done, and the mouse is free.

#include "items/arrowlineitem.h"
#include "items/resizablepixmapitem.h"
#include "tests/board/boardathome.h"
#include "tests/board/presentation.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QDialogButtonBox>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString cursorTitle = u"Orvane Plumara - Modo Pizarra"_s;

/// Starts a gesture with the tool of that button, from (500, 300) to (520, 310).
void begin(ShownBoard &board, const char *button)
{
    board.click(button);
    board.pointer.press({500, 300});
    board.pointer.move({520, 310});
}

/// Presses the button with the keyboard, which works while the mouse is held.
void pressByKeyboard(ShownBoard &board, const char *button)
{
    board.find<QWidget>(button)->setFocus();
    QTest::keyClick(board.window.windowHandle(), Qt::Key_Space);
}

/// Lets the left button go while \a dialog blocks the board and then clicks "Cancel". Returns
/// whether the dialog has heard it and is closed; otherwise closes it, so that the test goes on.
bool cancelByMouse(ShownBoard &board, QFileDialog &dialog)
{
    // The system tells the window in which the button was pressed.
    board.pointer.release({540, 320});
    const auto *const button =
        dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel);
    QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, {},
                      button->mapTo(&dialog, button->rect().center()));
    const bool heard = !dialog.isVisible();
    dialog.reject();
    return heard;
}

/// Opens the dialog for saving with the keyboard while the left button is held, lets the button go
/// over it and cancels it with the mouse. Returns whether the dialog has heard the mouse.
bool interruptByDialog(ShownBoard &board)
{
    bool heard = false;
    const ModalAnswer<QFileDialog> dialog(
        [&](QFileDialog &shown) { heard = cancelByMouse(board, shown); });
    pressByKeyboard(board, "GuardarComo");
    return dialog.seen() && heard;
}

/// Whether a move of the pointer without a button, and a press on the canvas, leave all as it is.
bool isFree(ShownBoard &board)
{
    const auto places = [&board] {
        QList<QRectF> rects;
        const auto items = board.scene.items();
        for (const auto *item : items)
            rects << item->sceneBoundingRect();
        return rects;
    };
    const auto before = places();
    board.pointer.move({640, 560});
    board.pointer.press({660, 580});
    board.pointer.move({700, 600});
    board.pointer.release({700, 600});
    return !QWidget::mouseGrabber() && !board.scene.mouseGrabberItem() && places() == before;
}

/// Puts a picture of 200 × 100 at (300, 200).
ResizablePixmapItem *addPicture(ShownBoard &board)
{
    QPixmap pixmap(200, 100);
    pixmap.fill(Qt::red);
    auto *const image = new ResizablePixmapItem(pixmap);
    image->setPos(300, 200);
    board.scene.addItem(image);
    return image;
}

} // namespace

class TestLostPointer : public QObject
{
    Q_OBJECT

private slots:
    void aDialogHearsTheMouse_data();
    void aDialogHearsTheMouse();
    void aDialogKeepsTheStroke();
    void aDialogKeepsTheArrow();
    void aDialogErasesNothingFurther();
    void aDialogMakesTheStrokeAStepOfTheHistory();
    void afterTheImageDialogThePenStartsAnew();
    void aToolThatWasChosenMeanwhileStays_data();
    void aToolThatWasChosenMeanwhileStays();
    void aMenuOfTheOtherButtonKeepsItsItem();
    void whatElseHidesTakesNoPointer();
    void theFirstClickInTheHomeWindowCounts();
    void aPresentationKeepsTheStroke_data();
    void aPresentationKeepsTheStroke();
    void aMenuTakesThePointer();
    void theChoiceOfAPresentationTakesThePointer();
    void aHiddenWindowHasNoGesture();
    void anArrowIsLetGo();
    void aHandleIsLetGo();
    void aNoteIsLetGoWhenThePresentationEnds();
    void aDialogOutsideOfAGestureChangesNothing();
};

void TestLostPointer::aDialogHearsTheMouse_data()
{
    QTest::addColumn<QByteArray>("tool");
    for (const char *const tool : {"ModoLapiz", "ModoLinea", "ModoBorrador"})
        QTest::newRow(tool) << QByteArray(tool);
}

void TestLostPointer::aDialogHearsTheMouse()
{
    QFETCH(const QByteArray, tool);
    const ScratchHome home;
    ShownBoard board;
    begin(board, tool.constData());

    QVERIFY(interruptByDialog(board));

    QCOMPARE(board.window.windowTitle(), cursorTitle);
    QVERIFY(isFree(board));
    board.click("ModoLinea");
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Linea"_s);
}

void TestLostPointer::aDialogKeepsTheStroke()
{
    const ScratchHome home;
    ShownBoard board;
    begin(board, "ModoLapiz");
    QVERIFY(interruptByDialog(board));

    // On the way to the tool, and with its click, nothing is drawn.
    board.pointer.move({100, 300});
    board.click("ModoLapiz");
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));

    board.pointer.drag({{700, 400}, {800, 450}});
    QCOMPARE(board.all<FreeDrawItem>().constFirst()->path(), pathThrough({{700, 400}, {800, 450}}));
}

void TestLostPointer::aDialogKeepsTheArrow()
{
    const ScratchHome home;
    ShownBoard board;
    begin(board, "ModoLinea");
    QVERIFY(interruptByDialog(board));

    board.pointer.move({100, 300});
    board.click("ModoLinea");
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 520, 310));

    board.click("ModoCursor");
    board.pointer.click({510, 305});
    QVERIFY(board.only<ArrowLineItem>()->isSelected());
}

void TestLostPointer::aDialogErasesNothingFurther()
{
    const ScratchHome home;
    ShownBoard board;
    addStroke(board.scene, {{490, 290}, {510, 310}});
    board.click("ModoBorrador");
    board.pointer.press({500, 300});

    QVERIFY(interruptByDialog(board));

    QVERIFY(board.only<FreeDrawItem>());
    QVERIFY(isFree(board));
}

void TestLostPointer::aDialogMakesTheStrokeAStepOfTheHistory()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.captureSnapshot();
    begin(board, "ModoLapiz");
    QVERIFY(interruptByDialog(board));

    for (int i = 0; i < 10; ++i)
        board.window.undoMode();
    QCOMPARE(board.count(), 0);
    for (int i = 0; i < 10; ++i)
        board.window.redoMode();
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestLostPointer::afterTheImageDialogThePenStartsAnew()
{
    const ScratchHome home;
    ShownBoard board;
    begin(board, "ModoLapiz");
    bool heard = false;
    const ModalAnswer<QFileDialog> dialog(
        [&](QFileDialog &shown) { heard = cancelByMouse(board, shown); });
    pressByKeyboard(board, "ModoImagen");
    QVERIFY(dialog.seen());
    QVERIFY(heard);

    board.click("ModoLapiz");
    board.pointer.move({700, 400});

    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestLostPointer::aToolThatWasChosenMeanwhileStays_data()
{
    QTest::addColumn<QByteArray>("tool");
    for (const char *const tool : {"ModoLapiz", "ModoLinea"})
        QTest::newRow(tool) << QByteArray(tool);
}

void TestLostPointer::aToolThatWasChosenMeanwhileStays()
{
    QFETCH(const QByteArray, tool);
    const ScratchHome home;
    ShownBoard board;
    begin(board, tool.constData());
    pressByKeyboard(board, "ModoPostIt");

    QVERIFY(interruptByDialog(board));

    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo PostIt de cuadro de texto"_s);
    QVERIFY(!QWidget::mouseGrabber());
    // The first one does not go on where it was.
    board.click(tool.constData());
    const QRectF drawn = board.scene.itemsBoundingRect();
    board.send(QEvent::MouseMove, {900, 600}, Qt::NoButton, Qt::NoButton);
    QCOMPARE(board.scene.itemsBoundingRect(), drawn);
}

void TestLostPointer::aMenuOfTheOtherButtonKeepsItsItem()
{
    ShownBoard board;
    auto *const image = addPicture(board);
    board.pointer.press({350, 250}, Qt::RightButton);
    QCOMPARE(board.scene.mouseGrabberItem(), image);
    QMenu menu;
    menu.addAction(u"Negro"_s);

    menu.popup(board.window.mapToGlobal(QPoint(600, 400)));

    QCOMPARE(board.scene.mouseGrabberItem(), image);
}

void TestLostPointer::whatElseHidesTakesNoPointer()
{
    ShownBoard board;
    QWidget tip;
    tip.show();
    begin(board, "ModoLapiz");

    tip.hide();

    QCOMPARE(QWidget::mouseGrabber(), &board.view);
    board.pointer.move({540, 290});
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}, {540, 290}}));
}

void TestLostPointer::theFirstClickInTheHomeWindowCounts()
{
    BoardAtHome at;
    begin(at.board, "ModoLapiz");
    const ModalAnswer<QMessageBox> question([&at](QMessageBox &box) {
        at.board.pointer.release({540, 320});
        answerBox(box, u"No"_s);
    });
    pressByKeyboard(at.board, "CloseBoardBtn");
    QVERIFY(question.seen());
    QVERIFY(at.closed());

    const auto *const help = at.home.findChild<QPushButton *>(u"NavHelpBtn"_s);
    QTest::mouseClick(at.home.windowHandle(), Qt::LeftButton, {},
                      help->mapTo(&at.home, help->rect().center()));

    QVERIFY(at.home.findChild<QWidget *>(u"HelpMenu"_s)->isVisible());
}

void TestLostPointer::aPresentationKeepsTheStroke_data()
{
    QTest::addColumn<bool>("presenting");
    QTest::newRow("begins") << false;
    QTest::newRow("ends") << true;
}

void TestLostPointer::aPresentationKeepsTheStroke()
{
    QFETCH(const bool, presenting);
    ShownBoard board;
    if (presenting)
        enterPresentation(board);
    begin(board, "ModoLapiz");
    const QPainterPath drawn = board.only<FreeDrawItem>()->path();

    if (presenting)
        pressKey(board, Qt::Key_Escape);
    else
        enterPresentation(board);

    QVERIFY(!QWidget::mouseGrabber());
    QCOMPARE(board.window.windowTitle(), cursorTitle);
    board.pointer.move({700, 400});
    board.pointer.release({700, 400});
    board.click("ModoLapiz");
    board.pointer.move({800, 400});
    QCOMPARE(board.only<FreeDrawItem>()->path(), drawn);
}

void TestLostPointer::aMenuTakesThePointer()
{
    ShownBoard board;
    begin(board, "ModoLapiz");
    QMenu menu;
    menu.addAction(u"Negro"_s);
    // It is not there before it is shown.
    QCOMPARE(QWidget::mouseGrabber(), &board.view);

    menu.popup(board.window.mapToGlobal(QPoint(600, 400)));
    QTest::mouseRelease(menu.windowHandle(), Qt::LeftButton, {}, {-50, -50});
    menu.close();

    QVERIFY(isFree(board));
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestLostPointer::theChoiceOfAPresentationTakesThePointer()
{
    ShownBoard board;
    begin(board, "ModoLinea");

    auto *const choice = board.find<QComboBox>("Presentar");
    choice->setFocus();
    QTest::keyClick(board.window.windowHandle(), Qt::Key_Space);
    auto *const list = QApplication::activePopupWidget();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Escape);

    QVERIFY(isFree(board));
    QCOMPARE(board.only<ArrowLineItem>()->line(), QLineF(500, 300, 520, 310));
}

void TestLostPointer::aHiddenWindowHasNoGesture()
{
    ShownBoard board;
    begin(board, "ModoLapiz");

    board.window.hide();
    QVERIFY(!QWidget::mouseGrabber());
    board.window.show();

    QVERIFY(isFree(board));
    QCOMPARE(board.only<FreeDrawItem>()->path(), pathThrough({{500, 300}, {520, 310}}));
}

void TestLostPointer::anArrowIsLetGo()
{
    const ScratchHome home;
    ShownBoard board;
    auto *const arrow = new ArrowLineItem({300, 300}, {400, 300});
    board.scene.addItem(arrow);
    board.pointer.press({350, 300});
    board.pointer.move({350, 350});
    const QPointF place = arrow->pos();
    QCOMPARE(arrow->cursor().shape(), Qt::ClosedHandCursor);

    QVERIFY(interruptByDialog(board));

    QCOMPARE(arrow->cursor().shape(), Qt::ArrowCursor);
    QVERIFY(isFree(board));
    QCOMPARE(arrow->pos(), place);
}

void TestLostPointer::aHandleIsLetGo()
{
    const ScratchHome home;
    ShownBoard board;
    auto *const image = addPicture(board);
    image->setSelected(true);
    board.pointer.press({498, 298});
    board.pointer.move({448, 298});
    const QSize size = image->pixmap().size();
    QVERIFY(size.width() < 200);

    QVERIFY(interruptByDialog(board));

    QVERIFY(isFree(board));
    QCOMPARE(image->pixmap().size(), size);
    // With the other button, a handle that is still held would follow.
    board.pointer.press({310, 210}, Qt::RightButton);
    board.pointer.move({350, 280});
    board.pointer.release({350, 280}, Qt::RightButton);
    QCOMPARE(image->pixmap().size(), size);
}

void TestLostPointer::aNoteIsLetGoWhenThePresentationEnds()
{
    ShownBoard board;
    enterPresentation(board);
    auto *const note = new StickyNoteItem;
    note->setPos(300, 200);
    board.scene.addItem(note);
    board.pointer.press({305, 205});
    const QPointF place = note->pos();

    pressKey(board, Qt::Key_Escape);
    board.pointer.release({640, 560});

    QVERIFY(isFree(board));
    QCOMPARE(note->pos(), place);
}

void TestLostPointer::aDialogOutsideOfAGestureChangesNothing()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.captureSnapshot();
    board.click("ModoLapiz");
    const FileDialogAnswer dialog({});

    pressByKeyboard(board, "GuardarComo");

    QVERIFY(dialog.seen());
    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Lápiz"_s);
    board.pointer.drag({{500, 300}, {600, 300}});
    QVERIFY(board.only<FreeDrawItem>());
}

PLUMARA_TEST(TestLostPointer)
#include "tst_lostpointer.moc"
