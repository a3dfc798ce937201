#include "tests/home/homewindow.h"
#ifdef Q_OS_WIN
#include "tests/support/startedcommands.h"
#endif

#include <QApplication>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QTimer>

#include <algorithm>
#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether \a opacity is that of a fade in its course.
bool isBetween(qreal opacity)
{
    return opacity > 0.0 && opacity < 1.0;
}

/// Keeps the pages that the program wants to see in the browser, and their order among the events
/// of \a window.
class Browser : public QObject
{
    Q_OBJECT

public:
    explicit Browser(const MainWindow &home)
        : window(home)
    {
        QDesktopServices::setUrlHandler(u"https"_s, this, "open");
    }
    ~Browser() override { QDesktopServices::unsetUrlHandler(u"https"_s); }

    QList<QUrl> pages;
    bool windowWasOpen = false;

public slots:
    void open(const QUrl &page)
    {
        pages << page;
        windowWasOpen = window.isVisible();
    }

private:
    const MainWindow &window;
};

} // namespace

class TestUpdateAdvisor : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<HomeWindow>(); }
    void cleanup() { home.reset(); }

    void itIsHiddenAtStart();
    void itFadesInWithin150Milliseconds();
    void itCoversTheWindowAndTakesAllClicks();
    void itKeepsTheKeyboardOffThePages();
    void cancellingFadesItOutWithin150MillisecondsAndHidesIt();
    void cancellingWhileItFadesInHidesIt();
    void cancellingTwiceHidesItOnce();
    void withoutItsEffectItStaysAsItIs();
    void theWindowMayGoWhileItFades();
    void updatingOpensTheProductPageAndEndsTheProgram();

private:
    QWidget *advisor() const { return home->child(u"UpdateAdvisor"_s); }
    qreal opacity() const
    {
        return qobject_cast<QGraphicsOpacityEffect *>(advisor()->graphicsEffect())->opacity();
    }
    void showAdvisor()
    {
        home->window.showUpdateMessage();
        QTRY_COMPARE(opacity(), 1.0);
    }

    std::unique_ptr<HomeWindow> home;
};

void TestUpdateAdvisor::itIsHiddenAtStart()
{
    QVERIFY(!advisor()->isVisible());
    QVERIFY(qobject_cast<QGraphicsOpacityEffect *>(advisor()->graphicsEffect()));
}

void TestUpdateAdvisor::itFadesInWithin150Milliseconds()
{
    QList<qreal> seen;
    connect(qobject_cast<QGraphicsOpacityEffect *>(advisor()->graphicsEffect()),
            &QGraphicsOpacityEffect::opacityChanged, this, [&](qreal value) { seen << value; });
    QElapsedTimer timer;
    timer.start();
    home->window.showUpdateMessage();
    QVERIFY(advisor()->isVisible());
    QCOMPARE(opacity(), 0.0);
    QTRY_COMPARE_WITH_TIMEOUT(opacity(), 1.0, 2000);
    QVERIFY2(timer.elapsed() >= 140, qPrintable(u"%1 ms"_s.arg(timer.elapsed())));
    QVERIFY(std::ranges::any_of(seen, isBetween));
    QVERIFY(std::ranges::is_sorted(seen));
}

void TestUpdateAdvisor::itCoversTheWindowAndTakesAllClicks()
{
    showAdvisor();
    home->click(u"NavSettingsBtn"_s);
    home->click(u"NewProject"_s);
    QVERIFY(home->child(u"MainMenu"_s)->isVisible());
    QVERIFY(!home->child(u"SettingsMenu"_s)->isVisible());
    QVERIFY(home->window.isVisible());
    QVERIFY(advisor()->isVisible());
}

void TestUpdateAdvisor::itKeepsTheKeyboardOffThePages()
{
    const auto reachedByTab = [this] {
        QStringList names;
        for (int i = 0; i < 12; ++i) {
            QTest::keyClick(home->window.windowHandle(), Qt::Key_Tab);
            if (const auto *const widget = QApplication::focusWidget())
                names << widget->objectName();
        }
        return names;
    };
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    QVERIFY(reachedByTab().contains(u"NavSettingsBtn"_s));
    showAdvisor();
    const QStringList reached = reachedByTab();
    QCOMPARE(QSet<QString>(reached.cbegin(), reached.cend()),
             QSet<QString>({u"CancelUpdate"_s, u"StartUpdate"_s}));
    home->click(u"CancelUpdate"_s);
    QTRY_VERIFY(!advisor()->isVisible());
    QVERIFY(reachedByTab().contains(u"NavSettingsBtn"_s));
}

