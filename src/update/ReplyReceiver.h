#pragma once

#include "async/TransportError.h"

#include <QByteArray>
#include <QNetworkReply>

#include <QCoroTask>

#include <memory>
#include <stop_token>

namespace quorbit {

/// The body was larger than its receiver allowed.
class ReplyTooLarge : public TransportError {
public:
    explicit ReplyTooLarge(int status) : TransportError("the reply is too large"), status_(status) {}

    int status() const { return status_; }

private:
    int status_;
};

/// Aborts an exchange that is still running when its owner lets go of it.
struct AbandonReply {
    void operator()(QNetworkReply *reply) const;
};
using OwnedReply = std::unique_ptr<QNetworkReply, AbandonReply>;

struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// Waits for the whole reply. Fails with TransportError, which is a ReplyTooLarge as soon as the body exceeds
/// `maximumSize` bytes; leaves by Stopped when the token is triggered. In both cases the exchange is aborted.
QCoro::Task<HttpReply> receive(OwnedReply reply, qint64 maximumSize, std::stop_token token);

} // namespace quorbit
