// Polls for as long as a working day while the service changes all the time and every view is open, and fails
// when memory, objects, descriptors or threads grow.

#include "Desk.h"
#include "Service.h"
#include "support/TestWorld.h"

#include <QDeadlineTimer>

#include <cstdio>
#include <filesystem>
#include <iterator>
#include <malloc.h>

#ifdef __SANITIZE_ADDRESS__
// g++ comes without the header that declares it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // NOLINT(bugprone-reserved-identifier)
#endif

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;
using namespace std::chrono_literals;

namespace {

#ifdef __SANITIZE_ADDRESS__
std::int64_t allocated() {
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
}
#else
std::int64_t allocated() {
    // What was mapped for one large block alone counts apart from the arenas.
    const auto info = ::mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}
#endif
/// As many as are asked for by the environment.
const int polls = qEnvironmentVariable("SOAK_POLLS", u"2000"_s).toInt();
/// In which caches fill; the figures compare like with like.
const int warmUp = polls / 2 / servicePeriod * servicePeriod;

/// A window is drawn every few polls, for it takes half of the processor's time; its widgets change at each.
constexpr int pollsAPainting = 4;

/// What the process holds, and by how much that may grow. The connections that are kept open for the next
/// request come and go. The heap has noise, and beyond it less than the smallest block at every painting.
const std::int64_t heap = 50'000 + std::int64_t{3} * (polls - warmUp);
const std::pair<const char *, std::int64_t> limits[]{
    {"bytes", heap}, {"objects", 0}, {"widgets", 0}, {"descriptors", 8}, {"threads", 0}};
using Usage = std::array<std::int64_t, std::size(limits)>;

Usage currentUsage() {
    const auto entries = [](const char *folder) {
        return std::distance(std::filesystem::directory_iterator(folder),
                             std::filesystem::directory_iterator());
    };
    std::int64_t objects = qApp->findChildren<QObject *>().size();
    for (const QWidget *window : QApplication::topLevelWidgets())
        objects += window->findChildren<QObject *>().size();
    return {allocated(), objects, QApplication::allWidgets().size(), entries("/proc/self/fd"),
            entries("/proc/self/task")};
}

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

void poll(SettingsWorld &world, Desk &desk, int number) {
    const auto isAsleep = [&] { return !world.alarms().empty(); };
    const Trouble kind = changeService(world.service, number);
    for (QWidget *window : QApplication::topLevelWidgets())
        window->setUpdatesEnabled(number % pollsAPainting == 0);
    if (kind == Trouble::refused)
        world.service.close();

    world.service.seen.clear();
    world.announced = 0;
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
    if (!text.startsWith("This plugin does not support"_L1))
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

} // namespace

int main(int argc, char **argv) {
    if (warmUp == 0)
        qFatal("SOAK_POLLS=N says how many polls, %d at least", 2 * servicePeriod);
    qInstallMessageHandler(say);
    useTestFonts();
    QApplication app(argc, argv);
    QApplication::setStyle(new ControlStyle);
    useAppearance({}, 9);
    useLanguage(u"en"_s);
    // Wakes up a wait that would otherwise last for ever.
    QTimer heartbeat;
    heartbeat.start(1s);

    SettingsWorld world;
    for (const QByteArray &command :
         {QByteArray("POST /api/pause"), QByteArray("POST /api/history/apply/3"),
          QByteArray("DELETE /api/history"), "DELETE /api/devices/" + officeId.toUtf8()})
        world.service.answer(command, {"{}"});
    world.service.answer("PUT /api/settings", {R"({"ok":true,"need_restart":false})"});
    world.service.answer("POST /api/pair/show", {R"({"pin":"482913"})"});
    Desk desk(world);

    Usage before{};
    Usage after{};
    for (int number = 1; number <= polls; ++number) {
        poll(world, desk, number);
        if (number % servicePeriod != 0)
            continue;
        QTest::qWait(300); // for animations to end
        after = currentUsage();
        std::printf("%6d polls", number);
        for (std::size_t kind = 0; kind < after.size(); ++kind)
            std::printf(", %lld %s", static_cast<long long>(after[kind]), limits[kind].first);
        std::puts("");
        std::fflush(stdout);
        if (number == warmUp)
            before = after;
    }

    bool holds = true;
    for (std::size_t kind = 0; kind < after.size(); ++kind) {
        const auto &[what, limit] = limits[kind];
        const bool isWithin = after[kind] - before[kind] <= limit;
        std::printf("%s: %+lld, at most %+lld%s\n", what, static_cast<long long>(after[kind] - before[kind]),
                    static_cast<long long>(limit), isWithin ? "" : " -- too many");
        holds = holds && isWithin;
    }
    return holds ? 0 : 1;
}
