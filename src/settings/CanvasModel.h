#pragma once

#include "settings/ScreenLayout.h"
#include "settings/ScreenRelations.h"
#include "settings/Tint.h"

#include <vector>

namespace quorbit {

/// A card on the canvas as it is drawn while nothing is dragged.
struct CanvasCard {
    QString id;
    QString title;
    QString symbol;
    QString statusText; ///< empty on this computer's card, which has no such line
    Tint statusTint = Tint::secondary;
    bool isSelf = false;
    bool isMaster = false;
    bool isOnline = false;
    QRectF rect; ///< canvas points
    CardMetrics metrics;
    std::optional<CardRelation> relation;

    bool operator==(const CanvasCard &) const = default;
};

/// What the canvas shows, in drawing order.
struct CanvasModel {
    std::vector<CanvasCard> cards;
    double scale = 0; ///< canvas points per layout unit, for a drop

    bool operator==(const CanvasModel &) const = default;
};

CanvasModel canvasModel(const ScreenDesk &desk, const QString &masterID, QSizeF canvas);

} // namespace quorbit
