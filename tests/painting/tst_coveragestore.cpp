// What is kept of strokes is found again, goes with them, and knows its limit.

#include "painting/coveragestore.h"

#include "items/freedrawitem.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsScene>
#include <QTest>

#include <memory>

class TestCoverageStore : public QObject
{
    Q_OBJECT

private slots:
    void whatIsKeptIsFoundByItsLook();
    void whatIsNoLongerOnTheBoardGoes();
    void theLimitIsKept();
    void theRoomForALargeStrokeIsNotKept();
    void clearingLetsGoOfAll();

private:
    static constexpr qsizetype plenty = 1'000'000; // bytes
};

void TestCoverageStore::whatIsKeptIsFoundByItsLook()
{
    QGraphicsScene scene;
    auto *const stroke = addStroke(scene, {{10, 10}, {50, 30}});
    CoverageStore store;
    QVERIFY(!store.find(*stroke, {}));
    const auto *const made = store.make(*stroke, {}, true, plenty);
    QVERIFY(made);
    QCOMPARE(store.find(*stroke, {}), made);
    QCOMPARE(store.find(*stroke, QTransform::fromTranslate(-7, 20)), made);
    QVERIFY(!store.find(*stroke, QTransform::fromTranslate(0.5, 0)));
    stroke->setPos(3, 4);
    QCOMPARE(store.find(*stroke, {}), made);

    auto *const twin = addStroke(scene, {{10, 10}, {50, 30}});
    QCOMPARE(store.find(*twin, {}), made);
    twin->setColor(Qt::red);
    QVERIFY(!store.find(*twin, {}));
    QCOMPARE(store.size(), 1);
}

void TestCoverageStore::whatIsNoLongerOnTheBoardGoes()
{
    QGraphicsScene scene;
    const auto *const stays = addStroke(scene, {{10, 10}, {50, 30}});
    const std::unique_ptr<FreeDrawItem> goes(addStroke(scene, {{10, 10}, {50, 31}}));
    CoverageStore store;
    QVERIFY(store.make(*stays, {}, true, plenty));
    const qsizetype one = store.bytes();
    QVERIFY(store.make(*goes, {}, true, plenty));
    const qsizetype both = store.bytes();
    QVERIFY(both > one);

    store.dropUnused(scene);
    QCOMPARE(store.bytes(), both);
    scene.removeItem(goes.get());
    store.dropUnused(scene);
    QVERIFY(store.find(*stays, {}));
    QVERIFY(!store.find(*goes, {}));
    QCOMPARE(store.size(), 1);
    QVERIFY(store.bytes() < both);
}

void TestCoverageStore::theLimitIsKept()
{
    QGraphicsScene scene;
    const auto *const stroke = addStroke(scene, {{10, 10}, {50, 30}});
    CoverageStore measured;
    QVERIFY(measured.make(*stroke, {}, true, plenty));
    const qsizetype needed = measured.bytes();

    CoverageStore store;
    QVERIFY(!store.make(*stroke, {}, true, 0));
    QVERIFY(store.isEmpty());
    QCOMPARE(store.bytes(), 0);
    QVERIFY(store.make(*stroke, {}, true, needed));
    QVERIFY(!store.isEmpty());
    // Not one more, of which nothing is even worked out.
    const auto *const other = addStroke(scene, {{10, 10}, {50, 31}});
    QVERIFY(!store.make(*other, {}, true, needed / 2));
    QCOMPARE(store.bytes(), needed);
    // Nor one that is too long.
    const auto *const endless = addStroke(scene, {{10, 10}, {1e6, 31}});
    QVERIFY(!store.make(*endless, {}, true, plenty));
    QCOMPARE(store.bytes(), needed);
}

void TestCoverageStore::theRoomForALargeStrokeIsNotKept()
{
    QGraphicsScene scene;
    auto *const blot = addStroke(scene, {{0, 0}, {1, 1}});
    blot->setWidth(2000);
    CoverageStore store;
    QVERIFY(store.make(*blot, {}, true, 100 * plenty));
    // A byte for each of the 3 million pixels that it covers; it was drawn on 64 MB.
    QVERIFY(store.bytes() > 3 * plenty);
    QVERIFY(store.bytes() < 8 * plenty);
}

void TestCoverageStore::clearingLetsGoOfAll()
{
    QGraphicsScene scene;
    const auto *const stroke = addStroke(scene, {{10, 10}, {50, 30}});
    CoverageStore store;
    QVERIFY(store.make(*stroke, {}, true, plenty));
    store.clear();
    QVERIFY(store.isEmpty());
    QCOMPARE(store.bytes(), 0);
    QVERIFY(!store.find(*stroke, {}));
}

PLUMARA_TEST(TestCoverageStore)
#include "tst_coveragestore.moc"
