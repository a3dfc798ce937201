// Sets up the application in which every input is tried.
#include "fuzz/fuzzing.h"

#include <QApplication>
#include <QImageReader>
#include <QTemporaryFile>

#include <cstdio>
#include <cstdlib>

namespace {

// The toolkit warns of much that a hostile file holds; the program has nobody to tell it to.
void keepQuiet(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qInstallMessageHandler(keepQuiet);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // It lives as long as the process, which libFuzzer ends without coming back here.
    static auto *const application = new QApplication(*argc, *argv);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    // Larger pictures go the same way and take longer.
    constexpr int megabytes = 1;
    QImageReader::setAllocationLimit(megabytes);
    return application ? 0 : 1;
}

void require(bool kept, const char *promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

QString fileWith(const uint8_t *data, size_t size)
{
    static QTemporaryFile file;
    require(file.isOpen() || file.open(), "there is room for the scratch file");
    file.resize(0);
    file.seek(0);
    file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    file.flush();
    return file.fileName();
}
