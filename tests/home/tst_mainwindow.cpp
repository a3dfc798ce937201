// The home window itself: navigation, size, restoring, settings.

#include "tests/home/homecheckboxes.h"
#include "tests/support/main/registeredtest.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaMethod>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The names of the pages that are shown and of the navigation buttons that are checked.
QStringList navigationState(const HomeWindow &home)
{
    QStringList state;
    for (const auto &page : {u"MainMenu"_s, u"SettingsMenu"_s, u"HelpMenu"_s}) {
        if (home.child(page)->isVisible())
            state << page;
    }
    for (const auto &button : {u"NavMainBtn"_s, u"NavSettingsBtn"_s, u"NavHelpBtn"_s}) {
        if (home.child<QAbstractButton>(button)->isChecked())
            state << button;
    }
    return state;
}

/// Keeps that a window's place among the others changes, and whether it is active.
class Changes : public QObject
{
public:
    explicit Changes(QWidget &window) { window.installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ZOrderChange || event->type() == QEvent::ActivationChange)
            all << event->type();
        return QObject::eventFilter(watched, event);
    }

    QList<QEvent::Type> all;
};

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { home = std::make_unique<HomeWindow>(); }
    void cleanupTestCase() { home.reset(); }

    // Navigation
    void theWindowOpensOnTheBoards();
    void aNavigationButtonShowsItsPage_data();
    void aNavigationButtonShowsItsPage();
    void clickingSettingsTwiceStaysOnSettings();
    void pagesKeepTheirPlaceRightOfTheSideMenu();

    // The window itself
    void callersByIndexReachTheSlotTheyMean();
    void theWindowCannotBeResized();
    void restoringBringsAMinimisedWindowBack();
    void restoringRaisesTheWindowAndActivatesIt();
    void restoringLeavesALargeWindowAsItIs();
    void flashingReportsFalseWhereThereIsNoTaskBar();
    void datesAreMexicanFromNowOn();
    void theDataFolderIsMadeAtStart();
    void theDataFolderKeepsItsPlaceWhereDocumentsLieElsewhere();

    // Settings
    void togglingACheckBoxChangesNothingElse_data();
    void togglingACheckBoxChangesNothingElse();
    void toggledCheckBoxesAreForgottenAtTheNextStart();
    void theUpdateCheckBoxCannotBeToggled();

private:
    std::unique_ptr<HomeWindow> home;
};

void TestMainWindow::theWindowOpensOnTheBoards()
{
    const HomeWindow fresh;
    QCOMPARE(navigationState(fresh), QStringList({u"MainMenu"_s, u"NavMainBtn"_s}));
    QVERIFY(!fresh.child(u"UpdateAdvisor"_s)->isVisible());
}

void TestMainWindow::aNavigationButtonShowsItsPage_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("page");
    QTest::newRow("settings") << u"NavSettingsBtn"_s << u"SettingsMenu"_s;
    QTest::newRow("help") << u"NavHelpBtn"_s << u"HelpMenu"_s;
    QTest::newRow("boards") << u"NavMainBtn"_s << u"MainMenu"_s;
}

void TestMainWindow::aNavigationButtonShowsItsPage()
{
    QFETCH(const QString, button);
    QFETCH(const QString, page);
    home->click(button);
    QCOMPARE(navigationState(*home), QStringList({page, button}));
}

void TestMainWindow::clickingSettingsTwiceStaysOnSettings()
{
    home->click(u"NavSettingsBtn"_s);
    home->click(u"NavSettingsBtn"_s);
    QCOMPARE(navigationState(*home), QStringList({u"SettingsMenu"_s, u"NavSettingsBtn"_s}));
}

void TestMainWindow::pagesKeepTheirPlaceRightOfTheSideMenu()
{
    home->window.resize(1600, 900);
    for (const auto &[button, page] :
         {std::pair(u"NavSettingsBtn"_s, u"SettingsMenu"_s),
          std::pair(u"NavHelpBtn"_s, u"HelpMenu"_s), std::pair(u"NavMainBtn"_s, u"MainMenu"_s)}) {
        home->click(button);
        QCOMPARE(home->child(page)->geometry(), QRect(230, 0, 970, 700));
    }
}

void TestMainWindow::callersByIndexReachTheSlotTheyMean()
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    QList<QByteArray> slotNames;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        slotNames << meta.method(i).methodSignature();
    }
    QCOMPARE(slotNames,
             QList<QByteArray>({"NavMain()", "NavSettings()", "NavHelp()", "startProject()",
                                "openProject()", "restoreWindow()", "showProjects()",
                                "onProjectDoubleClicked(QListWidgetItem*)", "animateCacheClear()",
                                "redoFolder()", "deleteAll()", "checkVersion()", "launchUpdater()",
                                "initializeUpdateAdvisorEffect()", "showUpdateMessage()",
                                "closeUpdateMessage()"}));
}

