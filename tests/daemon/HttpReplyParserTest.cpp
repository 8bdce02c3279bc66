#include "daemon/http/HttpReplyParser.h"
#include "async/TransportError.h"
#include "support/Row.h"

using namespace quorbit;
using namespace quorbit::test;

namespace {

constexpr std::size_t maximumBody = 100'000;

/// What becomes of a connection's bytes when they come in pieces of a size: the body, a plus sign when the
/// connection is kept, "..." while more is to come, or the word "failure".
QByteArray outcome(const QByteArray &bytes, bool ends, qsizetype pieceSize) {
    HttpReplyParser reply(maximumBody);
    try {
        for (qsizetype start = 0; start < bytes.size(); start += pieceSize)
            reply.take(QByteArrayView(bytes).sliced(start, std::min(pieceSize, bytes.size() - start)));
        if (!reply.isWhole() && ends)
            reply.takeEnd();
    } catch (const TransportError &) {
        return "failure";
    }
    if (!reply.isWhole())
        return "...";
    return QByteArray::fromStdString(reply.takeBody()) + (reply.keepsConnection() ? "+" : "");
}

class HttpReplyParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void replies() {
        const QByteArray ok = "HTTP/1.1 200 OK\r\n";
        const QByteArray two = ok + "Content-Length: 2\r\n\r\n";
        const QByteArray chunked = ok + "Transfer-Encoding: chunked\r\n\r\n";
        const QByteArray early = "HTTP/1.1 103 Early Hints\r\nLink: x\r\n\r\n";
        const QByteArray large(maximumBody + 1, 'x');
        const QByteArray largeSize = QByteArray::number(large.size());
        const struct {
            const char *name;
            QByteArray bytes;
            QByteArray outcome;
            bool ends = true;
        } rows[]{
            {"a length", two + "{}", "{}+"},
            {"an error status", "HTTP/1.1 500 Error\r\nContent-Length: 2\r\n\r\n{}", "{}+"},
            {"chunks", chunked + "1;a=b\r\n{\r\n1\r\n}\r\n0\r\nTrailer: x\r\n\r\n", "{}+"},
            {"until the end", ok + "\r\n{}", "{}"},
            {"until an end that does not come", ok + "\r\n{}", "...", false},
            {"a status without a body", "HTTP/1.1 304 No\r\nContent-Length: 9\r\n\r\n", "+"},
            {"interim replies first", early.repeated(32) + two + "{}", "{}+"},
            {"the last one", ok + "Connection: close\r\nContent-Length: 2\r\n\r\n{}", "{}"},
            {"with more behind it", two + "{}{}", "{}"},

            {"nothing", "", "failure"},
            {"an end in the head", ok + "Content-Len", "failure"},
            {"less than announced", two + "{", "failure"},
            {"an interim reply alone", early, "failure"},
            {"too many interim replies", early.repeated(33), "failure", false},
            {"another protocol", "HTTP/1.1 101 Switching\r\n\r\n", "failure", false},
            {"no head at all", R"({"a": 1})", "failure"},
            {"TLS", QByteArray::fromHex("15030100020228"), "failure"},
            {"a length below zero", ok + "Content-Length: -1\r\n\r\n", "failure", false},
            {"a length of 2^64", ok + "Content-Length: 18446744073709551616\r\n\r\n", "failure", false},
            {"two lengths", ok + "Content-Length: 3\r\n" + two.sliced(ok.size()) + "{}", "failure", false},
            {"a length and chunks", two.chopped(2) + chunked.sliced(ok.size()), "failure", false},
            {"a chunk's size that is no number", chunked + "zz\r\n{}", "failure", false},
            {"more in a chunk", chunked + "2\r\n{}x0\r\n\r\n", "failure", false},
            {"no last chunk", chunked + "2\r\n{}\r\n", "failure"},
            {"an endless head", ok + QByteArray("A: b\r\n").repeated(20'000), "failure", false},
            {"an endless line", ok + "A: " + large, "failure", false},
            {"an endless chunk header", chunked + "1;" + large, "failure", false},
            {"an endless chunk size", chunked + QByteArray(100'000, '0'), "failure", false},
            {"too large", ok + "Content-Length: " + largeSize + "\r\n\r\n" + large, "failure", false},
            {"too large in the end", ok + "\r\n" + large, "failure", false},
            {"too large a chunk", chunked + QByteArray::number(large.size(), 16) + "\r\n", "failure", false}};
        for (const auto &[name, bytes, expected, ends] : rows) {
            const Row row(name);
            for (const qsizetype pieceSize : {qsizetype{1}, qsizetype{7}, qsizetype{65'536}})
                QCOMPARE(outcome(bytes, ends, pieceSize), expected);
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(HttpReplyParserTest)
#include "HttpReplyParserTest.moc"
