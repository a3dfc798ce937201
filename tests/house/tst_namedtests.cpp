// Holds the pages to the tests: whichever test a page names exists, and no fault is listed without
// one.
#include "tests/support/main/registeredtest.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString root = QStringLiteral(PLUMARA_SOURCE_FOLDER);

QString textOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The tests that \a text names, as in `tst_closing::noDiscardsTheChanges` or `tst_closing`.
QStringList namedTests(const QString &text)
{
    static const QRegularExpression name(u"`(tst_\\w+(::\\w+)?)`"_s);
    QStringList found;
    auto matches = name.globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

/// The source of the test class \a name; empty when there is none.
QString sourceOf(const QString &name)
{
    QDirIterator files(root + u"/tests"_s, {name + u".cpp"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    return files.hasNext() ? textOf(files.next()) : QString();
}

bool exists(const QString &test)
{
    const QString function = test.section(u"::"_s, 1);
    const QString source = sourceOf(test.section(u"::"_s, 0, 0));
    if (function.isEmpty())
        return !source.isEmpty();
    // Declared as a slot, so that it runs, and written.
    return source.contains(u"    void "_s + function + u"();"_s)
        && source.contains(u"::"_s + function + u"()\n{"_s);
}

QStringList cellsOf(const QString &line)
{
    QStringList cells;
    for (const QString &cell : line.sliced(1).chopped(1).split(u'|'))
        cells << cell.trimmed();
    return cells;
}

/// The rows of those tables in \a text whose first column is called \a head, without their heads, as
/// their cells.
QList<QStringList> rowsOf(const QString &text, const QString &head)
{
    QList<QStringList> rows;
    bool inTable = false;
    bool isWanted = false;
    for (const QString &line : text.split(u'\n')) {
        const bool isRow = line.startsWith(u'|');
        if (isRow && !inTable)
            isWanted = cellsOf(line).constFirst() == head;
        else if (isRow && isWanted && !line.startsWith(u"|---"_s))
            rows << cellsOf(line);
        inTable = isRow;
    }
    return rows;
}

} // namespace

class TestNamedTests : public QObject
{
    Q_OBJECT

private slots:
    void namesAreFoundInText();
    void onlyWhatRunsExists();
    void everyTestThatAPageNamesExists();
    void everyFaultHasItsOutcomeAndItsTest();
};

void TestNamedTests::namesAreFoundInText()
{
    QCOMPARE(namedTests(u"| `tst_a::b`, `tst_c::d` and tst_e::f, `tst_g`, `g` |"_s),
             QStringList({u"tst_a::b"_s, u"tst_c::d"_s, u"tst_g"_s}));
    QCOMPARE(rowsOf(u"| A | B |\n|---|---|\n| a | b |\n\n| C |\n|---|\n| c |"_s, u"A"_s),
             QList<QStringList>({{u"a"_s, u"b"_s}}));
}

void TestNamedTests::onlyWhatRunsExists()
{
    QVERIFY(exists(u"tst_namedtests::onlyWhatRunsExists"_s));
    QVERIFY(!exists(u"tst_namedtests::onlyWhatRuns"_s));
    QVERIFY(!exists(u"tst_namedtests::exists"_s));
    QVERIFY(!exists(u"tst_nothing::onlyWhatRunsExists"_s));
    QVERIFY(exists(u"tst_namedtests"_s));
    QVERIFY(!exists(u"tst_nothing"_s));
}

void TestNamedTests::everyTestThatAPageNamesExists()
{
    QStringList missing;
    int found = 0;
    auto pages = QDir(root + u"/docs"_s).entryInfoList({u"*.md"_s});
    pages << QFileInfo(root + u"/SECURITY.md"_s);
    for (const QFileInfo &page : pages) {
        const QStringList tests = namedTests(textOf(page.filePath()));
        found += static_cast<int>(tests.size());
        for (const QString &test : tests) {
            if (!exists(test))
                missing << page.fileName() + u": "_s + test;
        }
    }
    QCOMPARE(missing, QStringList());
    QVERIFY(found > 100);
}

void TestNamedTests::everyFaultHasItsOutcomeAndItsTest()
{
    constexpr int columns = 5;
    const auto rows = rowsOf(textOf(root + u"/docs/reliability.md"_s), u"Fault"_s);
    QVERIFY(rows.size() > 40);
    for (const QStringList &cells : rows) {
        QVERIFY2(cells.size() == columns && !cells.contains(QString()),
                 qPrintable(cells.join(u'|')));
        QVERIFY2(!namedTests(cells.constLast()).isEmpty(), qPrintable(cells.constFirst()));
    }
}

PLUMARA_GUILESS_TEST(TestNamedTests)
#include "tst_namedtests.moc"
