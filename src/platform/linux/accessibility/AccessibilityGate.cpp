#include "platform/linux/accessibility/AccessibilityGate.h"

#include "platform/linux/accessibility/RequestRules.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>

#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr auto connectionName = "a11y"_L1;
constexpr auto everything = "/org/a11y/atspi/accessible"_L1;
constexpr auto applicationName = "root"_L1;

/// nullptr when it has gone.
QAccessibleInterface *objectAt(const QString &path) {
    const QString name = path.section(u'/', -1);
    QAccessibleInterface *object = name == applicationName ? QAccessible::queryAccessibleInterface(qApp)
                                                           : QAccessible::accessibleInterface(name.toUInt());
    return object && object->isValid() ? object : nullptr;
}

} // namespace

AccessibilityGate::AccessibilityGate(IsCovered covers) : covers_(std::move(covers)) {
    QAccessible::installActivationObserver(this);
    if (QAccessible::isActive())
        takeOver();
}

AccessibilityGate::~AccessibilityGate() {
    QAccessible::removeActivationObserver(this);
}

void AccessibilityGate::accessibilityActiveChanged(bool active) {
    // The toolkit comes onto the bus after this, but before it takes any request.
    if (active)
        QMetaObject::invokeMethod(this, &AccessibilityGate::takeOver, Qt::QueuedConnection);
}

void AccessibilityGate::takeOver() {
    if (toolkit_)
        return;
    QDBusConnection bus((QString(connectionName)));
    toolkit_ = qobject_cast<QDBusVirtualObject *>(bus.objectRegisteredAt(everything));
    if (toolkit_)
        bus.unregisterObject(everything);
    if (!toolkit_ || !bus.registerVirtualObject(everything, this, QDBusConnection::SubPath))
        qWarning("The toolkit is not where it was on the accessibility bus.");
}

QString AccessibilityGate::introspect(const QString &path) const {
    return toolkit_ ? toolkit_->introspect(path) : QString();
}

bool AccessibilityGate::handleMessage(const QDBusMessage &message, const QDBusConnection &connection) {
    // The caller is told by Qt that there is no such object.
    QAccessibleInterface *object = objectAt(message.path());
    if (!object || !toolkit_)
        return false;
    const Verdict verdict = judge(*object, message, covers_);
    switch (verdict.kind) {
    case Verdict::Kind::pass:
        return toolkit_->handleMessage(message, connection);
    case Verdict::Kind::answered:
        return connection.send(message.createReply(verdict.answer));
    case Verdict::Kind::refused:
        break;
    }
    return connection.send(message.createErrorReply(QDBusError::InvalidArgs, u"There is no such thing."_s));
}

} // namespace quorbit
