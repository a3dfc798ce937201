// Finds the name of a board on the command line.
#include "app/namedboard.h"

#include <QDir>

#include <algorithm>

QString namedBoard(const QStringList &arguments)
{
    const QStringList names = arguments.mid(1); // the first is the program
    const auto name = std::ranges::find_if(
        names, [](const QString &argument) { return !argument.isEmpty() && argument[0] != u'-'; });
    if (name == names.cend())
        return {};
    return QDir::current().absoluteFilePath(QDir::fromNativeSeparators(*name));
}
