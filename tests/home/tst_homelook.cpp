// How the home window looks: what its texts are aligned to and set in, and what its style sheets
// come to on the screen.

#include "tests/support/home/homewindow.h"
#include "tests/support/look/sharppictures.h"
#include "tests/support/main/registeredtest.h"

#include <QFontInfo>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr Qt::Alignment center = Qt::AlignCenter;
constexpr Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment topLeft = Qt::AlignLeft | Qt::AlignTop;
constexpr Qt::Alignment topCenter = Qt::AlignHCenter | Qt::AlignTop;

struct AlignmentRow
{
    const char *name;
    Qt::Alignment alignment;
};

const AlignmentRow alignmentRows[] = {
    {"Separator", topCenter},  {"SeparatorMenu", topCenter}, {"ClockTxt", center},
    {"BetaMessage", left},     {"LogoEnterprise", center},   {"UpdateTitle", left},
    {"NewVersionDesc", left},  {"NewVersionDesc_2", left},   {"UpdateDesc", topLeft},
    {"InstallerLogo", center}, {"UpdateIcon", center},
};

// The window's style sheet overrides the family; without it the form's own shows.
const char *const segoeNames[] = {
    "CheckUpdates", "OnlyViewData",  "CompressFiles", "BetterPerformance",
    "BetterX2",     "ClearCacheBtn", "RedoFolder",    "AboutSubtitleSettings",
    "BetaMessage",  "UpdateTitle",   "UpdateDesc",
};

const char *const overlayLabels[] = {
    "UpdateTitle",   "NewVersionDesc", "UpdateDesc",       "SubTitleLabelTxt_13",
    "InstallerLogo", "UpdateIcon",     "NewVersionDesc_2",
};

/// What \a bar, which has somewhere to scroll to, shows across its grip.
QList<QColor> acrossTheGrip(QScrollBar &bar)
{
    bar.setRange(0, 100);
    bar.setValue(0);
    const QImage image = bar.grab().toImage();
    const bool upright = bar.orientation() == Qt::Vertical;
    constexpr int inside = 10; // pixels from the end of the grip
    QList<QColor> colors;
    for (int i = 0; i < (upright ? image.width() : image.height()); ++i)
        colors << (upright ? image.pixelColor(i, inside) : image.pixelColor(inside, i));
    return colors;
}

QString withoutBlanks(QString text)
{
    return text.remove(u' ').remove(u'\n').remove(u'\t');
}

} // namespace

class TestHomeLook : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<HomeWindow>(); }
    void cleanup() { home.reset(); }

    void everyTextIsAlignedAsDesigned();
    void longTextsWrap();
    void theFormAsksForItsFamily();
    void theWindowIsSetInTheProgramsOwnFont();
    void theCoverOfTheCacheButtonCannotBeClicked();
    void theAdvisorsLabelsLetTheCardShow();
    void theAdvisorsButtonsAreOutlined();
    void theRulesAreDrawnInTheirColors();
    void onlyTheSelectedHelpTabShowsItsText();
    void onlyTheSelectedHelpTabIsWide();
    void whatCannotBeUsedLooksFaded_data();
    void whatCannotBeUsedLooksFaded();
    void theCoverOfTheCacheButtonIsNotFaded();
    void messageBoxesHaveFinePicturesOfTheFamily_data();
    void messageBoxesHaveFinePicturesOfTheFamily();
    void buttonsOfDialogsHaveNoPictures();
    void aBoxThatIsNotTickedIsEmpty();
    void scrollBarsLookLikeThoseOfTheBoard();
    void previewsFillTheirLabels();
    void noPreviewIsDecodedBeforeItIsSeen();

private:
    std::unique_ptr<HomeWindow> home;
};

void TestHomeLook::everyTextIsAlignedAsDesigned()
{
    for (const AlignmentRow &row : alignmentRows) {
        const auto *const label = home->child<QLabel>(QString::fromLatin1(row.name));
        QVERIFY2(label->alignment() == row.alignment, row.name);
    }
}

void TestHomeLook::longTextsWrap()
{
    QVERIFY(home->child<QLabel>(u"UpdateDesc"_s)->wordWrap());
    QVERIFY(home->child<QLabel>(u"BetaMessage"_s)->wordWrap());
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    for (int i = 0; i < tabs->count(); ++i) {
        const auto labels = tabs->widget(i)->findChildren<QLabel *>();
        const auto wrapping = std::ranges::count_if(labels, &QLabel::wordWrap);
        QVERIFY2(wrapping >= 1, qPrintable(tabs->tabText(i)));
    }
}

void TestHomeLook::theFormAsksForItsFamily()
{
    home->window.setStyleSheet({});
    for (const char *name : segoeNames) {
        auto *const widget = home->child(QString::fromLatin1(name));
        widget->ensurePolished();
        QVERIFY2(widget->font().family() == u"Segoe UI", name);
    }
}

