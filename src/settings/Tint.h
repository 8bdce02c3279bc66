#pragma once

namespace quorbit {

/// What a text or a symbol is coloured as, by meaning; the view knows the colours.
enum class Tint { primary, secondary, accent, blue, green, orange };

} // namespace quorbit
