#pragma once

#include "ui/access/Accessibility.h"
#include "ui/look/TextColor.h"

#include <QWidget>

namespace quorbit {

/// A small filled circle beside a text that says the same in words; screen readers skip it.
class StatusDot final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    explicit StatusDot(TextColor color = TextColor::green, QWidget *parent = nullptr);

    void setColor(TextColor color);
    QSize sizeHint() const override { return {8, 8}; }
    QSize minimumSizeHint() const override { return sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::Graphic; }
    void addAccessibleState(QAccessible::State &state) const override { state.invisible = true; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    TextColor color_;
};

} // namespace quorbit
