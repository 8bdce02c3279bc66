#pragma once

#include <QAccessible>
#include <QDBusMessage>
#include <QVariantList>

#include <functional>

class QWidget;

namespace quorbit {

/// Whether something modal stands before a widget of the same window.
using IsCovered = std::function<bool(const QWidget &)>;

/// What is asked of an object over the accessibility bus. The arguments are read as what its method takes.
class BusRequest {
public:
    BusRequest(QAccessibleInterface &target, const QDBusMessage &message, const IsCovered &isCovered)
        : object(target), covers(isCovered), arguments_(message.arguments()) {}

    QAccessibleInterface &object;
    const IsCovered &covers;
    int number(int argument) const { return arguments_.at(argument).toInt(); }
    QString string(int argument) const { return arguments_.at(argument).toString(); }
    /// NaN where there is no number.
    double value(int argument) const;
    /// All that the object tells as text.
    QString text() const;

private:
    QVariantList arguments_;
};

/// Whether something modal stands before the object.
bool isCovered(const BusRequest &request);
/// Whether the user could do something with the object, too: it is seen, enabled and not covered.
bool isWithinReach(const BusRequest &request);

} // namespace quorbit
