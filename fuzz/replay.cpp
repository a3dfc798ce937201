// Runs a fuzz target on files that are there, where no fuzzer makes new ones.
#include "fuzz/fuzzing.h"

#include <QDirIterator>
#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace {

/// Every file in \a place, which is a folder or a file itself.
QStringList filesIn(const QString &place)
{
    if (QFileInfo(place).isFile())
        return {place};
    QStringList files;
    QDirIterator folder(place, QDir::Files, QDirIterator::Subdirectories);
    while (folder.hasNext())
        files << folder.next();
    files.sort();
    return files;
}

bool replay(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s cannot be read\n", qPrintable(path));
        return false;
    }
    // In advance: what goes wrong ends the program.
    std::fprintf(stderr, "%s\n", qPrintable(path));
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                           static_cast<size_t>(bytes.size()));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const auto files = filesIn(QFile::decodeName(argv[i]));
        for (const auto &path : files) {
            if (!replay(path))
                return EXIT_FAILURE;
            ++replayed;
        }
    }
    std::printf("%d files\n", replayed);
    return replayed > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
