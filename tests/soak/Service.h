#pragma once

#include "support/FakeService.h"

namespace quorbit::test {

/// After so many polls the service says again what it said before.
constexpr int servicePeriod = 200;

/// Lets the service say what it says at that poll: never the same at two that follow each other.
void changeService(FakeService &service, int poll);

/// How a poll comes to nothing, wholly or in part.
enum class Trouble { none, garbage, cutOff, shut, hang, refused };

Trouble troubleAt(int poll);

/// Prepares the service for all of them but `refused`, and for `hang` to be cut short.
void trouble(FakeService &service, Trouble trouble);

} // namespace quorbit::test
