// What the windows of the program are to the task bar.

#include "tests/support/home/boardshome.h"
#include "tests/support/system/importinterception.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Keeps what Windows is asked to flash.
class Flashes
{
public:
    explicit Flashes(bool answer)
        : flashing("FlashWindowEx", flash)
    {
        asked.clear();
        result = answer ? TRUE : FALSE;
    }

    static QList<FLASHWINFO> all() { return asked; }

private:
    static BOOL WINAPI flash(PFLASHWINFO info)
    {
        asked << *info;
        return result;
    }

    static inline QList<FLASHWINFO> asked;
    static inline BOOL result = FALSE;

    ImportInterception<decltype(FlashWindowEx)> flashing;
};

HWND handle(const QWidget &window)
{
    return reinterpret_cast<HWND>(window.winId());
}

} // namespace

class TestTaskBar : public QObject
{
    Q_OBJECT

private slots:
    void theHomeWindowFlashesThreeTimes_data();
    void theHomeWindowFlashesThreeTimes();
    void anotherStartFlashesTheBoardThatIsShown();
    void bothWindowsHaveAButtonOfTheirOwn();
};

void TestTaskBar::theHomeWindowFlashesThreeTimes_data()
{
    QTest::addColumn<bool>("wasActive");
    QTest::newRow("an active window") << true;
    QTest::newRow("another") << false;
}

void TestTaskBar::theHomeWindowFlashesThreeTimes()
{
    QFETCH(const bool, wasActive);
    HomeWindow home;
    const Flashes flashes(wasActive);

    QCOMPARE(home.window.flashTaskbarIcon(), wasActive);

    QCOMPARE(flashes.all().size(), 1);
    const FLASHWINFO info = flashes.all().constFirst();
    QCOMPARE(info.cbSize, 32U);
    QCOMPARE(info.hwnd, handle(home.window));
    QCOMPARE(info.dwFlags, 3U);
    QCOMPARE(info.uCount, 3U);
    QCOMPARE(info.dwTimeout, 0U);
}

void TestTaskBar::anotherStartFlashesTheBoardThatIsShown()
{
    BoardsHome home;
    home.click(u"NewProject"_s);
    QVERIFY(home.boardIsOpen());
    const Flashes flashes(false);
    home.window.answerStart({});
    QCOMPARE(flashes.all().size(), 1);
    QCOMPARE(flashes.all().constFirst().hwnd, handle(*home.board()));
}

void TestTaskBar::bothWindowsHaveAButtonOfTheirOwn()
{
    BoardsHome home;
    QCOMPARE(GetWindow(handle(home.window), GW_OWNER), nullptr);
    home.click(u"NewProject"_s);
    QVERIFY(home.boardIsOpen());
    // Windows gives no button to a window that another one owns.
    const HWND board = handle(*home.board());
    QCOMPARE(GetWindow(board, GW_OWNER), nullptr);
    QVERIFY(!(GetWindowLongPtrW(board, GWL_EXSTYLE) & WS_EX_TOOLWINDOW));
}

QTEST_MAIN(TestTaskBar)
#include "tst_taskbar.moc"
