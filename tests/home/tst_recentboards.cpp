// The list of recent boards: which it holds, in which order, and how its rows are drawn.

#include "home/boardlist.h"
#include "tests/home/paintcount.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/files/files.h"
#include "tests/support/home/boardshome.h"
#include "tests/support/look/contrast.h"
#include "tests/support/look/ink.h"
#include "tests/support/main/registeredtest.h"

#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int infoRole = Qt::UserRole;
constexpr int pathRole = Qt::UserRole + 1;

/// For as long as it lives, the desktop's theme has no icon but a magenta one named \c iconName.
class MagentaTheme
{
public:
    explicit MagentaTheme(const QString &iconName)
    {
        const QString theme = folder.filePath(u"magenta"_s);
        writeFile(theme + u"/index.theme"_s,
                  "[Icon Theme]\nName=magenta\nDirectories=64x64\n\n[64x64]\nSize=64\n");
        QDir(theme).mkdir(u"64x64"_s);
        QImage icon(64, 64, QImage::Format_RGB32);
        icon.fill(Qt::magenta);
        if (!icon.save(theme + u"/64x64/"_s + iconName + u".png"_s))
            qFatal("Cannot save the icon.");
        QIcon::setThemeSearchPaths({folder.path()});
        QIcon::setFallbackThemeName({});
        QIcon::setThemeName(u"magenta"_s);
    }
    ~MagentaTheme()
    {
        QIcon::setThemeSearchPaths(paths);
        QIcon::setFallbackThemeName(fallback);
        QIcon::setThemeName(name);
    }
    Q_DISABLE_COPY_MOVE(MagentaTheme)

private:
    const QStringList paths = QIcon::themeSearchPaths();
    const QString fallback = QIcon::fallbackThemeName();
    const QString name = QIcon::themeName();
    QTemporaryDir folder;
};

} // namespace

class TestRecentBoards : public QObject
{
    Q_OBJECT

private slots:
    void init() { home = std::make_unique<BoardsHome>(); }
    void cleanup() { home.reset(); }

    // The list
    void anEmptyFolderGivesAnEmptyList();
    void aMissingFolderIsMadeSilently();
    void aDataFolderThatCannotBeMadeLeavesTheListEmpty();
    void aRowHoldsNameInfoAndPath();
    void aRowIsDatedInTheDefaultLocale();
    void theNewestBoardComesFirst();
    void boardsOfTheSameTimeKeepTheOrderOfTheFolder();
    void otherFilesAndFoldersAreNotListed();
    void boardsAreListedAtStart();

    // An empty list
    void anEmptyListSaysWhereBoardsWillAppear();
    void theTextOfAnEmptyListStandsInItsMiddle();
    void anotherTextIsShownAtOnce();
    void aTextThatIsTooLongIsCutInItsMiddle();
    void thePlaceOfTheBoardsIsCutWhereItIsTooLong();

    // The rows
    void everyRowIs60PixelsHigh();
    void rowsAreAsWideAsTheListShows_data();
    void rowsAreAsWideAsTheListShows();
    void evenRowsAreShaded();
    void theSelectedRowIsHighlighted();
    void aRowIsDrawnAsDesigned_data();
    void aRowIsDrawnAsDesigned();
    void markupInANameIsShownAsItWasTyped();
    void theDesktopsOwnDocumentIconIsPreferred();
    void theDocumentIconIsLookedUpOnceForAllRows();

private:
    std::unique_ptr<BoardsHome> home;
};

