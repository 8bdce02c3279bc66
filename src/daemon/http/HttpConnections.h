#pragma once

#include "daemon/http/HttpConnection.h"

#include <QByteArray>
#include <QUrl>

#include <QCoroTask>

#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace quorbit {

/// The connections to one server, some of which wait for their next request. Every exchange must have ended,
/// or have been stopped, before it is destroyed.
class HttpConnections {
public:
    HttpConnections(HttpLimits limits, Clock &clock) : limits_(limits), clock_(clock) {}

    /// Where later requests go. Only the scheme, host and port of the address matter.
    void setAddress(const QUrl &address);

    /// Sends a whole request and gives the body of the reply, whatever its status. Throws TransportError;
    /// leaves by Stopped when the token is triggered, and the exchange is then aborted. A repeatable request
    /// may use a kept connection, and goes out once more when that turns out to be dead; any other has a
    /// connection of its own.
    QCoro::Task<std::string> exchange(QByteArray request, bool isRepeatable, std::stop_token token);

private:
    std::unique_ptr<HttpConnection> takeIdle();
    void keep(std::unique_ptr<HttpConnection> connection, const QUrl &address);

    HttpLimits limits_;
    Clock &clock_;
    QUrl address_;
    std::vector<std::unique_ptr<HttpConnection>> idle_;
};

} // namespace quorbit
