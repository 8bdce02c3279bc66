#pragma once

#include "platform/Appearance.h"
#include "platform/linux/desktop/GtkSettings.h"

#include <QMap>
#include <QVariantMap>

namespace quorbit {

/// The portal's settings by group and key, as plain values: numbers, texts, and a QColor for a colour.
using PortalSettings = QMap<QString, QVariantMap>;

/// What both say together. The portal comes first, then the GTK settings, then the toolkit's palette. Unknown
/// settings and values of a wrong type count as not given.
Appearance desktopPreferences(const PortalSettings &portal, const GtkSettings &gtk, bool darkByPalette);

/// The groups of settings that desktopPreferences() looks into.
QStringList appearanceGroups();

} // namespace quorbit
