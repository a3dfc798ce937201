// A board file to measure with.
#pragma once

#include "bench/strokes.h"

#include <QTemporaryDir>

/// A file with strokes on it, in a folder of its own that goes with this.
class BoardFile
{
public:
    explicit BoardFile(const Strokes &strokes);

    QString path() const { return folder.filePath(QStringLiteral("lesson.vtrz")); }
    QByteArray bytes() const;

private:
    QTemporaryDir folder;
};
