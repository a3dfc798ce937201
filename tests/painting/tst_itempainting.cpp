// How an item is painted where no view of the toolkit's paints it.

#include "painting/itempainting.h"

#include "items/arrowlineitem.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"

#include <QCoreApplication>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QPicture>
#include <QStyleOptionGraphicsItem>
#include <QTest>
#include <QWidget>

#include <algorithm>

class TestItemPainting : public QObject
{
    Q_OBJECT

private slots:
    void anItemIsToldHowItIs();
    void anItemIsToldWhereItIs();
    void anItemIsPaintedWhereTheViewHasIt();
    void whatPaintedBeforePaintsOnAsBefore();
    void aStrokeIsPaintedWithItsPenAndItsBrush();
    void ofAFarArrowWhatIsNearIsPainted_data();
    void ofAFarArrowWhatIsNearIsPainted();
    void anArrowThatIsNowhereNearIsNotPainted();
};

namespace {

constexpr QSize side(100, 100);
constexpr QRect all(QPoint(), side);

/// What an item was told when it painted itself.
class Probe : public QGraphicsRectItem
{
public:
    using QGraphicsRectItem::QGraphicsRectItem;

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *told, QWidget *on) override
    {
        option = *told;
        transform = painter->worldTransform();
        opacity = painter->opacity();
        viewport = on;
        painter->setPen(Qt::green);
        painter->translate(3, 3);
    }

    QStyleOptionGraphicsItem option;
    QTransform transform;
    qreal opacity = 0;
    const QWidget *viewport = nullptr;
};

void paint(QGraphicsItem &item, const QTransform &toView = {}, QWidget *viewport = nullptr)
{
    QImage image(side, QImage::Format_RGB32);
    QPainter painter(&image);
    paintAsViewed(painter, item, toView, all, viewport);
}

QImage painted(QGraphicsItem &item)
{
    QImage image(side, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    paintAsViewed(painter, item, {}, all, nullptr);
    painter.end();
    return image;
}

QImage paintedArrow(const QLineF &line)
{
    ArrowLineItem arrow(line.p1(), line.p2());
    arrow.setColor(Qt::red);
    return painted(arrow);
}

/// How far what an arrow draws reaches.
QRect drawnArea(const QLineF &line)
{
    ArrowLineItem arrow(line.p1(), line.p2());
    QPicture picture;
    QPainter painter(&picture);
    paintAsViewed(painter, arrow, {}, all, nullptr);
    painter.end();
    return picture.boundingRect();
}

} // namespace

void TestItemPainting::anItemIsToldHowItIs()
{
    QGraphicsScene scene;
    auto *const item = new Probe(0, 0, 10, 10);
    item->setFlags(QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsFocusable);
    scene.addItem(item);
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&scene, &activation);

    paint(*item);
    QCOMPARE(item->option.state, QStyle::State(QStyle::State_Enabled));
    item->setSelected(true);
    paint(*item);
    QCOMPARE(item->option.state, QStyle::State_Enabled | QStyle::State_Selected);
    item->setSelected(false);
    item->setFocus();
    paint(*item);
    QCOMPARE(item->option.state, QStyle::State_Enabled | QStyle::State_HasFocus);
    item->setEnabled(false);
    paint(*item);
    QCOMPARE(item->option.state, QStyle::State(QStyle::State_None));
}

void TestItemPainting::anItemIsToldWhereItIs()
{
    Probe near(5, 6, 10, 20);
    near.setPen(Qt::NoPen);
    QWidget viewport;
    paint(near, {}, &viewport);
    QCOMPARE(near.option.rect, QRect(5, 6, 10, 20));
    QCOMPARE(near.option.exposedRect, QRectF(5, 6, 10, 20));
    QCOMPARE(near.viewport, &viewport);

    // What does not fit into whole numbers is cut off.
    Probe enormous(-1e15, -10, 2e15, 20);
    enormous.setPen(Qt::NoPen);
    paint(enormous);
    QCOMPARE(enormous.option.rect.top(), -10);
    QCOMPARE(enormous.option.rect.height(), 20);
    QVERIFY(enormous.option.rect.left() < -100'000 && enormous.option.rect.right() > 100'000);
    QCOMPARE(enormous.option.exposedRect, enormous.boundingRect());
}

void TestItemPainting::anItemIsPaintedWhereTheViewHasIt()
{
    QGraphicsScene scene;
    auto *const parent = scene.addRect(0, 0, 1, 1);
    parent->setPos(7, 8);
    parent->setOpacity(0.5);
    auto *const item = new Probe(0, 0, 10, 10, parent);
    item->setScale(2);
    item->setOpacity(0.5);
    const auto toView = QTransform::fromTranslate(-3, -4);
    paint(*item, toView);
    QCOMPARE(item->transform, item->deviceTransform(toView));
    QCOMPARE(item->transform.map(QPointF(1, 1)), QPointF(6, 6));
    QCOMPARE(item->opacity, 0.25);
}

void TestItemPainting::whatPaintedBeforePaintsOnAsBefore()
{
    Probe item(0, 0, 10, 10);
    item.setOpacity(0.5);
    QImage image(side, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(Qt::blue);
    paintAsViewed(painter, item, QTransform::fromScale(2, 2), all, nullptr);
    QCOMPARE(painter.pen().color(), QColor(Qt::blue));
    QCOMPARE(painter.worldTransform(), QTransform());
    QCOMPARE(painter.opacity(), 1.0);
}

void TestItemPainting::aStrokeIsPaintedWithItsPenAndItsBrush()
{
    QGraphicsScene scene;
    auto *const stroke = addStroke(scene, {{20, 20}, {80, 20}, {80, 80}, {20, 80}, {20, 20}});
    stroke->setColor(Qt::red);
    stroke->setWidth(6);
    QImage image = painted(*stroke);
    QCOMPARE(image.pixelColor(50, 20), QColor(Qt::red));
    QCOMPARE(image.pixelColor(50, 50), QColor(Qt::white));
    stroke->setBrush(Qt::blue);
    image = painted(*stroke);
    QCOMPARE(image.pixelColor(50, 20), QColor(Qt::red));
    QCOMPARE(image.pixelColor(50, 50), QColor(Qt::blue));
}

void TestItemPainting::ofAFarArrowWhatIsNearIsPainted_data()
{
    QTest::addColumn<QLineF>("line");
    addRow<QLineF>("that ends far away", {50, 50, 50, 1e8});
    addRow<QLineF>("that begins far away", {50, -1e8, 50, 50});
    addRow<QLineF>("that begins and ends far away", {50, -1e8, 50, 1e8});
    addRow<QLineF>("that is near", {50, -900, 50, 900});
}

void TestItemPainting::ofAFarArrowWhatIsNearIsPainted()
{
    QFETCH(const QLineF, line);
    const auto nearer = [](QPointF end) {
        return QPointF(end.x(), std::clamp(end.y(), -300.0, 300.0));
    };
    const QLineF shorter(nearer(line.p1()), nearer(line.p2()));
    QCOMPARE(paintedArrow(line), paintedArrow(shorter));
    const QRect area = drawnArea(line);
    QVERIFY(area.top() > -10'000 && area.bottom() < 10'000);
}

void TestItemPainting::anArrowThatIsNowhereNearIsNotPainted()
{
    QVERIFY(drawnArea({-1e8, 1e6, 1e8, 1e6}).isEmpty());
    QVERIFY(drawnArea({1e6, 1e6, 1e8, 1e8}).isEmpty());
}

PLUMARA_TEST(TestItemPainting)
#include "tst_itempainting.moc"
