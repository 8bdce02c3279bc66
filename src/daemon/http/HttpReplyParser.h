#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <memory>
#include <string>

namespace quorbit {

/// Reads one reply from the bytes of a connection, however they are cut into pieces. Interim replies before
/// it are skipped.
class HttpReplyParser {
public:
    explicit HttpReplyParser(std::size_t maximumBody);
    ~HttpReplyParser();
    HttpReplyParser(const HttpReplyParser &) = delete;
    HttpReplyParser &operator=(const HttpReplyParser &) = delete;

    /// Takes the next bytes, until the reply is whole. Throws TransportError when they cannot be one.
    void take(QByteArrayView bytes);
    /// The connection ended, as some replies do. Throws TransportError when the reply is not whole.
    void takeEnd();

    bool isWhole() const { return isWhole_; }
    /// Whether another request may follow on the connection: the whole reply said nothing against it, and
    /// nothing came after it.
    bool keepsConnection() const;
    std::string takeBody();

private:
    struct Message;

    void begin();

    std::size_t maximumBody_;
    std::unique_ptr<Message> message_;
    QByteArray pending_; ///< what the parser wants to see again with more behind it
    std::size_t headSize_ = 0;
    int interimReplies_ = 0;
    bool isWhole_ = false;
};

} // namespace quorbit
