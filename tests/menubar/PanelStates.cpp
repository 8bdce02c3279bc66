#include "menubar/PanelStates.h"

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

ServiceState connected() {
    Status status;
    status.device_id = u"10b4e2f09a77c1d3"_s;
    status.device_name = u"Studio Mac"_s;
    status.peers = {{u"10b91c33"_s, u"Travel laptop"_s}, {u"77aa01fe"_s, u"Office Linux"_s}};
    status.last_activity = u"Received text from Office Linux"_s;

    ServiceState service;
    service.connectionState = ConnectionState::connected;
    service.status = status;
    service.devices.resize(2);
    service.history = {
        {1, u"text"_s, u"ssh deploy@10.0.0.12 'systemctl status quorbitd'"_s, u"Office Linux"_s, {}},
        {2, u"image"_s, u"Screenshot 1440 × 900"_s, u"Travel laptop"_s, {}},
        {3, u"files"_s, u"3 files"_s, u"Studio Mac"_s, {}},
    };
    return service;
}

ServiceState full() {
    ServiceState service = connected();
    service.status->device_name = u"The computer in the corner office on the second floor"_s;
    service.status->peers = {
        {u"10b91c33"_s, u"A travel laptop whose name is longer than any row"_s},
        {u"77aa01fe"_s, QString()},
        {u"5c01"_s, u"מחשב המשרד (2)"_s},
    };
    service.status->last_activity = u"Received 128 files from A travel laptop whose name is long"_s;
    service.status->file_xfer =
        FileXfer{u"Quarterly figures, final version, corrected.xlsx"_s, 1, 3, 2, false};
    service.history.clear();
    for (int entry = 0; entry < 9; ++entry)
        service.history.push_back({entry,
                                   entry % 2 ? u"files"_s : u"link"_s,
                                   u"Entry %1\nwith a second line and\ta tab"_s.arg(entry),
                                   u"A source with a long name %1"_s.arg(entry),
                                   {}});
    service.history[1].preview = QString(1'000'000, u'W');
    service.history[2].preview = u"<b>bold</b> & <img src=x>"_s;
    service.history[3].preview = u"\u202Efdp.exe \u0001 \u2067"_s;
    service.history[4].preview = u"שלום עולם, זה טקסט ארוך מאוד שלא נכנס בשורה אחת"_s;
    service.history[5].source = QString();
    service.history[6].preview.reset();
    return service;
}

UpdateState available() {
    UpdateState update;
    update.available.emplace().version = u"1.5.0"_s;
    return update;
}

} // namespace

PanelState busyPanelState() {
    PanelState state{"transfer"_L1, connected(), available()};
    state.service.status->file_xfer = FileXfer{u"report.pdf"_s, 1, 512, 2048, true};
    return state;
}

std::vector<PanelState> panelStates() {
    ServiceState disconnected;
    disconnected.connectionState = ConnectionState::disconnected;
    ServiceState waiting = connected();
    waiting.status->peers.clear();
    waiting.status->last_activity.reset();
    waiting.history.clear();
    ServiceState empty = waiting;
    empty.devices.clear();
    ServiceState paused = connected();
    paused.status->paused = true;
    return {
        {"starting"_L1, {}, {}},
        {"disconnected"_L1, disconnected, {}},
        {"empty"_L1, empty, {}},
        {"waiting"_L1, waiting, {}},
        {"connected"_L1, connected(), {}},
        {"paused"_L1, paused, {}},
        busyPanelState(),
        {"full"_L1, full(), available()},
    };
}

} // namespace quorbit
