#include "ui/look/TextStyle.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace quorbit {

namespace {

// A desktop that sets no font has Qt's own default of 9 points, which are 12 pixels at 96 dpi.
constexpr double defaultPoints = 9;
constexpr double defaultPixels = 12;
constexpr double pointsPerPixel = defaultPoints / defaultPixels;

constexpr double monospacedBody = 12;

struct Style {
    double pixels;
    QFont::Weight weight;
};

Style styleOf(TextStyle style) {
    switch (style) {
    case TextStyle::body:
        return {13, QFont::Normal};
    case TextStyle::headline:
        return {13, QFont::DemiBold};
    case TextStyle::callout:
        return {12, QFont::Normal};
    case TextStyle::caption:
        return {11, QFont::Normal};
    case TextStyle::caption2:
        return {10, QFont::Normal};
    case TextStyle::title3:
        return {15, QFont::Bold};
    case TextStyle::title2:
        return {17, QFont::DemiBold};
    case TextStyle::display:
        return {40, QFont::Bold};
    }
    return {13, QFont::Normal};
}

} // namespace

double fontScale(const QFont &userFont) {
    if (userFont.pointSizeF() > 0)
        return userFont.pointSizeF() / defaultPoints;
    return userFont.pixelSize() > 0 ? userFont.pixelSize() / defaultPixels : 1;
}

int scaled(double pixels, const QFont &userFont) {
    return static_cast<int>(std::lround(pixels * fontScale(userFont)));
}

QFont scaledFont(QFont font, double scale) {
    if (font.pointSizeF() > 0)
        font.setPointSizeF(std::max(font.pointSizeF() * scale, 1.0));
    else
        font.setPixelSize(std::max(static_cast<int>(std::lround(font.pixelSize() * scale)), 1));
    return font;
}

QFont applicationFont(const QFont &desktopFont, double scale) {
    return scaledFont(desktopFont, scale * defaultPixels / styleOf(TextStyle::body).pixels);
}

QFont sizedFont(double pixels, QFont::Weight weight, const QFont &userFont) {
    QFont font = userFont;
    // Points follow the screen's dots per inch; a font given in pixels is meant to stay as it is.
    if (userFont.pointSizeF() > 0)
        font.setPointSizeF(std::max(pixels * fontScale(userFont) * pointsPerPixel, 1.0));
    else
        font.setPixelSize(std::max(scaled(pixels, userFont), 1));
    font.setWeight(weight);
    return font;
}

int textWidth(const QFont &font, const QString &text) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(text)));
}

QFont textFont(TextStyle style, const QFont &userFont, bool monospaced) {
    Style wanted = styleOf(style);
    if (monospaced && style == TextStyle::body)
        wanted.pixels = monospacedBody;
    QFont font = sizedFont(wanted.pixels, wanted.weight, userFont);
    if (monospaced) {
        font.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
        font.setStyleHint(QFont::Monospace);
    }
    return font;
}

} // namespace quorbit
