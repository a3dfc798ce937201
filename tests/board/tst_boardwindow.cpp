// The shell of the board window: the window itself, its slots, its clock and what it records.

#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/main/registeredtest.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString windowStyle = uR"(
        QWidget { font-family: Montserrat; background-color: white; }
        QMessageBox QPushButton {
            border: 1px solid gray;
            border-radius: 3px;
            background-color: white;
            color: black;
            padding: 5px 15px;
        }
        QMessageBox QLabel {
            color: black;
        }
    )"_s;

QString clockText(const QDateTime &time)
{
    const QLocale mexico(QLocale::Spanish, QLocale::Mexico);
    return mexico.toString(time, u"dd/MM/yyyy - hh:mm:ss AP"_s);
}

/// Whether \a text is the time of a second between \a start and \a end.
bool isTimeBetween(const QString &text, const QDateTime &start, const QDateTime &end)
{
    for (QDateTime time = start; time < end; time = time.addSecs(1)) {
        if (text == clockText(time))
            return true;
    }
    return text == clockText(end);
}

/// Whether \a text is a date and a time of twelve hours as in Mexico, such as
/// "21/11/2026 - 08:05:00 A.M.".
bool isMexicanClockText(const QString &text)
{
    static const QRegularExpression form(
        uR"(^\d\d/\d\d/\d{4} - (0[1-9]|1[0-2]):[0-5]\d:[0-5]\d [AP]\.\s?M\.$)"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    return form.match(text).hasMatch();
}

/// Counts the key events that reach the window's own handler.
class KeyCounter : public BoardWindow
{
public:
    KeyCounter()
        : BoardWindow(nullptr)
    { }
    int keys = 0;

    void keyPressEvent(QKeyEvent *event) override
    {
        ++keys;
        BoardWindow::keyPressEvent(event);
    }
};

} // namespace

class TestBoardWindow : public QObject
{
    Q_OBJECT

private slots:
    void theWindowIsNamedAfterTheBoardMode();
    void theWindowHasOnlyMinimizeAndMaximizeButtons();
    void thePersonCannotResizeTheWindow();
    void theDesktopSeesAWindowOfItsOwn();
    void theWindowWearsTheSharedStyle();
    void theProgramsFontIsThere();
    void theCanvasShowsTheWholeBoardSmoothly();
    void theWholeApplicationFormatsAsInMexico();
    void slotsStandInTheirOrderAndThereAreNoSignals();
    void aMetaCallOfTheKeyHandlerReachesAnOverride();

    void theClockIsRightFromTheStart();
    void theClockShowsTwelveHoursInMexicanSpanish();
    void theClockStaysMexicanWhateverTheApplicationSpeaks();
    void theClockTicksEverySecondEvenWhileHidden();
    void theClocksTimerRunsEverySecond();

    void everySceneChangeIsRecorded();
    void aNewSceneRectangleIsRecorded();
};

void TestBoardWindow::theWindowIsNamedAfterTheBoardMode()
{
    const ShownBoard board;

    QCOMPARE(board.window.windowTitle(), u"Orvane Plumara - Modo Pizarra"_s);
}

void TestBoardWindow::theWindowHasOnlyMinimizeAndMaximizeButtons()
{
    const BoardWindow window(nullptr);
    // The toolkit adds the title bar that such buttons need.
    QWidget plain;
    plain.setWindowFlags(Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint);

    QCOMPARE(window.windowFlags(), plain.windowFlags());
    QVERIFY(!window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!window.windowFlags().testFlag(Qt::FramelessWindowHint));
}

void TestBoardWindow::thePersonCannotResizeTheWindow()
{
    ShownBoard board;
    const QSize size(1200, 700);
    QCOMPARE(board.window.size(), size);

    board.window.resize(1400, 900);
    QCOMPARE(board.window.size(), size);
    board.window.resize(600, 400);
    QCOMPARE(board.window.size(), size);
    QCOMPARE(board.window.windowHandle()->minimumSize(), size);
    QCOMPARE(board.window.windowHandle()->maximumSize(), size);
}

void TestBoardWindow::theDesktopSeesAWindowOfItsOwn()
{
    QWidget home;
    home.show();
    BoardWindow window(nullptr, &home);
    auto *const combo = window.findChild<QComboBox *>(u"Presentar"_s);

    // A presentation makes a new native window at its beginning and at its end.
    window.show();
    QVERIFY(!window.windowHandle()->transientParent());
    combo->setCurrentIndex(0);
    QVERIFY(window.isFullScreen());
    QVERIFY(!window.windowHandle()->transientParent());
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    QVERIFY(!window.isFullScreen());
    QVERIFY(!window.windowHandle()->transientParent());
}

void TestBoardWindow::theWindowWearsTheSharedStyle()
{
    const BoardWindow window(nullptr);

    QCOMPARE(window.styleSheet(), windowStyle);
}

void TestBoardWindow::theProgramsFontIsThere()
{
    const BoardWindow window(nullptr);

    QVERIFY(QFontDatabase::families().contains(u"Montserrat"_s));
}

