#include "platform/linux/desktop/DesktopPreferences.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

const QString appearance = u"org.freedesktop.appearance"_s;
const QString gnome = u"org.gnome.desktop.interface"_s;
const QString gnomeAccess = u"org.gnome.desktop.a11y.interface"_s;
const QString plasma = u"org.kde.kdeglobals.KDE"_s;
const QString plasmaGeneral = u"org.kde.kdeglobals.General"_s;

// The text scales that desktops offer; anything else is a mistake that would make the program unusable.
constexpr double leastScale = 0.5;
constexpr double greatestScale = 3;

template <class T>
std::optional<T> setting(const PortalSettings &portal, const QString &group, const char *key) {
    const QVariant value = portal.value(group).value(QLatin1String(key));
    if (value.metaType() != QMetaType::fromType<T>())
        return std::nullopt;
    return value.value<T>();
}

std::optional<bool> isHighContrastTheme(const std::optional<QString> &theme) {
    if (!theme || !theme->startsWith("HighContrast"_L1))
        return std::nullopt;
    return true;
}

/// A font as GTK writes it: family, words for its style, size in points or with "px" in pixels. The style is
/// left out: the program gives each of its texts a weight of its own.
std::optional<QFont> gtkFont(const std::optional<QString> &description) {
    static const QRegularExpression form(
        QStringLiteral("^(.*?)[\\s,]+(?:(?:(?:Ultra|Extra|Semi|Demi)-?)?(?:Thin|Light|Bold|Black)[\\s,]+"
                       "|(?:Book|Regular|Normal|Medium|Heavy|Roman|Italic|Oblique)[\\s,]+)*"
                       "(\\d+(?:\\.\\d+)?)(px)?(?:\\s+@.*)?$"),
        QRegularExpression::CaseInsensitiveOption);
    const auto parts = form.match(description.value_or(QString()).trimmed());
    const double size = parts.captured(2).toDouble();
    if (!parts.hasMatch() || size < 1 || size > 200)
        return std::nullopt;
    QFont font(parts.captured(1));
    if (parts.capturedLength(3) > 0)
        font.setPixelSize(std::max(1, qRound(size)));
    else
        font.setPointSizeF(size);
    return font;
}

std::optional<QFont> plasmaFont(const std::optional<QString> &description) {
    QFont font;
    if (!description || !font.fromString(*description) || font.pointSizeF() < 1)
        return std::nullopt;
    return font;
}

bool isDark(const PortalSettings &portal, const GtkSettings &gtk, bool darkByPalette) {
    constexpr uint preferDark = 1;
    constexpr uint preferLight = 2;
    switch (setting<uint>(portal, appearance, "color-scheme").value_or(0)) {
    case preferDark:
        return true;
    case preferLight:
        return false;
    default:
        return gtk.preferDark.value_or(false) || darkByPalette;
    }
}

bool isHighContrast(const PortalSettings &portal, const GtkSettings &gtk) {
    if (const auto contrast = setting<uint>(portal, appearance, "contrast"))
        return *contrast == 1;
    if (const auto asked = setting<bool>(portal, gnomeAccess, "high-contrast"))
        return *asked;
    return isHighContrastTheme(setting<QString>(portal, gnome, "gtk-theme"))
        .value_or(isHighContrastTheme(gtk.theme).value_or(false));
}

bool isMotionReduced(const PortalSettings &portal, const GtkSettings &gtk) {
    if (const auto reduced = setting<uint>(portal, appearance, "reduced-motion"))
        return *reduced == 1;
    // Plasma has a factor for the length of animations, 0 for none.
    if (const auto factor = setting<QString>(portal, plasma, "AnimationDurationFactor"))
        return *factor == "0"_L1;
    if (const auto animations = setting<bool>(portal, gnome, "enable-animations"))
        return !*animations;
    return !gtk.animations.value_or(true);
}

std::optional<QFont> userFont(const PortalSettings &portal, const GtkSettings &gtk) {
    if (auto font = plasmaFont(setting<QString>(portal, plasmaGeneral, "font")))
        return font;
    if (auto font = gtkFont(setting<QString>(portal, gnome, "font-name")))
        return font;
    return gtkFont(gtk.font);
}

std::optional<QColor> accent(const PortalSettings &portal) {
    const auto color = setting<QColor>(portal, appearance, "accent-color");
    return color && color->isValid() ? color : std::nullopt;
}

double textScale(const PortalSettings &portal) {
    const double scale = setting<double>(portal, gnome, "text-scaling-factor").value_or(1);
    return scale >= leastScale && scale <= greatestScale ? scale : 1;
}

} // namespace

Appearance desktopPreferences(const PortalSettings &portal, const GtkSettings &gtk, bool darkByPalette) {
    return {.colors = {.dark = isDark(portal, gtk, darkByPalette),
                       .accent = accent(portal),
                       .highContrast = isHighContrast(portal, gtk)},
            .reducedMotion = isMotionReduced(portal, gtk),
            .font = userFont(portal, gtk),
            .textScale = textScale(portal)};
}

QStringList appearanceGroups() {
    return {appearance, gnome, gnomeAccess, plasma, plasmaGeneral};
}

} // namespace quorbit
