#pragma once

namespace quorbit {

/// A value on a damped spring. Sent elsewhere while it moves, it keeps its speed and turns smoothly.
class Spring {
public:
    /// `response` is the period of the spring without damping, in seconds; `damping` the part of the damping
    /// at which it would no longer overshoot, less than 1.
    Spring(double response, double damping, double value = 0);

    double value() const { return target_ + offset_; }
    void setTarget(double target);
    /// Lets time pass. The movement is exact, however long the step.
    void advance(double seconds);
    /// Whether nothing can be seen to move any more.
    bool isAtRest() const;

private:
    double decay_;
    double frequency_;
    double target_;
    double offset_ = 0;   ///< from the target
    double velocity_ = 0; ///< per second
};

} // namespace quorbit
