#include "settings/CanvasModel.h"

#include "settings/ScreenRelations.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

QString placeText(CardRelation::Side side, const QString &neighbour) {
    switch (side) {
    case CardRelation::Side::left:
        return qtTrId("kvm.canvas.place.left_of").arg(neighbour);
    case CardRelation::Side::right:
        return qtTrId("kvm.canvas.place.right_of").arg(neighbour);
    case CardRelation::Side::above:
        return qtTrId("kvm.canvas.place.above").arg(neighbour);
    case CardRelation::Side::below:
        return qtTrId("kvm.canvas.place.below").arg(neighbour);
    case CardRelation::Side::samePlace:
        break;
    }
    return qtTrId("kvm.canvas.place.same_place").arg(neighbour);
}

QString placeOf(const std::optional<CardRelation> &relation, const ScreenDesk &desk) {
    if (!relation)
        return {};
    const auto neighbour =
        std::find_if(desk.devices.begin(), desk.devices.end(),
                     [&](const DeviceCard &device) { return device.id == relation->neighbourID; });
    const QString name = neighbour == desk.devices.end() ? QString() : neighbour->name;
    return placeText(relation->side, name.isEmpty() ? qtTrId("common.unnamed") : name);
}

} // namespace

std::vector<CanvasCard> canvasCards(const ScreenDesk &desk, const QString &masterID, const CanvasFit &fit) {
    const std::vector<ScreenPlacement> rects = cardRects(desk);
    const std::vector<std::optional<CardRelation>> relations = cardRelations(desk);

    std::vector<CanvasCard> cards;
    cards.reserve(desk.devices.size());
    for (std::size_t index = 0; index < desk.devices.size(); ++index) {
        const DeviceCard &device = desk.devices[index];
        CanvasCard card{.id = device.id,
                        .title = device.name,
                        .symbol = cardSymbol(device.platform),
                        .statusText = {},
                        .statusTint = device.online ? Tint::green : Tint::secondary,
                        .isSelf = device.id == desk.selfID,
                        .isMaster = device.id == masterID,
                        .isOnline = device.online,
                        .rect = fit.toView(rects[index]),
                        .place = placeOf(relations[index], desk)};
        if (card.isSelf)
            card.title += u" ("_s + qtTrId("kvm.canvas.local") + u')';
        else
            card.statusText = device.online ? qtTrId("kvm.canvas.online") : qtTrId("kvm.canvas.offline");
        cards.push_back(std::move(card));
    }
    return cards;
}

} // namespace quorbit
