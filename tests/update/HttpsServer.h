#pragma once

#include <QByteArrayList>
#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>

namespace quorbit::test {

/// What a server does with the connection once it has read a request.
using Reaction = std::function<void(QSslSocket &)>;

inline QByteArray head(int status, qint64 length, const QByteArray &headers) {
    return "HTTP/1.1 " + QByteArray::number(status) +
           " Status\r\nContent-Length: " + QByteArray::number(length) + "\r\n" + headers + "\r\n";
}

/// These bytes as they stand, after which the connection stays open.
inline Reaction say(const QByteArray &bytes) {
    return [bytes](QSslSocket &connection) { connection.write(bytes); };
}

/// A whole reply with its length.
inline Reaction reply(int status, const QByteArray &body, const QByteArray &headers = {}) {
    return say(head(status, body.size(), headers) + body);
}

/// These bytes as they stand, after which the connection is closed.
inline Reaction sayAndClose(const QByteArray &bytes) {
    return [bytes](QSslSocket &connection) {
        connection.write(bytes);
        connection.disconnectFromHost();
    };
}

/// These bytes, and from then on one more byte every few milliseconds.
inline Reaction drip(const QByteArray &bytes) {
    return [bytes](QSslSocket &connection) {
        connection.write(bytes);
        auto *timer = new QTimer(&connection);
        QObject::connect(timer, &QTimer::timeout, &connection, [&connection] { connection.write(" "); });
        timer->start(5);
    };
}

/// A body of `size` bytes, written only as fast as it is taken.
inline Reaction stream(qint64 size) {
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

/// An HTTPS server on this machine that answers each path as it is told, and 404 to the others.
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

    void answer(const QString &path, Reaction answer) { answers_[path] = std::move(answer); }
    QUrl address(const QString &path) const {
        return QUrl(QStringLiteral("https://localhost:%1%2").arg(server_.serverPort()).arg(path));
    }

    QByteArrayList requests; ///< the heads of all requests so far
    int connections() const { return connections_; }

private:
    void serve(QSslSocket &connection) {
        ++connections_;
        QObject::connect(&connection, &QSslSocket::disconnected, &server_, [this, &connection] {
            --connections_;
            connection.deleteLater();
        });
        const auto takeRequest = [this, &connection] {
            const QByteArray request = connection.readAll(); // small enough to come in one piece
            if (request.isEmpty())
                return;
            requests.push_back(request);
            const auto found = answers_.find(QString::fromUtf8(request.split(' ').value(1)));
            (found == answers_.end() ? reply(404, "Nothing here") : found->second)(connection);
        };
        QObject::connect(&connection, &QSslSocket::readyRead, &server_, takeRequest);
        takeRequest();
    }

    QSslServer server_;
    std::map<QString, Reaction> answers_;
    int connections_ = 0; ///< those open now
};

} // namespace quorbit::test
