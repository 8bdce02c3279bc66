#pragma once

#include "platform/Platform.h"
#include "platform/linux/process/Spawn.h"

#include <QObject>
#include <QPointer>

namespace quorbit {

class Child;

/// The running program as it is installed: `<dir>/bin/<executable>` with its auxiliary executables in
/// `<dir>/libexec/quorbit/`.
struct Bundle {
    std::optional<QString> executable;
    std::optional<QString> version;
    QStringList arguments; ///< what the program was started with, without its own name

    /// The executable is the one that this process was started from, even if an upgrade has replaced it
    /// since.
    static Bundle ofThisProcess(std::optional<QString> version, QStringList arguments);
};

/// A Linux desktop. Made before the application object and before anything changes the environment, which is
/// handed on to the programs that it starts as it was then.
class LinuxPlatform : public QObject, public Platform {
    Q_OBJECT

public:
    explicit LinuxPlatform(Bundle bundle);

    std::optional<QString> auxiliaryExecutable(const QString &name) const override;
    std::optional<QString> executablePath() const override { return bundle_.executable; }
    std::optional<QString> bundleVersion() const override { return bundle_.version; }
    QString homeDirectory() const override;
    std::optional<QString> downloadsDirectory() const override;
    QStringList systemLanguages() const override;

    std::unique_ptr<ChildProcess> launch(const QString &executable, const QStringList &arguments) override;
    void reopenAfterExit() override;

    void returnFreeMemory() override;
    void log(const QString &line) override;
    bool isAccessibilityTrusted() const override;
    void observeAccessibilityChanges(std::function<void()> changed) override;
    void openAccessibilitySettings() override;
    void open(const QUrl &address) override;
    void reveal(const QString &path) override;

private:
    Bundle bundle_;
    Environment environment_;
    QPointer<Child> launched_; ///< the latest by launch(), until it is reaped
    bool reopening_ = false;
    mutable std::optional<bool> mayInjectThroughX11_;
    std::vector<std::function<void()>> accessibilityObservers_;

private Q_SLOTS:
    void accessibilityChanged();
};

} // namespace quorbit
