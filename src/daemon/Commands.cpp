#include "daemon/Daemon.h"
#include "daemon/PairingRecords.h"

#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

QCoro::Task<> Daemon::refreshAfter(QCoro::Task<> command) {
    try {
        co_await command;
    } catch (const std::exception &) {
        // The refresh shows what the service made of it.
    }
    co_await refresh(lifetime_.get_token());
}

QCoro::Task<> Daemon::setPaused(bool paused) {
    const QString path = paused ? u"/api/pause"_s : u"/api/resume"_s;
    return refreshAfter(client_.postEmpty(path, lifetime_.get_token()));
}

QCoro::Task<UpdateResult> Daemon::saveSettings(DaemonSettings settings) {
    const UpdateResult result =
        co_await client_.put<UpdateResult>(u"/api/settings"_s, std::move(settings), lifetime_.get_token());
    co_await refresh(lifetime_.get_token());
    co_return result;
}

QCoro::Task<> Daemon::applyHistory(qint64 id) {
    const QString path = "/api/history/apply/"_L1 + QString::number(id);
    return refreshAfter(client_.postEmpty(path, lifetime_.get_token()));
}

QCoro::Task<> Daemon::clearHistory() {
    auto request = client_.deleteEmpty(u"/api/history"_s, lifetime_.get_token());
    emptyHistory();
    std::exception_ptr failure;
    try {
        co_await request;
    } catch (const std::exception &) {
        failure = std::current_exception();
    }
    // Once more, because a refresh may have brought the old list back in the meantime.
    emptyHistory();
    if (failure)
        std::rethrow_exception(failure);
}

QCoro::Task<> Daemon::unpair(QString deviceId) {
    deviceId.prepend("/api/devices/"_L1);
    return refreshAfter(client_.deleteEmpty(std::move(deviceId), lifetime_.get_token()));
}

QCoro::Task<std::optional<QString>> Daemon::pairShow() {
    try {
        auto reply = co_await client_.post<std::optional<pairing::ShowReply>>(
            u"/api/pair/show"_s, pairing::ShowRequest(), lifetime_.get_token());
        if (reply)
            co_return std::move(reply->pin);
    } catch (const std::exception &) {
        // No PIN either way.
    }
    co_return std::nullopt;
}

QCoro::Task<bool> Daemon::pairConnect(QString host, QString pin) {
    const pairing::ConnectRequest request{host, pin};
    try {
        const auto reply = co_await client_.post<std::optional<pairing::ConnectReply>>(
            u"/api/pair/connect"_s, request, lifetime_.get_token());
        if (!reply || !reply->ok)
            co_return false;
    } catch (const std::exception &) {
        co_return false;
    }
    co_await refresh(lifetime_.get_token());
    co_return true;
}

QCoro::Task<> Daemon::promptAccessibility() {
    return refreshAfter(client_.postEmpty(u"/api/accessibility/prompt"_s, lifetime_.get_token()));
}

} // namespace quorbit
