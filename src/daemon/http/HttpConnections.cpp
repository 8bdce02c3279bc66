#include "daemon/http/HttpConnections.h"

#include "async/Waiting.h"

#include <utility>

namespace quorbit {

namespace {

/// As many as are asked at the same time.
constexpr std::size_t maximumIdle = 4;

} // namespace

void HttpConnections::setAddress(const QUrl &address) {
    const QUrl server =
        address.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
    if (server == address_)
        return;
    address_ = server;
    idle_.clear();
}

QCoro::Task<std::string> HttpConnections::exchange(std::shared_ptr<HttpConnections> connections,
                                                   QByteArray request, bool isRepeatable,
                                                   std::stop_token token) {
    // The request belongs to this server, even if another one takes its place meanwhile.
    const QUrl address = connections->address_;
    HttpConnection::Owned connection = isRepeatable ? connections->takeIdle() : nullptr;
    for (;;) {
        const bool isFresh = !connection;
        if (isFresh)
            connection.reset(new HttpConnection(address, connections->limits_));
        connection->send(request);
        if (!connection->hasEnded()) {
            Signal end(connection.get(), &HttpConnection::ended, token);
            co_await end;
        }
        if (isFresh || !connection->wasLostUnanswered())
            break;
        connection.reset();
    }
    std::string body = connection->takeBody();
    if (isRepeatable)
        connections->keep(std::move(connection), address);
    co_return body;
}

HttpConnection::Owned HttpConnections::takeIdle() {
    while (!idle_.empty()) {
        HttpConnection::Owned connection = std::move(idle_.back());
        idle_.pop_back();
        // The server may have closed it, or spoken out of turn, since it was kept.
        if (connection->isReusable())
            return connection;
    }
    return nullptr;
}

void HttpConnections::keep(HttpConnection::Owned connection, const QUrl &address) {
    if (connection->isReusable() && address == address_ && idle_.size() < maximumIdle)
        idle_.push_back(std::move(connection));
}

} // namespace quorbit
