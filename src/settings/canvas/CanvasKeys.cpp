#include "settings/canvas/CanvasKeys.h"

#include <Qt>

namespace quorbit {

namespace {
constexpr double usualStep = 100;
constexpr double fineStep = 10;
} // namespace

std::optional<QPointF> stepOf(int key, bool fine) {
    const double distance = fine ? fineStep : usualStep;
    switch (key) {
    case Qt::Key_Left:
        return QPointF(-distance, 0);
    case Qt::Key_Right:
        return QPointF(distance, 0);
    case Qt::Key_Up:
        return QPointF(0, -distance);
    case Qt::Key_Down:
        return QPointF(0, distance);
    default:
        return std::nullopt;
    }
}

} // namespace quorbit