void TestHomeLook::theWindowIsSetInTheProgramsOwnFont()
{
    const auto *const label = home->child<QLabel>(u"CodeNameProgram"_s);
    QCOMPARE(QFontInfo(label->font()).family(), u"Montserrat"_s);
}

void TestHomeLook::theCoverOfTheCacheButtonCannotBeClicked()
{
    QVERIFY(!home->child<QPushButton>(u"CleanedCacheS"_s)->isEnabled());
}

void TestHomeLook::theAdvisorsLabelsLetTheCardShow()
{
    for (const char *name : overlayLabels) {
        const QString sheet = home->child(QString::fromLatin1(name))->styleSheet();
        QVERIFY2(sheet.contains(u"background-color: transparent;"_s), name);
        QVERIFY2(sheet.contains(u"color: black;"_s) || sheet.contains(u"color: #2e2e2e;"_s), name);
    }
}

void TestHomeLook::theAdvisorsButtonsAreOutlined()
{
    const QString cancel = home->child(u"CancelUpdate"_s)->styleSheet();
    QCOMPARE(home->child(u"StartUpdate"_s)->styleSheet(), cancel);
    const QStringList rules = withoutBlanks(cancel).split(u'}');
    const auto has = [&](const QString &selector, const QStringList &properties) {
        return std::ranges::any_of(rules, [&](const QString &rule) {
            return rule.startsWith(selector + u'{')
                && std::ranges::all_of(properties, [&](const QString &property) {
                       return rule.contains(withoutBlanks(property));
                   });
        });
    };
    QVERIFY(has(u"QPushButton"_s,
                {u"background-color: transparent;"_s, u"border: 1px solid #565656;"_s,
                 u"border-radius: 8px;"_s, u"color: black;"_s, u"text-align: center;"_s}));
    QVERIFY(
        has(u"QPushButton:hover"_s, {u"background-color: #cecece;"_s, u"border-radius: 5px;"_s}));
    QVERIFY(has(u"QPushButton:pressed,QPushButton:checked"_s,
                {u"background-color: #bfbfbf;"_s, u"border-radius: 5px;"_s}));
}

void TestHomeLook::theRulesAreDrawnInTheirColors()
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

void TestHomeLook::onlyTheSelectedHelpTabShowsItsText()
{
    const QString sheet = withoutBlanks(home->child(u"HelpWidget"_s)->styleSheet());
    for (const auto &rule :
         {u"QTabWidget::pane{border:none;background:transparent;}"_s, u"padding:5px;"_s,
          u"min-width:40px;"_s, u"max-width:150px;"_s, u"text-align:center;"_s,
          u"QTabBar::tab::icon{margin-right:7px;}"_s, u"width:15px;"_s, u"min-width:120px;"_s,
          u"border-bottom:2pxsolid#000000;color:black;"_s}) {
        QVERIFY2(sheet.contains(rule), qPrintable(rule));
    }
    // What that comes to: the label of a tab beside the selected one leaves no trace.
    home->window.NavHelp();
    auto *const bar = home->child<QTabWidget>(u"HelpWidget"_s)->tabBar();
    const auto imageWith = [&](const QString &text) {
        bar->setTabText(3, text);
        return bar->grab(bar->tabRect(3)).toImage();
    };
    QCOMPARE(imageWith(u"MMMM"_s), imageWith(u"iiii"_s));
}

void TestHomeLook::onlyTheSelectedHelpTabIsWide()
{
    const auto *const bar = home->child<QTabWidget>(u"HelpWidget"_s)->tabBar();
    QVERIFY(bar->tabRect(0).width() >= 120);
    for (int i = 1; i < bar->count(); ++i)
        QVERIFY(bar->tabRect(i).width() < 60);
}

void TestHomeLook::whatCannotBeUsedLooksFaded_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"NewProject", "NavHelpBtn", "CheckUpdates", "CompressFiles",
                             "ClearCacheBtn", "DeleteAll"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestHomeLook::whatCannotBeUsedLooksFaded()
{
    QFETCH(const QString, name);
    auto *const widget = home->child(name);
    home->window.NavSettings();
    if (!widget->isVisible())
        home->window.NavMain();
    // What lies darkest on it: the ink of its text.
    const auto darkest = [widget] {
        const QImage image = widget->parentWidget()
                                 ->grab(widget->geometry().adjusted(16, 4, -16, -4))
                                 .toImage()
                                 .convertToFormat(QImage::Format_Grayscale8);
        int level = 255;
        for (int y = 0; y < image.height(); ++y) {
            const auto *const line = image.constScanLine(y);
            level = std::min<int>(level, *std::min_element(line, line + image.width()));
        }
        return level;
    };
    widget->setEnabled(true);
    const int usable = darkest();
    widget->setEnabled(false);
    QVERIFY(darkest() > usable + 40);
    widget->setEnabled(true);
    QCOMPARE(darkest(), usable);
}

