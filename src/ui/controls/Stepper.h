#pragma once

#include "ui/access/Accessibility.h"

#include <QBasicTimer>
#include <QWidget>

namespace quorbit {

/// A whole number with a pair of buttons beside it. Buttons and keys ask for another value by stepped(); the
/// number shown changes with setValue() only.
class Stepper final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    Stepper(int minimum, int maximum, int step, QWidget *parent = nullptr);

    int value() const { return value_; }
    void setValue(int value);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::SpinBox; }
    QString accessibleText() const override { return QString::number(value_); }
    QStringList accessibleActions() const override;
    void performAccessibleAction(const QString &action) override;
    std::optional<Range> accessibleRange() const override { return Range{value_, minimum_, maximum_, step_}; }
    void requestAccessibleValue(int value) override { ask(value); }

Q_SIGNALS:
    void stepped(int wanted);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QRect buttons() const;
    void ask(int wanted);
    void askByKey(const QKeyEvent &event, int steps);

    int minimum_;
    int maximum_;
    int step_;
    int value_;
    /// The button held: 1 for up, -1 for down, 0 for none.
    int held_ = 0;
    /// The value at the last step of the button or key held; it repeats only once that step has been
    /// answered.
    int heldFrom_ = 0;
    QBasicTimer repeat_;
};

} // namespace quorbit
