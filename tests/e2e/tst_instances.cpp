// Starts of the real program that meet: at the same time, after a death, while one ends, as two people.

#include "tests/support/files/boardfiles.h"
#include "tests/support/system/watchedfile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <memory>
#include <vector>

#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patience = 60'000; // ms, for whatever a start has to do on a busy machine

/// A machine of its own for the programs that are started on it: a temporary folder, which is what
/// instances share, and homes. Everybody may come there.
class Machine
{
public:
    Machine()
    {
        QDir().mkdir(temporaryFolder());
        setMode(path(), 0755);
        setMode(temporaryFolder(), 01777);
        for (const QString &file : {QStringLiteral(PLUMARA_EXE), QStringLiteral(INTERLOPER)}) {
            if (!QFile::copy(file, path(QFileInfo(file).fileName())))
                qFatal("The program cannot be copied.");
        }
    }

    QString path(const QString &name = {}) const { return folder.filePath(name); }
    QString temporaryFolder() const { return path(u"tmp"_s); }
    static void setMode(const QString &path, mode_t mode)
    {
        if (::chmod(QFile::encodeName(path).constData(), mode) != 0)
            qFatal("The rights cannot be changed.");
    }
    /// What the system gives the sessions of \a person.
    QString sessionFolder(uid_t person)
    {
        const QString session = path(u"session%1"_s.arg(person));
        if (QDir().mkdir(session)) {
            setMode(session, 0700);
            give(session, person);
        }
        return session;
    }
    static void give(const QString &path, uid_t person)
    {
        if (person != ::geteuid()
            && ::chown(QFile::encodeName(path).constData(), person, person) != 0)
            qFatal("The folder cannot be given away.");
    }
    QString newHome()
    {
        const QString home = path(u"home%1"_s.arg(++homes));
        QDir().mkdir(home);
        return home;
    }

private:
    QTemporaryDir folder{u"/tmp/instances-XXXXXX"_s}; // without a blank, for the sake of LD_PRELOAD
    int homes = 0;
};

/// How a program is started.
struct Manner
{
    uid_t person = ::geteuid();
    int lastCall = 0; // the one in whose place it dies
    int delay = 0; // microseconds that each call takes longer, so that starts really meet
    QString board = u""_s; // that it names
};

/// One start of the program, in a home of its own.
class Start
{
public:
    explicit Start(Machine &machine, const Manner &manner = {})
        : home(machine.newHome())
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"HOME"_s, home);
        environment.insert(u"TMPDIR"_s, machine.temporaryFolder());
        environment.insert(u"XDG_RUNTIME_DIR"_s, machine.sessionFolder(manner.person));
        environment.insert(u"LD_PRELOAD"_s,
                           machine.path(QFileInfo(QStringLiteral(INTERLOPER)).fileName()));
        environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
        environment.insert(u"INTERLOPER_LAST_CALL"_s, QString::number(manner.lastCall));
        environment.insert(u"INTERLOPER_DELAY"_s, QString::number(manner.delay));
        process.setProcessEnvironment(environment);
        if (manner.person != ::geteuid())
            become(manner.person);
        process.start(machine.path(QFileInfo(QStringLiteral(PLUMARA_EXE)).fileName()),
                      manner.board.isEmpty() ? QStringList() : QStringList{manner.board});
    }

    /// Whether the program has come as far as to its home window, which makes the folder of the boards.
    bool hasGoneOn() const { return QDir(home + u"/Documents/OrvanePlumara"_s).exists(); }
    bool isOver() const { return process.state() == QProcess::NotRunning; }
    bool wasKilled() const { return isOver() && process.exitStatus() == QProcess::CrashExit; }
    bool endedWell() const { return isOver() && !wasKilled() && process.exitCode() == 0; }
    bool isSettled() const { return isOver() || hasGoneOn(); }

    /// Ends the program as soon as it runs.
    void end() { process.closeWriteChannel(); }
    void kill() { process.kill(); }
    void signal(int number) { ::kill(static_cast<pid_t>(process.processId()), number); }

