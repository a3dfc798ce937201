// The update advisor: how it comes and goes, keeps the keyboard, and starts the update.

#include "tests/support/home/homewindow.h"
#include "tests/support/main/registeredtest.h"
#ifdef Q_OS_WIN
#include "tests/home/startedcommands.h"
#endif

#include <QApplication>
#include <QDesktopServices>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTimer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether \a opacity is that of a fade in its course.
bool isBetween(qreal opacity)
{
    return opacity > 0.0 && opacity < 1.0;
}

/// Keeps the opacities that the advisor goes through, and those that it is meant to go through: when
/// the two fades start in one and the same event, the toolkit lets them take the same steps, however
/// late these may come.
class FadeWatch
{
public:
    FadeWatch(QGraphicsOpacityEffect &advisor, qreal from, qreal to)
        : fade(&reference, "opacity")
    {
        reference.setOpacity(advisor.opacity());
        fade.setDuration(150);
        fade.setStartValue(from);
        fade.setEndValue(to);
        QObject::connect(&advisor, &QGraphicsOpacityEffect::opacityChanged, &reference,
                         [this](qreal value) { seen << value; });
        QObject::connect(&reference, &QGraphicsOpacityEffect::opacityChanged, &reference,
                         [this](qreal value) { meant << value; });
    }

    void start() { fade.start(); }
    bool isOver() const { return fade.state() == QAbstractAnimation::Stopped; }

    QList<qreal> seen;
    QList<qreal> meant;

private:
    QGraphicsOpacityEffect reference;
    QPropertyAnimation fade;
};

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
    void thePagesLookTheSameUnderTheVeil();
    void itKeepsTheKeyboardOffThePages();
    void theTabKeyGoesOneButtonFurther();
    void aKeyPressedWhenItComesReachesNoPage();
    void itGivesTheKeyboardBack_data();
    void itGivesTheKeyboardBack();
    void cancellingFadesItOutWithin150MillisecondsAndHidesIt();
    void cancellingWhileItFadesInHidesIt();
    void cancellingTwiceHidesItOnce();
    void withoutItsEffectItStaysAsItIs();
    void theWindowMayGoWhileItFades();
    void updatingOpensTheProductPageAndEndsTheProgram();
    void withoutABrowserTheProgramEndsAllTheSame();

private:
    QWidget *advisor() const { return home->child(u"UpdateAdvisor"_s); }
    QGraphicsOpacityEffect *effect() const
    {
        return qobject_cast<QGraphicsOpacityEffect *>(advisor()->graphicsEffect());
    }
    qreal opacity() const { return effect()->opacity(); }
    QString focusName() const
    {
        const auto *const widget = home->window.focusWidget();
        return widget ? widget->objectName() : QString();
    }
    void showAdvisor()
    {
        home->window.showUpdateMessage();
        QTRY_COMPARE(opacity(), 1.0);
    }
    void updateAndEnd();

    std::unique_ptr<HomeWindow> home;
};

void TestUpdateAdvisor::itIsHiddenAtStart()
{
    QVERIFY(!advisor()->isVisible());
    QVERIFY(effect());
}

void TestUpdateAdvisor::itFadesInWithin150Milliseconds()
{
    FadeWatch watch(*effect(), 0.0, 1.0);
    watch.start();
    home->window.showUpdateMessage();
    QVERIFY(advisor()->isVisible());
    QCOMPARE(opacity(), 0.0);
    QTRY_VERIFY(watch.isOver());
    QCOMPARE(watch.seen, watch.meant);
    QCOMPARE(opacity(), 1.0);
    QVERIFY(std::ranges::any_of(watch.seen, isBetween));
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

void TestUpdateAdvisor::thePagesLookTheSameUnderTheVeil()
{
    // Its focus can be seen on the widget that had it, but not on the page of the settings.
    home->child(u"NavSettingsBtn"_s)->setFocus();
    home->window.NavSettings();
    const QImage before = home->child(u"SettingsMenu"_s)->grab().toImage();
    home->window.showUpdateMessage();
    QCOMPARE(home->child(u"SettingsMenu"_s)->grab().toImage(), before);
    QTRY_COMPARE(opacity(), 1.0);
    QCOMPARE(home->child(u"SettingsMenu"_s)->grab().toImage(), before);
}

void TestUpdateAdvisor::itKeepsTheKeyboardOffThePages()
{
    const auto reached = [this] {
        QSet<QString> names;
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Up, Qt::Key_Down,
                                  Qt::Key_Left, Qt::Key_Right}) {
            for (int i = 0; i < 12; ++i) {
                QTest::keyClick(home->window.windowHandle(), key);
                names << focusName();
            }
        }
        return names;
    };
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    QVERIFY(reached().contains(u"NavSettingsBtn"_s));
    showAdvisor();
    QCOMPARE(reached(), QSet<QString>({u"CancelUpdate"_s, u"StartUpdate"_s}));
    home->click(u"CancelUpdate"_s);
    QTRY_VERIFY(!advisor()->isVisible());
    QVERIFY(reached().contains(u"NavSettingsBtn"_s));
}

