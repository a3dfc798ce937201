// The board window at the scale at which the process was started.

#include "tests/board/shownboard.h"
#include "tests/support/look/sharppictures.h"
#include "tests/support/look/textfit.h"
#include "tests/support/main/registeredtest.h"

using namespace Qt::Literals::StringLiterals;

class TestBoardScaling : public QObject
{
    Q_OBJECT

private slots:
    void theWindowHasItsScale();
    void noTextIsCut();
    void theWidestTimeIsReadWhole();
    void theUnsavedMarkerIsReadWhole();
    void picturesAreSharp();
    void iconsAreSharp();
};

void TestBoardScaling::theWindowHasItsScale()
{
    const ShownBoard board;
    const QByteArray scale = qgetenv("QT_SCALE_FACTOR");
    QCOMPARE(board.window.devicePixelRatioF(), scale.isEmpty() ? 1.0 : scale.toDouble());
}

void TestBoardScaling::noTextIsCut()
{
    const ShownBoard board;
    QCOMPARE(TextFit::cutTexts(board.window).join(u", "), QString());
}

void TestBoardScaling::theWidestTimeIsReadWhole()
{
    const ShownBoard board;
    auto *const clock = board.find<QLabel>("FechaHoraTxt");
    const QLocale mexico(QLocale::Spanish, QLocale::Mexico);
    for (const int hour : {10, 22}) {
        const QDateTime time(QDate(2026, 10, 20), QTime(hour, 40, 50));
        clock->setText(
            TextFit::widest(mexico.toString(time, u"dd/MM/yyyy - hh:mm:ss AP"_s), clock->font()));
        QVERIFY(TextFit::fits(*clock));
    }
}

void TestBoardScaling::theUnsavedMarkerIsReadWhole()
{
    const ShownBoard board;
    auto *const name = board.find<QLabel>("NombreProyectoTxt");
    name->setText(u"Plan de clase.vtrz* (Sin guardar)"_s);
    QVERIFY(TextFit::fits(*name));
}

void TestBoardScaling::picturesAreSharp()
{
    const ShownBoard board;
    QCOMPARE(SharpPictures::blurred(board.window).join(u", "), QString());
}

void TestBoardScaling::iconsAreSharp()
{
    const ShownBoard board;
    QCOMPARE(SharpPictures::coarseIcons(board.window).join(u", "), QString());
}

PLUMARA_TEST(TestBoardScaling)
#include "tst_boardscaling.moc"
