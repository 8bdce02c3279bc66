#include "daemon/Records.h"
#include "daemon/PairingRecords.h"
#include "support/Row.h"
#include "support/Samples.h"
#include "wire/Codec.h"

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using Json = nlohmann::ordered_json;

namespace {

/// Decodes a document and writes it again, so that all of its values can be compared at once.
template <class Record>
QByteArray roundTrip(const QByteArray &json) {
    return wire::encode(wire::decode<Record>(json));
}

struct RecordRow {
    const char *name;
    QByteArray (*roundTrip)(const QByteArray &);
    QByteArray json; ///< every key present
    QByteArray required;
};

QByteArray part(const QByteArray &json, const char *pointer) {
    return QByteArray::fromStdString(Json::parse(json.toStdString()).at(Json::json_pointer(pointer)).dump());
}

const RecordRow records[]{
    {"Status", roundTrip<Status>, statusJson, "device_id device_name port paused peers"},
    {"PeerStatus", roundTrip<PeerStatus>, part(statusJson, "/peers/0"), "device_id name"},
    {"FileXfer", roundTrip<FileXfer>, part(statusJson, "/file_xfer"), "sent total sending"},
    {"DaemonSettings", roundTrip<DaemonSettings>, settingsJson,
     "device_name port file_size_cap_mb sync_text sync_image sync_files kvm_enabled kvm_side"},
    {"ScreenPlacement", roundTrip<ScreenPlacement>, part(settingsJson, "/kvm_layout/d2"), "x y w h"},
    {"Device", roundTrip<Device>, part(devicesJson, "/0"), "device_id name"},
    {"HistoryEntry", roundTrip<HistoryEntry>, part(historyJson, "/0"), "id"},
    {"UpdateResult", roundTrip<UpdateResult>, R"({"ok":true,"need_restart":false})", "ok"},
    {"ShowReply", roundTrip<pairing::ShowReply>, R"({"pin":"1234"})", "pin"},
    {"ConnectReply", roundTrip<pairing::ConnectReply>, R"({"ok":false,"error":"no"})", "ok"},
    {"ConnectRequest", roundTrip<pairing::ConnectRequest>, R"({"host":"h","pin":"p"})", "host pin"}};

class RecordsTest : public QObject {
    Q_OBJECT

    static void compareKey(const RecordRow &record, const Json &whole, const std::string &name) {
        const Row row(record.name + QByteArray(".") + name.c_str());
        const auto decoded = [&record](const Json &json) {
            return Json::parse(record.roundTrip(QByteArray::fromStdString(json.dump())).toStdString());
        };
        QCOMPARE(decoded(whole).dump(), whole.dump());
        Json more = whole;
        more["x_" + name] = 7;
        QCOMPARE(decoded(more).dump(), whole.dump());

        Json missing = whole;
        missing.erase(name);
        Json null = whole;
        null[name] = nullptr;
        if (record.required.split(' ').contains(QByteArray::fromStdString(name))) {
            QVERIFY_EXCEPTION_THROWN(decoded(missing), wire::DecodeError);
            QVERIFY_EXCEPTION_THROWN(decoded(null), wire::DecodeError);
        } else {
            QCOMPARE(decoded(missing).dump(), missing.dump());
            QCOMPARE(decoded(null).dump(), missing.dump());
        }

        for (const Json &other :
             {Json("text"), Json(1), Json(true), Json(Json::array({Json()})), Json{{"a", nullptr}}}) {
            if (other.is_primitive() &&
                (other.type() == whole[name].type() || (other.is_number() && whole[name].is_number())))
                continue;
            Json wrong = whole;
            wrong[name] = other;
            QVERIFY_EXCEPTION_THROWN(decoded(wrong), wire::DecodeError);
        }
    }

private Q_SLOTS:
    /// Present, missing, null, of another type, and beside a key that nobody knows.
    void everyKey() {
        for (const RecordRow &record : records) {
            const Json whole = Json::parse(record.json.toStdString());
            for (const auto &member : whole.items())
                compareKey(record, whole, member.key());
        }
    }

    /// The round trip alone would not notice two keys whose members are swapped.
    void keysReachTheirMembers() {
        const auto status = wire::decode<Status>(statusJson);
        const FileXfer transfer{u"a.bin"_s, 2, 1, Q_INT64_C(9007199254740993), true};
        const std::vector<std::vector<double>> displays{{0, 0, 1440, 900}, {1440, 0, 1, 1.5}};
        QCOMPARE(status, (Status{u"d1"_s,
                                 u"Desk"_s,
                                 u"linux"_s,
                                 24800,
                                 false,
                                 {{u"d2"_s, u"Lap"_s}},
                                 u"text"_s,
                                 true,
                                 false,
                                 u"1.2.0"_s,
                                 1440.0,
                                 900.5,
                                 displays,
                                 transfer}));
        const auto settings = wire::decode<std::optional<DaemonSettings>>(settingsJson);
        const ScreenPlacement first{0, 0, 1440, 900};
        QCOMPARE(settings,
                 (DaemonSettings{u"Desk"_s, 24800, 100, true, false, true, false, u"left"_s, true, 250, 16,
                                 false, 1.25, ScreenLayout{{u"d1"_s, first}},
                                 ScreenLayout{{u"d1"_s, first}, {u"d2"_s, {-1778, 0.1, 1778, 1000}}}, u"d1"_s,
                                 Q_INT64_C(9007199254740993)}));
        const auto devices = wire::decode<std::optional<std::vector<Device>>>(devicesJson);
        const Device device{u"d2"_s, u"Lap"_s, u"darwin"_s, u"aa:bb"_s, true, Q_INT64_C(1700000000500), 5};
        QCOMPARE(devices, std::vector{device});
        const auto history = wire::decode<std::optional<std::vector<HistoryEntry>>>(historyJson);
        const HistoryEntry hello{7, u"text"_s, u"hello"_s, u"Lap"_s, 5};
        QCOMPARE(history, (std::vector{hello, HistoryEntry{8, {}, {}, {}, {}}}));
        // Members' own names are not keys, and one bad element fails the list.
        using History = std::optional<std::vector<HistoryEntry>>;
        QCOMPARE(wire::decode<History>(R"([{"id":7,"preview":"x","ts":9}])"),
                 (std::vector{HistoryEntry{7, {}, {}, {}, {}}}));
        QVERIFY_EXCEPTION_THROWN(wire::decode<History>(R"([{"id":7},{"type":"text"}])"), wire::DecodeError);
    }
};

} // namespace

QTEST_GUILESS_MAIN(RecordsTest)
#include "RecordsTest.moc"
