#include "ui/controls/Pressable.h"

#include <QKeyEvent>

namespace quorbit {

Pressable::Pressable(QWidget *parent) : QAbstractButton(parent), AccessibleControl(this) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
}

QStringList Pressable::accessibleActions() const {
    return {QAccessibleActionInterface::pressAction()};
}

void Pressable::performAccessibleAction(const QString &action) {
    if (accessibleActions().contains(action))
        click();
}

void Pressable::keyPressEvent(QKeyEvent *event) {
    // Which keys press a QAbstractButton besides Space is up to the desktop.
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QAbstractButton::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        click();
}

} // namespace quorbit
