#pragma once

#include "support/FakeService.h"

namespace quorbit::test {

/// After so many polls the service says again what it said before.
constexpr int servicePeriod = 200;

/// How a poll comes to nothing, wholly or in part.
enum class Trouble { none, garbage, cutOff, shut, hang, refused };

/// Lets the service say what it says at that poll: never the same at two that follow each other. Prepares it
/// for every trouble but `refused`, and for `hang` to be cut short.
Trouble changeService(FakeService &service, int poll);

} // namespace quorbit::test
