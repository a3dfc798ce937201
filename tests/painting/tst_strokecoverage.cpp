// The kept coverage of a stroke looks, laid down, as the stroke painted.
#include "painting/strokecoverage.h"
#include "tests/support/items/roundpen.h"
#include "tests/support/look/sharppictures.h"
#include "tests/support/main/registeredtest.h"

#include <QPainter>
#include <QTest>

#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize size(160, 120);

QPainterPath scribble()
{
    QPainterPath path({20.3, 30.7});
    path.lineTo(90.25, 40.5);
    path.lineTo(30.75, 80.125);
    path.lineTo(95, 85);
    path.lineTo(20, 50);
    path.moveTo(60, 10);
    path.lineTo(60, 100);
    return path;
}

/// A ground on which a difference of blending would show.
QImage ground()
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb((3 * x) % 256, (5 * y) % 256, (x * y) % 256));
    }
    return image;
}

QImage painted(const QPainterPath &path, const QPen &pen, const QTransform &transform)
{
    QImage image = ground();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setWorldTransform(transform);
    painter.setPen(pen);
    painter.drawPath(path);
    return image;
}

} // namespace

class TestStrokeCoverage : public QObject
{
    Q_OBJECT

    StrokeCoverage::Sheet sheet;

private slots:
    void looksAsPainted_data();
    void looksAsPainted();
    void isLaidDownAWholeNumberOfPixelsBeside();
    void onlyTheClipIsTouched();
    void holdsForItsOwnStrokeOnly();
    void anEmptyPathCoversNothing();
    void whatIsTooLargeIsNotFeasible();
    void strokesThatLookAlikeShareTheirHash();
    void whatItTakesIsCounted();
    void nothingIsKeptInReserve();
};

void TestStrokeCoverage::looksAsPainted_data()
{
    QTest::addColumn<QPen>("pen");
    QTest::addColumn<QTransform>("transform");
    const QTransform fraction = QTransform::fromTranslate(3.4, 7.6);
    const QTransform fine = QTransform::fromScale(1.25, 1.25) * fraction;
    const QTransform small = QTransform::fromScale(0.625, 0.625);
    QTest::newRow("as drawn") << roundPen(Qt::black, 2) << QTransform();
    QTest::newRow("between pixels") << roundPen(Qt::black, 2) << fraction;
    QTest::newRow("wide and coloured") << roundPen(QColor(0x30, 0x90, 0xd0), 9) << fraction;
    QTest::newRow("translucent") << roundPen(QColor(200, 30, 30, 100), 6) << fraction;
    QPen mitred = roundPen(Qt::black, 9);
    mitred.setJoinStyle(Qt::MiterJoin);
    mitred.setMiterLimit(12);
    QTest::newRow("with pointed corners") << mitred << fraction;
    QTest::newRow("a hairline") << roundPen(Qt::black, 0) << fraction;
    QTest::newRow("of no colour") << roundPen(QColor(), 3) << QTransform();
    QTest::newRow("larger") << roundPen(Qt::darkGreen, 3) << fine;
    QTest::newRow("smaller") << roundPen(Qt::darkGreen, 3) << small;
}

void TestStrokeCoverage::looksAsPainted()
{
    QFETCH(const QPen, pen);
    QFETCH(const QTransform, transform);
    const StrokeCoverage coverage(scribble(), pen, transform, true, sheet);
    QImage image = ground();

    coverage.blend(image, StrokeCoverage::split(transform).second, image.rect());

    constexpr int rounding = 1;
    QVERIFY(SharpPictures::difference(ground(), image) > 50);
    QVERIFY(SharpPictures::difference(painted(scribble(), pen, transform), image) <= rounding);
}

void TestStrokeCoverage::isLaidDownAWholeNumberOfPixelsBeside()
{
    const QPen pen = roundPen(Qt::black, 2);
    const QTransform transform = QTransform::fromTranslate(0.5, 0.25);
    const QTransform beside = QTransform::fromTranslate(-29.5, 30.25);
    const StrokeCoverage coverage(scribble(), pen, transform, true, sheet);
    QVERIFY(coverage.holdsFor(scribble(), pen, beside));
    QImage image = ground();

    coverage.blend(image, StrokeCoverage::split(beside).second, image.rect());

    QVERIFY(SharpPictures::difference(painted(scribble(), pen, beside), image) <= 1);
}

