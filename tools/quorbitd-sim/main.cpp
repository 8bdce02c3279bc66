// Plays the Quorbit service while developing and in tests; see --help.
#include "ConnectionFiles.h"
#include "Options.h"
#include "Routes.h"
#include "Scenarios.h"
#include "World.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <iostream>
#include <random>
#include <thread>

namespace {

constexpr int workers = 64; // each connection that is kept alive, and each request that hangs, occupies one

std::string randomToken() {
    static constexpr char digits[] = "0123456789abcdef";
    std::random_device random;
    std::string token(32, '0');
    for (char &digit : token)
        digit = digits[random() % 16];
    return token;
}

sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    return signals;
}

/// Lets the world go on until one of the signals comes.
void liveUntil(const sigset_t &signals, sim::World &world, double speed) {
    constexpr double step = 0.1; // seconds
    const timespec pause{0, static_cast<long>(step * 1e9)};
    while (sigtimedwait(&signals, nullptr, &pause) < 0)
        world.advance(step * speed);
}

int run(const sim::Options &options) {
    // Blocked before any thread exists, so that only sigtimedwait() sees them.
    const sigset_t signals = endingSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    std::this_thread::sleep_for(std::chrono::duration<double>(options.startDelay));
    const sim::Scenario &scenario = *sim::findScenario(options.scenario);
    sim::Facts facts = scenario.facts();
    if (options.history >= 0)
        sim::fillHistory(facts, options.history);
    sim::World world(std::move(facts), scenario.lively, options.stateFile);

    httplib::Server server;
    server.new_task_queue = [] { return new httplib::ThreadPool(workers); };
    const std::string token = options.token.empty() ? randomToken() : options.token;
    sim::addRoutes(server, world, token, options);
    const int port = options.port == 0 ? server.bind_to_any_port("127.0.0.1")
                                       : (server.bind_to_port("127.0.0.1", options.port) ? options.port : -1);
    if (port < 0) {
        std::cerr << "quorbitd-sim: cannot listen\n";
        return 1;
    }
    std::thread listening([&server] { server.listen_after_bind(); });
    listening.detach();
    const sim::ConnectionFiles files("http://127.0.0.1:" + std::to_string(port), token);

    liveUntil(signals, world, options.speed);
    std::this_thread::sleep_for(std::chrono::duration<double>(options.linger));
    files.remove();
    // At once, whatever requests are still being answered.
    std::fflush(nullptr);
    std::_Exit(0);
}

} // namespace

int main(int argc, char **argv) {
    try {
        return run(sim::parseOptions(argc, argv));
    } catch (const std::exception &error) {
        std::cerr << "quorbitd-sim: " << error.what() << '\n';
        return 1;
    }
}
