#pragma once

#include "World.h"

#include <string>
#include <vector>

namespace sim {

/// A state of the world that can be put on the screen.
struct Scenario {
    const char *name;
    const char *summary;
    bool lively;
    Facts (*facts)();
};

const std::vector<Scenario> &scenarios();
const Scenario *findScenario(const std::string &name);
/// Replaces the history by one of `count` entries of every kind.
void fillHistory(Facts &facts, int count);

} // namespace sim
