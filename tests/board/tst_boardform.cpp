// What the form of the board window holds: the widgets, their places, texts and styles.

#include "tests/board/shownboard.h"
#include "tests/support/main/registeredtest.h"

#include <QComboBox>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString panelStyle =
    u"background-color: #F0F0F0;\nborder: 1px solid #D9D9D9;\nborder-radius: 4px;"_s;

const QString transparentRule =
    u"QPushButton\n{\n    background-color: transparent;\n    border: none;\n}\n"_s;

const QString toolRules = transparentRule
    + u"QPushButton:hover\n{\n\tbackground-color: #D9D9D9;\n\tborder-radius: 5px;\n}\n"
      "QPushButton:pressed,\nQPushButton:checked\n{\n\tbackground-color: #C2C2C2;\n"
      "\tcolor: black;\n\tborder-radius: 5px;\n}\n"_s;

/// The declarations of the first rule for \a selector in \a sheet, without line breaks.
QString declarations(const QString &sheet, const QString &selector)
{
    const QStringList rules = sheet.split(u'}');
    for (const auto &rule : rules) {
        const QStringList parts = rule.split(u'{');
        if (parts.size() != 2)
            continue;
        const QStringList selectors = parts.at(0).split(u',');
        for (const auto &one : selectors) {
            if (one.trimmed() == selector)
                return parts.at(1).simplified();
        }
    }
    return {};
}

QImage picture(const QIcon &icon, const QSize &size)
{
    return icon.pixmap(size).toImage();
}

struct Button
{
    const char *name;
    const char16_t *icon;
    int iconSide; // pixels
    bool checkable;
    bool checked;
    const char16_t *toolTip;
};

constexpr Button buttons[] = {
    {"CloseBoardBtn", u":/img/closeboard.png", 17, false, false, u"Salir de la pizarra"},
    {"ModoCursor", u":/img/cursor.png", 17, true, true, u"Modo cursor"},
    {"ModoPostIt", u":/img/texto.png", 22, true, false, u"Agregar nota"},
    {"ModoLapiz", u":/img/lapiz.png", 18, true, false, u"Modo lápiz"},
    {"ModoLinea", u":/img/linea.png", 19, true, false, u"Insertar línea"},
    {"ModoImagen", u":/img/imagen.png", 21, true, false, u"Insertar imagen"},
    {"ModoBorrador", u":/img/borrador.png", 21, true, false, u"Cambiar a modo borrador"},
    {"ModoDeshacer", u":/img/deshacer.png", 19, false, false, u"Deshacer cambios"},
    {"ModoRehacer", u":/img/rehacer.png", 19, false, false, u"Rehacer cambios"},
    {"GuardarComo", u":/img/saveas.png", 19, false, false, u"Guardar pizarra"},
};

} // namespace

class TestBoardForm : public QObject
{
    Q_OBJECT

private slots:
    void everyWidgetHasItsClassParentAndPlace_data();
    void everyWidgetHasItsClassParentAndPlace();
    void thereAreNoOtherWidgets();
    void panelsShareOneStyle_data();
    void panelsShareOneStyle();
    void everyButtonHasItsIconAndToolTip_data();
    void everyButtonHasItsIconAndToolTip();
    void toolButtonsLightUpAndPlainButtonsDoNot_data();
    void toolButtonsLightUpAndPlainButtonsDoNot();
    void toolTipsAreBlackOnLightGrey_data();
    void toolTipsAreBlackOnLightGrey();
    void labelsReadAsTheyShould();
    void labelsHaveTheirFonts();
    void theProgramsPictureIsScaledIntoItsLabel();
    void theComboOffersOnlyTheFullScreen();
    void theComboIsAGreyBoxWithAnArrow();
    void theCanvasHasThinScrollBarsAndNoBorder();
    void theScrollBarsHaveNeitherArrowButtonsNorPageAreas();
    void theCentralWidgetIsWhite();
    void onlyTheReminderIsHidden();
};

