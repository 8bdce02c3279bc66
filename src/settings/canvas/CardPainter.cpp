#include "settings/canvas/CardPainter.h"

#include "ui/look/Frame.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr double canvasRadius = 12;
constexpr double canvasOpacity = 0.55;
constexpr double cardRadius = 7;
constexpr double plainBorder = 1.5;
constexpr double masterBorder = 2.8;
constexpr double masterBorderOpacity = 0.95;
constexpr double padding = 2;
constexpr double namePadding = 4;
constexpr double lineGap = 2;
constexpr double badgeGap = 4;
constexpr double focusGap = 1;
constexpr double focusWidth = 2;
constexpr int reach = 4;            // around a card, of all that is painted of it
constexpr double leastReadable = 2; // pixels; smaller text would only be a smear
// Coordinates beyond it are of no use to a painter, which computes in smaller numbers.
constexpr double farthest = 1e5;
constexpr QColor gray(0x8e, 0x8e, 0x93);

struct Look {
    QColor hue;
    double fill;
    double border;
};

Look lookOf(const CanvasCard &card, const ThemeColors &colors) {
    const QColor other = colors.highContrast ? colors.primary : gray;
    const double strength = colors.highContrast ? 1.6 : 1;
    if (card.isSelf)
        return {colors.accent, 0.1, 0.55 * strength};
    if (card.isOnline)
        return {other, 0.1, 0.5 * strength};
    return {other, 0.05, 0.3 * strength};
}

QColor between(const QColor &from, const QColor &to, double part) {
    const auto mixed = [part](float a, float b) {
        return std::clamp(a + (b - a) * static_cast<float>(part), 0.0F, 1.0F);
    };
    return QColor::fromRgbF(mixed(from.redF(), to.redF()), mixed(from.greenF(), to.greenF()),
                            mixed(from.blueF(), to.blueF()), mixed(from.alphaF(), to.alphaF()));
}

/// `rect` with its edges on whole pixels, at least one pixel wide and high.
QRectF onPixels(const QPainter &painter, const QRectF &rect) {
    const auto near = [](double value) { return std::clamp(value, -farthest, farthest); };
    const QTransform toDevice = painter.deviceTransform();
    const QRectF exact = toDevice.mapRect(QRectF(QPointF(near(rect.left()), near(rect.top())),
                                                 QPointF(near(rect.right()), near(rect.bottom()))));
    const double left = std::round(exact.left());
    const double top = std::round(exact.top());
    const double width = std::max(std::round(exact.right()) - left, 1.0);
    const double height = std::max(std::round(exact.bottom()) - top, 1.0);
    return toDevice.inverted().mapRect(QRectF(left, top, width, height));
}

double radiusFor(double wanted, const QRectF &rect) {
    return std::min(wanted, std::min(rect.width(), rect.height()) / 2);
}

/// The palette of what lies on a card: readable on it, and where it overlaps another one like it.
QPalette cardPalette(const QPalette &palette, const QColor &fill, const QColor &surface) {
    QPalette result = palette;
    result.setColor(QPalette::Window, composed(fill, surface));
    result.setColor(QPalette::Base, composed(fill, composed(fill, surface)));
    return result;
}

} // namespace

CardPainter::CardPainter(const QPalette &palette, const QFont &userFont)
    : palette_(palette), font_(userFont) {
    const ThemeColors colors = themeColors(palette);
    surface_ = composed(withAlpha(colors.window, canvasOpacity), colors.card);
}

void CardPainter::paintBackground(QPainter &painter, const QRectF &area) const {
    paintFrame(painter, onPixels(painter, area), canvasRadius, surface_, themeColors(palette_).cardEdge);
}

