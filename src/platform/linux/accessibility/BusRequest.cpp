#include "platform/linux/accessibility/BusRequest.h"

#include <QDBusVariant>
#include <QWidget>

#include <limits>

namespace quorbit {

namespace {

/// The widget that shows the object: rows, cards and menu items are none themselves.
const QWidget *widgetOf(const QAccessibleInterface *object) {
    while (object && !qobject_cast<QWidget *>(object->object()))
        object = object->parent();
    return object ? static_cast<const QWidget *>(object->object()) : nullptr;
}

/// A menu is covered with what it belongs to. A window, which holds what covers it, is not.
bool isCoveredWidget(const QWidget *widget, const IsCovered &covers) {
    for (; widget; widget = widget->window()->parentWidget()) {
        if (!widget->isWindow() && covers(*widget))
            return true;
    }
    return false;
}

} // namespace

double BusRequest::value(int argument) const {
    bool isNumber = false;
    const double number = qvariant_cast<QDBusVariant>(arguments_.at(argument)).variant().toDouble(&isNumber);
    return isNumber ? number : std::numeric_limits<double>::quiet_NaN();
}

QString BusRequest::text() const {
    QAccessibleTextInterface *told = object.textInterface();
    return told ? told->text(0, told->characterCount()) : QString();
}

bool isCovered(const BusRequest &request) {
    return isCoveredWidget(widgetOf(&request.object), request.covers);
}

bool isWithinReach(const BusRequest &request) {
    const QWidget *widget = widgetOf(&request.object);
    return widget && widget->isVisible() && widget->isEnabled() && !isCoveredWidget(widget, request.covers);
}

} // namespace quorbit
