// Where the program listens: a place that nobody else can reach.

#include "app/handoff.h"
#include "app/handoffplace.h"
#include "tests/app/sessionfolder.h"
#include "tests/support/files/files.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/limits.h"
#include "tests/support/system/unixfiles.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QTest>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

void setMode(const QString &path, mode_t mode)
{
    if (::chmod(QFile::encodeName(path).constData(), mode) != 0)
        qFatal("The rights cannot be changed.");
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

/// A home with a short name and a session without a folder.
struct Home
{
    QTemporaryDir folder{u"/tmp/home-XXXXXX"_s};
    Variable home{"HOME", QFile::encodeName(folder.path())};
    Variable cache{"XDG_CACHE_HOME", ""};
    Variable session{"XDG_RUNTIME_DIR", ""};

    QString own() const { return folder.filePath(u".cache/OrvanePlumara"_s); }
};

QString folderOf(const QString &place)
{
    return place.isEmpty() ? QString() : QFileInfo(place).path();
}

/// What makes of a private folder one that is not.
using Change = void (*)(const QString &path);

void addChanges()
{
    QTest::addColumn<Change>("change");
    addRow<Change>("all may list it", [](const QString &path) { setMode(path, 0704); });
    addRow<Change>("all may go through", [](const QString &path) { setMode(path, 0701); });
    addRow<Change>("a group may write", [](const QString &path) { setMode(path, 0720); });
    addRow<Change>("it is a file", [](const QString &path) {
        QDir(path).removeRecursively();
        writeFile(path);
        setMode(path, 0600);
    });
    addRow<Change>("it is a link", [](const QString &path) {
        QDir().rename(path, path + u'2');
        makeLink(path, path + u'2');
    });
    if (::geteuid() != 0)
        return; // only root can give a folder away
    addRow<Change>("it is somebody else's", [](const QString &path) {
        if (::chown(QFile::encodeName(path).constData(), 1, 1) != 0)
            qFatal("The folder cannot be given away.");
    });
}

} // namespace

class TestHandoffPlace : public QObject
{
    Q_OBJECT

private slots:
    void itIsInTheFolderOfTheSession();
    void aFolderOfTheSessionThatOthersReachIsNotTaken_data() { addChanges(); }
    void aFolderOfTheSessionThatOthersReachIsNotTaken();
    void withoutASessionItIsInTheHome();
    void aFolderOfTheHomeThatOthersReachIsNotTaken_data() { addChanges(); }
    void aFolderOfTheHomeThatOthersReachIsNotTaken();
    void withoutAPlaceNobodyWaits_data();
    void withoutAPlaceNobodyWaits();
    void nobodyElseReachesTheSocket();
    void programsThatDoNotKnowOfEachOtherHaveDifferentOnes();
    void itsNameIsThatOfAllVersions();
    void itIsAsLongAsCanBe();
};

void TestHandoffPlace::itIsInTheFolderOfTheSession()
{
    const Home home;
    const SessionFolder session;
    QCOMPARE(folderOf(handoffPlace()), session.path());
    QVERIFY(!QFileInfo::exists(home.own()));
}

void TestHandoffPlace::aFolderOfTheSessionThatOthersReachIsNotTaken()
{
    QFETCH(const Change, change);
    const Home home;
    const QString path = home.folder.filePath(u"session"_s);
    QDir().mkdir(path);
    setMode(path, 0700);
    const Variable session("XDG_RUNTIME_DIR", QFile::encodeName(path));
    QCOMPARE(folderOf(handoffPlace()), path);
    change(path);
    QCOMPARE(folderOf(handoffPlace()), home.own());
}

void TestHandoffPlace::withoutASessionItIsInTheHome()
{
    const Home home;
    QCOMPARE(folderOf(handoffPlace()), home.own());
    QCOMPARE(modeOf(home.own()), mode_t(0700));
    QCOMPARE(folderOf(handoffPlace()), home.own());
}

