#pragma once

#include "platform/Platform.h"

#include <utility>
#include <vector>

namespace quorbit::test {

/// A program that only seems to run; shared between the handle that the code under test holds and the test.
struct FakeProcess {
    QString executable;
    QStringList arguments;
    bool running = true;
    int terminations = 0;
};

/// A system whose answers the test sets, and which records what it was asked to do.
class FakePlatform final : public Platform {
public:
    std::optional<QString> auxiliary; ///< the answer for every name
    std::optional<QString> executable;
    std::optional<QString> version;
    QString home;
    std::optional<QString> downloads;
    QStringList languages;
    bool trusted = true;
    std::optional<std::string> launchError; ///< set: every launch fails with it

    std::vector<std::shared_ptr<FakeProcess>> launched;
    mutable QStringList auxiliaryAsked;
    QStringList logged;
    std::vector<QUrl> opened;
    QStringList revealed;
    int accessibilitySettingsOpened = 0;
    int memoryReturned = 0;

    std::optional<QString> auxiliaryExecutable(const QString &name) const override {
        auxiliaryAsked.push_back(name);
        return auxiliary;
    }
    std::optional<QString> executablePath() const override { return executable; }
    std::optional<QString> bundleVersion() const override { return version; }
    QString homeDirectory() const override { return home; }
    std::optional<QString> downloadsDirectory() const override { return downloads; }
    QStringList systemLanguages() const override { return languages; }

    std::unique_ptr<ChildProcess> launch(const QString &path, const QStringList &arguments) override {
        if (launchError)
            throw LaunchError(*launchError);
        launched.push_back(std::make_shared<FakeProcess>(FakeProcess{path, arguments}));
        return std::make_unique<Handle>(launched.back());
    }
    void reopenAfterExit() override {}
    void returnFreeMemory() override { ++memoryReturned; }
    void log(const QString &line) override { logged.push_back(line); }
    bool isAccessibilityTrusted() const override { return trusted; }
    void observeAccessibilityChanges(std::function<void()>) override {}
    void openAccessibilitySettings() override { ++accessibilitySettingsOpened; }
    void open(const QUrl &address) override { opened.push_back(address); }
    void reveal(const QString &path) override { revealed.push_back(path); }

private:
    class Handle final : public ChildProcess {
    public:
        explicit Handle(std::shared_ptr<FakeProcess> process) : process_(std::move(process)) {}
        bool isRunning() override { return process_->running; }
        void terminate() override { ++process_->terminations; }

    private:
        std::shared_ptr<FakeProcess> process_;
    };
};

} // namespace quorbit::test
