#include "daemon/Records.h"
#include "support/Row.h"
#include "support/Samples.h"
#include "wire/Codec.h"

#include <cmath>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

QByteArray failure(QByteArrayView json) {
    try {
        wire::decode<Status>(json);
    } catch (const wire::DecodeError &error) {
        return error.what();
    }
    return "no failure";
}

qint64 numberIn(const QByteArray &literal) {
    return wire::decode<HistoryEntry>(R"({"id":)" + literal + '}').id;
}

class RecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keysReachTheirMembers() {
        const FileXfer transfer{u"a.bin"_s, 2, 1, Q_INT64_C(9007199254740993), true};
        const std::vector<std::vector<double>> displays{{0, 0, 1440, 900}, {1440, 0, 1, 1.5}};
        const PeerStatus peer{u"d2"_s, u"Lap"_s};
        QCOMPARE(wire::decode<Status>(statusJson),
                 (Status{u"d1"_s, u"Desk"_s, u"linux"_s, 24800, false, std::vector{peer}, u"text"_s, true,
                         false, u"1.2.0"_s, 1440, 900.5, displays, transfer}));
        const ScreenPlacement first{0, 0, 1440, 900};
        const ScreenPlacement second{-1778, 0.1, 1778, 1000};
        QCOMPARE(wire::decode<DaemonSettings>(settingsJson),
                 (DaemonSettings{u"Desk"_s, 24800, 100, true, false, true, false, u"left"_s, true, 250, 16,
                                 false, 1.25, ScreenLayout{{u"d1"_s, first}},
                                 ScreenLayout{{u"d1"_s, first}, {u"d2"_s, second}}, u"d1"_s,
                                 Q_INT64_C(9007199254740993)}));
        const Device device{u"d2"_s, u"Lap"_s, u"darwin"_s, u"aa:bb"_s, true, Q_INT64_C(1700000000500), 5};
        QCOMPARE(wire::decode<std::vector<Device>>(devicesJson), std::vector{device});
        // Members' own names are not keys, and one bad element fails the list.
        using History = std::vector<HistoryEntry>;
        QCOMPARE(wire::decode<History>(historyJson),
                 (History{{7, u"text"_s, u"hello"_s, u"Lap"_s, 5}, {8, {}, {}, {}, {}}}));
        QCOMPARE(wire::decode<History>(R"([{"id":7,"preview":"x","ts":9}])"), (History{{7, {}, {}, {}, {}}}));
        QVERIFY_EXCEPTION_THROWN(wire::decode<History>(R"([{"id":7},{"type":"text"}])"), wire::DecodeError);
    }

    void wholeNumbers() {
        const std::pair<const char *, qint64> good[]{
            {"-3", -3},
            {"8080.0", 8080},
            {"9223372036854775807", std::numeric_limits<qint64>::max()},
            {"-9223372036854775808", std::numeric_limits<qint64>::min()}};
        for (const auto &[literal, value] : good) {
            const Row row(literal);
            QCOMPARE(numberIn(literal), value);
        }
        for (const char *bad : {"9223372036854775808", "-9223372036854775809", "18446744073709551616", "1e19",
                                "-1e19", "8080.5", "\"1\"", "true", "null", "1e400", "NaN"}) {
            const Row row(bad);
            QVERIFY_EXCEPTION_THROWN(numberIn(bad), wire::DecodeError);
        }
    }

    void failuresSayWhereAndWhat() {
        const std::tuple<const char *, const char *, const char *> rows[]{
            {R"("paused":false)", R"("paused":0)", "paused: expected true or false"},
            {R"("name":"Lap")", R"("nom":"Lap")", "peers[0].name: is missing"},
            {R"("text")", "7", "last_activity: expected a string"},
            {"1440.0,900.0]", R"("1440",900.0])", "local_displays[0][2]: expected a number"},
            {R"("file_xfer":{)", R"("file_xfer":[],"x":{)", "file_xfer: expected an object"}};
        for (const auto &[good, bad, message] : rows) {
            const Row row(message);
            QCOMPARE(failure(QByteArray(statusJson).replace(good, bad)), message);
        }
    }

    void documentsThatAreNotJson() {
        const QByteArrayList rows{
            "",
            statusJson.chopped(1),
            statusJson + "}",
            QByteArray(statusJson).replace("Desk", "\xc3("),     // not UTF-8
            QByteArray(statusJson).replace("Desk", R"(\ud800)"), // half a character
            QByteArray("{\"peers\":").repeated(100'000),
            QByteArray(statusJson)
                .insert(1, R"("deep":)" + QByteArray(600, '[') + QByteArray(600, ']') + ',')};
        for (const QByteArray &json : rows) {
            const Row row(json.first(std::min<qsizetype>(json.size(), 60)));
            QVERIFY_EXCEPTION_THROWN(wire::decode<Status>(json), wire::DecodeError);
        }
    }

    void writesInOrderAndLeavesOutWhatIsAbsent() {
        QCOMPARE(wire::encode(HistoryEntry{.id = Q_INT64_C(9007199254740993),
                                           .type = {},
                                           .preview = u"a\"\u00e9\U0001f600\n"_s,
                                           .source = {},
                                           .ts = {}}),
                 "{\"id\":9007199254740993,\"label\":\"a\\\"\u00e9\U0001f600\\n\"}");
        auto settings = wire::decode<DaemonSettings>(settingsJson);
        QCOMPARE(wire::encode(settings), settingsJson);
        settings.kvm_sensitivity = std::nan("");
        QVERIFY_EXCEPTION_THROWN(wire::encode(settings), wire::EncodeError);
    }
};

} // namespace

QTEST_GUILESS_MAIN(RecordsTest)
#include "RecordsTest.moc"
