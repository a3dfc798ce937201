// Rebuilding the data folder, and deleting all that it holds.

#include "home/removetree.h"
#include "tests/home/lockedfolder.h"
#include "tests/home/progresswatch.h"
#include "tests/support/dialogs/messagebox.h"
#include "tests/support/files/files.h"
#include "tests/support/home/homewindow.h"
#include "tests/support/main/datarows.h"
#include "tests/support/main/registeredtest.h"

#include <QAbstractItemModel>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpontaneKeyEvent>
#include <QTimer>
#include <QWindow>

#include <optional>

using namespace Qt::Literals::StringLiterals;

/// What a person does to send a dialog away.
using Attempt = void (*)(QWindow &dialog);

namespace {

const QString confirmTitle = u"Confirmar eliminación"_s;
const QString noRootFolder = u"No hubo datos por eliminar, la carpeta raíz no existe."_s;

/// Whether there is something of that name, be it a link that leads nowhere.
bool exists(const QString &path)
{
    return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
}

} // namespace

class TestDataFolder : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<HomeWindow>(); }
    void cleanup() { home.reset(); }

    // Rebuilding the folder
    void anExistingFolderIsLeftAlone();
    void aMissingFolderIsRebuilt();
    void aFolderThatCannotBeRebuiltIsReported();

    // Deleting everything
    void theQuestionIsAskedFirst();
    void withoutConsentNothingIsDeleted_data();
    void withoutConsentNothingIsDeleted();
    void withoutAFolderThereIsNothingToDelete();
    void aFileInTheFoldersPlaceIsNoFolder();
    void theBarShowsTenStepsAndThenTheFolderGoes();
    void deletingEndsTheProgramHalfASecondLater();
    void everythingInTheFolderGoes();
    void linksInTheFolderGoButNotWhatTheyLeadTo();
#ifndef Q_OS_WIN
    void aLinkInTheFoldersPlaceGoesButNotWhatItLeadsTo();
#endif
    void aFolderThatCannotBeDeletedIsReportedAndTheProgramGoesOn();
    void afterAFailureItCanBeTriedAgain();
    void aFileThatCannotBeRemovedIsToldOf();
    void aFolderThatVanishesMeanwhileIsDeleted();
    void nobodySendsTheProgressAway_data();
    void nobodySendsTheProgressAway();
    void quittingMeanwhileDeletesNothing();
    void theWindowMayGoWhileTheSlotStillRuns();

private:
    QString inFolder(const QString &name) const { return home->dataPath() + '/'_L1 + name; }
    /// Answers \a answers to the boxes that come when the button \a button is clicked.
    QList<BoxContents> boxesOf(const QString &button, const QStringList &answers)
    {
        home->window.NavSettings();
        const BoxSequence sequence(answers);
        home->click(button);
        return sequence.boxes();
    }

    std::unique_ptr<HomeWindow> home;
};

void TestDataFolder::anExistingFolderIsLeftAlone()
{
    writeFile(inFolder(u"board.vtrz"_s));
    const QSignalSpy rebuilt(home->child<QListWidget>(u"listWidget"_s)->model(),
                             &QAbstractItemModel::modelReset);
    const auto boxes = boxesOf(u"RedoFolder"_s, {u"OK"_s});
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].title, u"Carpeta existente"_s);
    QCOMPARE(boxes[0].text, u"La carpeta raíz ya existe y no es necesario reconstruirla."_s);
    QCOMPARE(boxes[0].icon, QMessageBox::Information);
    QCOMPARE(boxes[0].buttons, QStringList({u"OK"_s}));
    QCOMPARE(boxes[0].parent, &home->window);
    QVERIFY(exists(inFolder(u"board.vtrz"_s)));
    QCOMPARE(rebuilt.size(), 0);
}

