#pragma once

#include "ui/access/Accessibility.h"

#include <QWidget>

namespace quorbit {

/// A horizontal hairline.
class Divider final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    explicit Divider(QWidget *parent = nullptr);

    QSize sizeHint() const override { return {1, 1}; }
    QAccessible::Role accessibleRole() const override { return QAccessible::Separator; }

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quorbit
