// A long day at the board: what is done over and over leaves no memory and no objects behind.

#include "items/stickynoteitem.h"
#include "tests/board/presentation.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/home/boardshome.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/heapsize.h"

#include <QFontDatabase>
#include <QTabWidget>

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// What is there at a moment.
struct Inventory
{
    explicit Inventory(const QObject &window)
        : heap(heapSize().value_or(0))
        , objects(window.findChildren<QObject *>().size())
        , windows(QGuiApplication::allWindows().size())
        , widgets(QApplication::allWidgets().size())
    { }

    qint64 heap;
    qsizetype objects;
    qsizetype windows;
    qsizetype widgets;
};

/// Does \a action so often that whatever it fills once is full, then as often again, and compares
/// what has been added by a time with \a bytes and with no objects of \a window at all.
void repeat(const QObject &window, qint64 bytes, const std::function<void()> &action)
{
    constexpr int times = 12; // the history holds ten steps
    for (int i = 0; i < times; ++i)
        action();
    const Inventory before(window);
    for (int i = 0; i < times; ++i)
        action();
    const Inventory after(window);

    const qint64 growth = (after.heap - before.heap) / times;
    QVERIFY2(growth <= bytes, qPrintable(u"%1 bytes a time"_s.arg(growth)));
    QCOMPARE(after.objects, before.objects);
    QCOMPARE(after.windows, before.windows);
    QCOMPARE(after.widgets, before.widgets);
}

/// As many registrations of fonts as there have been, and are still kept, until now.
int fontRegistrations()
{
    const int next = QFontDatabase::addApplicationFont(u":/fonts/Montserrat-Regular.ttf"_s);
    QFontDatabase::removeApplicationFont(next);
    return next;
}

} // namespace

class TestGrowth : public QObject
{
    Q_OBJECT

private slots:
    void presentingRegistersNoFurtherFont();
    void aFontThatSomebodyTookAwayIsRegisteredAgain();
    void presentingLeavesNothingBehind();
    void openingAndClosingLeavesNothingBehind();
    void savingLeavesNothingBehind();
    void cancelledDialogsLeaveNothingBehind();
    void readingTheHelpLeavesNothingBehind();
};

void TestGrowth::presentingRegistersNoFurtherFont()
{
    ShownBoard board;
    const int before = fontRegistrations();

    enterPresentation(board);
    pressKey(board, Qt::Key_Escape);

    QCOMPARE(fontRegistrations(), before);
}

void TestGrowth::aFontThatSomebodyTookAwayIsRegisteredAgain()
{
    ShownBoard board;
    enterPresentation(board);
    QFontDatabase::removeAllApplicationFonts();

    pressKey(board, Qt::Key_Escape);

    QVERIFY(QFontDatabase::families().contains(u"Montserrat"_s));
}

void TestGrowth::presentingLeavesNothingBehind()
{
    ShownBoard board;
    board.scene.addItem(new StickyNoteItem);
    // For eleven seconds there is the reminder's timer.
    repeat(board.window, 4000, [&board] {
        enterPresentation(board);
        pressKey(board, Qt::Key_Escape);
        board.processEvents();
    });
}

void TestGrowth::openingAndClosingLeavesNothingBehind()
{
    BoardsHome home;
    QJsonArray items;
    for (int i = 0; i < 100; ++i)
        items << BoardFile::stroke(i, 10, i + 5, 20) << BoardFile::note(i, 10);
    BoardFile::write(home.boardPath(u"plan.vtrz"_s), items);
    home.window.showProjects();
    home.click(u"NewProject"_s);
    home.closeBoard();

    repeat(home.window, 4000, [&home] {
        const BoxAnswer answer(u"No"_s);
        home.clickRow(0);
        QCoreApplication::processEvents();
        home.closeBoard();
        QCoreApplication::processEvents();
    });
}

void TestGrowth::savingLeavesNothingBehind()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(
        BoardFile::write(home.path(u"plan.vtrz"_s), QJsonArray{BoardFile::note(500, 300)}));

    repeat(board.window, 100, [&board] {
        board.window.saveBoard();
        board.processEvents();
    });
}

void TestGrowth::cancelledDialogsLeaveNothingBehind()
{
    const ScratchHome home;
    ShownBoard board;
    // The toolkit's dialog remembers where it has been.
    repeat(board.window, 10000, [&board] {
        {
            const FileDialogAnswer answer({});
            board.click("GuardarComo");
        }
        {
            const FileDialogAnswer answer({});
            board.click("ModoImagen");
        }
        board.processEvents();
    });
}

void TestGrowth::readingTheHelpLeavesNothingBehind()
{
    HomeWindow home;
    auto *const pages = home.child<QTabWidget>(u"HelpWidget"_s);
    repeat(home.window, 500, [&] {
        home.click(u"NavHelpBtn"_s);
        for (int i = 0; i < pages->count(); ++i) {
            pages->setCurrentIndex(i);
            QCoreApplication::processEvents();
        }
        home.click(u"NavMainBtn"_s);
        QCoreApplication::processEvents();
    });
}

PLUMARA_TEST(TestGrowth)
#include "tst_growth.moc"
