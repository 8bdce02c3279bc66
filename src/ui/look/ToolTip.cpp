#include "ui/look/ToolTip.h"

#include <QHelpEvent>
#include <QToolTip>

namespace quorbit {

void showToolTip(const QHelpEvent &event, const QString &text, QWidget *widget, const QRect &part) {
    QToolTip::showText(event.globalPos(), QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()), widget,
                       part);
}

} // namespace quorbit
