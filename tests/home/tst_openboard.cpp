// Opening boards from the home window: from its list, new ones, from a dialog.

#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/home/boardshome.h"
#include "tests/support/look/markingtranslator.h"
#include "tests/support/main/registeredtest.h"

#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Makes protected counting of connections available.
struct Connections : QObject
{
    static int count(const QObject &sender, const char *signal)
    {
        return (sender.*(&Connections::receivers))(signal);
    }
};

/// Keeps which windows of the program are shown and hidden, in their order, and the name on the
/// board when that is shown.
class WindowEvents : public QObject
{
public:
    WindowEvents() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool shown = event->type() == QEvent::Show;
        if (qobject_cast<QMainWindow *>(watched) && (shown || event->type() == QEvent::Hide)) {
            const QString name = QString::fromLatin1(watched->metaObject()->className());
            order << name + (shown ? u" shown"_s : u" hidden"_s);
            if (shown)
                boardName = watched->findChild<QLabel *>(u"NombreProyectoTxt"_s)->text();
        }
        return QObject::eventFilter(watched, event);
    }

    QStringList order;
    QString boardName;
};

} // namespace

class TestOpenBoard : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<BoardsHome>(); }
    void cleanup() { home.reset(); }

    // Opening from the list
    void aSingleClickOpensTheBoard();
    void everyListingAddsAConnection();
    void oneClickOpensOneBoardHoweverOftenTheListWasBuilt();
    void severalBoardsOpenOneAfterAnother();
    void twoClicksInARowAreTwoClicks();
    void theSlotServesDirectCallsToo();
    void aClickOnNoBoardDoesNothing();
    void enterOpensTheSelectedBoard_data();
    void enterOpensTheSelectedBoard();
    void theTabKeySelectsTheNewestBoard();
    void theTabKeySelectsTheOnlyBoard();
    void theFirstArrowKeyTakesTheNewestBoard();
    void theFirstWarningStandsOverTheWindow();
    void everyBoardBeginsAtItsCorner();
    void enterOpensNothingElsewhere();
    void aKeyThatIsStillHeldOpensNothing();
    void aVanishedBoardIsReportedOnceAndTheBoardWindowShown();
    void theListIsNotRefreshedWhenTheBoardCloses();

    // However a board is opened
    void theBoardIsNamedAndShownBeforeTheHomeWindowGoes_data();
    void theBoardIsNamedAndShownBeforeTheHomeWindowGoes();

    // The two actions
    void newBoardShowsAnEmptyBoard();
    void newBoardAfterAnotherIsEmptyAgain();
    void theFirstBoardDressesNoOtherWindowAnew();
    void closingTheBoardThroughTheSystemEndsTheProgram_data();
    void closingTheBoardThroughTheSystemEndsTheProgram();
    void theOpenDialogAsksForBoardFiles();
    void theOpenDialogShowsItsButtonsWhole();
    void theOpenDialogStartsInTheDefaultFolder();
    void theOpenDialogIsTranslated();
    void cancellingTheOpenDialogChangesNothing();
    void theChosenFileIsOpenedAndTheListLeftAlone();
    void aBrokenFileIsReportedAndTheBoardWindowShown();

private:
    std::unique_ptr<BoardsHome> home;
};

void TestOpenBoard::aSingleClickOpensTheBoard()
{
    BoardFile::write(home->boardPath(u"note.vtrz"_s), QJsonArray{BoardFile::note(100, 100)},
                     march(1));
    home->writeBoards(1);
    home->clickRow(1);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), u"note.vtrz"_s);
    QVERIFY(home->boardItems() > 0);
}

void TestOpenBoard::everyListingAddsAConnection()
{
    const char *const clicked = SIGNAL(itemClicked(QListWidgetItem *));
    const int before = Connections::count(*home->list(), clicked);
    for (int run = 1; run <= 3; ++run) {
        home->window.showProjects();
        QCOMPARE(Connections::count(*home->list(), clicked), before + run);
    }
    QCOMPARE(Connections::count(*home->list(), SIGNAL(itemDoubleClicked(QListWidgetItem *))), 0);
}

void TestOpenBoard::oneClickOpensOneBoardHoweverOftenTheListWasBuilt()
{
    home->writeBoards(5);
    for (int run = 0; run < 10; ++run)
        home->window.showProjects();
    const QSignalSpy rebuilt(home->list()->model(), &QAbstractItemModel::modelReset);
    home->clickRow(2);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), u"b3.vtrz"_s);
    QCOMPARE(rebuilt.size(), 1);
}

