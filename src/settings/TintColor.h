#pragma once

#include "settings/Tint.h"
#include "ui/look/Theme.h"

namespace quorbit {

/// The theme's colour for a tint.
constexpr TextColor textColorOf(Tint tint) {
    switch (tint) {
    case Tint::primary:
        break;
    case Tint::secondary:
        return TextColor::secondary;
    case Tint::accent:
    case Tint::blue:
        return TextColor::accent;
    case Tint::green:
        return TextColor::green;
    case Tint::orange:
        return TextColor::orange;
    }
    return TextColor::primary;
}

} // namespace quorbit
