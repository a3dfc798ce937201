// An update server on this machine: its certificate, its answers, and the way to it.
#pragma once

#include <QList>
#include <QNetworkProxy>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

/// A certificate for a host, signed by an authority of its own; both are made anew with the
/// openssl command. The certificate is good for a number of days, or ran out so many days ago.
class TestCertificate
{
public:
    explicit TestCertificate(const QString &host, int days = 2)
    {
        openssl({"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj",
                 "/CN=Test authority", "-keyout", "ca.key", "-out", "ca.crt"});
        openssl({"req", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=" + host.toUtf8(), "-keyout",
                 "server.key", "-out", "server.csr"});
        write("server.ext", "subjectAltName=DNS:" + host.toUtf8() + '\n');
        openssl({"x509", "-req", "-in", "server.csr", "-CA", "ca.crt", "-CAkey", "ca.key",
                 "-CAcreateserial", "-days", QByteArray::number(days), "-extfile", "server.ext",
                 "-out", "server.crt"});
    }

    QSslCertificate authority() const { return QSslCertificate(read("ca.crt")); }
    QSslCertificate certificate() const { return QSslCertificate(read("server.crt")); }
    QSslKey key() const { return {read("server.key"), QSsl::Rsa}; }

private:
    void openssl(const QByteArrayList &arguments) const
    {
        QStringList list;
        for (const auto &argument : arguments)
            list << QString::fromUtf8(argument);
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral("openssl"), list);
        if (!process.waitForFinished() || process.exitCode() != 0)
            qFatal("openssl: %s", process.readAllStandardError().constData());
    }
    void write(const char *name, const QByteArray &content) const
    {
        QFile file(folder.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("Cannot write %s", name);
    }
    QByteArray read(const char *name) const
    {
        QFile file(folder.filePath(QLatin1String(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
};

/// An HTTPS server on this machine that answers for the update server's host, and the proxy that
/// leads the program's requests to it. The program itself has no way to be sent elsewhere; a proxy
/// of the system, which the test stands in for, is the one thing that it follows.
class UpdateServer
{
public:
    /// What is done with a connection whose request has come in.
    using Answer = std::function<void(QSslSocket &)>;

    explicit UpdateServer(const TestCertificate &certificate)
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(certificate.certificate());
        configuration.setPrivateKey(certificate.key());
        server.setSslConfiguration(configuration);
        QObject::connect(&server, &QSslServer::pendingConnectionAvailable, &server,
                         [this] { accept(); });
        QObject::connect(&proxy, &QTcpServer::newConnection, &proxy, [this] { tunnel(); });
        if (!server.listen(QHostAddress::LocalHost) || !proxy.listen(QHostAddress::LocalHost))
            qFatal("Cannot listen on this machine.");
        QNetworkProxy::setApplicationProxy(
            {QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), proxy.serverPort()});
    }
    ~UpdateServer() { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }
    Q_DISABLE_COPY_MOVE(UpdateServer)

    /// Answers every request with this status line and body.
    void answer(const QByteArray &status, const QByteArray &body,
                const QByteArray &headers = QByteArray())
    {
        onRequest = [status, body, headers](QSslSocket &socket) {
            socket.write("HTTP/1.1 " + status + "\r\n" + headers
                         + "Content-Length: " + QByteArray::number(body.size())
                         + "\r\nConnection: close\r\n\r\n" + body);
            socket.disconnectFromHost();
        };
    }

    Answer onRequest;
    /// Whole requests: for tunnels to the server, for insecure pages, and those at the server.
    QList<QByteArray> tunnels;
    QList<QByteArray> insecureRequests;
    QList<QByteArray> requests;
    /// The tunnels that are still open.
    int openTunnels = 0;

private:
    static bool isComplete(const QByteArray &request) { return request.endsWith("\r\n\r\n"); }

    void accept()
    {
        auto *const socket = qobject_cast<QSslSocket *>(server.nextPendingConnection());
        const auto read = [this, socket, request = QByteArray()]() mutable {
            request += socket->readAll();
            if (!isComplete(request))
                return;
            requests << request;
            request.clear();
            if (const Answer current = onRequest) // kept, for it may put another in its place
                current(*socket);
        };
        QObject::connect(socket, &QSslSocket::readyRead, socket, read);
        QTimer::singleShot(0, socket, [socket] { emit socket->readyRead(); });
    }

    void tunnel()
    {
        auto *const client = proxy.nextPendingConnection();
        QObject::connect(client, &QTcpSocket::readyRead, client, [this, client] {
            const QByteArray request = client->peek(4096);
            if (!isComplete(request))
                return;
            client->disconnect();
            client->readAll();
            if (!request.startsWith("CONNECT ")) {
                insecureRequests << request;
                client->disconnectFromHost();
                return;
            }
            tunnels << request;
            ++openTunnels;
            QObject::connect(client, &QTcpSocket::disconnected, &proxy, [this] { --openTunnels; });
            auto *const upstream = new QTcpSocket(client);
            upstream->setProxy(QNetworkProxy::NoProxy);
            upstream->connectToHost(QHostAddress::LocalHost, server.serverPort());
            const auto pass = [](QTcpSocket *from, QTcpSocket *to) {
                QObject::connect(from, &QTcpSocket::readyRead, to,
                                 [from, to] { to->write(from->readAll()); });
                QObject::connect(from, &QTcpSocket::disconnected, to,
                                 [to] { to->disconnectFromHost(); });
            };
            pass(client, upstream);
            pass(upstream, client);
            client->write("HTTP/1.1 200 Connection established\r\n\r\n");
        });
    }

    QSslServer server;
    QTcpServer proxy;
};