private:
    void become(uid_t person)
    {
        Machine::give(home, person);
        process.setChildProcessModifier([person] {
            if (::setgroups(0, nullptr) != 0 || ::setgid(person) != 0 || ::setuid(person) != 0)
                ::_exit(1);
        });
    }

    QString home;
    QProcess process;
};

/// Starts at the same time, and how many of them go on and end well.
class Starts
{
public:
    Starts(Machine &machine, int count, const Manner &manner = {})
    {
        for (int i = 0; i < count; ++i)
            starts.push_back(std::make_unique<Start>(machine, manner));
    }

    auto goneOn() const { return count(&Start::hasGoneOn); }
    auto endedWell() const { return count(&Start::endedWell); }
    /// Waits until each has gone on or is over.
    bool settle() const
    {
        return QTest::qWaitFor([this] { return count(&Start::isSettled) == size(); }, patience);
    }
    /// Ends those that have gone on; whether all have ended well.
    bool end()
    {
        for (const auto &start : starts)
            start->end();
        return QTest::qWaitFor([this] { return endedWell() == size(); }, patience);
    }

private:
    qsizetype size() const { return std::ssize(starts); }
    qsizetype count(bool (Start::*state)() const) const
    {
        return std::ranges::count_if(starts,
                                     [state](const auto &start) { return ((*start).*state)(); });
    }

    std::vector<std::unique_ptr<Start>> starts;
};

bool goesOn(const Start &start)
{
    return QTest::qWaitFor([&start] { return start.isSettled(); }, patience) && !start.isOver();
}

bool isOver(const Start &start)
{
    return QTest::qWaitFor([&start] { return start.isOver(); }, patience);
}

bool endsWell(Start &start)
{
    start.end();
    return isOver(start) && start.endedWell();
}

/// A board on the machine, and whether a program opens it.
class NamedBoard
{
public:
    explicit NamedBoard(const Machine &machine)
        : path(BoardFile::write(machine.path(u"named.vtrz"_s)))
        , file(path)
    { }

    /// Whether another start of \a person that names the board ends well, and has it opened by the one
    /// that runs.
    bool reaches(Machine &machine, uid_t person = ::geteuid())
    {
        file.wasTouched();
        Start start(machine, {.person = person, .board = path});
        return isOver(start) && start.endedWell() && !start.hasGoneOn() && isOpened();
    }
    bool isOpened()
    {
        return QTest::qWaitFor([this] { return file.wasTouched(); }, patience);
    }

    const QString path;

private:
    WatchedFile file;
};

constexpr int meeting = 300; // microseconds, between any two steps of which another start comes

// Two that every system has, and that own nothing here.
constexpr uid_t someone = 1;
constexpr uid_t someoneElse = 2;

} // namespace

class TestInstances : public QObject
{
    Q_OBJECT

private slots:
    void ofFiftyAtOnceOneGoesOn_data();
    void ofFiftyAtOnceOneGoesOn();
    void afterADeathAnywhereOneGoesOn();
    void aSecondMayDieAnywhere();
    void whileOneEndsAtMostOneGoesOn();
    void peopleDoNotHinderEachOther();
    void whatAnotherPersonLeftBehindHindersNobody();
    void aFileThatAnotherPersonPutInTheWayHindersNobody();
    void whereNoSegmentCanBeMadeOneIsTakenToBeThere();
    void theOneThatHangsHoldsNobodyUp();
    void theOneThatRunsOpensWhatOthersName();
    void whereNobodyCanListenOneGoesOnAllTheSame();
};

void TestInstances::ofFiftyAtOnceOneGoesOn_data()
{
    QTest::addColumn<int>("delay");
    QTest::newRow("as fast as they are") << 0;
    QTest::newRow("slowly") << meeting;
}