void TestUpdateAdvisor::cancellingFadesItOutWithin150MillisecondsAndHidesIt()
{
    showAdvisor();
    QList<qreal> seen;
    connect(qobject_cast<QGraphicsOpacityEffect *>(advisor()->graphicsEffect()),
            &QGraphicsOpacityEffect::opacityChanged, this, [&](qreal value) { seen << value; });
    QElapsedTimer timer;
    timer.start();
    home->click(u"CancelUpdate"_s);
    QVERIFY(advisor()->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!advisor()->isVisible(), 2000);
    QVERIFY2(timer.elapsed() >= 140, qPrintable(u"%1 ms"_s.arg(timer.elapsed())));
    QCOMPARE(opacity(), 0.0);
    QVERIFY(std::ranges::any_of(seen, isBetween));
    QVERIFY(std::ranges::is_sorted(seen, std::ranges::greater()));
    home->click(u"NavSettingsBtn"_s);
    QVERIFY(home->child(u"SettingsMenu"_s)->isVisible());
}

void TestUpdateAdvisor::cancellingWhileItFadesInHidesIt()
{
    home->window.showUpdateMessage();
    home->click(u"CancelUpdate"_s);
    QTRY_VERIFY(!advisor()->isVisible());
    QCOMPARE(opacity(), 0.0);
}

void TestUpdateAdvisor::cancellingTwiceHidesItOnce()
{
    showAdvisor();
    home->click(u"CancelUpdate"_s);
    home->click(u"CancelUpdate"_s);
    QTRY_VERIFY(!advisor()->isVisible());
    home->window.showUpdateMessage();
    QTRY_COMPARE(opacity(), 1.0);
    QVERIFY(advisor()->isVisible());
}

void TestUpdateAdvisor::withoutItsEffectItStaysAsItIs()
{
    advisor()->setGraphicsEffect(nullptr);
    home->window.showUpdateMessage();
    QVERIFY(!advisor()->isVisible());
    advisor()->show();
    home->window.closeUpdateMessage();
    QCoreApplication::processEvents();
    QVERIFY(advisor()->isVisible());
}

void TestUpdateAdvisor::theWindowMayGoWhileItFades()
{
    const QPointer<QWidget> guard = advisor();
    home->window.showUpdateMessage();
    home.reset();
    QVERIFY(!guard);
    QElapsedTimer timer;
    timer.start();
    // The time that the fade would have taken; nothing must come of it.
    QTRY_VERIFY(timer.elapsed() > 200);
}

void TestUpdateAdvisor::updatingOpensTheProductPageAndEndsTheProgram()
{
    const Browser browser(home->window);
    showAdvisor();
#ifdef Q_OS_WIN
    // The command would end the test, too; so it does not come to be, and the end is put in its place.
    const StartedCommands commands(&QCoreApplication::quit);
#endif
    QTimer::singleShot(0, &home->window, [this] { home->click(u"StartUpdate"_s); });
    // Not the closing of the window but the update ends the program.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCOMPARE(QApplication::exec(), 0);
    QGuiApplication::setQuitOnLastWindowClosed(true);
    QCOMPARE(
        browser.pages,
        QList<QUrl>({QUrl(u"https://"_s + QStringLiteral(PLUMARA_UPDATE_HOST) + u"/plumara"_s)}));
    QVERIFY(browser.windowWasOpen);
    QVERIFY(!home->window.isVisible());
#ifdef Q_OS_WIN
    QCOMPARE(commands.commandLines().size(), 1);
    // Simplified because the toolkit puts two blanks between a program and its arguments.
    QCOMPARE(commands.commandLines().constFirst().simplified(),
             u"taskkill /F /IM tst_updateadvisor.exe /T"_s);
#endif
}

QTEST_MAIN(TestUpdateAdvisor)
#include "tst_updateadvisor.moc"
