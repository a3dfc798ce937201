// The request for the newest version, against an HTTPS server that gives all kinds of answers.

#include "home/updatecheck.h"
#include "tests/support/files/files.h"
#include "tests/support/home/homewindow.h"
#include "tests/support/home/updateserver.h"
#include "tests/support/main/registeredtest.h"

#include <QElapsedTimer>
#include <QGraphicsOpacityEffect>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QNetworkReply>
#include <QScopedValueRollback>

#include <chrono>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString host = QStringLiteral(PLUMARA_UPDATE_HOST);
constexpr qsizetype tooLarge = 64 * 1024; // bytes of an answer

/// Counts the answers that the program gives back before its end.
class DeletedReplies : public QObject
{
public:
    DeletedReplies() { qApp->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::DeferredDelete && qobject_cast<QNetworkReply *>(watched))
            ++count;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

QByteArray versionDocument(const QString &version)
{
    return QJsonDocument(QJsonObject{{u"version"_s, version}}).toJson();
}

} // namespace

class TestUpdateCheck : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { server.reset(); }

    // The request
    void theVersionIsAskedForBeforeTheWindowIsShown();
    void theRequestIsForTheVersionDocument();

    // The answers
    void aNewerVersionShowsTheAdvisor_data();
    void aNewerVersionShowsTheAdvisor();
    void anyOtherAnswerIsPassedOverInSilence_data();
    void anyOtherAnswerIsPassedOverInSilence();
    void aRedirectionToTheSecureServerIsFollowed();
    void aRedirectionToAnInsecureServerIsRefused();
    void aRedirectionOutOfTheWebIsRefused_data();
    void aRedirectionOutOfTheWebIsRefused();
    void aRedirectionInCirclesIsGivenUp();
    void noCookieIsKept();
    void nobodySaysWhoTheyAre();
    void anUntrustedServerIsNotBelieved();
    void anExpiredCertificateIsNotBelieved();
    void aCertificateOfAnotherHostIsNotBelieved();
    void noServerIsNoError();
    void anEndlessAnswerIsCutOff_data();
    void anEndlessAnswerIsCutOff();
    void aSmallAnswerThatUnpacksToALargeOneIsCutOff();
    void anAnswerThatWasReadIsNotKept();
    void aDocumentOfReasonableSizeIsRead();
    void aLargerDocumentIsPassedOver();
    void aServerThatNeverAnswersHoldsNothingUp();
    void aServerThatNeverAnswersIsGivenUp();
    void aServerHasHalfAMinuteForItsAnswer();

private:
    static void trust(const QList<QSslCertificate> &authorities)
    {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(authorities);
        QSslConfiguration::setDefaultConfiguration(configuration);
    }
    static bool advisorShown(const HomeWindow &home)
    {
        return home.child(u"UpdateAdvisor"_s)->isVisible();
    }
    static qreal opacity(const HomeWindow &home)
    {
        auto *const effect = home.child(u"UpdateAdvisor"_s)->graphicsEffect();
        return qobject_cast<QGraphicsOpacityEffect *>(effect)->opacity();
    }
    bool staysSilent(HomeWindow &home);
    void staysSilentBefore(const TestCertificate &other);
    static void answerEndlessly(QSslSocket &socket, const QByteArray &headers, qint64 *sent);

    std::unique_ptr<TestCertificate> certificate;
    std::unique_ptr<UpdateServer> server;
};

void TestUpdateCheck::initTestCase()
{
    certificate = std::make_unique<TestCertificate>(host);
    QVERIFY(!certificate->certificate().isNull());
}

void TestUpdateCheck::init()
{
    trust({certificate->authority()});
    server = std::make_unique<UpdateServer>(*certificate);
}

/// Whether the request that \a home has already sent ends without the advisor. A second check,
/// which must show it, proves that the first one is over: all requests go the same way in order.
bool TestUpdateCheck::staysSilent(HomeWindow &home)
{
    if (!QTest::qWaitFor([this] { return !server || server->openTunnels == 0; }))
        return false;
    trust({certificate->authority()});
    if (!server)
        server = std::make_unique<UpdateServer>(*certificate);
    bool silent = false;
    server->onRequest = [this, &silent, &home](QSslSocket &socket) {
        silent = !advisorShown(home);
        server->answer("200 OK", versionDocument(u"1.1.2026"_s));
        server->onRequest(socket);
    };
    home.window.checkVersion();
    return QTest::qWaitFor([&home] { return advisorShown(home); }) && silent;
}

