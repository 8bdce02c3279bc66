#include "settings/canvas/CanvasModel.h"

#include "wording/DisplayLine.h"

#include <QCoreApplication>
#include <QSet>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

/// Cards that claim to be the same device lie on the same place; one of them is enough.
void keepDistinct(std::vector<CanvasCard> &cards) {
    QSet<QString> seen;
    std::erase_if(cards, [&seen](const CanvasCard &card) {
        const bool known = seen.contains(card.id);
        seen.insert(card.id);
        return known;
    });
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
                        .title = displayName(device.name),
                        .symbol = cardSymbol(device.platform),
                        .statusText = {},
                        .statusColor = device.online ? TextColor::green : TextColor::secondary,
                        .isSelf = device.id == desk.selfID,
                        .isMaster = device.id == masterID,
                        .isOnline = device.online,
                        .rect = fit.toView(rects[index]),
                        .relation = relations[index]};
        if (card.isSelf)
            card.title += u" ("_s + qtTrId("kvm.canvas.local") + u')';
        else
            card.statusText = device.online ? qtTrId("kvm.canvas.online") : qtTrId("kvm.canvas.offline");
        cards.push_back(std::move(card));
    }
    keepDistinct(cards);
    return cards;
}

} // namespace quorbit
