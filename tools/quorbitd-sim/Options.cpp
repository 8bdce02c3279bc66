#include "Options.h"

#include "Scenarios.h"

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <vector>

namespace sim {

namespace {

const std::map<std::string, Fault> faultNames{
    {"slow", Fault::slow},         {"hang", Fault::hang},         {"garbage", Fault::garbage},
    {"truncate", Fault::truncate}, {"redirect", Fault::redirect}, {"error500", Fault::error500},
    {"html", Fault::html},         {"null", Fault::null},
};

[[noreturn]] void refuse(const std::string &problem) {
    std::cerr << "quorbitd-sim: " << problem << "\nTry quorbitd-sim --help.\n";
    std::exit(2);
}

void printHelp() {
    std::cout << R"(Usage: quorbitd-sim run [--no-tray] [OPTION...]

Plays the Quorbit service: listens on the loopback interface and leaves its address and
token in "Library/Application Support/Quorbit" under the home folder until it is told to
terminate. Every option can also be given as an environment variable, such as
QUORBITD_SIM_SCENARIO=paused for --scenario paused.

  --scenario NAME     what is played (live unless told otherwise):
)";
    for (const Scenario &scenario : scenarios())
        std::cout << "                        " << scenario.name
                  << std::string(20 - std::string(scenario.name).size(), ' ') << scenario.summary << '\n';
    std::cout << R"(  --speed N           lets the simulated time run N times as fast
  --start-delay S     waits S seconds before it listens
  --linger S          goes on for S seconds once it is told to terminate
  --history N         starts with N history entries
  --port N            listens there instead of on a free port
  --token TEXT        takes this token instead of a random one
  --state FILE        keeps what is changed in FILE and starts from there the next time
  --fault KIND        misbehaves on every path; --fault PATH=KIND on one path. KIND is one of
                      slow, hang, garbage, truncate, redirect, error500, html, null.
                      Several, separated by commas, are possible.
  --delay MS          lets every reply come MS milliseconds after the request has been carried
                      out; --delay PATH=MS on one path. Several, separated by commas, are
                      possible.
  --log               prints a line for each request: method, path, status, and when it came
                      and was answered, in milliseconds
  --help              prints this page

The PIN that it shows and accepts is 482 913. A shown PIN is used by a new computer some
seconds later; the permission that is asked for is granted some seconds later and then
waits for a restart.
)";
}

double number(const std::string &name, const std::string &text) {
    char *end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !(value >= 0) || value > 1e6)
        refuse("--" + name + " wants a number from 0 to 1000000, not \"" + text + "\"");
    return value;
}

/// Reads a list of VALUE or PATH=VALUE.
template <class Value>
void addByPath(std::map<std::string, Value> &byPath, const std::string &list,
               Value (*parse)(const std::string &)) {
    std::istringstream items(list);
    for (std::string item; std::getline(items, item, ',');) {
        const auto equals = item.rfind('=');
        const std::string path = equals == std::string::npos ? "" : item.substr(0, equals);
        byPath[path] = parse(equals == std::string::npos ? item : item.substr(equals + 1));
    }
}

Fault faultNamed(const std::string &name) {
    const auto fault = faultNames.find(name);
    if (fault == faultNames.end())
        refuse("there is no fault \"" + name + "\"");
    return fault->second;
}

std::chrono::milliseconds delayOf(const std::string &text) {
    return std::chrono::milliseconds(static_cast<int>(number("delay", text)));
}

void set(Options &options, const std::string &name, const std::string &value) {
    if (name == "scenario") {
        if (!findScenario(value))
            refuse("there is no scenario \"" + value + "\"");
        options.scenario = value;
    } else if (name == "speed") {
        options.speed = number(name, value);
    } else if (name == "start-delay") {
        options.startDelay = number(name, value);
    } else if (name == "linger") {
        options.linger = number(name, value);
    } else if (name == "history") {
        options.history = static_cast<int>(number(name, value));
    } else if (name == "port") {
        options.port = static_cast<int>(number(name, value));
    } else if (name == "token") {
        options.token = value;
    } else if (name == "state") {
        options.stateFile = value;
    } else if (name == "fault") {
        addByPath(options.faults, value, faultNamed);
    } else if (name == "delay") {
        addByPath(options.delays, value, delayOf);
    } else {
        refuse("there is no option \"--" + name + "\"");
    }
}

std::string variable(std::string name) {
    for (char &character : name)
        character =
            character == '-' ? '_' : static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return "QUORBITD_SIM_" + name;
}

} // namespace

Options parseOptions(int argc, char **argv) {
    Options options;
    for (const char *name : {"scenario", "speed", "start-delay", "linger", "history", "port", "token",
                             "state", "fault", "delay"}) {
        if (const char *value = std::getenv(variable(name).c_str()))
            set(options, name, value);
    }

    const std::vector<std::string> arguments(argv + 1, argv + argc);
    bool run = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        if (argument == "--help") {
            printHelp();
            std::exit(0);
        }
        if (argument == "run") {
            run = true;
        } else if (argument == "--log") {
            options.log = true;
        } else if (argument.rfind("--", 0) != 0) {
            refuse("\"" + argument + "\" is not a command");
        } else if (argument != "--no-tray") {
            const auto equals = argument.find('=');
            const std::string name = argument.substr(2, equals == std::string::npos ? equals : equals - 2);
            const bool inPlace = equals != std::string::npos && name != "fault";
            if (!inPlace && i + 1 == arguments.size())
                refuse("--" + name + " wants a value");
            set(options, name, inPlace ? argument.substr(equals + 1) : arguments[++i]);
        }
    }
    if (!run)
        refuse("the command \"run\" is missing");
    return options;
}

} // namespace sim
