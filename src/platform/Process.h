#pragma once

#include "platform/Desktop.h"
#include "platform/Platform.h"

#include <functional>
#include <memory>

class QWindow;

namespace quorbit {

/// The running program from its start to its end, and through it all that the system offers.
class Process {
public:
    virtual ~Process() = default;

    virtual Platform &platform() = 0;
    /// Called once, when the application object has been made and before its palette or style is changed. The
    /// desktop goes before that object does.
    virtual std::unique_ptr<Desktop> makeDesktop() = 0;

    /// Claims to be the only instance that the user runs. False when there is another one, which then shows
    /// its window instead; one that hangs is ended after a few seconds. Afterwards the process is ready for
    /// the application object.
    virtual bool claim() = 0;
    /// Whether the session that begins has started the program, so that no user waits for something to see.
    virtual bool isStartedBySession() const = 0;
    /// Tells the desktop that the start is over. From now on `showWindow` is called when the user starts the
    /// program again, or has since claim(): it shows a window and returns it, and the desktop brings that to
    /// the front.
    virtual void finishStart(std::function<QWindow *()> showWindow) = 0;

    /// Calls `terminate` exactly once when the program ends: after the event loop, in exit(), or when the
    /// display is gone. From then on the program has less than a second left, however long its other parts
    /// would take to end. When the system asks the program to end, the event loop ends.
    virtual void callAtEnd(std::function<void()> terminate) = 0;
};

/// Prepares this process for its work and makes the system that it runs on: the first call in main(), whose
/// arguments it takes. Each system's folder under platform/ defines it in its library, of which the program
/// links one.
std::unique_ptr<Process> startNativeProcess(const QString &version, int argc, char **argv);

} // namespace quorbit
