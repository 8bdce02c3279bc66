#include "ui/Accessibility.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace quorbit {

namespace {

class ControlInterface final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    ControlInterface(QWidget *widget, AccessibleControl &control)
        : QAccessibleWidget(widget, control.accessibleRole()), control_(control) {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return control_.accessibleRange() ? static_cast<QAccessibleValueInterface *>(this) : nullptr;
        return QAccessibleWidget::interface_cast(type);
    }

    QAccessible::Role role() const override { return control_.accessibleRole(); }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        control_.addAccessibleState(state);
        return state;
    }

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) {
            const QString name = widget()->accessibleName();
            return name.isEmpty() ? control_.accessibleFallbackName() : name;
        }
        if (kind == QAccessible::Value)
            return control_.accessibleText();
        return QAccessibleWidget::text(kind);
    }

    int childCount() const override {
        return control_.isAccessibleLeaf() ? 0 : QAccessibleWidget::childCount();
    }

    QAccessibleInterface *child(int index) const override {
        return control_.isAccessibleLeaf() ? nullptr : QAccessibleWidget::child(index);
    }

    QStringList actionNames() const override {
        QStringList names = widget()->isEnabled() ? control_.accessibleActions() : QStringList();
        if (widget()->isEnabled() && widget()->focusPolicy() != Qt::NoFocus)
            names << setFocusAction();
        return names;
    }

    void doAction(const QString &action) override {
        if (action == setFocusAction())
            widget()->setFocus(Qt::TabFocusReason);
        else if (widget()->isEnabled())
            control_.performAccessibleAction(action);
    }

    QVariant currentValue() const override { return range().value; }
    QVariant minimumValue() const override { return range().minimum; }
    QVariant maximumValue() const override { return range().maximum; }
    QVariant minimumStepSize() const override { return range().step; }
    void setCurrentValue(const QVariant &value) override {
        if (widget()->isEnabled())
            control_.requestAccessibleValue(value.toInt());
    }

private:
    AccessibleControl::Range range() const {
        return control_.accessibleRange().value_or(AccessibleControl::Range{});
    }

    AccessibleControl &control_;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object) {
    if (object == nullptr || !object->isWidgetType())
        return nullptr;
    auto *control = dynamic_cast<AccessibleControl *>(object);
    return control != nullptr ? new ControlInterface(static_cast<QWidget *>(object), *control) : nullptr;
}

} // namespace

AccessibleControl::AccessibleControl(QWidget *self) : self_(self) {
    // Qt keeps each factory once, so that this is cheap to repeat and needs no flag of its own.
    QAccessible::installFactory(makeInterface);
}

void AccessibleControl::accessibleStateChanged(QAccessible::State changed) const {
    if (!QAccessible::isActive())
        return;
    QAccessibleStateChangeEvent event(self_, changed);
    QAccessible::updateAccessibility(&event);
}

void AccessibleControl::accessibleNameChanged() const {
    if (!QAccessible::isActive())
        return;
    QAccessibleEvent event(self_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void AccessibleControl::accessibleValueChanged(const QVariant &value) const {
    if (!QAccessible::isActive())
        return;
    QAccessibleValueChangeEvent event(self_, value);
    QAccessible::updateAccessibility(&event);
}

} // namespace quorbit
