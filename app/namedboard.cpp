// Finds the name of a board on the command line.
#include "app/namedboard.h"

#include <QDir>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

QString namedBoard(const QStringList &arguments)
{
    const QStringList names = arguments.mid(1); // the first is the program
    const auto name = std::ranges::find_if(
        names, [](const QString &argument) { return !argument.isEmpty() && argument[0] != u'-'; });
    if (name == names.cend())
        return {};
    // To the toolkit, a name that begins with a colon is that of something in the program itself.
    const QString path = name->startsWith(u':') ? u"./"_s + *name : *name;
    return QDir::current().absoluteFilePath(QDir::fromNativeSeparators(path));
}
