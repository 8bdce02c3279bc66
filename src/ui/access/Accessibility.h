#pragma once

#include <QAccessible>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

class QWidget;

namespace quorbit {

/// What a widget that paints itself tells assistive technology. A widget inherits it beside QWidget and
/// passes itself to the constructor; QWidget's accessible name and description hold as usual.
class AccessibleControl {
public:
    explicit AccessibleControl(QWidget *self);
    AccessibleControl(const AccessibleControl &) = delete;
    AccessibleControl &operator=(const AccessibleControl &) = delete;
    virtual ~AccessibleControl() = default;

    virtual QAccessible::Role accessibleRole() const = 0;
    /// Adds to the states that every widget has.
    virtual void addAccessibleState(QAccessible::State &) const {}
    /// The name of a control that was given none.
    virtual QString accessibleFallbackName() const { return {}; }
    /// The value as text, such as the option chosen.
    virtual QString accessibleText() const { return {}; }
    /// Names of QAccessibleActionInterface.
    virtual QStringList accessibleActions() const { return {}; }
    virtual void performAccessibleAction(const QString &) {}
    /// The widget that this one is the label of, so that the text is not taken for two.
    virtual QWidget *accessibleLabelled() const { return nullptr; }
    /// The menu that is open, which is told as the only child.
    virtual QWidget *accessiblePopup() const { return nullptr; }
    /// Whether what the widget is made of is told as part of it, not as children.
    virtual bool isAccessibleLeaf() const { return true; }

    struct Range {
        int value;
        int minimum;
        int maximum;
        int step;
    };
    /// For controls with a numeric value.
    virtual std::optional<Range> accessibleRange() const { return {}; }
    virtual void requestAccessibleValue(int) {}

protected:
    /// Announces that states have changed; name those that did.
    void accessibleStateChanged(QAccessible::State changed) const;
    void accessibleNameChanged() const;
    void accessibleValueChanged(const QVariant &value) const;

private:
    /// Whether assistive technology listens and meets the control by itself.
    bool isHeard() const;

    QWidget *self_;
};

/// For the destructor of a widget whose accessible children are no widgets: they ask it about themselves to
/// the last, and its members are to be there still.
void forgetAccessible(QWidget *widget);

} // namespace quorbit
