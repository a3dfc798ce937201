// The update check, made once per start, and the update advisor that tells of a newer version.
#include "home/mainwindow.h"

#include "home/updatecheck.h"
#include "home/versiondocument.h"

#include "ui_mainwindow.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QGraphicsOpacityEffect>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QProcess>
#include <QPropertyAnimation>
#include <QTimer>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int fadeTime = 150; // ms
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
    // One command line, as it stands. Given as the program, all of it would be quoted, and then
    // not be found.
    QProcess taskkill;
    taskkill.setProgram(u"taskkill"_s);
    taskkill.setNativeArguments("/F /IM "_L1 + QCoreApplication::applicationName() + ".exe /T"_L1);
    taskkill.startDetached();
#else
    // The program starts no processes of its own (the browser belongs to the desktop), so leaving
    // the event loop ends all there is, and lets everything be released in order.
    QCoreApplication::quit();
#endif
}

} // namespace

void MainWindow::checkVersion()
{
    QNetworkRequest request(serverUrl(u"/updates/plumara/version.json"_s));
    // Who asks stays unknown, also where the answer leads elsewhere.
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        request.setAttribute(attribute, QNetworkRequest::Manual);
    auto *const reply = network.get(request);

    // Whatever a server sends, no more than this much of it is held in memory, and not for longer.
    QTimer::singleShot(serverPatience, reply, &QNetworkReply::abort);
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
    if (reply->error() == QNetworkReply::NoError && namesNewerVersion(reply->readAll()))
        showUpdateMessage();
}

void MainWindow::initializeUpdateAdvisorEffect()
{
    ui->UpdateAdvisor->setGraphicsEffect(new QGraphicsOpacityEffect(this));
    ui->UpdateAdvisor->hide();
}

void MainWindow::showUpdateMessage()
{
    // Quirk: the update advisor always announces version 1.1.2026, because its texts are part of
    // the form; the server's version only decides whether it is shown.
    if (auto *const fade = fadeUpdateAdvisor(0.0, 1.0)) {
        if (!ui->UpdateAdvisor->isAncestorOf(focusWidget()))
            focusBeforeAdvisor = focusWidget();
        ui->UpdateAdvisor->show();
        ui->CancelUpdate->setFocus();
        fade->start(QAbstractAnimation::DeleteWhenStopped);
    }
}

void MainWindow::closeUpdateMessage()
{
    if (auto *const fade = fadeUpdateAdvisor(1.0, 0.0)) {
        connect(fade, &QPropertyAnimation::finished, this, &MainWindow::hideUpdateAdvisor);
        fade->start(QAbstractAnimation::DeleteWhenStopped);
    }
}

void MainWindow::hideUpdateAdvisor()
{
    if (ui->UpdateAdvisor->isAncestorOf(focusWidget())) {
        if (focusBeforeAdvisor)
            focusBeforeAdvisor->setFocus();
        else
            focusWidget()->clearFocus();
    }
    ui->UpdateAdvisor->hide();
}

bool MainWindow::focusNextPrevChild(bool next)
{
    if (ui->UpdateAdvisor->isHidden())
        return QMainWindow::focusNextPrevChild(next);
    // The pages are only covered: disabled they would change their look.
    auto *const button = focusWidget() == ui->CancelUpdate ? ui->StartUpdate : ui->CancelUpdate;
    button->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
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
    // Quirk: "ACTUALIZAR" ends the program also where no browser opens, because nothing asks what
    // became of the page.
    QDesktopServices::openUrl(serverUrl(u"/plumara"_s));
    close();
    endProcessTree();
}
