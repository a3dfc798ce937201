// What lies about in a person's home folder, good and bad.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// Boards and pictures for the program to open and to save to: good ones, what no program wrote, and what
/// is no file at all.
class Litter
{
public:
    /// Reads what is in the repository's folder \a sources. Writes nothing.
    explicit Litter(const QString &sources);

    /// Puts everything into the folder \a home, some boards also into \a data. What is there already is
    /// written anew.
    void spread(const QString &home, const QString &data);

    /// Puts into the folder \a data, or lets go again, what cannot be deleted.
    static void lock(const QString &data, bool locked);

    /// What may be chosen for opening or saving a board, and for inserting a picture.
    const QStringList &boards() const { return boardPaths; }
    const QStringList &pictures() const { return picturePaths; }

private:
    struct File
    {
        QString name;
        QByteArray content;
    };

    std::vector<File> boardFiles;
    std::vector<File> pictureFiles;
    QStringList boardPaths;
    QStringList picturePaths;
};
