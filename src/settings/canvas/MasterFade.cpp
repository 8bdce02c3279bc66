#include "settings/canvas/MasterFade.h"

#include "ui/look/ControlStyle.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace quorbit {

namespace {
constexpr double response = 0.3; // seconds
constexpr double damping = 0.8;
constexpr double leastRefreshRate = 30;
constexpr double mostRefreshRate = 250;
} // namespace

MasterFade::MasterFade(QWidget &canvas) : canvas_(canvas) {
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &MasterFade::advance);
}

void MasterFade::moveTo(const QString &id) {
    if (id == master_)
        return;
    if (animationDuration(canvas_) > 0) {
        springOf(master_).setTarget(0);
        springOf(id).setTarget(1);
        if (!timer_.isActive()) {
            const double rate =
                std::clamp(canvas_.screen()->refreshRate(), leastRefreshRate, mostRefreshRate);
            clock_.start();
            timer_.start(static_cast<int>(std::floor(1000 / rate)));
        }
    } else {
        moving_.clear();
        timer_.stop();
    }
    master_ = id;
}

double MasterFade::amount(const QString &id) const {
    const auto spring = moving_.constFind(id);
    if (spring != moving_.constEnd())
        return spring->value();
    return id == master_ ? 1 : 0;
}

Spring &MasterFade::springOf(const QString &id) {
    const auto known = moving_.find(id);
    return known != moving_.end() ? *known : *moving_.insert(id, Spring(response, damping, amount(id)));
}

void MasterFade::advance() {
    const double seconds = static_cast<double>(clock_.nsecsElapsed()) / 1e9;
    clock_.start();
    const QStringList ids = moving_.keys();
    for (const QString &id : ids) {
        Spring &spring = *moving_.find(id);
        spring.advance(seconds);
        if (spring.isAtRest())
            moving_.remove(id);
        Q_EMIT changed(id);
    }
    if (moving_.isEmpty())
        timer_.stop();
}

} // namespace quorbit
