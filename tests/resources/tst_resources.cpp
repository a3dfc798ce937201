// What the program carries with it: pictures, icon file, font, style sheet; and that the pictures
// are the ones that resources/art describes.

#include "tests/support/main/registeredtest.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
#include <QImage>
#include <QImageReader>
#include <QMap>
#include <QtEndian>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void everyPictureOfTheProgramShowsSomething_data();
    void everyPictureOfTheProgramShowsSomething();
    void pictureHasTheSizeOfTheTable_data();
    void pictureHasTheSizeOfTheTable();
    void everyCarriedPictureIsInTheTable();
    void recordedFileIsUnchangedSinceTheLastRendering_data();
    void recordedFileIsUnchangedSinceTheLastRendering();
    void everyDrawingAndPictureIsRecorded();
    void iconFileHoldsItsSixSizes();
    void largestIconIsStoredAsPng();
    void everySizeOfTheIconShowsSomething();
    void fontIsMontserrat();
    void styleSheetSetsTheFont();
    void theOnlyTranslationIsMexican();

private:
    /// The pictures of resources/art/sizes.txt and the sizes that it gives them.
    static QMap<QString, QList<QSize>> sizeTable();
    /// The files of resources/art/*.sha256, drawn and taken pictures with their sources, and their
    /// recorded checksums.
    static QMap<QString, QByteArray> recordedChecksums();
    static QString twiceAsLarge(const QString &picture);
    static QString inFolder(const QString &name);
};

static const QString iconFile = u":/img/orvaneplumaraico.ico"_s;

// Also true of pictures that are white, like the tick on a dark box.
static bool showsSomething(const QImage &image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x) {
            if (qAlpha(pixels.pixel(x, y)) > 127)
                return true;
        }
    }
    return false;
}

QString TestResources::inFolder(const QString &name)
{
    return QStringLiteral(RESOURCES_FOLDER "/") + name;
}

QString TestResources::twiceAsLarge(const QString &picture)
{
    return picture.chopped(4) + u"@2x.png"_s;
}

QMap<QString, QList<QSize>> TestResources::sizeTable()
{
    QMap<QString, QList<QSize>> table;
    QFile file(inFolder(u"art/sizes.txt"_s));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return table;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).simplified();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList cells = line.split(u' ');
        QList<QSize> &sizes = table[cells.value(1)];
        for (const QString &size : cells.value(2).split(u','))
            sizes << QSize(size.section(u'x', 0, 0).toInt(), size.section(u'x', 1).toInt());
    }
    return table;
}

QMap<QString, QByteArray> TestResources::recordedChecksums()
{
    QMap<QString, QByteArray> checksums;
    for (const QString &record : {u"art/rendered.sha256"_s, u"art/previews.sha256"_s}) {
        QFile file(inFolder(record));
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            continue;
        while (!file.atEnd()) {
            const QList<QByteArray> cells = file.readLine().simplified().split(' ');
            checksums.insert(QString::fromUtf8(cells.value(1)), cells.value(0));
        }
    }
    return checksums;
}

void TestResources::everyPictureOfTheProgramShowsSomething_data()
{
    QTest::addColumn<QString>("path");

    const char *const names[] = {
        "cursor",      "texto",    "lapiz",       "linea",      "imagen",     "borrador",
        "deshacer",    "rehacer",  "saveas",      "closeboard", "arrow",      "orvaneplumaraico",
        "plumbanner",  "icoboard", "settings",    "help",       "newproject", "import",
        "clear",       "checked",  "checkedb",    "unchecked",  "switch",     "delete",
        "plumdoc",     "update",   "menuhelp",    "postithelp", "pencilhelp", "linehelp",
        "imghelp",     "prehelp",  "borrahelp",   "closehelp",  "logobrandb", "presentation",
        "plumupdater", "critical", "information", "question",   "warning"};
    for (const char *name : names)
        QTest::newRow(name) << u":/img/%1.png"_s.arg(QLatin1StringView(name));
    QTest::newRow("AIicon") << u":/Imageres/AIicon.png"_s;
}

void TestResources::everyPictureOfTheProgramShowsSomething()
{
    QFETCH(QString, path);

    QVERIFY(showsSomething(QImage(path)));
    QVERIFY(showsSomething(QImage(twiceAsLarge(path))));
}

void TestResources::pictureHasTheSizeOfTheTable_data()
{
    QTest::addColumn<QString>("picture");
    QTest::addColumn<QSize>("size");

    const auto table = sizeTable();
    for (auto row = table.begin(); row != table.end(); ++row) {
        if (row.key().endsWith(u".png"))
            QTest::newRow(qPrintable(row.key())) << row.key() << row.value().constFirst();
    }
}

