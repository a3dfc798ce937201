// Finds the translation for the person's languages and installs it.
#include "app/translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

using namespace Qt::Literals::StringLiterals;

namespace {

/// For example "es_MX".
QString localeName(const QString &language)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    return QLocale(language).name(QLocale::TagSeparator::Underscore);
#else
    return QLocale(language).name();
#endif
}

} // namespace

QStringList systemLanguages()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    return QLocale::system().uiLanguages(QLocale::TagSeparator::Dash);
#else
    return QLocale::system().uiLanguages();
#endif
}

void installTranslation(QTranslator &translator, const QStringList &languages)
{
    for (const auto &language : languages) {
        if (translator.load(u":/i18n/Plumara_"_s + localeName(language))) {
            QCoreApplication::installTranslator(&translator);
            return;
        }
    }
}
