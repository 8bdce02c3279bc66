#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

namespace sim {

/// How replies to a path misbehave.
enum class Fault { slow, hang, garbage, truncate, redirect, error500, html, null };

struct Options {
    std::string scenario = "live";
    double speed = 1;                    ///< how fast the simulated time runs
    double startDelay = 0;               ///< seconds before it listens
    double linger = 0;                   ///< seconds for which it goes on after it is told to terminate
    int history = -1;                    ///< number of history entries; -1 leaves that to the scenario
    int port = 0;                        ///< 0 takes a free one
    std::string token;                   ///< empty makes a random one
    bool log = false;                    ///< prints each request
    std::string stateFile;               ///< where changes are kept from run to run; empty keeps none
    std::map<std::string, Fault> faults; ///< by path; "" stands for every path
    std::map<std::string, std::chrono::milliseconds> delays; ///< of replies, likewise
};

/// Reads the environment, then the arguments, which win. Prints a message and exits with 2 when it does not
/// understand one, and with 0 after --help.
Options parseOptions(int argc, char **argv);

} // namespace sim
