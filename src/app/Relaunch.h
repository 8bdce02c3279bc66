#pragma once

#include "platform/Platform.h"

namespace quorbit {

/// Ends the event loop, whatever window would rather stay open.
void terminateApplication();

/// Has the application reopened once it has ended, and ends it in every case.
void relaunchQuorbitApp(Platform &platform);

} // namespace quorbit
