#include "ui/controls/TabBar.h"

#include "ui/look/Frame.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

namespace quorbit {

namespace {
constexpr double leastWidth = 82;
constexpr double itemHeight = 48;
constexpr double symbolSide = 22;
constexpr double symbolTop = 5;
constexpr double titleCentre = 36;
constexpr double titlePadding = 12;
constexpr double radius = 8;
} // namespace

TabBar::TabBar(QWidget *parent) : ChoiceBar(radius, 4, QMargins(8, 10, 8, 9), parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *row = static_cast<QHBoxLayout *>(layout());
    row->addStretch();
    row->insertStretch(0);
}

QSize TabBar::itemSize(const Choice &choice) const {
    const int title = textWidth(textFont(TextStyle::caption, font()), choice.title);
    return {std::max(scaled(leastWidth, font()), title + scaled(2 * titlePadding, font())),
            scaled(itemHeight, font())};
}

void TabBar::paintItem(QPainter &painter, const ChoiceItem &item) const {
    const ThemeColors colors = themeColors(palette());
    const double scale = fontScale(font());
    const bool chosen = item.isCurrent();
    if (chosen || item.isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors.pill);
        painter.drawRoundedRect(item.rect(), radius, radius);
    }
    if (chosen && colors.highContrast)
        paintFrame(painter, item.rect(), radius, Qt::transparent, colors.controlEdge);
    const bool lit = item.isLit() && !chosen;
    const double side = symbolSide * scale;
    const QRectF square((item.width() - side) / 2, symbolTop * scale, side, side);
    paintSymbol(painter, square, item.choice().symbol,
                chosen ? colors.accent : (lit ? colors.primary : colors.secondary));
    painter.setFont(textFont(TextStyle::caption, font()));
    painter.setPen(chosen ? colors.accentText : (lit ? colors.primary : colors.secondary));
    const double line = painter.fontMetrics().height();
    painter.drawText(QRectF(0, titleCentre * scale - line / 2, item.width(), line),
                     Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(item.choice().title, Qt::ElideRight, item.width()));
}

void TabBar::paintEvent(QPaintEvent *) {
    QPainter(this).fillRect(0, height() - 1, width(), 1, themeColors(palette()).separator);
}

} // namespace quorbit
