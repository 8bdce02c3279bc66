#pragma once

#include <QAccessible>
#include <QDBusMessage>
#include <QVariantList>

namespace quorbit {

/// What is asked of an object over the accessibility bus. The arguments are read as what its method takes.
class BusRequest {
public:
    BusRequest(QAccessibleInterface &target, const QDBusMessage &message)
        : object(target), arguments_(message.arguments()) {}

    QAccessibleInterface &object;
    int number(int argument) const { return arguments_.at(argument).toInt(); }
    QString string(int argument) const { return arguments_.at(argument).toString(); }
    /// NaN where there is no number.
    double value(int argument) const;
    /// All that the object tells as text.
    QString text() const;

private:
    QVariantList arguments_;
};

/// Whether an open sheet or alert stands before the object.
bool isCovered(const BusRequest &request);
/// Whether the user could do something with the object, too: it is seen, enabled and not covered.
bool isWithinReach(const BusRequest &request);

} // namespace quorbit
