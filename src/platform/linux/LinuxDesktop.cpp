#include "platform/linux/LinuxDesktop.h"

#include "platform/linux/desktop/X11.h"

namespace quorbit {

void LinuxDesktop::followAppearance(std::function<void()> changed) {
    QObject::connect(&appearance_, &DesktopAppearance::changed, std::move(changed));
    appearance_.start();
}

void LinuxDesktop::findTray(std::function<void()> found) {
    QObject::connect(&trays_, &TrayHosts::available, std::move(found));
    trays_.start();
}

void LinuxDesktop::guardAccessibility(std::function<bool(const QWidget &)> isCovered) {
    gate_.emplace(std::move(isCovered));
}

bool LinuxDesktop::blendsWindows() const {
    return !x11::isSession() || x11::hasCompositor();
}

} // namespace quorbit
