#pragma once

#include "support/ServiceStates.h"

#include <map>

namespace quorbit::test {

/// After so many polls the service says again what it said before.
inline constexpr int servicePeriod = 200;

/// How a poll comes to nothing, wholly or in part.
enum class Trouble { none, garbage, cutOff, shut, hang, refused };

/// The usual state with everything changed that can be.
inline ServiceState otherState() {
    ServiceState other = usualState();
    Status &status = *other.status;
    status.paused = status.accessibility_needs_restart.emplace(true);
    status.accessibility_granted = false;
    status.peers = {{u"5c01"_s, u"Living room"_s}};
    status.file_xfer = FileXfer{u"a.bin"_s, 1, 50, 100, true};
    DaemonSettings &settings = *other.settings;
    settings.sync_text = settings.sync_image = settings.kvm_enabled = false;
    settings.file_size_cap_mb = 50;
    settings.kvm_switch_delay_ms = 0;
    settings.kvm_layout = ScreenLayout{{officeId, {-1500, 70, 1440, 900}}};
    settings.kvm_master_id = officeId;
    other.devices.front().online = false;
    other.devices.resize(1);
    other.history = longHistory(24);
    return other;
}

/// Lets the service say what it says at that poll: never the same at two that follow each other. Prepares it
/// for every trouble but `refused`, and for `hang` to be cut short.
inline Trouble changeService(FakeService &service, int poll) {
    ServiceState state = poll % 2 == 0 ? usualState() : otherState();
    for (HistoryEntry &entry : state.history)
        entry.id += poll % servicePeriod;
    answer(service, state);

    static const std::map<int, Trouble> troubles{
        {7, Trouble::garbage}, {27, Trouble::garbage}, {29, Trouble::cutOff}, {49, Trouble::cutOff},
        {53, Trouble::shut},   {73, Trouble::shut},    {77, Trouble::hang},   {91, Trouble::refused}};
    static constexpr const char *resources[] = {"GET /api/status", "GET /api/settings", "GET /api/devices",
                                                "GET /api/history"};
    const auto found = troubles.find(poll % 100);
    const Trouble trouble = found == troubles.end() ? Trouble::none : found->second;
    const char *one = resources[poll / 100 % 4];
    if (trouble == Trouble::garbage)
        service.answer(one, {R"({"device_id":7,"peers":[{"name":)"});
    if (trouble == Trouble::cutOff)
        service.answer(one, {"[", 200, {}, Answer::cutOff});
    if (trouble == Trouble::shut || trouble == Trouble::hang) {
        for (const char *resource : resources)
            service.answer(resource, {{}, 200, {}, trouble == Trouble::hang ? Answer::hang : Answer::shut});
    }
    return trouble;
}

} // namespace quorbit::test
