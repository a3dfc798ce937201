// The update check, made once per start, and the update advisor that tells of a newer version.

#include "home/mainwindow.h"

#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QGraphicsOpacityEffect>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProcess>
#include <QPropertyAnimation>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr auto programVersion = "1.0.2026"_L1;
constexpr int fadeTime = 150; // ms
constexpr int serverPatience = 30'000; // ms without a byte from the server
constexpr qint64 largestAnswer = 64LL * 1024; // bytes; a version document has a few dozen

/// An address on the update server, whose host is fixed when the program is built.
QUrl serverUrl(const QString &path)
{
    QUrl url;
    url.setScheme(u"https"_s);
    url.setHost(QStringLiteral(PLUMARA_UPDATE_HOST));
    url.setPath(path);
    return url;
}

/// Ends this process and those that it started.
void endProcessTree()
{
#ifdef Q_OS_WIN
    // One command line; a program name with blanks in it would be quoted as a single word.
    QStringList command = QProcess::splitCommand(
        "taskkill /F /IM "_L1 + QCoreApplication::applicationName() + ".exe /T"_L1);
    const QString program = command.takeFirst();
    QProcess::startDetached(program, command);
#else
    // The program starts no processes of its own (the browser belongs to the desktop), so leaving
    // the event loop ends all there is, and lets everything be released in order.
    QCoreApplication::quit();
#endif
}

} // namespace

void MainWindow::checkVersion()
{
    network.setTransferTimeout(serverPatience);
    auto *const reply = network.get(QNetworkRequest(serverUrl(u"/updates/plumara/version.json"_s)));

    // Whatever a server sends, no more than this much is ever held in memory.
    reply->setReadBufferSize(largestAnswer);
    connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() >= largestAnswer)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, reply, [this, reply] {
        readVersion(reply);
        reply->deleteLater();
    });
}

/// Shows the update advisor when the finished \a reply names a newer version. An answer of any
/// other kind is passed over in silence.
void MainWindow::readVersion(QNetworkReply *reply)
{
    if (reply->error() != QNetworkReply::NoError)
        return;
    const QJsonDocument document = QJsonDocument::fromJson(reply->readAll());
    if (document.isNull())
        return;
    // Wanted: versions are compared as text, so "1.0.10000" is older than "1.0.2026".
    const QString version = document.object().value("version"_L1).toString();
    if (programVersion >= version)
        return;
    showUpdateMessage();
}

void MainWindow::initializeUpdateAdvisorEffect()
{
    ui->UpdateAdvisor->setGraphicsEffect(new QGraphicsOpacityEffect(this));
    ui->UpdateAdvisor->hide();
}

void MainWindow::showUpdateMessage()
{
    if (auto *const fade = fadeUpdateAdvisor(0.0, 1.0)) {
        ui->UpdateAdvisor->show();
        fade->start(QAbstractAnimation::DeleteWhenStopped);
    }
}

void MainWindow::closeUpdateMessage()
{
    if (auto *const fade = fadeUpdateAdvisor(1.0, 0.0)) {
        connect(fade, &QPropertyAnimation::finished, ui->UpdateAdvisor, &QWidget::hide);
        fade->start(QAbstractAnimation::DeleteWhenStopped);
    }
}

/// A fade of the update advisor, not yet started; null when the advisor has no opacity effect.
QPropertyAnimation *MainWindow::fadeUpdateAdvisor(qreal from, qreal to)
{
    auto *const effect =
        qobject_cast<QGraphicsOpacityEffect *>(ui->UpdateAdvisor->graphicsEffect());
    if (!effect)
        return nullptr;
    auto *const fade = new QPropertyAnimation(effect, "opacity");
    fade->setDuration(fadeTime);
    fade->setStartValue(from);
    fade->setEndValue(to);
    return fade;
}

void MainWindow::launchUpdater()
{
    updating = true;
    QDesktopServices::openUrl(serverUrl(u"/plumara"_s));
    close();
    endProcessTree();
}
