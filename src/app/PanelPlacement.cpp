#include "app/PanelPlacement.h"

#include <algorithm>

namespace quorbit {

namespace {

constexpr int gap = 4;

} // namespace

PanelAnchor panelAnchor(const QRect &icon, const QRect &available) {
    const int above = icon.top() - available.top();
    const int below = available.bottom() - icon.bottom();
    const bool growsUpward = above > below;
    return {QPoint(icon.center().x(), growsUpward ? icon.top() - gap : icon.bottom() + 1 + gap), growsUpward};
}

QRect panelGeometry(const PanelAnchor &anchor, const QSize &size, const QRect &available) {
    const int height = std::min(size.height(), available.height());
    const int wantedTop = anchor.growsUpward ? anchor.point.y() - height : anchor.point.y();
    // Kept inside from the left and the top last: that is where a panel too large for the screen begins.
    const int left = std::max(available.left(), std::min(anchor.point.x() - size.width() / 2,
                                                         available.right() + 1 - size.width()));
    const int top = std::max(available.top(), std::min(wantedTop, available.bottom() + 1 - height));
    return {left, top, size.width(), height};
}

} // namespace quorbit