void TestBoardForm::everyWidgetHasItsClassParentAndPlace_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QRect>("place");

    const auto row = [](const char *name, const char *className, const char *parent,
                        const QRect &place) {
        QTest::newRow(name) << QByteArray(className) << QString::fromLatin1(parent) << place;
    };
    row("centralwidget", "QWidget", "BoardWindow", {0, 0, 1200, 700});
    row("PizarraMain", "QGraphicsView", "centralwidget", {0, 0, 1200, 700});
    row("ExitPanel", "QWidget", "centralwidget", {10, 655, 35, 35});
    row("CloseBoardBtn", "QPushButton", "ExitPanel", {0, 0, 35, 35});
    row("DateTimePanel", "QWidget", "centralwidget", {990, 655, 200, 35});
    row("FechaHoraTxt", "QLabel", "DateTimePanel", {10, 7, 180, 20});
    row("MainPanel", "QWidget", "centralwidget", {10, 10, 270, 35});
    row("AppIcoImg", "QLabel", "MainPanel", {10, 4, 26, 26});
    row("NombreProyectoTxt", "QLabel", "MainPanel", {45, 7, 213, 20});
    row("ToolPanel", "QWidget", "centralwidget", {10, 188, 35, 325});
    row("ModoCursor", "QPushButton", "ToolPanel", {0, 5, 35, 35});
    row("ModoPostIt", "QPushButton", "ToolPanel", {0, 45, 35, 35});
    row("ModoLapiz", "QPushButton", "ToolPanel", {0, 85, 35, 35});
    row("ModoLinea", "QPushButton", "ToolPanel", {0, 125, 35, 35});
    row("ModoImagen", "QPushButton", "ToolPanel", {0, 165, 35, 35});
    row("ModoBorrador", "QPushButton", "ToolPanel", {0, 205, 35, 35});
    row("ModoDeshacer", "QPushButton", "ToolPanel", {0, 245, 35, 35});
    row("ModoRehacer", "QPushButton", "ToolPanel", {0, 285, 35, 35});
    row("AccountPanel", "QWidget", "centralwidget", {990, 10, 200, 35});
    row("Presentar", "QComboBox", "AccountPanel", {5, 5, 150, 25});
    row("GuardarComo", "QPushButton", "AccountPanel", {160, 0, 35, 35});
    row("AdviseFS", "QWidget", "centralwidget", {290, 10, 480, 35});
    row("TXTFS", "QLabel", "AdviseFS", {7, 7, 465, 20});
}

void TestBoardForm::everyWidgetHasItsClassParentAndPlace()
{
    const ShownBoard board;
    const auto *const widget = board.find<QWidget>(QTest::currentDataTag());

    QVERIFY(widget);
    QTEST(QByteArray(widget->metaObject()->className()), "className");
    QTEST(widget->parentWidget()->objectName(), "parent");
    QTEST(widget->geometry(), "place");
}

void TestBoardForm::thereAreNoOtherWidgets()
{
    const ShownBoard board;
    const auto children = [&board](const char *name) {
        return board.find<QWidget>(name)
            ->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)
            .size();
    };

    QCOMPARE(children("centralwidget"), 7);
    QCOMPARE(children("ExitPanel"), 1);
    QCOMPARE(children("DateTimePanel"), 1);
    QCOMPARE(children("MainPanel"), 2);
    QCOMPARE(children("ToolPanel"), 8);
    QCOMPARE(children("AccountPanel"), 2);
    QCOMPARE(children("AdviseFS"), 1);
}

void TestBoardForm::panelsShareOneStyle_data()
{
    QTest::addColumn<QString>("style");
    for (const char *name :
         {"ExitPanel", "DateTimePanel", "MainPanel", "ToolPanel", "AccountPanel", "AdviseFS"}) {
        QTest::newRow(name) << panelStyle;
    }
}

void TestBoardForm::panelsShareOneStyle()
{
    const ShownBoard board;

    QTEST(board.find<QWidget>(QTest::currentDataTag())->styleSheet(), "style");
}

