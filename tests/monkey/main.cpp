// Starts the program again and again, with random input.
#include "app/translation.h"
#include "app/xr9a1.h"
#include "home/mainwindow.h"
#include "tests/monkey/litter.h"
#include "tests/monkey/logbook.h"
#include "tests/monkey/monkey.h"
#include "tests/support/system/heapsize.h"
#include "tests/support/system/limits.h"
#include "tests/support/system/scratchhome.h"
#include "tests/support/system/virtualclock.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDesktopServices>
#include <QDir>
#include <QPixmapCache>
#include <QScopeGuard>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

// How much more memory may be in use after some starts of the program: what the toolkit keeps of what it met
// for the first time, and in 1,000 steps.
constexpr double tolerableGrowth = 3.0 * 1024 * 1024; // bytes
constexpr double growthInThousandSteps = 200.0 * 1024; // bytes

class Browser : public QObject
{
    Q_OBJECT

public slots:
    /// Opens no page.
    void open(const QUrl &) { }
};

Monkey::Plan planOf(const QCommandLineParser &options)
{
    Monkey::Plan plan;
    plan.seed = options.value(u"seed"_s).toUInt();
    plan.first = options.value(u"from"_s).toUInt();
    plan.count = options.value(u"steps"_s).toUInt() - plan.first;
    plan.realTime = QGuiApplication::platformName() != "offscreen"_L1;
    return plan;
}

/// The program from its start to its end, as its own main() has it.
void run(Monkey &monkey)
{
    const Xr9A1 guard;
    QTranslator translator;
    installTranslation(translator, systemLanguages());
    MainWindow window(nullptr);
    window.setFocusPolicy(Qt::NoFocus);
    window.show();
    monkey.begin(window);
    QApplication::exec();
    monkey.finish();
}

std::optional<qint64> memoryInUse()
{
    QPixmapCache::clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return heapSize();
}

/// Holds the growth of memory to its limit, from the end of the third start of the program to that of
/// the last: by then the toolkit has what it keeps.
class Memory
{
public:
    void note(quint32 steps)
    {
        const auto bytes = memoryInUse();
        if (!bytes)
            return;
        if (++starts == warmUp) {
            first = *bytes;
            firstSteps = steps;
        }
        last = *bytes;
        lastSteps = steps;
    }

    /// In bytes; nothing where it is not known.
    std::optional<qint64> growth() const
    {
        if (starts <= warmUp)
            return std::nullopt;
        return last - first;
    }

    bool isTolerable() const
    {
        const double more = 1.0 * (lastSteps - firstSteps) / 1000;
        return double(growth().value_or(0)) < tolerableGrowth + growthInThousandSteps * more;
    }

private:
    static constexpr int warmUp = 3;

    int starts = 0;
    qint64 first = 0;
    qint64 last = 0;
    quint32 firstSteps = 0;
    quint32 lastSteps = 0;
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_HASH_SEED", "0");
    // The screen that the offscreen platform has by itself is narrower than any that is sold.
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        qputenv("QT_QPA_PLATFORM",
                "offscreen:configfile=" PLUMARA_SOURCE_FOLDER "/tests/monkey/screen.json");
    QApplication app(argc, argv);
    // On Windows the program that looks for an update ends all of this name.
    QCoreApplication::setApplicationName(u"Plumara"_s);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);

    QCommandLineParser options;
    options.setApplicationDescription(
        u"Plays with the program at random and watches that it keeps what it "
        "promises."_s);
    options.addHelpOption();
    options.addOptions({{u"seed"_s, u"What the dice are thrown with."_s, u"number"_s, u"1"_s},
                        {u"steps"_s, u"The last step."_s, u"number"_s, u"500"_s},
                        {u"from"_s, u"Leaves out the steps up to this one."_s, u"number"_s, u"0"_s},
                        {u"verbose"_s, u"Tells each step."_s},
                        {u"log"_s, u"Tells it to a file."_s, u"file"_s}});
    options.process(app);
    if (options.isSet(u"log"_s) && !std::freopen(qPrintable(options.value(u"log"_s)), "w", stderr))
        return EXIT_FAILURE;
    const auto plan = planOf(options);
    const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s);
    Logbook::begin(u"QT_QPA_PLATFORM=%1 QT_SCALE_FACTOR=%2 %3 --seed %4 --steps %5%6"_s
                       .arg(QGuiApplication::platformName(), scale, QString::fromLocal8Bit(argv[0]))
                       .arg(plan.seed)
                       .arg(plan.first + plan.count)
                       .arg(plan.first ? u" --from %1"_s.arg(plan.first) : QString()),
                   options.isSet(u"verbose"_s));

    Litter litter(QStringLiteral(PLUMARA_SOURCE_FOLDER));
    // Permissions hold; and another person cannot write where the tests usually do.
    qputenv("TMPDIR", "/tmp");
#ifndef Q_OS_WIN
    const OrdinaryUser user;
#endif
    const ScratchHome home;
    const QString temporary = home.path(u"tmp"_s);
    QDir().mkpath(temporary);
    qputenv("TMPDIR", QFile::encodeName(temporary));
    QDir::setCurrent(home.path());
    Browser browser;
    QDesktopServices::setUrlHandler(u"https"_s, &browser, "open");

    QApplication::setCursorFlashTime(0);
    if constexpr (VirtualClock::isThere) {
        if (!plan.realTime)
            VirtualClock::begin();
    }
    const auto noPages = qScopeGuard([] { QDesktopServices::unsetUrlHandler(u"https"_s); });
    Monkey monkey(plan, litter, home.path(), home.dataPath());
    Memory memory;
    int starts = 0;
    while (!monkey.isDone()) {
        litter.spread(home.path(), home.dataPath());
        run(monkey);
        ++starts;
        memory.note(monkey.steps());
    }
    Litter::lock(home.dataPath(), false);
    const auto more = memory.growth();
    const QString growth = more ? u"%1 KiB more memory"_s.arg(*more / 1024) : u"memory unknown"_s;
    if (!memory.isTolerable())
        Logbook::complain(u"memory does not grow without end: "_s + growth);
    Logbook::end();
    std::fprintf(stderr, "seed %u: %u steps, %d starts, %s\n", plan.seed, monkey.steps(), starts,
                 qPrintable(growth));
    return EXIT_SUCCESS;
}

#include "main.moc"
