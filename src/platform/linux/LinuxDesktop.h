#pragma once

#include "platform/Desktop.h"
#include "platform/linux/accessibility/AccessibilityGate.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/HeldKeys.h"
#include "platform/linux/desktop/TrayHosts.h"

#include <optional>

namespace quorbit {

/// A desktop as freedesktop.org describes it, in an X11 or a Wayland session.
class LinuxDesktop : public Desktop {
public:
    const Appearance &appearance() const override { return appearance_.current(); }
    void followAppearance(std::function<void()> changed) override;
    void findTray(std::function<void()> found) override;
    bool hasTray() const override { return trays_.isAvailable(); }
    void guardAccessibility(std::function<bool(const QWidget &)> isCovered) override;
    bool blendsWindows() const override;

private:
    DesktopAppearance appearance_;
    TrayHosts trays_;
    const HeldKeys heldKeys_;
    std::optional<AccessibilityGate> gate_;
};

} // namespace quorbit
