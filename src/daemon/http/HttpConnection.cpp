#include "daemon/http/HttpConnection.h"

#include "async/TransportError.h"

#include <QNetworkProxy>
#include <QSslSocket>

#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// What is read in one turn of the event loop, so that a flood leaves room for everything else.
constexpr qint64 portion = 65'536;
constexpr int httpPort = 80;
constexpr int httpsPort = 443;

} // namespace

HttpConnection::HttpConnection(const QUrl &address, HttpLimits limits, Clock &clock)
    : limits_(limits), clock_(clock) {
    const bool isSecure = address.scheme() == "https"_L1;
    auto *secure = isSecure ? new QSslSocket : nullptr;
    socket_.reset(isSecure ? secure : new QTcpSocket);
    socket_->setProxy(QNetworkProxy::NoProxy);
    socket_->setReadBufferSize(portion);

    connect(socket_.get(), &QTcpSocket::readyRead, this, &HttpConnection::receive);
    connect(socket_.get(), &QTcpSocket::bytesWritten, this, &HttpConnection::noteProgress);
    connect(socket_.get(), &QTcpSocket::errorOccurred, this, &HttpConnection::lose);

    const auto port = static_cast<quint16>(address.port(isSecure ? httpsPort : httpPort));
    if (isSecure)
        secure->connectToHostEncrypted(address.host(), port);
    else
        socket_->connectToHost(address.host(), port);
}

HttpConnection::~HttpConnection() {
    socket_->disconnect(this); // its destructor aborts, which emits errorOccurred
}

void HttpConnection::send(const QByteArray &request) {
    hasEnded_ = isAnswered_ = wasLost_ = false;
    failure_.reset();
    reply_.emplace(limits_.body);
    noteProgress();
    endUnlessProgress(limits_.timeout);
    // While connecting, the socket keeps it until it can be sent; afterwards it need not wait for a turn.
    if (socket_->write(request) < 0)
        lose(socket_->error());
    else if (socket_->state() == QAbstractSocket::ConnectedState)
        socket_->flush();
}

/// One alarm for all of an exchange, which looks when the last progress was: to set another for every piece
/// of a reply would take longer than to read the piece.
void HttpConnection::endUnlessProgress(std::chrono::milliseconds delay) {
    timeout_ = clock_.after(delay, [this] {
        const std::chrono::duration<double> silence(clock_.uptime() - lastProgress_);
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(limits_.timeout - silence);
        if (rest > std::chrono::milliseconds::zero())
            endUnlessProgress(rest);
        else
            end("no reply in time");
    });
}

std::string HttpConnection::takeBody() {
    if (failure_)
        throw TransportError(*failure_);
    return reply_->takeBody();
}

bool HttpConnection::isReusable() const {
    return hasEnded_ && !failure_ && reply_ && reply_->keepsConnection() && socket_->bytesToWrite() == 0 &&
           socket_->state() == QAbstractSocket::ConnectedState;
}

void HttpConnection::receive() {
    const QByteArray bytes = socket_->readAll();
    if (bytes.isEmpty())
        return;
    if (hasEnded_) { // Nobody asked for it.
        socket_->abort();
        return;
    }
    isAnswered_ = true;
    noteProgress();
    try {
        reply_->take(bytes);
    } catch (const TransportError &error) {
        return end(error.what());
    }
    if (reply_->isWhole())
        end();
}

void HttpConnection::lose(QAbstractSocket::SocketError error) {
    if (hasEnded_)
        return;
    wasLost_ = true;
    if (error == QAbstractSocket::RemoteHostClosedError && isAnswered_) {
        try {
            reply_->takeEnd();
            return end();
        } catch (const TransportError &failure) {
            return end(failure.what());
        }
    }
    end(socket_->errorString().toStdString());
}

void HttpConnection::end(std::optional<std::string> failure) {
    hasEnded_ = true;
    timeout_.reset();
    failure_ = std::move(failure);
    if (failure_)
        socket_->abort();
    // Queued, since this may run inside a signal of the socket, which must not be destroyed there.
    QMetaObject::invokeMethod(this, &HttpConnection::ended, Qt::QueuedConnection);
}

} // namespace quorbit
