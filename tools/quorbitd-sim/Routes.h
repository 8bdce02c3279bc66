#pragma once

#include "Options.h"
#include "World.h"

#include <httplib.h>

namespace sim {

/// Lets the server answer every request of the service's interface from the world, with the faults that were
/// asked for.
void addRoutes(httplib::Server &server, World &world, const std::string &token,
               const std::map<std::string, Fault> &faults);

} // namespace sim
