#pragma once

#include "Options.h"
#include "World.h"

#include <httplib.h>

namespace sim {

/// Lets the server answer every request of the service's interface from the world, with the faults and delays
/// that were asked for, and print each if that was.
void addRoutes(httplib::Server &server, World &world, const std::string &token, const Options &options);

} // namespace sim
