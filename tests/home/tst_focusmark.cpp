// The mark of the keyboard's focus: where it stands, when it comes and goes.

#include "tests/home/paintcount.h"
#include "tests/support/dialogs/modalanswer.h"
#include "tests/support/home/boardshome.h"
#include "tests/support/look/contrast.h"
#include "tests/support/main/registeredtest.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class TestFocusMark : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { home.reset(); }

    void theMarkStandsAroundWhatTheTabKeyGoesTo();
    void everyKeyThatGoesSomewhereMarksIt_data();
    void everyKeyThatGoesSomewhereMarksIt();
    void whatTheWheelGoesToHasNoMark();
    void theMarkGoesWithTheFocus();
    void theMarkGoesWithItsWidget();
    void theMarkIsTheSameEverywhere();
    void theMarksSidesAndCornersAreAlike();
    void theMarkGoesWithTheChosenTab();
    void theMarkLeavesOutTheEmptySpaceAfterABox();
    void aClickTakesTheMarkAway();
    void whatWasClickedHasNoMark();
    void whatTakesOverFromAClickedButtonHasNoMark_data();
    void whatTakesOverFromAClickedButtonHasNoMark();
    void theCanvasIsMarkedAtTheEdgesOfItsWindow();
    void theMarkLetsThePointerThrough();
    void theMarkStaysAtAPanelThatMoves();
    void whatChangesInsideOfTheMarkDoesNotPaintIt();
    void aMessageBoxMarksWhatEnterPresses();
    void aDialogHasAMarkWhenTheKeyboardOpensIt_data();
    void aDialogHasAMarkWhenTheKeyboardOpensIt();
    void anotherWindowTakesTheMarkAlong();

private:
    std::unique_ptr<BoardsHome> home;
};

namespace {

constexpr QPoint nothingThere(800, 100); // on the page of the boards
constexpr QMargins around(4, 4, 4, 4); // from what is marked to the outside of its mark
constexpr QRgb dark = 0xff2d2d2d;

/// The window's picture; by what it differs from the one without the mark, one sees where that is.
QImage picture(QWidget &window)
{
    return window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QRect difference(const QImage &one, const QImage &other)
{
    QRect place;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y))
                place |= QRect(x, y, 1, 1);
        }
    }
    return place;
}

/// Where a mark appears in \a window when its widget \a widget gets the focus by the Tab key.
QRect markOf(QWidget &window, QWidget &widget)
{
    if (auto *const focus = window.focusWidget())
        focus->clearFocus();
    const QImage before = picture(window);
    widget.setFocus(Qt::TabFocusReason);
    return difference(before, picture(window));
}

/// The widget that draws the mark in \a window; null where there is none.
QWidget *ringIn(const QWidget &window)
{
    const auto children = window.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    const auto ring = std::ranges::find_if(
        children, [](const QWidget *child) { return child->inherits("FocusRing"); });
    return ring == children.end() ? nullptr : *ring;
}

QRect placeIn(const QWidget &window, const QWidget &widget)
{
    return {widget.mapTo(&window, QPoint()), widget.size()};
}

} // namespace

/// Whether the keyboard is used is known for all windows together; here nobody has used anything yet.
void TestFocusMark::initTestCase()
{
    BoardsHome started;
    started.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&started.window));
    auto *const button = started.child(u"NewProject"_s);
    button->setFocus(Qt::OtherFocusReason);
    QVERIFY(button->hasFocus());
    QVERIFY(!ringIn(started.window));
    // The first key of all is one of the keyboard.
    started.child(u"NavMainBtn"_s)->setFocus(Qt::TabFocusReason);
    QVERIFY(ringIn(started.window));
}

void TestFocusMark::init()
{
    home = std::make_unique<BoardsHome>();
    home->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    home->clickAt(u"MainMenu"_s, nothingThere);
}

