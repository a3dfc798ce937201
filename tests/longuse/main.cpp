// Gives lesson after lesson, notes what the program has after each, and tells what did not come back.
#include "tests/longuse/inventory.h"
#include "tests/longuse/lesson.h"
#include "tests/support/system/virtualclock.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QPixmapCache>
#include <QTest>

#include <cstdio>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

// By then everything has been done with every kind of lesson twice, and the toolkit has what it keeps.
constexpr int warmUp = 2 * Lesson::kinds; // lessons
// What a lesson may leave in memory: the toolkit keeps some four kilobytes of each file dialog, and on
// Windows, where the program itself shows the system's, 27. The strokes of a lesson take ten times as
// much as four.
#ifdef Q_OS_WIN
constexpr qint64 tolerableGrowth = 96 * 1024; // bytes a lesson
#else
constexpr qint64 tolerableGrowth = 16 * 1024; // bytes a lesson
#endif

// Without the virtual clock a lesson is over before what it has begun: the reminder of a presentation,
// the warning about a server that does not answer.
constexpr int longestTimer = 35 * 1000; // ms

/// Holds a row for each lesson, as a table in a file or nowhere.
class Table
{
public:
    explicit Table(const QString &path)
        : file(path)
    {
        if (path.isEmpty())
            return;
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            qFatal("%s", qPrintable(file.errorString()));
        file.write("minutes," + Inventory::columns() + '\n');
    }

    void add(int minutes, const Inventory &inventory)
    {
        if (file.isOpen()) {
            file.write(QByteArray::number(minutes) + ',' + inventory.toRow() + '\n');
            file.flush();
        }
    }

private:
    QFile file;
};

/// Tells what \a after has more or less of than \a before, \a lessons earlier. Returns whether that is
/// nothing.
bool isBackWhereItWas(const Inventory &before, const Inventory &after, int lessons)
{
    bool isBack = true;
    const auto were = before.counts();
    const auto are = after.counts();
    for (qsizetype i = 0; i < were.size(); ++i) {
        std::printf("%s: %lld, then %lld\n", were[i].first, were[i].second, are[i].second);
        isBack = isBack && were[i].second == are[i].second;
    }
    const qint64 growth = (after.heap - before.heap) / lessons;
    std::printf("memory: %lld bytes more a lesson\n", growth);
    return isBack && growth <= tolerableGrowth;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);

    QCommandLineParser options;
    options.setApplicationDescription(u"Uses the program for so many hours, and looks whether "
                                      "everything comes back to where it was."_s);
    options.addHelpOption();
    options.addOptions({{u"hours"_s, u"How long, by the program's clock."_s, u"hours"_s, u"8"_s},
                        {u"table"_s, u"Where to note each lesson."_s, u"file"_s}});
    options.process(app);
    const int lessons = qRound(options.value(u"hours"_s).toDouble() * 60 / Lesson::minutes);
    if (lessons <= warmUp)
        qFatal("It takes more than %d minutes to see anything.", warmUp * Lesson::minutes);
    Table table(options.value(u"table"_s));

    QApplication::setCursorFlashTime(0);
    // It fills for hours, up to its ten megabytes, and hides what else there is.
    QPixmapCache::setCacheLimit(0);
    VirtualClock::begin();
    BoardsHome home;
    Inventory before;
    Inventory now;
    for (int lesson = 1; lesson <= lessons; ++lesson) {
        Lesson(home, lesson).give();
        if (!VirtualClock::isThere && (lesson == warmUp || lesson == lessons))
            QTest::qWait(longestTimer);
        now = Inventory::take();
        table.add(lesson * Lesson::minutes, now);
        if (lesson == warmUp)
            before = now;
    }
    std::printf("%d lessons, %d strokes\n", lessons, lessons * Lesson::strokes);
    return isBackWhereItWas(before, now, lessons - warmUp) ? EXIT_SUCCESS : EXIT_FAILURE;
}
