// The message of a second start: what it says, and what is no such message.

#include "app/handoffmessage.h"
#include "tests/support/main/registeredtest.h"

#include <QtEndian>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

using Status = HandoffMessage::Status;

const QString path = u"/home/María José/El ciclo del agua.vtrz"_s;
constexpr qsizetype longestName = 32767;
constexpr qsizetype markSize = 8;

/// A message that says that its path has \a size bytes, with \a text in its place.
QByteArray message(quint32 size, const QByteArray &text = {})
{
    QByteArray head(sizeof size, '\0');
    qToBigEndian(size, head.data());
    return HandoffMessage::write({}).first(markSize) + head + text;
}

} // namespace

class TestHandoffMessage : public QObject
{
    Q_OBJECT

private slots:
    void itsBytesAreThoseOfAllVersions();
    void aPathComesThrough_data();
    void aPathComesThrough();
    void aMessageWithoutABoardComesThrough();
    void whatIsNoPathIsLeftOut_data();
    void whatIsNoPathIsLeftOut();
    void everyBeginningIsWaitedOn();
    void everythingElseIsForeign_data();
    void everythingElseIsForeign();
    void noChangedMessageDoesMoreThanName();
};

void TestHandoffMessage::itsBytesAreThoseOfAllVersions()
{
    QCOMPARE(HandoffMessage::write(u"/é"_s), QByteArray("Plumara\n\0\0\0\4\0/\0\xe9", 16));
}

void TestHandoffMessage::aPathComesThrough_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a path") << path;
    QTest::newRow("an emoji") << u"/tmp/\U0001F600.vtrz"_s;
    QTest::newRow("half an emoji, as Windows lets it be") << u"/tmp/"_s + QChar(0xd83d);
    QTest::newRow("a line") << u"/tmp/a\nb.vtrz"_s;
    QTest::newRow("the longest") << u'/' + QString(longestName - 1, u'x');
}

void TestHandoffMessage::aPathComesThrough()
{
    QFETCH(const QString, name);
    const auto read = HandoffMessage::read(HandoffMessage::write(name));
    QCOMPARE(read.status, Status::Complete);
    QCOMPARE(read.boardPath, name);
    QVERIFY(HandoffMessage::write(name).size() <= HandoffMessage::longest);
}

void TestHandoffMessage::aMessageWithoutABoardComesThrough()
{
    QCOMPARE(HandoffMessage::write({}), HandoffMessage::write(u""_s));
    const auto read = HandoffMessage::read(HandoffMessage::write({}));
    QCOMPARE(read.status, Status::Complete);
    QVERIFY(read.boardPath.isEmpty());
}

void TestHandoffMessage::whatIsNoPathIsLeftOut_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("from some folder") << u"plan.vtrz"_s;
    QTest::newRow("too long") << u'/' + QString(longestName, u'x');
    QTest::newRow("with an end in its middle") << u"/tmp/a"_s + QChar::Null + u"b"_s;
}

void TestHandoffMessage::whatIsNoPathIsLeftOut()
{
    QFETCH(const QString, name);
    QCOMPARE(HandoffMessage::write(name), HandoffMessage::write({}));
}

void TestHandoffMessage::everyBeginningIsWaitedOn()
{
    const QByteArray whole = HandoffMessage::write(path);
    for (qsizetype size = 0; size < whole.size(); ++size)
        QCOMPARE(HandoffMessage::read(whole.first(size)).status, Status::Incomplete);
}

void TestHandoffMessage::everythingElseIsForeign_data()
{
    const QByteArray whole = HandoffMessage::write(path);
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a browser") << QByteArray("GET / HTTP/1.1\r\n\r\n");
    QTest::newRow("a letter") << QByteArray("x");
    QTest::newRow("a zero") << QByteArray(1, '\0');
    QTest::newRow("another mark") << QByteArray("Plumara\t") + whole.sliced(markSize);
    QTest::newRow("more behind it") << whole + 'x';
    QTest::newRow("twice") << whole + whole;
    QTest::newRow("the length of a gigabyte") << message(1'000'000'000);
    QTest::newRow("all there is") << message(0xffffffff);
    QTest::newRow("nearly all there is") << message(0xfffffffe);
    QTest::newRow("two bytes too long") << message(2 * (longestName + 1));
    QTest::newRow("half a letter") << message(3, "/ab");
    QTest::newRow("a name from some folder") << message(4, QByteArray("\0p\0q", 4));
    QTest::newRow("a resource of the program") << message(6, QByteArray("\0:\0/\0q", 6));
    QTest::newRow("a name with an end in its middle") << message(6, QByteArray("\0/\0\0\0q", 6));
}

void TestHandoffMessage::everythingElseIsForeign()
{
    QFETCH(const QByteArray, bytes);
    const auto read = HandoffMessage::read(bytes);
    QCOMPARE(read.status, Status::Foreign);
    QVERIFY(read.boardPath.isEmpty());
}

void TestHandoffMessage::noChangedMessageDoesMoreThanName()
{
    const QByteArray whole = HandoffMessage::write(path);
    for (qsizetype place = 0; place < whole.size(); ++place) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray changed = whole;
            changed[place] = static_cast<char>(changed[place] ^ (1 << bit));
            const auto read = HandoffMessage::read(changed);
            // What it names is what it says.
            if (read.status == Status::Complete)
                QCOMPARE(HandoffMessage::write(read.boardPath), changed);
            else
                QVERIFY(read.boardPath.isEmpty());
        }
    }
}

PLUMARA_GUILESS_TEST(TestHandoffMessage)
#include "tst_handoffmessage.moc"
