// Which translation is installed for the languages of a person.

#include "app/translation.h"
#include "tests/support/main/registeredtest.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

using namespace Qt::Literals::StringLiterals;

// A text of the toolkit that the program's translation holds.
const char *const context = "QPlatformTheme";
const char *const english = "Cancel";
const QString spanish = u"Cancelar"_s;

class TestTranslation : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void mexicanSpanishIsInstalled();
    void aLaterLanguageWithATranslationIsInstalled_data();
    void aLaterLanguageWithATranslationIsInstalled();
    void withoutATranslationNothingIsInstalled_data();
    void withoutATranslationNothingIsInstalled();
    void inAnotherSpanishTheToolkitSpeaksSpanishToo_data();
    void inAnotherSpanishTheToolkitSpeaksSpanishToo();
#ifndef Q_OS_WIN
    void theSystemsLanguagesComeInItsOrder();
#endif
};

namespace {

QString translated()
{
    return QCoreApplication::translate(context, english);
}

} // namespace

void TestTranslation::cleanup()
{
    // What the program keeps for as long as it runs.
    qDeleteAll(QCoreApplication::instance()->findChildren<QTranslator *>());
    QCOMPARE(translated(), QLatin1String(english));
}

void TestTranslation::mexicanSpanishIsInstalled()
{
    QTranslator translator;
    installTranslation(translator, {u"es-MX"_s});
    QCOMPARE(translated(), spanish);
    QCOMPARE(translator.language(), u"es_MX"_s);
}

void TestTranslation::aLaterLanguageWithATranslationIsInstalled_data()
{
    QTest::addColumn<QStringList>("languages");
    QTest::newRow("second") << QStringList{u"fr-FR"_s, u"es-MX"_s};
    QTest::newRow("third") << QStringList{u"de-DE"_s, u"en-US"_s, u"es-MX"_s};
    QTest::newRow("in the middle") << QStringList{u"en-US"_s, u"es-MX"_s, u"fr-FR"_s};
}

void TestTranslation::aLaterLanguageWithATranslationIsInstalled()
{
    QFETCH(QStringList, languages);
    QTranslator translator;
    installTranslation(translator, languages);
    QCOMPARE(translated(), spanish);
    QCOMPARE(translator.language(), u"es_MX"_s); // whatever comes behind it
}

void TestTranslation::withoutATranslationNothingIsInstalled_data()
{
    QTest::addColumn<QStringList>("languages");
    QTest::newRow("no language") << QStringList();
    QTest::newRow("others") << QStringList{u"fr-FR"_s, u"en-US"_s};
    QTest::newRow("no tag at all") << QStringList{u""_s, u"C"_s};
}

void TestTranslation::withoutATranslationNothingIsInstalled()
{
    QFETCH(QStringList, languages);
    QTranslator translator;
    installTranslation(translator, languages);
    QVERIFY(translator.isEmpty());
    QCOMPARE(translated(), QLatin1String(english));
}

void TestTranslation::inAnotherSpanishTheToolkitSpeaksSpanishToo_data()
{
    QTest::addColumn<QStringList>("languages");
    QTest::newRow("Spanish") << QStringList{u"es"_s};
    QTest::newRow("of Spain") << QStringList{u"es-ES"_s, u"es"_s};
    QTest::newRow("of Latin America") << QStringList{u"es-419"_s};
    QTest::newRow("with its script") << QStringList{u"es-Latn-AR"_s};
    QTest::newRow("after another language") << QStringList{u"en-US"_s, u"es-CO"_s};
}

void TestTranslation::inAnotherSpanishTheToolkitSpeaksSpanishToo()
{
    QFETCH(QStringList, languages);
    QTranslator translator;
    installTranslation(translator, languages);
    QCOMPARE(translated(), spanish);
    // The program's own translation is Mexico's, and its name is no other's.
    QVERIFY(translator.isEmpty());
}

// Windows has no variable that stands for the person's settings.
#ifndef Q_OS_WIN
void TestTranslation::theSystemsLanguagesComeInItsOrder()
{
    // The system's locale is read anew when a QSystemLocale asks; the variable stands for the
    // person's list.
    qputenv("LANGUAGE", "fr_FR:es_MX");
    const QStringList languages = systemLanguages();
    qunsetenv("LANGUAGE");
    QVERIFY(languages.contains(u"fr-FR"_s));
    QVERIFY(languages.contains(u"es-MX"_s));
    QVERIFY(languages.indexOf(u"fr-FR"_s) < languages.indexOf(u"es-MX"_s));
}
#endif

PLUMARA_GUILESS_TEST(TestTranslation)
#include "tst_translation.moc"
