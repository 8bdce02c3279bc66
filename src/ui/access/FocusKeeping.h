#pragma once

#include <QWidget>

namespace quorbit {

/// Enables or disables a control without losing the place of who works by keyboard: the focus waits on
/// `keeper`, which nothing else focuses, until the control can have it again. Otherwise it would jump to the
/// next control, where a key pressed twice does something else.
inline void setEnabledKeepingFocus(QWidget &control, bool enabled, QWidget &keeper) {
    if (control.isEnabled() == enabled)
        return;
    if (!enabled && control.hasFocus())
        keeper.setFocus();
    control.setEnabled(enabled);
    if (enabled && keeper.hasFocus())
        control.setFocus();
}

} // namespace quorbit
