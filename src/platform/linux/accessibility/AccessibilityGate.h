#pragma once

#include "platform/linux/accessibility/BusRequest.h"

#include <QAccessible>
#include <QDBusVirtualObject>
#include <QPointer>

namespace quorbit {

/// Takes every request from the accessibility bus (AT-SPI) in the toolkit's place and hands on what judge()
/// lets pass. The toolkit trusts what it is asked: an index that was right a moment ago is a crash there, an
/// offset at a text's end a loop without an end, and what a sheet covers can be pressed. Not all of that can
/// be mended in a QAccessibleInterface: the toolkit reads arguments that were not sent, and counts up to any
/// offset.
///
/// One is made after QApplication. The toolkit does not offer its place, so that the gate knows its
/// connection and its path by name; where they are not found it warns, and the toolkit answers alone.
class AccessibilityGate final : public QDBusVirtualObject, private QAccessible::ActivationObserver {
    Q_OBJECT

public:
    explicit AccessibilityGate(IsCovered covers);
    ~AccessibilityGate() override;

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    void accessibilityActiveChanged(bool active) override;
    void takeOver();

    IsCovered covers_;
    QPointer<QDBusVirtualObject> toolkit_;
};

} // namespace quorbit
