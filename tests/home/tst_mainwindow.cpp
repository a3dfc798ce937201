#include "tests/home/helptable.h"
#include "tests/home/homewindow.h"
#include "tests/home/windowtable.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QMetaMethod>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Adds the rows of \a table as test data: the name, and the field \a field.
template <typename Row, std::size_t N, typename Field>
void addRows(const Row (&table)[N], const char *column, Field Row::*field)
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>(column);
    for (const Row &row : table)
        QTest::newRow(row.name) << QString::fromUtf8(row.name) << QString::fromUtf8(row.*field);
}

QString text(const QWidget *widget)
{
    return widget->property("text").toString();
}

QImage picture(const QIcon &icon)
{
    return icon.pixmap(64, 64).toImage();
}

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

const QStringList checkBoxes = {u"CheckUpdates"_s, u"OnlyViewData"_s, u"CompressFiles"_s,
                                u"BetterPerformance"_s, u"BetterX2"_s};

QList<bool> checkStates(const HomeWindow &home)
{
    QList<bool> states;
    for (const QString &name : checkBoxes)
        states << home.child<QCheckBox>(name)->isChecked();
    return states;
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { home = std::make_unique<HomeWindow>(); }
    void cleanupTestCase() { home.reset(); }

    // What the window is made of
    void everyWidgetStandsInItsPlace_data();
    void everyWidgetStandsInItsPlace();
    void everyTextReadsAsItShould_data() { addRows(textRows, "expected", &TextRow::text); }
    void everyTextReadsAsItShould();
    void everyButtonHasItsIcon_data() { addRows(iconRows, "path", &PictureRow::path); }
    void everyButtonHasItsIcon();
    void everyPictureFillsItsLabel_data() { addRows(pixmapRows, "path", &PictureRow::path); }
    void everyPictureFillsItsLabel();
    void everyFontHasItsSizeAndWeight_data();
    void everyFontHasItsSizeAndWeight();
    void everyStyleSheetIsTheStatedOne_data() { addRows(sheetRows, "sheet", &SheetRow::sheet); }
    void everyStyleSheetIsTheStatedOne();
    void theWindowHasItsTitleIconAndStyle();
    void theRulesAreDrawnInTheirColors();
    void theActionsShowTheirTextUnderTheIcon();
    void theOwnershipNoticeNamesTheMakerAndFits();
    void theCheckBoxesAreMadeInTheirOrder();
    void theCheckBoxesStartInTheirStates();
    void callersByIndexReachTheSlotTheyMean();

    // The help page
    void aHelpTabHoldsItsTexts_data();
    void aHelpTabHoldsItsTexts();
    void noHelpTextIsCut_data() { aHelpTabHoldsItsTexts_data(); }
    void noHelpTextIsCut();
    void onlyTheSelectedHelpTabIsWide();

    // Navigation
    void theWindowOpensOnTheBoards();
    void aNavigationButtonShowsItsPage_data();
    void aNavigationButtonShowsItsPage();
    void clickingSettingsTwiceStaysOnSettings();
    void pagesKeepTheirPlaceRightOfTheSideMenu();

    // The window itself
    void theWindowCannotBeResized();
    void restoringBringsAMinimisedWindowBack();
    void restoringLeavesAVisibleWindowAsItIs();
    void flashingReportsFalseWhereThereIsNoTaskBar();
    void datesAreMexicanFromNowOn();
    void theDataFolderIsMadeAtStart();

    // Settings
    void togglingACheckBoxChangesNothingElse_data();
    void togglingACheckBoxChangesNothingElse();
    void toggledCheckBoxesAreForgottenAtTheNextStart();
    void theUpdateCheckBoxCannotBeToggled();

private:
    std::unique_ptr<HomeWindow> home;
};

void TestMainWindow::everyWidgetStandsInItsPlace_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(widgetRows)); ++i)
        QTest::newRow(widgetRows[i].name) << i;
}

void TestMainWindow::everyWidgetStandsInItsPlace()
{
    QFETCH(const int, row);
    const WidgetRow &expected = widgetRows[row];
    const auto *const widget = home->child(QString::fromLatin1(expected.name));
    QCOMPARE(widget->metaObject()->className(), expected.className);
    QCOMPARE(widget->parentWidget()->objectName(), QString::fromLatin1(expected.parent));
    QCOMPARE(widget->geometry(), expected.geometry);
}

void TestMainWindow::everyTextReadsAsItShould()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    QCOMPARE(text(home->child(name)), expected);
}

