#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>

namespace quorbit {

/// A program that was started and may be told to end. Destroying the handle leaves the program alone.
class ChildProcess {
public:
    virtual ~ChildProcess() = default;

    virtual bool isRunning() = 0;
    /// Sends the termination signal and does not wait; does nothing once the program has ended.
    virtual void terminate() = 0;
};

/// A program could not be started; what() is the system's own account, in UTF-8.
class LaunchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What differs from system to system. One object, made by the application's entry, used on the main thread.
class Platform {
public:
    virtual ~Platform() = default;

    /// An executable shipped inside the application's bundle, if the bundle has it.
    virtual std::optional<QString> auxiliaryExecutable(const QString &name) const = 0;
    /// The running program's own executable.
    virtual std::optional<QString> executablePath() const = 0;
    /// The bundle's version text, such as "1.4.1".
    virtual std::optional<QString> bundleVersion() const = 0;
    /// The folder under which the service leaves its connection files.
    virtual QString homeDirectory() const = 0;
    /// The user's own folder for downloads.
    virtual std::optional<QString> downloadsDirectory() const = 0;
    /// The languages that the user asked the system for, as BCP 47 tags, best first.
    virtual QStringList systemLanguages() const = 0;

    /// Starts a program that inherits environment, streams and working directory, and outlives this one.
    /// Throws LaunchError.
    virtual std::unique_ptr<ChildProcess> launch(const QString &executable, const QStringList &arguments) = 0;
    /// Leaves behind a short-lived helper that starts this program again once it has ended, and with it the
    /// program that it launched; after half a minute, whatever has not.
    virtual void reopenAfterExit() = 0;

    /// Gives the memory that this process has freed back to the system; worth its time after much was freed.
    virtual void returnFreeMemory() = 0;
    /// Writes one line to the system log and to standard error; every character of it stands for itself.
    virtual void log(const QString &line) = 0;
    /// Whether this process may drive keyboard and pointer.
    virtual bool isAccessibilityTrusted() const = 0;
    /// Calls `changed` on the main thread whenever the system announces a change of accessibility
    /// permissions.
    virtual void observeAccessibilityChanges(std::function<void()> changed) = 0;
    /// Opens the desktop's own page of accessibility settings.
    virtual void openAccessibilitySettings() = 0;
    /// Opens an address with the program that the user chose for it.
    virtual void open(const QUrl &address) = 0;
    /// Shows a file, selected, in the file manager.
    virtual void reveal(const QString &path) = 0;
};

} // namespace quorbit
