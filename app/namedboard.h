// The board that a start of the program names.
#pragma once

#include <QString>
#include <QStringList>

/// The absolute path of the board file that the command line \a arguments name: the first that is no
/// option, from the present folder. Options are not read. Empty where no board is named.
QString namedBoard(const QStringList &arguments);
