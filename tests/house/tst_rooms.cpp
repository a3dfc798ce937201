// Holds the code to the table of rooms in docs/architecture.md: who may include and link whom.
#include "tests/support/main/registeredtest.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString root = QStringLiteral(PLUMARA_SOURCE_FOLDER);

QString textOf(const QString &path)
{
    QFile file(root + u'/' + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// All that \a pattern captures in \a text.
QStringList captured(const QString &text, const QString &pattern)
{
    QStringList found;
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    auto matches = expression.globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

/// What a room may know.
struct Room
{
    QString name;
    QStringList rooms;
    QStringList modules; // of Qt, besides Core and Gui
};

/// The rows of the table of rooms: a row begins with the room in backticks and a slash; of its last
/// two cells, the first names the rooms that it may know, the second the modules of Qt.
QList<Room> roomsOf(const QString &document)
{
    const QString name = u"`([a-z]+)/`"_s;
    QList<Room> rooms;
    QList<QStringList> rows;
    for (const QString &line : document.split(u'\n')) {
        const QStringList cells = line.split(u" | "_s);
        if (line.startsWith(u"| `"_s) && cells.size() == 4 && !captured(cells[0], name).isEmpty())
            rows << cells;
    }
    QStringList all;
    for (const QStringList &cells : std::as_const(rows))
        all << captured(cells[0], name);
    for (const QStringList &cells : std::as_const(rows)) {
        QStringList known = captured(cells[2], name);
        if (cells[2].startsWith(u"everything"_s)) {
            // "everything but `home/`"
            QStringList others = all;
            for (const QString &left : std::as_const(known))
                others.removeAll(left);
            known = others;
        }
        rooms << Room{captured(cells[0], name).constFirst(), known,
                      captured(cells[3], u"\\b([A-Z][A-Za-z]+)\\b"_s)};
    }
    return rooms;
}

/// What the C++ file \a text of \a room includes and must not. In angle brackets stands what is not
/// ours, unless its path begins with one of \a folders.
QStringList forbiddenIncludes(const Room &room, const QString &text, const QStringList &folders)
{
    QStringList forbidden;
    QStringList paths = captured(text, u"^\\s*#\\s*include\\s+\"([^\"]+)\""_s);
    const QStringList bracketed = captured(text, u"^\\s*#\\s*include\\s+<([^>]+)>"_s);
    std::ranges::copy_if(bracketed, std::back_inserter(paths), [&folders](const QString &path) {
        return folders.contains(path.section(u'/', 0, 0));
    });
    for (const QString &path : std::as_const(paths)) {
        const QString other = path.contains(u'/') ? path.section(u'/', 0, 0) : QString();
        // What the form compiler and the meta-object compiler write lies in no room.
        const bool generated = other.isEmpty()
            && ((path.startsWith(u"ui_"_s) && path.endsWith(u".h"_s)) || path.endsWith(u".moc"_s));
        if (!generated && other != room.name && !room.rooms.contains(other))
            forbidden << path;
    }
    return forbidden;
}

/// What the build file \a text of \a room links and must not.
QStringList forbiddenLinks(const Room &room, QString text)
{
    text.remove(QRegularExpression(u"#[^\n]*"_s));
    const QStringList own = captured(text, u"add_library\\(plumara_(\\w+)"_s);
    QStringList forbidden;
    const QStringList libraries = captured(text, u"\\bplumara_(\\w+)\\b(?!\\s*\\()"_s);
    for (const QString &library : libraries) {
        if (library != u"settings"_s && library != room.name && !own.contains(library)
            && !room.rooms.contains(library)) {
            forbidden << u"plumara_"_s + library;
        }
    }
    const QStringList modules = captured(text, u"\\bQt6?::([A-Z]\\w*)"_s);
    for (const QString &module : modules) {
        if (module != u"Core"_s && module != u"Gui"_s && !room.modules.contains(module))
            forbidden << u"Qt6::"_s + module;
    }
    return forbidden;
}

} // namespace

class TestRooms : public QObject
{
    Q_OBJECT

private slots:
    void theTableIsRead();
    void everyFolderWithCodeIsInTheTable();
    void everyArrowPointsDownTheTable();
    void noRoomIncludesWhatItMayNotKnow_data() { addRooms(); }
    void noRoomIncludesWhatItMayNotKnow();
    void noRoomLinksWhatItMayNotKnow_data() { addRooms(); }
    void noRoomLinksWhatItMayNotKnow();
    void aForbiddenIncludeIsFound();
    void aForbiddenLinkIsFound();

private:
    const QList<Room> rooms = roomsOf(textOf(u"docs/architecture.md"_s));

    QStringList folders() const
    {
        QStringList names{u"tests"_s};
        for (const Room &room : rooms)
            names << room.name;
        return names;
    }
    void addRooms() const
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < int(rooms.size()); ++i)
            QTest::newRow(qPrintable(rooms[i].name)) << i;
    }
};

