#include "World.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace sim {

namespace {

constexpr const char *pin = "482913";
constexpr const char *shownPin = "482 913";
constexpr double joinDelay = 6;  // seconds from a shown PIN to the device that uses it
constexpr double grantDelay = 4; // seconds from the permission prompt to the user's answer
constexpr std::int64_t fileSize = 8'400'000;

Json::iterator find(Json &list, const char *key, const Json &value) {
    return std::find_if(list.begin(), list.end(), [&](const Json &item) { return item.at(key) == value; });
}

} // namespace

std::int64_t nowMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

World::World(Facts facts, bool lively, std::string stateFile)
    : facts_(std::move(facts)), stateFile_(std::move(stateFile)) {
    std::ifstream file(stateFile_);
    if (!stateFile_.empty() && file) {
        const Json kept = Json::parse(file, nullptr, false);
        if (kept.is_object() && kept.contains("status")) {
            facts_ = Facts{kept["status"], kept["settings"], kept["devices"], kept["history"]};
            // A permission that waited for a restart has had one.
            if (facts_.status.value("accessibility_needs_restart", false)) {
                facts_.status["accessibility_granted"] = true;
                facts_.status["accessibility_needs_restart"] = false;
            }
        }
    }
    if (lively)
        scheduleLife();
}

Json World::status() const {
    const std::lock_guard lock(mutex_);
    return facts_.status;
}

Json World::settings() const {
    const std::lock_guard lock(mutex_);
    return facts_.settings;
}

Json World::devices() const {
    const std::lock_guard lock(mutex_);
    return facts_.devices;
}

Json World::history() const {
    const std::lock_guard lock(mutex_);
    return facts_.history;
}

void World::setPaused(bool paused) {
    const std::lock_guard lock(mutex_);
    facts_.status["paused"] = paused;
    say(paused ? "Syncing paused" : "Syncing resumed");
}

Json World::save(Json settings) {
    const std::lock_guard lock(mutex_);
    if (!settings.is_object() || !settings.contains("device_name") || !settings.contains("kvm_enabled"))
        throw std::invalid_argument("not a settings record");
    const bool wasEnabled = facts_.settings.value("kvm_enabled", false);
    const bool enabled = settings.value("kvm_enabled", false);
    // The order in which a client lists the screens means nothing.
    const nlohmann::json layout = settings.value("kvm_layout", Json());
    const bool rearranged = layout != nlohmann::json(facts_.settings.value("kvm_layout", Json()));
    facts_.settings = std::move(settings);
    if (rearranged && facts_.settings.contains("kvm_layout_ver"))
        facts_.settings["kvm_layout_ver"] = facts_.settings["kvm_layout_ver"].get<std::int64_t>() + 1;
    facts_.status["device_name"] = facts_.settings["device_name"];
    keep();
    Json reply{{"ok", true}};
    if (enabled && !wasEnabled)
        reply["need_restart"] = true;
    return reply;
}

void World::apply(std::int64_t id) {
    const std::lock_guard lock(mutex_);
    const auto entry = find(facts_.history, "id", id);
    if (entry == facts_.history.end())
        return;
    std::rotate(facts_.history.begin(), entry, entry + 1);
    say("Put back on the clipboard");
}

void World::clearHistory() {
    const std::lock_guard lock(mutex_);
    facts_.history = Json::array();
    keep();
}

bool World::removeDevice(const std::string &id) {
    const std::lock_guard lock(mutex_);
    const auto device = find(facts_.devices, "device_id", id);
    if (device == facts_.devices.end())
        return false;
    setPeer(id, false);
    facts_.devices.erase(find(facts_.devices, "device_id", id));
    keep();
    return true;
}

Json World::showPin() {
    const std::lock_guard lock(mutex_);
    at(joinDelay, [this] { addDevice("5d2e07b1c4", "Living room", "linux"); });
    return {{"pin", shownPin}};
}

Json World::connect(const Json &request) {
    const std::lock_guard lock(mutex_);
    std::string given = request.at("pin").get<std::string>();
    given.erase(std::remove(given.begin(), given.end(), ' '), given.end());
    if (given != pin)
        return {{"ok", false}, {"error", "wrong PIN"}};
    const auto host = request.at("host").get<std::string>();
    addDevice("c0ffee0042", host.empty() ? "New computer" : host, "linux");
    return {{"ok", true}};
}

