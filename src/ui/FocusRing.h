#pragma once

#include "ui/Accessibility.h"

#include <QPointer>
#include <QWidget>

namespace quorbit {

/// A ring around a control while it has the focus and the user works by keyboard; a click shows none. It lies
/// beside the control in the same parent, so that it may be larger than the control.
class FocusRing final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    /// `gap` is the distance from the control's edge to the ring, negative for a ring inside it; `radius` the
    /// corner of the control. The ring belongs to the control and ends with it.
    static void install(QWidget *control, double radius, int gap = 1);

    QAccessible::Role accessibleRole() const override { return QAccessible::Whitespace; }
    void addAccessibleState(QAccessible::State &state) const override { state.invisible = true; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    class Watcher;
    FocusRing(QWidget *control, double radius, int gap);
    void follow();

    QPointer<QWidget> control_;
    double radius_;
    int gap_;
};

} // namespace quorbit