void TestOpenBoard::severalBoardsOpenOneAfterAnother()
{
    home->writeBoards(4);
    const BoardWindow *first = nullptr;
    for (const int row : {3, 0, 2, 1, 1}) {
        const QSignalSpy rebuilt(home->list()->model(), &QAbstractItemModel::modelReset);
        home->clickRow(row);
        QVERIFY(home->boardIsOpen());
        QCOMPARE(home->boardName(), u"b%1.vtrz"_s.arg(row + 1));
        QCOMPARE(rebuilt.size(), 1);
        if (!first)
            first = home->board();
        QCOMPARE(home->board(), first);
        home->closeBoard();
    }
}

void TestOpenBoard::twoClicksInARowAreTwoClicks()
{
    home->writeBoards(2);
    // Sent to the list itself, so that the program has no moment of rest between the two.
    for (const int row : {0, 1}) {
        QTest::mouseClick(home->list()->viewport(), Qt::LeftButton, {},
                          home->list()->visualItemRect(home->list()->item(row)).center());
        QCOMPARE(home->boardName(), u"b%1.vtrz"_s.arg(row + 1));
    }
}

void TestOpenBoard::theSlotServesDirectCallsToo()
{
    home->writeBoards(2);
    home->clickRow(0);
    for (const int row : {1, 0}) {
        home->window.onProjectDoubleClicked(home->list()->item(row));
        QCOMPARE(home->boardName(), u"b%1.vtrz"_s.arg(row + 1));
    }
}

void TestOpenBoard::aClickOnNoBoardDoesNothing()
{
    home->window.onProjectDoubleClicked(nullptr);
    home->list()->addItem(u"no path"_s);
    home->clickRow(0);
    QVERIFY(!home->board());
    QVERIFY(home->window.isVisible());
    QCOMPARE(home->listed(), QStringList({u"no path"_s}));
}

void TestOpenBoard::enterOpensTheSelectedBoard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("on the letters") << Qt::Key_Return;
    QTest::newRow("on the keypad") << Qt::Key_Enter;
}

void TestOpenBoard::enterOpensTheSelectedBoard()
{
    QFETCH(const Qt::Key, key);
    home->writeBoards(3);
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    home->list()->setFocus(Qt::TabFocusReason);
    const QSignalSpy rebuilt(home->list()->model(), &QAbstractItemModel::modelReset);
    QTest::keyClick(home->window.windowHandle(), Qt::Key_End);
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Up);

    QTest::keyClick(home->window.windowHandle(), key,
                    key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);

    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), u"b2.vtrz"_s);
    QCOMPARE(rebuilt.size(), 1);
}

void TestOpenBoard::theTabKeySelectsTheNewestBoard()
{
    home->writeBoards(3);
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    home->list()->setFocus(Qt::TabFocusReason);
    QCOMPARE(home->list()->currentRow(), 0);
    QVERIFY(home->list()->item(0)->isSelected());

    // What was selected stays so.
    home->list()->setCurrentRow(2);
    home->child(u"NavMainBtn"_s)->setFocus();
    home->list()->setFocus(Qt::BacktabFocusReason);
    QCOMPARE(home->list()->currentRow(), 2);
}

void TestOpenBoard::theTabKeySelectsTheOnlyBoard()
{
    home->writeBoards(1);
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    home->list()->setFocus(Qt::TabFocusReason);
    QVERIFY(home->list()->item(0)->isSelected());
}

void TestOpenBoard::theFirstArrowKeyTakesTheNewestBoard()
{
    home->writeBoards(3);
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    // As when the window comes back to the front.
    home->list()->setFocus(Qt::ActiveWindowFocusReason);
    QVERIFY(home->list()->selectedItems().isEmpty());
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Down);
    QCOMPARE(home->list()->currentRow(), 0);
    QVERIFY(home->list()->item(0)->isSelected());
}

void TestOpenBoard::theFirstWarningStandsOverTheWindow()
{
    writeFile(home->boardPath(u"roto.vtrz"_s), "[");
    home->window.showProjects();
    home->window.move(0, 90);
    QPoint middle;
    const ModalAnswer<QMessageBox> answer([&middle](QMessageBox &box) {
        middle = box.frameGeometry().center();
        box.reject();
    });
    home->clickRow(0);
    QVERIFY(answer.seen());
    const QPoint distance = middle - home->board()->frameGeometry().center();
    QVERIFY(distance.manhattanLength() < 30);
}

void TestOpenBoard::everyBoardBeginsAtItsCorner()
{
    home->writeBoards(2);
    home->click(u"NewProject"_s);
    auto &view = *home->board()->findChild<QGraphicsView *>(u"PizarraMain"_s);
    const QPointF corner = view.mapToScene(QPoint());
    const auto scroll = [&view] {
        view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->maximum());
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    };
    scroll();
    QVERIFY(view.mapToScene(QPoint()) != corner);
    home->closeBoard();
    home->click(u"NewProject"_s);
    QCOMPARE(view.mapToScene(QPoint()), corner);

    scroll();
    home->board()->loadBoard(home->boardPath(u"b2.vtrz"_s));
    QCOMPARE(view.mapToScene(QPoint()), corner);
}

