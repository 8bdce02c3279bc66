#pragma once

#include "async/TransportError.h"
#include "daemon/ConnectionFiles.h"
#include "daemon/http/HttpConnections.h"
#include "wire/Wire.h"

#include <QByteArray>
#include <QString>

#include <QCoroTask>

#include <chrono>
#include <exception>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>

namespace quorbit {

/// The client's own failure; everything else that a request throws is a TransportError or a wire error.
class APIError : public std::exception {
public:
    enum Kind {
        noConnection, ///< the request cannot be formed: no address or token, or not usable ones. Nothing was
                      ///< sent.
    };

    explicit APIError(Kind failure) : kind(failure) {}
    const char *what() const noexcept override { return "no connection"; }
    bool operator==(const APIError &other) const { return kind == other.kind; }

    Kind kind;
};

/// Exchanges records with the service. An exchange succeeds when a whole reply came and its body is the
/// expected record; the HTTP status plays no part. Every wait leaves by Stopped when its token is triggered.
class ServiceClient {
public:
    /// `timeout` is how long an exchange may make no progress.
    ServiceClient(std::chrono::milliseconds timeout, Clock &clock);

    /// The service to which every later request goes.
    void setConnection(ConnectionInfo connection);

    template <class Reply>
    QCoro::Task<Reply> get(QString path, std::stop_token token);
    /// The body of the reply as it came; who knows it already can spare itself the decoding.
    QCoro::Task<std::string> getBody(QString path, std::stop_token token);
    template <class Reply, class Body>
    QCoro::Task<Reply> put(QString path, Body body, std::stop_token token);
    template <class Reply, class Body>
    QCoro::Task<Reply> post(QString path, Body body, std::stop_token token);
    QCoro::Task<> postEmpty(QString path, std::stop_token token);
    QCoro::Task<> deleteEmpty(QString path, std::stop_token token);

private:
    /// Sends a request for a path that begins with "/", and gives the body of the reply. Throws APIError.
    QCoro::Task<std::string> exchange(const QByteArray &method, const QString &path, std::stop_token token,
                                      const std::optional<QByteArray> &body = std::nullopt);

    HttpConnections connections_;
    std::optional<ConnectionInfo> connection_;
};

template <class Reply>
QCoro::Task<Reply> ServiceClient::get(QString path, std::stop_token token) {
    co_return wire::decode<Reply>(co_await getBody(path, token));
}

template <class Reply, class Body>
QCoro::Task<Reply> ServiceClient::put(QString path, Body body, std::stop_token token) {
    co_return wire::decode<Reply>(co_await exchange("PUT", path, token, wire::encode(body)));
}

template <class Reply, class Body>
QCoro::Task<Reply> ServiceClient::post(QString path, Body body, std::stop_token token) {
    co_return wire::decode<Reply>(co_await exchange("POST", path, token, wire::encode(body)));
}

} // namespace quorbit
