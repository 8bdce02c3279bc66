#pragma once

#include "platform/linux/desktop/DesktopPreferences.h"
#include "platform/linux/desktop/GtkSettings.h"

#include <QDBusMessage>
#include <QObject>

namespace quorbit {

/// Follows the desktop portal's settings and, for what it does not tell, the GTK settings files. Where
/// neither speaks, the lightness of the palette that the application started with decides between light and
/// dark. A portal that goes leaves its last word; one that comes, late or again, is asked anew.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject *parent = nullptr);

    const Appearance &current() const { return current_; }

    /// Reads the files, asks the portal, and follows both from now on, without waiting for the portal.
    void start();

Q_SIGNALS:
    void changed();

private:
    void followPortal();
    void ask();
    void update();

    bool darkByPalette_;
    GtkSettingsFiles gtk_;
    PortalSettings portal_;
    Appearance current_;

private Q_SLOTS:
    void settingChanged(const QDBusMessage &message);
};

} // namespace quorbit