void TestInstances::ofFiftyAtOnceOneGoesOn()
{
    QFETCH(const int, delay);
    constexpr int many = 50;
    Machine machine;
    QElapsedTimer timer;
    timer.start();
    Starts starts(machine, many, {.delay = delay});
    QVERIFY(starts.settle());
    // Five seconds where nothing else goes on, and more beside other tests and with sanitizers.
    qInfo("settled after %lld ms", timer.elapsed());
    QVERIFY(timer.elapsed() < 4 * 5000);
    QCOMPARE(starts.goneOn(), 1);
    QCOMPARE(starts.endedWell(), many - 1);
    QVERIFY(starts.end());
}

void TestInstances::afterADeathAnywhereOneGoesOn()
{
    Machine machine;
    NamedBoard board(machine);
    int call = 1;
    for (;; ++call) {
        Start start(machine, {.lastCall = call});
        start.end();
        QVERIFY(isOver(start));
        if (!start.wasKilled()) {
            QVERIFY(start.endedWell());
            break; // there is nothing left in its life
        }
        Starts next(machine, 3, {.delay = meeting});
        QVERIFY(next.settle());
        QVERIFY2(next.goneOn() == 1,
                 qPrintable(u"After a death at %1, %2 went on"_s.arg(call).arg(next.goneOn())));
        QVERIFY2(board.reaches(machine), qPrintable(u"after a death at %1"_s.arg(call)));
        QVERIFY(next.end());
    }
    QVERIFY2(call > 20, qPrintable(QString::number(call)));
}

void TestInstances::aSecondMayDieAnywhere()
{
    Machine machine;
    Start first(machine);
    QVERIFY(goesOn(first));
    int call = 1;
    for (;; call += 3) {
        Start second(machine, {.lastCall = call});
        QVERIFY(isOver(second));
        QVERIFY(!second.hasGoneOn());
        if (!second.wasKilled())
            break;
    }
    QVERIFY2(call > 20, qPrintable(QString::number(call)));
    Start third(machine);
    QVERIFY(isOver(third));
    QVERIFY(third.endedWell() && !third.hasGoneOn());
    QVERIFY(endsWell(first));
    Start next(machine);
    QVERIFY(goesOn(next));
    QVERIFY(endsWell(next));
}

void TestInstances::whileOneEndsAtMostOneGoesOn()
{
    Machine machine;
    for (int i = 0; i < 10; ++i) {
        Start first(machine, {.delay = meeting});
        QVERIFY(goesOn(first));
        Starts next(machine, 3, {.delay = meeting});
        QTest::qWait(i * 10); // they need some time for themselves before they meet
        QVERIFY(endsWell(first));
        // What comes now finds a machine of which everybody may be leaving.
        Starts last(machine, 1, {.delay = meeting});
        QVERIFY(next.settle() && last.settle());
        QCOMPARE(next.goneOn() + last.goneOn(), 1);
        QVERIFY(next.end() && last.end());
    }
}

void TestInstances::peopleDoNotHinderEachOther()
{
    if (::geteuid() != 0)
        QSKIP("Only root can start a program as somebody else.");
    Machine machine;
    Start ofSomeone(machine, {.person = someone});
    QVERIFY(goesOn(ofSomeone));
    for (const uid_t person : {someoneElse, ::geteuid()}) {
        Starts starts(machine, 3, {.person = person, .delay = meeting});
        QVERIFY(starts.settle());
        QCOMPARE(starts.goneOn(), 1);
        Start another(machine, {.person = someone});
        QVERIFY(isOver(another));
        QVERIFY(another.endedWell());
        QVERIFY(starts.end());
    }
    // The one that went on without a segment is known also when there could be one.
    Start ofSomeoneElse(machine, {.person = someoneElse});
    QVERIFY(goesOn(ofSomeoneElse));
    QVERIFY(endsWell(ofSomeone));
    Start another(machine, {.person = someoneElse});
    QVERIFY(isOver(another));
    QVERIFY(another.endedWell() && !another.hasGoneOn());
    QVERIFY(endsWell(ofSomeoneElse));
}

