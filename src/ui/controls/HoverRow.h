#pragma once

#include "ui/access/Accessibility.h"

#include <QAbstractButton>

namespace quorbit {

/// A button over the whole rectangle of a row. Put what it shows into a layout on it and give it an
/// accessible name; it emits clicked().
class HoverRow : public QAbstractButton, public AccessibleControl {
    Q_OBJECT

public:
    explicit HoverRow(QWidget *parent = nullptr);

    /// Rounds the highlight at the ends of a card.
    void setRoundedCorners(bool top, bool bottom);

    QSize sizeHint() const override { return QWidget::sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    void addAccessibleState(QAccessible::State &state) const override;
    QStringList accessibleActions() const override;
    void performAccessibleAction(const QString &action) override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setHighlighted(bool highlighted);

    bool highlighted_ = false;
    bool roundTop_ = false;
    bool roundBottom_ = false;
};

} // namespace quorbit
