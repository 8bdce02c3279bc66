#pragma once

#include "settings/canvas/ScreenLayout.h"

#include <QTest>

namespace quorbit {

/// How a failed comparison prints it.
inline char *toString(const ScreenPlacement &rect) {
    return QTest::toString(
        QStringLiteral("%1 × %2 at (%3, %4)").arg(rect.w).arg(rect.h).arg(rect.x).arg(rect.y));
}

} // namespace quorbit