void TestInstances::whatAnotherPersonLeftBehindHindersNobody()
{
    if (::geteuid() != 0)
        QSKIP("Only root can start a program as somebody else.");
    Machine machine;
    Start ofSomeone(machine, {.person = someone});
    QVERIFY(goesOn(ofSomeone));
    ofSomeone.kill();
    QVERIFY(isOver(ofSomeone));
    for (const uid_t person : {someoneElse, someone, ::geteuid()}) {
        Starts starts(machine, 3, {.person = person, .delay = meeting});
        QVERIFY(starts.settle());
        QCOMPARE(starts.goneOn(), 1);
        QVERIFY(starts.end());
    }
}

void TestInstances::aFileThatAnotherPersonPutInTheWayHindersNobody()
{
    if (::geteuid() != 0)
        QSKIP("Only root can give a file away.");
    Machine machine;
    std::vector<std::unique_ptr<QFile>> files;
    for (const auto *purpose : {"turn", "place"}) {
        const QString path = machine.temporaryFolder()
            + u"/Plumara-%1.%2"_s.arg(someone).arg(QLatin1StringView(purpose));
        files.push_back(std::make_unique<QFile>(path));
        QVERIFY(files.back()->open(QIODevice::WriteOnly));
        Machine::setMode(path, 0666);
        QCOMPARE(::chown(QFile::encodeName(path).constData(), someoneElse, someoneElse), 0);
        QCOMPARE(::flock(files.back()->handle(), LOCK_EX), 0);
    }
    Starts starts(machine, 3, {.person = someone});
    QVERIFY(starts.settle());
    QCOMPARE(starts.goneOn(), 1);
    QVERIFY(starts.end());
}

void TestInstances::whereNoSegmentCanBeMadeOneIsTakenToBeThere()
{
    Machine machine;
    Machine::setMode(machine.temporaryFolder(), 0555);
    // Root may write everywhere.
    Start start(machine, {.person = ::geteuid() == 0 ? someone : ::geteuid()});
    QVERIFY(isOver(start));
    QVERIFY(start.endedWell() && !start.hasGoneOn());
}

void TestInstances::theOneThatHangsHoldsNobodyUp()
{
    constexpr int longest = 2000; // ms, that a start may be held up
    constexpr int busyMachine = 2000;
    Machine machine;
    NamedBoard board(machine);
    Start first(machine);
    QVERIFY(goesOn(first));
    first.signal(SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    constexpr int many = 5;
    Starts starts(machine, many, {.board = board.path});
    QVERIFY(starts.settle());
    const qint64 duration = timer.elapsed();
    first.signal(SIGCONT);
    QVERIFY2(duration < longest + busyMachine, qPrintable(QString::number(duration)));
    QCOMPARE(starts.endedWell(), many);
    QCOMPARE(starts.goneOn(), 0);
    // It goes on, and does what it was asked for.
    QVERIFY(board.isOpened());
    QVERIFY(endsWell(first));
}

void TestInstances::theOneThatRunsOpensWhatOthersName()
{
    Machine machine;
    NamedBoard board(machine);
    Start first(machine);
    QVERIFY(goesOn(first));
    QVERIFY(board.reaches(machine));
    QVERIFY(endsWell(first));
    if (::geteuid() != 0)
        QSKIP("Only root can start a program as somebody else.");
    // Each person's own.
    Start ofSomeone(machine, {.person = someone});
    Start ofSomeoneElse(machine, {.person = someoneElse});
    QVERIFY(goesOn(ofSomeone) && goesOn(ofSomeoneElse));
    QVERIFY(board.reaches(machine, someone));
    QVERIFY(endsWell(ofSomeone));
    QVERIFY(board.reaches(machine, someoneElse));
    QVERIFY(endsWell(ofSomeoneElse));
}

void TestInstances::whereNobodyCanListenOneGoesOnAllTheSame()
{
    Machine machine;
    const uid_t person = ::geteuid() == 0 ? someone : ::geteuid();
    // Each has a home of its own, and so no place in common.
    Machine::setMode(machine.sessionFolder(person), 0755);
    Starts starts(machine, 3, {.person = person});
    QVERIFY(starts.settle());
    QCOMPARE(starts.goneOn(), 1);
    QVERIFY(starts.end());
}

QTEST_GUILESS_MAIN(TestInstances)
#include "tst_instances.moc"
