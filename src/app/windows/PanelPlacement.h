#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace quorbit {

/// The point where the panel hangs, and on which sides of it the panel lies.
struct PanelAnchor {
    enum class Side { leftOf, around, rightOf };

    QPoint point;
    Side horizontally = Side::around;
    bool growsUpward = false;
};

/// The anchor beside `icon` (or beside the pointer, as a rectangle of one pixel). The bar that holds the icon
/// is taken to lie along the edge of `available` that is nearest; the panel lies on the icon's other side.
PanelAnchor panelAnchor(const QRect &icon, const QRect &available);

/// The panel of that size, kept a little inside `available` and never higher than that.
QRect panelGeometry(const PanelAnchor &anchor, const QSize &size, const QRect &available);

/// How high a panel may be there.
int highestPanel(const QRect &available);

} // namespace quorbit