void TestMainWindow::everyButtonHasItsIcon()
{
    QFETCH(const QString, name);
    QFETCH(const QString, path);
    const auto icon = home->child<QAbstractButton>(name)->icon();
    QVERIFY(!icon.isNull());
    QCOMPARE(picture(icon), picture(QIcon(path)));
}

void TestMainWindow::everyPictureFillsItsLabel()
{
    QFETCH(const QString, name);
    QFETCH(const QString, path);
    const auto *const label = home->child<QLabel>(name);
    QVERIFY(!label->pixmap().isNull());
    QCOMPARE(label->pixmap().toImage(), QPixmap(path).toImage());
    QVERIFY(label->hasScaledContents());
}

void TestMainWindow::everyFontHasItsSizeAndWeight_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("pointSize");
    QTest::addColumn<int>("weight");
    for (const FontRow &row : fontRows)
        QTest::newRow(row.name) << QString::fromLatin1(row.name) << row.pointSize << row.weight;
    for (const QString &name : checkBoxes)
        QTest::newRow(qPrintable(name)) << name << 9 << 500;
}

void TestMainWindow::everyFontHasItsSizeAndWeight()
{
    QFETCH(const QString, name);
    QFETCH(const int, pointSize);
    QFETCH(const int, weight);
    auto *const widget = home->child(name);
    widget->ensurePolished();
    QCOMPARE(widget->font().pointSize(), pointSize);
    QCOMPARE(int(widget->font().weight()), weight);
    QCOMPARE(widget->font().family(), u"Montserrat"_s); // the style sheet of the window decides
}

void TestMainWindow::everyStyleSheetIsTheStatedOne()
{
    QFETCH(const QString, name);
    QFETCH(const QString, sheet);
    QCOMPARE(home->child(name)->styleSheet(), sheet);
}

void TestMainWindow::theWindowHasItsTitleIconAndStyle()
{
    const auto &window = home->window;
    QCOMPARE(window.objectName(), u"MainWindow"_s);
    QCOMPARE(window.windowTitle(), u"Orvane Plumara - Inicio"_s);
    QCOMPARE(picture(window.windowIcon()), picture(QIcon(u":/img/orvaneplumaraico.ico"_s)));
    QCOMPARE(window.styleSheet(),
             u"\n        QWidget { font-family: Montserrat; background-color: white; }\n"
             "        QMessageBox QPushButton {\n"
             "            border: 1px solid gray;\n"
             "            border-radius: 3px;\n"
             "            background-color: white;\n"
             "            color: black;\n"
             "            padding: 5px 15px;\n"
             "        }\n"
             "        QMessageBox QLabel {\n"
             "            color: black;\n"
             "        }\n"
             "    "_s);
    QCOMPARE(window.focusPolicy(), Qt::NoFocus);
}

void TestMainWindow::theRulesAreDrawnInTheirColors()
{
    const auto holds = [this](const QString &name, const QColor &color) {
        const QImage image = home->child(name)->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixelColor(image.width() / 2, y) == color)
                return true;
        }
        return false;
    };
    QVERIFY(holds(u"Separator"_s, Qt::black));
    QVERIFY(holds(u"SeparatorMenu"_s, QColor(0xac, 0xac, 0xac)));
}

void TestMainWindow::theActionsShowTheirTextUnderTheIcon()
{
    for (const auto &name : {u"NewProject"_s, u"ImportProject"_s})
        QCOMPARE(home->child<QToolButton>(name)->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
}

void TestMainWindow::theOwnershipNoticeNamesTheMakerAndFits()
{
    const auto *const notice = home->child<QLabel>(u"BetaMessage"_s);
    QVERIFY(notice->text().contains(u"Orvane"_s));
    QVERIFY(notice->wordWrap());
    QCOMPARE(notice->alignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QVERIFY(notice->heightForWidth(notice->width()) <= notice->height());
}

void TestMainWindow::theCheckBoxesAreMadeInTheirOrder()
{
    QStringList names;
    const auto boxes = home->child(u"SettingsMenu"_s)->findChildren<QCheckBox *>();
    for (const auto *box : boxes)
        names << box->objectName();
    QCOMPARE(names, checkBoxes);
}

void TestMainWindow::theCheckBoxesStartInTheirStates()
{
    QCOMPARE(checkStates(*home), QList<bool>({true, false, false, true, true}));
    for (const QString &name : checkBoxes)
        QCOMPARE(home->child(name)->isEnabled(), name != u"CheckUpdates"_s);
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

void TestMainWindow::aHelpTabHoldsItsTexts_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(helpRows)); ++i)
        QTest::newRow(helpRows[i].tab) << i;
}

