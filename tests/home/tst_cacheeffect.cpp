// The effect that stands for clearing the cache.

#include "tests/support/files/boardfiles.h"
#include "tests/support/home/homewindow.h"
#include "tests/support/main/registeredtest.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <QSequentialAnimationGroup>

using namespace Qt::Literals::StringLiterals;

class TestCacheEffect : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<HomeWindow>(); }
    void cleanup() { home.reset(); }

    void theCoversRunTheirCourse_data();
    void theCoversRunTheirCourse();
    void theCoversStartWhereTheyAre();
    void theEffectLastsFourSecondsAndIsKept();
    void theCacheButtonWorksOnce();
    void clearingTheCacheTouchesNoFile();

private:
    QRect cover(const QString &name) const { return home->child(name)->geometry(); }
    QSequentialAnimationGroup *effect() const
    {
        const auto groups =
            home->window.findChildren<QSequentialAnimationGroup *>(Qt::FindDirectChildrenOnly);
        return groups.size() == 1 ? groups.constFirst() : nullptr;
    }

    std::unique_ptr<HomeWindow> home;
};

void TestCacheEffect::theCoversRunTheirCourse_data()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<QRect>("strip");
    QTest::addColumn<QRect>("label");
    const QRect folded(0, 0, 0, 30);
    const QRect spread(0, 0, 175, 30);
    const QRect foldedRight(175, 0, 0, 30);
    const QRect parked(0, 30, 0, 30);
    const QRect growing(0, 0, 131, 30); // three quarters, since it slows down
    const QRect shrinking(131, 0, 44, 30);
    const QRect parking(43, 22, 0, 30);
    QTest::newRow("start") << 0 << folded << folded;
    QTest::newRow("growing") << 125 << growing << growing;
    QTest::newRow("grown") << 250 << spread << spread;
    QTest::newRow("staying") << 1700 << spread << spread;
    QTest::newRow("stayed") << 3250 << spread << spread;
    QTest::newRow("strip shrinking") << 3350 << shrinking << spread;
    QTest::newRow("strip shrunk") << 3450 << foldedRight << spread;
    QTest::newRow("strip parking") << 3550 << parking << spread;
    QTest::newRow("strip parked") << 3650 << parked << spread;
    QTest::newRow("label shrinking") << 3750 << parked << shrinking;
    QTest::newRow("label shrunk") << 3850 << parked << foldedRight;
    QTest::newRow("label parking") << 3950 << parked << parking;
    QTest::newRow("end") << 4050 << parked << parked;
}

void TestCacheEffect::theCoversRunTheirCourse()
{
    QFETCH(const int, time);
    QFETCH(const QRect, strip);
    QFETCH(const QRect, label);
    home->window.NavSettings();
    home->click(u"ClearCacheBtn"_s);
    QVERIFY(effect());
    effect()->pause();
    effect()->setCurrentTime(time);
    QCOMPARE(cover(u"CleanedCacheW"_s), strip);
    QCOMPARE(cover(u"CleanedCacheS"_s), label);
}

void TestCacheEffect::theCoversStartWhereTheyAre()
{
    home->window.NavSettings();
    home->child(u"CleanedCacheW"_s)->setGeometry(7, 3, 9, 20);
    home->child(u"CleanedCacheS"_s)->setGeometry(2, 5, 9, 24);
    home->click(u"ClearCacheBtn"_s);
    QVERIFY(effect());
    effect()->pause();
    effect()->setCurrentTime(0);
    QCOMPARE(cover(u"CleanedCacheW"_s), QRect(7, 3, 0, 20)); // folded at first
    QCOMPARE(cover(u"CleanedCacheS"_s), QRect(2, 5, 0, 24));
    effect()->setCurrentTime(250);
    QCOMPARE(cover(u"CleanedCacheW"_s), QRect(7, 3, 175, 20));
    QCOMPARE(cover(u"CleanedCacheS"_s), QRect(2, 5, 175, 24));
    effect()->setCurrentTime(3450);
    QCOMPARE(cover(u"CleanedCacheW"_s), QRect(182, 3, 0, 20));
    effect()->setCurrentTime(3850);
    QCOMPARE(cover(u"CleanedCacheS"_s), QRect(177, 5, 0, 24));
    effect()->setCurrentTime(4050);
    QCOMPARE(cover(u"CleanedCacheW"_s), QRect(0, 30, 0, 20));
    QCOMPARE(cover(u"CleanedCacheS"_s), QRect(0, 30, 0, 24));
}

void TestCacheEffect::theEffectLastsFourSecondsAndIsKept()
{
    home->window.NavSettings();
    QElapsedTimer clock;
    clock.start();
    home->click(u"ClearCacheBtn"_s);
    QVERIFY(effect());
    QCOMPARE(effect()->duration(), 4050);
    QTRY_COMPARE_WITH_TIMEOUT(cover(u"CleanedCacheS"_s).width(), 175, 3000);
    QVERIFY(clock.elapsed() >= 240);
    QTRY_COMPARE_WITH_TIMEOUT(effect()->state(), QAbstractAnimation::Stopped, 8000);
    QVERIFY(clock.elapsed() >= 4000);
    QCOMPARE(cover(u"CleanedCacheS"_s), QRect(0, 30, 0, 30));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(effect());
}

void TestCacheEffect::theCacheButtonWorksOnce()
{
    home->window.NavSettings();
    auto *const button = home->child<QPushButton>(u"ClearCacheBtn"_s);
    home->click(u"ClearCacheBtn"_s);
    QVERIFY(!button->isEnabled());
    const auto *const first = effect();
    QTest::mouseClick(button, Qt::LeftButton);
    home->click(u"ClearCacheBtn"_s);
    QVERIFY(first);
    QCOMPARE(effect(), first); // null had a second one begun
    effect()->pause();
    effect()->setCurrentTime(effect()->duration());
    QVERIFY(!button->isEnabled());
}

void TestCacheEffect::clearingTheCacheTouchesNoFile()
{
    const QString board = BoardFile::write(home->dataPath() + "/board.vtrz"_L1);
    home->window.NavSettings();
    home->click(u"ClearCacheBtn"_s);
    effect()->pause();
    effect()->setCurrentTime(effect()->duration());
    QVERIFY(QFileInfo::exists(board));
}

PLUMARA_TEST(TestCacheEffect)
#include "tst_cacheeffect.moc"
