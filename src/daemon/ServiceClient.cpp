#include "daemon/ServiceClient.h"

#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QRegularExpression>

#include <algorithm>

namespace quorbit {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maximumReplySize = qint64{32} * 1024 * 1024;

/// The path goes out as it is, so it must already be in the form of RFC 3986. A fragment would silently be
/// cut off on the way, and is refused too.
bool isPathAndQuery(const QString &text) {
    static const QRegularExpression form(
        QRegularExpression::anchoredPattern(uR"(/(?:[A-Za-z0-9\-._~:/?@!$&'()*+,;=]|%[0-9A-Fa-f]{2})*)"_s));
    return form.match(text).hasMatch();
}

bool isServiceAddress(const QUrl &address) {
    return (address.scheme() == "http"_L1 || address.scheme() == "https"_L1) && !address.host().isEmpty();
}

/// A line break in a header would begin another header.
bool isHeaderValue(const QByteArray &value) {
    return std::none_of(value.begin(), value.end(), [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
    });
}

} // namespace

ServiceClient::ServiceClient(std::chrono::milliseconds silence) : silence_(silence) {
    network_.setProxy(QNetworkProxy::NoProxy);
}

OwnedReply ServiceClient::request(const QString &path, const QByteArray &method,
                                  const std::optional<QByteArray> &body) {
    if (!connection_ || !isServiceAddress(connection_->address) || !isPathAndQuery(path))
        throw APIError(APIError::noConnection);
    const QByteArray authorization = "Bearer " + connection_->token.toUtf8();
    if (!isHeaderValue(authorization))
        throw APIError(APIError::noConnection);

    QNetworkRequest request(connection_->address.resolved(QUrl(path, QUrl::StrictMode)));
    request.setTransferTimeout(static_cast<int>(silence_.count()));
    request.setRawHeader("Authorization", authorization);
    // A redirect would carry the token to wherever it points, and repeat a command there.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    if (body)
        request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json"_L1);

    if (method == "GET")
        return OwnedReply(network_.get(request));
    if (method == "DELETE")
        return OwnedReply(network_.deleteResource(request));
    // With an empty body too, so that a length of zero is announced.
    return OwnedReply(network_.sendCustomRequest(request, method, body.value_or(QByteArray())));
}

QCoro::Task<QByteArray> ServiceClient::answer(OwnedReply reply, std::stop_token token) {
    HttpReply received = co_await receive(std::move(reply), maximumReplySize, token);
    co_return std::move(received.body);
}

QCoro::Task<> ServiceClient::postEmpty(QString path, std::stop_token token) {
    co_await answer(request(path, "POST"), token);
}

QCoro::Task<> ServiceClient::deleteEmpty(QString path, std::stop_token token) {
    co_await answer(request(path, "DELETE"), token);
}

} // namespace quorbit