void TestHandoffPlace::aFolderOfTheHomeThatOthersReachIsNotTaken()
{
    QFETCH(const Change, change);
    const Home home;
    QCOMPARE(folderOf(handoffPlace()), home.own());
    change(home.own());
    QCOMPARE(handoffPlace(), QString());
}

void TestHandoffPlace::withoutAPlaceNobodyWaits_data()
{
    QTest::addColumn<QString>("home");
    QTest::newRow("the home may not be written") << u"/"_s;
    QTest::newRow("there is no home") << u"/nowhere/at all"_s;
    QTest::newRow("the home has a long name") << u"/tmp/"_s + QString(100, u'x');
}

void TestHandoffPlace::withoutAPlaceNobodyWaits()
{
    QFETCH(const QString, home);
    const Home variables;
    const Variable variable("HOME", QFile::encodeName(home));
    const OrdinaryUser ordinary;
    QCOMPARE(handoffPlace(), QString());
    const HandoffListener listener;
    QElapsedTimer timer;
    timer.start();
    handOff(u"/plan.vtrz"_s);
    QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    QDir(home).rmdir(u"."_s);
}

void TestHandoffPlace::nobodyElseReachesTheSocket()
{
    if (::geteuid() != 0)
        QSKIP("Only root can become somebody else.");
    const SessionFolder session;
    const QString place = handoffPlace();
    const HandoffListener listener;
    QLocalSocket socket;
    socket.connectToServer(place);
    QVERIFY(socket.waitForConnected());
    socket.abort();
    const OrdinaryUser somebodyElse;
    socket.connectToServer(place);
    QVERIFY(!socket.waitForConnected());
    QCOMPARE(socket.error(), QLocalSocket::SocketAccessError);
}

void TestHandoffPlace::programsThatDoNotKnowOfEachOtherHaveDifferentOnes()
{
    const SessionFolder session;
    const QString place = handoffPlace();
    const QTemporaryDir temporary(u"/tmp/temporary-XXXXXX"_s);
    QString other;
    {
        const Variable variable("TMPDIR", QFile::encodeName(temporary.path()));
        other = handoffPlace();
    }
    QVERIFY(other != place);
    QCOMPARE(folderOf(other), folderOf(place));
    // By whatever name the same folder is called.
    const Variable variable("TMPDIR", QFile::encodeName(QDir::tempPath() + u"/."_s));
    QCOMPARE(handoffPlace(), place);
}

void TestHandoffPlace::itsNameIsThatOfAllVersions()
{
    const SessionFolder session;
    const QString name = QFileInfo(handoffPlace()).fileName();
    QVERIFY2(QRegularExpression(u"^Plumara-[0-9a-f]{16}$"_s).match(name).hasMatch(),
             qPrintable(name));
}

void TestHandoffPlace::itIsAsLongAsCanBe()
{
    constexpr qsizetype longest = sizeof(sockaddr_un::sun_path) - 2;
    const SessionFolder parent;
    const auto sessionOfPlace = [&](qsizetype size) {
        const QString name(size - handoffPlace().size() - 1, u'x');
        QDir(parent.path()).mkdir(name);
        setMode(parent.path(name), 0700);
        return QFile::encodeName(parent.path(name));
    };
    const QByteArray longEnough = sessionOfPlace(longest);
    const QByteArray tooLong = sessionOfPlace(longest + 1);
    {
        const Variable session("XDG_RUNTIME_DIR", longEnough);
        const QString place = handoffPlace();
        QCOMPARE(place.size(), longest);
        const HandoffListener listener;
        QLocalSocket socket;
        socket.connectToServer(place);
        QVERIFY(socket.waitForConnected());
    }
    const Variable session("XDG_RUNTIME_DIR", tooLong);
    QCOMPARE(handoffPlace(), QString());
}

PLUMARA_GUILESS_TEST(TestHandoffPlace)
#include "tst_handoffplace.moc"
