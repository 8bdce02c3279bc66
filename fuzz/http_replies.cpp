#include "Property.h"

#include "async/TransportError.h"
#include "daemon/http/HttpReplyParser.h"

#include <algorithm>
#include <optional>
#include <string>

using namespace quorbit;

namespace {

constexpr std::size_t maximumBody = 1000;

/// The body of a reply whose bytes come in pieces of a size, and then no more; absent when it is none.
std::optional<std::string> bodyOf(const QByteArray &bytes, qsizetype pieceSize, bool &keepsConnection) {
    HttpReplyParser reply(maximumBody);
    try {
        for (qsizetype start = 0; start < bytes.size(); start += pieceSize)
            reply.take(QByteArrayView(bytes).sliced(start, std::min(pieceSize, bytes.size() - start)));
        if (!reply.isWhole())
            reply.takeEnd();
    } catch (const TransportError &) {
        return std::nullopt;
    }
    HOLDS(reply.isWhole());
    keepsConnection = reply.keepsConnection();
    return reply.takeBody();
}

} // namespace

/// A size, and what a server sends.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    InputReader input(data, size);
    const qsizetype pieceSize = 1 + input.byte() % 64;
    const QByteArray bytes(reinterpret_cast<const char *>(data) + (size > 0 ? 1 : 0),
                           static_cast<qsizetype>(size > 0 ? size - 1 : 0));
    bool keepsWhole = false;
    bool keepsPieces = false;
    const auto whole = bodyOf(bytes, bytes.size() + 1, keepsWhole);
    HOLDS(whole == bodyOf(bytes, pieceSize, keepsPieces));
    HOLDS(keepsWhole == keepsPieces);
    HOLDS(!whole || whole->size() <= maximumBody);
    return 0;
}
