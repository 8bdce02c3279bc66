#include "daemon/http/HttpReplyParser.h"

#include "async/TransportError.h"

// The parser asserts that the last chunk comes together with what ends it, and does the right thing when a
// slow server sends them apart.
#define BOOST_DISABLE_ASSERTS
// Slow to compile, and therefore included nowhere else.
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include <utility>

namespace quorbit {

namespace http = boost::beast::http;

namespace {

constexpr std::size_t maximumHead = 65'536;
/// More than any service has reason to send; an endless row of them would count as progress for ever.
constexpr int maximumInterimReplies = 32;
constexpr unsigned switchingProtocols = 101;
constexpr unsigned firstFinalStatus = 200;

} // namespace

struct HttpReplyParser::Message {
    http::response_parser<http::string_body> parser;
};

HttpReplyParser::HttpReplyParser(std::size_t maximumBody) : maximumBody_(maximumBody) {
    begin();
}

HttpReplyParser::~HttpReplyParser() = default;

void HttpReplyParser::begin() {
    message_ = std::make_unique<Message>();
    // Step by step: the parser forgets that a body exceeds its limit when it goes on in the same step.
    message_->parser.eager(false);
    message_->parser.header_limit(maximumHead);
    message_->parser.body_limit(maximumBody_);
    headSize_ = 0;
}

void HttpReplyParser::take(QByteArrayView bytes) {
    pending_.append(bytes);
    while (!isWhole_ && !pending_.isEmpty()) {
        auto &parser = message_->parser;
        const bool isInHead = !parser.is_header_done();
        boost::system::error_code error;
        const std::size_t used =
            parser.put({pending_.constData(), static_cast<std::size_t>(pending_.size())}, error);
        pending_.remove(0, static_cast<qsizetype>(used));
        if (error && error != http::error::need_more)
            throw TransportError(error.message());
        // The parser's own limit holds for a line, not for a head that comes line by line.
        if (isInHead)
            headSize_ += used;
        const std::size_t unread = static_cast<std::size_t>(pending_.size());
        if (error && (parser.is_header_done() ? unread : headSize_ + unread) > maximumHead)
            throw TransportError("the reply's head is too large");

        if (parser.is_done()) {
            const unsigned status = parser.get().result_int();
            isWhole_ = status >= firstFinalStatus;
            if (isWhole_)
                return;
            if (status == switchingProtocols || ++interimReplies_ > maximumInterimReplies)
                throw TransportError("an interim reply that was not asked for");
            begin();
        } else if (error) {
            return;
        }
    }
}

void HttpReplyParser::takeEnd() {
    boost::system::error_code error = http::error::partial_message;
    if (message_->parser.got_some())
        message_->parser.put_eof(error);
    if (error)
        throw TransportError(error.message());
    isWhole_ = true;
}

bool HttpReplyParser::keepsConnection() const {
    return isWhole_ && pending_.isEmpty() && message_->parser.keep_alive();
}

std::string HttpReplyParser::takeBody() {
    return std::move(message_->parser.get().body());
}

} // namespace quorbit
