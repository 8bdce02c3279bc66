#pragma once

#include <QPointF>

#include <optional>

namespace quorbit {

/// How far an arrow key moves a card, in layout units; nothing for any other key.
std::optional<QPointF> stepOf(int key, bool fine);

} // namespace quorbit
