// What the home window is made of: its widgets with their places, texts, pictures, fonts and style
// sheets.

#include "tests/home/helptable.h"
#include "tests/home/homecheckboxes.h"
#include "tests/home/windowtable.h"
#include "tests/support/main/registeredtest.h"

#include <QApplication>
#include <QLabel>
#include <QMetaMethod>
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

} // namespace

class TestHomeForm : public QObject
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
    void theActionsShowTheirTextUnderTheIcon();
    void theOwnershipNoticeNamesTheMakerAndFits();
    void theCheckBoxesAreMadeInTheirOrder();
    void theCheckBoxesStartInTheirStates();

    // The help page
    void aHelpTabHoldsItsTexts_data();
    void aHelpTabHoldsItsTexts();
    void noHelpTextIsCut_data() { aHelpTabHoldsItsTexts_data(); }
    void noHelpTextIsCut();

private:
    std::unique_ptr<HomeWindow> home;
};

void TestHomeForm::everyWidgetStandsInItsPlace_data()
{
    QTest::addColumn<int>("row");
    for (int i = 0; i < int(std::size(widgetRows)); ++i)
        QTest::newRow(widgetRows[i].name) << i;
}

void TestHomeForm::everyWidgetStandsInItsPlace()
{
    QFETCH(const int, row);
    const WidgetRow &expected = widgetRows[row];
    const auto *const widget = home->child(QString::fromLatin1(expected.name));
    QCOMPARE(widget->metaObject()->className(), expected.className);
    QCOMPARE(widget->parentWidget()->objectName(), QString::fromLatin1(expected.parent));
    QCOMPARE(widget->geometry(), expected.geometry);
}

void TestHomeForm::everyTextReadsAsItShould()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    QCOMPARE(text(home->child(name)), expected);
}

void TestHomeForm::everyButtonHasItsIcon()
{
    QFETCH(const QString, name);
    QFETCH(const QString, path);
    const auto icon = home->child<QAbstractButton>(name)->icon();
    QVERIFY(!icon.isNull());
    QCOMPARE(picture(icon), picture(QIcon(path)));
}

void TestHomeForm::everyPictureFillsItsLabel()
{
    QFETCH(const QString, name);
    QFETCH(const QString, path);
    const auto *const label = home->child<QLabel>(name);
    QVERIFY(!label->pixmap().isNull());
    QCOMPARE(label->pixmap().toImage(), QPixmap(path).toImage());
    QVERIFY(label->hasScaledContents());
}

void TestHomeForm::everyFontHasItsSizeAndWeight_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("pointSize");
    QTest::addColumn<int>("weight");
    for (const FontRow &row : fontRows)
        QTest::newRow(row.name) << QString::fromLatin1(row.name) << row.pointSize << row.weight;
    // The size of the check boxes is left to the person's system.
    const int systemSize = QApplication::font().pointSize();
    for (const QString &name : checkBoxes)
        QTest::newRow(qPrintable(name)) << name << systemSize << 500;
}

void TestHomeForm::everyFontHasItsSizeAndWeight()
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

void TestHomeForm::everyStyleSheetIsTheStatedOne()
{
    QFETCH(const QString, name);
    QFETCH(const QString, sheet);
    QCOMPARE(home->child(name)->styleSheet(), sheet);
}

void TestHomeForm::theWindowHasItsTitleIconAndStyle()
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

void TestHomeForm::theActionsShowTheirTextUnderTheIcon()
{
    for (const auto &name : {u"NewProject"_s, u"ImportProject"_s})
        QCOMPARE(home->child<QToolButton>(name)->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
}

void TestHomeForm::theOwnershipNoticeNamesTheMakerAndFits()
{
    const auto *const notice = home->child<QLabel>(u"BetaMessage"_s);
    QVERIFY(notice->text().contains(u"Orvane"_s));
    QVERIFY(notice->heightForWidth(notice->width()) <= notice->height());
}

void TestHomeForm::theCheckBoxesAreMadeInTheirOrder()
{
    QStringList names;
    const auto boxes = home->child(u"SettingsMenu"_s)->findChildren<QCheckBox *>();
    for (const auto *box : boxes)
        names << box->objectName();
    QCOMPARE(names, checkBoxes);
}

void TestHomeForm::theCheckBoxesStartInTheirStates()
{
    QCOMPARE(checkStates(home->window), QList<bool>({true, false, false, true, true}));
    for (const QString &name : checkBoxes)
        QCOMPARE(home->child(name)->isEnabled(), name != u"CheckUpdates"_s);
}

void TestHomeForm::aHelpTabHoldsItsTexts_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(helpRows)); ++i)
        QTest::newRow(helpRows[i].tab) << i;
}

void TestHomeForm::aHelpTabHoldsItsTexts()
{
    QFETCH(const int, index);
    const HelpRow &expected = helpRows[index];
    auto *const tabs = home->child<QTabWidget>(u"HelpWidget"_s);
    QCOMPARE(tabs->count(), int(std::size(helpRows)));
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(tabs->tabText(index), QString::fromUtf8(expected.tab));
    QCOMPARE(picture(tabs->tabIcon(index)), picture(QIcon(QString::fromLatin1(expected.icon))));
    home->window.NavHelp();
    tabs->setCurrentIndex(index); // previews are decoded when they are shown

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
    tabs->setCurrentIndex(0);
    home->window.NavMain();
    QCOMPARE(texts, expectedTexts);
    QCOMPARE(previews, expectedPreviews);
}

void TestHomeForm::noHelpTextIsCut()
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

PLUMARA_TEST(TestHomeForm)
#include "tst_homeform.moc"
