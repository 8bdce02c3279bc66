#include "settings/CanvasModel.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace quorbit {

CanvasModel canvasModel(const ScreenDesk &desk, const QString &masterID, QSizeF canvas) {
    const CanvasFit fit = fitInto(desk, canvas);
    const std::vector<ScreenPlacement> rects = cardRects(desk);
    const std::vector<std::optional<CardRelation>> relations = cardRelations(desk);

    CanvasModel model{.cards = {}, .scale = fit.scale};
    model.cards.reserve(desk.devices.size());
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
                        .metrics = {},
                        .relation = relations[index]};
        if (card.isSelf)
            card.title += u" ("_s + qtTrId("kvm.canvas.local") + u')';
        else
            card.statusText = device.online ? qtTrId("kvm.canvas.online") : qtTrId("kvm.canvas.offline");
        card.metrics = cardMetrics(card.rect.height());
        model.cards.push_back(std::move(card));
    }
    return model;
}

} // namespace quorbit