void TestUpdateCheck::theVersionIsAskedForBeforeTheWindowIsShown()
{
    const ScratchHome scratch;
    const MainWindow window;
    QTRY_COMPARE(server->requests.size(), 1);
    QVERIFY(!window.isVisible());
}

void TestUpdateCheck::theRequestIsForTheVersionDocument()
{
    server->answer("200 OK", versionDocument(u"1.0.2026"_s));
    const HomeWindow home;
    QTRY_COMPARE(server->requests.size(), 1);
    const QByteArray request = server->requests.constFirst();
    QVERIFY(request.startsWith("GET /updates/plumara/version.json HTTP/1.1\r\n"));
    QVERIFY(request.toLower().contains("\r\nhost: " + host.toUtf8() + "\r\n"));
    QVERIFY(server->tunnels.constFirst().startsWith("CONNECT " + host.toUtf8() + ":443 "));
}

void TestUpdateCheck::aNewerVersionShowsTheAdvisor_data()
{
    QTest::addColumn<QByteArray>("body");
    for (const auto *version : {"1.1.2026", "10.0", "1.0.2026a", "1.0.2027", "2"})
        QTest::newRow(version) << versionDocument(QString::fromLatin1(version));
    QTest::newRow("other keys") << QByteArray(R"({"notes": [1], "version": "1.1.2026", "x": {}})");
    QTest::newRow("markup") << versionDocument(u"<h1>9</h1><img src=\"file:///etc/passwd\">"_s);
}

void TestUpdateCheck::aNewerVersionShowsTheAdvisor()
{
    QFETCH(const QByteArray, body);
    server->answer("200 OK", body);
    const HomeWindow home;
    QTRY_VERIFY(advisorShown(home));
    // Whatever version the server names.
    QCOMPARE(home.child<QLabel>(u"UpdateTitle"_s)->text(),
             u"Aviso de actualización disponible - V1.1.2026"_s);
    const auto labels = home.window.findChildren<QLabel *>();
    for (const auto *label : labels)
        QVERIFY2(!label->text().contains(u"<h1>9"_s), qPrintable(label->objectName()));
}

void TestUpdateCheck::anyOtherAnswerIsPassedOverInSilence_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<QByteArray>("body");
    for (const auto *version : {"1.0.2026", "1.0.2025", "0.9", "1.0.10000", "1.0.202", ""}) {
        QTest::addRow("version '%s'", version)
            << QByteArray("200 OK") << versionDocument(QString::fromLatin1(version));
    }
    QTest::newRow("array") << QByteArray("200 OK") << QByteArray(R"(["version", "9"])");
    QTest::newRow("garbage") << QByteArray("200 OK") << QByteArray("\xff\xfe<html>9</html>");
    QTest::newRow("cut off") << QByteArray("200 OK") << QByteArray(R"({"version": "9")");
    QTest::newRow("empty") << QByteArray("200 OK") << QByteArray();
    QTest::newRow("no version") << QByteArray("200 OK") << QByteArray(R"({"Version": "9"})");
    QTest::newRow("number") << QByteArray("200 OK") << QByteArray(R"({"version": 9})");
    QTest::newRow("404") << QByteArray("404 Not Found") << versionDocument(u"9"_s);
    QTest::newRow("500") << QByteArray("500 Internal Server Error") << versionDocument(u"9"_s);
}

void TestUpdateCheck::anyOtherAnswerIsPassedOverInSilence()
{
    QFETCH(const QByteArray, status);
    QFETCH(const QByteArray, body);
    server->answer(status, body);
    HomeWindow home;
    QTRY_VERIFY(!server->requests.isEmpty());
    QVERIFY(staysSilent(home));
    QVERIFY(!QApplication::activeModalWidget());
}

