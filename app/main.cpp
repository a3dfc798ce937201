// Starts the program: style, guard, translation, home window.
#include "app/runninginstance.h"
#include "app/translation.h"
#include "app/xr9a1.h"
#include "home/mainwindow.h"

#include <QApplication>
#include <QStyleFactory>
#include <QTranslator>

using namespace Qt::Literals::StringLiterals;

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    // Null where the platform has no such style; the toolkit's default stays then.
    QApplication::setStyle(QStyleFactory::create(u"WindowsVista"_s));

    Xr9A1 guard;
    if (guard.isRunning()) {
        notifyRunningInstance();
        return 0;
    }

    QTranslator translator;
    const QStringList languages = systemLanguages();
    installTranslation(translator, languages);

    MainWindow window(nullptr);
    window.setFocusPolicy(Qt::NoFocus);
    window.show();
    return QApplication::exec();
}
