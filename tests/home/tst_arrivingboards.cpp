// Boards that come from outside: named when the program is started, at first or once more.

#include "board/longwork.h"
#include "tests/support/dialogs/filedialoganswer.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/home/boardshome.h"
#include "tests/support/main/registeredtest.h"

#include <QComboBox>
#include <QMenu>
#include <QScopeGuard>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString closingQuestion = u"Hay cambios sin guardar. ¿Deseas guardar antes de salir?"_s;
const QString cannotOpen = u"No se pudo abrir el archivo."_s;
const QString noBoard = u"El archivo no tiene un formato válido."_s;

/// Counts what the timers of the program do.
class TimerCount : public QObject
{
public:
    TimerCount() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Timer && qobject_cast<QTimer *>(watched))
            ++count;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

constexpr int longEnough = 500; // ms, in which a board that may come has come several times

/// A home with boards, of which one may be open.
class StartedHome : public BoardsHome
{
public:
    /// The file of a board with that many notes.
    QString board(const QString &name, int notes = 1) const
    {
        QJsonArray items;
        for (int i = 0; i < notes; ++i)
            items << BoardFile::note(100 + 200 * i, 100);
        return BoardFile::write(boardPath(name), items);
    }
    using BoardsHome::board;

    /// Opens a board with one note as it is opened from the list.
    QString open(const QString &name)
    {
        const QString path = board(name);
        window.showProjects();
        clickRow(0);
        if (boardName() != name || boardItems() == 0)
            qFatal("The board was not opened.");
        return path;
    }
    void present() const
    {
        board()->findChild<QComboBox *>(u"Presentar"_s)->setCurrentIndex(0);
        QCoreApplication::processEvents();
    }
    /// Whether the board \a name is shown and is all there.
    bool shows(const QString &name) const
    {
        return boardIsOpen() && boardName() == name && boardItems() > 0;
    }
    /// Clicks the button that closes the board, and returns when its question was answered.
    void leaveBoard() const
    {
        QVERIFY(QTest::qWaitForWindowExposed(board()));
        auto *const button = board()->findChild<QWidget *>(u"CloseBoardBtn"_s);
        QTest::mouseClick(board()->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(board(), button->rect().center()));
    }
};

QStringList textsOf(const BoxSequence &sequence)
{
    QStringList texts;
    for (const BoxContents &box : sequence.boxes())
        texts << box.text;
    return texts;
}

} // namespace

class TestArrivingBoards : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<StartedHome>(); }
    void cleanup() { home.reset(); }

    // Another start brings the program to the front
    void theHomeWindowComesToTheFront();
    void theBoardComesToTheFront();
    void aPresentationComesBackOnTheFullScreen();
    void theDialogThatIsOpenGetsTheKeyboard();
    void aProgramThatEndsIsLeftAlone_data();
    void aProgramThatEndsIsLeftAlone();

    // The board that was named
    void aBoardIsOpened();
    void aBoardThatCannotBeOpenedIsReported_data();
    void aBoardThatCannotBeOpenedIsReported();
    void ofSeveralBoardsTheLastIsOpened();
    void aStartWithoutABoardTakesNoneAway();

    // With a board open
    void anEmptyBoardGivesWayAtOnce();
    void cancelKeepsTheOpenBoard();
    void noOpensTheOtherBoard();
    void yesSavesTheOpenBoardFirst();
    void whatCouldNotBeSavedStays();
    void whatWasSavedAsTheOtherBoardIsThatBoard();
    void whatIsNoBoardLeavesTheOpenOneAsItIs_data();
    void whatIsNoBoardLeavesTheOpenOneAsItIs();
    void theOpenBoardStays_data();
    void theOpenBoardStays();
    void aPresentationGoesOnWithTheOtherBoard();

    // In the middle of something
    void aDialogIsWaitedFor();
    void theAnswerToADialogCountsForTheBoardThatItWasAbout_data();
    void theAnswerToADialogCountsForTheBoardThatItWasAbout();
    void aMenuIsWaitedFor();
    void waitingTakesNoTimeFromOthers();
    void aHeldButtonIsWaitedFor();
    void longWorkIsWaitedFor();

private:
    std::unique_ptr<StartedHome> home;
};

void TestArrivingBoards::theHomeWindowComesToTheFront()
{
    home->window.setWindowState(Qt::WindowMinimized);
    home->window.answerStart({});
    QVERIFY(!home->window.isMinimized());
    QTRY_VERIFY(home->window.isActiveWindow());
    QTest::qWait(longEnough);
    QVERIFY(!home->board());
}

