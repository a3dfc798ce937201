#include "board/boardwindow.h"
#include "tests/home/homewindow.h"
#include "tests/support/messagebox.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QSignalSpy>
#include <QStyledItemDelegate>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int infoRole = Qt::UserRole;
constexpr int pathRole = Qt::UserRole + 1;

const QByteArray emptyBoard = R"({"items": []})";
const QByteArray boardWithANote = R"({"items": [{"type": "postit", "x": 100, "y": 100}]})";

void writeFile(const QString &path, const QByteArray &content, const QDateTime &changed = {})
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Cannot write %s.", qPrintable(path));
    file.flush();
    if (changed.isValid() && !file.setFileTime(changed, QFileDevice::FileModificationTime))
        qFatal("Cannot date %s.", qPrintable(path));
}

QDateTime march(int day, int hour = 14)
{
    return QDateTime(QDate(2026, 3, day), QTime(hour, 7));
}

/// Makes protected counting of connections available.
struct Connections : QObject
{
    static int count(const QObject &sender, const char *signal)
    {
        return (sender.*(&Connections::receivers))(signal);
    }
};

/// Closes every message box that comes while it lives, and keeps their texts.
class BoxCloser
{
public:
    BoxCloser()
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] {
            auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (box && box->isVisible()) {
                texts << box->text();
                box->close();
            }
        });
        timer.start(5);
    }
    QStringList texts;

private:
    QTimer timer;
};

} // namespace

class TestRecentBoards : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<HomeWindow>(); }
    void cleanup() { home.reset(); }

    // The list
    void anEmptyFolderGivesAnEmptyList();
    void aMissingFolderIsMadeSilently();
    void aRowHoldsNameInfoAndPath();
    void theNewestBoardComesFirst();
    void boardsOfTheSameTimeKeepTheOrderOfTheFolder();
    void otherFilesAndFoldersAreNotListed();
    void boardsAreListedAtStart();
    void twoThousandBoardsAreListedAtOnce();

    // The rows
    void everyRowIs60PixelsHigh();
    void evenRowsAreShaded();
    void theSelectedRowIsHighlighted();
    void aRowIsDrawnAsDesigned_data();
    void aRowIsDrawnAsDesigned();

    // Opening from the list
    void aSingleClickOpensTheBoard();
    void everyListingAddsAConnection();
    void oneClickOpensOneBoardHoweverOftenTheListWasBuilt();
    void severalBoardsOpenOneAfterAnother();
    void twoClicksInARowAreTwoClicks();
    void theSlotServesDirectCallsToo();
    void aClickOnNoBoardDoesNothing();
    void aVanishedBoardIsReportedOnceAndTheBoardWindowShown();
    void theListIsNotRefreshedWhenTheBoardCloses();

    // The two actions
    void newBoardShowsAnEmptyBoard();
    void newBoardAfterAnotherIsEmptyAgain();
    void theOpenDialogAsksForBoardFiles();
    void cancellingTheOpenDialogChangesNothing();
    void theChosenFileIsOpenedAndTheListLeftAlone();
    void aBrokenFileIsReportedAndTheBoardWindowShown();

