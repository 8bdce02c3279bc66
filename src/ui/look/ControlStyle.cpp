#include "ui/look/ControlStyle.h"

#include "ui/look/Frame.h"
#include "ui/look/Symbol.h"
#include "ui/look/Theme.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int shortAnimation = 150;
constexpr double disabledOpacity = 0.45;
constexpr int menuMargin = 4;
constexpr int markWidth = 22;
constexpr int itemPadding = 8;
constexpr double itemRadius = 4;
constexpr int scrollBarWidth = 10;
constexpr int thumbMargin = 2;

/// An item of a menu: its mark or icon, its text and its shortcut.
void drawMenuItem(const QStyleOptionMenuItem &item, QPainter &painter) {
    const ThemeColors colors = themeColors(item.palette);
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(QRect(item.rect.left() + itemPadding, item.rect.center().y(),
                               item.rect.width() - 2 * itemPadding, 1),
                         colors.separator);
        return;
    }
    const bool enabled = (item.state & QStyle::State_Enabled) != 0;
    const bool chosen = enabled && (item.state & QStyle::State_Selected) != 0;
    if (chosen)
        paintFrame(painter, item.rect, itemRadius, colors.accentFill, Qt::transparent);
    const QColor ink = chosen ? colors.onAccent : (enabled ? colors.primary : colors.tertiary);

    const QRect mark = QStyle::visualRect(
        item.direction, item.rect, QRect(item.rect.left(), item.rect.top(), markWidth, item.rect.height()));
    if (item.checked)
        paintSymbol(painter, mark.adjusted(4, 4, -4, -4), u"checkmark"_s, ink);
    else if (!item.icon.isNull())
        item.icon.paint(&painter, mark.adjusted(3, 3, -3, -3), Qt::AlignCenter,
                        enabled ? QIcon::Normal : QIcon::Disabled);

    const QRect text =
        QStyle::visualRect(item.direction, item.rect, item.rect.adjusted(markWidth, 0, -itemPadding, 0));
    const QStringList parts = item.text.split(u'\t');
    painter.setFont(item.font);
    painter.setPen(ink);
    painter.drawText(text,
                     static_cast<int>(QStyle::visualAlignment(item.direction, Qt::AlignLeft)) |
                         Qt::AlignVCenter | Qt::TextHideMnemonic | Qt::TextSingleLine,
                     parts.first());
    if (parts.size() > 1) {
        painter.setPen(chosen ? colors.onAccent : colors.secondary);
        painter.drawText(text,
                         static_cast<int>(QStyle::visualAlignment(item.direction, Qt::AlignRight)) |
                             Qt::AlignVCenter | Qt::TextSingleLine,
                         parts.at(1));
    }
}

} // namespace

ControlStyle::ControlStyle() : QProxyStyle(u"fusion"_s) {}

int ControlStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                            QStyleHintReturn *result) const {
    switch (hint) {
    case SH_Widget_Animation_Duration:
        return reducedMotion_ ? 0 : shortAnimation;
    case SH_ScrollBar_Transient:
        // The bar lies over the content, which keeps its width whether there is a bar or not.
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
        return scrollBarWidth;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return menuMargin;
    case PM_MenuPanelWidth:
        return 1;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize ControlStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                     const QWidget *widget) const {
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (type != CT_MenuItem || !item)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return {0, 2 * menuMargin + 1};
    const QFontMetrics metrics(item->font);
    const int shortcut = item->text.contains(u'\t') ? 3 * itemPadding : 0;
    return {size.width() + markWidth + itemPadding + shortcut, metrics.height() + itemPadding};
}

void ControlStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const {
    const ThemeColors colors = themeColors(option->palette);
    if (element == PE_PanelMenu) {
        painter->fillRect(option->rect, colors.dark ? colors.card : colors.window);
    } else if (element == PE_FrameMenu) {
        painter->setPen(colors.cardEdge);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    } else {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ControlStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const {
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (element == CE_MenuItem && item) {
        painter->save();
        drawMenuItem(*item, *painter);
        painter->restore();
    } else if (element != CE_MenuEmptyArea) {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void ControlStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                      QPainter *painter, const QWidget *widget) const {
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    if (bar->maximum <= bar->minimum)
        return;
    const QRect thumb = proxy()
                            ->subControlRect(CC_ScrollBar, bar, SC_ScrollBarSlider, widget)
                            .adjusted(thumbMargin, thumbMargin, -thumbMargin, -thumbMargin);
    const bool held = (bar->activeSubControls & SC_ScrollBarSlider) != 0;
    paintFrame(*painter, thumb, std::min(thumb.width(), thumb.height()) / 2.0,
               withAlpha(themeColors(bar->palette).primary, held ? 0.5 : 0.3), Qt::transparent);
}

int animationDuration(const QWidget &widget) {
    return widget.isVisible()
               ? widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget)
               : 0;
}

void dimIfDisabled(QPainter &painter, const QWidget &widget) {
    if (!widget.isEnabled())
        painter.setOpacity(disabledOpacity);
}

} // namespace quorbit
