#include "async/Http.h"

#include "async/Waiting.h"

namespace quorbit {

namespace {

/// Errors below this one mean that the exchange itself failed; those from it on, that the server answered
/// with an error status.
constexpr int firstContentError = QNetworkReply::ContentAccessDenied;

bool exchangeFailed(const QNetworkReply &reply) {
    const bool answered = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
    return reply.error() != QNetworkReply::NoError && (!answered || reply.error() < firstContentError);
}

} // namespace

void AbandonReply::operator()(QNetworkReply *reply) const {
    reply->disconnect();
    reply->abort();
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
    if (!reply->isFinished())
        co_await Signal(reply.get(), &QNetworkReply::finished, token);
    received.body += reply->readAll();

    if (exchangeFailed(*reply))
        throw TransportError(reply->errorString().toStdString());
    if (received.body.size() > maximumSize)
        throw TransportError("the reply is too large");
    received.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    co_return received;
}

} // namespace quorbit
