// Reads the version document of the update server.
#include "home/versiondocument.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QLatin1StringView programVersion(PLUMARA_VERSION);

} // namespace

bool namesNewerVersion(const QByteArray &answer)
{
    const QJsonDocument document = QJsonDocument::fromJson(answer);
    if (document.isNull())
        return false;
    // Quirk: version 1.0.10000 counts as older than 1.0.2026, because versions are compared as
    // text; the server has to name its versions accordingly.
    const QString version = document.object().value("version"_L1).toString();
    return programVersion < version;
}
