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

QCoro::Task<std::string> HttpConnections::exchange(QByteArray request, bool isRepeatable,
                                                   std::stop_token token) {
    // The request belongs to this server, even if another one takes its place meanwhile.
    const QUrl address = address_;
    auto connection = isRepeatable ? takeIdle() : nullptr;
    for (;;) {
        const bool isFresh = !connection;
        if (isFresh)
            connection = std::make_unique<HttpConnection>(address, limits_, clock_);
        connection->send(request);
        Signal end(connection.get(), &HttpConnection::ended, token);
        co_await end;
        if (isFresh || !connection->wasLostUnanswered())
            break;
        connection.reset();
    }
    std::string body = connection->takeBody();
    if (isRepeatable)
        keep(std::move(connection), address);
    co_return body;
}

std::unique_ptr<HttpConnection> HttpConnections::takeIdle() {
    while (!idle_.empty()) {
        auto connection = std::move(idle_.back());
        idle_.pop_back();
        // The server may have closed it, or spoken out of turn, since it was kept.
        if (connection->isReusable())
            return connection;
    }
    return nullptr;
}

void HttpConnections::keep(std::unique_ptr<HttpConnection> connection, const QUrl &address) {
    if (connection->isReusable() && address == address_ && idle_.size() < maximumIdle)
        idle_.push_back(std::move(connection));
}

} // namespace quorbit
