// However little memory there is, a document is read or refused: the parser ends a program that has none.

#include "storage/boardfile.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/main/registeredtest.h"
#include "tests/support/system/memorylimit.h"
#include "tests/support/system/scratchhome.h"

#include <QTest>

#include <new>

using namespace Qt::Literals::StringLiterals;

class TestParserMemory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aDocumentIsReadOrRefused_data();
    void aDocumentIsReadOrRefused();
};

namespace {

constexpr qint64 megabyte = qint64(1024) * 1024;

/// A document with so many of \a element in its list.
QByteArray documentOf(const QByteArray &element, int count)
{
    QByteArray text = R"({"items": [)" + element;
    for (int i = 1; i < count; ++i)
        text += ',' + element;
    return text + "]}";
}

} // namespace

void TestParserMemory::initTestCase()
{
    if (!MemoryLimit::isPossible())
        QSKIP("A sanitizer does not bear to get no memory.");
}

void TestParserMemory::aDocumentIsReadOrRefused_data()
{
    QTest::addColumn<QByteArray>("document");
    const auto row = [](const char *name, const QByteArray &element, int count) {
        QTest::newRow(name) << documentOf(element, count);
    };
    row("points, close together", R"({"type":1,"x":5,"y":7})", 5'000);
    row("points, with room",
        "{\n        \"type\": 1,\n        \"x\": 5.25,\n        \"y\": 7\n    }", 5'000);
    row("numbers", "1", 30'000);
    row("empty objects", "{}", 20'000);
    row("empty lists", "[]", 20'000);
    row("lists of a number", "[1]", 10'000);
    row("objects of a number", R"({"":1})", 8'000);
    row("an object of many numbers",
        QByteArray(R"({"":1)").append(QByteArray(R"(,"":1)").repeated(20'000)).append('}'), 1);
    row("objects in objects", R"({"a":{"a":{"a":{"a":1}}}})", 2'000);
    row("empty texts", R"("")", 20'000);
    row("short texts", R"("ñ")", 20'000);
    row("a long text", '"' + QByteArray(400'000, 'x') + '"', 1);
    row("a long foreign text", '"' + QByteArray("ñ").repeated(150'000) + '"', 1);
    row("a long text with marks", '"' + QByteArray(R"(\n)").repeated(150'000) + '"', 1);
    row("a name that is long",
        QByteArray(R"({")").append(QByteArray(300'000, 'x')).append(R"(":1})"), 1);
}

void TestParserMemory::aDocumentIsReadOrRefused()
{
    QFETCH(const QByteArray, document);
    const ScratchHome home;
    const QString path = writeFile(home.path(u"pizarra.vtrz"_s), document);
    constexpr qint64 most = 8 * megabyte;
    constexpr qint64 step = megabyte / 8;
    int refused = 0;
    int read = 0;
    for (qint64 room = step; room < most; room += step) {
        const MemoryLimit limit(room);
        try {
            if (readDocument(path).status == BoardFileContents::Status::Read)
                ++read;
        } catch (const std::bad_alloc &) {
            ++refused;
        }
    }
    QVERIFY(refused > 0 && read > 0);
    QCOMPARE(refused + read, int(most / step) - 1);
}

PLUMARA_TEST(TestParserMemory)
#include "tst_parsermemory.moc"