void TestBoardWindow::theCanvasShowsTheWholeBoardSmoothly()
{
    const ShownBoard board;

    QCOMPARE(board.scene.sceneRect(), QRectF(0, 0, 1920, 1080));
    QCOMPARE(board.view.sceneRect(), QRectF(0, 0, 1920, 1080));
    QCOMPARE(board.scene.parent(), &board.window);
    QVERIFY(board.view.renderHints().testFlag(QPainter::Antialiasing));
    QVERIFY(board.view.testAttribute(Qt::WA_MouseTracking));
    QVERIFY(board.scene.items().isEmpty());
}

void TestBoardWindow::theWholeApplicationFormatsAsInMexico()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));

    const BoardWindow window(nullptr);

    QCOMPARE(QLocale().language(), QLocale::Spanish);
    QCOMPARE(QLocale().territory(), QLocale::Mexico);
}

void TestBoardWindow::slotsStandInTheirOrderAndThereAreNoSignals()
{
    const QList<QByteArray> expected{
        "closeBoard()",
        "setCursorMode()",
        "setPostItMode()",
        "setPenMode()",
        "setLineMode()",
        "setImageMode()",
        "setEraseMode()",
        "undoMode()",
        "redoMode()",
        "saveBoardAs()",
        "saveBoard()",
        "keyPressEvent(QKeyEvent*)",
        "manejarPresentacion(int)",
    };
    const auto &meta = BoardWindow::staticMetaObject;

    QList<QByteArray> found;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Public);
        QCOMPARE(method.returnMetaType(), QMetaType::fromType<void>());
        found << method.methodSignature();
    }

    QCOMPARE(meta.className(), "BoardWindow");
    QCOMPARE(meta.superClass()->className(), "QMainWindow");
    QCOMPARE(found, expected);
}

void TestBoardWindow::aMetaCallOfTheKeyHandlerReachesAnOverride()
{
    KeyCounter window;
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);

    QVERIFY(QMetaObject::invokeMethod(&window, "keyPressEvent", Q_ARG(QKeyEvent *, &key)));

    QCOMPARE(window.keys, 1);
}

void TestBoardWindow::theClockIsRightFromTheStart()
{
    const auto start = QDateTime::currentDateTime();
    const BoardWindow window(nullptr);
    const auto end = QDateTime::currentDateTime();

    const QString shown = window.findChild<QLabel *>(u"FechaHoraTxt"_s)->text();
    QVERIFY2(isTimeBetween(shown, start, end), qPrintable(shown));
}

void TestBoardWindow::theClockShowsTwelveHoursInMexicanSpanish()
{
    const BoardWindow window(nullptr);

    const QString shown = window.findChild<QLabel *>(u"FechaHoraTxt"_s)->text();
    QVERIFY2(isMexicanClockText(shown), qPrintable(shown));
}

void TestBoardWindow::theClockStaysMexicanWhateverTheApplicationSpeaks()
{
    const BoardWindow window(nullptr);
    const auto *const label = window.findChild<QLabel *>(u"FechaHoraTxt"_s);
    const QString first = label->text();

    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));

    QTRY_VERIFY(label->text() != first);
    QVERIFY2(isMexicanClockText(label->text()), qPrintable(label->text()));
}

void TestBoardWindow::theClockTicksEverySecondEvenWhileHidden()
{
    const BoardWindow window(nullptr);
    const auto *const label = window.findChild<QLabel *>(u"FechaHoraTxt"_s);

    for (int tick = 1; tick <= 2; ++tick) {
        const QString last = label->text();
        QDateTime start;
        const bool ticked = QTest::qWaitFor([&] {
            const bool changed = label->text() != last;
            if (!changed)
                start = QDateTime::currentDateTime();
            return changed;
        });
        QVERIFY(ticked);
        QVERIFY2(isTimeBetween(label->text(), start, QDateTime::currentDateTime()),
                 qPrintable(label->text()));
    }
}

void TestBoardWindow::theClocksTimerRunsEverySecond()
{
    const BoardWindow window(nullptr);

    const auto timers = window.findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(timers.size(), 1);
    QCOMPARE(timers.constFirst()->interval(), 1000);
    QVERIFY(timers.constFirst()->isActive());
    QVERIFY(!timers.constFirst()->isSingleShot());
}

void TestBoardWindow::everySceneChangeIsRecorded()
{
    ShownBoard board;
    board.window.captureSnapshot();

    auto *const note = new StickyNoteItem;
    board.scene.addItem(note);
    board.processEvents();
    note->setPos(500, 300);
    board.processEvents();

    board.window.undoMode();
    QCOMPARE(board.only<StickyNoteItem>()->pos(), QPointF(0, 0));
    board.window.undoMode();
    QCOMPARE(board.count(), 0);
}

void TestBoardWindow::aNewSceneRectangleIsRecorded()
{
    ShownBoard board;
    board.window.captureSnapshot();
    board.scene.addItem(new StickyNoteItem);

    // Unlike changed(), this signal comes at once.
    board.scene.setSceneRect(0, 0, 800, 600);

    board.window.undoMode();
    QCOMPARE(board.count(), 0);
}

PLUMARA_TEST(TestBoardWindow)
#include "tst_boardwindow.moc"
