#pragma once

#include "ui/access/Accessibility.h"

#include <QIcon>
#include <QWidget>

class QSvgRenderer;

namespace quorbit {

/// The application's icon in every size that window managers ask for.
QIcon applicationIcon();

/// The application's icon, 112 pixels square and sharp on every screen. The application's name beside it says
/// the same, so that screen readers skip it.
class AppIcon final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    explicit AppIcon(QWidget *parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::Graphic; }
    void addAccessibleState(QAccessible::State &state) const override { state.invisible = true; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QSvgRenderer *drawing_;
};

} // namespace quorbit