void CardPainter::paintCard(QPainter &painter, const CanvasCard &card, const QRectF &place,
                            double mastery) const {
    const ThemeColors colors = themeColors(palette_);
    const Look look = lookOf(card, colors);
    const QColor fill = withAlpha(look.hue, look.fill);
    const QColor border =
        between(withAlpha(look.hue, look.border), withAlpha(colors.accent, masterBorderOpacity), mastery);
    const QRectF rect = onPixels(painter, place);
    const double thickest = std::min(rect.width(), rect.height()) / 2;
    const double width = std::min(plainBorder + (masterBorder - plainBorder) * mastery, thickest);
    paintFrame(painter, rect, radiusFor(cardRadius, rect), fill, border, width);

    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    paintContent(painter, card, rect, cardPalette(palette_, fill, surface_), mastery);
    painter.restore();
}

void CardPainter::paintContent(QPainter &painter, const CanvasCard &card, const QRectF &place,
                               const QPalette &colors, double mastery) const {
    const auto [badge, symbol, nameSize, statusSize] = sizes(place.height());
    const QFont nameFont = font(nameSize, QFont::Medium);
    const QFont statusFont = font(statusSize, QFont::Normal);
    const double nameHeight = QFontMetricsF(nameFont).height();
    const double statusHeight = card.isSelf ? 0 : QFontMetricsF(statusFont).height() + lineGap;
    const double middle = place.center().x();
    double top = place.center().y() - (badge + symbol + nameHeight + statusHeight + 2 * lineGap) / 2;

    // The badge keeps its space on every card, so that none moves when it becomes the master.
    if (mastery > 0) {
        const QColor accent = withAlpha(shapeColor(colors, TextColor::accent), std::clamp(mastery, 0.0, 1.0));
        paintSymbol(painter, QRectF(middle - badgeGap / 2 - badge, top, badge, badge), u"keyboard.fill",
                    accent);
        paintSymbol(painter, QRectF(middle + badgeGap / 2, top, badge, badge), u"computermouse.fill", accent);
    }
    top += badge + lineGap;
    paintSymbol(painter, QRectF(middle - symbol / 2, top, symbol, symbol), card.symbol,
                shapeColor(colors, card.isSelf ? TextColor::accent : TextColor::secondary));
    top += symbol + lineGap;

    if (nameSize < leastReadable)
        return;
    const auto paintLine = [&](const QString &text, const QFont &lineFont, double height, double inset,
                               TextColor color) {
        const QRectF line(place.left() + inset, top, place.width() - 2 * inset, height);
        if (line.width() <= 0)
            return;
        painter.setFont(lineFont);
        painter.setPen(textColor(colors, color));
        painter.drawText(line, Qt::AlignCenter | Qt::TextSingleLine,
                         QFontMetricsF(lineFont).elidedText(text, Qt::ElideMiddle, line.width()));
    };
    paintLine(card.title, nameFont, nameHeight, padding + namePadding, TextColor::primary);
    top += nameHeight + lineGap;
    if (!card.isSelf)
        paintLine(card.statusText, statusFont, statusHeight - lineGap, padding, card.statusColor);
}

CardMetrics CardPainter::sizes(double height) const {
    // The greatest sizes grow with the user's font; a share of the card's height is that whatever the font.
    const double scale = fontScale(font_);
    const CardMetrics metrics = cardMetrics(height / scale);
    return {metrics.badge * scale, metrics.symbol * scale, metrics.name * scale, metrics.status * scale};
}

QFont CardPainter::font(double size, QFont::Weight weight) const {
    return sizedFont(size / fontScale(font_), weight, font_);
}

bool CardPainter::showsWholeTitle(const CanvasCard &card) const {
    const double size = sizes(card.rect.height()).name;
    const double room = card.rect.width() - 2 * (padding + namePadding);
    return size >= leastReadable && textWidth(font(size, QFont::Medium), card.title) <= room;
}

QRect CardPainter::extent(const QRectF &place) {
    return place.toAlignedRect().adjusted(-reach, -reach, reach, reach);
}

void CardPainter::paintFocus(QPainter &painter, const QRectF &place) const {
    const double outset = focusGap + focusWidth / 2;
    const QRectF rect = onPixels(painter, place);
    const double radius = radiusFor(cardRadius, rect) + outset;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(themeColors(palette_).accent, focusWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(-outset, -outset, outset, outset), radius, radius);
    painter.restore();
}

} // namespace quorbit