void TestArrivingBoards::theBoardComesToTheFront()
{
    home->open(u"plan.vtrz"_s);
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_VERIFY(other.isActiveWindow());
    home->board()->setWindowState(Qt::WindowMinimized);

    home->window.answerStart({});

    QVERIFY(!home->board()->isMinimized());
    QTRY_VERIFY(home->board()->isActiveWindow());
    QVERIFY(home->shows(u"plan.vtrz"_s));
}

void TestArrivingBoards::aPresentationComesBackOnTheFullScreen()
{
    home->open(u"plan.vtrz"_s);
    home->present();
    home->board()->setWindowState(home->board()->windowState() | Qt::WindowMinimized);
    home->window.answerStart({});
    QVERIFY(!home->board()->isMinimized());
    QVERIFY(home->board()->isFullScreen());
}

void TestArrivingBoards::theDialogThatIsOpenGetsTheKeyboard()
{
    home->open(u"plan.vtrz"_s);
    bool active = false;
    const ModalAnswer<QMessageBox> answer([this, &active](QMessageBox &box) {
        QWidget other(&box, Qt::Window);
        other.show();
        other.activateWindow();
        if (!QTest::qWaitForWindowActive(&other))
            qFatal("The other window never became active.");
        home->window.answerStart({});
        active = QTest::qWaitFor([&box] { return box.isActiveWindow(); });
        answerBox(box, u"Cancelar"_s);
    });
    home->leaveBoard();
    QVERIFY(answer.seen());
    QVERIFY(active);
}

void TestArrivingBoards::aProgramThatEndsIsLeftAlone_data()
{
    QTest::addColumn<bool>("calledBefore");
    QTest::newRow("the board is named before") << true;
    QTest::newRow("the board is named after that") << false;
}

void TestArrivingBoards::aProgramThatEndsIsLeftAlone()
{
    QFETCH(const bool, calledBefore);
    const QString path = home->board(u"plan.vtrz"_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const auto asEver = qScopeGuard([] { QGuiApplication::setQuitOnLastWindowClosed(true); });
    if (calledBefore)
        home->window.answerStart(path);
    home->window.close();
    if (!calledBefore)
        home->window.answerStart(path);
    QTest::qWait(longEnough);
    QVERIFY(!home->window.isVisible());
    QVERIFY(!home->board());
}

void TestArrivingBoards::aBoardIsOpened()
{
    home->window.answerStart(home->board(u"plan.vtrz"_s));
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
}

void TestArrivingBoards::aBoardThatCannotBeOpenedIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("a vanished one") << u"none.vtrz"_s << cannotOpen;
    QTest::newRow("a folder") << u"."_s << cannotOpen;
    QTest::newRow("a damaged one") << u"damaged.vtrz"_s << noBoard;
}

void TestArrivingBoards::aBoardThatCannotBeOpenedIsReported()
{
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    writeFile(home->boardPath(u"damaged.vtrz"_s), R"({"items": [)");
    const BoxSequence sequence({u"OK"_s});
    home->window.answerStart(home->boardPath(name));
    // As from the list.
    QTRY_VERIFY(home->boardIsOpen());
    QCOMPARE(textsOf(sequence), QStringList{text});
    QCOMPARE(home->boardItems(), 0);
}

void TestArrivingBoards::ofSeveralBoardsTheLastIsOpened()
{
    const BoxSequence sequence({u"OK"_s});
    home->window.answerStart(home->boardPath(u"none.vtrz"_s));
    home->window.answerStart(home->board(u"plan.vtrz"_s));
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
    QCOMPARE(textsOf(sequence), QStringList());
}

void TestArrivingBoards::aStartWithoutABoardTakesNoneAway()
{
    home->window.answerStart(home->board(u"plan.vtrz"_s));
    home->window.answerStart({});
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
}

void TestArrivingBoards::anEmptyBoardGivesWayAtOnce()
{
    home->click(u"NewProject"_s);
    QVERIFY(home->boardIsOpen());
    const BoxSequence sequence({u"Cancelar"_s});
    home->window.answerStart(home->board(u"plan.vtrz"_s));
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
    QCOMPARE(textsOf(sequence), QStringList());
}

void TestArrivingBoards::cancelKeepsTheOpenBoard()
{
    const QString path = home->open(u"plan.vtrz"_s);
    home->board()->setUnsaved(true);
    const QString name = home->boardName();
    const BoxSequence sequence({u"Cancelar"_s});
    home->window.answerStart(home->board(u"other.vtrz"_s, 2));
    QTRY_COMPARE(textsOf(sequence), QStringList{closingQuestion});
    QTest::qWait(longEnough);
    QCOMPARE(sequence.boxes().size(), 1);
    QVERIFY(home->boardIsOpen());
    QCOMPARE(home->boardName(), name);
    QVERIFY(home->board()->shows(path));
}

