#include "ui/look/Theme.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>

namespace quorbit {

namespace {

// The palette carries every colour that cannot be computed from another one. Edges, separators and the weaker
// text colours have no role of their own in QPalette; they take the bevel roles, which no control here draws.
constexpr auto edgeRole = QPalette::Midlight;
constexpr auto separatorRole = QPalette::Mid;
constexpr auto secondaryRole = QPalette::Dark;
constexpr auto tertiaryRole = QPalette::Shadow;
constexpr auto accentRole = QPalette::Link;

constexpr double textContrast = 4.5;
constexpr double strongTextContrast = 7;
constexpr double shapeContrast = 3;
constexpr double hoverAlpha = 0.07;
constexpr double tintAlpha = 0.08;
// A white text on a mid-tone accent is what people expect of a button; a paler accent gets dark text instead.
constexpr double whiteTextContrast = 2.5;

struct Shades {
    QRgb window, card, primary, secondary, tertiary, control, track;
    QRgb accent, green, orange, red, yellow;
};
constexpr Shades lightShades{0xfff2f2f4, 0xffffffff, 0xff1d1d1f, 0xff6e6e73, 0xff8a8a90, 0xffffffff,
                             0xffd8d8dc, 0xff0a6cff, 0xff248a3d, 0xffc2690a, 0xffd70015, 0xffb98a00};
constexpr Shades darkShades{0xff1f1f22, 0xff2a2a2e, 0xfff2f2f4, 0xffa2a2a9, 0xff85858c, 0xff3a3a3f,
                            0xff48484d, 0xff4a98ff, 0xff3fcf62, 0xffffa63d, 0xffff5e55, 0xffffd43a};

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double ratio(double a, double b) {
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor mixed(const QColor &from, const QColor &to, double part) {
    const auto channel = [part](float a, float b) { return static_cast<float>(a + (b - a) * part); };
    return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                            channel(from.blueF(), to.blueF()))
        .toRgb();
}

/// `color` at another lightness, from 0 for black to 1 for white; hue and saturation stay.
QColor atLightness(const QColor &color, double lightness) {
    return QColor::fromHslF(std::max(color.hslHueF(), 0.0F), color.hslSaturationF(),
                            static_cast<float>(lightness))
        .rgb();
}

/// `color`, made darker or lighter no farther than it takes to stand out from every surface.
QColor legible(const QColor &color, std::initializer_list<QColor> surfaces, double wanted) {
    std::array<double, 4> levels{};
    std::size_t count = 0;
    for (const QColor &surface : surfaces)
        levels[count++] = luminance(surface);
    const auto worst = [&](const QColor &candidate) {
        const double own = luminance(candidate);
        double least = 21;
        for (std::size_t i = 0; i < count; ++i)
            least = std::min(least, ratio(own, levels[i]));
        return least;
    };
    if (worst(color) >= wanted)
        return color;
    double near = color.lightnessF();
    double far = worst(Qt::black) >= worst(Qt::white) ? 0 : 1;
    for (int step = 0; step < 10; ++step) {
        const double middle = (near + far) / 2;
        (worst(atLightness(color, middle)) >= wanted ? far : near) = middle;
    }
    return atLightness(color, far);
}

bool isDark(const QPalette &palette) {
    return palette.color(QPalette::Active, QPalette::WindowText).lightness() >
           palette.color(QPalette::Active, QPalette::Window).lightness();
}

bool isHighContrast(const QPalette &palette) {
    return palette.color(QPalette::Active, edgeRole).alphaF() > 0.4F;
}

QColor shade(const QPalette &palette, TextColor color) {
    const Shades &shades = isDark(palette) ? darkShades : lightShades;
    switch (color) {
    case TextColor::primary:
        return palette.color(QPalette::Active, QPalette::WindowText);
    case TextColor::secondary:
        return palette.color(QPalette::Active, secondaryRole);
    case TextColor::tertiary:
        return palette.color(QPalette::Active, tertiaryRole);
    case TextColor::accent:
        return palette.color(QPalette::Active, accentRole);
    case TextColor::onAccent:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case TextColor::green:
        return shades.green;
    case TextColor::orange:
        return shades.orange;
    case TextColor::red:
        return shades.red;
    case TextColor::yellow:
        return shades.yellow;
    }
    return palette.color(QPalette::Active, QPalette::WindowText);
}

QColor roleColor(const QPalette &palette, QPalette::ColorRole role) {
    return palette.color(QPalette::Active, role);
}

QColor legibleShade(const QPalette &palette, TextColor color, double wanted) {
    const QColor base = shade(palette, color);
    if (color == TextColor::onAccent)
        return base;
    return legible(base, {roleColor(palette, QPalette::Window), roleColor(palette, QPalette::Base)}, wanted);
}

/// The palette of what lies on `overlay`, which is painted over the palette's surfaces.
QPalette overlaidPalette(const QPalette &palette, const QColor &overlay) {
    QPalette result = palette;
    for (const auto role : {QPalette::Window, QPalette::Base})
        result.setColor(role, composed(overlay, roleColor(palette, role)));
    for (const auto &[color, role] :
         {std::pair(TextColor::secondary, secondaryRole), std::pair(TextColor::tertiary, tertiaryRole)})
        result.setColor(role, textColor(result, color));
    return result;
}

} // namespace

double contrastRatio(const QColor &a, const QColor &b) {
    return ratio(luminance(a), luminance(b));
}

QColor composed(const QColor &top, const QColor &bottom) {
    return mixed(bottom, top, top.alphaF()).rgb();
}

QColor withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

QPalette themePalette(const ColorPreferences &preferences) {
    const Shades &shades = preferences.dark ? darkShades : lightShades;
    const QColor window = shades.window;
    const QColor card = shades.card;
    const QColor primary =
        preferences.highContrast ? QColor(preferences.dark ? Qt::white : Qt::black) : QColor(shades.primary);
    const double wanted = preferences.highContrast ? strongTextContrast : textContrast;
    const QColor secondary = legible(QColor(shades.secondary), {window, card}, wanted);
    const QColor tertiary = legible(QColor(shades.tertiary), {window, card}, wanted);

    // A desktop's accent may be any colour at all: it must stand out from both surfaces, and then carry text.
    const QColor asked = preferences.accent ? QColor(preferences.accent->rgb()) : QColor(shades.accent);
    const QColor accent = legible(asked, {window, card}, shapeContrast);
    const bool whiteText = contrastRatio(accent, Qt::white) >= whiteTextContrast;
    const QColor onAccent = whiteText ? QColor(Qt::white) : QColor(lightShades.primary);
    const QColor accentFill = legible(accent, {onAccent}, wanted);

    const QColor ink = preferences.dark ? Qt::white : Qt::black;
    const double edge = preferences.highContrast ? 0.6 : (preferences.dark ? 0.12 : 0.1);
    const double separator = preferences.highContrast ? 0.35 : 0.08;

    QPalette palette(shades.control, window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, card);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, card);
    palette.setColor(QPalette::Button, QColor(shades.control));
    palette.setColor(QPalette::Light, card);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::BrightText})
        palette.setColor(role, primary);
    palette.setColor(QPalette::PlaceholderText, tertiary);
    palette.setColor(edgeRole, withAlpha(ink, edge));
    palette.setColor(separatorRole, withAlpha(ink, separator));
    palette.setColor(secondaryRole, secondary);
    palette.setColor(tertiaryRole, tertiary);
    palette.setColor(QPalette::Highlight, accentFill);
    palette.setColor(QPalette::HighlightedText, onAccent);
    palette.setColor(accentRole, accent);
    palette.setColor(QPalette::LinkVisited, accent);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, tertiary);
    return palette;
}