void TestRooms::theTableIsRead()
{
    const QString table = u"| room | what lives there | rooms | Qt |\n"
                          "| `top/` | the roof | everything | Widgets, Network |\n"
                          "| `side/` | a bench | everything but `top/` | none |\n"
                          "| `ground/` | the floor | nothing | none |\n"_s;
    const QList<Room> read = roomsOf(table);
    QCOMPARE(read.size(), 3);
    QCOMPARE(read[0].name, u"top"_s);
    QCOMPARE(read[0].rooms, QStringList({u"top"_s, u"side"_s, u"ground"_s}));
    QCOMPARE(read[0].modules, QStringList({u"Widgets"_s, u"Network"_s}));
    QCOMPARE(read[1].rooms, QStringList({u"side"_s, u"ground"_s}));
    QCOMPARE(read[2].rooms, QStringList());
    QVERIFY(read[2].modules.isEmpty());
}

void TestRooms::everyFolderWithCodeIsInTheTable()
{
    const QStringList folders = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders) {
        if (folder.startsWith(u"build"_s) || folder == u"tests"_s)
            continue;
        const bool code = QDirIterator(root + u'/' + folder, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                                       QDirIterator::Subdirectories)
                              .hasNext();
        const bool listed = std::ranges::count(rooms, folder, &Room::name) == 1;
        QVERIFY2(!code || listed, qPrintable(folder));
    }
}

void TestRooms::everyArrowPointsDownTheTable()
{
    for (qsizetype i = 0; i < rooms.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            const bool up = rooms[i].rooms.contains(rooms[j].name);
            QVERIFY2(!up, qPrintable(rooms[i].name + u" knows "_s + rooms[j].name));
        }
    }
}

void TestRooms::noRoomIncludesWhatItMayNotKnow()
{
    QFETCH(int, index);
    const Room &room = rooms[index];
    QStringList forbidden;
    QDirIterator files(root + u'/' + room.name, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = QDir(root).relativeFilePath(files.next());
        const QStringList includes = forbiddenIncludes(room, textOf(path), folders());
        for (const QString &include : includes)
            forbidden << path + u" includes "_s + include;
    }
    QVERIFY2(forbidden.isEmpty(), qPrintable(forbidden.join(u'\n')));
}

void TestRooms::noRoomLinksWhatItMayNotKnow()
{
    QFETCH(int, index);
    const Room &room = rooms[index];
    const QString buildFile = textOf(room.name + u"/CMakeLists.txt"_s);
    QVERIFY(!buildFile.isEmpty());
    const QStringList forbidden = forbiddenLinks(room, buildFile);
    QVERIFY2(forbidden.isEmpty(), qPrintable(room.name + u" links "_s + forbidden.join(u' ')));
}

void TestRooms::aForbiddenIncludeIsFound()
{
    const Room room{u"board"_s, {u"items"_s}, {}};
    QCOMPARE(forbiddenIncludes(room,
                               u"#include \"board/a.h\"\n"
                               "#include \"items/b.h\"\n"
                               "#include \"ui_board.h\"\n"
                               "#include <QString>\n"
                               "#include <other/e.h>\n"_s,
                               {u"app"_s}),
             QStringList());
    QCOMPARE(forbiddenIncludes(room,
                               u"#include \"board/a.h\"\n"
                               "  #  include \"home/b.h\"\n"
                               "#include \"c.h\"\n"
                               "#include <app/d.h>\n"_s,
                               {u"app"_s}),
             QStringList({u"home/b.h"_s, u"c.h"_s, u"app/d.h"_s}));
}

void TestRooms::aForbiddenLinkIsFound()
{
    const Room room{u"board"_s, {u"items"_s}, {u"Widgets"_s}};
    QCOMPARE(
        forbiddenLinks(room, u"plumara_room(board LINK plumara_items Qt6::Widgets) # Qt6::Sql"_s),
        QStringList());
    QCOMPARE(forbiddenLinks(room,
                            u"plumara_room(board LINK plumara_items plumara_home)\n"
                            "target_link_libraries(plumara_board Qt6::Network)\n"_s),
             QStringList({u"plumara_home"_s, u"Qt6::Network"_s}));
}

PLUMARA_GUILESS_TEST(TestRooms)
#include "tst_rooms.moc"