void TestDataFolder::aMissingFolderIsRebuilt()
{
    QVERIFY(QDir(home->path(u"Documents"_s)).removeRecursively());
    const QSignalSpy rebuilt(home->child<QListWidget>(u"listWidget"_s)->model(),
                             &QAbstractItemModel::modelReset);
    const auto boxes = boxesOf(u"RedoFolder"_s, {u"OK"_s});
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].title, u"Éxito"_s);
    QCOMPARE(boxes[0].text, u"La carpeta raíz ha sido reconstruida correctamente."_s);
    QCOMPARE(boxes[0].icon, QMessageBox::Information);
    QCOMPARE(boxes[0].buttons, QStringList({u"OK"_s}));
    QCOMPARE(boxes[0].parent, &home->window);
    QVERIFY(QFileInfo(home->dataPath()).isDir());
    QCOMPARE(rebuilt.size(), 0);
}

void TestDataFolder::aFolderThatCannotBeRebuiltIsReported()
{
    QVERIFY(QDir(home->dataPath()).removeRecursively());
    writeFile(home->dataPath());
    const auto boxes = boxesOf(u"RedoFolder"_s, {u"OK"_s});
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes[0].title, u"Error"_s);
    QCOMPARE(boxes[0].text, u"No se pudo reconstruir la carpeta raíz."_s);
    QCOMPARE(boxes[0].icon, QMessageBox::Critical);
    QCOMPARE(boxes[0].buttons, QStringList({u"OK"_s}));
    QCOMPARE(boxes[0].parent, &home->window);
    QVERIFY(QFileInfo(home->dataPath()).isFile());
}

void TestDataFolder::theQuestionIsAskedFirst()
{
    // Only recorded here: a comparison that fails would leave the question open for ever.
    BoxContents said;
    QString yes;
    QString no;
    bool presetIsNo = false;
    const ModalAnswer<QMessageBox> question([&](QMessageBox &box) {
        said = contentsOf(box);
        yes = box.button(QMessageBox::Yes)->text();
        no = box.button(QMessageBox::No)->text();
        presetIsNo = box.defaultButton() == box.button(QMessageBox::No);
        box.reject();
    });
    home->window.deleteAll();
    QVERIFY(question.seen());
    QCOMPARE(said.title, confirmTitle);
    QCOMPARE(said.icon, QMessageBox::NoIcon);
    QCOMPARE(said.text,
             u"¿De verdad desea eliminar todos los datos registrados, incluyendo proyectos y la "
             "carpeta raíz?\n\nUna vez los datos sean eliminados, el programa se cerrará en "
             "automático y deberá reiniciarlo manualmente."_s);
    QCOMPARE(said.parent, &home->window);
    QCOMPARE(said.buttons.size(), 2);
    QCOMPARE(yes, u"Aceptar"_s);
    QCOMPARE(no, u"Cancelar"_s);
    QVERIFY(presetIsNo);
}

void TestDataFolder::withoutConsentNothingIsDeleted_data()
{
    QTest::addColumn<QString>("answer");
    QTest::newRow("Cancelar") << u"Cancelar"_s;
    QTest::newRow("Escape") << QString();
}

void TestDataFolder::withoutConsentNothingIsDeleted()
{
    QFETCH(const QString, answer);
    writeFile(inFolder(u"board.vtrz"_s));
    const ProgressWatch watch(home->window, home->dataPath());
    QCOMPARE(boxesOf(u"DeleteAll"_s, {answer}).size(), 1);
    QCoreApplication::processEvents();
    QVERIFY(!watch.seen);
    QVERIFY(exists(inFolder(u"board.vtrz"_s)));
    QVERIFY(home->window.isVisible());
}

void TestDataFolder::withoutAFolderThereIsNothingToDelete()
{
    QVERIFY(QDir(home->dataPath()).removeRecursively());
    const ProgressWatch watch(home->window, home->dataPath());
    const auto boxes = boxesOf(u"DeleteAll"_s, {u"Aceptar"_s, u"OK"_s});
    QCOMPARE(boxes.size(), 2);
    QCOMPARE(boxes[1].title, u"Sin datos"_s);
    QCOMPARE(boxes[1].text, noRootFolder);
    QCOMPARE(boxes[1].icon, QMessageBox::Information);
    QCOMPARE(boxes[1].buttons, QStringList({u"OK"_s}));
    QCOMPARE(boxes[1].parent, &home->window);
    QVERIFY(!watch.seen);
    QVERIFY(home->window.isVisible());
}

