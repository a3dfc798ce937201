// The toolkit's own texts in Spanish.

#include "tests/support/main/registeredtest.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTranslator>
#include <QTreeView>
#include <QXmlStreamReader>

#include <memory>

using namespace Qt::Literals::StringLiterals;

/// The toolkit's own texts, as a person meets them, once the translation is installed.
class TestToolkitTranslation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyTextOfTheSourceIsTranslated();
    void eachContextIsTranslated_data();
    void eachContextIsTranslated();
    void fileDialogToOpenIsSpanish();
    void fileDialogToSaveIsSpanish();
    void fileDialogColumnsAreSpanish();
    void messageBoxButtonsAreSpanish();
    void okStaysOk();
    void lineEditMenuIsSpanish();
    void textMenuIsSpanish();
    void shortcutsKeepTheirKeys();
    void deleteKeyIsNamedInSpanish();

private:
    QTranslator translator;
};

static QStringList textsOf(const QMenu *menu)
{
    QStringList texts;
    const QList<QAction *> actions = menu->actions();
    for (const QAction *action : actions) {
        if (!action->isSeparator())
            texts << action->text().section(u'\t', 0, 0);
    }
    return texts;
}

static const QStringList editingTexts{u"&Deshacer"_s,        u"&Rehacer"_s, u"Cor&tar"_s,
                                      u"&Copiar"_s,          u"&Pegar"_s,   u"&Eliminar"_s,
                                      u"&Seleccionar todo"_s};

void TestToolkitTranslation::initTestCase()
{
    QVERIFY(translator.load(u":/i18n/Plumara_es_MX.qm"_s));
    QVERIFY(QCoreApplication::installTranslator(&translator));
}

void TestToolkitTranslation::everyTextOfTheSourceIsTranslated()
{
    QFile file(QStringLiteral(RESOURCES_FOLDER "/i18n/Plumara_es_MX.ts"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QByteArray context;
    QByteArray source;
    int texts = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "name"_L1) {
            context = xml.readElementText().toUtf8();
        } else if (xml.name() == "source"_L1) {
            source = xml.readElementText().toUtf8();
        } else if (xml.name() == "translation"_L1) {
            const QString translation = xml.readElementText();
            QVERIFY2(!translation.isEmpty(), source.constData());
            QCOMPARE(translator.translate(context.constData(), source.constData()), translation);
            ++texts;
        }
    }
    QVERIFY(!xml.hasError());
    QVERIFY(texts > 100);
}

void TestToolkitTranslation::eachContextIsTranslated_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("translation");

    const auto row = [](const char *context, const char *source, const char16_t *translation) {
        QTest::newRow(context) << QByteArray(source) << QString::fromUtf16(translation);
    };
    row("QPlatformTheme", "Cancel", u"Cancelar");
    row("QGnomeTheme", "&Save", u"&Guardar");
    row("QMessageBox", "Show Details...", u"Mostrar detalles...");
    row("QProgressDialog", "Cancel", u"Cancelar");
    row("QFileDialog", "%1 already exists.\nDo you want to replace it?",
        u"%1 ya existe.\n¿Desea reemplazarlo?");
    row("QFileSystemModel", "Size", u"Tamaño");
    row("QAbstractFileIconProvider", "Folder", u"Carpeta");
    row("QLineEdit", "&Paste", u"&Pegar");
    row("QWidgetTextControl", "&Copy", u"&Copiar");
    row("QScrollBar", "Top", u"Principio");
    row("QTabBar", "Scroll Left", u"Desplazar a la izquierda");
    row("QShortcut", "PgUp", u"Re Pág");
}

void TestToolkitTranslation::eachContextIsTranslated()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, translation);

    QCOMPARE(QCoreApplication::translate(QTest::currentDataTag(), source.constData()), translation);
}

void TestToolkitTranslation::fileDialogToOpenIsSpanish()
{
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.show();

    QCOMPARE(dialog.labelText(QFileDialog::LookIn), u"Buscar en:"_s);
    QCOMPARE(dialog.labelText(QFileDialog::FileName), u"&Nombre de archivo:"_s);
    QCOMPARE(dialog.labelText(QFileDialog::FileType), u"Tipo de archivos:"_s);
    QCOMPARE(dialog.labelText(QFileDialog::Accept), u"&Abrir"_s);
    QCOMPARE(dialog.labelText(QFileDialog::Reject), u"Cancelar"_s);
}

void TestToolkitTranslation::fileDialogToSaveIsSpanish()
{
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.show();

    QCOMPARE(dialog.labelText(QFileDialog::Accept), u"&Guardar"_s);
    QCOMPARE(dialog.windowTitle(), u"Guardar como"_s);
}

void TestToolkitTranslation::fileDialogColumnsAreSpanish()
{
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.show();
    const auto *list = dialog.findChild<QTreeView *>();
    QVERIFY(list);

    QStringList columns;
    for (int i = 0; i < list->model()->columnCount(); ++i)
        columns << list->model()->headerData(i, Qt::Horizontal).toString();
    const QStringList wanted{u"Nombre"_s, u"Tamaño"_s, u"Tipo"_s, u"Modificado"_s};
    QCOMPARE(columns, wanted);
}

void TestToolkitTranslation::messageBoxButtonsAreSpanish()
{
    QMessageBox box;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);

    QCOMPARE(box.button(QMessageBox::Yes)->text(), u"&Sí"_s);
    QCOMPARE(box.button(QMessageBox::No)->text(), u"&No"_s);
    QCOMPARE(box.button(QMessageBox::Cancel)->text(), u"Cancelar"_s);
}

// Wanted: the program's messages have always been answered with "OK".
void TestToolkitTranslation::okStaysOk()
{
    QMessageBox box;
    box.setStandardButtons(QMessageBox::Ok);

    QCOMPARE(box.button(QMessageBox::Ok)->text(), u"OK"_s);
}

void TestToolkitTranslation::lineEditMenuIsSpanish()
{
    QLineEdit edit;
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());

    QCOMPARE(textsOf(menu.get()), editingTexts);
}

void TestToolkitTranslation::textMenuIsSpanish()
{
    QTextEdit edit;
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());

    QCOMPARE(textsOf(menu.get()), editingTexts);
}

// Key names are translated for show only; code goes on to write them in English.
void TestToolkitTranslation::shortcutsKeepTheirKeys()
{
    QCOMPARE(QKeySequence(u"Alt+Left"_s), QKeySequence(Qt::ALT | Qt::Key_Left));
    QCOMPARE(QKeySequence(u"Ctrl+Shift+S"_s), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    QCOMPARE(QKeySequence(u"Del"_s), QKeySequence(Qt::Key_Delete));
}

void TestToolkitTranslation::deleteKeyIsNamedInSpanish()
{
    QCOMPARE(QKeySequence(Qt::Key_Delete).toString(QKeySequence::NativeText), u"Supr"_s);
}

PLUMARA_TEST(TestToolkitTranslation)
#include "tst_toolkittranslation.moc"
