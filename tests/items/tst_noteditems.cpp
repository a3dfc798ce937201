// What is noted about the items of a board, and which of them a change has looked at.

#include "items/noteditems.h"

#include "tests/support/items/itemkinds.h"
#include "tests/support/items/strokes.h"
#include "tests/support/main/registeredtest.h"

#include <QGraphicsRectItem>
#include <QTest>

#include <memory>
#include <set>
#include <vector>

using Items = std::vector<const QGraphicsItem *>;

class TestNotedItems : public QObject
{
    Q_OBJECT

private slots:
    void whatIsNotedIsFound();
    void aNewNoteTakesThePlaceOfTheLast();
    void whatIsErasedIsFoundNoMore();
    void everyNoteIsVisited();

    void ofWhatOverlapsOnlyWhatHasChangedIsReviewed_data();
    void ofWhatOverlapsOnlyWhatHasChangedIsReviewed();
    void whatHasMovedIsReviewedOnce();
    void whereNothingNotedExplainsAChangeAllThatLiesThereIsReviewed();
    void whatLooksTheSameExplainsNothing();
    void ofTwoAtOnePlaceBothAreReviewed();
    void whatIsGoneIsNotReviewed();

    void aChangeOfTheWholeSceneConcernsAll();
    void manyChangesConcernAll();

private:
    void note(const QGraphicsItem *item, int number = 0) { noted.insert(item, number); }
    Items reviewed(const QList<QRectF> &changed, bool hasChanged = true);

    QGraphicsScene scene{0, 0, 1000, 1000};
    NotedItems<int> noted;

private slots:
    void cleanup()
    {
        noted.clear();
        scene.clear();
    }
};

/// Which items are reviewed when the scene tells that it has \a changed there.
Items TestNotedItems::reviewed(const QList<QRectF> &changed, bool hasChanged)
{
    Items items;
    noted.reviewChanged(scene, changed, [&](const QGraphicsItem *item) {
        items.push_back(item);
        if (hasChanged)
            noted.insert(item, 0);
        return hasChanged;
    });
    return items;
}

void TestNotedItems::whatIsNotedIsFound()
{
    const auto *const one = addStroke(scene, {{1, 1}, {9, 9}});
    const auto *const other = addStroke(scene, {{1, 1}, {9, 9}});
    QVERIFY(!noted.find(one));
    note(one, 7);
    note(other, 8);
    QCOMPARE(*noted.find(one), 7);
    QCOMPARE(*noted.find(other), 8);
    QCOMPARE(noted.size(), size_t{2});
}

void TestNotedItems::aNewNoteTakesThePlaceOfTheLast()
{
    auto *const stroke = addStroke(scene, {{1, 1}, {9, 9}});
    note(stroke, 7);
    const QRectF before = stroke->sceneBoundingRect();
    stroke->setPos(100, 100);
    note(stroke, 8);
    QCOMPARE(*noted.find(stroke), 8);
    QCOMPARE(noted.size(), size_t{1});
    QCOMPARE(reviewed({before}), Items());
    QCOMPARE(reviewed({stroke->sceneBoundingRect()}), Items{stroke});
}

void TestNotedItems::whatIsErasedIsFoundNoMore()
{
    const auto *const one = addStroke(scene, {{1, 1}, {9, 9}});
    const auto *const other = addStroke(scene, {{1, 1}, {9, 9}});
    note(one, 7);
    note(other, 8);
    noted.erase(one);
    noted.erase(one);
    QVERIFY(!noted.find(one));
    QCOMPARE(*noted.find(other), 8);
    QCOMPARE(reviewed({other->sceneBoundingRect()}), Items{other});
    noted.clear();
    QCOMPARE(noted.size(), size_t{0});
    QVERIFY(!noted.find(other));
}

void TestNotedItems::everyNoteIsVisited()
{
    std::set<std::pair<const QGraphicsItem *, int>> expected;
    for (int i = 0; i < 3; ++i) {
        const auto *const stroke = addStroke(scene, {{1.0 * i, 1}, {9, 9}});
        note(stroke, i);
        expected.insert({stroke, i});
    }
    std::set<std::pair<const QGraphicsItem *, int>> visited;
    noted.visit([&](const QGraphicsItem *item, int number) { visited.insert({item, number}); });
    QVERIFY(visited == expected);
}

