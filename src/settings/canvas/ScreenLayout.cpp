#include "settings/canvas/ScreenLayout.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr double defaultWidth = 1778;
constexpr double defaultHeight = 1000;
constexpr double defaultGap = 30;
/// In canvas points. Cards without a width are not fitted in and may lie further away than whole pixels can
/// be counted.
constexpr double farthestPoint = 1e6;

bool isWithinLimit(double value) {
    return std::abs(value) <= layoutLimit;
} // false for a NaN

bool isUsable(const ScreenPlacement &placement) {
    return isWithinLimit(placement.x) && isWithinLimit(placement.y) && isWithinLimit(placement.w) &&
           isWithinLimit(placement.h);
}

ScreenPlacement united(const ScreenPlacement &a, const ScreenPlacement &b) {
    const double left = std::min(a.x, b.x);
    const double top = std::min(a.y, b.y);
    return {left, top, std::max(a.x + a.w, b.x + b.w) - left, std::max(a.y + a.h, b.y + b.h) - top};
}

std::optional<ScreenPlacement> storedRect(const ScreenLayout &layout, const QString &id) {
    const auto stored = layout.find(id);
    if (stored == layout.end() || !isUsable(stored->second))
        return std::nullopt;
    return stored->second;
}

/// Screens without a place stand in one column to the right of this computer's. The index counts this
/// computer's own card too, so the first of them usually stands one place down.
ScreenPlacement columnRect(std::size_t index) {
    return {defaultWidth, static_cast<double>(index) * (defaultHeight + defaultGap), defaultWidth,
            defaultHeight};
}

} // namespace

ScreenPlacement rectFor(const ScreenDesk &desk, const QString &id) {
    if (const auto stored = storedRect(desk.layout, id))
        return *stored;
    if (id == desk.selfID)
        return {0, 0, defaultWidth, defaultHeight};
    const auto first = std::find_if(desk.devices.begin(), desk.devices.end(),
                                    [&id](const DeviceCard &device) { return device.id == id; });
    return columnRect(first == desk.devices.end()
                          ? 0
                          : static_cast<std::size_t>(std::distance(desk.devices.begin(), first)));
}

ScreenPlacement standardized(const ScreenPlacement &rect) {
    return {rect.x + std::min(rect.w, 0.0), rect.y + std::min(rect.h, 0.0), std::abs(rect.w),
            std::abs(rect.h)};
}

std::vector<ScreenPlacement> cardRects(const ScreenDesk &desk) {
    std::vector<ScreenPlacement> rects;
    rects.reserve(desk.devices.size());
    for (const DeviceCard &device : desk.devices)
        rects.push_back(standardized(rectFor(desk, device.id)));
    return rects;
}

ScreenPlacement unionRect(const ScreenDesk &desk) {
    ScreenPlacement whole;
    const std::vector<ScreenPlacement> rects = cardRects(desk);
    if (!rects.empty()) {
        whole = rects.front();
        for (const ScreenPlacement &rect : rects)
            whole = united(whole, rect);
    }
    if (whole.w <= 0)
        whole = {0, 0, defaultWidth, defaultHeight};
    const double marginX = 0.08 * whole.w + 30;
    const double marginY = 0.1 * whole.h + 30;
    return {whole.x - marginX, whole.y - marginY, whole.w + 2 * marginX, whole.h + 2 * marginY};
}

CanvasFit fitInto(const ScreenDesk &desk, QSizeF canvas) {
    // A view that is not laid out yet may have no size to speak of.
    const auto extent = [](double value) { return std::isfinite(value) ? std::max(value, 0.0) : 0.0; };
    CanvasFit fit{.canvas = {extent(canvas.width()), extent(canvas.height())}, .shown = unionRect(desk)};
    fit.scale = std::min(fit.canvas.width() / fit.shown.w, fit.canvas.height() / fit.shown.h);
    return fit;
}

QRectF CanvasFit::toView(const ScreenPlacement &rect) const {
    const ScreenPlacement from = standardized(rect);
    const auto drawn = [](double value) { return std::clamp(value, -farthestPoint, farthestPoint); };
    const double x = (canvas.width() - scale * shown.w) / 2 + scale * (from.x - shown.x);
    const double y = (canvas.height() - scale * shown.h) / 2 + scale * (from.y - shown.y);
    return QRectF(QPointF(drawn(x), drawn(y)), QPointF(drawn(x + scale * from.w), drawn(y + scale * from.h)));
}

bool hasCard(const ScreenDesk &desk, const QString &id) {
    return std::any_of(desk.devices.begin(), desk.devices.end(),
                       [&id](const DeviceCard &device) { return device.id == id; });
}

ScreenLayout pinned(const ScreenDesk &desk) {
    ScreenLayout layout = desk.layout;
    std::erase_if(layout, [](const auto &entry) { return !isUsable(entry.second); });
    for (const DeviceCard &device : desk.devices) {
        if (!layout.contains(device.id))
            layout.emplace(device.id, rectFor(desk, device.id));
    }
    return layout;
}

ScreenPlacement movedBy(ScreenPlacement rect, QPointF distance) {
    const auto landed = [](double from, double by) {
        return std::clamp(std::isfinite(by) ? from + by : from, -layoutLimit, layoutLimit);
    };
    rect.x = landed(rect.x, distance.x());
    rect.y = landed(rect.y, distance.y());
    return rect;
}

ScreenLayout normalized(ScreenLayout layout) {
    std::erase_if(layout, [](const auto &entry) { return !isUsable(entry.second); });
    if (layout.empty())
        return layout;
    double minX = layout.begin()->second.x;
    double minY = layout.begin()->second.y;
    for (const auto &[id, placement] : layout) {
        minX = std::min(minX, placement.x);
        minY = std::min(minY, placement.y);
    }
    if (minX == 0 && minY == 0)
        return layout;
    for (auto &[id, placement] : layout) {
        placement.x = std::min(placement.x - minX, layoutLimit);
        placement.y = std::min(placement.y - minY, layoutLimit);
    }
    return layout;
}

CardMetrics cardMetrics(double height) {
    return {.badge = std::min(0.14 * height, 12.0),
            .symbol = std::min(0.26 * height, 22.0),
            .name = std::min(0.13 * height, 11.0),
            .status = std::min(0.11 * height, 9.0)};
}

QString cardSymbol(const std::optional<QString> &platform) {
    const QString tag = platform.value_or(QString()).toLower();
    if (tag == "darwin"_L1 || tag == "macos"_L1)
        return u"macbook"_s;
    if (tag == "linux"_L1 || tag == "windows"_L1)
        return u"pc"_s;
    return u"display"_s;
}

} // namespace quorbit