void TestDataFolder::aFileInTheFoldersPlaceIsNoFolder()
{
    QVERIFY(QDir(home->dataPath()).removeRecursively());
    writeFile(home->dataPath());
    const auto boxes = boxesOf(u"DeleteAll"_s, {u"Aceptar"_s, u"OK"_s});
    QCOMPARE(boxes.size(), 2);
    QCOMPARE(boxes[1].text, noRootFolder);
    QVERIFY(QFileInfo(home->dataPath()).isFile());
}

void TestDataFolder::theBarShowsTenStepsAndThenTheFolderGoes()
{
    const ProgressWatch watch(home->window, home->dataPath(), ProgressWatch::OwnPace);
    QCOMPARE(boxesOf(u"DeleteAll"_s, {u"Aceptar"_s}).size(), 1);

    QVERIFY(watch.seen);
    QCOMPARE(watch.title, u"Eliminando datos"_s);
    QCOMPARE(watch.layout, u"QVBoxLayout"_s);
    QCOMPARE(watch.range, QList<int>({0, 100, 0}));
    QVERIFY(watch.modal);
    QFont bold = QApplication::font();
    bold.setBold(true);
    constexpr int buttonsOfTheFrame = 120; // pixels
    QVERIFY(watch.width >= QFontMetrics(bold).horizontalAdvance(watch.title) + buttonsOfTheFrame);
    QCOMPARE(watch.interval, 200);
    QCOMPARE(watch.steps.size(), 10);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(watch.steps[i].value, 10 * (i + 1));
        QVERIFY(watch.steps[i].folderExists);
        // A loaded machine may be late, never early; the watch began after the first step did.
        const auto due = 200 * (i + 1);
        QVERIFY2(watch.steps[i].time > due - 150,
                 qPrintable(u"%1 ms instead of %2"_s.arg(watch.steps[i].time).arg(due)));
    }
    QVERIFY(watch.goneAfterThem);
    QVERIFY(!exists(home->dataPath()));
    QTRY_VERIFY(!watch.dialog);
    QTRY_VERIFY(!home->window.isVisible());
}

void TestDataFolder::deletingEndsTheProgramHalfASecondLater()
{
    const ProgressWatch watch(home->window, home->dataPath());
    QElapsedTimer clock;
    QTimer::singleShot(0, &home->window, [&] {
        QCOMPARE(boxesOf(u"DeleteAll"_s, {u"Aceptar"_s}).size(), 1);
        clock.start();
        QVERIFY(home->window.isVisible());
    });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(clock.isValid());
    QVERIFY2(clock.elapsed() >= 450 && clock.elapsed() < 5000,
             qPrintable(u"%1 ms"_s.arg(clock.elapsed())));
    QVERIFY(!home->window.isVisible());
}

void TestDataFolder::everythingInTheFolderGoes()
{
    const ProgressWatch hurried(home->window, home->dataPath());
    writeFile(inFolder(u"board.vtrz"_s));
    writeFile(inFolder(u".hidden"_s));
    writeFile(inFolder(u"a/b/c/deep.txt"_s));
    writeFile(inFolder(u"a/protected.txt"_s));
    QFile::setPermissions(inFolder(u"a/protected.txt"_s), QFile::ReadOwner);
    writeFile(home->path(u"Documents/neighbour.txt"_s));
    boxesOf(u"DeleteAll"_s, {u"Aceptar"_s});
    QVERIFY(!exists(home->dataPath()));
    QVERIFY(exists(home->path(u"Documents/neighbour.txt"_s)));
}

