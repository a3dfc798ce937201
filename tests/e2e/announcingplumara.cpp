// The program's home window on a machine whose update server announces a newer version: for the
// tour, which shows the update advisor and what its buttons do.

#include "home/mainwindow.h"
#include "tests/support/home/updateserver.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);

    const TestCertificate certificate(QStringLiteral(PLUMARA_UPDATE_HOST));
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.addCaCertificate(certificate.authority());
    QSslConfiguration::setDefaultConfiguration(trusting);
    UpdateServer server(certificate);
    server.answer("200 OK", R"({"version": "1.1.2026"})");

    MainWindow window;
    window.show();
    return QApplication::exec();
}
