#pragma once

#include "ui/access/Accessibility.h"

#include <QAbstractButton>

namespace quorbit {

/// A button that paints itself. Tab reaches it, Space, Return and Enter press it, and it is painted anew when
/// the pointer comes or goes.
class Pressable : public QAbstractButton, public AccessibleControl {
    Q_OBJECT

public:
    /// Whether it is to show that a press would be answered: it is under the pointer or held down.
    bool isLit() const { return isEnabled() && (isDown() || underMouse()); }

    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    void addAccessibleState(QAccessible::State &state) const override { state.pressed = isDown(); }
    /// Each of the actions clicks.
    QStringList accessibleActions() const override;
    void performAccessibleAction(const QString &action) final;

protected:
    explicit Pressable(QWidget *parent);
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace quorbit
