#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QTcpServer>
#include <QUrl>

#include <vector>

class QTcpSocket;

namespace quorbit::test {

/// What the fake service does when a request has come in.
struct Answer {
    enum Manner {
        reply,
        hang,   ///< never answers
        cutOff, ///< announces one byte more than it sends, and closes
        shut,   ///< closes without a word
        raw,    ///< sends the body alone, which brings a head of its own
    };

    QByteArray body;
    int status = 200;
    QByteArrayList headers = {}; ///< whole header lines, without line ends
    Manner manner = reply;
};

/// One request as it came over the wire.
struct SeenRequest {
    QByteArray line; ///< "GET /api/status"
    QByteArray head; ///< everything before the empty line, byte for byte
    QByteArray body;

    /// The values of a header, by its lower-case name, byte for byte after the colon and one space.
    QByteArrayList header(const QByteArray &name) const;
};

/// An HTTP server on a free port of the loopback address, whose answers the test scripts.
class FakeService : public QObject {
public:
    explicit FakeService(const QHostAddress &host = QHostAddress::LocalHost);

    QUrl address() const;
    /// Answers `line` ("GET /api/status") so from now on; everything else is answered with 404 and no body.
    void answer(const QByteArray &line, Answer answer) { answers_[line] = std::move(answer); }
    /// Answers the four resources with small good records.
    void answerAll();
    /// Refuses connections from now on and closes those that are open.
    void close();
    /// Closes the connections that are open.
    void hangUp();
    /// Says something on every connection that is open, without being asked.
    void say(const QByteArray &bytes);
    qsizetype openConnections() const;
    /// Listens again after close(), on the same port if that is still free.
    void open();

    std::vector<SeenRequest> seen;
    int connections = 0;

    /// The lines of what was seen, in order.
    QByteArrayList lines() const;
    int count(const QByteArray &line) const { return static_cast<int>(lines().count(line)); }

private:
    void accept();
    void read(QTcpSocket *socket, QByteArray &received);
    void respond(QTcpSocket *socket, const Answer &answer);

    QHostAddress host_;
    QTcpServer server_;
    quint16 port_ = 0; ///< any
    QHash<QByteArray, Answer> answers_;
};

} // namespace quorbit::test