void TestDataFolder::linksInTheFolderGoButNotWhatTheyLeadTo()
{
    const ProgressWatch hurried(home->window, home->dataPath());
    writeFile(home->path(u"outside/kept.txt"_s));
    QVERIFY(QFile::link(home->path(u"outside"_s), inFolder(u"to folder.lnk"_s)));
    QVERIFY(QFile::link(home->path(u"outside/kept.txt"_s), inFolder(u"to file.lnk"_s)));
    QVERIFY(QFile::link(home->path(u"nowhere"_s), inFolder(u"to nothing.lnk"_s)));
    QVERIFY(QFile::link(home->dataPath(), inFolder(u"to itself.lnk"_s)));
    boxesOf(u"DeleteAll"_s, {u"Aceptar"_s});
    QVERIFY(!exists(home->dataPath()));
    QVERIFY(exists(home->path(u"outside/kept.txt"_s)));
}

// On Windows a shortcut in the folder's place is no folder, and wine cannot make a junction.
#ifndef Q_OS_WIN
void TestDataFolder::aLinkInTheFoldersPlaceGoesButNotWhatItLeadsTo()
{
    const ProgressWatch hurried(home->window, home->dataPath());
    QVERIFY(QDir(home->dataPath()).removeRecursively());
    writeFile(home->path(u"outside/kept.txt"_s));
    QVERIFY(QFile::link(home->path(u"outside"_s), home->dataPath()));
    QCOMPARE(boxesOf(u"DeleteAll"_s, {u"Aceptar"_s}).size(), 1);
    QVERIFY(!exists(home->dataPath()));
    QVERIFY(exists(home->path(u"outside/kept.txt"_s)));
}
#endif

void TestDataFolder::aFolderThatCannotBeDeletedIsReportedAndTheProgramGoesOn()
{
    writeFile(inFolder(u"board.vtrz"_s));
    const LockedFolder locked(home->dataPath(), u"board.vtrz"_s);
    const ProgressWatch watch(home->window, home->dataPath());
    const BoxSequence sequence({u"Aceptar"_s, u"OK"_s});
    bool returned = false;
    bool returnedTooSoon = true;
    QString shownPage;

    QTimer::singleShot(0, &home->window, [&] {
        home->window.NavSettings();
        home->click(u"DeleteAll"_s);
        returned = true;
    });
    // A person goes on with the program and leaves it later.
    const Poll person([&](Poll &poll) {
        if (!watch.seen || watch.dialog)
            return;
        poll.stop();
        returnedTooSoon = returned;
        home->click(u"NavHelpBtn"_s);
        shownPage = home->child(u"HelpMenu"_s)->isVisible() ? u"help"_s : QString();
        home->window.close();
    });

    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(sequence.boxes().size(), 2);
    QCOMPARE(sequence.boxes()[1].title, u"Error"_s);
    QCOMPARE(sequence.boxes()[1].text, u"No se pudo eliminar la carpeta raíz."_s);
    QCOMPARE(sequence.boxes()[1].icon, QMessageBox::Critical);
    QCOMPARE(sequence.boxes()[1].buttons, QStringList({u"OK"_s}));
    QVERIFY(watch.identity);
    QCOMPARE(sequence.boxes()[1].parent, watch.identity);
    QVERIFY(!returnedTooSoon);
    QVERIFY(returned); // closing the window ended that loop, too
    QCOMPARE(shownPage, u"help"_s);
    QVERIFY(exists(inFolder(u"board.vtrz"_s)));
}