void TestFocusMark::theMarkStandsAroundWhatTheTabKeyGoesTo()
{
    for (const auto &name : {u"NavHelpBtn"_s, u"NewProject"_s, u"listWidget"_s}) {
        auto *const widget = home->child(name);
        QCOMPARE(markOf(home->window, *widget),
                 placeIn(home->window, *widget).marginsAdded(around));
    }
}

void TestFocusMark::everyKeyThatGoesSomewhereMarksIt_data()
{
    QTest::addColumn<Qt::FocusReason>("reason");
    QTest::newRow("Tab") << Qt::TabFocusReason;
    QTest::newRow("Shift and Tab") << Qt::BacktabFocusReason;
    QTest::newRow("a shortcut") << Qt::ShortcutFocusReason;
}

void TestFocusMark::everyKeyThatGoesSomewhereMarksIt()
{
    QFETCH(const Qt::FocusReason, reason);
    home->child(u"NewProject"_s)->setFocus(reason);
    QVERIFY(ringIn(home->window));
}

void TestFocusMark::whatTheWheelGoesToHasNoMark()
{
    home->child(u"NavHelpBtn"_s)->setFocus(Qt::TabFocusReason);
    QVERIFY(ringIn(home->window));
    home->child(u"NewProject"_s)->setFocus(Qt::MouseFocusReason);
    QVERIFY(!ringIn(home->window));
}

void TestFocusMark::theMarkGoesWithTheFocus()
{
    auto *const button = home->child(u"NewProject"_s);
    button->setFocus(Qt::TabFocusReason);
    QVERIFY(ringIn(home->window));
    button->clearFocus();
    QVERIFY(!ringIn(home->window));
}

void TestFocusMark::theMarkGoesWithItsWidget()
{
    auto *const button = new QPushButton(u"Abrir"_s, &home->window);
    button->show();
    button->setFocus(Qt::TabFocusReason);
    QVERIFY(ringIn(home->window));
    delete button;
    home->child(u"NavHelpBtn"_s)->move(9, 9);
    home->child(u"NewProject"_s)->setFocus(Qt::TabFocusReason);
    delete ringIn(home->window);
    QVERIFY(!ringIn(home->window)); // it was the only one
}

void TestFocusMark::theMarkIsTheSameEverywhere()
{
    home->window.NavSettings();
    for (const auto &name : {u"NavHelpBtn"_s, u"ClearCacheBtn"_s, u"CompressFiles"_s}) {
        auto *const widget = home->child(name);
        const QRect mark = markOf(home->window, *widget);
        const QImage shown = picture(home->window);
        // Across its upper side: two dark pixels, then a light one.
        const QPoint top(mark.left() + 20, mark.top());
        QCOMPARE(shown.pixel(top), dark);
        QCOMPARE(shown.pixel(top + QPoint(0, 1)), dark);
        QCOMPARE(shown.pixelColor(top + QPoint(0, 2)), QColor(Qt::white));
        // And nothing else.
        widget->clearFocus();
        const QImage without = picture(home->window);
        QCOMPARE(shown.pixel(top + QPoint(0, 3)), without.pixel(top + QPoint(0, 3)));
        const QRect inside = mark.adjusted(5, 5, -5, -5);
        QCOMPARE(shown.copy(inside), without.copy(inside));
    }
}

void TestFocusMark::theMarksSidesAndCornersAreAlike()
{
    const QRect place = markOf(home->window, *home->child(u"NavHelpBtn"_s));
    const QImage mark = picture(home->window).copy(place);
    constexpr int thickness = 4; // pixels
    const auto compare = [&mark](QPoint one, QPoint other) {
        constexpr int rounding = 30; // of 255
        return std::abs(qGray(mark.pixel(one)) - qGray(mark.pixel(other))) < rounding;
    };
    const QPoint last = mark.rect().bottomRight();
    for (int y = 0; y < thickness; ++y) {
        for (int x = 0; x <= last.x(); ++x)
            QVERIFY(compare({x, y}, {x, last.y() - y}));
        for (int x = 0; x <= last.y(); ++x)
            QVERIFY(compare({y, x}, {last.x() - y, x}));
        for (int x = 0; x < thickness; ++x)
            QVERIFY(compare({x, y}, {y, x}));
    }
    // Round, and smoothly so.
    QVERIFY(mark.pixel(0, 0) != dark);
    const int shade = qGray(mark.pixel(1, 1));
    QVERIFY2(shade > qGray(dark) + 20 && shade < 200, qPrintable(QString::number(shade)));
}