void TestBoardForm::everyButtonHasItsIconAndToolTip_data()
{
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QSize>("iconSize");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<QString>("toolTip");
    for (const auto &button : buttons) {
        QTest::newRow(button.name)
            << QString::fromUtf16(button.icon) << QSize(button.iconSide, button.iconSide)
            << button.checkable << button.checked << QString::fromUtf16(button.toolTip);
    }
}

void TestBoardForm::everyButtonHasItsIconAndToolTip()
{
    QFETCH(const QString, icon);
    QFETCH(const QSize, iconSize);
    const ShownBoard board;
    const auto *const button = board.find<QPushButton>(QTest::currentDataTag());

    QCOMPARE(button->iconSize(), iconSize);
    QVERIFY(!picture(button->icon(), iconSize).isNull());
    QCOMPARE(picture(button->icon(), iconSize), picture(QIcon(icon), iconSize));
    QTEST(button->isCheckable(), "checkable");
    QTEST(button->isChecked(), "checked");
    QTEST(button->toolTip(), "toolTip");
    QVERIFY(button->text().isEmpty());
}

void TestBoardForm::toolButtonsLightUpAndPlainButtonsDoNot_data()
{
    QTest::addColumn<bool>("tool");
    for (const auto &button : buttons)
        QTest::newRow(button.name) << QByteArray(button.name).startsWith("Modo");
}

void TestBoardForm::toolButtonsLightUpAndPlainButtonsDoNot()
{
    QFETCH(const bool, tool);
    const ShownBoard board;
    const QString style = board.find<QPushButton>(QTest::currentDataTag())->styleSheet();
    const qsizetype toolTipRule = style.indexOf(u"QToolTip");

    QCOMPARE(style.left(toolTipRule), tool ? toolRules : transparentRule);
    QCOMPARE(style.count(u'{'), tool ? 4 : 2);
}

void TestBoardForm::toolTipsAreBlackOnLightGrey_data()
{
    toolButtonsLightUpAndPlainButtonsDoNot_data();
}

void TestBoardForm::toolTipsAreBlackOnLightGrey()
{
    const ShownBoard board;

    QCOMPARE(
        declarations(board.find<QPushButton>(QTest::currentDataTag())->styleSheet(), u"QToolTip"_s),
        u"color: black; background-color: #F2F2F2; border: 1px solid white; "
        "border-radius: 3px; padding: 5px;"_s);
}

void TestBoardForm::labelsReadAsTheyShould()
{
    const ShownBoard board;
    const auto label = [&board](const char *name) { return board.find<QLabel>(name); };

    QCOMPARE(label("NombreProyectoTxt")->text(), u"Pizarra1.vrtz"_s);
    QCOMPARE(label("NombreProyectoTxt")->styleSheet(), u"border: none;"_s);
    QCOMPARE(label("TXTFS")->text(),
             u"Recordatorio: Para salir del modo de pantalla completa, presione la tecla [Esc]"_s);
    QCOMPARE(label("TXTFS")->styleSheet(), u"border: none;\nfont-weight: 600;"_s);
    QCOMPARE(label("FechaHoraTxt")->styleSheet(), u"border: none;"_s);
    QCOMPARE(label("FechaHoraTxt")->alignment(), Qt::AlignCenter);
}

void TestBoardForm::labelsHaveTheirFonts()
{
    ShownBoard board;
    const auto family = [&board](const char *name) {
        return board.find<QLabel>(name)->font().family();
    };
    // The window's style sheet puts its own font over those of the labels.
    QCOMPARE(family("FechaHoraTxt"), u"Montserrat"_s);

    board.window.setStyleSheet({});

    QCOMPARE(family("FechaHoraTxt"), u"Segoe UI"_s);
    QCOMPARE(family("TXTFS"), u"Montserrat"_s);
}

void TestBoardForm::theProgramsPictureIsScaledIntoItsLabel()
{
    const ShownBoard board;
    const auto *const label = board.find<QLabel>("AppIcoImg");

    QVERIFY(!label->pixmap().isNull());
    QCOMPARE(label->pixmap().toImage(), QPixmap(u":/img/orvaneplumaraico.png"_s).toImage());
    QVERIFY(label->hasScaledContents());
    QVERIFY(label->text().isEmpty());
    QCOMPARE(label->styleSheet(), u"border: none;"_s);
}

