#include "ui/look/ToolTip.h"

#include <QHelpEvent>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace quorbit {

void showToolTip(const QHelpEvent &event, const QString &text, QWidget *widget, const QRect &part) {
    QToolTip::showText(event.globalPos(), u"<p>%1</p>"_s.arg(text.toHtmlEscaped()), widget, part);
}

} // namespace quorbit
