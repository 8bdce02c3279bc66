#pragma once

#include "platform/Appearance.h"

#include <functional>

class QWidget;

namespace quorbit {

/// The desktop that the program's windows and its icon are shown on. What it calls back, it calls on the main
/// thread and as long as it exists.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// How the user wants programs to look, as far as it is known by now.
    virtual const Appearance &appearance() const = 0;
    /// Finds the appearance out, without waiting for it, and calls `changed` whenever it is another one.
    virtual void followAppearance(std::function<void()> changed) = 0;

    /// Looks for something that shows tray icons. Calls `found` once, at once or when something has come; it
    /// shows an icon that is made from then on, and shows it again by itself if it goes and comes back.
    virtual void findTray(std::function<void()> found) = 0;
    /// Whether that which was found is there now.
    virtual bool hasTray() const = 0;

    /// From now on assistive technology can do no more than the user: what it asks for that is not there, and
    /// what it asks of a widget that `isCovered` by something modal, is refused.
    virtual void guardAccessibility(std::function<bool(const QWidget &)> isCovered) = 0;

    /// Whether translucent windows are blended with what lies behind them now; elsewhere that is black.
    virtual bool blendsWindows() const = 0;
};

} // namespace quorbit
