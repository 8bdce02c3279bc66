#include "settings/KvmStates.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

const QString own = u"10b4e2f09a77c1d3"_s;
const QString office = u"77aa01fe"_s;
const QString laptop = u"10b91c33"_s;

/// Three computers, one of them away, and everything in order.
ServiceState ordinary() {
    ServiceState service;
    service.status = Status{.device_id = own,
                            .device_name = u"Studio Mac"_s,
                            .platform = u"darwin"_s,
                            .peers = {{office, u"Office Linux"_s}},
                            .accessibility_granted = true};
    service.settings = DaemonSettings{.device_name = u"Studio Mac"_s,
                                      .kvm_enabled = true,
                                      .kvm_switch_delay_ms = 250,
                                      .kvm_corner_size = 32,
                                      .kvm_sensitivity = 1.5,
                                      .kvm_layout = ScreenLayout{{own, {0, 0, 1778, 1000}},
                                                                 {office, {1778, 0, 1778, 1000}},
                                                                 {laptop, {900, 1080, 1600, 900}}},
                                      .kvm_master_id = own};
    service.devices = {{.device_id = office, .name = u"Office Linux"_s, .platform = u"linux"_s},
                       {.device_id = laptop, .name = u"Travel laptop"_s, .platform = u"darwin"_s}};
    return service;
}

KvmState state(const QString &name, const std::function<void(ServiceState &)> &change = {}) {
    KvmState made{name, ordinary()};
    if (change)
        change(made.service);
    return made;
}

} // namespace

std::vector<KvmState> kvmStates() {
    const auto refuse = [](ServiceState &service) { service.status->accessibility_granted = false; };
    std::vector<KvmState> states{
        {u"loading"_s, {}},
        state(u"ready"_s),
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
        state(u"controlled"_s, [](auto &service) { service.settings->kvm_master_id = office; }),
        state(u"master-off"_s, [](auto &service) { service.settings->kvm_master_id = laptop; }),
        state(u"long-names"_s, [](auto &service) {
            service.settings->kvm_master_id = laptop;
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
