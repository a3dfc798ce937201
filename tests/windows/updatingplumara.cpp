// The program's home window, whose update button is clicked at once. What ends this program is the
// command that the button starts, and nothing else.

#include "home/mainwindow.h"
#include "tests/support/system/scratchhome.h"

#include <QApplication>
#include <QDesktopServices>
#include <QPushButton>
#include <QTimer>

namespace {

/// In the place of a browser.
class Browser : public QObject
{
    Q_OBJECT

public slots:
    static void open(const QUrl &) { }
};

} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Browser browser;
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &browser, "open");

    const ScratchHome home;
    MainWindow window;
    window.show();
    QTimer::singleShot(0, window.findChild<QPushButton *>(QStringLiteral("StartUpdate")),
                       &QPushButton::click);
    return QApplication::exec();
}

#include "updatingplumara.moc"
