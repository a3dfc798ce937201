// Makes the files, folders and pipes of the home folder.
#include "tests/monkey/litter.h"

#include "tests/support/files/boardfiles.h"
#ifdef Q_OS_WIN
#include "tests/support/system/limits.h"
#else
#include "tests/support/system/unixfiles.h"
#endif

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>

#include <cmath>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray picture(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y,
                                QColor(x * 7 % 256, y * 5 % 256, (x ^ y) % 256, 255 - x % 100));
    }
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    return png;
}

QJsonObject waves(int points, qreal x, qreal y)
{
    QJsonObject stroke = BoardFile::stroke(0, 0, 1, 1);
    QJsonArray path;
    for (int i = 0; i < points; ++i) {
        path << QJsonObject{{u"x"_s, x + 0.25 * i},
                            {u"y"_s, y + 40 * std::sin(i * 0.07)},
                            {u"type"_s, i > 0 ? 1 : 0}};
    }
    stroke[u"path"_s] = path;
    return stroke;
}

QByteArray document(const QJsonArray &items)
{
    return QJsonDocument(QJsonObject{{u"items"_s, items}}).toJson();
}

/// A board with something of each kind.
QByteArray lesson()
{
    QJsonArray items;
    for (int i = 0; i < 12; ++i)
        items << waves(60 + i, 150 + 70 * i, 100 + 40 * i);
    for (int i = 0; i < 4; ++i)
        items << BoardFile::note(160 + 230 * i, 120 + 90 * i, u"Nota %1 ñ"_s.arg(i), i);
    for (int i = 0; i < 6; ++i)
        items << BoardFile::arrow(200 + 90 * i, 500, 500, 150 + 60 * i);
    items << BoardFile::image(700, 300, picture(160, 120));
    items << BoardFile::image(300, 80, picture(40, 300));
    return document(items);
}

/// As large as a board has to be for its opening to be long work.
QByteArray longBoard()
{
    QJsonArray items;
    for (int i = 0; i < 60; ++i)
        items << waves(120, 20 * i, 10 * i);
    return document(items);
}

QByteArray farBoard()
{
    return document({waves(20, 1e7, 300), waves(20, -3e9, 1e12),
                     BoardFile::arrow(100, 100, 2000000000, 300), BoardFile::note(-1500000, 200),
                     BoardFile::note(300, 300)});
}

void writeOver(const QString &path, const QByteArray &content)
{
    // Something else may have taken its name.
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    QFile::remove(path);
    writeFile(path, content);
}

void setTime(const QString &path, const QDateTime &time)
{
    QFile file(path);
    if (!file.open(QFile::Append) || !file.setFileTime(time, QFile::FileModificationTime))
        qFatal("The time of a file cannot be set");
}

} // namespace

Litter::Litter(const QString &sources)
    : boardFiles{{u"lección"_s, lesson()},
                 {u"largo"_s, longBoard()},
                 {u"lejos"_s, farBoard()},
                 {u"vacío"_s, QByteArray()},
                 {u"cortado"_s, lesson().left(3000)},
                 {u"basura"_s, QByteArray(5000, '\x9c')}}
    , pictureFiles{{u"foto.png"_s, picture(320, 200)},
                   {u"alta.png"_s, picture(30, 900)},
                   {u"punto@2x.png"_s, picture(1, 1)},
                   {u"vacía.png"_s, QByteArray()},
                   {u"cortada.png"_s, picture(320, 200).left(2000)},
                   {u"texto.jpg"_s, "No soy una foto."}}
{
    const auto readAll = [](const QString &folder, const QString &prefix,
                            std::vector<File> &files) {
        const auto entries = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo &entry : entries)
            files.push_back({prefix + entry.fileName(), readFile(entry.filePath())});
    };
    readAll(sources + "/fuzz/corpus/board"_L1, u"c-"_s, boardFiles);
    readAll(sources + "/fuzz/findings/board"_L1, u"f-"_s, boardFiles);
    readAll(sources + "/tests/storage/data/hostile"_L1, u"h-"_s, boardFiles);
    readAll(sources + "/fuzz/corpus/picture"_L1, u"c-"_s, pictureFiles);
}

void Litter::lock(const QString &data, bool locked)
{
    const QString folder = data + "/cerrada"_L1;
    const QString file = folder + "/a"_L1;
    if (locked && !QFileInfo::exists(folder))
        writeFile(file);
#ifdef Q_OS_WIN
    // A file that another program has open.
    static std::unique_ptr<UnwritableFile> open;
    open = locked && QFileInfo::exists(file) ? std::make_unique<UnwritableFile>(file) : nullptr;
#else
    QFile::setPermissions(folder,
                          QFile::ReadOwner | QFile::ExeOwner
                              | (locked ? QFile::Permissions() : QFile::WriteOwner));
#endif
}

void Litter::spread(const QString &home, const QString &data)
{
    boardPaths.clear();
    picturePaths.clear();
    for (const File &file : boardFiles) {
        const QString name = file.name.endsWith(".vtrz"_L1) ? file.name : file.name + ".vtrz"_L1;
        boardPaths << home + u'/' + name;
        writeOver(boardPaths.constLast(), file.content);
    }
    for (const File &file : pictureFiles) {
        picturePaths << home + u'/' + file.name;
        writeOver(picturePaths.constLast(), file.content);
    }
    for (int i = 0; i < 3; ++i) {
        const File &file = boardFiles[size_t(i)];
        const QString path = data + u'/' + file.name + ".vtrz"_L1;
        writeOver(path, file.content);
        // The list of boards goes by the time, which for files that are written at once is sometimes the same.
        setTime(path, QDateTime({2026, 1, 1}, {12, i}));
    }

    // From which the program takes the right to write, the folder in which nothing can be made, the one
    // that is not there, and what is no file.
    const QString closed = home + "/cerrado.vtrz"_L1;
    writeOver(closed, lesson());
    QFile::setPermissions(closed, QFile::ReadOwner);
    const QString pipe = home + "/tubo.vtrz"_L1;
#ifndef Q_OS_WIN
    if (!QFileInfo::exists(pipe))
        makePipe(pipe);
#endif
    const QString folder = home + "/carpeta.vtrz"_L1;
    QDir().mkpath(folder);
    boardPaths << closed << pipe << folder << folder + "/dentro"_L1 << home + "/no/hay.vtrz"_L1
               << home + "/nuevo"_L1 << home + "/nuevo.VTRZ"_L1 << data + "/nuevo.vtrz"_L1
               << u"/dev/full"_s << u"/proc/nada.vtrz"_s;
    picturePaths << pipe << folder << home + "/no.png"_L1 << closed;
}
