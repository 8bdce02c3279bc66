#pragma once

#include "support/FakeService.h"
#include "support/Samples.h"
#include "wire/Codec.h"

#include <map>

namespace quorbit::test {

/// After so many polls the service says again what it said before.
inline constexpr int servicePeriod = 200;

/// How a poll comes to nothing, wholly or in part.
enum class Trouble { none, garbage, cutOff, shut, hang, refused };

using Json = nlohmann::ordered_json;

inline std::string deviceId(int number) {
    return "device-" + std::to_string(number);
}

inline std::string computer(int number) {
    return "Computer " + std::to_string(number);
}

inline Json status(int poll) {
    Json status = Json::parse(statusJson.toStdString());
    status["peers"] = Json::array();
    for (int peer = 0; peer < poll % 4; ++peer)
        status["peers"].push_back(
            {{"device_id", deviceId(peer)}, {"name", computer(peer) + " of " + std::to_string(poll % 4)}});
    status["paused"] = poll % 5 == 0;
    status["accessibility_granted"] = poll % 8 < 4;
    status["accessibility_needs_restart"] = poll % 8 == 5;
    status["last_activity"] = "Received text number " + std::to_string(poll % servicePeriod);
    status.erase("file_xfer");
    if (poll % 2 != 0)
        status["file_xfer"] = {
            {"name", "a.bin"}, {"sent", poll % 100}, {"total", 100}, {"sending", poll % 4 == 1}};
    return status;
}

inline Json settings(int poll) {
    Json settings = Json::parse(settingsJson.toStdString());
    settings["sync_text"] = poll % 2 == 0;
    settings["sync_image"] = poll % 4 < 2;
    settings["file_size_cap_mb"] = 50 + poll % 10;
    settings["kvm_enabled"] = poll % 10 < 8;
    settings["kvm_master"] = poll % 20 < 10;
    settings["kvm_switch_delay_ms"] = poll % 2 == 0 ? 250 : 0;
    Json layout = Json::object();
    for (int screen = 0; screen < poll % 4; ++screen)
        layout[deviceId(screen)] = {
            {"x", 1500 * screen + poll % 10}, {"y", poll % 100}, {"w", 1440}, {"h", 900}};
    settings["kvm_layout"] = settings["kvm_screens"] = layout;
    return settings;
}

inline Json devices(int poll) {
    Json devices = Json::array();
    for (int device = 0; device < 1 + poll % 5; ++device)
        devices.push_back({{"device_id", deviceId(device)},
                           {"name", computer(device)},
                           {"platform", device % 2 == 0 ? "linux" : "darwin"},
                           {"fingerprint", "sha256:" + std::to_string(device)},
                           {"online", (poll + device) % 2 == 0},
                           {"last_seen", qint64{1'700'000'000'000} - qint64{60'000} * (poll % 10)}});
    return devices;
}

inline Json history(int poll) {
    Json history = Json::array();
    const int oldest = poll % 40;
    for (int entry = oldest; entry < oldest + poll % 25; ++entry)
        history.push_back({{"id", entry},
                           {"type", entry % 3 == 0 ? "image" : "text"},
                           {"source", computer(entry % 4)},
                           {"label", "Entry " + std::to_string(entry) + " of something that was copied"},
                           {"time", entry}});
    return history;
}

inline constexpr const char *resources[] = {"GET /api/status", "GET /api/settings", "GET /api/devices",
                                            "GET /api/history"};

/// Lets the service say what it says at that poll: never the same at two that follow each other. Prepares it
/// for every trouble but `refused`, and for `hang` to be cut short.
inline Trouble changeService(FakeService &service, int poll) {
    const Json replies[] = {status(poll), settings(poll), devices(poll), history(poll)};
    for (int resource = 0; resource < 4; ++resource)
        service.answer(resources[resource], {QByteArray::fromStdString(replies[resource].dump())});

    static const std::map<int, Trouble> troubles{
        {7, Trouble::garbage}, {27, Trouble::garbage}, {29, Trouble::cutOff}, {49, Trouble::cutOff},
        {53, Trouble::shut},   {73, Trouble::shut},    {77, Trouble::hang},   {91, Trouble::refused}};
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
