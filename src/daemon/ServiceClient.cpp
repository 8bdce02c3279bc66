#include "daemon/ServiceClient.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// Some 65,000 history entries. Replies are read on the main thread: one of this size takes it 0.15 seconds,
/// and 0.6 when it is of 930,000 entries without a text.
constexpr std::size_t maximumReplySize = std::size_t{8} * 1024 * 1024;

/// The path goes out byte for byte, so it must already be in the form of RFC 3986. Refused are also a
/// fragment, which no request has, two slashes at the beginning, which would name another server, and
/// segments that a server might take for steps to another path, however they are spelled.
bool isPathAndQuery(const QString &text) {
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        uR"(/(?!/)(?:[A-Za-z0-9\-._~:/?@!$&'()*+,;=]|%[0-9A-Fa-f]{2})*)"_s));
    static const QRegularExpression step(uR"([/\\]\.\.?(?:[/\\]|$))"_s);
    if (!form.match(text).hasMatch())
        return false;
    const QByteArray path = text.section(u'?', 0, 0).toLatin1();
    return !step.match(QString::fromLatin1(QByteArray::fromPercentEncoding(path))).hasMatch();
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

ServiceClient::ServiceClient(std::chrono::milliseconds timeout, Clock &clock)
    : connections_({timeout, maximumReplySize}, clock) {}

void ServiceClient::setConnection(ConnectionInfo connection) {
    connections_.setAddress(connection.address);
    connection_ = std::move(connection);
}

QCoro::Task<std::string> ServiceClient::exchange(const QByteArray &method, const QString &path,
                                                 std::stop_token token,
                                                 const std::optional<QByteArray> &body) {
    if (!connection_ || !isServiceAddress(connection_->address) || !isPathAndQuery(path))
        throw APIError(APIError::noConnection);
    const QByteArray authorization = "Bearer " + connection_->token.toUtf8();
    if (!isHeaderValue(authorization))
        throw APIError(APIError::noConnection);

    // The path takes the place of the address's own.
    const QUrl server = connection_->address.adjusted(QUrl::RemoveUserInfo);
    QByteArray request = method + ' ' + path.toLatin1() +
                         " HTTP/1.1\r\nHost: " + server.authority(QUrl::FullyEncoded).toLatin1() +
                         "\r\nAuthorization: " + authorization + "\r\n";
    const bool isQuestion = method == "GET";
    if (!isQuestion)
        request += "Connection: close\r\n";
    if (body)
        request += "Content-Type: application/json\r\n";
    if (body || method == "POST" || method == "PUT")
        request += "Content-Length: " + QByteArray::number(body ? body->size() : 0) + "\r\n";
    request += "\r\n" + body.value_or(QByteArray());
    return connections_.exchange(request, isQuestion, std::move(token));
}

QCoro::Task<std::string> ServiceClient::getBody(QString path, std::stop_token token) {
    co_return co_await exchange("GET", path, token);
}

QCoro::Task<> ServiceClient::postEmpty(QString path, std::stop_token token) {
    co_await exchange("POST", path, token);
}

QCoro::Task<> ServiceClient::deleteEmpty(QString path, std::stop_token token) {
    co_await exchange("DELETE", path, token);
}

} // namespace quorbit