void TestOpenBoard::enterOpensNothingElsewhere()
{
    home->writeBoards(2);
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    // No row is selected yet.
    home->list()->setFocus(Qt::OtherFocusReason);
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Return);
    QVERIFY(!home->board());

    home->list()->setCurrentRow(1);
    home->child(u"NavMainBtn"_s)->setFocus();
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Return);
    QVERIFY(!home->board());
}

void TestOpenBoard::aKeyThatIsStillHeldOpensNothing()
{
    home->writeBoards(2);
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    home->list()->setFocus(Qt::TabFocusReason);
    home->list()->setCurrentRow(1);
    // What a dialog leaves behind that was closed by Enter.
    QTest::simulateEvent(home->window.windowHandle(), true, Qt::Key_Return, Qt::NoModifier, u"\r"_s,
                         true);
    QVERIFY(!home->board());
}

void TestOpenBoard::aVanishedBoardIsReportedOnceAndTheBoardWindowShown()
{
    home->writeBoards(3);
    home->window.showProjects();
    home->window.showProjects();
    QVERIFY(QFile::remove(home->boardPath(u"b2.vtrz"_s)));
    const BoxSequence sequence({u"OK"_s});
    home->clickRow(1);
    QCOMPARE(sequence.boxes().size(), 1);
    QCOMPARE(sequence.boxes()[0].text, u"No se pudo abrir el archivo."_s);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), u"b2.vtrz"_s);
    QCOMPARE(home->listed(), QStringList({u"b1.vtrz"_s, u"b3.vtrz"_s}));
}

void TestOpenBoard::theListIsNotRefreshedWhenTheBoardCloses()
{
    home->writeBoards(1);
    home->clickRow(0);
    BoardFile::write(home->boardPath(u"later.vtrz"_s));
    home->closeBoard();
    QCOMPARE(home->listed(), QStringList({u"b1.vtrz"_s}));
    home->clickRow(0);
    QCOMPARE(home->listed(), QStringList({u"later.vtrz"_s, u"b1.vtrz"_s}));
}

void TestOpenBoard::theBoardIsNamedAndShownBeforeTheHomeWindowGoes_data()
{
    using Way = std::function<void(BoardsHome &)>;
    QTest::addColumn<Way>("open");
    QTest::addColumn<QString>("name");
    QTest::newRow("new") << Way([](BoardsHome &window) { window.click(u"NewProject"_s); })
                         << u"Pizarra1.vrtz"_s;
    QTest::newRow("from the dialog") << Way([](BoardsHome &window) {
        const FileDialogAnswer answer(window.boardPath(u"b2.vtrz"_s));
        window.click(u"ImportProject"_s);
    }) << u"b2.vtrz"_s;
    QTest::newRow("from the list")
        << Way([](BoardsHome &window) { window.clickRow(0); }) << u"b1.vtrz"_s;
    QTest::newRow("a vanished one from the list") << Way([](BoardsHome &window) {
        QFile::remove(window.boardPath(u"b1.vtrz"_s));
        const BoxSequence sequence({u"OK"_s});
        window.clickRow(0);
    }) << u"b1.vtrz"_s;
}

void TestOpenBoard::theBoardIsNamedAndShownBeforeTheHomeWindowGoes()
{
    QFETCH(const std::function<void(BoardsHome &)>, open);
    QFETCH(const QString, name);
    home->writeBoards(2);
    const WindowEvents events;
    open(*home);
    QCOMPARE(events.order, QStringList({u"BoardWindow shown"_s, u"MainWindow hidden"_s}));
    QCOMPARE(events.boardName, name);
}

void TestOpenBoard::newBoardShowsAnEmptyBoard()
{
    home->click(u"NewProject"_s);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), u"Pizarra1.vrtz"_s);
    QCOMPARE(home->boardItems(), 0);
}

void TestOpenBoard::newBoardAfterAnotherIsEmptyAgain()
{
    home->writeBoards(1);
    home->clickRow(0);
    const auto *const first = home->board();
    home->closeBoard();
    home->click(u"NewProject"_s);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->board(), first);
    QCOMPARE(home->boardName(), u"Pizarra1.vtrz"_s);
    QCOMPARE(home->boardItems(), 0);
}

