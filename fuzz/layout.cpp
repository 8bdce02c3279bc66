#include "Property.h"

#include "settings/canvas/Arrangement.h"
#include "settings/canvas/ScreenRelations.h"

#include <algorithm>
#include <cmath>

using namespace quorbit;

namespace {

constexpr std::size_t mostCards = 24;

/// Half of the coordinates are ordinary ones; the others are any value that a double can have.
double coordinate(InputReader &input) {
    return input.byte() % 2 == 0 ? input.number<std::int16_t>() : input.number<double>();
}

ScreenDesk readDesk(InputReader &input) {
    ScreenDesk desk;
    for (std::size_t count = input.byte() % mostCards; count > 0; --count) {
        const QString id = QString::number(input.byte() % mostCards);
        const std::uint8_t kind = input.byte();
        if (kind % 4 != 0)
            desk.devices.push_back({id, id, std::nullopt, kind % 2 == 0});
        if (kind % 8 < 6)
            desk.layout[id] = {coordinate(input), coordinate(input), coordinate(input), coordinate(input)};
        if (kind > 200)
            desk.selfID = id;
    }
    return desk;
}

/// Whether the cards take up any width together; when they do not, an ordinary desk is shown instead of
/// theirs.
bool hasWidth(const std::vector<ScreenPlacement> &rects) {
    double left = layoutLimit;
    double right = -layoutLimit;
    for (const ScreenPlacement &rect : rects) {
        left = std::min(left, rect.x);
        right = std::max(right, rect.x + rect.w);
    }
    return right > left;
}

bool canBeSent(const ScreenLayout &layout) {
    for (const auto &[id, place] : layout)
        for (const double value : {place.x, place.y, place.w, place.h})
            if (!std::isfinite(value))
                return false;
    return true;
}

void checkWritten(const ScreenDesk &desk, const ScreenLayout &written) {
    HOLDS(canBeSent(written));
    HOLDS(normalized(written) == written);
    for (const DeviceCard &device : desk.devices)
        HOLDS(written.contains(device.id));
}

} // namespace

/// A desk, a canvas, a drop and a step on it, and another desk that is published before the drop is answered.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    InputReader input(data, size);
    const QSizeF canvas(coordinate(input), coordinate(input));
    const QPointF way(coordinate(input), coordinate(input));
    const QString dropped = QString::number(input.byte() % mostCards);
    const ScreenDesk desk = readDesk(input);

    const CanvasFit fit = fitInto(desk, canvas);
    HOLDS(std::isfinite(fit.scale) && fit.scale >= 0);
    const auto rects = cardRects(desk);
    HOLDS(rects.size() == desk.devices.size());
    for (const ScreenPlacement &rect : rects) {
        const QRectF shown = fit.toView(rect);
        HOLDS(std::isfinite(shown.x()) && std::isfinite(shown.y()));
        HOLDS(shown.width() >= 0 && shown.height() >= 0);
        if (hasWidth(rects)) {
            HOLDS(shown.right() <= fit.canvas.width() + 1 && shown.bottom() <= fit.canvas.height() + 1);
            HOLDS(shown.left() >= -1 && shown.top() >= -1);
        }
    }
    HOLDS(cardRelations(desk).size() == desk.devices.size());

    const ScreenLayout once = normalized(desk.layout);
    HOLDS(canBeSent(once));
    HOLDS(normalized(once) == once);

    Arrangement arrangement;
    arrangement.publish(desk);
    arrangement.hold(dropped);
    const Arrangement::Save drop = arrangement.drop(fit.toUnits(way));
    checkWritten(desk, drop.layout);
    arrangement.step(dropped, way);
    HOLDS(!arrangement.nextSave());
    const ScreenDesk next = readDesk(input);
    arrangement.publish(next);
    arrangement.ended(drop.number, way.x() > 0);
    if (const auto step = arrangement.nextSave())
        checkWritten(next, step->layout);
    return 0;
}