void TestArrivingBoards::noOpensTheOtherBoard()
{
    const QString path = home->open(u"plan.vtrz"_s);
    const QByteArray before = readFile(path);
    const QString other = home->board(u"other.vtrz"_s, 2);
    const BoxSequence sequence({u"No"_s});
    home->window.answerStart(other);
    QTRY_VERIFY(home->shows(u"other.vtrz"_s));
    QCOMPARE(textsOf(sequence), QStringList{closingQuestion});
    QVERIFY(home->board()->shows(other));
    QCOMPARE(readFile(path), before);
}

void TestArrivingBoards::yesSavesTheOpenBoardFirst()
{
    const QString path = home->open(u"plan.vtrz"_s);
    QVERIFY(QFile::remove(path));
    const BoxSequence sequence({u"Sí"_s});
    home->window.answerStart(home->board(u"other.vtrz"_s, 2));
    QTRY_VERIFY(home->shows(u"other.vtrz"_s));
    QCOMPARE(textsOf(sequence), QStringList{closingQuestion});
    QCOMPARE(BoardFile::items(path).size(), 1);
}

void TestArrivingBoards::whatCouldNotBeSavedStays()
{
    const QString path = home->open(u"plan.vtrz"_s);
    QVERIFY(QFile::remove(path));
    QVERIFY(QDir().mkdir(path));
    const qsizetype items = home->boardItems();
    const BoxSequence sequence({u"Sí"_s, u"OK"_s});
    home->window.answerStart(home->board(u"other.vtrz"_s, 2));
    QTRY_COMPARE(textsOf(sequence),
                 QStringList({closingQuestion, u"No se pudo guardar el archivo."_s}));
    QTest::qWait(longEnough);
    QVERIFY(home->shows(u"plan.vtrz"_s));
    QCOMPARE(home->boardItems(), items);
}

void TestArrivingBoards::whatWasSavedAsTheOtherBoardIsThatBoard()
{
    const QString other = home->board(u"other.vtrz"_s, 3);
    home->click(u"NewProject"_s);
    QVERIFY(QTest::qWaitForWindowExposed(home->board()));
    home->board()->setPostItMode();
    QTest::mouseClick(home->board()->windowHandle(), Qt::LeftButton, {},
                      home->board()->rect().center());
    const qsizetype items = home->boardItems();
    const BoxSequence sequence({u"Sí"_s});
    // Without its ending, so that nobody asks whether the file is to be replaced.
    const FileDialogAnswer answer(home->boardPath(u"other"_s));
    home->window.answerStart(other);
    QTRY_VERIFY(answer.seen());
    QTest::qWait(longEnough);
    QCOMPARE(textsOf(sequence), QStringList{closingQuestion});
    QCOMPARE(BoardFile::items(other).size(), 1);
    QVERIFY(home->shows(u"other.vtrz"_s));
    QCOMPARE(home->boardItems(), items);
}

void TestArrivingBoards::whatIsNoBoardLeavesTheOpenOneAsItIs_data()
{
    aBoardThatCannotBeOpenedIsReported_data();
}

void TestArrivingBoards::whatIsNoBoardLeavesTheOpenOneAsItIs()
{
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    const QString path = home->open(u"plan.vtrz"_s);
    const qsizetype items = home->boardItems();
    writeFile(home->boardPath(u"damaged.vtrz"_s), R"({"items": [)");
    const BoxSequence sequence({u"OK"_s});
    home->window.answerStart(home->boardPath(name));
    QTRY_COMPARE(textsOf(sequence), QStringList{text});
    QTest::qWait(longEnough);
    QCOMPARE(sequence.boxes().size(), 1);
    QVERIFY(home->shows(u"plan.vtrz"_s));
    QVERIFY(home->board()->shows(path));
    QCOMPARE(home->boardItems(), items);
}

void TestArrivingBoards::theOpenBoardStays_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("by its name") << u"plan.vtrz"_s;
    QTest::newRow("by another way to it") << u"../OrvanePlumara/./plan.vtrz"_s;
#ifndef Q_OS_WIN
    QTest::newRow("by a link") << u"link.vtrz"_s;
#endif
}

void TestArrivingBoards::theOpenBoardStays()
{
    QFETCH(const QString, name);
    const QString path = home->open(u"plan.vtrz"_s);
    QVERIFY(QFile::link(path, home->boardPath(u"link.vtrz"_s)));
    home->board()->setUnsaved(true);
    const BoxSequence sequence({u"No"_s});
    home->window.answerStart(home->boardPath(name));
    QTest::qWait(longEnough);
    QCOMPARE(textsOf(sequence), QStringList());
    QCOMPARE(home->boardName(), u"plan.vtrz* (Sin guardar)"_s);
}

