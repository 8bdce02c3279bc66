#pragma once

#include "daemon/Records.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>
#include <vector>

/// Where screens lie on the shared desk, how the desk is fitted into the canvas and what a drop writes.
///
/// Layout units are those of ScreenPlacement, canvas points those of the view; y points down in both. A
/// stored placement with a value that is not finite or beyond `layoutLimit` counts as absent: it is neither
/// shown nor written, so whatever a drop writes can be sent and read back.
namespace quorbit {

/// The greatest absolute coordinate and size, in layout units. Within it a double still tells fractions of a
/// unit apart, and no sum of a few values overflows.
constexpr double layoutLimit = 1e15;

/// A computer that takes part, as the canvas shows it.
struct DeviceCard {
    QString id;
    QString name;
    std::optional<QString> platform;
    bool online = false;

    bool operator==(const DeviceCard &) const = default;
};

/// All that the places of the cards depend on.
struct ScreenDesk {
    ScreenLayout layout; ///< as stored
    QString selfID;      ///< this computer; may be empty
    std::vector<DeviceCard> devices;

    bool operator==(const ScreenDesk &) const = default;
};

/// The rectangle of a device in layout units: as stored, else the default one.
ScreenPlacement rectFor(const ScreenDesk &desk, const QString &id);
/// The same area with sizes that are not negative.
ScreenPlacement standardized(const ScreenPlacement &rect);
/// rectFor() of every card, in their order, standardized.
std::vector<ScreenPlacement> cardRects(const ScreenDesk &desk);
/// What has to fit into the canvas: all cards and a margin around them, in layout units.
ScreenPlacement unionRect(const ScreenDesk &desk);

/// How layout units become canvas points.
struct CanvasFit {
    QSizeF canvas;
    ScreenPlacement shown; ///< the part of the desk that fills the canvas
    double scale = 0;      ///< points per unit; 0 on a canvas without an area

    /// A rectangle of the desk on the canvas.
    QRectF toView(const ScreenPlacement &rect) const;
    /// A distance on the canvas in layout units; nothing on a canvas without an area.
    QPointF toUnits(QPointF distance) const { return scale > 0 ? distance / scale : QPointF(); }
};
CanvasFit fitInto(const ScreenDesk &desk, QSizeF canvas);

bool hasCard(const ScreenDesk &desk, const QString &id);
/// The layout with an entry for every card where it is shown, and none that counts as absent.
ScreenLayout pinned(const ScreenDesk &desk);
/// The rectangle `distance` layout units away, within the limit; a distance that is not finite moves nothing.
ScreenPlacement movedBy(ScreenPlacement rect, QPointF distance);
/// The layout shifted so that its leftmost screen lies at x = 0 and its topmost at y = 0.
ScreenLayout normalized(ScreenLayout layout);

/// Font sizes of a card `height` canvas points high.
struct CardMetrics {
    double badge = 0;
    double symbol = 0;
    double name = 0;
    double status = 0;

    bool operator==(const CardMetrics &) const = default;
};
CardMetrics cardMetrics(double height);

/// The symbol of a card, whatever the letter case of the platform's tag.
QString cardSymbol(const std::optional<QString> &platform);

} // namespace quorbit
