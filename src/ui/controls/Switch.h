#pragma once

#include "ui/controls/Pressable.h"

#include <QVariantAnimation>

namespace quorbit {

/// A switch that shows what it is told. A click asks for the other value and changes nothing by itself: the
/// owner calls setOn() when the value has really changed.
class Switch final : public Pressable {
    Q_OBJECT

public:
    enum class Size { regular, small };

    explicit Switch(Size size = Size::regular, QWidget *parent = nullptr);

    bool isOn() const { return on_; }
    void setOn(bool on);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::CheckBox; }
    void addAccessibleState(QAccessible::State &state) const override;
    QStringList accessibleActions() const override;

Q_SIGNALS:
    void flipped(bool wanted);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Size size_;
    bool on_ = false;
    /// Where the knob is drawn, 0 for off and 1 for on.
    double position_ = 0;
    QVariantAnimation animation_;
};

} // namespace quorbit
