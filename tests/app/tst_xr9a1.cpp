// The guard that lets only one instance of the program run.

#include "app/processlock.h"
#include "app/xr9a1.h"
#include "tests/app/sessionfolder.h"
#include "tests/support/main/registeredtest.h"

#include <QDir>
#include <QTest>

#include <optional>

#ifdef Q_OS_UNIX
#include "tests/app/passingholder.h"
#include "tests/support/system/limits.h"
#endif

class TestXr9A1 : public QObject
{
    Q_OBJECT

private slots:
    void hasNoSignalsOrSlotsOfItsOwn();
    void theFirstInstanceFindsNobodyRunning();
    void askingAgainDoesNotCountItsOwnSegment();
    void aLaterInstanceFindsTheFirst();
    void anInstanceThatLeavesClearsTheWay();
    void aLaterInstanceThatLeavesDoesNotDisturbTheFirst();
    void theSegmentIsOneByteLong();
    void theSegmentIsGoneWithItsLastHolder();
    void guardsWaitForNobodyToBeAsked();
    void anInstanceThatWasTooLateMayAskAgain();
    void whoeverHasTheSegmentStandsForAnInstance();
#ifdef Q_OS_UNIX
    void oneThatFindsItsPlaceTakenKeepsNoSegment();
    void anInstanceThatLeavesWaitsForItsTurn();
    void whereNothingCanBeMadeOneIsTakenToBeRunning();
#endif
};

void TestXr9A1::hasNoSignalsOrSlotsOfItsOwn()
{
    QCOMPARE(Xr9A1::staticMetaObject.className(), "Xr9A1");
    QCOMPARE(Xr9A1::staticMetaObject.methodCount(), QObject::staticMetaObject.methodCount());
}

void TestXr9A1::theFirstInstanceFindsNobodyRunning()
{
    Xr9A1 first;
    QVERIFY(!first.isRunning());
}

void TestXr9A1::askingAgainDoesNotCountItsOwnSegment()
{
    Xr9A1 first;
    QVERIFY(!first.isRunning());
    QVERIFY(!first.isRunning());
}

void TestXr9A1::aLaterInstanceFindsTheFirst()
{
    Xr9A1 first;
    QVERIFY(!first.isRunning());
    Xr9A1 second;
    QVERIFY(second.isRunning());
}

void TestXr9A1::anInstanceThatLeavesClearsTheWay()
{
    std::optional<Xr9A1> first(std::in_place);
    QVERIFY(!first->isRunning());
    first.reset();
    Xr9A1 second;
    QVERIFY(!second.isRunning());
}

void TestXr9A1::aLaterInstanceThatLeavesDoesNotDisturbTheFirst()
{
    Xr9A1 first;
    QVERIFY(!first.isRunning());
    {
        Xr9A1 second;
        QVERIFY(second.isRunning());
    }
    Xr9A1 third;
    QVERIFY(third.isRunning());
}

void TestXr9A1::theSegmentIsOneByteLong()
{
    const Xr9A1 guard;
    QSharedMemory segment(QStringLiteral("Plumara"));
    QVERIFY(segment.attach());
#ifdef Q_OS_UNIX
    QCOMPARE(segment.size(), 1);
#else
    // Other systems report the size of the pages that they hand out; at least the byte is there.
    QVERIFY(segment.size() >= 1);
#endif
}

void TestXr9A1::theSegmentIsGoneWithItsLastHolder()
{
    std::optional<Xr9A1> guard(std::in_place);
    guard.reset();
    QSharedMemory segment(QStringLiteral("Plumara"));
    QVERIFY(!segment.attach());
    QCOMPARE(segment.error(), QSharedMemory::NotFound);
}

void TestXr9A1::guardsWaitForNobodyToBeAsked()
{
    Xr9A1 first;
    Xr9A1 second;
    Xr9A1 third;
    QVERIFY(third.isRunning());
    QVERIFY(second.isRunning());
    QVERIFY(!first.isRunning());
}

void TestXr9A1::anInstanceThatWasTooLateMayAskAgain()
{
    std::optional<Xr9A1> first(std::in_place);
    Xr9A1 second;
    QVERIFY(second.isRunning());
    first.reset();
    QVERIFY(!second.isRunning());
    Xr9A1 third;
    QVERIFY(third.isRunning());
}

void TestXr9A1::whoeverHasTheSegmentStandsForAnInstance()
{
    QSharedMemory segment(QStringLiteral("Plumara"));
    QVERIFY(segment.create(1));
    Xr9A1 guard;
    QVERIFY(guard.isRunning());
    QVERIFY(segment.detach());
    QVERIFY(!guard.isRunning());
}

#ifdef Q_OS_UNIX
void TestXr9A1::oneThatFindsItsPlaceTakenKeepsNoSegment()
{
    // As an instance has it that came upon another person's segment.
    ProcessLock place(QStringLiteral("place"));
    QVERIFY(place.tryLock());
    Xr9A1 late;
    QVERIFY(late.isRunning());
    QSharedMemory segment(QStringLiteral("Plumara"));
    QVERIFY(!segment.attach());
}

void TestXr9A1::anInstanceThatLeavesWaitsForItsTurn()
{
    std::optional<Xr9A1> guard(std::in_place);
    const PassingHolder other(Xr9A1::turnPurpose());
    guard.reset();
    QVERIFY(other.hasPassed());
}

void TestXr9A1::whereNothingCanBeMadeOneIsTakenToBeRunning()
{
    const ReachableFolder folder;
    const QString path = folder.path(QStringLiteral("tmp"));
    QVERIFY(QDir().mkdir(path));
    QVERIFY(QFile::setPermissions(path, QFile::Permissions::fromInt(0x5555)));
    const Variable variable("TMPDIR", QFile::encodeName(path));
    const OrdinaryUser user;
    Xr9A1 guard;
    QVERIFY(guard.isRunning());
}
#endif

PLUMARA_GUILESS_TEST(TestXr9A1)
#include "tst_xr9a1.moc"
