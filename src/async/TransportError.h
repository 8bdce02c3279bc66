#pragma once

#include <stdexcept>

namespace quorbit {

/// No complete reply came: refused, cut off, timed out, too large. An HTTP error status is a reply, not this
/// error.
class TransportError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace quorbit
