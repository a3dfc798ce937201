// The home window for people who use the keyboard, hear the window or see it badly.

#include "tests/home/progresswatch.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/home/homewindow.h"
#include "tests/support/look/contrast.h"
#include "tests/support/look/keyboardwalk.h"
#include "tests/support/look/names.h"
#include "tests/support/main/registeredtest.h"

#include <QListWidget>
#include <QProgressBar>
#include <QStyleOptionProgressBar>
#include <QTabWidget>

#include <algorithm>
#include <memory>

using namespace Qt::Literals::StringLiterals;

class TestHomeForEveryone : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { home.reset(); }

    void theTabKeyWalksAsTheEyeDoes_data();
    void theTabKeyWalksAsTheEyeDoes();
    void theTabKeyStaysInTheUpdateAdvisor();
    void whatCannotBeUsedTakesNoFocus();
    void theFocusIsSeen_data();
    void theFocusIsSeen();
    void theArrowKeysShowTheBoardTheyAreAt();

    void everythingHasAName();
    void theListIsNamedAfterItsTitle();
    void aPreviewIsNamedAfterItsTab();

    void textsStandOutFromTheirGround_data();
    void textsStandOutFromTheirGround();
    void boardsStandOutFromTheirRows();
    void theSelectedTabStandsOut();
    void theUpdateAdvisorStandsOut();
    void theProgressOfDeletingStandsOut();

private:
    void addPages();
    void makeBoards(const QStringList &names);

    std::unique_ptr<HomeWindow> home;
};

namespace {

using Page = void (MainWindow::*)();

const QStringList navigation = {u"NavMainBtn"_s, u"NavSettingsBtn"_s, u"NavHelpBtn"_s};

/// Where the percentage is read: on the bar, or on Windows beside it.
QRect figurePlace(const QProgressBar &bar)
{
    QStyleOptionProgressBar option;
    option.initFrom(&bar);
    option.maximum = bar.maximum();
    option.progress = bar.value();
    option.text = bar.text();
    option.textVisible = true;
    QRect place = bar.fontMetrics().boundingRect(option.text);
    const QRect label = bar.style()->subElementRect(QStyle::SE_ProgressBarLabel, &option, &bar);
    place.moveCenter(label.center());
    return place;
}

} // namespace

void TestHomeForEveryone::init()
{
    home = std::make_unique<HomeWindow>();
    home->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&home->window));
}

void TestHomeForEveryone::makeBoards(const QStringList &names)
{
    for (const QString &name : names)
        BoardFile::write(home->dataPath() + u'/' + name);
    home->window.showProjects();
}

void TestHomeForEveryone::addPages()
{
    QTest::addColumn<Page>("page");
    QTest::addColumn<QStringList>("stops");
    QTest::newRow("boards") << &MainWindow::NavMain
                            << QStringList{u"NewProject"_s, u"ImportProject"_s, u"listWidget"_s};
    QTest::newRow("settings") << &MainWindow::NavSettings
                              << QStringList{u"CompressFiles"_s, u"BetterPerformance"_s,
                                             u"BetterX2"_s,      u"OnlyViewData"_s,
                                             u"ClearCacheBtn"_s, u"RedoFolder"_s,
                                             u"DeleteAll"_s};
    QTest::newRow("help") << &MainWindow::NavHelp << QStringList{u"HelpWidget"_s};
}

void TestHomeForEveryone::theTabKeyWalksAsTheEyeDoes_data()
{
    addPages();
}

void TestHomeForEveryone::theTabKeyWalksAsTheEyeDoes()
{
    QFETCH(const Page, page);
    QFETCH(const QStringList, stops);
    (home->window.*page)();
    home->child(u"NavMainBtn"_s)->setFocus();

    QCOMPARE(KeyboardWalk::stops(home->window), navigation + stops);
}

void TestHomeForEveryone::theTabKeyStaysInTheUpdateAdvisor()
{
    home->child(u"NavSettingsBtn"_s)->setFocus();
    home->window.showUpdateMessage();

    const QStringList card = {u"CancelUpdate"_s, u"StartUpdate"_s};
    QCOMPARE(KeyboardWalk::stops(home->window), card);
    QCOMPARE(KeyboardWalk::stops(home->window, Qt::ShiftModifier), card);
}

void TestHomeForEveryone::whatCannotBeUsedTakesNoFocus()
{
    QCOMPARE(home->window.focusPolicy(), Qt::NoFocus);
    const auto labels = home->window.findChildren<QLabel *>();
    for (const auto *label : labels)
        QCOMPARE(label->focusPolicy(), Qt::NoFocus);
    for (const auto &panel : {u"SideMenu"_s, u"MainMenu"_s, u"SettingsMenu"_s, u"HelpMenu"_s,
                              u"widget"_s, u"CleanedCacheW"_s, u"UpdateAdvisor"_s}) {
        QCOMPARE(home->child(panel)->focusPolicy(), Qt::NoFocus);
    }
}

