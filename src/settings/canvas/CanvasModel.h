#pragma once

#include "settings/canvas/ScreenLayout.h"
#include "settings/canvas/ScreenRelations.h"
#include "ui/look/TextColor.h"

#include <QString>

#include <optional>
#include <vector>

namespace quorbit {

/// A card on the canvas as it is drawn while nothing is dragged.
struct CanvasCard {
    QString id;
    QString title;
    QString symbol;
    QString statusText; ///< empty on this computer's card, which has no such line
    TextColor statusColor = TextColor::secondary;
    bool isSelf = false;
    bool isMaster = false;
    bool isOnline = false;
    QRectF rect; ///< canvas points
    std::optional<CardRelation> relation;

    bool operator==(const CanvasCard &) const = default;
};

/// What the canvas shows, in drawing order. No two cards have the same identifier.
std::vector<CanvasCard> canvasCards(const ScreenDesk &desk, const QString &masterID, const CanvasFit &fit);

} // namespace quorbit
