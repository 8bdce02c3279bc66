#pragma once

#include "ui/access/Accessibility.h"

#include <QAbstractButton>

namespace quorbit {

/// The red dot that announces an update; resting the pointer on it tells which.
class UpdateBadge final : public QAbstractButton, public AccessibleControl {
    Q_OBJECT

public:
    /// How far the button reaches beyond the dot on every side, so that it is easy to hit.
    static constexpr int reach = 8;

    explicit UpdateBadge(QWidget *parent = nullptr);

    void setVersion(const QString &version);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    QStringList accessibleActions() const override;
    void performAccessibleAction(const QString &action) override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quorbit
