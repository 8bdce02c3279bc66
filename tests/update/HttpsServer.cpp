#include "update/HttpsServer.h"

#include <QTimer>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace quorbit::test {

namespace {

QByteArray head(int status, qint64 length, const QByteArray &headers) {
    return "HTTP/1.1 " + QByteArray::number(status) +
           " Status\r\nContent-Length: " + QByteArray::number(length) + "\r\n" + headers + "\r\n";
}

} // namespace

Reaction reply(int status, const QByteArray &body, const QByteArray &headers) {
    return say(head(status, body.size(), headers) + body);
}

Reaction say(const QByteArray &bytes) {
    return [bytes](QSslSocket &connection) { connection.write(bytes); };
}

Reaction sayAndClose(const QByteArray &bytes) {
    return [bytes](QSslSocket &connection) {
        connection.write(bytes);
        connection.disconnectFromHost();
    };
}

Reaction drip(const QByteArray &bytes) {
    return [bytes](QSslSocket &connection) {
        connection.write(bytes);
        auto *timer = new QTimer(&connection);
        QObject::connect(timer, &QTimer::timeout, &connection, [&connection] { connection.write(" "); });
        timer->start(5);
    };
}

Reaction stream(qint64 size) {
    return [size](QSslSocket &connection) {
        const auto left = std::make_shared<qint64>(size);
        const auto feed = [&connection, left] {
            constexpr qint64 most = 1024LL * 1024;
            while (*left > 0 && connection.bytesToWrite() + connection.encryptedBytesToWrite() < most)
                *left -= connection.write(QByteArray(std::min<qint64>(*left, most / 4), 'q'));
        };
        connection.write(head(200, size, {}));
        feed();
        QObject::connect(&connection, &QSslSocket::encryptedBytesWritten, &connection, feed);
    };
}

HttpsServer::HttpsServer(const QSslConfiguration &identity) {
    server_.setSslConfiguration(identity);
    QObject::connect(&server_, &QSslServer::pendingConnectionAvailable, &server_, [this] {
        while (auto *connection = qobject_cast<QSslSocket *>(server_.nextPendingConnection()))
            serve(*connection);
    });
    if (!server_.listen(QHostAddress::LocalHost))
        qFatal("cannot listen: %s", qUtf8Printable(server_.errorString()));
}

QUrl HttpsServer::address(const QString &path) const {
    return QUrl(u"https://localhost:%1%2"_s.arg(server_.serverPort()).arg(path));
}

void HttpsServer::serve(QSslSocket &connection) {
    ++connections_;
    QObject::connect(&connection, &QSslSocket::disconnected, &server_, [this, &connection] {
        --connections_;
        connection.deleteLater();
    });
    const auto takeRequests = [this, &connection] {
        while (connection.canReadLine()) {
            QByteArray request;
            while (connection.canReadLine() && !request.endsWith("\r\n\r\n"))
                request += connection.readLine();
            requests.push_back(request);
            const auto found = answers_.find(QString::fromUtf8(request.split(' ').value(1)));
            (found == answers_.end() ? reply(404, "Nothing here") : found->second)(connection);
        }
    };
    QObject::connect(&connection, &QSslSocket::readyRead, &server_, takeRequests);
    takeRequests();
}

} // namespace quorbit::test
