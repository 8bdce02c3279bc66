#pragma once

#include "ui/overlay/Overlay.h"

namespace quorbit {

struct AlertText {
    QString title;
    QString message;
    QString cancel;
    /// The button for what cannot be undone.
    QString confirm;
};

/// Asks before something is done that cannot be undone. Escape and Return cancel. It deletes itself after
/// dismissed(), which follows either answer.
class Alert final : public Overlay {
    Q_OBJECT

public:
    Alert(const AlertText &text, QWidget *over);

    QAccessible::Role accessibleRole() const override { return QAccessible::AlertMessage; }

Q_SIGNALS:
    void confirmed();
};

} // namespace quorbit
