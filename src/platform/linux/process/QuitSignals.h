#pragma once

namespace quorbit {

/// Lets SIGTERM, SIGINT and SIGHUP, by which terminals and the system end a program, end the event loop.
/// Called once, after the application object is made.
void endLoopAtQuitSignals();

} // namespace quorbit
