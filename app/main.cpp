// Starts the program: style, guard, translation, home window, and the board that was named.
#include "app/handoff.h"
#include "app/namedboard.h"
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

    const QString board = namedBoard(QApplication::arguments());

    Xr9A1 guard;
    if (guard.isRunning()) {
        notifyRunningInstance();
        handOff(board);
        return 0;
    }
    const HandoffListener listener; // as early as can be: others may be on their way

    QTranslator translator;
    const QStringList languages = systemLanguages();
    installTranslation(translator, languages);

    MainWindow window(nullptr);
    window.setFocusPolicy(Qt::NoFocus);
    window.show();
    QObject::connect(&listener, &HandoffListener::startedAgain, &window, &MainWindow::answerStart);
    window.openWhenQuiet(board);
    return QApplication::exec();
}
