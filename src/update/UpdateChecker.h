#pragma once

#include "platform/Clock.h"
#include "platform/Platform.h"
#include "update/SecureNetwork.h"
#include "update/UpdateState.h"

#include <QObject>
#include <QStringList>
#include <QUrl>

#include <QCoroTask>

#include <memory>
#include <stop_token>
#include <type_traits>

namespace quorbit {

/// Knows whether a newer release exists and downloads it on request. Lives on the main thread. Destroying it
/// ends whatever it is doing, at once and without a word.
class UpdateChecker : public QObject {
    Q_OBJECT

public:
    /// `manifest` is the address of the manifest, `languages` are the interface languages in force, best
    /// first. An address that is not a valid HTTPS one stops the program.
    UpdateChecker(Platform &platform, Clock &clock, QUrl manifest, QStringList languages,
                  SecureNetwork network = SecureNetwork());
    ~UpdateChecker() override;

    const UpdateState &state() const { return state_; }

    /// Checks at once and then every 12 hours; calling it again restarts the period.
    void startAutoChecking();
    /// Fetches the manifest and publishes what it says. Never throws. Checks may overlap; the one that
    /// finishes last decides.
    QCoro::Task<> check();
    /// Starts downloading the package of the available update; does nothing while a download runs.
    void downloadUpdate();
    /// The running program's version, "0.0.0" when the bundle does not tell.
    QString currentVersion() const;

Q_SIGNALS:
    /// Some of the published state was assigned.
    void changed();

private:
    template <class Value>
    void publish(Value UpdateState::*field, std::type_identity_t<Value> value);
    QCoro::Task<Manifest> fetchManifest();
    void finishCheck(const Manifest &manifest);
    void failCheck(FailureReason reason);
    QDateTime now() const;
    QCoro::Task<> download(QUrl address);

    Platform &platform_;
    Clock &clock_;
    const QUrl manifest_;
    const QStringList languages_;
    UpdateState state_;
    SecureNetwork network_;
    std::unique_ptr<Clock::Alarm> timer_; ///< the next automatic check
    std::stop_source stop_;
};

} // namespace quorbit
