#pragma once

#include "daemon/http/HttpReplyParser.h"
#include "platform/Clock.h"

#include <QAbstractSocket>
#include <QByteArray>
#include <QObject>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

class QTcpSocket;

namespace quorbit {

/// What an exchange may cost.
struct HttpLimits {
    std::chrono::milliseconds timeout; ///< without any progress
    std::size_t body;                  ///< bytes
};

/// A connection to a server, for one exchange after another.
class HttpConnection : public QObject {
    Q_OBJECT

public:
    /// Begins to connect to an http or https address.
    HttpConnection(const QUrl &address, HttpLimits limits, Clock &clock);
    ~HttpConnection() override;

    /// Sends a whole request, when no other is under way. ended() follows, never before this returns.
    void send(const QByteArray &request);

    /// The body of the reply. Throws TransportError when no whole reply came.
    std::string takeBody();
    /// Whether the connection was lost before the first byte of a reply, as happens when the server closes
    /// it at the moment at which a request is sent.
    bool wasLostUnanswered() const { return wasLost_ && !isAnswered_; }
    /// Whether another request may be sent: nothing is under way and nothing speaks against it.
    bool isReusable() const;

Q_SIGNALS:
    /// The exchange is over, well or not. The connection may be destroyed in answer.
    void ended();

private:
    void noteProgress() { lastProgress_ = clock_.uptime(); }
    void endUnlessProgress(std::chrono::milliseconds delay);
    void receive();
    void lose(QAbstractSocket::SocketError error);
    void end(std::optional<std::string> failure = std::nullopt);

    HttpLimits limits_;
    Clock &clock_;
    std::unique_ptr<QTcpSocket> socket_;
    std::unique_ptr<Clock::Alarm> timeout_;
    double lastProgress_ = 0; ///< uptime in seconds
    std::optional<HttpReplyParser> reply_;
    std::optional<std::string> failure_;
    bool hasEnded_ = true;
    bool isAnswered_ = false;
    bool wasLost_ = false;
};

} // namespace quorbit
