#pragma once

#include "update/ReplyReceiver.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>

#include <memory>

namespace quorbit {

/// Sends GET requests over HTTPS alone: certificates are checked, the system's proxy is used, no reply comes
/// from a cache, redirects lead only to other HTTPS addresses, and no request tells who sends it.
class SecureNetwork {
public:
    explicit SecureNetwork(
        std::unique_ptr<QNetworkAccessManager> manager = std::make_unique<QNetworkAccessManager>());

    /// Throws TransportError, before anything is sent, when the address is not an HTTPS one.
    OwnedReply get(QNetworkRequest request);

private:
    std::unique_ptr<QNetworkAccessManager> manager_;
};

} // namespace quorbit
