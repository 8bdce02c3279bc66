#include "support/FakeService.h"

#include "support/Samples.h"

#include <QTcpSocket>

#include <memory>

using namespace Qt::StringLiterals;

namespace quorbit::test {

QByteArrayList SeenRequest::header(const QByteArray &name) const {
    QByteArrayList values;
    for (const QByteArray &headerLine : head.split('\n')) {
        const auto colon = headerLine.indexOf(": ");
        if (colon > 0 && headerLine.left(colon).toLower() == name)
            values.push_back(headerLine.mid(colon + 2).chopped(headerLine.endsWith('\r') ? 1 : 0));
    }
    return values;
}

FakeService::FakeService(const QHostAddress &host) : host_(host) {
    connect(&server_, &QTcpServer::newConnection, this, &FakeService::accept);
    open();
}

QUrl FakeService::address() const {
    QUrl url;
    url.setScheme(u"http"_s);
    url.setHost(host_.toString());
    url.setPort(port_);
    return url;
}

void FakeService::answerAll() {
    answer("GET /api/status", {statusJson});
    answer("GET /api/settings", {settingsJson});
    answer("GET /api/devices", {devicesJson});
    answer("GET /api/history", {historyJson});
}

void FakeService::close() {
    server_.close();
    hangUp();
}

void FakeService::hangUp() {
    for (QTcpSocket *socket : server_.findChildren<QTcpSocket *>())
        socket->abort();
}

void FakeService::say(const QByteArray &bytes) {
    for (QTcpSocket *socket : server_.findChildren<QTcpSocket *>())
        socket->write(bytes);
}

qsizetype FakeService::openConnections() const {
    return server_.findChildren<QTcpSocket *>().size();
}

void FakeService::open() {
    if (!server_.listen(host_, port_) && !server_.listen(host_))
        qFatal("no free port");
    port_ = server_.serverPort();
}

QByteArrayList FakeService::lines() const {
    QByteArrayList lines;
    for (const SeenRequest &request : seen)
        lines.push_back(request.line);
    return lines;
}

void FakeService::accept() {
    while (QTcpSocket *socket = server_.nextPendingConnection()) {
        ++connections;
        auto received = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, received] { read(socket, *received); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void FakeService::read(QTcpSocket *socket, QByteArray &received) {
    received += socket->readAll();
    for (;;) {
        const auto headEnd = received.indexOf("\r\n\r\n");
        if (headEnd < 0)
            return;
        SeenRequest request;
        request.head = received.left(headEnd);
        const QByteArray first = request.head.left(request.head.indexOf("\r\n"));
        request.line = first.left(first.lastIndexOf(' '));
        const auto bodySize = request.header("content-length").value(0).toLongLong();
        if (received.size() < headEnd + 4 + bodySize)
            return;
        request.body = received.mid(headEnd + 4, bodySize);
        received.remove(0, headEnd + 4 + bodySize);
        seen.push_back(request);
        respond(socket, answers_.value(request.line, {{}, 404}));
    }
}

void FakeService::respond(QTcpSocket *socket, const Answer &answer) {
    if (answer.manner == Answer::hang)
        return;
    if (answer.manner == Answer::shut)
        return socket->disconnectFromHost();
    if (answer.manner == Answer::raw) {
        socket->write(answer.body);
        return;
    }

    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Status\r\n";
    for (const QByteArray &line : answer.headers)
        head += line + "\r\n";
    const bool cutOff = answer.manner == Answer::cutOff;
    head += "Content-Length: " + QByteArray::number(answer.body.size() + (cutOff ? 1 : 0)) + "\r\n\r\n";
    socket->write(head + answer.body);
    if (cutOff)
        socket->disconnectFromHost();
}

} // namespace quorbit::test
