// Tool tips and labels by themselves: at the edges of windows and screens, in dialogs, with frames.

#include "look/elidedlabel.h"
#include "look/tooltips.h"
#include "tests/support/home/homewindow.h"
#include "tests/support/look/contrast.h"
#include "tests/support/main/registeredtest.h"

#include <QFontInfo>
#include <QHelpEvent>
#include <QMainWindow>
#include <QRegularExpression>
#include <QScreen>
#include <QToolTip>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString longText = u"El ciclo del agua y las estaciones del año, segunda parte"_s;

QWidget *shownTip()
{
    const auto windows = QApplication::topLevelWidgets();
    const auto tip = std::ranges::find_if(windows, [](const QWidget *window) {
        return window->inherits("QTipLabel") && window->isVisible();
    });
    return tip == windows.end() ? nullptr : *tip;
}

void restPointer(QWidget &widget)
{
    const QPoint middle = widget.rect().center();
    QHelpEvent help(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
    QCoreApplication::sendEvent(&widget, &help);
}

/// Keeps where the window of a tool tip is when the system is told to show it.
class FirstPlace : public QObject
{
public:
    FirstPlace() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *const window = qobject_cast<QWindow *>(watched);
        if (event->type() == QEvent::Show && window && window->type() == Qt::ToolTip)
            corner = window->position();
        return QObject::eventFilter(watched, event);
    }

    QPoint corner;
};

/// A window with a lying panel that holds a tool.
template <typename Window> struct ToolWindow
{
    explicit ToolWindow(const QPoint &place = {})
    {
        window.move(place);
        window.resize(600, 300);
        panel.setGeometry(50, 50, 300, 40);
        tool.setGeometry(10, 10, 20, 20);
        tool.setToolTip(u"Lápiz"_s);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("The window never appeared.");
    }
    static QRect place(const QWidget &widget)
    {
        return {widget.mapToGlobal(QPoint()), widget.size()};
    }
    /// The offscreen platform gives frames also to windows that have none.
    static QRect tipPlace() { return {shownTip()->pos(), shownTip()->size()}; }

    Window window;
    QWidget panel{&window};
    QWidget tool{&panel};
};

} // namespace

class TestTipsAndLabels : public QObject
{
    Q_OBJECT

private slots:
    void init() { dressToolTips(); }
    void cleanup();

    void aToolTipThatJustFitsIntoTheWindowStandsBelowItsTool();
    void aToolTipIsSeenNowhereElseBefore();
    void aToolTipThatDoesNotFitEndsWithItsPanel();
    void aToolTipStaysAboveTheScreensLowerEdge();
    void aToolTipIsSetInTheProgramsFontAndEdgedQuietly();
    void aDialogsToolTipStandsWhereTheToolkitPutsIt();
    void aWindowStillHearsThatItIsHidden();

    void aTextThatJustFitsShowsNothingMore();
    void theWholeTextIsShownAndNotWhatThePanelSays();
    void aLongTextLeavesTheFrameAsItIs();
};

void TestTipsAndLabels::cleanup()
{
    QToolTip::hideText();
    QTRY_VERIFY(!shownTip());
}

void TestTipsAndLabels::aToolTipThatJustFitsIntoTheWindowStandsBelowItsTool()
{
    ToolWindow<QMainWindow> at;
    restPointer(at.tool);
    const QRect tip = ToolWindow<QMainWindow>::tipPlace();
    QCOMPARE(tip.left(), ToolWindow<QMainWindow>::place(at.tool).left());
    QToolTip::hideText();
    QTRY_VERIFY(!shownTip());

    // Now their right edges are the same.
    const int left = at.tool.mapTo(&at.window, QPoint()).x();
    at.window.resize(left + tip.width(), at.window.height());
    QCOMPARE(at.window.width(), left + tip.width());
    restPointer(at.tool);
    QCOMPARE(ToolWindow<QMainWindow>::tipPlace(), tip);
}

void TestTipsAndLabels::aToolTipIsSeenNowhereElseBefore()
{
    ToolWindow<QMainWindow> at;
    const FirstPlace first;
    restPointer(at.tool);
    QVERIFY(shownTip());
    QCOMPARE(first.corner, shownTip()->windowHandle()->position());
}