void TestRecentBoards::anEmptyFolderGivesAnEmptyList()
{
    home->window.showProjects();
    QCOMPARE(home->list()->count(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestRecentBoards::aMissingFolderIsMadeSilently()
{
    QVERIFY(QDir(home->path(u"Documents"_s)).removeRecursively());
    home->window.showProjects();
    QVERIFY(QFileInfo(home->dataPath()).isDir());
    QCOMPARE(home->list()->count(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestRecentBoards::aDataFolderThatCannotBeMadeLeavesTheListEmpty()
{
    QVERIFY(QDir(home->path(u"Documents"_s)).removeRecursively());
    writeFile(home->path(u"Documents"_s)); // in the way
    home->window.showProjects();
    QCOMPARE(home->list()->count(), 0);
    QVERIFY(!QApplication::activeModalWidget());
    // Nor at a start.
    const MainWindow next;
    QCOMPARE(next.findChild<QListWidget *>(u"listWidget"_s)->count(), 0);
}

void TestRecentBoards::aRowHoldsNameInfoAndPath()
{
    BoardFile::write(home->boardPath(u"Pizarra1.vtrz"_s), {}, march(5));
    home->window.showProjects();
    QCOMPARE(home->list()->count(), 1);
    const auto *const row = home->list()->item(0);
    QCOMPARE(row->type(), int(QListWidgetItem::Type));
    QCOMPARE(row->text(), u"Pizarra1.vtrz"_s);
    QCOMPARE(row->data(infoRole).toString(), QString(home->dataPath() + " - 05/03/2026 14:07"_L1));
    QCOMPARE(row->data(pathRole).toString(), home->boardPath(u"Pizarra1.vtrz"_s));
}

void TestRecentBoards::aRowIsDatedInTheDefaultLocale()
{
    BoardFile::write(home->boardPath(u"Pizarra1.vtrz"_s), {}, march(5));
    const QLocale mexican;
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    home->window.showProjects();
    QLocale::setDefault(mexican);
    QVERIFY(home->list()->item(0)->data(infoRole).toString().endsWith(u" - ٠٥/٠٣/٢٠٢٦ ١٤:٠٧"_s));
}

void TestRecentBoards::theNewestBoardComesFirst()
{
    BoardFile::write(home->boardPath(u"a.vtrz"_s), {}, march(2));
    BoardFile::write(home->boardPath(u"b.vtrz"_s), {}, march(3));
    BoardFile::write(home->boardPath(u"c.vtrz"_s), {}, march(1));
    home->window.showProjects();
    QCOMPARE(home->listed(), QStringList({u"b.vtrz"_s, u"a.vtrz"_s, u"c.vtrz"_s}));
}

void TestRecentBoards::boardsOfTheSameTimeKeepTheOrderOfTheFolder()
{
    for (const auto &name : {u"m.vtrz"_s, u"z.vtrz"_s, u"a.vtrz"_s})
        BoardFile::write(home->boardPath(name), {}, march(1));
    BoardFile::write(home->boardPath(u"newer.vtrz"_s), {}, march(2));
    home->window.showProjects();
    QCOMPARE(home->listed(), QDir(home->dataPath()).entryList(QDir::Files, QDir::Time));
    QCOMPARE(home->listed().constFirst(), u"newer.vtrz"_s);
}

void TestRecentBoards::otherFilesAndFoldersAreNotListed()
{
    writeFile(home->boardPath(u"notes.txt"_s), "x");
    BoardFile::write(home->boardPath(u"board.vtrz.bak"_s));
    BoardFile::write(home->boardPath(u"folder/inner.vtrz"_s));
    QVERIFY(QDir(home->dataPath()).mkdir(u"x.vtrz"_s));
    BoardFile::write(home->boardPath(u"board.vtrz"_s));
    home->window.showProjects();
    QCOMPARE(home->listed(), QStringList({u"board.vtrz"_s}));
}

void TestRecentBoards::boardsAreListedAtStart()
{
    BoardFile::write(home->boardPath(u"board.vtrz"_s));
    const MainWindow second;
    QCOMPARE(second.findChild<QListWidget *>(u"listWidget"_s)->count(), 1);
}

void TestRecentBoards::anEmptyListSaysWhereBoardsWillAppear()
{
    auto *const viewport = home->list()->viewport();
    const QRect ink = inkOf(viewport->grab().toImage());
    // Two lines in the middle.
    QVERIFY(ink.height() > 20 && ink.height() < 60);
    QVERIFY((ink.center() - viewport->rect().center()).manhattanLength() < 12);
    const double contrast =
        Contrast::in(home->window, ink.translated(viewport->mapTo(&home->window, QPoint())));
    QVERIFY(contrast >= Contrast::enough);
    QVERIFY(contrast < 10); // quietly

    home->writeBoards(1);
    const QRect belowTheRow = viewport->rect().adjusted(0, 60, 0, 0);
    QVERIFY(inkOf(viewport->grab(belowTheRow).toImage()).isEmpty());

    QFile::remove(home->boardPath(u"b1.vtrz"_s));
    home->window.showProjects();
    QCOMPARE(inkOf(viewport->grab().toImage()), ink);
}

void TestRecentBoards::theTextOfAnEmptyListStandsInItsMiddle()
{
    auto *const viewport = home->list()->viewport();
    QLabel label(u"Aquí aparecerán las pizarras que guarde en\n%1"_s.arg(home->dataPath()));
    label.setFont(viewport->font());
    label.setAlignment(Qt::AlignCenter);
    label.resize(viewport->size());
    QCOMPARE(inkOf(viewport->grab().toImage()), inkOf(label.grab().toImage()));
}

void TestRecentBoards::anotherTextIsShownAtOnce()
{
    auto *const list = static_cast<BoardList *>(home->list());
    QCoreApplication::processEvents();
    const PaintCount painted(*list->viewport());
    list->setPlaceholder(u"Aquí aparecerán las pizarras"_s);
    QTRY_VERIFY(painted.count > 0);
}

void TestRecentBoards::aTextThatIsTooLongIsCutInItsMiddle()
{
    const auto shown = [this](QChar first, QChar middle, QChar last) {
        const QString part(150, u'n');
        auto *const list = static_cast<BoardList *>(home->list());
        list->setPlaceholder(first + part + middle + part + last);
        return list->viewport()->grab().toImage();
    };
    const QImage text = shown(u'n', u'n', u'n');
    QCOMPARE(shown(u'n', u'o', u'n'), text);
    QVERIFY(shown(u'o', u'n', u'n') != text);
    QVERIFY(shown(u'n', u'n', u'o') != text);
}

void TestRecentBoards::thePlaceOfTheBoardsIsCutWhereItIsTooLong()
{
#ifdef Q_OS_WIN
    QSKIP("The home folder is not where a variable says.");
#endif
    const ScratchHome scratch;
    const QByteArray before = qgetenv("HOME");
    const QString deep = scratch.path(QString(150, u'x'));
    QVERIFY(QDir().mkpath(deep));
    qputenv("HOME", QFile::encodeName(deep));
    const MainWindow deepHome;
    qputenv("HOME", before);

    const auto *const viewport = deepHome.findChild<QListWidget *>(u"listWidget"_s)->viewport();
    const QRect ink = inkOf(const_cast<QWidget *>(viewport)->grab().toImage());
    QVERIFY(ink.width() > 600);
    constexpr int overhang = 2; // pixels, by which a letter may reach out of the place it takes
    QVERIFY(ink.left() >= 20 - overhang && ink.right() <= viewport->width() - 20 + overhang);
}

void TestRecentBoards::everyRowIs60PixelsHigh()
{
    home->writeBoards(3);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(home->list()->visualItemRect(home->list()->item(row)).height(), 60);

    QStyleOptionViewItem option;
    option.rect = QRect(3, 4, 321, 17);
    QCOMPARE(home->list()->itemDelegate()->sizeHint(option, home->list()->model()->index(0, 0)),
             QSize(321, 60));
}

void TestRecentBoards::rowsAreAsWideAsTheListShows_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("all seen") << 5;
    QTest::newRow("with a bar beside them") << 6;
    QTest::newRow("many") << 40;
}

void TestRecentBoards::rowsAreAsWideAsTheListShows()
{
    QFETCH(const int, count);
    home->writeBoards(count);
    const auto *const list = home->list();
    QTRY_COMPARE(list->visualItemRect(list->item(0)).width(), list->viewport()->width());
    QCOMPARE(list->verticalScrollBar()->isVisible(), count > 5);
    QVERIFY(!list->horizontalScrollBar()->isVisible());
    QCOMPARE(list->horizontalScrollBar()->maximum(), 0);

    // Also where they were there before the window.
    MainWindow next;
    next.show();
    QVERIFY(QTest::qWaitForWindowExposed(&next));
    const auto *const other = next.findChild<QListWidget *>(u"listWidget"_s);
    QTRY_VERIFY(!other->horizontalScrollBar()->isVisible());
}

void TestRecentBoards::evenRowsAreShaded()
{
    home->writeBoards(4);
    const QColor shade(0xf5, 0xf5, 0xf5);
    const QColor plain =
        home->list()->viewport()->grab(QRect(100, 270, 1, 1)).toImage().pixelColor(0, 0);
    QVERIFY(plain != shade);
    for (int row = 0; row < 4; ++row) {
        const QImage image = home->drawnRow(row);
        for (const QPoint corner : {QPoint(0, 0), QPoint(image.width() - 1, image.height() - 1)})
            QCOMPARE(image.pixelColor(corner), row % 2 == 0 ? shade : plain);
    }
}

void TestRecentBoards::theSelectedRowIsHighlighted()
{
    home->writeBoards(2);
    for (int row = 0; row < 2; ++row) {
        home->list()->setCurrentRow(row);
        const QImage image = home->drawnRow(row);
        QCOMPARE(image.pixelColor(image.width() - 1, 0),
                 home->list()->palette().highlight().color());
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
    const MagentaTheme withoutADocument(u"another"_s);
    home = std::make_unique<BoardsHome>();
    home->writeBoards(2);

    QStyleOptionViewItem option;
    option.rect = QRect(7, 11, 600, 60);
    const QBrush highlight(Qt::yellow, Qt::Dense4Pattern);
    option.palette.setBrush(QPalette::Highlight, Qt::red);
    option.palette.setBrush(QPalette::Inactive, QPalette::Highlight, highlight);
    option.palette.setCurrentColorGroup(QPalette::Inactive);
    option.state.setFlag(QStyle::State_Selected, selected);
    option.state.setFlag(QStyle::State_HasFocus); // no focus frame is wanted
    const auto paintRow = [](auto paint) {
        QImage image(640, 80, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setFont(QFont(u"Montserrat"_s, 9, QFont::Light));
        const QFont font = painter.font();
        paint(painter);
        if (painter.font() != font)
            qFatal("The painter comes back with another font.");
        painter.end();
        return image;
    };

    const QImage drawn = paintRow([&](QPainter &painter) {
        home->list()->itemDelegate()->paint(&painter, option, home->list()->model()->index(row, 0));
    });
    const QImage designed = paintRow([&](QPainter &painter) {
        painter.save();
        if (selected)
            painter.fillRect(option.rect, highlight);
        else if (row == 0)
            painter.fillRect(option.rect, QColor(u"#f5f5f5"_s));
        painter.drawPixmap(12, 16, QPixmap(u":/img/plumdoc.png"_s));
        QFont font = painter.font();
        font.setWeight(QFont::Weight(700));
        painter.setFont(font);
        painter.drawText(67, 36, home->list()->item(row)->text());
        font.setWeight(QFont::Weight(400));
        painter.setFont(font);
        painter.drawText(67, 53, home->list()->item(row)->data(infoRole).toString());
        painter.restore();
    });
    QCOMPARE(drawn, designed);
}

void TestRecentBoards::markupInANameIsShownAsItWasTyped()
{
#ifdef Q_OS_WIN
    QSKIP("No file has such a name here.");
#endif
    // As markup, both would look the same.
    const auto drawn = [this](const QString &name) {
        const QString path = BoardFile::write(home->boardPath(name), {}, march(5));
        home->window.showProjects();
        QImage row = home->drawnRow(0);
        QFile::remove(path);
        return row;
    };
    const QImage row = drawn(u"<p>x<p>.vtrz"_s);
    QCOMPARE(drawn(u"<p>x<p>.vtrz"_s), row);
    QVERIFY(drawn(u"<h1>x<h1>.vtrz"_s) != row);
    QVERIFY(drawn(u"<p><p>x.vtrz"_s) != row);
}

void TestRecentBoards::theDesktopsOwnDocumentIconIsPreferred()
{
    const MagentaTheme withADocument(u"document"_s);
    home = std::make_unique<BoardsHome>();
    home->writeBoards(1);
    const QImage row = home->drawnRow(0);
    for (const int x : {5, 20, 49})
        QCOMPARE(row.pixelColor(x, x), QColor(Qt::magenta));
    for (const int x : {4, 50})
        QCOMPARE(row.pixelColor(x, x), QColor(0xf5, 0xf5, 0xf5));
}

void TestRecentBoards::theDocumentIconIsLookedUpOnceForAllRows()
{
    const MagentaTheme withoutADocument(u"another"_s);
    home = std::make_unique<BoardsHome>();
    home->writeBoards(1);
    const QImage before = home->drawnRow(0);

    // A look-up for every row would find the icon of this theme, and be slow with many boards.
    const MagentaTheme withADocument(u"document"_s);
    home->window.showProjects();
    QCOMPARE(home->drawnRow(0), before);
}

PLUMARA_TEST(TestRecentBoards)
#include "tst_recentboards.moc"