void TestMainWindow::aHelpTabHoldsItsTexts()
{
    QFETCH(const int, index);
    const HelpRow &expected = helpRows[index];
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    QCOMPARE(tabs->count(), int(std::size(helpRows)));
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(tabs->tabText(index), QString::fromUtf8(expected.tab));
    QCOMPARE(picture(tabs->tabIcon(index)), picture(QIcon(QString::fromLatin1(expected.icon))));

    QStringList texts;
    QList<QImage> previews;
    const auto labels = tabs->widget(index)->findChildren<QLabel *>();
    for (const auto *label : labels) {
        QCOMPARE(label->styleSheet(), u"color: black;"_s);
        if (label->pixmap().isNull())
            texts << label->text();
        else
            previews << label->pixmap().toImage();
    }

    QStringList expectedTexts{
        "<html><head/><body><p><span>&#10094;&#x268A; </span>   "_L1
            + QString::fromUtf8(expected.title) + "</p></body></html>"_L1,
        u"Vista previa del ejemplar:"_s,
        u"<html><head/><body><p>AVISO: ES IMPORTANTE FAMILIARIZARSE CON ESTAS FUNCIONES, YA QUE EL "
        "APARTADO DE &quot;AYUDA Y CONSEJOS&quot; SERÁ REMOVIDO EN LA VERSIÓN 1.5</p></body></html>"_s};
    for (const char *const *line = expected.texts; *line; ++line)
        expectedTexts << QString::fromUtf8(*line);
    QList<QImage> expectedPreviews;
    for (const char *const *path = expected.previews; *path; ++path)
        expectedPreviews << QPixmap(QString::fromLatin1(*path)).toImage();

    texts.sort();
    expectedTexts.sort();
    QCOMPARE(texts, expectedTexts);
    QCOMPARE(previews, expectedPreviews);
}

void TestMainWindow::noHelpTextIsCut()
{
    QFETCH(const int, index);
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    home->window.NavHelp();
    tabs->setCurrentIndex(index);
    const auto *const page = tabs->widget(index);
    const auto labels = page->findChildren<QLabel *>();
    for (const auto *label : labels) {
        QVERIFY2(page->rect().contains(label->geometry()), qPrintable(label->objectName()));
        if (label->pixmap().isNull()) {
            QVERIFY2(label->heightForWidth(label->width()) <= label->height(),
                     qPrintable(label->objectName()));
        }
    }
    tabs->setCurrentIndex(0);
    home->window.NavMain();
}

void TestMainWindow::onlyTheSelectedHelpTabIsWide()
{
    const auto *const bar = home->child<QTabWidget>(u"HelpWidget"_s)->tabBar();
    QVERIFY(bar->tabRect(0).width() >= 120);
    for (int i = 1; i < bar->count(); ++i)
        QVERIFY(bar->tabRect(i).width() < 60);
}

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

void TestMainWindow::restoringLeavesAVisibleWindowAsItIs()
{
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_VERIFY(other.isActiveWindow());
    const auto state = home->window.windowState();
    home->window.restoreWindow();
    QTRY_VERIFY(home->window.isActiveWindow());
    QCOMPARE(home->window.windowState() & ~Qt::WindowActive, state & ~Qt::WindowActive);
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
    auto expected = checkStates(*home);
    expected[index] = !expected[index];
    home->clickAt(checkBoxes[index], {10, 10});
    QCOMPARE(checkStates(*home), expected);
    QCOMPARE(navigationState(*home), QStringList({u"SettingsMenu"_s, u"NavSettingsBtn"_s}));
}

void TestMainWindow::toggledCheckBoxesAreForgottenAtTheNextStart()
{
    HomeWindow first;
    first.window.NavSettings();
    const auto initial = checkStates(first);
    for (const QString &name : checkBoxes)
        first.clickAt(name, {10, 10});
    QVERIFY(checkStates(first) != initial);
    QCOMPARE(checkStates(HomeWindow()), initial);
}

void TestMainWindow::theUpdateCheckBoxCannotBeToggled()
{
    home->window.NavSettings();
    home->clickAt(u"CheckUpdates"_s, {10, 10});
    QVERIFY(home->child<QCheckBox>(u"CheckUpdates"_s)->isChecked());
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