void TestStrokeCoverage::onlyTheClipIsTouched()
{
    const StrokeCoverage coverage(scribble(), roundPen(Qt::black, 4), {}, true, sheet);
    const QRect clip(40, 35, 30, 20);
    QImage image = ground();

    coverage.blend(image, {}, clip);

    const QImage whole = painted(scribble(), roundPen(Qt::black, 4), {});
    QVERIFY(SharpPictures::difference(whole.copy(clip), image.copy(clip)) <= 1);
    QImage rest = image;
    QPainter(&rest).drawImage(clip.topLeft(), ground(), clip);
    QCOMPARE(rest, ground());
}

void TestStrokeCoverage::holdsForItsOwnStrokeOnly()
{
    const QPen pen = roundPen(Qt::black, 2);
    const StrokeCoverage coverage(scribble(), pen, {}, true, sheet);
    QPainterPath longer = scribble();
    longer.lineTo(1, 1);
    QVERIFY(coverage.holdsFor(scribble(), pen, {}));
    QVERIFY(!coverage.holdsFor(longer, pen, {}));
    QVERIFY(!coverage.holdsFor(scribble(), roundPen(Qt::red, 2), {}));
    QVERIFY(!coverage.holdsFor(scribble(), pen, QTransform::fromTranslate(0.5, 0)));
    QVERIFY(!coverage.holdsFor(scribble(), pen, QTransform::fromScale(2, 2)));
}

void TestStrokeCoverage::anEmptyPathCoversNothing()
{
    const StrokeCoverage coverage({}, roundPen(Qt::black, 2), {}, true, sheet);
    QImage image = ground();
    coverage.blend(image, {}, image.rect());
    QCOMPARE(image, ground());
}

void TestStrokeCoverage::whatIsTooLargeIsNotFeasible()
{
    const auto isFeasible = [](QPointF to, qreal width) {
        QPainterPath path({0, 0});
        path.lineTo(to);
        return StrokeCoverage::isFeasible(path, roundPen(Qt::black, width), {});
    };
    QVERIFY(isFeasible({3840, 2160}, 2));
    QVERIFY(!isFeasible({20000, 10}, 2));
    QVERIFY(!isFeasible({10, 20000}, 2));
    QVERIFY(!isFeasible({16000, 16000}, 2));
    QVERIFY(!isFeasible({1e7, 1e7}, 2));
    QVERIFY(!isFeasible({1, 1}, 4000));
}

void TestStrokeCoverage::strokesThatLookAlikeShareTheirHash()
{
    const QPen pen = roundPen(Qt::black, 2);
    QPainterPath copy = scribble();
    copy.setElementPositionAt(0, copy.elementAt(0).x, copy.elementAt(0).y); // unshared
    QCOMPARE(StrokeCoverage::hash(copy, pen), StrokeCoverage::hash(scribble(), pen));
    copy.lineTo(1, 1);
    QVERIFY(StrokeCoverage::hash(copy, pen) != StrokeCoverage::hash(scribble(), pen));
}

void TestStrokeCoverage::whatItTakesIsCounted()
{
    // A comb covers many short pieces of rows, and a scribble on one spot has many points.
    QPainterPath comb({0, 0});
    for (int i = 0; i < 40; ++i) {
        comb.moveTo(4 * i + 0.5, 0);
        comb.lineTo(4 * i + 0.5, 100);
    }
    constexpr qsizetype perPiece =
        3 * sizeof(qint32) + 1; // where it is, and how a pixel is covered
    const StrokeCoverage combed(comb, roundPen(Qt::black, 1), {}, true, sheet);
    QVERIFY(combed.bytes() > 40 * 100 * perPiece);
    QVERIFY(combed.bytes() < 10 * 40 * 100 * perPiece);

    QPainterPath scribbled({5, 5});
    constexpr int points = 10'000;
    for (int i = 0; i < points; ++i)
        scribbled.lineTo(5 + i % 2, 5);
    const StrokeCoverage spot(scribbled, roundPen(Qt::black, 1), {}, true, sheet);
    QVERIFY(spot.bytes() > points * qsizetype(sizeof(QPainterPath::Element)));
    QVERIFY(spot.bytes() < 2 * points * qsizetype(sizeof(QPainterPath::Element)));
}

void TestStrokeCoverage::nothingIsKeptInReserve()
{
    const StrokeCoverage coverage(scribble(), roundPen(Qt::black, 2), {}, true, sheet);
    // A copy has no more room than it needs.
    const std::vector copies(1, coverage);
    QCOMPARE(coverage.bytes(), copies.front().bytes());
}

PLUMARA_TEST(TestStrokeCoverage)
#include "tst_strokecoverage.moc"