private:
    QListWidget *list() const { return home->child<QListWidget>(u"listWidget"_s); }
    QStringList listed() const
    {
        QStringList names;
        for (int row = 0; row < list()->count(); ++row)
            names << list()->item(row)->text();
        return names;
    }
    QString boardPath(const QString &name) const { return home->dataPath() + '/'_L1 + name; }
    /// Boards 1 to \a count, the first one the newest.
    void writeBoards(int count)
    {
        for (int i = 1; i <= count; ++i)
            writeFile(boardPath(u"b%1.vtrz"_s.arg(i)), emptyBoard, march(count - i + 1));
        home->window.showProjects();
    }
    void clickRow(int row)
    {
        const QPoint middle = list()->visualItemRect(list()->item(row)).center();
        QTest::mouseClick(home->window.windowHandle(), Qt::LeftButton, {},
                          list()->viewport()->mapTo(&home->window, middle));
    }
    BoardWindow *board() const { return home->window.findChild<BoardWindow *>(); }
    QString boardName() const
    {
        return board()->findChild<QLabel *>(u"NombreProyectoTxt"_s)->text();
    }
    qsizetype boardItems() const
    {
        return board()->findChild<QGraphicsView *>(u"PizarraMain"_s)->scene()->items().size();
    }
    bool boardIsOpen() const
    {
        return board() && board()->isVisible() && !home->window.isVisible();
    }
    void closeBoard()
    {
        auto *const button = board()->findChild<QWidget *>(u"CloseBoardBtn"_s);
        QVERIFY(QTest::qWaitForWindowExposed(board()));
        QTest::mouseClick(board()->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(board(), button->rect().center()));
        QVERIFY(home->window.isVisible());
        QVERIFY(!board()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&home->window));
    }
    QImage drawnRow(int row) const
    {
        QCoreApplication::processEvents();
        return list()->viewport()->grab(list()->visualItemRect(list()->item(row))).toImage();
    }

    std::unique_ptr<HomeWindow> home;
};