void TestFocusMark::theMarkGoesWithTheChosenTab()
{
    home->window.NavHelp();
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    auto *const bar = tabs->tabBar();
    const auto tabPlace = [&](int tab) {
        return bar->tabRect(tab).translated(bar->mapTo(&home->window, QPoint()));
    };
    QCOMPARE(markOf(home->window, *bar), tabPlace(0).marginsAdded(around));

    QTest::keyClick(home->window.windowHandle(), Qt::Key_Right);
    QCOMPARE(tabs->currentIndex(), 1);
    const QImage marked = picture(home->window);
    QCOMPARE(marked.pixel(tabPlace(1).center().x(), tabPlace(1).top() - around.top()), dark);
    bar->clearFocus();
    QCOMPARE(difference(marked, picture(home->window)), tabPlace(1).marginsAdded(around));
}

void TestFocusMark::theMarkLeavesOutTheEmptySpaceAfterABox()
{
    home->window.NavSettings();
    auto *const box = home->child(u"OnlyViewData"_s);
    const QRect mark = markOf(home->window, *box);
    QCOMPARE(mark.left(), placeIn(home->window, *box).left() - around.left());
    QVERIFY(mark.right() < placeIn(home->window, *box).center().x() + 50);
}

void TestFocusMark::aClickTakesTheMarkAway()
{
    auto *const button = home->child(u"NavHelpBtn"_s);
    const QImage before = picture(home->window);
    button->setFocus(Qt::TabFocusReason);
    QVERIFY(!difference(before, picture(home->window)).isEmpty());
    home->clickAt(u"MainMenu"_s, nothingThere);
    QVERIFY(difference(before, picture(home->window)).isEmpty());
}

void TestFocusMark::whatWasClickedHasNoMark()
{
    const QImage before = picture(home->window);
    home->click(u"NavMainBtn"_s);
    QVERIFY(home->child(u"NavMainBtn"_s)->hasFocus());
    // But for the look of a button below the pointer.
    const QRect place = placeIn(home->window, *home->child(u"NavMainBtn"_s));
    QVERIFY(place.contains(difference(before, picture(home->window)))
            || difference(before, picture(home->window)).isEmpty());
}

void TestFocusMark::whatTakesOverFromAClickedButtonHasNoMark_data()
{
    QTest::addColumn<bool>("byItsPress");
    QTest::newRow("disabled by its press") << true;
    QTest::newRow("disabled by its release, as it is") << false;
}

void TestFocusMark::whatTakesOverFromAClickedButtonHasNoMark()
{
    QFETCH(const bool, byItsPress);
    home->click(u"NavSettingsBtn"_s);
    auto *const button = home->child(u"ClearCacheBtn"_s);
    if (byItsPress) {
        connect(home->child<QPushButton>(u"ClearCacheBtn"_s), &QPushButton::pressed, button,
                [button] { button->setEnabled(false); });
    }
    const QPoint middle = placeIn(home->window, *button).center();
    QTest::mousePress(home->window.windowHandle(), Qt::LeftButton, {}, middle);
    QCoreApplication::processEvents();
    QTest::mouseRelease(home->window.windowHandle(), Qt::LeftButton, {}, middle);
    auto *const next = home->window.focusWidget();
    QVERIFY(next && next != button);
    QVERIFY(!ringIn(home->window));
}

