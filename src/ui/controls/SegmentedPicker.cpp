#include "ui/controls/SegmentedPicker.h"

#include "ui/look/Frame.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace quorbit {

namespace {
constexpr int inset = 2;
constexpr double segmentHeight = 26;
constexpr double radius = 7;
constexpr double segmentRadius = radius - inset;
constexpr double padding = 14;
} // namespace

SegmentedPicker::SegmentedPicker(QWidget *parent)
    : ChoiceBar(segmentRadius, 0, QMargins(inset, inset, inset, inset), parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SegmentedPicker::setOptions(const QStringList &titles) {
    QList<Choice> choices;
    for (const QString &title : titles)
        choices << Choice{title, {}};
    setChoices(choices);
}

QSize SegmentedPicker::itemSize(const Choice &) const {
    // All segments are as wide as the widest, so that none moves when another one's text changes.
    const QFont segmentFont = textFont(TextStyle::body, font());
    int widest = 0;
    for (const ChoiceItem *item : items())
        widest = std::max(widest, textWidth(segmentFont, item->choice().title));
    return {widest + scaled(2 * padding, font()), scaled(segmentHeight, font())};
}

void SegmentedPicker::paintItem(QPainter &painter, const ChoiceItem &item) const {
    const ThemeColors colors = themeColors(palette());
    if (item.isCurrent()) {
        // A soft shadow, and an edge where there is no light for one.
        const QRect below = item.rect().adjusted(0, 1, 0, 1);
        paintFrame(painter, below, segmentRadius, withAlpha(Qt::black, 0.12), Qt::transparent);
        paintFrame(painter, item.rect().adjusted(0, 0, 0, -1), segmentRadius, colors.segment,
                   colors.dark || colors.highContrast ? colors.cardEdge : QColor(Qt::transparent));
    }
    painter.setFont(textFont(TextStyle::body, font()));
    painter.setPen(colors.primary);
    painter.drawText(item.rect(), Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(item.choice().title, Qt::ElideRight, item.width() - 8));
}

void SegmentedPicker::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    paintFrame(painter, rect(), radius, themeColors(palette()).pill, Qt::transparent);
}

} // namespace quorbit
