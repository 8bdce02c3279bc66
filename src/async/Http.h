#pragma once

#include <QByteArray>
#include <QNetworkReply>

#include <QCoroTask>

#include <memory>
#include <stdexcept>
#include <stop_token>

namespace quorbit {

/// No complete reply came: refused, cut off, timed out, too large. An HTTP error status is a reply, not this
/// error.
class TransportError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

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