void TestFocusMark::theCanvasIsMarkedAtTheEdgesOfItsWindow()
{
    home->window.startProject();
    auto *const board = home->board();
    board->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(board));
    board->findChild<QWidget *>(u"FechaHoraTxt"_s)->hide(); // it may tick meanwhile
    auto *const canvas = board->findChild<QWidget *>(u"PizarraMain"_s);
    QCOMPARE(markOf(*board, *canvas), board->rect());
}

void TestFocusMark::theMarkLetsThePointerThrough()
{
    auto *const button = home->child<QAbstractButton>(u"NavHelpBtn"_s);
    button->setFocus(Qt::TabFocusReason);
    home->clickAt(u"NavHelpBtn"_s, {0, 10}); // where the mark lies over its edge
    QVERIFY(home->child(u"HelpMenu"_s)->isVisible());
}

void TestFocusMark::theMarkStaysAtAPanelThatMoves()
{
    auto *const panel = home->child(u"SideMenu"_s);
    auto *const button = home->child(u"NavHelpBtn"_s);
    button->setFocus(Qt::TabFocusReason);
    home->window.centralWidget()->raise();
    panel->move(panel->pos() + QPoint(7, 9));
    const QImage marked = picture(home->window);
    button->clearFocus();
    QCOMPARE(difference(marked, picture(home->window)),
             placeIn(home->window, *button).marginsAdded(around));
}

void TestFocusMark::whatChangesInsideOfTheMarkDoesNotPaintIt()
{
    auto *const viewport = home->list()->viewport();
    home->list()->setFocus(Qt::TabFocusReason);
    auto *const ring = ringIn(home->window);
    QVERIFY(ring);
    QCoreApplication::processEvents();

    const PaintCount painted(*ring);
    const PaintCount paintedInside(*viewport);
    viewport->update(viewport->rect().adjusted(9, 9, -9, -9));
    QTRY_COMPARE(paintedInside.count, 1);
    QCOMPARE(painted.count, 0);
}

void TestFocusMark::aMessageBoxMarksWhatEnterPresses()
{
    QRect mark;
    QRect place;
    const ModalAnswer<QMessageBox> answer([&](QMessageBox &box) {
        auto *const focus = box.focusWidget();
        if (QTest::qWaitFor([focus] { return focus && focus->hasFocus(); })) {
            place = placeIn(box, *focus);
            const QImage marked = picture(box);
            focus->clearFocus();
            mark = difference(marked, picture(box));
        }
        box.reject();
    });

    home->window.deleteAll();

    QVERIFY(answer.seen());
    QVERIFY(!place.isEmpty());
    QCOMPARE(mark, place.marginsAdded(around));
}

void TestFocusMark::aDialogHasAMarkWhenTheKeyboardOpensIt_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("the keyboard") << true;
    QTest::newRow("the mouse") << false;
}

void TestFocusMark::aDialogHasAMarkWhenTheKeyboardOpensIt()
{
    QFETCH(const bool, byKeyboard);
    if (byKeyboard)
        home->child(u"NewProject"_s)->setFocus(Qt::TabFocusReason);
    QDialog dialog(&home->window);
    QPushButton button(u"Abrir"_s, &dialog);
    dialog.open();
    QTRY_VERIFY(button.hasFocus());
    QCOMPARE(ringIn(dialog) != nullptr, byKeyboard);
}

void TestFocusMark::anotherWindowTakesTheMarkAlong()
{
    home->child(u"NewProject"_s)->setFocus(Qt::TabFocusReason);
    const QImage marked = picture(home->window);
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Space);
    QVERIFY(home->boardIsOpen());
    QVERIFY(picture(home->window) != marked);
    home->board()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(home->board()));
    home->closeBoard();
}

PLUMARA_TEST(TestFocusMark)
#include "tst_focusmark.moc"