void World::promptAccessibility() {
    const std::lock_guard lock(mutex_);
    if (facts_.status.value("accessibility_granted", true))
        return;
    at(grantDelay, [this] {
        facts_.status["accessibility_needs_restart"] = true;
        keep();
    });
}

void World::advance(double seconds) {
    const std::lock_guard lock(mutex_);
    time_ += seconds;
    // An event may schedule further ones, so they are taken out one at a time.
    for (;;) {
        const auto due =
            std::find_if(events_.begin(), events_.end(), [this](const Event &e) { return e.time <= time_; });
        if (due == events_.end())
            return;
        const auto happen = std::move(due->happen);
        events_.erase(due);
        happen();
    }
}

void World::at(double delay, std::function<void()> event) {
    events_.push_back({time_ + delay, std::move(event)});
}

void World::scheduleLife() {
    at(5, [this] { transfer(0); });
    at(12, [this] { copyByItself(); });
    struct Commuter {
        World *world;
        void leave() const {
            world->setPeer("10b91c33", false);
            world->at(6, [self = *this] { self.comeBack(); });
        }
        void comeBack() const {
            world->setPeer("10b91c33", true);
            world->at(20, [self = *this] { self.leave(); });
        }
    };
    at(20, [commuter = Commuter{this}] { commuter.leave(); });
}

void World::copyByItself() {
    static const std::vector<std::array<const char *, 3>> clips{
        {"text", "https://quorbit.example/welcome", "Travel laptop"},
        {"image", "Screenshot 1920 × 1080", "Office Linux"},
        {"text", "Meet at half past nine, room 4", "Office Linux"},
        {"files", "2 files", "Studio Mac"},
    };
    const auto &[type, label, source] = clips[static_cast<std::size_t>(copies_) % clips.size()];
    if (!facts_.status.value("paused", false))
        copy(type, label, source);
    at(15, [this] { copyByItself(); });
}

void World::transfer(int percent) {
    if (percent > 100) {
        facts_.status.erase("file_xfer");
        say("Sent report.pdf to Office Linux");
        at(12, [this] { transfer(0); });
        return;
    }
    facts_.status["file_xfer"] = {{"name", "report.pdf"},
                                  {"count", 1},
                                  {"sent", fileSize * percent / 100},
                                  {"total", fileSize},
                                  {"sending", true}};
    at(1, [this, percent] { transfer(percent + 8 > 100 && percent < 100 ? 100 : percent + 8); });
}

void World::setPeer(const std::string &id, bool connected) {
    Json &peers = facts_.status["peers"];
    const auto peer = find(peers, "device_id", id);
    const auto device = find(facts_.devices, "device_id", id);
    if (device == facts_.devices.end() || connected == (peer != peers.end()))
        return;
    const auto name = (*device)["name"].get<std::string>();
    if (connected)
        peers.push_back({{"device_id", id}, {"name", name}});
    else
        peers.erase(peer);
    (*device)["online"] = connected;
    (*device)["last_seen"] = nowMilliseconds();
    say(name + (connected ? " connected" : " disconnected"));
}

void World::addDevice(const std::string &id, const std::string &name, const std::string &platform) {
    const std::string unique = id + std::to_string(joined_++);
    facts_.devices.push_back({{"device_id", unique},
                              {"name", name},
                              {"platform", platform},
                              {"fingerprint", "sha256:4fe1a07c55d3" + unique},
                              {"online", false},
                              {"last_seen", nowMilliseconds()},
                              {"paired_at", nowMilliseconds()}});
    keep();
    at(3, [this, unique] { setPeer(unique, true); });
}

void World::copy(const std::string &type, const std::string &label, const std::string &source) {
    std::int64_t id = 0;
    for (const Json &entry : facts_.history)
        id = std::max(id, entry["id"].get<std::int64_t>());
    ++copies_;
    facts_.history.insert(facts_.history.begin(), Json{{"id", id + 1},
                                                       {"type", type},
                                                       {"source", source},
                                                       {"label", label},
                                                       {"time", nowMilliseconds()}});
    say("Received " + type + " from " + source);
}

void World::say(const std::string &activity) {
    facts_.status["last_activity"] = activity;
    keep();
}

void World::keep() const {
    if (stateFile_.empty())
        return;
    std::ofstream(stateFile_) << Json{{"status", facts_.status},
                                      {"settings", facts_.settings},
                                      {"devices", facts_.devices},
                                      {"history", facts_.history}};
}

} // namespace sim