void TestResources::pictureHasTheSizeOfTheTable()
{
    QFETCH(QString, picture);
    QFETCH(QSize, size);

    QCOMPARE(QImage(u":/"_s + picture).size(), size);
    QCOMPARE(QImage(u":/"_s + twiceAsLarge(picture)).size(), size * 2);
}

void TestResources::everyCarriedPictureIsInTheTable()
{
    QStringList listed;
    const auto table = sizeTable();
    for (auto row = table.begin(); row != table.end(); ++row) {
        listed << u":/"_s + row.key();
        if (row.key().endsWith(u".png"))
            listed << u":/"_s + twiceAsLarge(row.key());
    }

    QStringList carried;
    for (const QString &folder : {u":/img"_s, u":/Imageres"_s}) {
        QDirIterator files(folder, QDir::Files);
        while (files.hasNext())
            carried << files.next();
    }

    std::ranges::sort(listed);
    std::ranges::sort(carried);
    QCOMPARE(carried, listed);
}

void TestResources::recordedFileIsUnchangedSinceTheLastRendering_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("checksum");

    const auto checksums = recordedChecksums();
    for (auto row = checksums.begin(); row != checksums.end(); ++row)
        QTest::newRow(qPrintable(row.key())) << row.key() << row.value();
}

void TestResources::recordedFileIsUnchangedSinceTheLastRendering()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, checksum);

    QFile file(inFolder(name));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
    const QByteArray actual =
        QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256).toHex();
    QVERIFY2(
        actual == checksum,
        "Changed since the last rendering: run scripts/render-art, or scripts/render-art previews");
}

void TestResources::everyDrawingAndPictureIsRecorded()
{
    QStringList expected{u"art/sizes.txt"_s, u"../desktop/previews/camera.sh"_s,
                         u"../desktop/previews/help.sh"_s, u"../desktop/previews/lesson.sh"_s};
    const QStringList drawings = QDir(inFolder(u"art"_s)).entryList({u"*.svg"_s}, QDir::Files);
    for (const QString &drawing : drawings)
        expected << u"art/"_s + drawing;
    const auto pictures = sizeTable().keys();
    for (const QString &picture : pictures) {
        expected << picture;
        if (picture.endsWith(u".png"))
            expected << twiceAsLarge(picture);
    }

    std::ranges::sort(expected);
    QCOMPARE(recordedChecksums().keys(), expected);
}

void TestResources::iconFileHoldsItsSixSizes()
{
    QImageReader reader(iconFile);
    QList<QSize> sizes;
    for (int i = 0; i < reader.imageCount(); ++i) {
        QVERIFY(reader.jumpToImage(i));
        sizes << reader.read().size();
    }

    const QList<QSize> wanted{{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {256, 256}};
    QCOMPARE(sizes, wanted);
}

// Windows expects the 256 pixel entry as PNG; its directory entry (16 bytes each, after a header
// of 6) says 0 for a width of 256 and has the offset of the data at byte 12.
void TestResources::largestIconIsStoredAsPng()
{
    QFile file(iconFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    constexpr qsizetype lastEntry = 6 + 5 * 16;
    QVERIFY(bytes.size() > lastEntry + 16);

    QCOMPARE(bytes.at(lastEntry), '\0');
    const auto offset = qFromLittleEndian<quint32>(bytes.constData() + lastEntry + 12);
    QCOMPARE(bytes.mid(offset, 8), QByteArray("\x89PNG\r\n\x1a\n"));
}

void TestResources::everySizeOfTheIconShowsSomething()
{
    QImageReader reader(iconFile);
    QVERIFY(reader.imageCount() > 0);
    for (int i = 0; i < reader.imageCount(); ++i) {
        QVERIFY(reader.jumpToImage(i));
        QVERIFY(showsSomething(reader.read()));
    }
}

void TestResources::fontIsMontserrat()
{
    const int id = QFontDatabase::addApplicationFont(u":/fonts/Montserrat-Regular.ttf"_s);

    QCOMPARE(QFontDatabase::applicationFontFamilies(id), QStringList{u"Montserrat"_s});
}

void TestResources::styleSheetSetsTheFont()
{
    QFile sheet(u":/styles/window.qss"_s);
    QVERIFY(sheet.open(QIODevice::ReadOnly));

    QVERIFY(sheet.readAll().contains("font-family: Montserrat;"));
}

void TestResources::theOnlyTranslationIsMexican()
{
    QCOMPARE(QDir(u":/i18n"_s).entryList(), QStringList{u"Plumara_es_MX.qm"_s});
}

PLUMARA_TEST(TestResources)
#include "tst_resources.moc"
