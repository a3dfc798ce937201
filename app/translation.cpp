// Finds the translation for the person's languages and installs it.
#include "app/translation.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <algorithm>

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

bool isSpanish(const QString &language)
{
    return QLocale(language).language() == QLocale::Spanish;
}

/// Whoever reads another Spanish than Mexico's would otherwise meet the toolkit's texts in English, amid
/// those of the program.
void installToolkitTexts()
{
    auto *const translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(u":/i18n/Plumara_es_MX"_s))
        QCoreApplication::installTranslator(translator);
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
    if (std::ranges::any_of(languages, isSpanish))
        installToolkitTexts();
}
