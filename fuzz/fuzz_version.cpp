// Reads the input as the answer of the update server.
#include "fuzz/fuzzing.h"
#include "home/versiondocument.h"

#include <QByteArray>
#include <QJsonDocument>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray answer(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const bool newer = namesNewerVersion(answer);
    require(namesNewerVersion(QJsonDocument::fromJson(answer).toJson()) == newer,
            "the layout of a version document says nothing");
    require(!newer || answer.contains('"'), "a newer version has a name");
    return 0;
}