void TestHomeForEveryone::theFocusIsSeen_data()
{
    addPages();
}

void TestHomeForEveryone::theFocusIsSeen()
{
    QFETCH(const Page, page);
    (home->window.*page)();
    home->child(u"NavMainBtn"_s)->setFocus();

    QCOMPARE(KeyboardWalk::unseen(home->window).join(u", "), QString());
}

void TestHomeForEveryone::theArrowKeysShowTheBoardTheyAreAt()
{
    makeBoards({u"a.vtrz"_s, u"b.vtrz"_s});
    auto *const list = home->child<QListWidget>(u"listWidget"_s);
    list->setFocus(Qt::TabFocusReason);
    const QImage before = list->grab().toImage();

    QTest::keyClick(home->window.windowHandle(), Qt::Key_Down);

    QCOMPARE(list->selectedItems().size(), 1);
    QVERIFY(list->grab().toImage() != before);
}

void TestHomeForEveryone::everythingHasAName()
{
    // These only decorate the text beside them.
    const QStringList decoration = {u"SubTitleLabelTxt_13"_s, u"InstallerLogo"_s, u"UpdateIcon"_s};
    QCOMPARE(Names::missing(home->window), decoration);
}

void TestHomeForEveryone::theListIsNamedAfterItsTitle()
{
    QCOMPARE(Names::of(*home->child(u"listWidget"_s)),
             home->child<QLabel>(u"SubTitleIndexFiles"_s)->text());
    QCOMPARE(Names::of(*home->child(u"HelpWidget"_s)),
             home->child<QLabel>(u"SubTitleIndexHelp"_s)->text());
}

void TestHomeForEveryone::aPreviewIsNamedAfterItsTab()
{
    QCOMPARE(Names::of(*home->child(u"HelpPenPreview"_s)), u"Vista previa: Modo Lápiz"_s);
}

void TestHomeForEveryone::textsStandOutFromTheirGround_data()
{
    addPages();
}

void TestHomeForEveryone::textsStandOutFromTheirGround()
{
    QFETCH(const Page, page);
    (home->window.*page)();
    auto *const cover = home->child(u"CleanedCacheS"_s);
    cover->resize(home->child(u"ClearCacheBtn"_s)->size());
    for (const int tab : {0, 6}) {
        home->child<QTabWidget>(u"HelpWidget"_s)->setCurrentIndex(tab);
        QCoreApplication::processEvents();
        QCOMPARE(Contrast::faint(home->window).join(u", "), QString());
    }
}

void TestHomeForEveryone::boardsStandOutFromTheirRows()
{
    makeBoards({u"a.vtrz"_s, u"b.vtrz"_s});
    auto *const list = home->child<QListWidget>(u"listWidget"_s);
    list->setCurrentRow(0);
    for (int row = 0; row < list->count(); ++row) {
        constexpr int textLeft = 60;
        const QRect place = list->visualItemRect(list->item(row)).adjusted(textLeft, 0, 0, 0);
        const QPoint corner = list->viewport()->mapTo(&home->window, QPoint());
        QVERIFY(Contrast::in(home->window, place.translated(corner)) >= Contrast::enough);
    }
}

void TestHomeForEveryone::theSelectedTabStandsOut()
{
    home->window.NavHelp();
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    tabs->setTabIcon(0, {});
    QCoreApplication::processEvents();
    constexpr int lineBelow = 5;
    const QRect place = tabs->tabBar()->tabRect(0).adjusted(0, 0, 0, -lineBelow);
    const QPoint corner = tabs->tabBar()->mapTo(&home->window, QPoint());
    QVERIFY(Contrast::in(home->window, place.translated(corner)) >= Contrast::enough);
}

void TestHomeForEveryone::theUpdateAdvisorStandsOut()
{
    home->child(u"UpdateAdvisor"_s)->show();
    auto *const card = home->child(u"FrameUpdater"_s);
    // Below it, the page is dimmed; what it reads is covered or meant to be faint.
    QCOMPARE(Contrast::faint(*card).join(u", "), QString());
}

void TestHomeForEveryone::theProgressOfDeletingStandsOut()
{
    const BoxSequence consent({u"Aceptar"_s});
    QList<double> contrasts;
    const ProgressWatch hurried(home->window, home->dataPath());
    const Poll poll([this, &contrasts](Poll &) {
        constexpr int figureCovered = 70; // percent, from which on the bar lies below its figure
        auto *const bar = home->window.findChild<QProgressBar *>();
        if (bar && bar->value() >= figureCovered)
            contrasts << Contrast::in(*bar, figurePlace(*bar));
    });

    home->window.deleteAll(); // comes back when everything is deleted

    QVERIFY(!contrasts.isEmpty());
    QVERIFY2(std::ranges::min(contrasts) >= Contrast::enough,
             qPrintable(QString::number(std::ranges::min(contrasts))));
    QTRY_VERIFY(!home->window.isVisible());
}

PLUMARA_TEST(TestHomeForEveryone)
#include "tst_homeforeveryone.moc"