void TestUpdateCheck::aRedirectionToTheSecureServerIsFollowed()
{
    server->onRequest = [this](QSslSocket &socket) {
        server->answer("200 OK", versionDocument(u"9"_s));
        socket.write("HTTP/1.1 302 Found\r\nLocation: https://" + host.toUtf8()
                     + "/moved.json\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        socket.disconnectFromHost();
    };
    const HomeWindow home;
    QTRY_VERIFY(advisorShown(home));
    QVERIFY(server->requests.constLast().startsWith("GET /moved.json "));
}

void TestUpdateCheck::aRedirectionToAnInsecureServerIsRefused()
{
    server->answer("302 Found", {}, "Location: http://" + host.toUtf8() + "/version.json\r\n");
    HomeWindow home;
    QTRY_VERIFY(!server->requests.isEmpty());
    QVERIFY(staysSilent(home));
    QCOMPARE(server->insecureRequests.size(), 0);
}

void TestUpdateCheck::aRedirectionOutOfTheWebIsRefused_data()
{
    QTest::addColumn<QByteArray>("address");
    const auto file = QUrl::fromLocalFile(QDir::temp().filePath(u"version.json"_s));
    writeFile(file.toLocalFile(), versionDocument(u"9"_s));
    QTest::newRow("to a file") << file.toEncoded();
    QTest::newRow("to itself") << QByteArray(R"(data:application/json,{"version":"9"})");
    QTest::newRow("to another service") << "ftp://" + host.toUtf8() + "/version.json";
}

void TestUpdateCheck::aRedirectionOutOfTheWebIsRefused()
{
    QFETCH(const QByteArray, address);
    server->answer("302 Found", {}, "Location: " + address + "\r\n");
    HomeWindow home;
    QTRY_VERIFY(!server->requests.isEmpty());
    QVERIFY(staysSilent(home));
}

void TestUpdateCheck::aRedirectionInCirclesIsGivenUp()
{
    server->answer("302 Found", {}, "Location: /updates/plumara/version.json\r\n");
    HomeWindow home;
    QTRY_VERIFY(server->requests.size() > 1);
    QVERIFY(staysSilent(home));
    QVERIFY2(server->requests.size() < 100, qPrintable(QString::number(server->requests.size())));
}

void TestUpdateCheck::noCookieIsKept()
{
    server->onRequest = [this](QSslSocket &socket) {
        server->answer("200 OK", versionDocument(u"9"_s));
        socket.write(
            "HTTP/1.1 302 Found\r\nLocation: /moved.json\r\nSet-Cookie: who=you; Path=/\r\n"
            "Content-Length: 0\r\nConnection: close\r\n\r\n");
        socket.disconnectFromHost();
    };
    const HomeWindow home;
    QTRY_VERIFY(advisorShown(home));
    QCOMPARE(server->requests.size(), 2);
    for (const QByteArray &request : std::as_const(server->requests))
        QVERIFY2(!request.toLower().contains("\r\ncookie:"), request.constData());
}

void TestUpdateCheck::nobodySaysWhoTheyAre()
{
    server->answer("401 Unauthorized", versionDocument(u"9"_s),
                   "WWW-Authenticate: Basic realm=\"Plumara\"\r\n");
    HomeWindow home;
    QTRY_VERIFY(!server->requests.isEmpty());
    QVERIFY(staysSilent(home));
    QVERIFY(!QApplication::activeModalWidget());
    for (const QByteArray &request : std::as_const(server->requests))
        QVERIFY2(!request.toLower().contains("\r\nauthorization:"), request.constData());
}

void TestUpdateCheck::anUntrustedServerIsNotBelieved()
{
    trust({});
    server->answer("200 OK", versionDocument(u"9"_s));
    const HomeWindow home;
    QTRY_VERIFY(!server->tunnels.isEmpty());
    QTRY_COMPARE(server->openTunnels, 0);
    QCOMPARE(server->requests.size(), 0);

    trust({certificate->authority()});
    const HomeWindow believer;
    QTRY_VERIFY(advisorShown(believer));
    QVERIFY(!advisorShown(home));
}

void TestUpdateCheck::anExpiredCertificateIsNotBelieved()
{
    staysSilentBefore(TestCertificate(host, -1));
}

void TestUpdateCheck::aCertificateOfAnotherHostIsNotBelieved()
{
    staysSilentBefore(TestCertificate(u"other.example"_s));
}

/// Asks a server with the certificate \a other, whose authority is trusted.
void TestUpdateCheck::staysSilentBefore(const TestCertificate &other)
{
    trust({certificate->authority(), other.authority()});
    server.reset();
    server = std::make_unique<UpdateServer>(other);
    server->answer("200 OK", versionDocument(u"9"_s));
    HomeWindow home;
    QTRY_VERIFY(!server->tunnels.isEmpty());
    QTRY_COMPARE(server->openTunnels, 0);
    QCOMPARE(server->requests.size(), 0);
    server.reset();
    QVERIFY(staysSilent(home));
}

void TestUpdateCheck::noServerIsNoError()
{
    server.reset(); // the host's name leads nowhere, either
    HomeWindow home;
    QVERIFY(staysSilent(home));
    QVERIFY(!QApplication::activeModalWidget());
}

/// Sends a well-formed document that names a newer version, after 200 MB of blanks.
void TestUpdateCheck::answerEndlessly(QSslSocket &socket, const QByteArray &headers, qint64 *sent)
{
    static const QByteArray chunk(64 * 1024, ' ');
    constexpr qint64 size = 200 * 1024 * 1024;
    const auto sendMore = [&socket, sent] {
        if (socket.bytesToWrite() > 0 || *sent > size)
            return;
        if (*sent == size) {
            *sent += socket.write(versionDocument(u"9"_s));
            socket.disconnectFromHost();
        } else {
            *sent += socket.write(chunk);
        }
    };
    connect(&socket, &QSslSocket::encryptedBytesWritten, &socket, sendMore);
    socket.write("HTTP/1.1 200 OK\r\n" + headers + "Connection: close\r\n\r\n");
    sendMore();
}

void TestUpdateCheck::anEndlessAnswerIsCutOff_data()
{
    QTest::addColumn<QByteArray>("headers");
    const auto size = 200 * 1024 * 1024 + versionDocument(u"9"_s).size();
    QTest::newRow("announced") << QByteArray("Content-Length: " + QByteArray::number(size)
                                             + "\r\n");
    QTest::newRow("unannounced") << QByteArray();
}

void TestUpdateCheck::anEndlessAnswerIsCutOff()
{
    QFETCH(const QByteArray, headers);
    qint64 sent = 0;
    server->onRequest = [&](QSslSocket &socket) { answerEndlessly(socket, headers, &sent); };
    HomeWindow home;
    QTRY_VERIFY(sent > 0);
    QTRY_COMPARE_WITH_TIMEOUT(server->openTunnels, 0, 30'000);
    // What was sent in vain waits in the buffers of the connection, not in the program.
    QVERIFY2(sent < 16 * 1024 * 1024, qPrintable(u"%1 bytes"_s.arg(sent)));
    QVERIFY(staysSilent(home));
}

void TestUpdateCheck::aSmallAnswerThatUnpacksToALargeOneIsCutOff()
{
    const QByteArray large = QByteArray(200 * 1024 * 1024, ' ') + versionDocument(u"9"_s);
    const QByteArray small = qCompress(large).mid(4); // without Qt's own length
    server->answer("200 OK", small, "Content-Encoding: deflate\r\n");
    HomeWindow home;
    QTRY_VERIFY(!server->requests.isEmpty());
    QVERIFY(staysSilent(home));
}

void TestUpdateCheck::anAnswerThatWasReadIsNotKept()
{
    const DeletedReplies deleted;
    server->answer("200 OK", versionDocument(u"1.0.2026"_s));
    const HomeWindow home;
    QTRY_COMPARE(deleted.count, 1);
}

void TestUpdateCheck::aDocumentOfReasonableSizeIsRead()
{
    server->answer("200 OK", versionDocument(u"9"_s).rightJustified(tooLarge - 1));
    const HomeWindow home;
    QTRY_VERIFY(advisorShown(home));
}

void TestUpdateCheck::aLargerDocumentIsPassedOver()
{
    server->answer("200 OK", versionDocument(u"9"_s).rightJustified(tooLarge));
    HomeWindow home;
    QTRY_VERIFY(!server->requests.isEmpty());
    QVERIFY(staysSilent(home));
}

void TestUpdateCheck::aServerThatNeverAnswersHoldsNothingUp()
{
    server->onRequest = {};
    auto home = std::make_unique<HomeWindow>();
    QTRY_VERIFY(!server->requests.isEmpty());
    QElapsedTimer timer;
    timer.start();
    QTimer::singleShot(0, &home->window, &QWidget::close);
    QCOMPARE(QApplication::exec(), 0);
    home.reset();
    // Long before the patience with the server is over.
    QVERIFY2(timer.elapsed() < 10'000, qPrintable(u"%1 ms"_s.arg(timer.elapsed())));
}

void TestUpdateCheck::aServerThatNeverAnswersIsGivenUp()
{
    server->onRequest = {};
    QScopedValueRollback patience(serverPatience, std::chrono::milliseconds(3000));
    HomeWindow home;
    serverPatience = std::chrono::seconds(30); // for what is asked from here on
    QTRY_COMPARE(server->requests.size(), 1);
    QCOMPARE(server->openTunnels, 1);
    QTRY_COMPARE_WITH_TIMEOUT(server->openTunnels, 0, 20000);
    QVERIFY(staysSilent(home));
}

void TestUpdateCheck::aServerHasHalfAMinuteForItsAnswer()
{
    QCOMPARE(serverPatience, std::chrono::seconds(30));
}

PLUMARA_TEST(TestUpdateCheck)
#include "tst_updatecheck.moc"
