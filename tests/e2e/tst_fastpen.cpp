// What reaches a stroke of a hand that is faster than the program.

#include "board/boardwindow.h"
#include "items/freedrawitem.h"
#include "tests/e2e/hand.h"

#include <QGraphicsScene>

using namespace Qt::Literals::StringLiterals;

class TestFastPen : public QObject
{
    Q_OBJECT

private slots:
    void everyPlaceBecomesAPointOfTheStroke();
    void aLongStrokeTakesWhatItCanKeepUpWith();
    void otherGesturesAreNotHeldUp();
};

namespace {

constexpr QPoint start(300, 150);

QPoint placeOf(int move)
{
    return start + QPoint(move % 400, move % 7);
}

const QGraphicsScene &sceneOf(const BoardWindow &board)
{
    return *board.findChild<QGraphicsScene *>();
}

const FreeDrawItem *strokeOn(const BoardWindow &board)
{
    return dynamic_cast<const FreeDrawItem *>(sceneOf(board).items().constFirst());
}

/// The pointer goes through \a moves places from \a first on while the program looks at nothing.
void moveFast(const BoardWindow &board, int first, int moves)
{
    QStringList way;
    for (int i = first; i < first + moves; ++i)
        way += movedTo(board, placeOf(i));
    act(way);
}

void press(const BoardWindow &board)
{
    act(movedTo(board, start) + QStringList{u"mousedown"_s, u"1"_s});
    QTRY_COMPARE(sceneOf(board).items().size(), 1);
}

void release()
{
    act({u"mouseup"_s, u"1"_s});
}

} // namespace

void TestFastPen::everyPlaceBecomesAPointOfTheStroke()
{
    BoardWindow board(nullptr);
    board.show();
    QVERIFY(QTest::qWaitForWindowActive(&board));
    board.setPenMode();
    press(board);

    constexpr int moves = 100;
    moveFast(board, 1, moves);
    release();

    const QString drawing = board.windowTitle();
    QTRY_VERIFY(board.windowTitle() != drawing);
    const auto *const stroke = strokeOn(board);
    QCOMPARE(stroke->path().elementCount(), 1 + moves);
}

void TestFastPen::aLongStrokeTakesWhatItCanKeepUpWith()
{
    BoardWindow board(nullptr);
    board.show();
    QVERIFY(QTest::qWaitForWindowActive(&board));
    board.setPenMode();
    press(board);
    const auto *const stroke = strokeOn(board);
    constexpr int slowly = 600;
    for (int i = 1; i <= slowly; i += 100) {
        moveFast(board, i, 100);
        QTRY_VERIFY(stroke->path().currentPosition() == placeOf(i + 99));
    }
    const int before = stroke->path().elementCount();

    moveFast(board, slowly + 1, 100);

    QTRY_VERIFY(stroke->path().currentPosition() == placeOf(slowly + 100));
    QVERIFY(stroke->path().elementCount() - before < 50);
    release();
}

void TestFastPen::otherGesturesAreNotHeldUp()
{
    const bool usual = QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents);
    BoardWindow board(nullptr);
    board.show();
    QVERIFY(QTest::qWaitForWindowActive(&board));
    board.setPenMode();
    press(board);
    QVERIFY(!QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents));
    const QString drawing = board.windowTitle();
    release();
    QTRY_VERIFY(board.windowTitle() != drawing);
    QCOMPARE(QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents), usual);
}

QTEST_MAIN(TestFastPen)
#include "tst_fastpen.moc"
