#pragma once

#include "platform/Clock.h"
#include "platform/Platform.h"
#include "update/UpdateState.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QStringList>
#include <QUrl>

#include <QCoroTask>

#include <memory>
#include <stop_token>

namespace quorbit {

/// Knows whether a newer release exists and downloads it on request. Lives on the main thread.
class UpdateChecker : public QObject {
    Q_OBJECT

public:
    /// `manifest` is the address of the manifest; `languages` are the interface languages in force, best
    /// first.
    UpdateChecker(Platform &platform, Clock &clock, QUrl manifest, QStringList languages,
                  QObject *parent = nullptr);
    ~UpdateChecker() override;

    const UpdateState &state() const { return state_; }

    /// Checks at once and then every 12 hours; calling it again restarts the period.
    void startAutoChecking();
    /// Fetches the manifest and publishes what it says. Never throws.
    QCoro::Task<> check();
    /// Starts downloading the package of the available update; does nothing while a download runs.
    void downloadUpdate();
    /// The running program's version, "0.0.0" when the bundle does not tell.
    QString currentVersion() const;

Q_SIGNALS:
    /// Some of the published state was assigned.
    void changed();

private:
    UpdateState state_;
};

} // namespace quorbit
