#include "settings/canvas/Spring.h"

#include <cmath>
#include <numbers>

namespace quorbit {

namespace {
constexpr double restOffset = 0.002;
constexpr double restVelocity = 0.05;
} // namespace

Spring::Spring(double response, double damping, double value) : target_(value) {
    const double natural = 2 * std::numbers::pi / response;
    decay_ = damping * natural;
    frequency_ = natural * std::sqrt(1 - damping * damping);
}

void Spring::setTarget(double target) {
    offset_ += target_ - target;
    target_ = target;
}

void Spring::advance(double seconds) {
    // x = exp(-d t) (a cos wt + b sin wt), with a and b from the offset and velocity at t = 0.
    const double a = offset_;
    const double b = (velocity_ + decay_ * offset_) / frequency_;
    const double fade = std::exp(-decay_ * seconds);
    const double sine = std::sin(frequency_ * seconds);
    const double cosine = std::cos(frequency_ * seconds);
    offset_ = fade * (a * cosine + b * sine);
    velocity_ = -decay_ * offset_ + fade * frequency_ * (b * cosine - a * sine);
    if (isAtRest())
        offset_ = velocity_ = 0;
}

bool Spring::isAtRest() const {
    return std::abs(offset_) < restOffset && std::abs(velocity_) < restVelocity;
}

} // namespace quorbit
