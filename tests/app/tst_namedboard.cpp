// The board that a command line names.

#include "app/namedboard.h"
#include "tests/support/main/registeredtest.h"

#include <QDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestNamedBoard : public QObject
{
    Q_OBJECT

private slots:
    void theFirstThatIsNoOptionIsTheBoard_data();
    void theFirstThatIsNoOptionIsTheBoard();
    void aNameIsTakenFromThePresentFolder();
    void aPathGoesTheWayThatItSays();
    void whatIsNoBoardIsTakenAsAName();
};

void TestNamedBoard::theFirstThatIsNoOptionIsTheBoard_data()
{
    const QString board = QDir::tempPath() + u"/plan.vtrz"_s;
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");
    QTest::newRow("not even a program") << QStringList() << QString();
    QTest::newRow("nothing") << QStringList{u"Plumara"_s} << QString();
    QTest::newRow("a board") << QStringList{u"Plumara"_s, board} << board;
    QTest::newRow("two boards") << QStringList{u"Plumara"_s, board, board + u'2'} << board;
    QTest::newRow("options") << QStringList{u"Plumara"_s, u"-v"_s, u"--help"_s, u"-"_s, u"--"_s}
                             << QString();
    QTest::newRow("options before it") << QStringList{u"Plumara"_s, u"--new"_s, board} << board;
    QTest::newRow("an empty one before it") << QStringList{u"Plumara"_s, u""_s, board} << board;
}

void TestNamedBoard::theFirstThatIsNoOptionIsTheBoard()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, named);
    QCOMPARE(namedBoard(arguments), named);
}

void TestNamedBoard::aNameIsTakenFromThePresentFolder()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QDir::tempPath()));
    const QString named = namedBoard({u"Plumara"_s, u"a b/plan.vtrz"_s});
    const QString folder = QDir::currentPath();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(named, folder + u"/a b/plan.vtrz"_s);
}

// Behind a link, the way up is not the way back.
void TestNamedBoard::aPathGoesTheWayThatItSays()
{
    const QString path = QDir::tempPath() + u"/link/../plan.vtrz"_s;
    QCOMPARE(namedBoard({u"Plumara"_s, path}), path);
}

void TestNamedBoard::whatIsNoBoardIsTakenAsAName()
{
    const QString odd = u"a:b?\n\U0001F600 \"'&%20"_s;
    const QString resource = u":/img/menuhelp.png"_s;
    QCOMPARE(namedBoard({u"Plumara"_s, resource}), QDir::currentPath() + u"/./"_s + resource);
    QCOMPARE(namedBoard({u"Plumara"_s, odd}), QDir::current().absoluteFilePath(odd));
}

PLUMARA_GUILESS_TEST(TestNamedBoard)
#include "tst_namedboard.moc"
