#include "app/windows/PanelPlacement.h"

#include <QMargins>

#include <algorithm>

namespace quorbit {

namespace {

constexpr int gap = 4;
constexpr int edge = 8;

QRect inside(const QRect &available) {
    return available - QMargins(edge, edge, edge, edge);
}

} // namespace

PanelAnchor panelAnchor(const QRect &icon, const QRect &available) {
    const int toTop = icon.top() - available.top();
    const int toBottom = available.bottom() - icon.bottom();
    const int toLeft = icon.left() - available.left();
    const int toRight = available.right() - icon.right();
    const bool growsUpward = toTop > toBottom;
    if (std::min(toTop, toBottom) <= std::min(toLeft, toRight))
        return {{icon.center().x(), growsUpward ? icon.top() - gap : icon.bottom() + 1 + gap},
                PanelAnchor::Side::around,
                growsUpward};
    const int level = growsUpward ? icon.bottom() + 1 : icon.top();
    if (toLeft <= toRight)
        return {{icon.right() + 1 + gap, level}, PanelAnchor::Side::rightOf, growsUpward};
    return {{icon.left() - gap, level}, PanelAnchor::Side::leftOf, growsUpward};
}

QRect panelGeometry(const PanelAnchor &anchor, const QSize &size, const QRect &available) {
    const QRect limits = inside(available);
    const int height = std::min(size.height(), limits.height());
    int wantedLeft = anchor.point.x();
    if (anchor.horizontally == PanelAnchor::Side::around)
        wantedLeft -= size.width() / 2;
    else if (anchor.horizontally == PanelAnchor::Side::leftOf)
        wantedLeft -= size.width();
    const int wantedTop = anchor.growsUpward ? anchor.point.y() - height : anchor.point.y();
    // Kept inside from the left and the top last: that is where a panel too large for the screen begins.
    const int left = std::max(limits.left(), std::min(wantedLeft, limits.right() + 1 - size.width()));
    const int top = std::max(limits.top(), std::min(wantedTop, limits.bottom() + 1 - height));
    return {left, top, size.width(), height};
}

int highestPanel(const QRect &available) {
    return inside(available).height();
}

} // namespace quorbit