void TestRecentBoards::anEmptyFolderGivesAnEmptyList()
{
    home->window.showProjects();
    QCOMPARE(list()->count(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestRecentBoards::aMissingFolderIsMadeSilently()
{
    QVERIFY(QDir(home->path(u"Documents"_s)).removeRecursively());
    home->window.showProjects();
    QVERIFY(QFileInfo(home->dataPath()).isDir());
    QCOMPARE(list()->count(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestRecentBoards::aRowHoldsNameInfoAndPath()
{
    writeFile(boardPath(u"Pizarra1.vtrz"_s), emptyBoard, march(5));
    home->window.showProjects();
    QCOMPARE(list()->count(), 1);
    const auto *const row = list()->item(0);
    QCOMPARE(row->type(), int(QListWidgetItem::Type));
    QCOMPARE(row->text(), u"Pizarra1.vtrz"_s);
    QCOMPARE(row->data(infoRole).toString(), QString(home->dataPath() + " - 05/03/2026 14:07"_L1));
    QCOMPARE(row->data(pathRole).toString(), boardPath(u"Pizarra1.vtrz"_s));
}

void TestRecentBoards::theNewestBoardComesFirst()
{
    writeFile(boardPath(u"a.vtrz"_s), emptyBoard, march(2));
    writeFile(boardPath(u"b.vtrz"_s), emptyBoard, march(3));
    writeFile(boardPath(u"c.vtrz"_s), emptyBoard, march(1));
    home->window.showProjects();
    QCOMPARE(listed(), QStringList({u"b.vtrz"_s, u"a.vtrz"_s, u"c.vtrz"_s}));
}

void TestRecentBoards::boardsOfTheSameTimeKeepTheOrderOfTheFolder()
{
    for (const auto &name : {u"m.vtrz"_s, u"z.vtrz"_s, u"a.vtrz"_s})
        writeFile(boardPath(name), emptyBoard, march(1));
    writeFile(boardPath(u"newer.vtrz"_s), emptyBoard, march(2));
    home->window.showProjects();
    QCOMPARE(listed(), QDir(home->dataPath()).entryList(QDir::Files, QDir::Time));
    QCOMPARE(listed().constFirst(), u"newer.vtrz"_s);
}

void TestRecentBoards::otherFilesAndFoldersAreNotListed()
{
    writeFile(boardPath(u"notes.txt"_s), "x");
    writeFile(boardPath(u"board.vtrz.bak"_s), emptyBoard);
    writeFile(boardPath(u"folder/inner.vtrz"_s), emptyBoard);
    QVERIFY(QDir(home->dataPath()).mkdir(u"x.vtrz"_s));
    writeFile(boardPath(u"board.vtrz"_s), emptyBoard);
    home->window.showProjects();
    QCOMPARE(listed(), QStringList({u"board.vtrz"_s}));
}

void TestRecentBoards::boardsAreListedAtStart()
{
    writeFile(boardPath(u"board.vtrz"_s), emptyBoard);
    const MainWindow second;
    QCOMPARE(second.findChild<QListWidget *>(u"listWidget"_s)->count(), 1);
}

void TestRecentBoards::twoThousandBoardsAreListedAtOnce()
{
    for (int i = 0; i < 2000; ++i)
        writeFile(boardPath(u"%1.vtrz"_s.arg(i)), emptyBoard);
    QElapsedTimer timer;
    timer.start();
    home->window.showProjects();
    home->window.grab();
    QVERIFY2(timer.elapsed() < 800, qPrintable(u"%1 ms"_s.arg(timer.elapsed())));
    QCOMPARE(list()->count(), 2000);
}

void TestRecentBoards::everyRowIs60PixelsHigh()
{
    writeBoards(3);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(list()->visualItemRect(list()->item(row)).height(), 60);

    QStyleOptionViewItem option;
    option.rect = QRect(3, 4, 321, 17);
    QCOMPARE(list()->itemDelegate()->sizeHint(option, list()->model()->index(0, 0)),
             QSize(321, 60));
}

void TestRecentBoards::evenRowsAreShaded()
{
    writeBoards(4);
    const QColor shade(0xf5, 0xf5, 0xf5);
    const QColor plain = list()->viewport()->grab(QRect(100, 270, 1, 1)).toImage().pixelColor(0, 0);
    QVERIFY(plain != shade);
    for (int row = 0; row < 4; ++row) {
        const QImage image = drawnRow(row);
        for (const QPoint corner : {QPoint(0, 0), QPoint(image.width() - 1, image.height() - 1)})
            QCOMPARE(image.pixelColor(corner), row % 2 == 0 ? shade : plain);
    }
}

void TestRecentBoards::theSelectedRowIsHighlighted()
{
    writeBoards(2);
    for (int row = 0; row < 2; ++row) {
        list()->setCurrentRow(row);
        const QImage image = drawnRow(row);
        QCOMPARE(image.pixelColor(image.width() - 1, 0), list()->palette().highlight().color());
    }
}

void TestRecentBoards::aRowIsDrawnAsDesigned_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("selected");
    QTest::newRow("even") << 0 << false;
    QTest::newRow("odd") << 1 << false;
    QTest::newRow("even selected") << 0 << true;
    QTest::newRow("odd selected") << 1 << true;
}

void TestRecentBoards::aRowIsDrawnAsDesigned()
{
    QFETCH(const int, row);
    QFETCH(const bool, selected);
    writeBoards(2);

    QStyleOptionViewItem option;
    option.rect = QRect(7, 11, 600, 60);
    option.palette.setColor(QPalette::Highlight, Qt::yellow);
    option.state.setFlag(QStyle::State_Selected, selected);
    option.state.setFlag(QStyle::State_HasFocus); // no focus frame is wanted
    const auto paintRow = [](auto paint) {
        QImage image(640, 80, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setFont(QFont(u"Montserrat"_s, 9));
        const QFont font = painter.font();
        paint(painter);
        if (painter.font() != font)
            qFatal("The painter comes back with another font.");
        painter.end();
        return image;
    };

    const QImage drawn = paintRow([&](QPainter &painter) {
        list()->itemDelegate()->paint(&painter, option, list()->model()->index(row, 0));
    });
    const QImage designed = paintRow([&](QPainter &painter) {
        painter.save();
        if (selected)
            painter.fillRect(option.rect, Qt::yellow);
        else if (row == 0)
            painter.fillRect(option.rect, QColor(u"#f5f5f5"_s));
        painter.drawPixmap(12, 16, QPixmap(u":/img/plumdoc.png"_s));
        QFont font = painter.font();
        font.setWeight(QFont::Weight(700));
        painter.setFont(font);
        painter.drawText(67, 36, list()->item(row)->text());
        font.setWeight(QFont::Weight(400));
        painter.setFont(font);
        painter.drawText(67, 53, list()->item(row)->data(infoRole).toString());
        painter.restore();
    });
    QCOMPARE(drawn, designed);
}

void TestRecentBoards::aSingleClickOpensTheBoard()
{
    writeFile(boardPath(u"note.vtrz"_s), boardWithANote, march(1));
    writeBoards(1);
    clickRow(1);
    QVERIFY(boardIsOpen());
    QCOMPARE(boardName(), u"note.vtrz"_s);
    QVERIFY(boardItems() > 0);
}

void TestRecentBoards::everyListingAddsAConnection()
{
    const char *const clicked = SIGNAL(itemClicked(QListWidgetItem *));
    const int before = Connections::count(*list(), clicked);
    for (int run = 1; run <= 3; ++run) {
        home->window.showProjects();
        QCOMPARE(Connections::count(*list(), clicked), before + run);
    }
    QCOMPARE(Connections::count(*list(), SIGNAL(itemDoubleClicked(QListWidgetItem *))), 0);
}

void TestRecentBoards::oneClickOpensOneBoardHoweverOftenTheListWasBuilt()
{
    writeBoards(5);
    for (int run = 0; run < 10; ++run)
        home->window.showProjects();
    const QSignalSpy rebuilt(list()->model(), &QAbstractItemModel::modelReset);
    clickRow(2);
    QVERIFY(boardIsOpen());
    QCOMPARE(boardName(), u"b3.vtrz"_s);
    QCOMPARE(rebuilt.size(), 1);
}

void TestRecentBoards::severalBoardsOpenOneAfterAnother()
{
    writeBoards(4);
    const BoardWindow *first = nullptr;
    for (const int row : {3, 0, 2, 1, 1}) {
        const QSignalSpy rebuilt(list()->model(), &QAbstractItemModel::modelReset);
        clickRow(row);
        QVERIFY(boardIsOpen());
        QCOMPARE(boardName(), u"b%1.vtrz"_s.arg(row + 1));
        QCOMPARE(rebuilt.size(), 1);
        if (!first)
            first = board();
        QCOMPARE(board(), first);
        closeBoard();
    }
}

void TestRecentBoards::twoClicksInARowAreTwoClicks()
{
    writeBoards(2);
    // Sent to the list itself, so that the program has no moment of rest between the two.
    for (const int row : {0, 1}) {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->visualItemRect(list()->item(row)).center());
        QCOMPARE(boardName(), u"b%1.vtrz"_s.arg(row + 1));
    }
}

void TestRecentBoards::theSlotServesDirectCallsToo()
{
    writeBoards(2);
    clickRow(0);
    for (const int row : {1, 0}) {
        home->window.onProjectDoubleClicked(list()->item(row));
        QCOMPARE(boardName(), u"b%1.vtrz"_s.arg(row + 1));
    }
}

void TestRecentBoards::aClickOnNoBoardDoesNothing()
{
    home->window.onProjectDoubleClicked(nullptr);
    list()->addItem(u"no path"_s);
    clickRow(0);
    QVERIFY(!board());
    QVERIFY(home->window.isVisible());
    QCOMPARE(listed(), QStringList({u"no path"_s}));
}

void TestRecentBoards::aVanishedBoardIsReportedOnceAndTheBoardWindowShown()
{
    writeBoards(3);
    home->window.showProjects();
    home->window.showProjects();
    QVERIFY(QFile::remove(boardPath(u"b2.vtrz"_s)));
    const BoxCloser boxes;
    clickRow(1);
    QCOMPARE(boxes.texts, QStringList({u"No se pudo abrir el archivo."_s}));
    QVERIFY(boardIsOpen());
    QCOMPARE(boardName(), u"b2.vtrz"_s);
    QCOMPARE(listed(), QStringList({u"b1.vtrz"_s, u"b3.vtrz"_s}));
}

void TestRecentBoards::theListIsNotRefreshedWhenTheBoardCloses()
{
    writeBoards(1);
    clickRow(0);
    writeFile(boardPath(u"later.vtrz"_s), emptyBoard);
    closeBoard();
    QCOMPARE(listed(), QStringList({u"b1.vtrz"_s}));
    clickRow(0);
    QCOMPARE(listed(), QStringList({u"later.vtrz"_s, u"b1.vtrz"_s}));
}

void TestRecentBoards::newBoardShowsAnEmptyBoard()
{
    home->click(u"NewProject"_s);
    QVERIFY(boardIsOpen());
    QCOMPARE(boardName(), u"Pizarra1.vrtz"_s);
    QCOMPARE(boardItems(), 0);
}

void TestRecentBoards::newBoardAfterAnotherIsEmptyAgain()
{
    writeBoards(1);
    clickRow(0);
    const auto *const first = board();
    closeBoard();
    home->click(u"NewProject"_s);
    QVERIFY(boardIsOpen());
    QCOMPARE(board(), first);
    QCOMPARE(boardName(), u"Pizarra1.vtrz"_s);
    QCOMPARE(boardItems(), 0);
}

void TestRecentBoards::theOpenDialogAsksForBoardFiles()
{
    QString title;
    QStringList filters;
    QWidget *parent = nullptr;
    const ModalAnswer<QFileDialog> answer([&](QFileDialog &dialog) {
        title = dialog.windowTitle();
        filters = dialog.nameFilters();
        parent = dialog.parentWidget();
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptOpen);
        QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFile);
        dialog.reject();
    });
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QCOMPARE(title, u"Abrir proyecto"_s);
    QCOMPARE(filters, QStringList({u"Pizarra de Plumara (*.vtrz)"_s}));
    QCOMPARE(parent, &home->window);
}

void TestRecentBoards::cancellingTheOpenDialogChangesNothing()
{
    writeBoards(1);
    const QSignalSpy rebuilt(list()->model(), &QAbstractItemModel::modelReset);
    const ModalAnswer<QFileDialog> answer([](QFileDialog &dialog) { dialog.reject(); });
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QVERIFY(home->window.isVisible());
    QVERIFY(!board());
    QCOMPARE(rebuilt.size(), 0);
}

void TestRecentBoards::theChosenFileIsOpenedAndTheListLeftAlone()
{
    const QString path = home->path(u"elsewhere/plan.vtrz"_s);
    writeFile(path, boardWithANote);
    writeFile(boardPath(u"unlisted.vtrz"_s), emptyBoard);
    const ModalAnswer<QFileDialog> answer([&](QFileDialog &dialog) {
        dialog.selectFile(path);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QVERIFY(boardIsOpen());
    QCOMPARE(boardName(), u"plan.vtrz"_s);
    QVERIFY(boardItems() > 0);
    QCOMPARE(list()->count(), 0);
}

void TestRecentBoards::aBrokenFileIsReportedAndTheBoardWindowShown()
{
    const QString path = home->path(u"broken.vtrz"_s);
    writeFile(path, "no board");
    std::unique_ptr<BoxCloser> boxes;
    const ModalAnswer<QFileDialog> answer([&](QFileDialog &dialog) {
        boxes = std::make_unique<BoxCloser>();
        dialog.selectFile(path);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    home->click(u"ImportProject"_s);
    QVERIFY(answer.seen());
    QCOMPARE(boxes->texts, QStringList({u"El archivo no tiene un formato válido."_s}));
    QVERIFY(boardIsOpen());
    QCOMPARE(boardName(), u"broken.vtrz"_s);
}

QTEST_MAIN(TestRecentBoards)
#include "tst_recentboards.moc"
