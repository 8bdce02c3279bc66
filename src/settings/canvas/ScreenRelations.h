#pragma once

#include "settings/canvas/ScreenLayout.h"

namespace quorbit {

/// Where a card lies, told by its nearest neighbour, for those who cannot see the canvas.
struct CardRelation {
    enum class Side { left, right, above, below, samePlace };

    Side side = Side::samePlace; ///< of the neighbour
    QString neighbourID;

    bool operator==(const CardRelation &) const = default;
};

/// The relation of every card, in their order; absent for a card that is alone.
std::vector<std::optional<CardRelation>> cardRelations(const ScreenDesk &desk);

} // namespace quorbit
