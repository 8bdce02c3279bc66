#include "Scenarios.h"

#include <algorithm>
#include <array>

namespace sim {

namespace {

constexpr const char *ownId = "10b4e2f09a77c1d3";
constexpr const char *laptopId = "10b91c33";
constexpr const char *officeId = "77aa01fe";

Json entry(std::int64_t id, const char *type, const char *label, const char *source) {
    return {{"id", id},
            {"type", type},
            {"source", source},
            {"label", label},
            {"time", nowMilliseconds() - id * 60'000}};
}

Json device(const char *id, const char *name, const char *platform, const char *fingerprint, bool online) {
    return {{"device_id", id},
            {"name", name},
            {"platform", platform},
            {"fingerprint", fingerprint},
            {"online", online},
            {"last_seen", nowMilliseconds() - (online ? 0 : 125'000)},
            {"paired_at", nowMilliseconds() - 86'400'000}};
}

void arrange(Facts &facts) {
    facts.settings["kvm_layout"] = {{ownId, {{"x", 0.0}, {"y", 0.0}, {"w", 1778.0}, {"h", 1000.0}}},
                                    {officeId, {{"x", 1778.0}, {"y", 0.0}, {"w", 1778.0}, {"h", 1000.0}}},
                                    {laptopId, {{"x", 900.0}, {"y", 1080.0}, {"w", 1600.0}, {"h", 900.0}}}};
}

/// Three computers, two of them connected, everything in order.
Facts ordinary() {
    Facts facts;
    facts.status = {{"device_id", ownId},
                    {"device_name", "Studio Mac"},
                    {"platform", "darwin"},
                    {"port", 8080},
                    {"paused", false},
                    {"peers",
                     {{{"device_id", laptopId}, {"name", "Travel laptop"}},
                      {{"device_id", officeId}, {"name", "Office Linux"}}}},
                    {"last_activity", "Received text from Office Linux"},
                    {"accessibility_granted", true},
                    {"accessibility_needs_restart", false},
                    {"version", "1.4.1"},
                    {"local_screen_w", 1440.0},
                    {"local_screen_h", 900.0},
                    {"local_displays", {{0.0, 0.0, 1440.0, 900.0}}}};
    facts.settings = {
        {"device_name", "Studio Mac"}, {"port", 8080},           {"file_size_cap_mb", 100},
        {"sync_text", true},           {"sync_image", true},     {"sync_files", false},
        {"kvm_enabled", true},         {"kvm_side", "right"},    {"kvm_master", true},
        {"kvm_switch_delay_ms", 250},  {"kvm_corner_size", 32},  {"kvm_swap_modifiers", false},
        {"kvm_sensitivity", 1.5},      {"kvm_master_id", ownId}, {"kvm_layout_ver", 9007199254740993}};
    arrange(facts);
    facts.devices = {device(officeId, "Office Linux", "linux", "sha256:9f86d081884c7d65", true),
                     device(laptopId, "Travel laptop", "darwin", "sha256:60303ae22b998861", true)};
    facts.history = {entry(3, "text", "ssh deploy@10.0.0.12 'systemctl status quorbitd'", "Office Linux"),
                     entry(2, "image", "Screenshot 1440 × 900", "Travel laptop"),
                     entry(1, "files", "3 files", "Studio Mac")};
    return facts;
}

void disconnect(Facts &facts, const char *id) {
    Json &peers = facts.status["peers"];
    peers.erase(
        std::remove_if(peers.begin(), peers.end(), [&](const Json &peer) { return peer["device_id"] == id; }),
        peers.end());
    for (Json &known : facts.devices) {
        if (known["device_id"] == id) {
            known["online"] = false;
            known["last_seen"] = nowMilliseconds() - 125'000;
        }
    }
}

Facts paused() {
    Facts facts = ordinary();
    facts.status["paused"] = true;
    facts.status["last_activity"] = "Syncing paused";
    return facts;
}

Facts empty() {
    Facts facts = ordinary();
    facts.status["peers"] = Json::array();
    facts.status.erase("last_activity");
    facts.devices = Json::array();
    facts.history = Json::array();
    facts.settings["kvm_enabled"] = false;
    facts.settings.erase("kvm_layout");
    facts.settings.erase("kvm_master_id");
    return facts;
}

Facts waiting() {
    Facts facts = ordinary();
    disconnect(facts, laptopId);
    disconnect(facts, officeId);
    return facts;
}

Facts transfer() {
    Facts facts = ordinary();
    facts.status["file_xfer"] = {
        {"name", "report.pdf"}, {"count", 1}, {"sent", 512}, {"total", 2048}, {"sending", true}};
    return facts;
}

Facts full() {
    Facts facts = transfer();
    facts.status["peers"].push_back(
        {{"device_id", "a1"}, {"name", "Accounting workstation on the second floor, left"}});
    facts.status["peers"].push_back({{"device_id", "10b2"}, {"name", ""}});
    facts.devices.push_back(
        device("a1", "Accounting workstation on the second floor, left", "windows", "sha256:aa11", true));
    fillHistory(facts, 12);
    return facts;
}

Facts noPermission() {
    Facts facts = ordinary();
    facts.status["accessibility_granted"] = false;
    disconnect(facts, laptopId);
    return facts;
}

Facts needsRestart() {
    Facts facts = noPermission();
    facts.status["accessibility_needs_restart"] = true;
    return facts;
}

Facts sharingOff() {
    Facts facts = ordinary();
    facts.settings["kvm_enabled"] = false;
    return facts;
}

Facts noMaster() {
    Facts facts = ordinary();
    facts.settings.erase("kvm_master_id");
    return facts;
}

Facts peerMaster() {
    Facts facts = ordinary();
    facts.settings["kvm_master_id"] = officeId;
    return facts;
}

Facts offlineMaster() {
    Facts facts = peerMaster();
    disconnect(facts, officeId);
    return facts;
}

/// Only what a service must send.
Facts sparse() {
    Facts facts = ordinary();
    facts.status = {
        {"device_id", ownId}, {"device_name", "Studio Mac"},    {"port", 8080},
        {"paused", false},    {"peers", facts.status["peers"]}, {"accessibility_granted", nullptr}};
    for (const char *key : {"kvm_master", "kvm_switch_delay_ms", "kvm_corner_size", "kvm_swap_modifiers",
                            "kvm_sensitivity", "kvm_layout", "kvm_master_id", "kvm_layout_ver"})
        facts.settings.erase(key);
    facts.devices = {{{"device_id", officeId}, {"name", "Office Linux"}},
                     {{"device_id", laptopId}, {"name", ""}}};
    facts.history = {{{"id", 1}}, {{"id", 2}, {"type", "video"}, {"label", "Something newer"}}};
    return facts;
}

Facts chinese() {
    Facts facts = ordinary();
    facts.status["device_name"] = facts.settings["device_name"] = "工作室电脑";
    facts.status["peers"] = {{{"device_id", laptopId}, {"name", "出差笔记本"}},
                             {{"device_id", officeId}, {"name", "办公室主机"}}};
    facts.status["last_activity"] = "收到来自办公室主机的文本";
    facts.status["file_xfer"] = {{"name", "季度报告.pdf"}, {"sent", 3}, {"total", 4}, {"sending", false}};
    facts.devices[0]["name"] = "办公室主机";
    facts.devices[1]["name"] = "出差笔记本";
    facts.history = {entry(3, "text", "下午三点在四楼会议室讨论发布计划,请带上电脑", "办公室主机"),
                     entry(2, "image", "截图 1440 × 900", "出差笔记本"),
                     entry(1, "files", "3 个文件", "工作室电脑")};
    return facts;
}

} // namespace

const std::vector<Scenario> &scenarios() {
    static const std::vector<Scenario> all{
        {"live", "peers come and go, files are sent, things are copied", true, ordinary},
        {"still", "the same three computers, and nothing happens by itself", false, ordinary},
        {"paused", "syncing is paused", false, paused},
        {"empty", "no other computer, no history", false, empty},
        {"waiting", "paired computers, none of them connected", false, waiting},
        {"transfer", "a file is being sent", false, transfer},
        {"full", "many peers, long names, a transfer, a long history", false, full},
        {"sharing-off", "keyboard and mouse sharing is switched off", false, sharingOff},
        {"no-permission", "the accessibility permission is missing", false, noPermission},
        {"needs-restart", "the permission waits for a restart", false, needsRestart},
        {"no-master", "no computer has been chosen as master", false, noMaster},
        {"peer-master", "another computer is the master", false, peerMaster},
        {"offline-master", "another computer is the master, and is away", false, offlineMaster},
        {"sparse", "only what a service must send", false, sparse},
        {"chinese", "names and texts in Chinese", false, chinese},
    };
    return all;
}

const Scenario *findScenario(const std::string &name) {
    for (const Scenario &scenario : scenarios()) {
        if (name == scenario.name)
            return &scenario;
    }
    return nullptr;
}

void fillHistory(Facts &facts, int count) {
    static const std::array<std::array<const char *, 3>, 9> clips{{
        {"text", "ssh deploy@10.0.0.12 'systemctl status quorbitd'", "Office Linux"},
        {"image", "Screenshot 1440 × 900", "Travel laptop"},
        {"files", "3 files", "Studio Mac"},
        {"text", "First line\nSecond line\n\tand a third",
         "Accounting workstation on the second floor, left"},
        {"text", "<b>bold</b> & <img src=x> are only text", "Office Linux"},
        {"video", "Something newer than this program", "Travel laptop"},
        {"text", "\u202eright to left override\u202c, שלום, مرحبا", "Office Linux"},
        {"text", "下午三点在四楼会议室讨论发布计划", ""},
        {"image", "", "Travel laptop"},
    }};
    facts.history = Json::array();
    for (int i = 0; i < count; ++i) {
        const auto &[type, label, source] = clips[static_cast<std::size_t>(i) % clips.size()];
        facts.history.push_back(entry(count - i, type, label, source));
    }
}

} // namespace sim
