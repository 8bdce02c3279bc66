#pragma once

#include <chrono>

namespace quorbit {

/// Whether a session bus takes up the conversation within `timeout`. A bus that is absent says no at once.
bool sessionBusAnswers(std::chrono::milliseconds timeout);

/// Points this process at no session bus: every attempt to connect then fails at once. Without this, the
/// first use of a bus that is stuck would block the program for half a minute, and the first use of one that
/// is not there would start a bus of its own. Programs started later should be given the environment as it
/// was before.
void forgoSessionBus();

} // namespace quorbit
