#pragma once

#include "daemon/AccessibilityHeal.h"
#include "daemon/ServiceClient.h"
#include "daemon/ServiceLauncher.h"
#include "daemon/ServiceState.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/UserDefaults.h"

#include <QObject>

#include <QCoroTask>

#include <functional>
#include <optional>
#include <stop_token>
#include <string>

namespace quorbit {

/// The one object through which the program sees and drives the service. It lives on the main thread; its
/// commands are coroutines, and those that still wait when the Daemon is destroyed leave by Stopped.
class Daemon : public QObject {
    Q_OBJECT

public:
    /// `relaunch` restarts the whole application.
    Daemon(Platform &platform, UserDefaults &defaults, Clock &clock, std::function<void()> relaunch,
           QObject *parent = nullptr);
    ~Daemon() override;

    /// The last known good state.
    const ServiceState &state() const { return state_; }

    /// Finds the service or launches it, then polls it every two seconds. Called once.
    void start();
    /// Ends the polling and tells a service that this run launched to terminate; waits for nothing.
    void stop();

    /// Pauses or resumes syncing. Failures are dropped; a refresh follows in any case.
    QCoro::Task<> setPaused(bool paused);
    /// Saves the whole record and refreshes. Throws, without a refresh, when the service did not answer as
    /// expected.
    QCoro::Task<UpdateResult> saveSettings(DaemonSettings settings);
    /// Puts a history entry back on the clipboard. Failures are dropped; a refresh follows in any case.
    QCoro::Task<> applyHistory(qint64 id);
    /// Clears the history. The published list is emptied at once and stays so even when the request fails,
    /// which is then thrown.
    QCoro::Task<> clearHistory();
    /// Removes a paired device. Failures are dropped; a refresh follows in any case.
    QCoro::Task<> unpair(QString deviceId);
    /// Asks the service for a PIN to show; absent when it gave none.
    QCoro::Task<std::optional<QString>> pairShow();
    /// Pairs with the computer that shows `pin`; true when that succeeded, after a refresh.
    QCoro::Task<bool> pairConnect(QString host, QString pin);
    /// Asks the service to show the system's permission prompt. Failures are dropped; a refresh follows in
    /// any case.
    QCoro::Task<> promptAccessibility();

Q_SIGNALS:
    /// A field of the state was assigned, whether or not its value differs.
    void changed();

private:
    QCoro::Task<> bootstrap();
    /// Whether the service's connection files are there and the service answers; never throws.
    QCoro::Task<bool> probe();
    bool loadConnectionInfo();

    void startPolling();
    QCoro::Task<> poll(std::stop_token token);
    /// Fetches everything once and publishes what arrived; whether anything did. Never throws.
    QCoro::Task<bool> refresh(std::stop_token token);
    /// What a GET brought, or nothing if it failed in whatever way.
    QCoro::Task<std::optional<std::string>> fetch(QString path, std::stop_token token);
    /// Waits for a command whose failure does not matter, then refreshes.
    QCoro::Task<> refreshAfter(QCoro::Task<> command);

    void setConnectionState(ConnectionState state);
    /// Publishes what a fetch brought, if it is such a value; whether it is. A reply that says the same as
    /// the one that the field was read from is not read again.
    template <class Value, class Field>
    bool publish(std::optional<std::string> reply, std::optional<std::string> &readFrom, Field &field);
    void emptyHistory();
    /// Remembers that memory of about that many bytes' worth of a reply was freed, or is about to be.
    void noteFreed(const std::optional<std::string> &reply);

    Clock &clock_;
    Platform &platform_;
    ServiceClient client_;
    ServiceLauncher launcher_;
    AccessibilityHeal heal_;
    std::stop_source lifetime_;
    std::stop_source polling_;
    ServiceState state_;
    bool hasFreedMuch_ = false; ///< since memory was last given back
    /// The replies that the fields of the state were read from.
    struct {
        std::optional<std::string> status, settings, devices, history;
    } replies_;
};

} // namespace quorbit
