#include "daemon/Daemon.h"

#include "async/Waiting.h"

#include <QPointer>

#include <exception>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quorbit {

namespace {

constexpr auto requestTimeout = 60s;
constexpr auto pollPause = 2000ms;
constexpr auto launchPause = 100ms;
constexpr int launchAttempts = 50;
/// A reply of this many bytes takes many times that to read and to show.
constexpr std::size_t muchOfAReply = std::size_t{1024} * 1024;

} // namespace

Daemon::Daemon(Platform &platform, UserDefaults &defaults, Clock &clock, std::function<void()> relaunch,
               QObject *parent)
    : QObject(parent)
    , clock_(clock)
    , platform_(platform)
    , client_(requestTimeout, clock)
    , launcher_(platform)
    , heal_(defaults, clock, std::move(relaunch)) {}

Daemon::~Daemon() {
    blockSignals(true);
    // In this order: fetch() tells by the lifetime's token whether the Daemon goes or polling alone ends.
    lifetime_.request_stop();
    polling_.request_stop();
}

void Daemon::start() {
    platform_.observeAccessibilityChanges([self = QPointer(this)] {
        if (self)
            self->heal_.permissionsChanged(self->state_);
    });
    bootstrap();
}

void Daemon::stop() {
    polling_.request_stop();
    launcher_.terminate();
}

QCoro::Task<> Daemon::bootstrap() {
    if (co_await probe()) {
        setConnectionState(ConnectionState::connected);
        startPolling();
        co_return;
    }
    if (launcher_.launch()) {
        for (int attempt = 0; attempt < launchAttempts; ++attempt) {
            Sleep pause(clock_, launchPause, lifetime_.get_token());
            co_await pause;
            if (co_await probe()) {
                setConnectionState(ConnectionState::connected);
                startPolling();
                co_return;
            }
        }
    }
    setConnectionState(ConnectionState::disconnected);
}

QCoro::Task<bool> Daemon::probe() {
    if (!loadConnectionInfo())
        co_return false;
    try {
        co_await client_.get<Status>(u"/api/status"_s, lifetime_.get_token());
        co_return true;
    } catch (const std::exception &) {
        co_return false;
    }
}

bool Daemon::loadConnectionInfo() {
    auto connection = readConnectionFiles(platform_.homeDirectory());
    if (!connection)
        return false;
    client_.setConnection(*std::move(connection));
    return true;
}

void Daemon::startPolling() {
    polling_.request_stop();
    polling_ = std::stop_source();
    poll(polling_.get_token());
}

QCoro::Task<> Daemon::poll(std::stop_token token) {
    for (;;) {
        // A service that was started again listens elsewhere, with another token.
        if (!co_await refresh(token))
            loadConnectionInfo();
        Sleep pause(clock_, pollPause, token);
        co_await pause;
        // By now the views show the new state, too.
        if (std::exchange(hasFreedMuch_, false))
            platform_.returnFreeMemory();
    }
}

QCoro::Task<std::optional<std::string>> Daemon::fetch(QString path, std::stop_token token) {
    try {
        co_return co_await client_.getBody(path, token);
    } catch (const Stopped &) {
        // The end of polling alone counts as a failed request; what arrived before it is still published.
        if (lifetime_.stop_requested())
            throw;
    } catch (const std::exception &) {
        // The last good value stays, and the next refresh asks again.
    }
    co_return std::nullopt;
}

QCoro::Task<bool> Daemon::refresh(std::stop_token token) {
    // All four are under way before the first is awaited.
    auto statusTask = fetch(u"/api/status"_s, token);
    auto settingsTask = fetch(u"/api/settings"_s, token);
    auto devicesTask = fetch(u"/api/devices"_s, token);
    auto historyTask = fetch(u"/api/history"_s, token);
    auto status = co_await statusTask;
    auto settings = co_await settingsTask;
    auto devices = co_await devicesTask;
    auto history = co_await historyTask;

    bool reached = publish<Status>(std::move(status), replies_.status, state_.status);
    reached |= publish<DaemonSettings>(std::move(settings), replies_.settings, state_.settings);
    reached |= publish<std::vector<Device>>(std::move(devices), replies_.devices, state_.devices);
    reached |= publish<std::vector<HistoryEntry>>(std::move(history), replies_.history, state_.history);
    if (state_.status)
        setConnectionState(ConnectionState::connected);
    heal_.refreshed(state_);
    co_return reached;
}

void Daemon::setConnectionState(ConnectionState state) {
    state_.connectionState = state;
    Q_EMIT changed();
}

template <class Value, class Field>
bool Daemon::publish(std::optional<std::string> reply, std::optional<std::string> &readFrom, Field &field) {
    if (!reply)
        return false;
    if (reply != readFrom) {
        noteFreed(reply); // what reading it takes besides its value
        noteFreed(readFrom);
        try {
            auto value = wire::decode<std::optional<Value>>(*reply);
            if (!value)
                return false;
            field = *std::move(value);
        } catch (const wire::DecodeError &) {
            return false;
        }
        readFrom = std::move(reply);
    }
    Q_EMIT changed();
    return true;
}

void Daemon::noteFreed(const std::optional<std::string> &reply) {
    hasFreedMuch_ |= reply && reply->size() >= muchOfAReply;
}

void Daemon::emptyHistory() {
    noteFreed(replies_.history);
    state_.history = std::vector<HistoryEntry>(); // clear() would keep the memory
    replies_.history.reset();
    Q_EMIT changed();
}

} // namespace quorbit