void TestNotedItems::ofWhatOverlapsOnlyWhatHasChangedIsReviewed_data()
{
    addItemKinds();
}

void TestNotedItems::ofWhatOverlapsOnlyWhatHasChangedIsReviewed()
{
    QFETCH(const ItemMaker, make);
    auto *const item = make();
    scene.addItem(item);
    // Larger than the other, and around it.
    note(addStroke(scene, {{-200, -200}, {500, 500}}));
    note(item);
    QCOMPARE(reviewed({item->sceneBoundingRect()}), Items{item});
}

void TestNotedItems::whatHasMovedIsReviewedOnce()
{
    auto *const stroke = addStroke(scene, {{100, 100}, {200, 200}});
    note(addStroke(scene, {{0, 0}, {900, 900}}));
    note(stroke);
    const QRectF before = stroke->sceneBoundingRect();
    stroke->setPos(300, 0);
    // The scene tells of both places, and may tell so twice.
    const QRectF after = stroke->sceneBoundingRect();
    QCOMPARE(reviewed({before, after, before, after}), Items{stroke});
}

void TestNotedItems::whereNothingNotedExplainsAChangeAllThatLiesThereIsReviewed()
{
    const auto *const around = addStroke(scene, {{0, 0}, {900, 900}});
    note(around);
    note(addStroke(scene, {{700, 0}, {800, 100}}));
    const auto *const added = addStroke(scene, {{100, 100}, {200, 200}});
    const auto items = reviewed({added->sceneBoundingRect()});
    QCOMPARE(std::set(items.begin(), items.end()),
             (std::set<const QGraphicsItem *>{added, around}));
    QCOMPARE(items.size(), size_t{2});
}

void TestNotedItems::whatLooksTheSameExplainsNothing()
{
    const auto *const stroke = addStroke(scene, {{100, 100}, {200, 200}});
    note(stroke);
    const auto *const around = addStroke(scene, {{0, 0}, {900, 900}});
    note(around);
    const auto items = reviewed({stroke->sceneBoundingRect()}, false);
    QCOMPARE(items, (Items{stroke, around}));
}

void TestNotedItems::ofTwoAtOnePlaceBothAreReviewed()
{
    const auto *const one = addStroke(scene, {{100, 100}, {200, 200}});
    const auto *const other = addStroke(scene, {{100, 100}, {200, 200}});
    note(one);
    note(other);
    const auto items = reviewed({one->sceneBoundingRect()});
    QCOMPARE(std::set(items.begin(), items.end()), (std::set<const QGraphicsItem *>{one, other}));
    QCOMPARE(items.size(), size_t{2});
}

void TestNotedItems::whatIsGoneIsNotReviewed()
{
    auto *const deleted = addStroke(scene, {{100, 100}, {200, 200}});
    const auto removed = std::unique_ptr<QGraphicsItem>(addStroke(scene, {{300, 100}, {400, 200}}));
    note(deleted);
    note(removed.get());
    const QList<QRectF> places{deleted->sceneBoundingRect(), removed->sceneBoundingRect()};
    delete deleted;
    scene.removeItem(removed.get());
    QCOMPARE(reviewed(places), Items());
    QCOMPARE(*noted.find(removed.get()), 0);
}

void TestNotedItems::aChangeOfTheWholeSceneConcernsAll()
{
    QVERIFY(!NotedItems<int>::concernsAll(scene, {}));
    QVERIFY(!NotedItems<int>::concernsAll(scene, {{1, 0, 1000, 1000}, {0, 0, 999, 1000}}));
    QVERIFY(NotedItems<int>::concernsAll(scene, {{5, 5, 5, 5}, {0, 0, 1000, 1000}}));
    QVERIFY(NotedItems<int>::concernsAll(scene, {{-1, -1, 1002, 1002}}));
}

void TestNotedItems::manyChangesConcernAll()
{
    QVERIFY(!NotedItems<int>::concernsAll(scene, QList<QRectF>(10, QRectF(5, 5, 5, 5))));
    QVERIFY(NotedItems<int>::concernsAll(scene, QList<QRectF>(1000, QRectF(5, 5, 5, 5))));
}

PLUMARA_TEST(TestNotedItems)
#include "tst_noteditems.moc"