void TestTipsAndLabels::aToolTipThatDoesNotFitEndsWithItsPanel()
{
    ToolWindow<QMainWindow> at;
    at.panel.move(280, 50);
    at.tool.move(270, 10);
    at.tool.setToolTip(u"Lápiz de color, y mucho más"_s);
    restPointer(at.tool);
    QCOMPARE(ToolWindow<QMainWindow>::tipPlace().right(),
             ToolWindow<QMainWindow>::place(at.panel).right());
}

void TestTipsAndLabels::aToolTipStaysAboveTheScreensLowerEdge()
{
    ToolWindow<QMainWindow> at;
    const int bottom = at.window.screen()->geometry().bottom();
    at.window.move(0, bottom - 105);
    restPointer(at.tool);
    QCOMPARE(ToolWindow<QMainWindow>::tipPlace().bottom(), bottom);
}

void TestTipsAndLabels::aToolTipIsSetInTheProgramsFontAndEdgedQuietly()
{
    const HomeWindow home; // has the font registered
    const ToolWindow<QMainWindow> at;
    showToolTip(*const_cast<QWidget *>(&at.tool), u"Lápiz"_s);
    QCOMPARE(QFontInfo(shownTip()->font()).family(), u"Montserrat"_s);
    const QColor edge = shownTip()->grab().toImage().pixelColor(0, 0);
    QVERIFY(Contrast::ratio(edge, Qt::white) >= 3);
    QVERIFY(Contrast::ratio(edge, Qt::white) < 7);
}

void TestTipsAndLabels::aDialogsToolTipStandsWhereTheToolkitPutsIt()
{
    QTest::failOnWarning(QRegularExpression(u"^QPainter"_s));
    ToolWindow<QMainWindow> at;
    restPointer(at.tool);
    QVERIFY(shownTip());
    QToolTip::hideText();
    QTRY_VERIFY(!shownTip());

    ToolWindow<QWidget> dialog({300, 200});
    restPointer(dialog.tool);
    QVERIFY(shownTip());
    const QRect tool = ToolWindow<QWidget>::place(dialog.tool);
    constexpr int closeBy = 60; // pixels
    QVERIFY((ToolWindow<QWidget>::tipPlace().topLeft() - tool.center()).manhattanLength()
            < closeBy);
}

void TestTipsAndLabels::aWindowStillHearsThatItIsHidden()
{
    class Hearing : public QWidget
    {
    public:
        int hidden = 0;

    protected:
        void hideEvent(QHideEvent *) override { ++hidden; }
    };
    Hearing window;
    window.show();
    window.hide();
    QCOMPARE(window.hidden, 1);
}

void TestTipsAndLabels::aTextThatJustFitsShowsNothingMore()
{
    ElidedLabel label;
    label.setText(longText);
    label.resize(label.sizeHint());
    label.show();
    restPointer(label);
    QVERIFY(!shownTip());

    label.resize(label.sizeHint().width() - 1, label.height());
    restPointer(label);
    QVERIFY(shownTip());
}

void TestTipsAndLabels::theWholeTextIsShownAndNotWhatThePanelSays()
{
    ToolWindow<QWidget> at;
    ElidedLabel label(&at.panel);
    label.setText(longText);
    label.setGeometry(50, 0, 100, 30);
    label.show();
    at.panel.setToolTip(u"Proyecto"_s);
    restPointer(label);
    QVERIFY(QToolTip::text().contains(longText));
}

void TestTipsAndLabels::aLongTextLeavesTheFrameAsItIs()
{
    const auto shown = [](const QString &text) {
        ElidedLabel label;
        label.setFrameStyle(int(QFrame::Box) | int(QFrame::Plain));
        label.setText(text);
        label.resize(100, 40);
        return label.grab(QRect(0, 0, 100, 3)).toImage();
    };
    QCOMPARE(shown(longText), shown(u"El"_s));
}

PLUMARA_TEST(TestTipsAndLabels)
#include "tst_tipsandlabels.moc"
