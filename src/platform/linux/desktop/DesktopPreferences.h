#pragma once

#include "platform/linux/desktop/GtkSettings.h"

#include <QColor>
#include <QFont>
#include <QMap>
#include <QVariantMap>

#include <optional>

namespace quorbit {

/// How the user wants programs to look.
struct DesktopPreferences {
    bool dark = false;
    std::optional<QColor> accent; ///< absent when the desktop names none
    bool highContrast = false;
    bool reducedMotion = false;
    std::optional<QFont> font; ///< of ordinary text; absent when only the toolkit knows
    double textScale = 1;      ///< how much larger than in `font`, or in the toolkit's font, text shall be

    bool operator==(const DesktopPreferences &) const = default;
};

/// The portal's settings by group and key, as plain values: numbers, texts, and a QColor for a colour.
using PortalSettings = QMap<QString, QVariantMap>;

/// What both say together. The portal comes first, then the GTK settings, then the toolkit's palette. Unknown
/// settings and values of a wrong type count as not given.
DesktopPreferences desktopPreferences(const PortalSettings &portal, const GtkSettings &gtk,
                                      bool darkByPalette);

/// The groups of settings that desktopPreferences() looks into.
QStringList appearanceGroups();

} // namespace quorbit
