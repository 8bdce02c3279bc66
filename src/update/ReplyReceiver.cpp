#include "update/ReplyReceiver.h"

#include "async/Waiting.h"

namespace quorbit {

namespace {

constexpr int firstErrorStatus = 400;

/// Whether no whole reply came. Qt also calls it an error when the server answered with an error status.
bool exchangeFailed(const QNetworkReply &reply) {
    if (reply.error() == QNetworkReply::NoError)
        return false;
    // Zero when no status came at all.
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool isAboutStatus = reply.error() >= QNetworkReply::ContentAccessDenied ||
                               reply.error() == QNetworkReply::ProxyAuthenticationRequiredError;
    return status < firstErrorStatus || !isAboutStatus;
}

} // namespace

void AbandonReply::operator()(QNetworkReply *reply) const {
    // Only what our side listens to: it is by a signal, too, that a reply being deleted ends its exchange.
    QObject::disconnect(reply, &QNetworkReply::readyRead, nullptr, nullptr);
    QObject::disconnect(reply, &QNetworkReply::finished, nullptr, nullptr);
    reply->deleteLater();
}

QCoro::Task<HttpReply> receive(OwnedReply reply, qint64 maximumSize, std::stop_token token) {
    HttpReply received;
    // The body is drained as it comes, so that an endless one is noticed at the limit and not when memory is
    // full.
    QObject::connect(reply.get(), &QNetworkReply::readyRead, reply.get(), [&received, maximumSize, &reply] {
        received.body += reply->readAll();
        if (received.body.size() > maximumSize)
            reply->abort();
    });
    if (!reply->isFinished()) {
        Signal end(reply.get(), &QNetworkReply::finished, token);
        co_await end;
    }
    if (reply->isOpen()) // An aborted reply is not.
        received.body += reply->readAll();

    received.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (received.body.size() > maximumSize)
        throw ReplyTooLarge(received.status);
    if (exchangeFailed(*reply))
        throw TransportError(reply->errorString().toStdString());
    co_return received;
}

} // namespace quorbit
