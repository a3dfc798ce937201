// The translation of the program and of the toolkit's own texts.
#pragma once

#include <QStringList>

class QTranslator;

/// The languages of the person's system, most wanted first, as tags like "es-MX".
QStringList systemLanguages();

/// Loads into \a translator the first translation that the program has for \a languages, and
/// installs it. Where there is none, the program's own texts are Spanish anyway; the toolkit's are Spanish
/// too if any of the languages is one, and \a translator stays empty.
void installTranslation(QTranslator &translator, const QStringList &languages);
