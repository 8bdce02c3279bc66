#pragma once

#include <QColor>
#include <QFont>

#include <optional>

namespace quorbit {

/// What the user's wishes mean for the colours of a program.
struct ColorPreferences {
    bool dark = false;
    std::optional<QColor> accent; ///< absent when the desktop names none
    bool highContrast = false;

    bool operator==(const ColorPreferences &) const = default;
};

/// How the user wants programs to look.
struct Appearance {
    ColorPreferences colors;
    bool reducedMotion = false;
    std::optional<QFont> font; ///< of ordinary text; absent when only the toolkit knows
    double textScale = 1;      ///< how much larger than in `font`, or in the toolkit's font, text shall be

    bool operator==(const Appearance &) const = default;
};

} // namespace quorbit
