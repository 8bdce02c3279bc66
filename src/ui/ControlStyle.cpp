#include "ui/ControlStyle.h"

#include <QWidget>

namespace quorbit {

namespace {
constexpr int shortAnimation = 150;
}

ControlStyle::ControlStyle() : QProxyStyle(QStringLiteral("fusion")) {}

int ControlStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                            QStyleHintReturn *result) const {
    if (hint == SH_Widget_Animation_Duration)
        return reducedMotion_ ? 0 : shortAnimation;
    return QProxyStyle::styleHint(hint, option, widget, result);
}

int animationDuration(const QWidget &widget) {
    return widget.isVisible()
               ? widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget)
               : 0;
}

} // namespace quorbit
