#include "support/ServiceStates.h"

#include "wire/Codec.h"

#include <algorithm>

namespace quorbit::test {

namespace {

template <class Change>
NamedState changed(QLatin1String name, Change change) {
    NamedState state{name, usualState()};
    change(state.service);
    return state;
}

void leaveAlone(ServiceState &service) {
    service.status->peers.clear();
    service.status->last_activity.reset();
    service.history.clear();
}

void fill(ServiceState &service) {
    Status &status = *service.status;
    status.device_name = u"The computer in the corner office on the second floor"_s;
    service.settings->device_name = status.device_name;
    status.last_activity = u"Received 128 files from a computer whose name is longer than any row, and"_s;
    status.file_xfer = FileXfer{u"Quarterly figures, final version, corrected.xlsx"_s, 1, 512, 2048, true};
    status.peers.push_back(
        {u"93d2470fbe1c6a0d5e7f8899"_s, u"A travel laptop whose name is longer than any row could show"_s});
    status.peers.push_back({u"77"_s, QString()});
    status.peers.push_back({u"5c01"_s, u"מחשב המשרד (2)"_s});
    service.devices[2].name = u"The computer in the attic that nobody has renamed since it was bought"_s;
    const QString somebody = u"A computer with a name that is longer than it should be for this row"_s;
    for (const auto &[preview, source] :
         {std::pair(
              u"A long line that is copied from somewhere and does not fit into one row of the window, "_s +
                  u"but ends with something that tells it apart"_s,
              somebody),
          {u"two lines\nand a\ttab, <b>no markup</b> & so on"_s, u"?"_s},
          {u"שלום עולם, זה טקסט ארוך מאוד שלא נכנס בשורה אחת"_s, u"מחשב המשרד"_s},
          {QString(), QString()},
          {u"今天下午三点在二楼会议室开会，请带上季度报告"_s, u"办公室 Linux"_s},
          {QString(100'000, u'W'), somebody},
          {u"\u202Efdp.exe \u0001 \u2067"_s, u"Office Linux"_s}})
        service.history.push_back(
            {static_cast<qint64>(service.history.size() + 1), u"link"_s, preview, source, {}});
}

template <class Record>
QByteArray list(const std::vector<Record> &records) {
    QByteArrayList all;
    for (const Record &record : records)
        all << wire::encode(record);
    return '[' + all.join(',') + ']';
}

} // namespace

ServiceState usualState() {
    ServiceState service;
    service.connectionState = ConnectionState::connected;
    service.status = Status{.device_id = ownId,
                            .device_name = u"Studio Mac"_s,
                            .platform = u"darwin"_s,
                            .port = 8080,
                            .peers = {{laptopId, u"Travel laptop"_s}, {officeId, u"Office Linux"_s}},
                            .last_activity = u"Received text from Office Linux"_s,
                            .accessibility_granted = true};
    service.settings = DaemonSettings{.device_name = u"Studio Mac"_s,
                                      .port = 8080,
                                      .file_size_cap_mb = 10240,
                                      .sync_text = true,
                                      .sync_image = true,
                                      .kvm_enabled = true,
                                      .kvm_side = u"left"_s,
                                      .kvm_switch_delay_ms = 250,
                                      .kvm_corner_size = 32,
                                      .kvm_sensitivity = 1.5,
                                      .kvm_layout = ScreenLayout{{ownId, {0, 0, 1778, 1000}},
                                                                 {officeId, {1778, 0, 1778, 1000}},
                                                                 {laptopId, {900, 1080, 1600, 900}}},
                                      .kvm_master_id = ownId};
    service.devices = {{.device_id = officeId,
                        .name = u"Office Linux"_s,
                        .platform = u"linux"_s,
                        .fingerprint = u"sha256:9f86d081884c7d659a2f"_s,
                        .online = true},
                       {.device_id = laptopId,
                        .name = u"Travel laptop"_s,
                        .platform = u"darwin"_s,
                        .fingerprint = u"sha256:60303ae22b998861bce3"_s,
                        .online = true},
                       {.device_id = livingRoomId,
                        .name = u"Living room"_s,
                        .fingerprint = u"sha256:fd61a03af4f77d870fc2"_s,
                        .last_seen = 1'700'000'000'000 - 90'000}};
    service.history = {
        {1, u"text"_s, u"ssh deploy@10.0.0.12 'systemctl status quorbitd'"_s, u"Office Linux"_s, {}},
        {2, u"image"_s, u"Screenshot 1440 × 900"_s, u"Travel laptop"_s, {}},
        {3, u"files"_s, u"3 files"_s, u"Studio Mac"_s, {}}};
    return service;
}

std::vector<NamedState> serviceStates() {
    return {{"starting"_L1, {}},
            {"disconnected"_L1, {.connectionState = ConnectionState::disconnected}},
            changed("empty"_L1,
                    [](auto &service) {
                        leaveAlone(service);
                        service.devices.clear();
                    }),
            changed("waiting"_L1, leaveAlone),
            changed("usual"_L1, [](auto &) {}),
            changed("paused"_L1, [](auto &service) { service.status->paused = true; }),
            changed("transfer"_L1,
                    [](auto &service) {
                        service.status->file_xfer = FileXfer{u"report.pdf"_s, 1, 512, 2048, true};
                    }),
            changed("full"_L1, fill)};
}

ServiceState stateCalled(QLatin1String name) {
    const std::vector<NamedState> states = serviceStates();
    const auto found = std::ranges::find(states, name, &NamedState::name);
    if (found == states.end())
        qFatal("no such state");
    return found->service;
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
