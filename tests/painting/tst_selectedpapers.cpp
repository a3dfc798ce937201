// The frames around the selected notes, pixel by pixel.

#include "painting/selectedpapers.h"

#include "items/stickynoteitem.h"
#include "tests/support/items/itemkinds.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QTest>

#include <limits>

class TestSelectedPapers : public QObject
{
    Q_OBJECT

private slots:
    void theDashesOfASideBeginAtItsStart_data();
    void theDashesOfASideBeginAtItsStart();
    void nothingIsFilled();
    void onlySelectedNotesHaveOne();
    void whatIsOutOfSightIsPassedOver_data();
    void whatIsOutOfSightIsPassedOver();
};

namespace {

constexpr QRgb untouched = 0xffc0ffee;

/// A view of some notes, and what is drawn around those that are selected.
class View
{
public:
    View()
    {
        view.setFrameShape(QFrame::NoFrame);
        view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view.setSceneRect(0, 0, 200, 200);
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.resize(200, 200);
        view.show();
    }

    /// A selected note of \a side pixels.
    StickyNoteItem *addNote(QPointF place, qreal side)
    {
        auto *const note = new StickyNoteItem;
        scene.addItem(note);
        note->setPos(place);
        note->setScale(side / note->boundingRect().width());
        note->setSelected(true);
        return note;
    }

    QImage drawn(const QBrush &brush = Qt::NoBrush) const
    {
        QImage image(view.size(), QImage::Format_RGB32);
        image.fill(untouched);
        QPainter painter(&image);
        painter.setBrush(brush);
        drawSelectedPapers(painter, view);
        return image;
    }

    QGraphicsScene scene;

private:
    QGraphicsView view{&scene};
};

} // namespace

void TestSelectedPapers::theDashesOfASideBeginAtItsStart_data()
{
    QTest::addColumn<int>("side");
    for (const int side : {5, 24, 25, 26, 28, 32, 33, 100})
        QTest::addRow("of %d pixels", side) << side;
}

void TestSelectedPapers::theDashesOfASideBeginAtItsStart()
{
    QFETCH(const int, side);
    constexpr int dash = 4; // pixels, and the gap after it
    constexpr QPoint corner(20, 30);
    View view;
    view.addNote(corner, side);
    const QImage image = view.drawn();
    const int last = side - 1;
    const auto isBlack = [&](int x, int y) {
        return image.pixelColor(corner + QPoint(x, y)) == QColor(Qt::black);
    };
    const auto isDash = [](int place) { return place / dash % 2 == 0; };
    for (int place = 1; place < last; ++place) {
        QCOMPARE(isBlack(place, 0), isDash(place));
        QCOMPARE(isBlack(place, last), isDash(place));
        QCOMPARE(isBlack(0, place), isDash(place));
        QCOMPARE(isBlack(last, place), isDash(place));
    }
    // In the corners two sides meet.
    QVERIFY(isBlack(0, 0));
    QVERIFY(isBlack(last, 0));
    QVERIFY(isBlack(0, last));
    // No side begins in the last one, nor does a dash that would have a pixel of its own there.
    QCOMPARE(isBlack(last, last), isDash(last) && last % (2 * dash) != 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRect paper(corner, QSize(side, side));
            const bool isFrame =
                paper.contains(x, y) && !paper.adjusted(1, 1, -1, -1).contains(x, y);
            const QColor color = image.pixelColor(x, y);
            QCOMPARE(color == QColor(Qt::black) || color == QColor(Qt::white), isFrame);
        }
    }
}

void TestSelectedPapers::nothingIsFilled()
{
    View view;
    view.addNote({20, 30}, 50);
    QCOMPARE(view.drawn(Qt::red), view.drawn());
    QCOMPARE(view.drawn(Qt::red).pixel(40, 50), untouched);
}

void TestSelectedPapers::onlySelectedNotesHaveOne()
{
    View view;
    view.addNote({20, 30}, 50)->setSelected(false);
    view.scene.addItem(makeArrow());
    view.scene.items().constFirst()->setSelected(true);
    QImage empty = view.drawn();
    empty.fill(untouched);
    QCOMPARE(view.drawn(), empty);
}

void TestSelectedPapers::whatIsOutOfSightIsPassedOver_data()
{
    QTest::addColumn<QPointF>("place");
    constexpr qreal most = std::numeric_limits<double>::max();
    QTest::newRow("beside the view") << QPointF(300, 30);
    QTest::newRow("beyond whole numbers") << QPointF(1e12, -1e12);
    QTest::newRow("where numbers end") << QPointF(-most, most);
}

void TestSelectedPapers::whatIsOutOfSightIsPassedOver()
{
    QFETCH(const QPointF, place);
    View view;
    view.addNote(place, 50);
    QImage empty = view.drawn();
    empty.fill(untouched);
    QCOMPARE(view.drawn(), empty);
}

PLUMARA_TEST(TestSelectedPapers)
#include "tst_selectedpapers.moc"