void TestHomeLook::theCoverOfTheCacheButtonIsNotFaded()
{
    QVERIFY(!home->child(u"CleanedCacheS"_s)->graphicsEffect());
}

void TestHomeLook::messageBoxesHaveFinePicturesOfTheFamily_data()
{
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QString>("picture");
    QTest::newRow("information") << QMessageBox::Information << u":/img/information"_s;
    QTest::newRow("question") << QMessageBox::Question << u":/img/question"_s;
    QTest::newRow("warning") << QMessageBox::Warning << u":/img/warning"_s;
    QTest::newRow("error") << QMessageBox::Critical << u":/img/critical"_s;
}

void TestHomeLook::messageBoxesHaveFinePicturesOfTheFamily()
{
#ifdef Q_OS_WIN
    QSKIP("The system has its own.");
#endif
    QFETCH(const QMessageBox::Icon, icon);
    QFETCH(const QString, picture);
    QMessageBox box(icon, u"x"_s, u"y"_s, QMessageBox::Ok, &home->window);
    const QImage shown = box.iconPixmap().toImage();
    const qreal ratio = box.devicePixelRatioF();
    const QImage drawn = QIcon(picture + u".png"_s)
                             .pixmap(shown.size() / ratio, ratio)
                             .toImage()
                             .convertToFormat(shown.format());
    QCOMPARE(shown, drawn);
    QVERIFY(shown.width() <= 48 * ratio);
}

void TestHomeLook::buttonsOfDialogsHaveNoPictures()
{
    QMessageBox box(QMessageBox::NoIcon, u"x"_s, u"y"_s, QMessageBox::Ok | QMessageBox::Cancel,
                    &home->window);
    const auto buttons = box.buttons();
    QCOMPARE(buttons.size(), 2);
    for (const auto *button : buttons)
        QVERIFY(button->icon().isNull());
}

void TestHomeLook::aBoxThatIsNotTickedIsEmpty()
{
    home->window.NavSettings();
    auto *const box = home->child<QAbstractButton>(u"CompressFiles"_s);
    QVERIFY(!box->isChecked());
    const QImage image = box->grab().toImage();
    // Inside of its border of two pixels, which is round at the corners.
    for (int y = 4; y < 16; ++y) {
        for (int x = 4; x < 16; ++x)
            QCOMPARE(image.pixelColor(x, y), QColor(Qt::white));
    }
}

void TestHomeLook::scrollBarsLookLikeThoseOfTheBoard()
{
    auto *const list = home->child<QListWidget>(u"listWidget"_s);
    // A dialog of the toolkit that the program opens.
    QMessageBox box(&home->window);
    auto *const area = new QListWidget(&box);
    area->resize(200, 200);
    for (auto *view : {list, area}) {
        for (int i = 0; i < 40; ++i)
            view->addItem(QString(200, u'x'));
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    }
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    for (auto *bar : {list->verticalScrollBar(), list->horizontalScrollBar(),
                      area->verticalScrollBar(), area->horizontalScrollBar()}) {
        const QList<QColor> colors = acrossTheGrip(*bar);
        QCOMPARE(colors.count(QColor(0x88, 0x88, 0x88)), 5);
        // Nothing of it is raised; the pointer has more to aim at.
        QCOMPARE(QSet<QRgb>({colors.constFirst().rgb(), colors.constLast().rgb()}).size(), 1);
        QVERIFY(colors.size() >= 10);
    }
}

void TestHomeLook::previewsFillTheirLabels()
{
    const auto labels = home->child(u"HelpWidget"_s)->findChildren<QLabel *>();
    for (const auto *label : labels) {
        if (SharpPictures::isPicture(*label))
            QVERIFY2(label->hasScaledContents(), qPrintable(label->objectName()));
    }
}

// All previews together take longer to decode than all else that the start does.
void TestHomeLook::noPreviewIsDecodedBeforeItIsSeen()
{
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    const auto decodedTabs = [tabs] {
        QStringList names;
        for (int i = 0; i < tabs->count(); ++i) {
            const auto labels = tabs->widget(i)->findChildren<QLabel *>();
            const auto decoded = [](const QLabel *label) { return !label->pixmap().isNull(); };
            if (std::ranges::any_of(labels, decoded))
                names << tabs->tabText(i);
        }
        return names;
    };
    home->window.grab();
    QCOMPARE(decodedTabs(), QStringList());

    home->window.NavHelp();
    QCOMPARE(decodedTabs(), QStringList{tabs->tabText(0)});

    tabs->setCurrentIndex(1);
    QCOMPARE(decodedTabs(), QStringList({tabs->tabText(0), tabs->tabText(1)}));
}

PLUMARA_TEST(TestHomeLook)
#include "tst_homelook.moc"