void TestMainWindow::theWindowCannotBeResized()
{
    auto &window = home->window;
    const QSize fixed(1200, 700);
    window.resize(800, 600);
    QCOMPARE(window.size(), fixed);
    window.resize(1920, 1080);
    QCOMPARE(window.size(), fixed);
    QCOMPARE(window.minimumSize(), fixed);
    QCOMPARE(window.maximumSize(), fixed);
    QCOMPARE(window.windowHandle()->maximumSize(), fixed); // what the window manager is told
}

void TestMainWindow::restoringBringsAMinimisedWindowBack()
{
    home->window.showMinimized();
    QVERIFY(home->window.isMinimized());
    home->window.restoreWindow();
    QVERIFY(!home->window.isMinimized());
    QTRY_VERIFY(home->window.isActiveWindow());
}

void TestMainWindow::restoringRaisesTheWindowAndActivatesIt()
{
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_VERIFY(other.isActiveWindow());
    QTRY_VERIFY(!home->window.isActiveWindow());
    const Changes changes(home->window);
    home->window.restoreWindow();
    QTRY_VERIFY(home->window.isActiveWindow());
    QTRY_VERIFY(changes.all.contains(QEvent::ActivationChange));
    QVERIFY(changes.all.contains(QEvent::ZOrderChange));
}

void TestMainWindow::restoringLeavesALargeWindowAsItIs()
{
    home->window.setWindowState(Qt::WindowMaximized);
    home->window.restoreWindow();
    const bool stayed = home->window.windowState().testFlag(Qt::WindowMaximized);
    home->window.setWindowState(Qt::WindowNoState);
    QVERIFY(stayed);
}

void TestMainWindow::flashingReportsFalseWhereThereIsNoTaskBar()
{
#ifndef Q_OS_WIN
    QVERIFY(!home->window.flashTaskbarIcon());
#endif
    QCOMPARE(home->window.metaObject()->indexOfMethod("flashTaskbarIcon()"), -1);
}

void TestMainWindow::datesAreMexicanFromNowOn()
{
    QLocale::setDefault(QLocale::c());
    const HomeWindow fresh;
    QCOMPARE(QLocale(), QLocale(QLocale::Spanish, QLocale::Mexico));
}

void TestMainWindow::theDataFolderIsMadeAtStart()
{
    QVERIFY(QFileInfo(home->dataPath()).isDir());
}

void TestMainWindow::theDataFolderKeepsItsPlaceWhereDocumentsLieElsewhere()
{
    const ScratchHome scratch;
    QVERIFY(QDir(scratch.path()).mkpath(u".config"_s));
    QFile places(scratch.path(u".config/user-dirs.dirs"_s));
    QVERIFY(places.open(QIODevice::WriteOnly));
    places.write("XDG_DOCUMENTS_DIR=\"$HOME/Documentos\"\n");
    places.close();
#ifndef Q_OS_WIN
    QCOMPARE(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
             scratch.path(u"Documentos"_s));
#endif

    const MainWindow window;

    QVERIFY(QFileInfo(scratch.dataPath()).isDir());
    QVERIFY(!QFileInfo::exists(scratch.path(u"Documentos"_s)));
}

void TestMainWindow::togglingACheckBoxChangesNothingElse_data()
{
    QTest::addColumn<int>("index");
    for (int i = 1; i < int(checkBoxes.size()); ++i)
        QTest::newRow(qPrintable(checkBoxes[i])) << i;
}

void TestMainWindow::togglingACheckBoxChangesNothingElse()
{
    QFETCH(const int, index);
    home->window.NavSettings();
    auto expected = checkStates(home->window);
    expected[index] = !expected[index];
    home->clickAt(checkBoxes[index], {10, 10});
    QCOMPARE(checkStates(home->window), expected);
    QCOMPARE(navigationState(*home), QStringList({u"SettingsMenu"_s, u"NavSettingsBtn"_s}));
}

void TestMainWindow::toggledCheckBoxesAreForgottenAtTheNextStart()
{
    const QList<bool> initial = {true, false, false, true, true};
    home->window.NavSettings();
    for (int i = 0; i < checkBoxes.size(); ++i) {
        if (checkStates(home->window)[i] == initial[i])
            home->clickAt(checkBoxes[i], {10, 10});
    }
    QCOMPARE(checkStates(home->window), QList<bool>({true, true, true, false, false}));
    home->window.close();
    // In the same home folder.
    const MainWindow next;
    QCOMPARE(checkStates(next), initial);
}

void TestMainWindow::theUpdateCheckBoxCannotBeToggled()
{
    home->window.NavSettings();
    home->clickAt(u"CheckUpdates"_s, {10, 10});
    QVERIFY(home->child<QCheckBox>(u"CheckUpdates"_s)->isChecked());
}

PLUMARA_TEST(TestMainWindow)
#include "tst_mainwindow.moc"
