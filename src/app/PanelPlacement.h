#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace quorbit {

/// Where the panel hangs: the middle of its upper edge, or of its lower edge when it stands above the icon.
struct PanelAnchor {
    QPoint point;
    bool growsUpward = false;
};

/// The anchor beside `icon` (or beside the pointer, as an empty rectangle) on the side with more room in
/// `available`.
PanelAnchor panelAnchor(const QRect &icon, const QRect &available);

/// The panel of that size, kept inside `available` and never higher than it.
QRect panelGeometry(const PanelAnchor &anchor, const QSize &size, const QRect &available);

} // namespace quorbit
