#include "ui/access/Accessibility.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace quorbit {

namespace {

/// A text that is shown as it is, without a cursor or a selection.
class PlainText : public QAccessibleTextInterface {
public:
    void selection(int, int *start, int *end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QString text(int start, int end) const override { return plainText().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(plainText().size()); }
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *start, int *end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

protected:
    virtual QString plainText() const = 0;
};

class ControlInterface final : public QAccessibleWidget, public QAccessibleValueInterface, public PlainText {
public:
    ControlInterface(QWidget *widget, AccessibleControl &control)
        : QAccessibleWidget(widget, control.accessibleRole()), control_(control) {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return control_.accessibleRange() ? static_cast<QAccessibleValueInterface *>(this) : nullptr;
        // Some readers learn of the option that a picker shows in this way alone.
        if (type == QAccessible::TextInterface)
            return control_.accessibleText().isEmpty() ? nullptr
                                                       : static_cast<QAccessibleTextInterface *>(this);
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
            const QString fallback = name.isEmpty() ? control_.accessibleFallbackName() : name;
            return fallback.isEmpty() ? QAccessibleWidget::text(kind) : fallback;
        }
        if (kind == QAccessible::Value)
            return control_.accessibleText();
        return QAccessibleWidget::text(kind);
    }

    using PlainText::text;

    QList<QPair<QAccessibleInterface *, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override {
        auto relations = QAccessibleWidget::relations(match);
        if (QWidget *labelled = control_.accessibleLabelled();
            labelled && match.testFlag(QAccessible::Labelled))
            relations.append({QAccessible::queryAccessibleInterface(labelled), QAccessible::Labelled});
        return relations;
    }

    int childCount() const override {
        if (control_.isAccessibleLeaf())
            return control_.accessiblePopup() ? 1 : 0;
        return QAccessibleWidget::childCount();
    }

    QAccessibleInterface *child(int index) const override {
        if (control_.isAccessibleLeaf())
            return index == 0 ? QAccessible::queryAccessibleInterface(control_.accessiblePopup()) : nullptr;
        return QAccessibleWidget::child(index);
    }

    int indexOfChild(const QAccessibleInterface *child) const override {
        if (control_.isAccessibleLeaf())
            return child && child->object() == control_.accessiblePopup() ? 0 : -1;
        return QAccessibleWidget::indexOfChild(child);
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

protected:
    QString plainText() const override { return control_.accessibleText(); }

private:
    AccessibleControl::Range range() const {
        return control_.accessibleRange().value_or(AccessibleControl::Range{});
    }

    AccessibleControl &control_;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object) {
    if (!object || !object->isWidgetType())
        return nullptr;
    auto *control = dynamic_cast<AccessibleControl *>(object);
    return control ? new ControlInterface(static_cast<QWidget *>(object), *control) : nullptr;
}

} // namespace

AccessibleControl::AccessibleControl(QWidget *self) : self_(self) {
    // Qt keeps each factory once, so that this is cheap to repeat and needs no flag of its own.
    QAccessible::installFactory(makeInterface);
}

bool AccessibleControl::isHeard() const {
    if (!QAccessible::isActive())
        return false;
    // What a leaf is made of is not in the tree.
    for (QWidget *above = self_->parentWidget(); above; above = above->parentWidget()) {
        const auto *control = dynamic_cast<AccessibleControl *>(above);
        if (control && control->isAccessibleLeaf())
            return false;
    }
    return true;
}

void AccessibleControl::accessibleStateChanged(QAccessible::State changed) const {
    if (!isHeard())
        return;
    QAccessibleStateChangeEvent event(self_, changed);
    QAccessible::updateAccessibility(&event);
}

void AccessibleControl::accessibleNameChanged() const {
    if (!isHeard())
        return;
    QAccessibleEvent event(self_, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void AccessibleControl::accessibleValueChanged(const QVariant &value) const {
    if (!isHeard())
        return;
    QAccessibleValueChangeEvent event(self_, value);
    QAccessible::updateAccessibility(&event);
}

void forgetAccessible(QWidget *widget) {
    if (QAccessibleInterface *known = QAccessible::queryAccessibleInterface(widget))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}

} // namespace quorbit
