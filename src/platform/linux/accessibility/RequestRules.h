#pragma once

#include "platform/linux/accessibility/BusRequest.h"

#include <QVariantList>

namespace quorbit {

/// What becomes of a request from the accessibility bus.
struct Verdict {
    enum class Kind { refused, answered, pass };
    Kind kind = Kind::refused;
    QVariantList answer = {};
};

/// Lets pass what is known, well-formed, in range and, if it is to change something, within the user's reach.
/// What the toolkit would answer wrong is answered here.
Verdict judge(QAccessibleInterface &object, const QDBusMessage &message, const IsCovered &covers);

} // namespace quorbit
