#pragma once

#include "daemon/Daemon.h"
#include "support/Await.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/FakePlatform.h"
#include "support/FakeService.h"
#include "support/Samples.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace quorbit::test {

/// A Daemon in a world of its own: a home folder, a service on a free port, time that stands still.
struct Fixture {
    Fixture() {
        platform.home = home.path();
        QObject::connect(daemon.get(), &Daemon::changed, [this] { ++announced; });
    }

    void writeFiles() { writeFiles(service.address().toEncoded() + "/ui?x=y\n"); }
    void writeFiles(const QByteArray &address) const {
        const QString folder = home.filePath(QStringLiteral("Library/Application Support/Quorbit/"));
        QDir().mkpath(folder);
        write(folder + QStringLiteral("ui-url"), address);
        write(folder + QStringLiteral("ui-token"), "s3cret\n");
    }

    const ServiceState &state() const { return daemon->state(); }
    /// Starts with a service that answers; true once the first refresh is over and the poll loop sleeps.
    bool startAndPoll() {
        writeFiles();
        daemon->start();
        return refreshed();
    }
    /// Lets events pass until the poll loop sleeps.
    bool refreshed() const {
        return QTest::qWaitFor([this] { return !alarms().empty(); });
    }
    /// How long each alarm has to go, but for the timeouts of requests.
    std::vector<FakeClock::Delay> alarms() const {
        auto delays = clock.pending();
        std::erase_if(delays, [](FakeClock::Delay delay) { return delay > std::chrono::seconds(10); });
        return delays;
    }
    /// Lets the poll loop wake up and refresh once.
    bool pollAgain() {
        clock.advance(std::chrono::milliseconds(2000));
        return refreshed();
    }

    QTemporaryDir home;
    FakeService service;
    FakePlatform platform;
    FakeDefaults defaults;
    FakeClock clock;
    int relaunches = 0;
    int announced = 0; ///< assignments of a field of the state
    std::unique_ptr<Daemon> daemon =
        std::make_unique<Daemon>(platform, defaults, clock, [this] { ++relaunches; });

private:
    static void write(const QString &path, const QByteArray &text) {
        QFile file(path);
        if (!file.open(QFile::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(path));
    }
};

/// Whose poll loop sleeps after the first refresh.
struct Polling : Fixture {
    Polling() {
        service.answerAll();
        if (!startAndPoll())
            qFatal("the service is not found");
        service.seen.clear();
        announced = 0;
    }
    /// Since then.
    int refreshes() const { return service.count("GET /api/status"); }
};

} // namespace quorbit::test
