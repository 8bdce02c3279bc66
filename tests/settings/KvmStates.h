#pragma once

#include "settings/KvmModel.h"

#include <functional>

namespace quorbit {

using namespace Qt::StringLiterals;

inline const QString ownId = u"10b4e2f09a77c1d3"_s;
inline const QString officeId = u"77aa01fe"_s;
inline const QString laptopId = u"10b91c33"_s;

/// A situation that the KVM tab shows.
struct KvmState {
    QString name;
    ServiceState service;
    bool isTrusted = true;
    bool showsRestartHint = false;

    std::optional<KvmModel> model() const { return kvmModel(service, isTrusted, showsRestartHint); }
};

/// Three computers, one of them away, and everything in order.
inline ServiceState ordinarySharing() {
    ServiceState service;
    service.status = Status{.device_id = ownId,
                            .device_name = u"Studio Mac"_s,
                            .platform = u"darwin"_s,
                            .peers = {{officeId, u"Office Linux"_s}},
                            .accessibility_granted = true};
    service.settings = DaemonSettings{.device_name = u"Studio Mac"_s,
                                      .kvm_enabled = true,
                                      .kvm_switch_delay_ms = 250,
                                      .kvm_corner_size = 32,
                                      .kvm_sensitivity = 1.5,
                                      .kvm_layout = ScreenLayout{{ownId, {0, 0, 1778, 1000}},
                                                                 {officeId, {1778, 0, 1778, 1000}},
                                                                 {laptopId, {900, 1080, 1600, 900}}},
                                      .kvm_master_id = ownId};
    service.devices = {{.device_id = officeId, .name = u"Office Linux"_s, .platform = u"linux"_s},
                       {.device_id = laptopId, .name = u"Travel laptop"_s, .platform = u"darwin"_s}};
    return service;
}

/// One for each thing that the tab can say.
inline std::vector<KvmState> kvmStates() {
    const auto state = [](const QString &name, const std::function<void(ServiceState &)> &change) {
        KvmState made{name, ordinarySharing()};
        change(made.service);
        return made;
    };
    const auto refuse = [](ServiceState &service) { service.status->accessibility_granted = false; };
    std::vector<KvmState> states{
        {u"loading"_s, {}},
        {u"ready"_s, ordinarySharing()},
        state(u"sharing-off"_s, [](auto &service) { service.settings->kvm_enabled = false; }),
        state(u"not-granted"_s, refuse),
        state(u"needs-restart"_s,
              [refuse](auto &service) {
                  refuse(service);
                  service.status->accessibility_needs_restart = true;
              }),
        state(u"waiting"_s, [](auto &service) { service.status->peers.clear(); }),
        state(u"no-peer"_s,
              [](auto &service) {
                  service.status->peers.clear();
                  service.devices.clear();
              }),
        state(u"no-master"_s, [](auto &service) { service.settings->kvm_master_id.reset(); }),
        state(u"controlled"_s, [](auto &service) { service.settings->kvm_master_id = officeId; }),
        state(u"master-off"_s, [](auto &service) { service.settings->kvm_master_id = laptopId; }),
        state(u"long-names"_s, [](auto &service) {
            service.settings->kvm_master_id = laptopId;
            service.status->device_name = u"The computer in the corner office on the second floor"_s;
            service.devices[1].name =
                u"A travel laptop whose name is longer than any line of this window could ever show"_s;
        })};
    KvmState hint = state(u"restart-hint"_s, refuse);
    hint.showsRestartHint = true;
    states.push_back(hint);
    return states;
}

} // namespace quorbit
