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

/// The connections to one server, some of which wait for their next request. Exchanges under way share it,
/// so that they may outlive its owner.
class HttpConnections {
public:
    explicit HttpConnections(HttpLimits limits) : limits_(limits) {}

    /// Where later requests go. Only the scheme, host and port of the address matter.
    void setAddress(const QUrl &address);

    /// Sends a whole request and gives the body of the reply, whatever its status. Throws TransportError;
    /// leaves by Stopped when the token is triggered, and the exchange is then aborted. A repeatable request
    /// may use a kept connection, and goes out once more when that turns out to be dead; any other has a
    /// connection of its own.
    static QCoro::Task<std::string> exchange(std::shared_ptr<HttpConnections> connections, QByteArray request,
                                             bool isRepeatable, std::stop_token token);

private:
    HttpConnection::Owned takeIdle();
    void keep(HttpConnection::Owned connection, const QUrl &address);

    HttpLimits limits_;
    QUrl address_;
    std::vector<HttpConnection::Owned> idle_;
};

} // namespace quorbit
