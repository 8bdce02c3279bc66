#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace sim {

using Json = nlohmann::ordered_json;

/// What the simulated service knows, in the form in which it sends it.
struct Facts {
    Json status;
    Json settings;
    Json devices = Json::array();
    Json history = Json::array();
};

/// The simulated service: its facts, what the commands do to them and what happens by itself as time goes on.
/// Any thread may call it.
class World {
public:
    /// `lively` lets peers come and go, files be sent and things be copied.
    World(Facts facts, bool lively, std::string stateFile);

    Json status() const;
    Json settings() const;
    Json devices() const;
    Json history() const;

    void setPaused(bool paused);
    /// Stores the record as it is; throws std::invalid_argument when it is not one.
    Json save(Json settings);
    void apply(std::int64_t id);
    void clearHistory();
    /// Whether there was such a device.
    bool removeDevice(const std::string &id);
    Json showPin();
    Json connect(const Json &request);
    void promptAccessibility();

    /// Lets `seconds` pass.
    void advance(double seconds);

private:
    void at(double delay, std::function<void()> event);
    void scheduleLife();
    void copyByItself();
    void transfer(int percent);
    void setPeer(const std::string &id, bool connected);
    void addDevice(const std::string &id, const std::string &name, const std::string &platform);
    void copy(const std::string &type, const std::string &label, const std::string &source);
    void say(const std::string &activity);
    void keep() const;

    struct Event {
        double time;
        std::function<void()> happen;
    };

    mutable std::mutex mutex_;
    Facts facts_;
    std::string stateFile_;
    std::vector<Event> events_;
    double time_ = 0;
    int copies_ = 0;
    int joined_ = 0;
};

/// Milliseconds since 1970-01-01 UTC.
std::int64_t nowMilliseconds();

} // namespace sim
