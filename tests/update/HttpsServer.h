#pragma once

#include <QByteArrayList>
#include <QSslConfiguration>
#include <QSslServer>
#include <QSslSocket>
#include <QUrl>

#include <functional>
#include <map>

namespace quorbit::test {

/// What a server does with the connection once it has read a request.
using Reaction = std::function<void(QSslSocket &)>;

/// A whole reply with its length.
Reaction reply(int status, const QByteArray &body, const QByteArray &headers = {});
/// These bytes as they stand, after which the connection stays open.
Reaction say(const QByteArray &bytes);
/// These bytes as they stand, after which the connection is closed.
Reaction sayAndClose(const QByteArray &bytes);
/// These bytes, and from then on one more byte every few milliseconds.
Reaction drip(const QByteArray &bytes);
/// A body of `size` bytes, written only as fast as it is taken.
Reaction stream(qint64 size);

/// An HTTPS server on this machine that answers each path as it is told, and 404 to the others.
class HttpsServer {
public:
    explicit HttpsServer(const QSslConfiguration &identity);

    void answer(const QString &path, Reaction answer) { answers_[path] = std::move(answer); }
    QUrl address(const QString &path) const;

    QByteArrayList requests; ///< the heads of all requests so far
    int connections() const { return connections_; }

private:
    void serve(QSslSocket &connection);

    QSslServer server_;
    std::map<QString, Reaction> answers_;
    int connections_ = 0; ///< those open now
};

} // namespace quorbit::test
