#include "support/ServiceStates.h"

#include "Scenarios.h"
#include "wire/Codec.h"

namespace quorbit::test {

namespace {

template <class Value>
Value decoded(const sim::Json &document) {
    return wire::decode<Value>(document.dump());
}

template <class Record>
QByteArray list(const std::vector<Record> &records) {
    QByteArrayList all;
    for (const Record &record : records)
        all << wire::encode(record);
    return '[' + all.join(',') + ']';
}

} // namespace

ServiceState scenario(const char *name) {
    const sim::Scenario *found = sim::findScenario(name);
    if (!found)
        qFatal("there is no scenario \"%s\"", name);
    const sim::Facts facts = found->facts();
    return {.connectionState = ConnectionState::connected,
            .status = decoded<Status>(facts.status),
            .settings = decoded<DaemonSettings>(facts.settings),
            .devices = decoded<std::vector<Device>>(facts.devices),
            .history = decoded<std::vector<HistoryEntry>>(facts.history)};
}

ServiceState crowdedState() {
    ServiceState state = scenario("full");
    const QString longName = u"A computer whose name is longer than any row of a window could ever show"_s;
    state.status->device_name = state.settings->device_name = longName;
    state.status->peers[0].name = state.devices[1].name = longName;
    state.status->last_activity = u"Received 128 files from "_s + longName;
    state.status->file_xfer->name = u"Quarterly figures, final version, corrected again.xlsx"_s;
    state.history[0] = {99, u"link"_s, QString(100'000, u'W'), longName, {}};
    state.history[1].preview = u"\u202Efdp.exe \u0001 \u2067"_s;
    return state;
}

std::vector<HistoryEntry> longHistory(int count) {
    std::vector<HistoryEntry> entries;
    for (int id = 1; id <= count; ++id) {
        const QString preview =
            id % 100 == 0 ? u"Needle %1 in a haystack of lines"_s : u"Line %1 of something that was copied"_s;
        entries.push_back({id,
                           u"text"_s,
                           preview.arg(id) + u", of the usual length of a preview"_s,
                           u"Office Linux"_s,
                           {}});
    }
    return entries;
}

void answer(FakeService &service, const ServiceState &state) {
    service.answer("GET /api/status", {wire::encode(*state.status)});
    service.answer("GET /api/settings", {wire::encode(*state.settings)});
    service.answer("GET /api/devices", {list(state.devices)});
    service.answer("GET /api/history", {list(state.history)});
}

} // namespace quorbit::test
