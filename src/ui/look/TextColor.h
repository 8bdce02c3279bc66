#pragma once

namespace quorbit {

/// What a text, a symbol or a dot is painted in, by meaning; Theme.h has the colours.
enum class TextColor { primary, secondary, tertiary, accent, green, orange, red, yellow, onAccent };

} // namespace quorbit
