#pragma once

#include "menubar/MenuBarModel.h"

#include <QLatin1String>

#include <vector>

namespace quorbit {

using namespace Qt::StringLiterals;

/// A situation that the panel shows.
struct PanelState {
    QLatin1String name;
    ServiceState service;
    UpdateState update = {};

    MenuBarModel model() const { return menuBarModel(service, update); }
};

/// Two peers, an activity and three history entries.
inline ServiceState connectedService() {
    ServiceState service;
    service.connectionState = ConnectionState::connected;
    service.devices.resize(2);
    service.status.emplace().device_name = u"Studio Mac"_s;
    service.status->peers = {{u"10b91c33"_s, u"Travel laptop"_s}, {u"77aa01fe"_s, u"Office Linux"_s}};
    service.status->last_activity = u"Received text from Office Linux"_s;
    service.history = {
        {1, u"text"_s, u"ssh deploy@10.0.0.12 'systemctl status quorbitd'"_s, u"Office Linux"_s, {}},
        {2, u"image"_s, u"Screenshot 1440 × 900"_s, u"Travel laptop"_s, {}},
        {3, u"files"_s, u"3 files"_s, u"Studio Mac"_s, {}}};
    return service;
}

/// The same with a transfer and an update.
inline PanelState busyPanelState() {
    PanelState state{"transfer"_L1, connectedService()};
    state.service.status->file_xfer = FileXfer{u"report.pdf"_s, 1, 512, 2048, true};
    state.update.available.emplace().version = u"1.5.0"_s;
    return state;
}

/// More of everything than there is room for.
inline PanelState fullPanelState() {
    PanelState state = busyPanelState();
    state.name = "full"_L1;
    Status &status = *state.service.status;
    status.device_name = u"The computer in the corner office on the second floor"_s;
    status.peers = {{u"10b91c33"_s, u"A travel laptop whose name is longer than any row"_s},
                    {u"77aa01fe"_s, QString()},
                    {u"5c01"_s, u"מחשב המשרד (2)"_s}};
    status.last_activity = u"Received 128 files from A travel laptop whose name is long"_s;
    status.file_xfer->name = u"Quarterly figures, final version, corrected.xlsx"_s;
    state.service.history.clear();
    for (const QString &preview :
         {u"two lines\nand a\ttab"_s, QString(1'000'000, u'W'), u"<b>bold</b> & <img src=x>"_s,
          u"\u202Efdp.exe \u0001 \u2067"_s, u"שלום עולם, זה טקסט ארוך מאוד שלא נכנס בשורה אחת"_s, QString(),
          u"7"_s, u"8"_s, u"9"_s})
        state.service.history.push_back(
            {preview.size(), u"link"_s, preview, u"A source with a long name"_s, {}});
    return state;
}

inline std::vector<PanelState> panelStates() {
    const auto changed = [](QLatin1String name, auto change) {
        PanelState state{name, connectedService()};
        change(state.service);
        return state;
    };
    const auto alone = [](ServiceState &service) {
        service.status->peers.clear();
        service.status->last_activity.reset();
        service.history.clear();
    };
    return {{"starting"_L1, {}},
            changed("disconnected"_L1,
                    [](auto &service) {
                        service = ServiceState();
                        service.connectionState = ConnectionState::disconnected;
                    }),
            changed("empty"_L1,
                    [alone](auto &service) {
                        alone(service);
                        service.devices.clear();
                    }),
            changed("waiting"_L1, alone),
            changed("connected"_L1, [](auto &) {}),
            changed("paused"_L1, [](auto &service) { service.status->paused = true; }),
            busyPanelState(),
            fullPanelState()};
}

} // namespace quorbit