QPalette highlightedPalette(const QPalette &palette) {
    return overlaidPalette(palette, themeColors(palette).hover);
}

QPalette tintedPalette(const QPalette &palette) {
    return overlaidPalette(palette, themeColors(palette).tint);
}

QColor textColor(const QPalette &palette, TextColor color) {
    return legibleShade(palette, color, isHighContrast(palette) ? strongTextContrast : textContrast);
}

QColor textOn(const QPalette &palette, TextColor color, const QColor &surface) {
    return legible(shade(palette, color), {surface},
                   isHighContrast(palette) ? strongTextContrast : textContrast);
}

QColor readableOn(const QColor &surface) {
    const QColor dark = lightShades.primary;
    return contrastRatio(Qt::white, surface) >= contrastRatio(dark, surface) ? QColor(Qt::white) : dark;
}

QColor fillUnder(const QColor &text, const QColor &fill, const QPalette &palette) {
    return legible(fill, {text}, isHighContrast(palette) ? strongTextContrast : textContrast);
}

QColor shapeColor(const QPalette &palette, TextColor color) {
    return legibleShade(palette, color, isHighContrast(palette) ? textContrast : shapeContrast);
}

ThemeColors themeColors(const QPalette &palette) {
    ThemeColors colors;
    colors.dark = isDark(palette);
    colors.highContrast = isHighContrast(palette);
    const Shades &shades = colors.dark ? darkShades : lightShades;
    colors.window = roleColor(palette, QPalette::Window);
    colors.card = roleColor(palette, QPalette::Base);
    colors.cardEdge = roleColor(palette, edgeRole);
    colors.separator = roleColor(palette, separatorRole);
    colors.primary = shade(palette, TextColor::primary);
    colors.secondary = textColor(palette, TextColor::secondary);
    colors.tertiary = textColor(palette, TextColor::tertiary);
    colors.hover = withAlpha(colors.primary, hoverAlpha);
    colors.pill = colors.hover;
    colors.accent = shapeColor(palette, TextColor::accent);
    colors.tint = withAlpha(colors.accent, tintAlpha);
    colors.accentFill = roleColor(palette, QPalette::Highlight);
    colors.onAccent = roleColor(palette, QPalette::HighlightedText);
    colors.accentText =
        legible(colors.accent, {colors.window, colors.card, composed(colors.pill, colors.window)},
                colors.highContrast ? strongTextContrast : textContrast);
    colors.green = shapeColor(palette, TextColor::green);
    colors.orange = shapeColor(palette, TextColor::orange);
    colors.red = shapeColor(palette, TextColor::red);
    colors.yellow = shapeColor(palette, TextColor::yellow);
    colors.control = roleColor(palette, QPalette::Button);
    colors.controlEdge = colors.cardEdge;
    colors.field = colors.dark ? colors.window : colors.card;
    colors.fieldEdge = colors.cardEdge;
    colors.segment = colors.dark ? QColor(shades.track) : colors.card;
    colors.track = colors.highContrast ? shapeColor(palette, TextColor::tertiary) : QColor(shades.track);
    return colors;
}

} // namespace quorbit
