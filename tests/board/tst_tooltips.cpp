// The tool tips of the board's buttons: where they stand, and what they look like.

#include "look/tooltips.h"
#include "tests/board/shownboard.h"
#include "tests/support/look/contrast.h"
#include "tests/support/main/registeredtest.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class TestToolTips : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void aToolTipCoversNoOtherTool_data();
    void aToolTipCoversNoOtherTool();
    void theToolTipOfTheNextToolStandsBesideIt();
    void aToolTipHasAnEdge_data();
    void aToolTipHasAnEdge();
    void aToolTipStaysOnTheScreen();
    void aPanelsShapeSaysWhereItStands_data();
    void aPanelsShapeSaysWhereItStands();
};

namespace {

QWidget *shownTip()
{
    const auto windows = QApplication::topLevelWidgets();
    const auto tip = std::ranges::find_if(windows, [](const QWidget *window) {
        return window->inherits("QTipLabel") && window->isVisible();
    });
    return tip == windows.end() ? nullptr : *tip;
}

QRect onScreen(const QWidget &widget)
{
    // The offscreen platform gives frames also to windows that have none.
    return {widget.isWindow() ? widget.pos() : widget.mapToGlobal(QPoint()), widget.size()};
}

/// Lets the pointer rest on \a widget; its tool tip.
QWidget *tipOf(QWidget &widget)
{
    const QPoint middle = widget.rect().center();
    QHelpEvent help(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
    QCoreApplication::sendEvent(&widget, &help);
    return shownTip();
}

/// Everything on the board that has a tool tip.
QList<QWidget *> tools(const ShownBoard &board)
{
    QList<QWidget *> found = board.window.findChildren<QWidget *>();
    found.removeIf([](const QWidget *widget) { return widget->toolTip().isEmpty(); });
    return found;
}

void addTools()
{
    QTest::addColumn<QString>("name");
    const ShownBoard board;
    const auto all = tools(board);
    for (const auto *tool : all)
        QTest::newRow(qPrintable(tool->objectName())) << tool->objectName();
}

} // namespace

void TestToolTips::cleanup()
{
    QToolTip::hideText();
    QTRY_VERIFY(!shownTip());
}

void TestToolTips::aToolTipCoversNoOtherTool_data()
{
    addTools();
}

void TestToolTips::aToolTipCoversNoOtherTool()
{
    QFETCH(const QString, name);
    ShownBoard board;
    // Into the screen as far as it goes.
    board.window.move(-400, 0);
    if (name.startsWith(u"Modo") || name == u"CloseBoardBtn")
        board.window.move(0, 0);
    auto *const tool = board.find<QWidget>(qPrintable(name));

    const auto *const tip = tipOf(*tool);

    QVERIFY(tip);
    QCOMPARE(QToolTip::text(), tool->toolTip());
    const auto all = tools(board);
    for (const auto *other : all)
        QVERIFY2(!onScreen(*tip).intersects(onScreen(*other)), qPrintable(other->objectName()));
}

void TestToolTips::theToolTipOfTheNextToolStandsBesideIt()
{
    ShownBoard board;
    board.window.move(0, 0);
    auto *const pen = board.find<QWidget>("ModoLapiz");
    auto *const line = board.find<QWidget>("ModoLinea");
    const QRect first = onScreen(*tipOf(*pen));
    const QRect next = onScreen(*tipOf(*line));
    QVERIFY(std::abs(first.center().y() - onScreen(*pen).center().y()) <= 1);
    QVERIFY(std::abs(next.center().y() - onScreen(*line).center().y()) <= 1);
}

void TestToolTips::aToolTipHasAnEdge_data()
{
    addTools();
}

void TestToolTips::aToolTipHasAnEdge()
{
    QFETCH(const QString, name);
    ShownBoard board;
    auto *const tip = tipOf(*board.find<QWidget>(qPrintable(name)));
    QVERIFY(tip);
    const QImage image = tip->grab().toImage();
    const QColor edge = image.pixelColor(0, 0);
    // To be seen on the white board.
    QVERIFY(Contrast::ratio(edge, Qt::white) >= 3);
    const QRect rect = image.rect();
    for (const QPoint &place :
         {QPoint(0, rect.center().y()), QPoint(rect.right(), rect.center().y()),
          QPoint(rect.center().x(), 0), QPoint(rect.center().x(), rect.bottom()),
          rect.bottomRight()})
        QCOMPARE(image.pixelColor(place), edge);
    QCOMPARE(image.pixelColor(4, 4), QColor(0xf2, 0xf2, 0xf2));
    // Around its text.
    QVERIFY(Contrast::in(*tip, rect.adjusted(2, 2, -2, -2)) >= Contrast::enough);
}

void TestToolTips::aToolTipStaysOnTheScreen()
{
    ShownBoard board;
    const QRect screen = board.window.screen()->geometry();
    auto *const save = board.find<QWidget>("GuardarComo");
    board.window.move(screen.right() - onScreen(*save).right() + board.window.x(), 0);
    QVERIFY(screen.contains(onScreen(*tipOf(*save))));
}

void TestToolTips::aPanelsShapeSaysWhereItStands_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("beside");
    QTest::newRow("upright") << QSize(100, 200) << true;
    QTest::newRow("of equal sides") << QSize(100, 100) << true;
    QTest::newRow("lying") << QSize(200, 100) << false;
}

void TestToolTips::aPanelsShapeSaysWhereItStands()
{
    QFETCH(const QSize, size);
    QFETCH(const bool, beside);
    QWidget window;
    window.resize(600, 300);
    QWidget panel(&window);
    panel.setGeometry({{50, 50}, size});
    QWidget tool(&panel);
    tool.setGeometry(10, 40, 20, 20);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    showToolTip(tool, u"Lápiz"_s);

    QVERIFY(shownTip());
    const QRect tip = onScreen(*shownTip());
    if (beside) {
        QVERIFY(tip.left() > onScreen(panel).right());
        QVERIFY(std::abs(tip.center().y() - onScreen(tool).center().y()) <= 1);
    } else {
        QVERIFY(tip.top() > onScreen(panel).bottom());
        QCOMPARE(tip.left(), onScreen(tool).left());
    }
}

PLUMARA_TEST(TestToolTips)
#include "tst_tooltips.moc"