void TestUpdateAdvisor::theTabKeyGoesOneButtonFurther()
{
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    showAdvisor();
    const QSignalSpy moves(qApp, &QApplication::focusChanged);
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Tab);
    QCOMPARE(focusName(), u"StartUpdate"_s);
    QCOMPARE(moves.size(), 1);
}

void TestUpdateAdvisor::aKeyPressedWhenItComesReachesNoPage()
{
    home->window.NavSettings();
    auto *const box = home->child<QAbstractButton>(u"CompressFiles"_s);
    box->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    home->window.showUpdateMessage();
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Space);
    QVERIFY(!box->isChecked());
    QTRY_VERIFY(!advisor()->isVisible()); // it pressed the button that the advisor comes with
    QTest::keyClick(home->window.windowHandle(), Qt::Key_Space);
    QVERIFY(box->isChecked());
}

void TestUpdateAdvisor::itGivesTheKeyboardBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("to a button") << u"NavSettingsBtn"_s;
    QTest::newRow("to the list") << u"listWidget"_s;
    QTest::newRow("to nothing") << QString();
}

void TestUpdateAdvisor::itGivesTheKeyboardBack()
{
    QFETCH(const QString, name);
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
    if (name.isEmpty())
        home->window.focusWidget()->clearFocus();
    else
        home->child(name)->setFocus();
    QCOMPARE(focusName(), name);
    showAdvisor();
    QCOMPARE(focusName(), u"CancelUpdate"_s);
    home->window.showUpdateMessage(); // another answer of the server
    home->click(u"CancelUpdate"_s);
    QCOMPARE(focusName(), u"CancelUpdate"_s);
    QTRY_VERIFY(!advisor()->isVisible());
    QCOMPARE(focusName(), name);
}

void TestUpdateAdvisor::cancellingFadesItOutWithin150MillisecondsAndHidesIt()
{
    showAdvisor();
    FadeWatch watch(*effect(), 1.0, 0.0);
    connect(home->child<QPushButton>(u"CancelUpdate"_s), &QPushButton::clicked, this,
            [&watch] { watch.start(); });
    home->click(u"CancelUpdate"_s);
    QVERIFY(advisor()->isVisible());
    QTRY_VERIFY(!advisor()->isVisible());
    QTRY_VERIFY(watch.isOver());
    QCOMPARE(watch.seen, watch.meant);
    QCOMPARE(opacity(), 0.0);
    QVERIFY(std::ranges::any_of(watch.seen, isBetween));
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
    // What goes wrong shows as a warning, a crash or a sanitizer's report.
    QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support )"_s));
    const QPointer<QWidget> guard = advisor();
    FadeWatch watch(*effect(), 0.0, 1.0);
    watch.start();
    home->window.showUpdateMessage();
    home.reset();
    QVERIFY(!guard);
    // As long as the fade would have taken.
    QTRY_VERIFY(watch.isOver());
}

/// Clicks the update button and waits for the end of the program.
void TestUpdateAdvisor::updateAndEnd()
{
    showAdvisor();
#ifdef Q_OS_WIN
    // The command would end the test, too; so it is not started, and the end is put in its place.
    const StartedCommands commands(&QCoreApplication::quit);
#endif
    QTimer::singleShot(0, &home->window, [this] { home->click(u"StartUpdate"_s); });
    constexpr int stillRunning = 1;
    QTimer::singleShot(5000, &home->window, [] { QCoreApplication::exit(stillRunning); });
    // Not the closing of the window but the update ends the program.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCOMPARE(QApplication::exec(), 0);
    QGuiApplication::setQuitOnLastWindowClosed(true);
    QVERIFY(!home->window.isVisible());
#ifdef Q_OS_WIN
    QCOMPARE(commands.commandLines().size(), 1);
    // Simplified because the toolkit puts two blanks between a program and its arguments.
    QCOMPARE(commands.commandLines().constFirst().simplified(),
             u"taskkill /F /IM home_tests.exe /T"_s);
#endif
}

void TestUpdateAdvisor::updatingOpensTheProductPageAndEndsTheProgram()
{
    const Browser browser(home->window);
    updateAndEnd();
    QCOMPARE(
        browser.pages,
        QList<QUrl>({QUrl(u"https://"_s + QStringLiteral(PLUMARA_UPDATE_HOST) + u"/plumara"_s)}));
    QVERIFY(browser.windowWasOpen);
}

void TestUpdateAdvisor::withoutABrowserTheProgramEndsAllTheSame()
{
    // In the place of a browser that cannot be opened: a handler that cannot be called.
    QDesktopServices::setUrlHandler(u"https"_s, this, "noSuchSlot");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"No such method"_s));
    updateAndEnd();
    QDesktopServices::unsetUrlHandler(u"https"_s);
}

PLUMARA_TEST(TestUpdateAdvisor)
#include "tst_updateadvisor.moc"
