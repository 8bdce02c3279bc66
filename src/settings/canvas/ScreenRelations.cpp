#include "settings/canvas/ScreenRelations.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace quorbit {

namespace {

/// How far two rectangles are apart along each axis; negative where they overlap.
struct Gap {
    double x = 0;
    double y = 0;

    /// Orders neighbours, the nearest first. Among those equally far away it is the one that overlaps more,
    /// or faces more of the rectangle.
    auto nearness() const {
        return std::tuple(std::hypot(std::max(x, 0.0), std::max(y, 0.0)), std::max(x, y), std::min(x, y));
    }
};

Gap gapBetween(const ScreenPlacement &a, const ScreenPlacement &b) {
    return {std::max(b.x - (a.x + a.w), a.x - (b.x + b.w)), std::max(b.y - (a.y + a.h), a.y - (b.y + b.h))};
}

/// The axis along which they are further apart decides.
CardRelation::Side sideOf(const ScreenPlacement &rect, const ScreenPlacement &neighbour, Gap gap) {
    using Side = CardRelation::Side;
    const double dx = (rect.x + rect.w / 2) - (neighbour.x + neighbour.w / 2);
    const double dy = (rect.y + rect.h / 2) - (neighbour.y + neighbour.h / 2);
    if (dx == 0 && dy == 0)
        return Side::samePlace;
    const bool isHorizontal = dy == 0 || (dx != 0 && gap.x >= gap.y);
    if (isHorizontal)
        return dx < 0 ? Side::left : Side::right;
    return dy < 0 ? Side::above : Side::below;
}

} // namespace

std::vector<std::optional<CardRelation>> cardRelations(const ScreenDesk &desk) {
    const std::vector<ScreenPlacement> rects = cardRects(desk);
    std::vector<std::optional<CardRelation>> relations(rects.size());
    for (std::size_t card = 0; card < rects.size(); ++card) {
        std::optional<std::size_t> nearest;
        Gap nearestGap;
        for (std::size_t other = 0; other < rects.size(); ++other) {
            if (other == card)
                continue;
            const Gap gap = gapBetween(rects[card], rects[other]);
            if (nearest && gap.nearness() >= nearestGap.nearness())
                continue;
            nearest = other;
            nearestGap = gap;
        }
        if (nearest)
            relations[card] =
                CardRelation{sideOf(rects[card], rects[*nearest], nearestGap), desk.devices[*nearest].id};
    }
    return relations;
}

} // namespace quorbit
