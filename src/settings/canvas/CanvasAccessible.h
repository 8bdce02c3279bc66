#pragma once

#include "settings/canvas/CanvasModel.h"

#include <vector>

namespace quorbit {

class CanvasArea;

/// Lets screen readers see every CanvasArea as a group of buttons, one a card.
void installCanvasAccessibility();
/// Tells screen readers that the keyboard is at the current card.
void announceCurrentCard(CanvasArea &area);
/// Tells them which of the cards shown are about to go when `next` is shown.
void announceLeavingCards(CanvasArea &area, const std::vector<CanvasCard> &next);
/// Tells them what is different from `before`.
void announceChangedCards(CanvasArea &area, const std::vector<CanvasCard> &before);

} // namespace quorbit