void TestOpenBoard::theFirstBoardDressesNoOtherWindowAnew()
{
    class Dressings : public QObject
    {
    public:
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::StyleChange)
                ++count;
            return QObject::eventFilter(watched, event);
        }

        int count = 0;
    };
    Dressings dressings;
    home->window.installEventFilter(&dressings);
    home->click(u"NewProject"_s);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(dressings.count, 0);
}

void TestOpenBoard::closingTheBoardThroughTheSystemEndsTheProgram_data()
{
    QTest::addColumn<bool>("wanted");
    QTest::newRow("as a rule") << true;
    QTest::newRow("unless the program is to go on without a window") << false;
}

void TestOpenBoard::closingTheBoardThroughTheSystemEndsTheProgram()
{
    QFETCH(const bool, wanted);
    constexpr int stillRunning = 1;
    QGuiApplication::setQuitOnLastWindowClosed(wanted);
    home->click(u"NewProject"_s);
    QVERIFY(home->boardIsOpen());

    QTimer::singleShot(0, home->board(), &QWidget::close);
    QTimer::singleShot(wanted ? 5000 : 50, home->board(),
                       [] { QCoreApplication::exit(stillRunning); });
    const int code = QApplication::exec();
    QGuiApplication::setQuitOnLastWindowClosed(true);

    QCOMPARE(code, wanted ? 0 : stillRunning);
    QVERIFY(!home->board()->isVisible());
    QVERIFY(!home->window.isVisible());
}

void TestOpenBoard::theOpenDialogAsksForBoardFiles()
{
    const FileDialogAnswer answer{QString()};
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QCOMPARE(answer.dialog().caption, u"Abrir proyecto"_s);
    QCOMPARE(answer.dialog().filters, QStringList({u"Pizarra de Plumara (*.vtrz)"_s}));
    QCOMPARE(answer.dialog().mode, QFileDialog::AcceptOpen);
    QCOMPARE(answer.dialog().fileMode, QFileDialog::ExistingFile);
    QCOMPARE(answer.dialog().parent, &home->window);
}

void TestOpenBoard::theOpenDialogShowsItsButtonsWhole()
{
    QStringList covered;
    const ModalAnswer<QFileDialog> answer([&covered](QFileDialog &dialog) {
        QTimer::singleShot(0, &dialog, &QDialog::reject);
        const auto buttons = dialog.findChildren<QPushButton *>();
        for (const auto *button : buttons) {
            const QPoint corner = button->mapTo(&dialog, button->rect().bottomRight());
            if (dialog.childAt(corner) != button)
                covered << button->text();
        }
    });
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QCOMPARE(covered, QStringList());
}

void TestOpenBoard::theOpenDialogStartsInTheDefaultFolder()
{
    const FileDialogAnswer answer{QString()};
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    // An empty start folder is the folder that the program runs in, not the data folder.
    QCOMPARE(answer.dialog().folder, QDir::currentPath());
}

void TestOpenBoard::theOpenDialogIsTranslated()
{
    const MarkingTranslator translator("MainWindow");
    const FileDialogAnswer answer{QString()};
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QCOMPARE(answer.dialog().caption, u"<Abrir proyecto>"_s);
    QCOMPARE(answer.dialog().filters, QStringList{u"<Pizarra de Plumara (*.vtrz)>"_s});
}

void TestOpenBoard::cancellingTheOpenDialogChangesNothing()
{
    home->writeBoards(1);
    const QSignalSpy rebuilt(home->list()->model(), &QAbstractItemModel::modelReset);
    const FileDialogAnswer answer{QString()};
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QVERIFY(home->window.isVisible());
    QVERIFY(!home->board());
    QCOMPARE(rebuilt.size(), 0);
}

void TestOpenBoard::theChosenFileIsOpenedAndTheListLeftAlone()
{
    const QString path = home->path(u"elsewhere/plan.vtrz"_s);
    BoardFile::write(path, QJsonArray{BoardFile::note(100, 100)});
    BoardFile::write(home->boardPath(u"unlisted.vtrz"_s));
    const FileDialogAnswer answer(path);
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), u"plan.vtrz"_s);
    QVERIFY(home->boardItems() > 0);
    QCOMPARE(home->list()->count(), 0);
}

void TestOpenBoard::aBrokenFileIsReportedAndTheBoardWindowShown()
{
    const QString path = home->path(u"broken.vtrz"_s);
    writeFile(path, "no board");
    const BoxSequence sequence({u"OK"_s});
    const FileDialogAnswer answer(path);
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QCOMPARE(sequence.boxes().size(), 1);
    QCOMPARE(sequence.boxes()[0].text, u"El archivo no tiene un formato válido."_s);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), u"broken.vtrz"_s);
}

PLUMARA_TEST(TestOpenBoard)
#include "tst_openboard.moc"