void TestDataFolder::afterAFailureItCanBeTriedAgain()
{
    writeFile(inFolder(u"board.vtrz"_s));
    std::optional<LockedFolder> locked(std::in_place, home->dataPath(), u"board.vtrz"_s);
    const BoxSequence sequence({u"Aceptar"_s, u"OK"_s, u"Aceptar"_s});
    std::optional<ProgressWatch> watch(std::in_place, home->window, home->dataPath());
    int returned = 0;
    const auto deleteAll = [&] {
        home->window.NavSettings();
        home->click(u"DeleteAll"_s);
        ++returned;
    };
    QTimer::singleShot(0, &home->window, deleteAll);
    // A person sees the failure, removes its cause, and tries again while the first try still runs.
    const Poll person([&](Poll &poll) {
        if (!watch->seen || watch->dialog)
            return;
        poll.stop();
        locked.reset();
        watch.emplace(home->window, home->dataPath());
        QCOMPARE(returned, 0);
        deleteAll();
    });
    constexpr int stillRunning = 1;
    QTimer::singleShot(15'000, &home->window, [] { QCoreApplication::exit(stillRunning); });

    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(sequence.boxes().size(), 3);
    QCOMPARE(returned, 2);
    QCOMPARE(watch->steps.size(), 10);
    QVERIFY(!exists(home->dataPath()));
}

void TestDataFolder::aFileThatCannotBeRemovedIsToldOf()
{
    const QString board = inFolder(u"board.vtrz"_s);
    writeFile(board);
    {
        const LockedFolder locked(home->dataPath(), u"board.vtrz"_s);
        QVERIFY(!removeTree(QFileInfo(board)));
    }
    QVERIFY(removeTree(QFileInfo(board)));
    QVERIFY(!exists(board));
}

void TestDataFolder::aFolderThatVanishesMeanwhileIsDeleted()
{
    const ProgressWatch watch(home->window, home->dataPath());
    const Poll other([&](Poll &) {
        if (watch.steps.size() == 2)
            QDir(home->dataPath()).removeRecursively();
    });
    QCOMPARE(boxesOf(u"DeleteAll"_s, {u"Aceptar"_s}).size(), 1);
    QTRY_VERIFY(!home->window.isVisible());
}

void TestDataFolder::nobodySendsTheProgressAway_data()
{
    QTest::addColumn<Attempt>("attempt");
    addRow<Attempt>("by a key", [](QWindow &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    addRow<Attempt>("by its frame", [](QWindow &dialog) {
        // Closed by the program itself, it would go.
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        QCoreApplication::instance()->notify(&dialog, &close);
    });
}

void TestDataFolder::nobodySendsTheProgressAway()
{
    QFETCH(const Attempt, attempt);
    const ProgressWatch watch(home->window, home->dataPath());
    bool stayed = false;
    const Poll person([&](Poll &poll) {
        if (watch.steps.size() != 2)
            return;
        poll.stop();
        attempt(*watch.dialog->windowHandle());
        stayed = watch.dialog->isVisible();
    });
    QCOMPARE(boxesOf(u"DeleteAll"_s, {u"Aceptar"_s}).size(), 1);
    QVERIFY(stayed);
    QCOMPARE(watch.steps.size(), 10);
    QVERIFY(!watch.dialog || !watch.dialog->isVisible());
}

void TestDataFolder::quittingMeanwhileDeletesNothing()
{
    writeFile(inFolder(u"board.vtrz"_s));
    const ProgressWatch watch(home->window, home->dataPath());
    bool returned = false;
    QTimer::singleShot(0, &home->window, [&] {
        boxesOf(u"DeleteAll"_s, {u"Aceptar"_s});
        returned = true;
    });
    Poll person([&](Poll &) {
        if (watch.steps.size() >= 3)
            QCoreApplication::quit();
    });
    QCOMPARE(QApplication::exec(), 0);
    person.stop();
    QVERIFY(returned);
    // A step that was due in the same moment may still have come.
    const auto steps = watch.steps.size();
    QVERIFY(steps < 10);
    QTest::qWait(100); // longer than several hurried steps; time itself is what is tested
    QCOMPARE(watch.steps.size(), steps);
    QVERIFY(exists(inFolder(u"board.vtrz"_s)));
}

void TestDataFolder::theWindowMayGoWhileTheSlotStillRuns()
{
    auto *const window = new MainWindow;
    QPointer<MainWindow> guard(window);
    const BoxSequence sequence({u"Aceptar"_s});
    const ProgressWatch watch(*window, home->dataPath());
    const Poll end([&](Poll &) {
        if (watch.steps.size() == 2)
            delete guard;
    });
    window->deleteAll();
    QVERIFY(!guard);
    QVERIFY(exists(home->dataPath()));
}

PLUMARA_TEST(TestDataFolder)
#include "tst_datafolder.moc"
