// Polls for as long as a working day while the service changes all the time and every view is open, and fails
// when memory, objects, descriptors or threads grow.

#include "soak/Desk.h"
#include "soak/Service.h"
#include "soak/Usage.h"
#include "support/TestWorld.h"

#include <QDeadlineTimer>

#include <cstdio>

using namespace quorbit;
using namespace quorbit::test;
using namespace std::chrono_literals;

namespace {

constexpr int polls = isSanitized() ? 2'000 : 20'000;
constexpr int warmUp = polls / 10; ///< in which caches fill
static_assert(warmUp % servicePeriod == 0, "the figures compare like with like");

/// A leak of a small object at every poll is more than that; the fewer the polls, the more does noise weigh.
constexpr std::int64_t heapPerPoll = isSanitized() ? 32 : 16;
/// The connections that are kept open for the next request come and go.
constexpr std::int64_t sparePlaces = 8;

/// Lets events pass until the condition holds.
template <class Condition>
void until(const char *what, Condition holds) {
    const QDeadlineTimer patience(60s);
    while (!holds()) {
        if (patience.hasExpired())
            qFatal("waited in vain for %s", what);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// Lets the views draw what a poll brought, and what is to be deleted go.
void settle() {
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void poll(Fixture &world, Desk &desk, int number) {
    const auto isAsleep = [&] { return !world.clock.pending().empty(); };
    const Trouble kind = troubleAt(number);
    changeService(world.service, number);
    trouble(world.service, kind);
    if (kind == Trouble::refused)
        world.service.close();

    world.service.seen.clear();
    world.announced.clear();
    world.clock.advance(2000ms);
    desk.advance(2000ms);
    if (kind == Trouble::hang) {
        until("the requests", [&] { return world.service.seen.size() >= 4; });
        world.service.close();
    }
    until("the end of the poll", isAsleep);
    if (kind == Trouble::hang || kind == Trouble::refused) {
        world.service.open();
        world.writeFiles();
    }
    desk.use(number);
    settle();
}

/// Says what the toolkit says, but for what the offscreen platform cannot do, at every opening of a window.
void say(QtMsgType, const QMessageLogContext &, const QString &text) {
    if (!text.startsWith(QLatin1String("This plugin does not support")))
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

void print(int number, const Usage &usage) {
    std::printf("%6d polls: %9lld bytes, %5lld objects, %5lld widgets, %3lld descriptors, %2lld threads\n",
                number, static_cast<long long>(usage.heap), static_cast<long long>(usage.objects),
                static_cast<long long>(usage.widgets), static_cast<long long>(usage.descriptors),
                static_cast<long long>(usage.threads));
    std::fflush(stdout);
}

bool isWithin(const char *what, std::int64_t before, std::int64_t after, std::int64_t limit) {
    const bool holds = after - before <= limit;
    std::printf("%s: %+lld, at most %+lld%s\n", what, static_cast<long long>(after - before),
                static_cast<long long>(limit), holds ? "" : " -- too many");
    return holds;
}

} // namespace

int main(int argc, char **argv) {
    qInstallMessageHandler(say);
    useTestFonts();
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);
    useAppearance({}, 9);
    useLanguage(QLatin1String("en"));
    // Wakes up a wait that would otherwise last for ever.
    QTimer heartbeat;
    heartbeat.start(1s);

    Fixture world;
    for (const char *command : {"POST /api/pause", "POST /api/history/apply/3", "DELETE /api/history",
                                "DELETE /api/devices/device-0"})
        world.service.answer(command, {"{}"});
    world.service.answer("PUT /api/settings", {R"({"ok":true,"need_restart":false})"});
    world.service.answer("POST /api/pair/show", {R"({"pin":"482913"})"});
    changeService(world.service, 0);
    if (!world.startAndPoll())
        qFatal("the service is not found");
    Desk desk(world);

    std::printf("%d polls%s\n", polls, isSanitized() ? ", few because of the sanitizers" : "");
    Usage before;
    Usage after;
    for (int number = 1; number <= polls; ++number) {
        poll(world, desk, number);
        if (number % warmUp != 0)
            continue;
        QTest::qWait(300); // for animations to end
        after = currentUsage();
        print(number, after);
        if (number == warmUp)
            before = after;
    }

    const bool holds[] = {isWithin("heap", before.heap, after.heap, heapPerPoll * (polls - warmUp)),
                          isWithin("objects", before.objects, after.objects, 0),
                          isWithin("widgets", before.widgets, after.widgets, 0),
                          isWithin("descriptors", before.descriptors, after.descriptors, sparePlaces),
                          isWithin("threads", before.threads, after.threads, 0)};
    return std::all_of(std::begin(holds), std::end(holds), [](bool each) { return each; }) ? 0 : 1;
}
