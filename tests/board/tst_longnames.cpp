// A board's name that is too long for its label: what is painted, and what the whole of it is shown by.

#include "tests/board/shownboard.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/look/ink.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/scratchhome.h"

#include <QHelpEvent>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::Literals::StringLiterals;

class TestLongNames : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void theLabelsTextStaysWhole();
    void aNameThatFitsIsPaintedAsEver();
    void theEndOfALongNameIsSeen();
    void theMarkerAfterALongNameIsSeenWhole();
    void theMiddleOfALongNameIsCut();
    void theWholeNameShowsWhereThePointerRests();
    void aNameThatFitsShowsNothingMore();
    void markupInALongNameIsShownAsItWasTyped();
};

namespace {

const QString longName = u"El ciclo del agua y las estaciones del año, segunda parte.vtrz"_s;
const QString marker = u"* (Sin guardar)"_s;

QImage painted(const ShownBoard &board)
{
    return board.find<QLabel>("NombreProyectoTxt")->grab().toImage();
}

/// What an ordinary label in the place of the board's name paints of \a text.
QImage paintedPlainly(const ShownBoard &board, const QString &text)
{
    const auto *const label = board.find<QLabel>("NombreProyectoTxt");
    QLabel twin(label->parentWidget());
    twin.setTextFormat(Qt::PlainText);
    twin.setStyleSheet(label->styleSheet());
    twin.setText(text);
    twin.resize(label->size());
    return twin.grab().toImage();
}

void restPointer(const ShownBoard &board)
{
    auto *const label = board.find<QLabel>("NombreProyectoTxt");
    const QPoint middle = label->rect().center();
    QHelpEvent help(QEvent::ToolTip, middle, label->mapToGlobal(middle));
    QCoreApplication::sendEvent(label, &help);
}

} // namespace

void TestLongNames::cleanup()
{
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestLongNames::theLabelsTextStaysWhole()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(longName)));
    QCOMPARE(board.name(), longName);
    board.window.setUnsaved(true);
    painted(board);
    QCOMPARE(board.name(), longName + marker);
}

void TestLongNames::aNameThatFitsIsPaintedAsEver()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(u"plan.vtrz"_s)));
    QCOMPARE(painted(board), paintedPlainly(board, u"plan.vtrz"_s));
    board.window.setUnsaved(true);
    QCOMPARE(painted(board), paintedPlainly(board, u"plan.vtrz"_s + marker));
}

void TestLongNames::theEndOfALongNameIsSeen()
{
    ShownBoard board;
    board.window.showBoardName(longName);
    const QImage one = painted(board);
    QVERIFY(inkOf(one).right() < one.width() - 1);
    board.window.showBoardName(longName.chopped(9) + u"quinta.vtrz"_s);
    QVERIFY(painted(board) != one);
}

void TestLongNames::theMarkerAfterALongNameIsSeenWhole()
{
    const ScratchHome home;
    ShownBoard board;
    board.window.loadBoard(BoardFile::write(home.path(longName)));
    board.window.setUnsaved(true);

    const auto *const label = board.find<QLabel>("NombreProyectoTxt");
    const int room = label->width() - label->fontMetrics().horizontalAdvance(marker);
    const QString cut = label->fontMetrics().elidedText(longName, Qt::ElideMiddle, room);
    QVERIFY(cut.contains(u'…'));
    const QImage shown = painted(board);
    QCOMPARE(shown, paintedPlainly(board, cut + marker));
    QVERIFY(inkOf(shown).right() < shown.width() - 1);
}

void TestLongNames::theMiddleOfALongNameIsCut()
{
    ShownBoard board;
    board.window.showBoardName(longName);
    const QImage one = painted(board);
    // Its beginning is that of the name, as far as a third of the label.
    const QImage whole = paintedPlainly(board, longName);
    const QRect third(0, 0, one.width() / 3, one.height());
    QCOMPARE(one.copy(third), whole.copy(third));
    // A letter in its middle makes no difference.
    QString other = longName;
    other[other.size() / 2] = u'Q';
    board.window.showBoardName(other);
    QCOMPARE(painted(board), one);
}

void TestLongNames::theWholeNameShowsWhereThePointerRests()
{
    ShownBoard board;
    board.window.showBoardName(longName);
    restPointer(board);
    QVERIFY(QToolTip::isVisible());
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText(), longName);
}

void TestLongNames::aNameThatFitsShowsNothingMore()
{
    ShownBoard board;
    board.window.showBoardName(u"plan.vtrz"_s);
    restPointer(board);
    QVERIFY(!QToolTip::isVisible());
}

void TestLongNames::markupInALongNameIsShownAsItWasTyped()
{
    ShownBoard board;
    const QString name = u"<b>El ciclo</b> & <i>las estaciones del año</i>.vtrz"_s;
    board.window.showBoardName(name);
    restPointer(board);
    QVERIFY(Qt::mightBeRichText(QToolTip::text()));
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    QCOMPARE(shown.toPlainText(), name);
}

PLUMARA_TEST(TestLongNames)
#include "tst_longnames.moc"