void TestBoardForm::theComboOffersOnlyTheFullScreen()
{
    const ShownBoard board;
    const auto *const combo = board.find<QComboBox>("Presentar");

    QCOMPARE(combo->count(), 1);
    QCOMPARE(combo->itemText(0), u"Pantalla completa"_s);
    QCOMPARE(combo->currentIndex(), -1);
    QCOMPARE(combo->placeholderText(), u"Presentar..."_s);
    QCOMPARE(combo->toolTip(), u"Opciones de presentación"_s);
}

void TestBoardForm::theComboIsAGreyBoxWithAnArrow()
{
    const ShownBoard board;
    const QString style = board.find<QComboBox>("Presentar")->styleSheet();

    const QString box = declarations(style, u"QComboBox"_s);
    QVERIFY2(box.contains(u"background-color: #CFCFCF;"), qPrintable(style));
    QVERIFY2(box.contains(u"border-radius: 3px;"), qPrintable(style));
    const QString arrow = declarations(style, u"QComboBox::down-arrow"_s);
    QVERIFY2(arrow.contains(u"image: url(:/img/arrow.png);"), qPrintable(style));
    QVERIFY2(arrow.contains(u"width: 20px;"), qPrintable(style));
    QVERIFY2(declarations(style, u"QComboBox QAbstractItemView::item"_s).contains(u"height: 30px;"),
             qPrintable(style));
}

void TestBoardForm::theCanvasHasThinScrollBarsAndNoBorder()
{
    const ShownBoard board;
    const QString style = board.view.styleSheet();

    QCOMPARE(declarations(style, u"QGraphicsView"_s), u"border: none;"_s);
    for (const auto &bar : {u"QScrollBar:vertical"_s, u"QScrollBar:horizontal"_s})
        QVERIFY(declarations(style, bar).contains(u"background: #f1f1f1;"));
    const QString handle = declarations(style, u"QScrollBar::handle"_s);
    QVERIFY(handle.contains(u"background: #888;"));
    QVERIFY(handle.contains(u"border-radius: 2px;"));
    QCOMPARE(board.view.verticalScrollBar()->width(), 5);
    QCOMPARE(board.view.horizontalScrollBar()->height(), 5);
    QCOMPARE(board.view.viewport()->geometry(), QRect(0, 0, 1195, 695));
}

void TestBoardForm::theScrollBarsHaveNeitherArrowButtonsNorPageAreas()
{
    const ShownBoard board;
    const QString style = board.view.styleSheet();
    for (const auto &area : {u"QScrollBar::add-page"_s, u"QScrollBar::sub-page"_s})
        QCOMPARE(declarations(style, area), u"background: none;"_s);

    for (const QScrollBar *const bar :
         {board.view.verticalScrollBar(), board.view.horizontalScrollBar()}) {
        QStyleOptionSlider option;
        option.initFrom(bar);
        option.orientation = bar->orientation();
        option.minimum = bar->minimum();
        option.maximum = bar->maximum();
        option.pageStep = bar->pageStep();
        for (const auto button : {QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine}) {
            QVERIFY(
                bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, button, bar).isEmpty());
        }
    }
}

void TestBoardForm::theCentralWidgetIsWhite()
{
    const ShownBoard board;

    QCOMPARE(board.window.centralWidget()->objectName(), u"centralwidget"_s);
    QCOMPARE(board.window.centralWidget()->styleSheet(),
             u"background-color: white;\ncolor: black;"_s);
}

void TestBoardForm::onlyTheReminderIsHidden()
{
    const ShownBoard board;

    QVERIFY(board.find<QWidget>("AdviseFS")->isHidden());
    for (const char *name :
         {"PizarraMain", "ExitPanel", "DateTimePanel", "MainPanel", "ToolPanel", "AccountPanel"}) {
        QVERIFY2(board.find<QWidget>(name)->isVisible(), name);
    }
}

PLUMARA_TEST(TestBoardForm)
#include "tst_boardform.moc"
