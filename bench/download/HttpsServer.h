#pragma once

#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QUrl>

#include <algorithm>
#include <memory>

namespace quorbit::test {

/// An HTTPS server on this machine that answers every request with a body of a size, written only as fast as
/// it is taken.
class HttpsServer {
public:
    explicit HttpsServer(const QSslConfiguration &identity) {
        server_.setSslConfiguration(identity);
        QObject::connect(&server_, &QSslServer::pendingConnectionAvailable, &server_, [this] {
            while (auto *connection = qobject_cast<QSslSocket *>(server_.nextPendingConnection()))
                serve(*connection);
        });
        if (!server_.listen(QHostAddress::LocalHost))
            qFatal("cannot listen: %s", qUtf8Printable(server_.errorString()));
    }

    qint64 size = 0; ///< of the next body, in bytes
    QUrl address(const QString &path) const {
        return QUrl(QStringLiteral("https://localhost:%1%2").arg(server_.serverPort()).arg(path));
    }

private:
    void serve(QSslSocket &connection) {
        QObject::connect(&connection, &QSslSocket::disconnected, &connection, &QObject::deleteLater);
        const auto left = std::make_shared<qint64>(0);
        const auto feed = [&connection, left] {
            constexpr qint64 most = 1024LL * 1024;
            while (*left > 0 && connection.bytesToWrite() + connection.encryptedBytesToWrite() < most)
                *left -= connection.write(QByteArray(std::min<qint64>(*left, most / 4), 'q'));
        };
        const auto takeRequest = [this, &connection, left, feed] {
            if (connection.readAll().isEmpty()) // small enough to come in one piece
                return;
            *left = size;
            connection.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(size) + "\r\n\r\n");
            feed();
        };
        QObject::connect(&connection, &QSslSocket::readyRead, &server_, takeRequest);
        QObject::connect(&connection, &QSslSocket::encryptedBytesWritten, &connection, feed);
        takeRequest();
    }

    QSslServer server_;
};

} // namespace quorbit::test