void TestArrivingBoards::aPresentationGoesOnWithTheOtherBoard()
{
    home->open(u"plan.vtrz"_s);
    home->present();
    const BoxSequence sequence({u"No"_s});
    home->window.answerStart(home->board(u"other.vtrz"_s));
    QTRY_VERIFY(home->shows(u"other.vtrz"_s));
    QVERIFY(home->board()->isFullScreen());
}

void TestArrivingBoards::aDialogIsWaitedFor()
{
    const QString path = home->board(u"plan.vtrz"_s);
    bool waited = false;
    const ModalAnswer<QFileDialog> answer([&](QFileDialog &dialog) {
        home->window.answerStart(path);
        QTest::qWait(longEnough);
        waited = home->window.isVisible() && !home->board();
        dialog.reject();
    });
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QVERIFY(waited);
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
}

void TestArrivingBoards::theAnswerToADialogCountsForTheBoardThatItWasAbout_data()
{
    QTest::addColumn<bool>("inTheSameMoment");
    QTest::newRow("the other one is named before") << false;
    QTest::newRow("the dialog goes when the other one could come") << true;
}

void TestArrivingBoards::theAnswerToADialogCountsForTheBoardThatItWasAbout()
{
    QFETCH(const bool, inTheSameMoment);
    const QString path = home->board(u"plan.vtrz"_s);
    home->window.answerStart(path);
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
    QVERIFY(QFile::remove(path));
    const QString other = home->board(u"other.vtrz"_s, 2);
    const ModalAnswer<QMessageBox> answer([&](QMessageBox &box) {
        home->window.answerStart(other);
        if (inTheSameMoment) {
            // Both are due by then, and the answer a little earlier.
            QTimer::singleShot(1, Qt::PreciseTimer, &box, [&box] { answerBox(box, u"Sí"_s); });
            QTest::qSleep(longEnough);
        } else {
            QTest::qWait(longEnough);
            answerBox(box, u"Sí"_s);
        }
    });
    home->leaveBoard();
    QVERIFY(answer.seen());
    QVERIFY(home->window.isVisible() && !home->board()->isVisible());
    QTRY_VERIFY(home->shows(u"other.vtrz"_s));
    QCOMPARE(BoardFile::items(path).size(), 1);
    QCOMPARE(BoardFile::items(other).size(), 2);
}

void TestArrivingBoards::aMenuIsWaitedFor()
{
    QMenu menu(&home->window);
    menu.addAction(u"choose"_s);
    menu.popup(home->window.mapToGlobal(QPoint(300, 300)));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    home->window.answerStart(home->board(u"plan.vtrz"_s));
    QTest::qWait(longEnough);
    QVERIFY(!home->board());
    menu.close();
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
}

void TestArrivingBoards::waitingTakesNoTimeFromOthers()
{
    QMenu menu(&home->window);
    menu.addAction(u"choose"_s);
    menu.popup(home->window.mapToGlobal(QPoint(300, 300)));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    home->window.answerStart(home->board(u"plan.vtrz"_s));
    const TimerCount timers;
    QTest::qWait(longEnough);
    QVERIFY2(timers.count < 30, qPrintable(QString::number(timers.count)));
}

void TestArrivingBoards::aHeldButtonIsWaitedFor()
{
    home->open(u"plan.vtrz"_s);
    QVERIFY(QTest::qWaitForWindowExposed(home->board()));
    const QPoint middle = home->board()->rect().center();
    home->board()->setPenMode();
    QTest::mousePress(home->board()->windowHandle(), Qt::LeftButton, {}, middle);
    QTest::mouseMove(home->board()->windowHandle(), middle + QPoint(10, 10));
    const qsizetype items = home->boardItems();
    const BoxSequence sequence({u"No"_s});
    home->window.answerStart(home->board(u"other.vtrz"_s));
    QTest::qWait(longEnough);
    QCOMPARE(textsOf(sequence), QStringList());
    QCOMPARE(home->boardItems(), items);
    QTest::mouseRelease(home->board()->windowHandle(), Qt::LeftButton, {}, middle);
    QTRY_VERIFY(home->shows(u"other.vtrz"_s));
}

void TestArrivingBoards::longWorkIsWaitedFor()
{
    constexpr qint64 much = 10'000'000; // bytes
    {
        const LongWork work(much);
        home->window.answerStart(home->board(u"plan.vtrz"_s));
        QTest::qWait(longEnough);
        QVERIFY(!home->board());
    }
    QVERIFY(!home->board());
    QTRY_VERIFY(home->shows(u"plan.vtrz"_s));
}

PLUMARA_TEST(TestArrivingBoards)
#include "tst_arrivingboards.moc"
