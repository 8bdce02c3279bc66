#pragma once

#include "platform/Desktop.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/TrayHosts.h"

namespace quorbit {

/// A desktop as freedesktop.org describes it, in an X11 or a Wayland session.
class LinuxDesktop : public Desktop {
public:
    const Appearance &appearance() const override { return appearance_.current(); }
    void followAppearance(std::function<void()> changed) override;
    void findTray(std::function<void()> found) override;
    bool hasTray() const override { return trays_.isAvailable(); }
    bool blendsWindows() const override;

private:
    DesktopAppearance appearance_;
    TrayHosts trays_;
};

} // namespace quorbit
